#pragma once

#include "lookup/dictionary_service.h"

#include <QString>

namespace lexiquill::terminal {

/// Looks a term up in the process-wide service and waits for the answer: at most five seconds, then only the
/// offline dictionaries are asked, and `actualMode` stays the current mode.
LookupResult lookUp(const QString &term);

} // namespace lexiquill::terminal
