#pragma once

#include "dictionaries/article/senses.h"

#include <QList>
#include <QString>
#include <QStringView>

namespace lexiquill::article {

/// Collects the lines of a section of phrases: "in fact 事实上", "in fact: 事实上", or a phrase and its
/// meaning on two lines.
class PhraseCollector {
public:
    /// Reads a line. A phrase is the only context of its sense, its meaning is the meaning.
    void add(QStringView line);
    /// A phrase whose meaning follows.
    void addPhrase(QStringView phrase);
    /// A phrase and its meaning.
    void addPair(QStringView phrase, QStringView meaning);
    /// A meaning of the last phrase, which is not read any further.
    void addMeaning(QStringView meaning);

    /// The phrases that have a meaning.
    QList<Sense> phrases() const;

private:
    void addPiece(QStringView piece);

    QList<Sense> m_phrases;
};

/// Collects the lines of a section of examples.
class ExampleCollector {
public:
    void add(QStringView line);

    const QList<ExampleSentence> &examples() const { return m_examples; }

private:
    QList<ExampleSentence> m_examples;
};

} // namespace lexiquill::article
