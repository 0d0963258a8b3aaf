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

inline constexpr const char *moduleEntry = "lexiquill_module";

/// Null when the library is missing or broken.
template <typename Module> Module *loadModule() {
    return static_cast<Module *>(libraryInterface(Module::library, moduleEntry));
}

} // namespace lexiquill

/// Defines the entry function of a library, which returns an `Implementation` as an `Interface`.
#define LEXIQUILL_MODULE(Interface, Implementation)                                                          \
    extern "C" __attribute__((visibility("default"))) void *lexiquill_module();                              \
    void *lexiquill_module() {                                                                               \
        static Implementation implementation;                                                                \
        return static_cast<lexiquill::Interface *>(&implementation);                                         \
    }
