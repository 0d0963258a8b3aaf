#include "platform/linux/desktop/desktop_notifier.h"
#include "support/notification_service.h"

#include <memory>
#include <optional>

using namespace lexiquill;

/// Tests the notifications against a desktop that this test plays.
class NotifierTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        m_bus.emplace();
        m_service = std::make_unique<NotificationService>(*m_bus);
        m_notifier = std::make_unique<DesktopNotifier>(m_bus->connect(u"program"_s));
        m_chosen.clear();
    }
    void cleanup() {
        m_notifier.reset();
        QDBusConnection::disconnectFromBus(u"program"_s);
        m_service.reset();
        m_bus.reset();
    }

    void choosing_data() {
        addRows("default | click token\n"
                "more    | more token\n");
    }
    void choosing() {
        QFETCH(const QStringList, cells);
        show(u"a"_s);
        QTRY_COMPARE(m_service->shown.size(), 1);
        const auto shown = m_service->shown.constFirst();
        QCOMPARE(shown.title, u"a"_s);
        QCOMPARE(shown.text, u"1 &lt; 2"_s);
        QCOMPARE(shown.actions.mid(2), (QStringList{u"more"_s, u"More"_s}));
        // Other programs' notifications have other numbers.
        m_service->choose(shown.number + 1, cells[0]);
        m_service->choose(shown.number, cells[0]);
        m_service->choose(shown.number, cells[0]);
        QTRY_COMPARE(m_chosen, QStringList{cells[1]});
        show(u"b"_s);
        QTRY_COMPARE(m_service->shown.size(), 2);
        QCOMPARE(m_chosen.size(), 1);
    }

    /// One that is still there is replaced; one that the user has closed is not.
    void replacing() {
        show(u"a"_s);
        QTRY_COMPARE(m_service->shown.size(), 1);
        const uint first = m_service->shown.constFirst().number;
        QTest::qWait(50);
        show(u"a"_s);
        QTRY_COMPARE(m_service->shown.size(), 2);
        QCOMPARE(m_service->shown.constLast().number, first);
        m_service->close(first);
        QTest::qWait(200);
        show(u"a"_s);
        QTRY_COMPARE(m_service->shown.size(), 3);
        QVERIFY(m_service->shown.constLast().number != first);
        QTest::qWait(50);
        m_notifier->withdrawAll();
        QTRY_COMPARE(m_service->withdrawn, QList<uint>{m_service->shown.constLast().number});
    }

    void withoutAService() {
        m_service.reset();
        show(u"a"_s);
        QTest::qWait(100);
        m_notifier->withdrawAll();
        m_bus->stop();
        show(u"a"_s);
        QCOMPARE(m_chosen, QStringList());
    }

private:
    void show(const QString &id) {
        m_notifier->show({.id = id,
                          .title = id,
                          .text = u"1 < 2"_s,
                          .action = u"click"_s,
                          .buttons = {{u"more"_s, u"More"_s}}},
                         [this](const QString &action, const ActivationTokens &tokens) {
                             m_chosen += action + u' ' + tokens.activationToken;
                         });
    }

    std::optional<SessionBus> m_bus;
    std::unique_ptr<NotificationService> m_service;
    std::unique_ptr<DesktopNotifier> m_notifier;
    QStringList m_chosen;
};

QTEST_GUILESS_MAIN(NotifierTest)
#include "notifier_test.moc"
