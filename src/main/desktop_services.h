#pragma once

#include "app/shell/services.h"
#include "main/network_services.h"

namespace lexiquill {

class DictionaryImporter;

template <> DictionaryImporter &shared<DictionaryImporter>();
template <> CurrentWeeklyPlan &shared<CurrentWeeklyPlan>();
template <> HotKeyManager &shared<HotKeyManager>();
/// All services that the window uses.
template <> Services &shared<Services>();

} // namespace lexiquill
