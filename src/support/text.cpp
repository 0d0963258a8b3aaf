#include "support/text.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace lexiquill {

namespace {

bool isAscii(QStringView text) {
    return std::all_of(text.begin(), text.end(), [](QChar character) { return character.unicode() < 0x80; });
}

/// The code point that ends before `end`, and the number of UTF-16 units it takes.
std::pair<char32_t, qsizetype> codePointBefore(QStringView text, qsizetype end) {
    const QChar last = text[end - 1];
    if (last.isLowSurrogate() && end >= 2 && text[end - 2].isHighSurrogate())
        return {QChar::surrogateToUcs4(text[end - 2], last), 2};
    return {last.unicode(), 1};
}

std::pair<char32_t, qsizetype> codePointAt(QStringView text, qsizetype start) {
    const QChar first = text[start];
    if (first.isHighSurrogate() && start + 1 < text.size() && text[start + 1].isLowSurrogate())
        return {QChar::surrogateToUcs4(first, text[start + 1]), 2};
    return {first.unicode(), 1};
}

/// The end of the text's first `count` grapheme clusters, and how many of them there are.
std::pair<qsizetype, qsizetype> skipCharacters(const QString &text, qsizetype count) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype position = 0;
    qsizetype found = 0;
    while (found < count && position < text.size()) {
        const qsizetype next = finder.toNextBoundary();
        position = next < 0 ? text.size() : next;
        ++found;
    }
    return {position, found};
}

} // namespace

QStringView trimmedOfPunctuation(QStringView text, bool alsoWhiteSpace) {
    const auto isTrimmed = [alsoWhiteSpace](char32_t character) {
        return QChar::isPunct(character) || (alsoWhiteSpace && QChar::isSpace(character));
    };
    qsizetype start = 0;
    qsizetype end = text.size();
    while (start < end) {
        const auto [character, length] = codePointAt(text, start);
        if (!isTrimmed(character))
            break;
        start += length;
    }
    while (end > start) {
        const auto [character, length] = codePointBefore(text, end);
        if (!isTrimmed(character))
            break;
        end -= length;
    }
    return text.sliced(start, end - start);
}

QStringView trimmedOfBlanks(QStringView text) {
    const auto isBlank = [](QChar character) {
        return character == u'\t' || character.category() == QChar::Separator_Space;
    };
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

bool containsHan(QStringView text) {
    for (qsizetype i = 0; i < text.size();) {
        const auto [character, length] = codePointAt(text, i);
        if (character >= 0x2e80 && QChar::script(character) == QChar::Script_Han)
            return true;
        i += length;
    }
    return false;
}

QString leadingCharacters(const QString &text, qsizetype count) {
    // No cluster is longer than the text, so a short text needs no search. CR LF is one cluster of two units.
    if (text.size() <= count)
        return text;
    // A summary may be followed by megabytes that nobody will see; clusters of more than 64 units are not
    // text.
    const QString head = text.first(std::min(text.size(), count * 64 + 64));
    return text.first(skipCharacters(head, count).first);
}

qsizetype characterCount(const QString &text) {
    if (isAscii(text) && !text.contains(u'\r'))
        return text.size();
    return skipCharacters(text, text.size()).second;
}

QString textFromUtf8(std::string_view utf8) {
    const QString text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    return utf8.starts_with("\xef\xbb\xbf") ? QChar(QChar::ByteOrderMark) + text : text;
}

QString wordKey(const QString &text) {
    return text.trimmed().toLower();
}

} // namespace lexiquill
