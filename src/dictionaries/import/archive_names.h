#pragma once

#include "dictionaries/import/import_limits.h"

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace lexiquill {

/// The name of an archive's entry as text. Names are UTF-8; old Windows programs write Chinese ones in GB
/// 18030. No value when it is neither.
std::optional<QString> decodedName(QByteArrayView name);

/// The path of an archive's entry below the directory into which it is unpacked: the parts joined by "/",
/// without "." and without a slash at the end. No value when it could lead elsewhere or has characters that
/// no file should have. Empty for the directory itself.
std::optional<QString> safePath(const QString &name, const ImportLimits &limits);

} // namespace lexiquill
