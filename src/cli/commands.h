#pragma once

#include "cli/command_services.h"

#include <QString>

/// The terminal commands. Each prints its result or a failure message to standard output.
namespace lexiquill::commands {

/// Looks a term up, records it and prints the entry. Returns whether the wordbook was changed.
bool performLookup(const CommandServices &services, const QString &term);
/// Lists the wordbook in its stored order.
void listVocabulary(const CommandServices &services);
/// Shows this week's plan.
void showWeeklyPlan(const CommandServices &services);
/// Shows one recorded word and asks on standard input whether it was remembered. Returns whether the
/// wordbook was changed.
bool interactiveReview(const CommandServices &services, const QString &word);
/// Writes this week's plan as Markdown into the current directory. A failure to write is not reported.
void exportPlan(const CommandServices &services);

} // namespace lexiquill::commands
