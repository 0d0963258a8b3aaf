#include "app/test_services.h"

#include "storage/first_run_words.h"

#include <QFile>
#include <QThreadPool>

namespace lexiquill {

TestServices::TestServices(const QByteArray &wordbook, const QString &serverBase, OnlineSource *online,
                           const Clock &clock, const std::function<Calendar()> &calendar)
    : m_dictionary(online != nullptr ? *online : m_online, m_offline, m_defaults),
      m_updater({.http = m_http,
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
    const auto firstWords = [this, clock] {
        return firstRunWords([this](const QString &word) { return m_offline.lookup(word); }, clock());
    };
    m_storage = std::make_unique<StorageManager>(StorageManager::Dependencies{.storageFile = storageFile,
                                                                              .deletedWords = m_deletedWords,
                                                                              .firstWords = firstWords,
                                                                              .clock = clock,
                                                                              .calendar = calendar});
    m_plan = std::make_unique<CurrentWeeklyPlan>(*m_storage);
    m_sync = std::make_unique<SyncManager>(
        SyncManager::Dependencies{.apiBase = serverBase + QLatin1StringView("/api"),
                                  .http = m_http,
                                  .storage = *m_storage,
                                  .defaults = m_defaults});
    m_defaults.set(ServerAddresses::serverKey, serverBase);
    m_servers = std::make_unique<ServerSettings>(m_defaults);
    QObject::connect(m_servers.get(), &ServerSettings::changed, m_servers.get(), [this] {
        m_sync->setApiBase(m_servers->addresses().accountApi());
        m_updater.setUpdateCheckURL(QUrl(m_servers->addresses().versionRecord()));
    });
    m_services = std::make_unique<Services>(Services{.storage = *m_storage,
                                                     .plan = *m_plan,
                                                     .dictionary = m_dictionary,
                                                     .offlineDictionaries = m_offline,
                                                     .shelf = m_shelf,
                                                     .importer = m_importer,
                                                     .spotlight = m_spotlight,
                                                     .hotKeys = m_hotKeys,
                                                     .http = m_http,
                                                     .sync = *m_sync,
                                                     .updater = m_updater,
                                                     .defaults = m_defaults,
                                                     .servers = *m_servers,
                                                     .notifier = m_notifier,
                                                     .tray = m_tray});
}

TestServices::~TestServices() {
    // The pool ends with the application, which may already be gone.
    if (QThreadPool *const pool = QThreadPool::globalInstance())
        pool->waitForDone();
}

} // namespace lexiquill
