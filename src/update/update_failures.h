#pragma once

#include "platform/installation.h"
#include "platform/shared_directory.h"

#include <QString>

namespace lexiquill {

/// Why an update cannot be installed, for display.
QString displayText(SharedDirectory::Problem problem);
QString displayText(ReplacementObstacle obstacle);

} // namespace lexiquill
