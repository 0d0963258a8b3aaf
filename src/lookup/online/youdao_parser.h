#pragma once

#include "model/dictionary_entry.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace lexiquill {

/// Reads the answer of the Youdao dictionary to `query`. Parts that are missing or malformed contribute
/// nothing. Nothing without a single sense, or with more of them than any word has.
std::optional<DictionaryEntry> parseYoudaoJSON(const QByteArray &data, const QString &query);

/// Whether the bytes are an answer of that dictionary at all, be it that it does not know the word: an object
/// with at least one of its sections.
bool isYoudaoAnswer(const QByteArray &data);

} // namespace lexiquill
