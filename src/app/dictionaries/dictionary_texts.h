#pragma once

#include "dictionaries/dictionary_problem.h"
#include "dictionaries/import/import_result.h"

#include <QString>

namespace lexiquill {

/// Why a dictionary cannot be used, for display; empty when it can.
QString displayText(DictionaryProblem problem);
/// What became of an import, for display.
QString displayText(const ImportResult &result);

/// A name from outside in one line: control and formatting characters, which could change how the text around
/// it is shown, are replaced; long ones are shortened in the middle.
QString shownName(const QString &name);

/// A path with "~" for the home directory.
QString shownPath(const QString &path);

} // namespace lexiquill
