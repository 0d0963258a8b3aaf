#include "support/text.h"

#include <unicode/ubrk.h>

#include <algorithm>
#include <memory>
#include <optional>

namespace lexiquill {

namespace {

/// Whether a character is a complete grapheme cluster if its neighbours are characters of the same group:
/// Latin letters and signs, Chinese characters, and their punctuation. Nearly all texts consist of these.
bool standsAlone(QChar character) {
    const char16_t code = character.unicode();
    return (code < 0x300 && code != u'\r') || (code >= 0x4e00 && code < 0xa000) ||
           (code >= 0x3000 && code < 0x3029) || (code >= 0xff01 && code < 0xff5f);
}

bool allStandAlone(QStringView text) {
    return std::all_of(text.begin(), text.end(), standsAlone);
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

/// The ends of the text's grapheme clusters, found by ICU. Qt splits flags, emoji and letters of several
/// scripts in two, and also counts some other clusters wrongly.
class CharacterBreaks {
public:
    explicit CharacterBreaks(QStringView text) : m_iterator(iterator()) {
        UErrorCode status = U_ZERO_ERROR;
        if (m_iterator != nullptr)
            ubrk_setText(m_iterator, text.utf16(), static_cast<int32_t>(text.size()), &status);
    }

    /// The end of the next cluster; no value at the end of the text.
    std::optional<qsizetype> next() {
        const int32_t end = m_iterator != nullptr ? ubrk_next(m_iterator) : UBRK_DONE;
        return end == UBRK_DONE ? std::nullopt : std::optional<qsizetype>(end);
    }

private:
    struct Close {
        void operator()(UBreakIterator *iterator) const { ubrk_close(iterator); }
    };

    /// Shared, because creating an iterator takes longer than going through most texts.
    static UBreakIterator *iterator() {
        UErrorCode status = U_ZERO_ERROR;
        static thread_local const std::unique_ptr<UBreakIterator, Close> shared(
            ubrk_open(UBRK_CHARACTER, "", nullptr, 0, &status));
        return shared.get();
    }

    UBreakIterator *m_iterator;
};

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

bool isHan(char32_t character) {
    constexpr char32_t firstHan = 0x2e80;
    return character >= firstHan && QChar::script(character) == QChar::Script_Han;
}

bool containsHan(QStringView text) {
    for (qsizetype i = 0; i < text.size();) {
        const auto [character, length] = codePointAt(text, i);
        if (isHan(character))
            return true;
        i += length;
    }
    return false;
}

QString leadingCharacters(const QString &text, qsizetype count) {
    // No cluster is longer than the text, so a short text needs no search.
    if (text.size() <= count)
        return text;
    if (allStandAlone(QStringView(text).first(count + 1)))
        return text.first(count);
    // Search only a part: the text may continue for megabytes that nobody will see. No real cluster has more
    // than 64 units.
    CharacterBreaks breaks(QStringView(text).first(std::min(text.size(), count * 64 + 64)));
    qsizetype end = 0;
    for (qsizetype i = 0; i < count; ++i) {
        const auto next = breaks.next();
        if (!next)
            break;
        end = *next;
    }
    return text.first(end);
}

qsizetype characterCount(const QString &text) {
    if (allStandAlone(text))
        return text.size();
    CharacterBreaks breaks(text);
    qsizetype count = 0;
    while (breaks.next())
        ++count;
    return count;
}

QString wordKey(const QString &text) {
    return text.trimmed().toLower();
}

} // namespace lexiquill
