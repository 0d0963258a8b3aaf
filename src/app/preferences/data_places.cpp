#include "app/preferences/data_places.h"

#include "app/shell/services.h"
#include "dictionaries/dictionary_shelf.h"
#include "settings/user_defaults.h"
#include "storage/storage_manager.h"
#include "storage/wordbook_backups.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

namespace lexiquill {

QString DataPlaces::wordbook() {
    return Services::current().storage.storageFile();
}

QString DataPlaces::backups() {
    return WordbookBackup::directoryFor(wordbook());
}

QString DataPlaces::dictionaries() {
    return DictionaryShelf::importedDirectory();
}

QString DataPlaces::settings() {
    return Services::current().defaults.filePath();
}

QString DataPlaces::caches() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
           QStringLiteral("/Lexiquill");
}

void DataPlaces::openFolder(const QString &path) {
    QFileInfo place(path);
    while (!place.isDir() && !place.isRoot())
        place.setFile(place.absolutePath());
    const QString folder = place.absoluteFilePath();
    // The desktop's own program is asked first, because only its status tells that no file manager answered.
    // It may run as long as the file manager, so it has no parent.
    auto *const opener = new QProcess;
    connect(opener, &QProcess::finished, opener, &QObject::deleteLater);
    connect(opener, &QProcess::finished, this, [this, folder](int status, QProcess::ExitStatus exit) {
        if (exit == QProcess::NormalExit && status != 0)
            tellFailure(folder);
    });
    connect(opener, &QProcess::errorOccurred, this, [this, opener, folder](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart)
            return;
        opener->deleteLater();
        if (!QDesktopServices::openUrl(QUrl::fromLocalFile(folder)))
            tellFailure(folder);
    });
    opener->setStandardInputFile(QProcess::nullDevice());
    opener->setStandardOutputFile(QProcess::nullDevice());
    opener->setStandardErrorFile(QProcess::nullDevice());
    opener->start(QStringLiteral("xdg-open"), {folder});
}

void DataPlaces::tellFailure(const QString &folder) {
    Q_EMIT failed(QStringLiteral("没有可以打开文件夹的程序：") + folder);
}

} // namespace lexiquill
