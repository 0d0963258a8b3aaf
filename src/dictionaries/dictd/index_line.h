#pragma once

#include "dictionaries/dictionary_reader.h"

#include <QByteArrayView>

#include <optional>

namespace lexiquill::dictd {

/// A line of an index: word, offset, size, and often the original spelling, separated by tabs.
struct IndexLine {
    QByteArrayView word;
    QByteArrayView spelling; ///< empty without one
    ArticlePlace place;
};

/// No value for a malformed line.
std::optional<IndexLine> readIndexLine(QByteArrayView line);

/// A number in base 64 with the digits A-Z a-z 0-9 + /, most significant first. No value for other characters
/// and for more than 64 bits.
std::optional<quint64> readNumber(QByteArrayView digits);

/// The part of the name of an entry about the dictionary itself ("short" of "00-database-short" and
/// "00databaseshort"); empty for other words.
QByteArrayView databaseField(QByteArrayView word);

} // namespace lexiquill::dictd
