#include "app/shell/lexiquill_app.h"

#include "app/shell/app_context.h"
#include "platform/application_endpoint.h"
#include "platform/termination.h"
#include "storage/storage_manager.h"
#include "support/background_task.h"

#include <QFont>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQuickWindow>
#include <QTimer>
#include <QTranslator>

#include <cstdlib>
#include <memory>

namespace lexiquill {

namespace {

/// What Qt's own file dialog says where the desktop has none.
class FileDialogTexts : public QTranslator {
public:
    using QTranslator::QTranslator;

    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char * /*comment*/,
                      int /*count*/) const override {
        if (qstrcmp(context, "FileDialog") != 0)
            return {};
        if (qstrcmp(text, "File name") == 0)
            return QStringLiteral("文件名");
        return qstrcmp(text, "Filter") == 0 ? QStringLiteral("类型") : QString();
    }
};

} // namespace

void LexiquillApp::prepare(QQmlEngine &engine) {
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
}

QUrl LexiquillApp::mainWindowUrl() {
    return QUrl(QStringLiteral("qrc:/qt/qml/Lexiquill/shell/MainWindow.qml"));
}

void LexiquillApp::setUpApplication() {
    QCoreApplication::setApplicationName(QStringLiteral("Lexiquill"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Lexiquill"));
    QGuiApplication::setDesktopFileName(QStringLiteral("com.lexiquill.Lexiquill"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QCoreApplication::installTranslator(new FileDialogTexts(qGuiApp));
    // Chinese in its own forms, whatever the locale would choose. Said of the family, for the controls ask
    // the desktop for their font and not the application.
    QFont::insertSubstitution(QGuiApplication::font().family(), QStringLiteral("Noto Sans CJK SC"));
}

int LexiquillApp::run(int argc, char **argv, const std::function<StorageManager &()> &loadWords,
                      const std::function<Services &()> &makeServices) {
    // Reading a large wordbook takes as long as starting the graphics, so both happen at once. Nobody else
    // asks for a service until it is there.
    auto storage = startInBackground([&loadWords] {
        StorageManager &loaded = loadWords();
        loaded.moveToThread(nullptr);
        return &loaded;
    });
    const ActivationTokens tokens{.activationToken = qEnvironmentVariable("XDG_ACTIVATION_TOKEN"),
                                  .startupId = qEnvironmentVariable("DESKTOP_STARTUP_ID")};
    QGuiApplication application(argc, argv);
    // The launcher's handler takes any fatal message for a display that does not answer, and this one does.
    qInstallMessageHandler(nullptr);
    setUpApplication();
    const QStringList arguments = QGuiApplication::arguments();
    const StartRequest request = StartRequest::fromArguments(arguments);
    QQmlEngine engine;
    prepare(engine);
    // Brings in the screens and their modules, but makes none of them yet.
    QQmlComponent screens(&engine, mainWindowUrl());

    storage.get()->moveToThread(application.thread());
    AppContext context(makeServices());
    AppDelegate &delegate = context.delegate();
    const std::unique_ptr<ApplicationEndpoint> endpoint = makeApplicationEndpoint();
    const ApplicationRequests requests = delegate.requests();
    if (!endpoint->claim(requests)) {
        // Another start was quicker.
        if (forwardStart(request, tokens))
            return EXIT_SUCCESS;
    }
    // There is nobody to quit.
    if (request.action == QLatin1StringView("quit"))
        return EXIT_SUCCESS;
    const std::unique_ptr<QObject> window(screens.create());
    if (!window)
        return EXIT_FAILURE;
    delegate.setMainWindow(qobject_cast<QQuickWindow *>(window.get()));
    delegate.enforceSingleWindowPolicy();
    // Started by the message bus, it waits for what comes next.
    if (!arguments.contains(QLatin1StringView("--desktop-service")))
        delegate.showMainWindow();
    // What can wait until the first frame is on the screen.
    QTimer::singleShot(0, &delegate, [&] {
        delegate.applicationDidFinishLaunching();
        if (!request.action.isEmpty())
            requests.activateAction(request.action, {}, tokens);
        else if (!request.url.isEmpty())
            requests.open({request.url}, tokens);
    });
    // The end of the session must lose no more than quitting does.
    const auto termination = watchTermination([&delegate] { delegate.terminate(); });
    return QGuiApplication::exec();
}

} // namespace lexiquill
