#include "platform/linux/desktop/status_notifier_tray.h"
#include "support/desktop_tray.h"

#include <QDBusArgument>

#include <memory>
#include <optional>

using namespace lexiquill;

namespace {

const QString menu = DesktopTray::menu;
const QString item = DesktopTray::item;

} // namespace

/// Tests the icon in the tray against a desktop that this test plays.
class TrayTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        m_bus.emplace();
        m_desktop = std::make_unique<DesktopTray>(*m_bus);
        m_tray = std::make_unique<StatusNotifierTray>(m_bus->connect(u"program"_s), m_bus->address());
        m_chosen.clear();
        m_changes = 0;
        m_tray->watch([this] { ++m_changes; },
                      [this](qsizetype command, const ActivationTokens &tokens) {
                          m_chosen += QString::number(command) + tokens.activationToken;
                      });
    }
    void cleanup() {
        m_tray.reset();
        QDBusConnection::disconnectFromBus(u"program"_s);
        m_desktop.reset();
        m_bus.reset();
    }

    void traysComeAndGo() {
        m_tray->show(content());
        m_desktop->hasHost = false;
        m_desktop->appear();
        QTest::qWait(200);
        QVERIFY(!m_tray->isThere());
        m_desktop->setHasHost(true);
        QTRY_COMPARE(m_desktop->icons.size(), 1);
        QVERIFY(m_tray->isThere());
        m_desktop->setHasHost(false);
        QTRY_VERIFY(!m_tray->isThere());
        QTRY_VERIFY(!m_desktop->isOnBus(m_desktop->icons[0]));
        m_desktop->setHasHost(true);
        QTRY_COMPARE(m_desktop->icons.size(), 2);
        // A desktop that starts again does not know the icon.
        m_desktop->vanish();
        QTRY_VERIFY(!m_tray->isThere());
        m_desktop->appear();
        QTRY_COMPARE(m_desktop->icons.size(), 3);
        QCOMPARE(m_changes, 5);
        m_tray->hide();
        QTRY_VERIFY(!m_desktop->isOnBus(m_desktop->icons[2]));
    }

    void theIcon() {
        appear();
        QCOMPARE(m_desktop->property(u"Title"_s).toString(), u"Title"_s);
        QCOMPARE(m_desktop->property(u"Menu"_s).value<QDBusObjectPath>().path(), u"/MenuBar"_s);
        QCOMPARE(m_desktop->property(u"Status"_s).toString(), u"Active"_s);
        const auto pictures = m_desktop->property(u"IconPixmap"_s).value<QDBusArgument>();
        QCOMPARE(pictures.currentSignature(), u"a(iiay)"_s);
        pictures.beginArray();
        int width = 0;
        int height = 0;
        QByteArray data;
        pictures.beginStructure();
        pictures >> width >> height >> data;
        QCOMPARE(width * height * 4, 2 * 1 * 4);
        QCOMPARE(data, QByteArray::fromHex("ff0a0b0cff0a0b0c"));
        QCOMPARE(m_desktop->property(u"ToolTip"_s).value<QDBusArgument>().currentSignature(),
                 u"(sa(iiay)ss)"_s);
        m_desktop->call(item, u"ProvideXdgActivationToken"_s, {u"token"_s});
        m_desktop->call(item, u"Activate"_s, {0, 0});
        QTRY_COMPARE(m_chosen, QStringList{u"0token"_s});
    }

    void theMenu() {
        appear();
        const QDBusMessage layout = m_desktop->call(menu, u"GetLayout"_s, {0, -1, QStringList()});
        QCOMPARE(layout.signature(), u"u(ia{sv}av)"_s);
        QCOMPARE(labels(layout), (QStringList{u"First"_s, u"Second__2"_s}));
        const uint revision = layout.arguments()[0].toUInt();
        m_desktop->call(menu, u"Event"_s,
                        {2, u"clicked"_s, QVariant::fromValue(QDBusVariant(0)), QVariant(0U)});
        QTRY_COMPARE(m_chosen, QStringList{u"1"_s});
        TrayContent changed = content();
        changed.commands[1] = u"Other"_s;
        m_tray->show(changed);
        const QDBusMessage after = m_desktop->call(menu, u"GetLayout"_s, {0, -1, QStringList()});
        QCOMPARE(labels(after).last(), u"Other"_s);
        QVERIFY(after.arguments()[0].toUInt() > revision);
        QCOMPARE(m_desktop->icons.size(), 1);
    }

    /// Calls that no desktop makes do nothing.
    void wrongCalls_data() {
        columns<QString, QVariantList>("method", "arguments");
        const QVariant nothing = QVariant::fromValue(QDBusVariant(QString()));
        QTest::newRow("layout of another item") << u"GetLayout"_s << QVariantList{99, 1, QStringList()};
        QTest::newRow("negative item") << u"GetLayout"_s << QVariantList{-1, 1, QStringList()};
        QTest::newRow("property of another item") << u"GetProperty"_s << QVariantList{99, u"label"_s};
        QTest::newRow("unknown property") << u"GetProperty"_s << QVariantList{1, u"x"_s};
        QTest::newRow("event of another item")
            << u"Event"_s << QVariantList{std::numeric_limits<int>::max(), u"clicked"_s, nothing, 0U};
        QTest::newRow("event of the root") << u"Event"_s << QVariantList{0, u"clicked"_s, nothing, 0U};
        QTest::newRow("unknown event") << u"Event"_s << QVariantList{1, u"x"_s, nothing, 0U};
        QTest::newRow("another signature") << u"GetLayout"_s << QVariantList{u"x"_s};
        QTest::newRow("events of another form") << u"EventGroup"_s << QVariantList{QStringList{u"x"_s}};
        QTest::newRow("many items") << u"GetGroupProperties"_s
                                    << QVariantList{QVariant::fromValue(QList<int>(100'000, 1)),
                                                    QStringList()};
        QTest::newRow("unknown items")
            << u"AboutToShowGroup"_s << QVariantList{QVariant::fromValue(QList<int>{-5, 99})};
    }
    void wrongCalls() {
        QFETCH(const QString, method);
        QFETCH(const QVariantList, arguments);
        appear();
        QVERIFY(m_desktop->call(menu, method, arguments).type() != QDBusMessage::InvalidMessage);
        QCOMPARE(labels(m_desktop->call(menu, u"GetLayout"_s, {0, 1, QStringList()})).size(), 2);
        QCOMPARE(m_chosen, QStringList());
    }

private:
    static TrayContent content() {
        QImage image(2, 1, QImage::Format_ARGB32_Premultiplied);
        image.fill(QColor(10, 11, 12));
        return {
            .title = u"Title"_s, .iconName = {}, .images = {image}, .commands = {u"First"_s, u"Second_2"_s}};
    }
    void appear() {
        m_desktop->appear();
        QTRY_VERIFY(m_tray->isThere());
        m_tray->show(content());
        QTRY_COMPARE(m_desktop->icons.size(), 1);
    }
    /// The labels in the answer to "GetLayout".
    static QStringList labels(const QDBusMessage &answer) {
        QStringList labels;
        const auto layout = answer.arguments().value(1).value<QDBusArgument>();
        int id = 0;
        QVariantMap rowProperties;
        QVariantList children;
        layout.beginStructure();
        layout >> id >> rowProperties;
        layout.beginArray();
        while (!layout.atEnd()) {
            QDBusVariant child;
            layout >> child;
            children += child.variant();
        }
        for (const QVariant &child : children) {
            const auto row = child.value<QDBusArgument>();
            row.beginStructure();
            row >> id >> rowProperties;
            labels += rowProperties.value(u"label"_s).toString();
        }
        return labels;
    }

    std::optional<SessionBus> m_bus;
    std::unique_ptr<DesktopTray> m_desktop;
    std::unique_ptr<StatusNotifierTray> m_tray;
    QStringList m_chosen;
    int m_changes = 0;
};

QTEST_GUILESS_MAIN(TrayTest)
#include "tray_test.moc"
