#pragma once

#include <QString>

namespace lexiquill {

/// Lets writes to a pipe that nobody reads fail instead of ending the process.
void ignoreBrokenPipes();

/// The directory of the running program's executable file.
QString executableDirectory();

} // namespace lexiquill
