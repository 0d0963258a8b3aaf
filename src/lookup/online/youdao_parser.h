#pragma once

#include "model/dictionary_entry.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace lexiquill {

/// Reads the answer of the Youdao dictionary to `query`. Missing or malformed parts are skipped. No value if
/// there is no sense, or if there are more than 10,000.
std::optional<DictionaryEntry> parseYoudaoJSON(const QByteArray &data, const QString &query);

/// Whether the bytes are an answer of that dictionary, even if it does not know the word: an object with at
/// least one of its sections.
bool isYoudaoAnswer(const QByteArray &data);

} // namespace lexiquill
