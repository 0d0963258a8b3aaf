#include "dictionaries/article/wordnet_text.h"

#include "dictionaries/article/text_scan.h"
#include "support/text.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace lexiquill::article {

namespace {

/// What a definition begins with: a part of speech, a number, or both, and a colon.
struct Head {
    QStringView label;
    qsizetype length = 0;
};

std::optional<Head> headOf(QStringView line) {
    static constexpr QStringView labels[] = {u"adj", u"adv", u"n", u"v", u"a", u"s", u"r"};
    const qsizetype start = skipBlanks(line, 0);
    qsizetype at = start;
    while (at < line.size() && isAsciiLetter(line[at]))
        ++at;
    const QStringView label = line.sliced(start, at - start);
    if (!label.isEmpty() && std::find(std::begin(labels), std::end(labels), label) == std::end(labels))
        return std::nullopt;
    at = skipBlanks(line, at);
    const qsizetype number = at;
    while (at < line.size() && at - number < 3 && line[at].isDigit())
        ++at;
    if (label.isEmpty() && at == number)
        return std::nullopt;
    at = skipBlanks(line, at);
    if (charAt(line, at) != u':' || !charAt(line, at + 1).isSpace())
        return std::nullopt;
    return Head{label, skipBlanks(line, at + 1)};
}

QString nameOf(QStringView label) {
    if (label == u"s")
        return QStringLiteral("adj");
    return label == u"r" ? QStringLiteral("adv") : label.toString();
}

} // namespace

bool isWordNetText(const QString &text) {
    if (containsHan(text))
        return false;
    for (const QStringView line : QStringView(text).tokenize(u'\n')) {
        if (const auto head = headOf(line); head && !head->label.isEmpty())
            return true;
    }
    return false;
}

PlainArticle readWordNet(const QString &text) {
    PlainArticle article;
    article.rawText = text;
    for (const QStringView line : QStringView(text).tokenize(u'\n')) {
        const QStringView words = line.trimmed();
        if (const auto head = headOf(line)) {
            if (!head->label.isEmpty())
                article.lines.append({nameOf(head->label) + u'.', LineRole::Heading});
            article.lines.append({line.sliced(head->length).trimmed().toString(), LineRole::Item});
        } else if (!article.lines.isEmpty() && article.lines.last().role == LineRole::Item &&
                   !words.isEmpty()) {
            article.lines.last().text += u' ' + words.toString();
        } else if (!words.isEmpty()) {
            article.lines.append({words.toString()});
        }
    }
    return article;
}

} // namespace lexiquill::article
