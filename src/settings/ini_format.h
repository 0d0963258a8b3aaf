#pragma once

#include <QByteArray>
#include <QVariantMap>

namespace lexiquill {

// Settings as the text of a file in QSettings' INI format, which other programs can read with QSettings.
// QSettings itself is not used: on a full disk it cuts its file short, and it overlooks a file that another
// process replaces within a millisecond. Keys may have one group before a "/".

/// Texts, lists of texts, byte arrays, numbers and booleans are written; values of other types are left out.
QByteArray iniText(const QVariantMap &values);

/// Reads texts, lists of texts and byte arrays; numbers and booleans come back as texts. What cannot be read
/// is left out.
QVariantMap iniValues(const QByteArray &text);

} // namespace lexiquill
