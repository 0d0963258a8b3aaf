#pragma once

#include <QString>

namespace lexiquill::english {

// All words are in lower case, except where noted.

/// True for pronouns, prepositions and the like, which never take an ending.
bool isFunctionWord(const QString &word);

/// True for words that look inflected but are not, such as "evening" and "news"; names are capitalised.
bool onlyLooksInflected(const QString &word);

/// True for adjectives and adverbs that take -er and -est, except those in -y.
bool isComparedByEnding(const QString &word);

/// True for verbs in -ee, except those with an irregular past.
bool isVerbInEe(const QString &word);

/// True for verbs whose silent e cannot be recognised from the inflected form, such as "bathe" and "range".
bool hasUnexpectedSilentE(const QString &verb);

/// True for words that can take -s, although most words of this shape cannot: "ad" (two letters), "menu"
/// (final u).
bool isUnusualBaseOfS(const QString &noun);

} // namespace lexiquill::english
