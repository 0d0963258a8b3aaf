#pragma once

#include <QString>
#include <QStringList>

namespace lexiquill::stardict {

/// The .ifo files below a directory, sorted by path. Hidden directories, what lies more than eight levels
/// deep, and what comes after some thousand entries is left out; each real file appears once.
QStringList findDictionaries(const QString &directory);

} // namespace lexiquill::stardict
