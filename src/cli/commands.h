#pragma once

#include <QString>

/// The terminal commands. Each prints to standard output and returns; soft failures are printed too.
namespace lexiquill::commands {

/// Looks a term up, records it and prints the entry. Returns whether the wordbook was changed.
bool performLookup(const QString &term);
/// Lists the wordbook in its own order.
void listVocabulary();
/// Shows this week's plan.
void showWeeklyPlan();
/// Shows one recorded word and asks on standard input whether it was remembered. Returns whether the
/// wordbook was changed.
bool interactiveReview(const QString &word);
/// Writes this week's plan as Markdown into the current directory.
void exportPlan();

} // namespace lexiquill::commands
