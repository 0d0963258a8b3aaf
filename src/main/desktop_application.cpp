#include "main/desktop_application.h"

#include "app/shell/app_context.h"
#include "app/shell/lexiquill_app.h"
#include "app/shell/request_queue.h"
#include "main/desktop_services.h"
#include "platform/application_endpoint.h"
#include "platform/termination.h"
#include "platform/window_activation.h"
#include "storage/storage_manager.h"
#include "support/background_task.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QTimer>

#include <cstdlib>
#include <memory>

namespace lexiquill {

namespace {

/// The variable with the name of a program's windows under X11.
constexpr const char *windowName = "RESOURCE_NAME";

} // namespace

int runDesktopApplication(int argc, char **argv) {
    // Reading a large wordbook takes as long as starting the graphics, so both run in parallel. Nothing uses
    // a service before it exists.
    auto storage = startInBackground([] {
        StorageManager &loaded = shared<StorageManager>();
        loaded.moveToThread(nullptr);
        return &loaded;
    });
    const ActivationTokens tokens = ActivationTokens::ofThisProcess();
    // Under X11, desktops that do not know the class of the window find its desktop file by this name.
    qputenv(windowName, LexiquillApp::desktopFileName().toUtf8());
    QGuiApplication application(argc, argv);
    // The launcher's message handler treats any fatal message as a display that does not answer. At this
    // point the display has answered.
    qInstallMessageHandler(nullptr);
    LexiquillApp::setUpApplication();
    const QStringList arguments = QGuiApplication::arguments();
    const StartRequest request = StartRequest::fromArguments(arguments);
    QQmlEngine engine;
    LexiquillApp::prepare(engine);
    // Loads the screens and their modules, but creates none of them yet.
    QQmlComponent screens(&engine, LexiquillApp::mainWindowUrl());

    storage.get()->moveToThread(application.thread());
    AppContext context(shared<Services>());
    AppDelegate &delegate = context.delegate();
    const std::unique_ptr<ApplicationEndpoint> endpoint = makeApplicationEndpoint();
    RequestQueue queue(delegate.requests());
    const ApplicationRequests requests = queue.entry();
    if (!endpoint->claim(requests)) {
        // Another process became the application first.
        if (forwardStart(request, tokens))
            return EXIT_SUCCESS;
    }
    // There is no running application to quit.
    if (request.action == QLatin1StringView("quit"))
        return EXIT_SUCCESS;
    offerTokens(tokens);
    const std::unique_ptr<QObject> window(screens.create());
    auto *const mainWindow = qobject_cast<QQuickWindow *>(window.get());
    if (mainWindow == nullptr)
        return EXIT_FAILURE;
    mainWindow->create();
    qunsetenv(windowName); // not for programs that this one starts
    delegate.setMainWindow(mainWindow);
    delegate.restoreMainWindow();
    delegate.enforceSingleWindowPolicy();
    // If D-Bus started the process, it waits for requests before it shows the window.
    if (!arguments.contains(QLatin1StringView("--desktop-service")))
        delegate.showMainWindow();
    // Work that can wait until the first frame is shown.
    QTimer::singleShot(0, &delegate, [&] {
        delegate.applicationDidFinishLaunching();
        queue.open();
        if (!request.action.isEmpty())
            requests.activateAction(request.action, {}, tokens);
        else if (!request.urls.isEmpty())
            requests.open(request.urls, tokens);
    });
    // Save at the end of the session as on quitting.
    const auto termination = watchTermination([&delegate] { delegate.terminate(); });
    return QGuiApplication::exec();
}

} // namespace lexiquill
