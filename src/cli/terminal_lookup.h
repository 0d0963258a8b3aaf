#pragma once

#include "cli/command_services.h"
#include "lookup/dictionary_service.h"

#include <QString>

namespace lexiquill::terminal {

/// Looks a term up and waits for the answer: at most five seconds, then only the offline dictionaries are
/// asked, and `actualMode` stays the current mode.
LookupResult lookUp(const CommandServices &services, const QString &term);

} // namespace lexiquill::terminal
