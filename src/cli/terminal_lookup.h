#pragma once

#include "cli/command_services.h"
#include "lookup/dictionary_service.h"

#include <QString>

namespace lexiquill::terminal {

/// Looks a term up and waits at most five seconds for the answer. After that it asks only the offline
/// dictionaries; `actualMode` is then still the current mode.
LookupResult lookUp(const CommandServices &services, const QString &term);

} // namespace lexiquill::terminal
