#pragma once

#include "model/dictionary_entry.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace lexiquill {

/// Reads the answer of the program's own dictionary server to `query`. Unlike others, this server is held to
/// its word: a member that is missing or of the wrong type, an answer without success or without an entry, or
/// more than 10,000 meanings or examples give nothing.
std::optional<DictionaryEntry> parseWorkerResponse(const QByteArray &data, const QString &query);

} // namespace lexiquill
