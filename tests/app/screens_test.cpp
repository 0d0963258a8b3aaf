// Runs the tst_*.qml files of this folder against the screens, without a display. Every file finds services
// and a wordbook of its own.

#include "app/lexiquill_app.h"
#include "app/test_services.h"

#include <QQmlEngine>
#include <QtQuickTest>

#include <memory>

using namespace lexiquill;

class Setup : public QObject {
    Q_OBJECT

public:
    Setup() {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("QT_QUICK_BACKEND", "software");
    }

private Q_SLOTS:
    void applicationAvailable() {
        LexiquillApp::setUpApplication();
        m_services = std::make_unique<TestServices>();
        Services::setCurrent(m_services.get());
    }
    void qmlEngineAvailable(QQmlEngine *engine) { LexiquillApp::prepare(*engine); }

private:
    std::unique_ptr<TestServices> m_services;
};

QUICK_TEST_MAIN_WITH_SETUP(screens, Setup)

#include "screens_test.moc"
