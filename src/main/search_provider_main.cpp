#include "desktop_search/index/search_database.h"
#include "desktop_search/provider/gnome_provider.h"
#include "desktop_search/provider/krunner_provider.h"
#include "main/core_services.h"
#include "main/modules.h"
#include "platform/process.h"
#include "storage/deleted_words.h"
#include "storage/storage_manager.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <cstdlib>

using namespace lexiquill;

namespace {

const QString serviceName = QStringLiteral("com.lexiquill.Lexiquill.SearchProvider");
const QString objectPath = QStringLiteral("/com/lexiquill/Lexiquill/SearchProvider");

/// The time without a call after which the process ends.
std::chrono::milliseconds quietTime(const QStringList &arguments) {
    using namespace std::chrono_literals;
    const qsizetype option = arguments.indexOf(QStringLiteral("--quiet-milliseconds"));
    bool isNumber = false;
    const int given = option < 0 ? 0 : arguments.value(option + 1).toInt(&isNumber);
    return isNumber && given > 0 ? std::chrono::milliseconds{given} : 60s;
}

int fail(const char *message) {
    std::fprintf(stderr, "lexiquill-search-provider: %s\n", message);
    return EXIT_FAILURE;
}

} // namespace

/// Usage: lexiquill-search-provider [--quiet-milliseconds N]
int main(int argc, char **argv) {
    prepareProcess();
    const QCoreApplication application(argc, argv);
    auto *const module = loadModule<SearchIndexModule>();
    if (module == nullptr)
        return fail("the search index library cannot be loaded");
    SearchService service(module->open(SearchDatabase::standardFilePath()), [] {
        DeletedWords &deleted = shared<DeletedWords>();
        deleted.refresh();
        return StorageManager::recordedWords(StorageManager::standardStorageFile(), deleted, Instant::now());
    });

    QDBusConnection bus = QDBusConnection::sessionBus();
    QObject object;
    // The object owns its adaptors.
    new GnomeProvider(service, &object);
    new KRunnerProvider(service, &object);
    if (!bus.registerObject(objectPath, &object) || !bus.registerService(serviceName))
        return fail("the session bus is not there or another process answers already");

    QTimer quiet;
    quiet.setSingleShot(true);
    quiet.setInterval(quietTime(application.arguments()));
    QObject::connect(&service, &SearchService::used, &quiet, qOverload<>(&QTimer::start));
    QObject::connect(&quiet, &QTimer::timeout, &application, [&] {
        // Calls that arrived before the name was released are still answered; later ones start a new process.
        bus.unregisterService(serviceName);
        QCoreApplication::processEvents();
        QCoreApplication::quit();
    });
    quiet.start();
    return QCoreApplication::exec();
}
