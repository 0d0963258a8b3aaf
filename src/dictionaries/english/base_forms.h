#pragma once

#include "dictionaries/english/word_classes.h"

#include <QList>
#include <QString>

#include <functional>
#include <optional>

namespace lexiquill::english {

/// A word of which another may be an inflected form.
struct BaseForm {
    QString word;
    /// The form belongs to these: "faster" to an adjective or an adverb.
    WordClasses classes;
};

/// The words of which an English word or phrase may be an inflected form, likeliest first; at most eight.
/// Many are no words at all, so they serve only to ask dictionaries. Empty when there is no such word.
QList<BaseForm> baseForms(const QString &word);

/// Whether a dictionary's entry on the base form, with these parts of speech, has the inflected form. Parts
/// of speech in any usual writing; when none is recognised the entry counts.
bool fits(const BaseForm &form, const QStringList &partsOfSpeech);

/// The parts of speech of a dictionary's entry on a word, or nullopt when it has none.
using PartsOfSpeechOf = std::function<std::optional<QStringList>(const QString &word)>;

/// The first base form of a word that has an entry and fits it; nullopt when there is none. Does not ask for
/// the word itself.
std::optional<QString> firstKnown(const QString &word, const PartsOfSpeechOf &partsOfSpeechOf);

} // namespace lexiquill::english
