#pragma once

#include <QByteArray>
#include <QVariantMap>

namespace lexiquill {

/// Settings as the text of a file that QSettings reads in its INI format. Keys may have one group before a
/// "/". Text, lists of text, byte arrays, numbers and booleans are written; values of other types are left
/// out.
QByteArray iniText(const QVariantMap &values);

} // namespace lexiquill
