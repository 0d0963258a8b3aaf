#include "platform/linux/search_database.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <dlfcn.h>
#include <unistd.h>

namespace lexiquill {

namespace {

/// The library stands beside the one that holds this code.
const QByteArray &libraryPath() {
    static const QByteArray path = [] {
        Dl_info information{};
        if (::dladdr(reinterpret_cast<const void *>(&libraryPath), &information) == 0)
            return QByteArray();
        const QByteArray own(information.dli_fname);
        return own.first(own.lastIndexOf('/') + 1) + "liblexiquill_search_index.so";
    }();
    return path;
}

} // namespace

QString SearchDatabase::standardFilePath() {
    const QString directory = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return QDir(directory).filePath(QStringLiteral("Lexiquill/search-index.sqlite"));
}

bool SearchDatabase::isAvailable() {
    return ::access(libraryPath().constData(), R_OK) == 0;
}

std::unique_ptr<SearchDatabase> SearchDatabase::load(const QString &path) {
    // Never unloaded.
    void *const library = ::dlopen(libraryPath().constData(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr)
        return nullptr;
    using Create = SearchDatabase *(const QByteArray &);
    auto *const create = reinterpret_cast<Create *>(::dlsym(library, "lexiquillCreateSearchDatabase"));
    return std::unique_ptr<SearchDatabase>(create == nullptr ? nullptr : create(QFile::encodeName(path)));
}

} // namespace lexiquill
