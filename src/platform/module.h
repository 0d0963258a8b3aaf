#pragma once

namespace lexiquill {

/// What an entry function of a library that is loaded at run time returns: its interface. It must stay valid.
using ModuleEntry = void *();

/// Whether this program's library of this name ("lexiquill_network") is there; nothing is loaded.
bool hasLibrary(const char *name);

/// Loads this program's library of this name and calls its entry function. Null when the library is missing
/// or broken. It is never unloaded.
void *libraryInterface(const char *name, const char *entry);

} // namespace lexiquill
