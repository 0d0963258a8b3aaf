#include "platform/module.h"
#include "platform/process.h"

#include <QFile>

#include <dlfcn.h>
#include <unistd.h>

namespace lexiquill {

namespace {

QByteArray pathOf(const char *name) {
    return QFile::encodeName(libraryDirectory()) + "/lib" + name + ".so";
}

} // namespace

bool hasLibrary(const char *name) {
    return ::access(pathOf(name).constData(), R_OK) == 0;
}

void *libraryInterface(const char *name, const char *entry) {
    void *const library = ::dlopen(pathOf(name).constData(), RTLD_NOW | RTLD_LOCAL);
    auto *const function =
        library != nullptr ? reinterpret_cast<ModuleEntry *>(::dlsym(library, entry)) : nullptr;
    return function != nullptr ? function() : nullptr;
}

} // namespace lexiquill
