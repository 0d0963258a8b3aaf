#pragma once

#include <QFlags>
#include <QStringList>

#include <optional>

namespace lexiquill::english {

/// The classes of words that take endings.
enum class WordClass { Noun = 1, Verb = 2, Adjective = 4, Adverb = 8 };
Q_DECLARE_FLAGS(WordClasses, WordClass)
Q_DECLARE_OPERATORS_FOR_FLAGS(WordClasses)

/// The word classes that parts of speech name in any usual way ("n.", "transitive verb", "及物动词"). Empty
/// for those without endings, such as "prep."; nullopt when no part of speech is recognised ("释义").
std::optional<WordClasses> namedClasses(const QStringList &partsOfSpeech);

} // namespace lexiquill::english
