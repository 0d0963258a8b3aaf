#pragma once

#include <QList>
#include <QString>

namespace lexiquill {

/// A piece of a spelling compared with the word.
struct SpellingPiece {
    /// Right: typed as in the word. Extra: typed, but not in the word. Missing: in the word, but not typed.
    enum class Kind { Right, Extra, Missing };

    Kind kind = Kind::Right;
    QString text;

    friend bool operator==(const SpellingPiece &, const SpellingPiece &) = default;
};

struct SpellingComparison {
    bool isRight = false;
    /// In the order of the word; a wrong letter is an extra one and a missing one.
    QList<SpellingPiece> pieces;
};

/// The longest spelling, in characters, whose letters are compared one by one. A longer one is only right or
/// wrong as a whole.
inline constexpr qsizetype longestComparedSpelling = 200;

/// Compares a typed spelling with the word. Case, blanks at the ends, the width of blanks between words and
/// the typographic variants of apostrophes and hyphens do not matter.
SpellingComparison compareSpelling(const QString &typed, const QString &word);

/// The comparison as a sentence, for assistive tools.
QString spokenText(const SpellingComparison &comparison, const QString &word);

} // namespace lexiquill
