#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace lexiquill {

/// The text as it stands in a URL behind "name=": everything that may not occur in a query is percent-encoded
/// UTF-8, but "&", "=", "+" and "?" stay as they are. Nothing for a text that is no valid UTF-16.
std::optional<QByteArray> queryEncoded(const QString &text);

} // namespace lexiquill
