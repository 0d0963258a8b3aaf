#pragma once

#include "app/shell/services.h"
#include "main/network_services.h"

namespace lexiquill {

class DictionaryImporter;
class Notifier;
class Tray;

template <> DictionaryImporter &shared<DictionaryImporter>();
template <> CurrentWeeklyPlan &shared<CurrentWeeklyPlan>();
template <> HotKeyManager &shared<HotKeyManager>();
template <> Notifier &shared<Notifier>();
template <> Tray &shared<Tray>();
/// All services that the window uses.
template <> Services &shared<Services>();

} // namespace lexiquill
