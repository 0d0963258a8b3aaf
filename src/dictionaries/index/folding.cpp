#include "dictionaries/index/folding.h"

#include <QString>

#include <algorithm>

namespace lexiquill {

namespace {

char lowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

bool isAscii(char c) {
    return static_cast<signed char>(c) >= 0;
}

QByteArray lowerCase(QByteArrayView text) {
    QByteArray folded(text.size(), Qt::Uninitialized);
    std::transform(text.begin(), text.end(), folded.begin(), lowerAscii);
    return folded;
}

/// Whether a three-byte character of UTF-8 may be Chinese, by its first two bytes.
bool beginsHan(unsigned char first, unsigned char second) {
    constexpr unsigned char extensionA = 0x90; // U+3400 and above
    constexpr unsigned char extensionB = 0xa0; // U+20000 and above
    return (first >= 0xe4 && first <= 0xe9) || (first == 0xe3 && second >= extensionA) ||
           (first == 0xf0 && second >= extensionB);
}

/// Whether folding changes nothing but ASCII letters.
bool isAsciiOrHan(QByteArrayView text) {
    for (qsizetype i = 0; i < text.size();) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (isAscii(text[i]))
            ++i;
        else if (byte >= 0xe4 && byte <= 0xe9 && i + 2 < text.size())
            i += 3;
        else
            return false;
    }
    return true;
}

} // namespace

QByteArray foldCase(QByteArrayView text) {
    if (std::all_of(text.begin(), text.end(), isAscii))
        return lowerCase(text);
    return QString::fromUtf8(text).toCaseFolded().toUtf8();
}

QByteArray foldedKey(QByteArrayView text) {
    if (isAsciiOrHan(text))
        return lowerCase(text);
    QString key = QString::fromUtf8(text).normalized(QString::NormalizationForm_KD);
    key.removeIf([](QChar c) { return c.category() == QChar::Mark_NonSpacing; });
    key.replace(u'’', u'\'');
    return key.toCaseFolded().toUtf8();
}

bool containsHan(QByteArrayView text) {
    for (qsizetype i = 0; i + 1 < text.size(); ++i) {
        if (beginsHan(static_cast<unsigned char>(text[i]), static_cast<unsigned char>(text[i + 1])))
            return true;
    }
    return false;
}

} // namespace lexiquill
