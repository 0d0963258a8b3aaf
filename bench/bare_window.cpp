#include <QGuiApplication>
#include <QQmlApplicationEngine>

int main(int argc, char **argv) {
    QGuiApplication application(argc, argv);
    QQmlApplicationEngine engine(QUrl(QStringLiteral("qrc:/BareWindow/bare_window.qml")));
    return QGuiApplication::exec();
}
