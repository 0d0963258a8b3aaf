#include "platform/file_stamp.h"

#include <QFile>

#include <sys/stat.h>

namespace lexiquill {

namespace {

FileStamp stampOfKind(const QString &path, mode_t kind) {
    struct stat status {};
    if (stat(QFile::encodeName(path).constData(), &status) != 0 || (status.st_mode & S_IFMT) != kind)
        return {};
    return {.size = status.st_size,
            .changed = status.st_mtim.tv_sec * qint64(1'000'000'000) + status.st_mtim.tv_nsec,
            .number = status.st_ino};
}

} // namespace

FileStamp stampOf(const QString &path) {
    return stampOfKind(path, S_IFREG);
}

FileStamp stampOfDirectory(const QString &path) {
    return stampOfKind(path, S_IFDIR);
}

} // namespace lexiquill
