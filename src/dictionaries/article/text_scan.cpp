#include "dictionaries/article/text_scan.h"

#include "support/text.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace lexiquill::article {

bool isHan(QChar c) {
    // The planes of Chinese characters outside the first one.
    const bool isFirstHalf = c.unicode() >= 0xd840 && c.unicode() <= 0xd8c0;
    return isFirstHalf || lexiquill::isHan(c.unicode());
}

bool isAsciiLetter(QChar c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool isChinese(QStringView text) {
    const auto isKana = [](QChar c) {
        return c.unicode() >= 0x3041 && c.unicode() <= 0x30fa;
    };
    return containsHan(text) && std::none_of(text.begin(), text.end(), isKana);
}

QChar charAt(QStringView text, qsizetype position) {
    return position >= 0 && position < text.size() ? text[position] : QChar();
}

qsizetype skipBlanks(QStringView text, qsizetype position) {
    while (position < text.size() && text[position].isSpace())
        ++position;
    return position;
}

QChar closingBracket(QChar open) {
    static constexpr std::pair<char16_t, char16_t> pairs[] = {
        {u'(', u')'},   {u'[', u']'},   {u'<', u'>'},   {u'（', u'）'}, {u'【', u'】'}, {u'〈', u'〉'},
        {u'《', u'》'}, {u'〔', u'〕'}, {u'「', u'」'}, {u'“', u'”'},   {u'{', u'}'},
    };
    for (const auto &[left, right] : pairs) {
        if (open == left)
            return right;
    }
    return {};
}

QList<int> bracketDepths(QStringView text) {
    QList<int> changes(text.size() + 1, 0);
    std::vector<std::pair<QChar, qsizetype>> open;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (const QChar closing = closingBracket(text[i]); !closing.isNull()) {
            open.emplace_back(closing, i);
        } else if (!open.empty() && open.back().first == text[i]) {
            ++changes[open.back().second];
            --changes[i + 1];
            open.pop_back();
        }
    }
    int depth = 0;
    for (int &change : changes)
        change = depth += change;
    return changes;
}

} // namespace lexiquill::article
