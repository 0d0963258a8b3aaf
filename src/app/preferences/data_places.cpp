#include "app/preferences/data_places.h"

#include "app/shell/services.h"
#include "settings/user_defaults.h"
#include "storage/storage_manager.h"
#include "storage/wordbook_backups.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QStandardPaths>
#include <QUrl>

namespace lexiquill {

QString DataPlaces::wordbook() {
    return Services::current().storage.storageFile();
}

QString DataPlaces::backups() {
    return WordbookBackup::directoryFor(wordbook());
}

QString DataPlaces::settings() {
    return Services::current().defaults.filePath();
}

QString DataPlaces::caches() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
           QStringLiteral("/Lexiquill");
}

bool DataPlaces::openFolder(const QString &path) {
    QFileInfo folder(path);
    while (!folder.isDir() && !folder.isRoot())
        folder.setFile(folder.absolutePath());
    return QDesktopServices::openUrl(QUrl::fromLocalFile(folder.absoluteFilePath()));
}

} // namespace lexiquill
