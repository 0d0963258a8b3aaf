#include "desktop_search/index/search_database.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <tuple>

namespace lexiquill {

QString SearchDatabase::standardFilePath() {
    const QString directory = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return QDir(directory).filePath(QStringLiteral("Lexiquill/search-index.sqlite"));
}

QString SearchDatabase::gapMarker(const QString &path) {
    return path + QStringLiteral(".gap");
}

void SearchDatabase::noteGap(const QString &path) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    std::ignore = QFile(gapMarker(path)).open(QIODevice::WriteOnly | QIODevice::NewOnly);
}

} // namespace lexiquill
