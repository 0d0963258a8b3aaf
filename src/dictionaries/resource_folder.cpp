#include "dictionaries/resource_folder.h"

#include "platform/file_snapshot.h"

#include <QDir>
#include <QFileInfo>

namespace lexiquill {

std::optional<QByteArray> readResource(const QString &folder, const QString &name) {
    const QString root = QFileInfo(folder).canonicalFilePath();
    const QString path = QFileInfo(QDir(folder).filePath(name)).canonicalFilePath();
    if (root.isEmpty() || QDir::isAbsolutePath(name) || !path.startsWith(root + u'/'))
        return std::nullopt;
    const auto file = FileSnapshot::open(path);
    return file && file->size() <= maxResourceSize ? file->readAll(0) : std::nullopt;
}

} // namespace lexiquill
