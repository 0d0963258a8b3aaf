#include "app/lexiquill_app.h"

#include "app/app_delegate.h"
#include "storage/storage_manager.h"

#include <QFont>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>

#include <future>

namespace lexiquill {

void LexiquillApp::prepare(QQmlEngine &engine) {
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
}

QUrl LexiquillApp::mainWindowUrl() {
    return QUrl(QStringLiteral("qrc:/qt/qml/Lexiquill/MainWindow.qml"));
}

void LexiquillApp::setUpApplication() {
    QCoreApplication::setApplicationName(QStringLiteral("Lexiquill"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Lexiquill"));
    QGuiApplication::setDesktopFileName(QStringLiteral("com.lexiquill.Lexiquill"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    // Chinese in its own forms, whatever the locale would choose.
    QFont font = QGuiApplication::font();
    font.setFamilies({font.family(), QStringLiteral("Noto Sans CJK SC")});
    QGuiApplication::setFont(font);
}

int LexiquillApp::run(int argc, char **argv) {
    QGuiApplication application(argc, argv);
    setUpApplication();
    QQmlApplicationEngine engine;
    prepare(engine);
    engine.load(mainWindowUrl());
    if (engine.rootObjects().isEmpty())
        return EXIT_FAILURE;
    auto *const window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
    AppDelegate::shared().setMainWindow(window);
    window->show();
    return QGuiApplication::exec();
}

} // namespace lexiquill

/// What the executable asks this library for.
extern "C" Q_DECL_EXPORT int lexiquill_runDesktop(int argc, char **argv) {
    return lexiquill::LexiquillApp::run(argc, argv);
}
