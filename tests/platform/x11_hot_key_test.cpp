#include "hotkey/x_server.h"
#include "platform/linux/desktop/x11_hot_key_registrar.h"
#include "platform/process.h"
#include "support/test.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <optional>

using namespace lexiquill;

namespace {

constexpr quint32 keyA = 0;
constexpr quint32 keyD = 2;
constexpr quint32 keySpace = 49;
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

    bool seesWindowManager() {
        const char name[] = "_NET_SUPPORTING_WM_CHECK";
        const XcbPointer<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
            m_connection, xcb_intern_atom(m_connection, 0, sizeof name - 1, name), nullptr));
        const auto cookie =
            xcb_get_property(m_connection, 0, m_screen->root, atom->atom, XCB_ATOM_WINDOW, 0, 1);
        const XcbPointer<xcb_get_property_reply_t> property(
            xcb_get_property_reply(m_connection, cookie, nullptr));
        return property->value_len > 0;
    }
    /// Opens a window, which the window manager gives the focus.
    void openWindow() {
        const xcb_window_t window = xcb_generate_id(m_connection);
        const quint32 events = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_FOCUS_CHANGE;
        xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, window, m_screen->root, 0, 0, 400, 300, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
        xcb_map_window(m_connection, window);
        xcb_flush(m_connection);
    }
    /// Whether an event has come for the window: its type, and for keys which one.
    bool hasReceived(quint8 type, std::optional<quint8> key = {}) {
        while (const XcbPointer<xcb_generic_event_t> event{xcb_poll_for_event(m_connection)})
            m_events += *reinterpret_cast<const xcb_key_press_event_t *>(event.get());
        return std::ranges::any_of(m_events, [&](const xcb_key_press_event_t &event) {
            return (event.response_type & 0x7f) == type && event.detail == key.value_or(event.detail);
        });
    }

private:
    xcb_connection_t *m_connection;
    xcb_screen_t *m_screen;
    QList<xcb_key_press_event_t> m_events;
};

/// A registrar with everything that it tells.
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

    /// A layout, keys pressed before, a shortcut, and the keys that make it.
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
        // Only one of the states of the locks, and the last to be asked for.
        QTRY_VERIFY(other.grab(XCB_MOD_MASK_1 | XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2, 40));
        Recorder recorder(m_server);
        recorder.registerHotKey(keyD, CarbonModifier::option);
        QCOMPARE(recorder.statuses, QList<qint32>{badAccess});
        // Nothing of the attempt is left.
        QTRY_VERIFY(other.grab(XCB_MOD_MASK_1, 40));
        QTRY_VERIFY(other.grab(XCB_MOD_MASK_1 | XCB_MOD_MASK_LOCK, 40));
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

    /// The program with the focus gets every key but the hotkey.
    void whileAnotherWindowHasTheFocus() {
        QTemporaryDir home;
        const QString config = home.filePath(u"rc.xml"_s);
        QVERIFY(writeFile(
            config, "<openbox_config><focus><focusNew>yes</focusNew></focus><keyboard><keybind key='A-space'>"
                    "<action name='NextWindow'/></keybind></keyboard></openbox_config>"));
        const auto manager = m_server.start(
            u"env XDG_CACHE_HOME=%1 openbox --sm-disable --config-file %2"_s.arg(home.path(), config));
        OtherProgram other(m_server);
        QTRY_VERIFY(other.seesWindowManager());
        other.openWindow();
        QTRY_VERIFY(other.hasReceived(XCB_FOCUS_IN));
        Recorder recorder(m_server);
        recorder.registerHotKey(keyD, CarbonModifier::command | CarbonModifier::shift);
        QCOMPARE(recorder.statuses, QList<qint32>{HotKeyStatus::ok});
        m_server.press(u"133+50+40"_s);
        QTRY_COMPARE(recorder.presses.size(), 1);
        QVERIFY(!other.hasReceived(XCB_KEY_PRESS, 40));
        m_server.press(u"40"_s);
        QTRY_VERIFY(other.hasReceived(XCB_KEY_PRESS, 40));
        QCOMPARE(recorder.presses.size(), 1);
        // One that the window manager itself holds.
        recorder.registerHotKey(keySpace, CarbonModifier::option);
        QCOMPARE(recorder.statuses.last(), badAccess);
        manager->kill();
        manager->waitForFinished();
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
        // Asked for while the server dies, and again with nobody knowing yet.
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
