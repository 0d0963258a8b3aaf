#include "app/test_services.h"

#include <QFile>

namespace lexiquill {

TestServices::TestServices(const QByteArray &wordbook, const QString &serverBase)
    : m_updater({.http = m_http,
                 .updateCheckURL = QUrl(serverBase + QLatin1StringView("/version.json")),
                 .currentVersion = QStringLiteral("1.0.0"),
                 .currentBuild = QStringLiteral("1"),
                 .installation = {.applicationPath = path(QStringLiteral("Lexiquill.app"))},
                 .platform = ScriptPlatform::Linux,
                 .quit = [](int) {},
                 .directory = m_directory.path()}) {
    const QString storageFile = path(QStringLiteral("vocabulary.json"));
    if (!wordbook.isNull()) {
        QFile file(storageFile);
        if (file.open(QIODevice::WriteOnly))
            file.write(wordbook);
    }
    m_storage = std::make_unique<StorageManager>(StorageManager::Dependencies{.storageFile = storageFile,
                                                                              .defaults = m_defaults,
                                                                              .dictionary = m_offline,
                                                                              .spotlight = m_spotlight});
    m_sync = std::make_unique<SyncManager>(
        SyncManager::Dependencies{.apiBase = serverBase + QLatin1StringView("/api"),
                                  .http = m_http,
                                  .storage = *m_storage,
                                  .defaults = m_defaults});
}

} // namespace lexiquill
