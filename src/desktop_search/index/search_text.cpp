#include "desktop_search/index/search_text.h"

#include "support/text.h"

#include <QChar>

#include <algorithm>

namespace lexiquill {

namespace {

constexpr qsizetype longestQuery = 256;

/// Counts as a word in the full-text index, so no phrase extends across it.
constexpr QChar phraseEnd(0xe000);

/// The part of a term from its first letter or digit to its last one.
QString trimmedToWord(const QString &term) {
    const std::u32string characters = term.toStdU32String();
    const auto isOfWord = [](char32_t character) {
        return QChar::isLetterOrNumber(character);
    };
    const auto first = std::find_if(characters.begin(), characters.end(), isOfWord);
    const auto last = std::find_if(characters.rbegin(), characters.rend(), isOfWord).base();
    return first < last ? QString::fromStdU32String({first, last}) : QString();
}

} // namespace

QString comparable(const QString &text) {
    QString result;
    for (const char32_t character : text.normalized(QString::NormalizationForm_KC).toStdU32String())
        result += QChar::isPrint(character) ? QString::fromUcs4(&character, 1) : QStringLiteral(" ");
    return result.simplified();
}

QString segmented(const QString &text) {
    QString result;
    result.reserve(text.size() * 2);
    bool isBehindHan = false;
    for (const char32_t character : text.normalized(QString::NormalizationForm_KC).toStdU32String()) {
        if (isHan(character)) {
            result += u' ' + QString::fromUcs4(&character, 1) + u' ';
            isBehindHan = true;
        } else if (isBehindHan && !QChar::isSpace(character)) {
            if (!QChar::isLetterOrNumber(character))
                result += u' ' + QString(phraseEnd) + u' ';
            else
                result += QChar::fromUcs4(character);
            isBehindHan = false;
        } else {
            result += QChar::fromUcs4(character);
        }
    }
    return result;
}

QString normalizedQuery(const QStringList &terms) {
    QString query;
    for (const QString &term : terms) {
        if (query.size() + term.size() > longestQuery)
            return {};
        query += u' ' + term;
    }
    return comparable(query);
}

QString matchExpression(const QString &query) {
    QStringList phrases;
    for (const QString &term : query.split(u' ', Qt::SkipEmptyParts)) {
        const QString word = trimmedToWord(term);
        if (word.isEmpty())
            continue;
        const bool mayGoOn = !isHan(word.toStdU32String().back());
        phrases += u'"' + segmented(word).replace(u'"', u' ') +
                   (mayGoOn ? QStringLiteral("\" *") : QStringLiteral("\""));
    }
    return phrases.join(QStringLiteral(" AND "));
}

} // namespace lexiquill
