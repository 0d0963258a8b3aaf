#include "app/review/spelling_comparison.h"

#include <QStringList>

#include <algorithm>
#include <vector>

namespace lexiquill {

namespace {

using Kind = SpellingPiece::Kind;
using Letters = QList<uint>; ///< code points

constexpr QStringView apostrophes = u"\u2018\u2019\u201b\u02bc\u02b9\u2032\uff07`\u00b4";
constexpr QStringView hyphens = u"\u2010\u2011\u2012\u2013\u2014\u2015\u2212\ufe63\uff0d";
constexpr QChar softHyphen(0x00ad);

/// As it is shown: composed, with single blanks.
QString tidied(const QString &text) {
    return QString(text).remove(softHyphen).normalized(QString::NormalizationForm_C).simplified();
}

/// The form in which two letters are compared.
uint compared(uint letter) {
    if (letter <= 0xffff) {
        const QChar character(static_cast<char16_t>(letter));
        if (apostrophes.contains(character))
            return U'\'';
        if (hyphens.contains(character))
            return U'-';
    }
    return QChar::toCaseFolded(letter);
}

Letters comparedLetters(const Letters &letters) {
    Letters result;
    result.reserve(letters.size());
    for (const uint letter : letters)
        result += compared(letter);
    return result;
}

void append(QList<SpellingPiece> &pieces, Kind kind, uint letter) {
    if (pieces.isEmpty() || pieces.last().kind != kind)
        pieces += {kind, QString()};
    const char32_t character = letter;
    pieces.last().text += QString::fromUcs4(&character, 1);
}

/// The lengths of the longest common subsequences of the ends of two spellings.
class CommonLengths {
public:
    CommonLengths(const Letters &typed, const Letters &word)
        : m_columns(static_cast<std::size_t>(word.size()) + 1),
          m_lengths((static_cast<std::size_t>(typed.size()) + 1) * m_columns) {
        for (qsizetype i = typed.size() - 1; i >= 0; --i) {
            for (qsizetype j = word.size() - 1; j >= 0; --j)
                m_lengths[place(i, j)] =
                    typed.at(i) == word.at(j) ? at(i + 1, j + 1) + 1 : std::max(at(i + 1, j), at(i, j + 1));
        }
    }
    /// For the letters from `typed` and from `word` on.
    int at(qsizetype typed, qsizetype word) const { return m_lengths[place(typed, word)]; }

private:
    std::size_t place(qsizetype typed, qsizetype word) const {
        return static_cast<std::size_t>(typed) * m_columns + static_cast<std::size_t>(word);
    }

    std::size_t m_columns;
    std::vector<int> m_lengths;
};

QList<SpellingPiece> aligned(const Letters &typed, const Letters &word) {
    const Letters typedForms = comparedLetters(typed);
    const Letters wordForms = comparedLetters(word);
    const CommonLengths lengths(typedForms, wordForms);
    QList<SpellingPiece> pieces;
    qsizetype i = 0;
    qsizetype j = 0;
    while (i < typed.size() || j < word.size()) {
        if (i < typed.size() && j < word.size() && typedForms.at(i) == wordForms.at(j)) {
            append(pieces, Kind::Right, word.at(j));
            ++i;
            ++j;
        } else if (j == word.size() || (i < typed.size() && lengths.at(i + 1, j) >= lengths.at(i, j + 1))) {
            append(pieces, Kind::Extra, typed.at(i++));
        } else {
            append(pieces, Kind::Missing, word.at(j++));
        }
    }
    return pieces;
}

/// The letters of all pieces of a kind, e.g. "a、le".
QString listed(const QList<SpellingPiece> &pieces, Kind kind) {
    QStringList texts;
    for (const SpellingPiece &piece : pieces) {
        if (piece.kind == kind)
            texts += piece.text == u" " ? QStringLiteral("空格") : piece.text;
    }
    return texts.join(u'、');
}

} // namespace

SpellingComparison compareSpelling(const QString &typed, const QString &word) {
    const QString typedText = tidied(typed);
    const QString wordText = tidied(word);
    const Letters typedLetters = typedText.toUcs4();
    const Letters wordLetters = wordText.toUcs4();
    SpellingComparison comparison;
    comparison.isRight =
        !wordLetters.isEmpty() && comparedLetters(typedLetters) == comparedLetters(wordLetters);
    if (comparison.isRight)
        comparison.pieces = {{Kind::Right, wordText}};
    else if (std::max(typedLetters.size(), wordLetters.size()) <= longestComparedSpelling)
        comparison.pieces = aligned(typedLetters, wordLetters);
    else
        comparison.pieces = {{Kind::Extra, typedText}, {Kind::Missing, wordText}};
    comparison.pieces.removeIf([](const SpellingPiece &piece) { return piece.text.isEmpty(); });
    return comparison;
}

QString spokenText(const SpellingComparison &comparison, const QString &word) {
    if (comparison.isRight)
        return QStringLiteral("拼写正确：") + word;
    const QString extra = listed(comparison.pieces, Kind::Extra);
    const QString missing = listed(comparison.pieces, Kind::Missing);
    const bool isBlank = comparison.pieces.size() == 1 && !missing.isEmpty();
    if (isBlank)
        return QStringLiteral("没有写出：") + word;
    QString text = QStringLiteral("拼写有误，正确的是 ") + word;
    if (!extra.isEmpty())
        text += QStringLiteral("；写错或多写：") + extra;
    if (!missing.isEmpty())
        text += QStringLiteral("；漏写：") + missing;
    return text;
}

} // namespace lexiquill
