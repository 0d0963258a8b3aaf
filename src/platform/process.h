#pragma once

#include <QString>

namespace lexiquill {

/// Prepares the process for whatever surroundings it was started in: writes to a pipe that nobody reads, or
/// beyond the limit of file sizes, fail instead of ending it; standard streams that were closed are empty
/// instead of being whichever file is opened next; and without HOME the home directory is the account's.
void prepareProcess();

/// Makes ready for many allocations that are kept, of about this many bytes in all.
void expectAllocations(qsizetype size);

/// The directory of the running program's executable file.
QString executableDirectory();

/// The directory of the library that holds this function.
QString libraryDirectory();

/// Writes out the standard streams and ends the process at once, whatever other threads are doing: they may
/// be waiting for a network that never answers.
[[noreturn]] void endProcess(int status);

} // namespace lexiquill
