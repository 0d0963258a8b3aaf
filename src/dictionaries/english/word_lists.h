#pragma once

#include <QString>

namespace lexiquill::english {

// All words are in lower case, except where noted.

/// True for pronouns, prepositions and the like, which never take an ending.
bool isFunctionWord(const QString &word);

/// True for words that look inflected but are not, such as "evening" and "news"; names have their capital.
bool onlyLooksInflected(const QString &word);

/// True for adjectives and adverbs that take -er and -est, apart from those in -y.
bool isComparedByEnding(const QString &word);

/// True for verbs in -ee, apart from those with an irregular past.
bool isVerbInEe(const QString &word);

/// True for verbs whose silent e the spelling of the inflected form does not show, such as "bathe" and
/// "range".
bool hasUnexpectedSilentE(const QString &verb);

/// True for words that take -s although most words like them are none: "ad", with two letters, and "menu".
bool isUnusualBaseOfS(const QString &noun);

} // namespace lexiquill::english
