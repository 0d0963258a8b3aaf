#pragma once

#include <QString>

namespace lexiquill {

/// The process-wide instance of a service: made when it is first asked for, with all that it depends on, and
/// never destroyed. Only the entry points and the wiring in this folder ask for one; everything else gets
/// what it needs through its constructor.
///
/// core_services.cpp has those of every face, network_services.cpp and desktop_services.cpp those of the
/// libraries for the network and the window.
template <typename Service> Service &shared();

/// Where caches lie: "$XDG_CACHE_HOME/Lexiquill".
QString cacheDirectory();

} // namespace lexiquill
