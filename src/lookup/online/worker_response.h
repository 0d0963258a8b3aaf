#pragma once

#include "model/dictionary_entry.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace lexiquill {

/// Reads the answer of the program's own dictionary server to `query`. Stricter than for other servers: no
/// value if a member is missing or has the wrong type, if the answer has no success or no entry, or if it has
/// more than 10,000 groups, meanings and examples together.
std::optional<DictionaryEntry> parseWorkerResponse(const QByteArray &data, const QString &query);

} // namespace lexiquill
