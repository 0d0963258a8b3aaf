#pragma once

#include "dictionaries/article/line.h"
#include "dictionaries/article/part_of_speech.h"
#include "model/dictionary_entry.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace lexiquill::article {

/// One meaning of a word.
struct Sense {
    /// Subjects and usage, such as 医 or 正式.
    QStringList contexts;
    /// Never empty in the results of readSenses().
    QString meaning;
    QStringList examples;
};

/// The meanings under one part of speech.
struct SenseGroup {
    PartOfSpeech part; ///< its `pos` is empty when the article names none
    QList<Sense> senses;
};

/// What an article says, without its title.
struct ArticleSenses {
    /// The senses by part of speech, in the article's order.
    QList<SenseGroup> groups;
    /// The senses before the first part of speech.
    QList<Sense> loose;
    /// The terms of a field whose part of speech the article does not tell.
    QList<Sense> terms;
    QList<Sense> phrases;
    /// Examples that belong to no sense.
    QList<ExampleSentence> examples;
    /// A transcription behind a part of speech, with its brackets; often empty.
    QString phonetic;
    /// The article has sections or tags that are not shown as senses.
    bool hasTrailers = false;
    /// The text without a label is prose, not a list of meanings.
    bool isProse = false;
};

/// Reads the lines of an article.
///
/// A line that begins with a label of a field ("[医] 苹果") holds terms of that field. If the article names
/// only one part of speech, they are senses of it. Otherwise they belong to the one that has one of their
/// meanings; if none has, to the noun that is directly above them, for terms are nouns as a rule; and else to
/// none.
ArticleSenses readSenses(const QList<Line> &lines, const QString &headword);

} // namespace lexiquill::article
