#include "dictionaries/dictd/index_line.h"

#include <limits>

namespace lexiquill::dictd {

namespace {

int digitValue(char c) {
    if (c >= 'A' && c <= 'Z')
        return c - 'A';
    if (c >= 'a' && c <= 'z')
        return c - 'a' + 26;
    if (c >= '0' && c <= '9')
        return c - '0' + 52;
    return c == '+' ? 62 : c == '/' ? 63 : -1;
}

/// The next field of a line, which is removed from it with the tab behind it.
QByteArrayView takeField(QByteArrayView &line) {
    const qsizetype tab = line.indexOf('\t');
    const QByteArrayView field = tab < 0 ? line : line.first(tab);
    line = tab < 0 ? QByteArrayView() : line.sliced(tab + 1);
    return field;
}

} // namespace

std::optional<quint64> readNumber(QByteArrayView digits) {
    constexpr int bits = 6;
    if (digits.isEmpty())
        return std::nullopt;
    quint64 number = 0;
    for (const char c : digits) {
        const int digit = digitValue(c);
        if (digit < 0 || number > std::numeric_limits<quint64>::max() >> bits)
            return std::nullopt;
        number = number << bits | static_cast<quint64>(digit);
    }
    return number;
}

std::optional<IndexLine> readIndexLine(QByteArrayView line) {
    if (line.endsWith('\r'))
        line.chop(1);
    IndexLine result;
    result.word = takeField(line);
    const auto offset = readNumber(takeField(line));
    const auto size = readNumber(takeField(line));
    if (result.word.isEmpty() || !offset || !size || *size > std::numeric_limits<quint32>::max())
        return std::nullopt;
    result.place = {*offset, static_cast<quint32>(*size)};
    result.spelling = takeField(line);
    return result;
}

QByteArrayView databaseField(QByteArrayView word) {
    for (const QByteArrayView prefix : {QByteArrayView("00-database-"), QByteArrayView("00database")}) {
        if (word.startsWith(prefix))
            return word.sliced(prefix.size());
    }
    return {};
}

} // namespace lexiquill::dictd
