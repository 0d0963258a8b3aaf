#include "platform/linux/sqlite/search_text.h"

#include <QChar>

#include <algorithm>

namespace lexiquill::sqlite {

namespace {

constexpr qsizetype longestQuery = 256;

bool isHan(char32_t character) {
    return QChar::script(character) == QChar::Script_Han;
}

} // namespace

QString segmented(const QString &text) {
    QString result;
    result.reserve(text.size() * 2);
    for (const char32_t character : text.toStdU32String()) {
        const bool isWord = isHan(character);
        if (isWord)
            result += u' ';
        result += QChar::fromUcs4(character);
        if (isWord)
            result += u' ';
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
    query = query.normalized(QString::NormalizationForm_KC);
    std::replace_if(
        query.begin(), query.end(), [](QChar character) { return !character.isPrint(); }, u' ');
    return query.simplified();
}

QString matchExpression(const QString &query) {
    QStringList phrases;
    for (const QString &term : query.split(u' ', Qt::SkipEmptyParts)) {
        const std::u32string characters = term.toStdU32String();
        const auto last = std::find_if(characters.rbegin(), characters.rend(),
                                       [](char32_t character) { return QChar::isLetterOrNumber(character); });
        if (last == characters.rend())
            continue;
        QString phrase = segmented(term).replace(u'"', u' ');
        phrase = u'"' + phrase + (isHan(*last) ? QStringLiteral("\"") : QStringLiteral("\" *"));
        phrases += phrase;
    }
    return phrases.join(QStringLiteral(" AND "));
}

} // namespace lexiquill::sqlite
