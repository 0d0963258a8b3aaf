#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace lexiquill {

/// Largest picture or sound that is read, in bytes.
inline constexpr qint64 maxResourceSize = qint64(16) * 1024 * 1024;

/// The file `name`, a relative path, below a folder of pictures and sounds. No value for a path that leaves
/// the folder, also through a link, and for a file that is missing or too large.
std::optional<QByteArray> readResource(const QString &folder, const QString &name);

} // namespace lexiquill
