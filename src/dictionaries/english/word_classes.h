#pragma once

#include <QFlags>
#include <QStringList>

#include <optional>

namespace lexiquill::english {

/// The word classes that have inflected forms.
enum class WordClass { Noun = 1, Verb = 2, Adjective = 4, Adverb = 8 };
Q_DECLARE_FLAGS(WordClasses, WordClass)
Q_DECLARE_OPERATORS_FOR_FLAGS(WordClasses)

/// The word classes of parts of speech that are written in any usual way ("n.", "transitive verb",
/// "及物动词"). Empty for those without inflected forms, such as "prep."; nullopt when no part of speech is
/// recognised
/// ("释义").
std::optional<WordClasses> namedClasses(const QStringList &partsOfSpeech);

} // namespace lexiquill::english
