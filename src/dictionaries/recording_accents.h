#pragma once

#include "model/accent.h"

#include <QStringList>

namespace lexiquill {

/// The paths of recordings in the order in which to try them: first those whose names show the accent, then
/// those that show none.
QStringList inOrderFor(Accent accent, QStringList paths);

} // namespace lexiquill
