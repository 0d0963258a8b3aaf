#include "hotkey/x_server.h"
#include "platform/linux/desktop/x11_hot_key_registrar.h"
#include "platform/process.h"
#include "support/test.h"

#include <xcb/xcb.h>

using namespace lexiquill;

namespace {

constexpr quint32 keyA = 0;
constexpr quint32 keyD = 2;
constexpr quint8 firstKeyOfLettersRow = 38; // A on an English keyboard, Q on a French one
constexpr quint8 firstKeyOfUpperRow = 24;   // Q on an English keyboard, A on a French one
constexpr qint32 badAccess = 10;

/// Another program on the server.
class OtherProgram {
public:
    explicit OtherProgram(const XServer &server)
        : m_connection(xcb_connect(server.display().toLatin1().constData(), nullptr)),
          m_screen(xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data) {}
    ~OtherProgram() { xcb_disconnect(m_connection); }

    bool grab(quint16 modifiers, quint8 key) {
        const auto cookie = xcb_grab_key_checked(m_connection, 0, m_screen->root, modifiers, key,
                                                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        return !XcbPointer<xcb_generic_error_t>(xcb_request_check(m_connection, cookie));
    }
    void ungrab(quint16 modifiers, quint8 key) {
        const auto cookie = xcb_ungrab_key_checked(m_connection, key, m_screen->root, modifiers);
        XcbPointer<xcb_generic_error_t>(xcb_request_check(m_connection, cookie));
    }

private:
    xcb_connection_t *m_connection;
    xcb_screen_t *m_screen;
};

/// A registrar, and everything that it reports.
struct Recorder {
    explicit Recorder(const XServer &server) : registrar(server.display().toLatin1()) {
        registrar.installHandler([this](const HotKeyPress &press) { presses += press; });
    }
    void registerHotKey(quint32 keyCode, quint32 modifiers) {
        registrar.registerHotKey(keyCode, modifiers, [this](qint32 status) { statuses += status; });
    }

    QList<HotKeyPress> presses;
    QList<qint32> statuses;
    X11HotKeyRegistrar registrar;
};

class X11HotKeyTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        prepareProcess();
        QVERIFY(m_server.isRunning());
    }
    void init() { QVERIFY(setLayout("us")); }

    /// A layout, keys pressed before, a shortcut (key code and modifiers), and the keys that produce it.
    void keysFollowTheLayout_data() {
        addRows(R"(
            us                               |       | 2   | 768  | 133+50+40
            us -option altwin:swap_alt_win   |       | 49  | 256  | 64+65
            us                               | 66    | 2   | 2304 | 133+64+40
            us                               | 77 66 | 123 | 4096 | 37+113
            fr                               |       | 0   | 2048 | 64+24
            us(dvorak)                       |       | 2   | 256  | 133+43
            ru                               |       | 2   | 256  | 133+40
            us,fr -option grp:sclk_toggle    |       | 0   | 256  | 133+38
            us,fr -option grp:sclk_toggle    | 78    | 0   | 256  | 133+24
            us,ru -option grp:sclk_toggle    | 78    | 2   | 256  | 133+40)");
    }

    void keysFollowTheLayout() {
        QFETCH(const QStringList, cells);
        QVERIFY(setLayout(cells[0].toLatin1().constData()));
        const QStringList locks = cells[1].split(u' ', Qt::SkipEmptyParts);
        for (const QString &lock : locks)
            m_server.press(lock);
        Recorder recorder(m_server);
        recorder.registerHotKey(cells[2].toUInt(), cells[3].toUInt());
        QCOMPARE(recorder.statuses, QList<qint32>{HotKeyStatus::ok});
        m_server.press(cells[4]);
        QTRY_COMPARE(recorder.presses.size(), 1);
        QVERIFY(recorder.presses[0].timestamp > 0);
        for (const QString &lock : locks)
            m_server.press(lock);
    }

    /// The server repeats a held key every ten milliseconds.
    void aHeldKeyIsOnePress() {
        Recorder recorder(m_server);
        recorder.registerHotKey(keyD, CarbonModifier::option);
        m_server.hold(u"64+40"_s);
        QTest::qWait(500);
        m_server.release(u"64+40"_s);
        m_server.press(u"64+40"_s);
        QTRY_VERIFY(recorder.presses.size() >= 2);
        QCOMPARE(recorder.presses.size(), 2);
    }

