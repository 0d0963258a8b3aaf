// Runs the tst_*.qml files of this folder against the screens, without a display. Every file gets its own
// services and wordbook.

#include "app/shell/app_context.h"
#include "app/shell/lexiquill_app.h"
#include "app/test_services.h"
#include "settings/server_addresses.h"

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
    void applicationAvailable() { LexiquillApp::setUpApplication(); }
    void qmlEngineAvailable(QQmlEngine *engine) {
        // A Wednesday, because due and planned words depend on the day of the week.
        const auto clock = [] {
            return *Instant::fromIso8601(u"2025-03-12T09:26:53Z");
        };
        const auto calendar = [] {
            return Calendar{QTimeZone::utc()};
        };
        m_context.reset();
        m_services = std::make_unique<TestServices>(QByteArray(), QStringLiteral("http://127.0.0.1:9"),
                                                    nullptr, clock, calendar);
        m_services->defaults().set(ServerAddresses::youdaoKey, QStringLiteral("http://127.0.0.1:9"));
        m_context = std::make_unique<AppContext>(*m_services);
        LexiquillApp::prepare(*engine);
    }

private:
    std::unique_ptr<TestServices> m_services;
    std::unique_ptr<AppContext> m_context;
};

QUICK_TEST_MAIN_WITH_SETUP(screens, Setup)

#include "screens_test.moc"
