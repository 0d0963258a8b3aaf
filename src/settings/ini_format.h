#pragma once

#include <QByteArray>
#include <QVariantMap>

namespace lexiquill {

// Settings as text in QSettings' INI format, which other programs can read with QSettings. QSettings itself
// is not used: on a full disk it truncates its file, and it does not notice when another process replaces the
// file within a millisecond. A key may have one group, before a "/".

/// Texts, lists of texts, byte arrays, numbers and booleans are written; values of other types are left out.
QByteArray iniText(const QVariantMap &values);

/// Reads texts, lists of texts and byte arrays; numbers and booleans are returned as texts. Unreadable values
/// are left out.
QVariantMap iniValues(const QByteArray &text);

} // namespace lexiquill
