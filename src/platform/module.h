#pragma once

namespace lexiquill {

/// The entry function of a library that is loaded at run time. It returns the library's interface, which must
/// stay valid.
using ModuleEntry = void *();

/// Whether this program's library of this name ("lexiquill_network") exists; nothing is loaded.
bool hasLibrary(const char *name);

/// Loads this program's library of this name and calls its entry function. Null when the library is missing
/// or broken. It is never unloaded.
void *libraryInterface(const char *name, const char *entry);

} // namespace lexiquill
