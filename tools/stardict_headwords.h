#pragma once

#include <QString>
#include <QStringList>

namespace lexiquill::tools {

/// The headwords in the uncompressed index of a dictionary with 32-bit offsets, in their order.
QStringList stardictHeadwords(const QString &indexPath);

} // namespace lexiquill::tools
