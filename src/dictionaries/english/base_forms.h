#pragma once

#include "dictionaries/english/word_classes.h"

#include <QList>
#include <QString>

#include <functional>
#include <optional>

namespace lexiquill::english {

/// A possible base form of an inflected word.
struct BaseForm {
    QString word;
    /// The classes that can have the inflected form: "faster" belongs to an adjective or an adverb.
    WordClasses classes;
};

/// The possible base forms of an English word or phrase, most likely first; at most eight. Many of them are
/// not real words, so use them only to look them up in dictionaries. Empty if there are none.
QList<BaseForm> baseForms(const QString &word);

/// Whether a dictionary entry of the base form, with these parts of speech, can have the inflected form. The
/// parts of speech may be written in any usual way; if none is recognised, the result is true.
bool fits(const BaseForm &form, const QStringList &partsOfSpeech);

/// Returns the parts of speech of a dictionary's entry on a word, or nullopt if there is no entry.
using PartsOfSpeechOf = std::function<std::optional<QStringList>(const QString &word)>;

/// The first base form of a word that has a fitting entry; nullopt if there is none. Does not look up the
/// word itself.
std::optional<QString> firstKnown(const QString &word, const PartsOfSpeechOf &partsOfSpeechOf);

} // namespace lexiquill::english
