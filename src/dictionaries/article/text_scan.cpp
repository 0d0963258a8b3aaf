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

namespace {

constexpr std::pair<char16_t, char16_t> brackets[] = {
    {u'(', u')'},   {u'[', u']'},   {u'<', u'>'},   {u'（', u'）'}, {u'【', u'】'},
    {u'〈', u'〉'}, {u'《', u'》'}, {u'〔', u'〕'}, {u'「', u'」'}, {u'“', u'”'},
    {u'{', u'}'},   {u'［', u'］'}, {u'〖', u'〗'},
};

/// The bracket that `close` closes; a zero character if it is not a closing bracket.
QChar openingBracket(QChar close) {
    for (const auto &[left, right] : brackets) {
        if (close == right)
            return left;
    }
    return {};
}

bool isClosing(QChar c) {
    return !openingBracket(c).isNull();
}

} // namespace

QChar closingBracket(QChar open) {
    for (const auto &[left, right] : brackets) {
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

bool endsSentence(QChar c) {
    return QStringView(u".!?。！？…").contains(c);
}

qsizetype chineseStart(QStringView text) {
    qsizetype at = std::find_if(text.begin(), text.end(), [](QChar c) { return isHan(c); }) - text.begin();
    while (at < text.size() && at > 0 && QStringView(u"([（【〈《〔「“‘…").contains(text[at - 1]))
        --at;
    return at;
}

int latinWordCount(QStringView text) {
    int words = 0;
    bool inWord = false;
    for (const QChar c : text) {
        const bool letter = c.isLetter() && !isHan(c);
        words += letter && !inWord ? 1 : 0;
        inWord = letter || (inWord && (c == u'\'' || c == u'’' || c == u'-' || c == u'.'));
    }
    return words;
}

bool mentions(QStringView text, QStringView headword) {
    if (text.contains(u'~') || text.contains(u'～'))
        return true;
    if (containsHan(headword))
        return text.contains(headword);
    // Inflected forms change the last letter at most.
    QStringView stem = headword.first(std::max<qsizetype>(headword.indexOf(u' '), 0));
    if (stem.isEmpty())
        stem = headword;
    constexpr qsizetype shortest = 4;
    if (stem.size() >= shortest && QStringView(u"ey").contains(stem.back()))
        stem.chop(1);
    if (stem.isEmpty())
        return false;
    for (qsizetype at = text.indexOf(stem, 0, Qt::CaseInsensitive); at >= 0;
         at = text.indexOf(stem, at + 1, Qt::CaseInsensitive)) {
        if (!isAsciiLetter(charAt(text, at - 1)))
            return true;
    }
    return false;
}

SentencePair sentencePair(QStringView text) {
    text = text.trimmed();
    const qsizetype han = chineseStart(text);
    if (latinWordCount(text.first(han)) > 0)
        return {text.first(han).trimmed(), text.sliced(han)};
    // Chinese first: the English begins behind the last Chinese character.
    qsizetype end = text.size();
    while (end > 0 && !isHan(text[end - 1]))
        --end;
    while (end < text.size() && !isAsciiLetter(text[end]))
        ++end;
    return {text.sliced(end), text.first(end).trimmed()};
}

QStringView withoutTornMarks(QStringView text) {
    const auto isQuote = [](QChar c) {
        return c == u'"';
    };
    text = text.trimmed();
    constexpr int mostMarks = 8;
    for (int i = 0; i < mostMarks && !text.isEmpty(); ++i) {
        const QChar first = text.front();
        const QChar last = text.back();
        const bool oddQuotes = std::count_if(text.begin(), text.end(), isQuote) % 2 == 1;
        const QChar closing = closingBracket(first);
        const bool tornStart = (!closing.isNull() && !text.contains(closing)) ||
                               (isQuote(first) && oddQuotes) || (isClosing(first) && first != u'>');
        const bool tornEnd = (!closingBracket(last).isNull()) || (isQuote(last) && oddQuotes) ||
                             (isClosing(last) && last != u'>' && !text.contains(openingBracket(last)));
        if (!tornStart && !tornEnd)
            break;
        if (tornStart)
            text = text.sliced(1);
        else
            text.chop(1);
        text = text.trimmed();
    }
    return text;
}

} // namespace lexiquill::article
