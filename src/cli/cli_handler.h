#pragma once

#include "cli/command_services.h"

#include <QStringList>

namespace lexiquill::CLIHandler {

/// Runs the command named by the first of `args` (the arguments without the program path), and ends the
/// process. The exit status is 1 for a search without a term, else 0.
[[noreturn]] void run(const CommandServices &services, const QStringList &args);

} // namespace lexiquill::CLIHandler