    void heldByAnotherProgram() {
        OtherProgram other(m_server);
        // Only one combination of the locks, the last one that is requested.
        QTRY_VERIFY(other.grab(XCB_MOD_MASK_1 | XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2, 40));
        Recorder recorder(m_server);
        recorder.registerHotKey(keyD, CarbonModifier::option);
        QCOMPARE(recorder.statuses, QList<qint32>{badAccess});
        // The failed attempt leaves no grabs.
        QTRY_VERIFY(other.grab(XCB_MOD_MASK_1, 40));
        QTRY_VERIFY(other.grab(XCB_MOD_MASK_1 | XCB_MOD_MASK_LOCK, 40));
        // A trial leaves none either, and does not touch the registered combination.
        QVERIFY(!recorder.registrar.isFree(keyD, CarbonModifier::option));
        QVERIFY(recorder.registrar.isFree(keyA, CarbonModifier::option));
        QTRY_VERIFY(other.grab(XCB_MOD_MASK_1, firstKeyOfLettersRow));
        other.ungrab(XCB_MOD_MASK_1, firstKeyOfLettersRow);
        recorder.registerHotKey(keyA, CarbonModifier::option);
        QVERIFY(!recorder.registrar.isFree(keyA, CarbonModifier::option));
        QVERIFY(!other.grab(XCB_MOD_MASK_1, firstKeyOfLettersRow));
    }

    void layoutChanges() {
        OtherProgram other(m_server);
        QTRY_VERIFY(other.grab(XCB_MOD_MASK_1, firstKeyOfUpperRow));
        Recorder recorder(m_server);
        recorder.registerHotKey(keyA, CarbonModifier::option);
        QVERIFY(setLayout("fr"));
        QTRY_COMPARE(recorder.statuses, (QList<qint32>{HotKeyStatus::ok, badAccess}));
        QTRY_VERIFY(other.grab(XCB_MOD_MASK_1, firstKeyOfLettersRow));
        other.ungrab(XCB_MOD_MASK_1, firstKeyOfLettersRow);
        QVERIFY(setLayout("us"));
        QTRY_COMPARE(recorder.statuses.size(), 3);
        QCOMPARE(recorder.statuses.last(), HotKeyStatus::ok);
        other.ungrab(XCB_MOD_MASK_1, firstKeyOfUpperRow);
        QVERIFY(setLayout("fr"));
        QTRY_COMPARE(recorder.statuses.size(), 4);
        m_server.press(u"64+24"_s);
        QTRY_COMPARE(recorder.presses.size(), 1);
    }

    void serverGoesAndReturns() {
        auto server = std::make_unique<XServer>();
        const QString display = server->display();
        Recorder recorder(*server);
        recorder.registerHotKey(keyD, CarbonModifier::option);
        server->stop();
        QTRY_COMPARE(recorder.statuses, (QList<qint32>{HotKeyStatus::ok, HotKeyStatus::connectionLost}));
        recorder.registerHotKey(keyA, CarbonModifier::option);
        QCOMPARE(recorder.statuses.last(), HotKeyStatus::unavailable);
        server = std::make_unique<XServer>(display);
        QVERIFY(server->isRunning());
        recorder.registerHotKey(keyD, CarbonModifier::option);
        QCOMPARE(recorder.statuses.last(), HotKeyStatus::ok);
        // Register while the server is dying, before the registrar has noticed it.
        server->stop();
        recorder.registerHotKey(keyA, CarbonModifier::option);
        QVERIFY(recorder.statuses.last() < 0);
    }

private:
    bool setLayout(const char *layout) const {
        return m_server.run(u"setxkbmap -option"_s) &&
               m_server.run(u"setxkbmap "_s + QString::fromLatin1(layout));
    }

    XServer m_server;
};

} // namespace

QTEST_GUILESS_MAIN(X11HotKeyTest)
#include "x11_hot_key_test.moc"
