#pragma once

#include <QString>
#include <QStringList>

namespace lexiquill::stardict {

/// The .ifo files below a directory, sorted by path. Leaves out hidden directories, files more than eight
/// levels deep, and everything after the first 10,000 entries. Each real file appears once.
QStringList findDictionaries(const QString &directory);

} // namespace lexiquill::stardict
