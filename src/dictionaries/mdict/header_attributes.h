#pragma once

#include <QHash>
#include <QString>
#include <QStringView>

namespace lexiquill::mdict {

/// The attributes of a header's element by their names in lower case; the first one of each name. Values are
/// free of character references. Text that is not well-formed XML is read as far as it makes sense: values
/// may contain anything, even quotation marks, or have none around them. Takes linear time.
QHash<QString, QString> readAttributes(QStringView header);

} // namespace lexiquill::mdict
