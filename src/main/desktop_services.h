#pragma once

#include "app/shell/services.h"
#include "main/network_services.h"

namespace lexiquill {

template <> CurrentWeeklyPlan &shared<CurrentWeeklyPlan>();
template <> HotKeyManager &shared<HotKeyManager>();
/// All that the window works with.
template <> Services &shared<Services>();

} // namespace lexiquill
