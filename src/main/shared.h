#pragma once

#include <QString>

namespace lexiquill {

/// The process-wide instance of a service. Created at the first call, with all that it depends on, and never
/// destroyed. Only the code in this folder calls this; all other code gets its dependencies through
/// constructors.
///
/// core_services.cpp defines the services of all programs; network_services.cpp and desktop_services.cpp
/// define those of the network library and of the window library.
template <typename Service> Service &shared();

/// The cache directory: "$XDG_CACHE_HOME/Lexiquill".
QString cacheDirectory();

} // namespace lexiquill
