// A program for a bundle. It updates itself as soon as it can. It reads its version from share/version of its
// bundle. The server, the directory for the update and the report file come from environment variables.

#include "network/http_client.h"
#include "observed_state.h"
#include "platform/process.h"

#include <QCoreApplication>
#include <QFile>

using namespace lexiquill;
using namespace Qt::StringLiterals;

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    QFile versionFile(executableDirectory() + u"/../share/version"_s);
    if (!versionFile.open(QIODevice::ReadOnly))
        return EXIT_FAILURE;
    const QString version = QString::fromUtf8(versionFile.readAll());
    QFile reportFile(qEnvironmentVariable("TEST_REPORT"));
    if (!reportFile.open(QIODevice::Append | QIODevice::Unbuffered))
        return EXIT_FAILURE;
    const auto report = [&](const QString &event) {
        reportFile.write((version + u' ' + event + u'\n').toUtf8());
    };
    report(u"runs with "_s + QString::number(argc - 1) + u" arguments"_s);

    HttpClient http;
    const bool isStubborn = qEnvironmentVariableIsSet("TEST_STUBBORN");
    UpdateManager manager({.http = http,
                           .updateCheckURL = QUrl(qEnvironmentVariable("TEST_SERVER") + u"/version.json"_s),
                           .currentVersion = version,
                           .currentBuild = u"1"_s,
                           .installation = Installation::of(executableDirectory(), u"/nonexistent"_s),
                           .platform = ScriptPlatform::Linux,
                           .quit =
                               [&](int status) {
                                   report(u"quits"_s);
                                   if (!isStubborn)
                                       QCoreApplication::exit(status);
                               },
                           .directory = qEnvironmentVariable("TEST_DIRECTORY")});
    observe(manager, report);
    const auto isOver = [&] {
        return !manager.isChecking() && !manager.isDownloading();
    };
    QObject::connect(
        &manager, &UpdateManager::isCheckingChanged, &application,
        [&] {
            if (manager.availableUpdate())
                manager.startDownloadAndInstall(*manager.availableUpdate());
            else if (isOver())
                QCoreApplication::exit();
        },
        Qt::QueuedConnection);
    QObject::connect(
        &manager, &UpdateManager::isDownloadingChanged, &application,
        [&] {
            if (isOver()) {
                report(u"goes on"_s);
                QCoreApplication::exit();
            }
        },
        Qt::QueuedConnection);
    manager.checkForUpdates(false);
    return QCoreApplication::exec();
}
