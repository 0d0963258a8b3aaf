#pragma once

#include <QString>

namespace lexiquill {

/// Prepares the process for any environment. Writing to a pipe that nobody reads, or beyond the file size
/// limit, fails instead of ending the process. Standard streams that were closed become /dev/null, so that no
/// file opened later takes their place. If HOME is not set, it is taken from the user's account.
void prepareProcess();

/// Prepares the heap for many long-lived allocations, of about this many bytes in total.
void expectAllocations(qsizetype size);

/// The directory of the running program's executable file.
QString executableDirectory();

/// The directory of the library that holds this function.
QString libraryDirectory();

/// Flushes the standard streams and ends the process at once. Does not wait for other threads, because they
/// may be waiting for a network that never answers.
[[noreturn]] void endProcess(int status);

} // namespace lexiquill
