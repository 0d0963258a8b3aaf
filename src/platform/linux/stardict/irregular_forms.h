#pragma once

#include <QString>
#include <QStringList>

namespace lexiquill::stardict {

/// The base forms of an irregular English form in lower case ("went": "go"), likeliest first.
QStringList irregularBases(const QString &form);

} // namespace lexiquill::stardict
