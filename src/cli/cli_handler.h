#pragma once

#include "cli/command_services.h"

#include <QStringList>

namespace lexiquill::CLIHandler {

/// Runs the command that the first of `args` (the arguments without the program path) names, and ends the
/// process: with status 1 for a search without a term, else with 0.
[[noreturn]] void run(const CommandServices &services, const QStringList &args);

} // namespace lexiquill::CLIHandler
