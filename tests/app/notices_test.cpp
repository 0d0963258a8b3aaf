// Tests what the program tells outside its window, and the requests that arrive before there is one.

#include "app/notices/background_notice.h"
#include "app/notices/daily_reminder.h"
#include "app/notices/hot_key_notice.h"
#include "app/shell/app_context.h"
#include "app/shell/request_queue.h"
#include "app/shell/selection_reader.h"
#include "app/test_services.h"
#include "platform/window_activation.h"
#include "support/test.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QQuickWindow>

using namespace lexiquill;
using namespace std::chrono_literals;

class NoticesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// The status of the registration, and a word of what is told.
    void hotKeyFails_data() {
        addRows("0  |\n-1 | 不支持\n-2 | 键盘上没有\n-3 |\n-4 |\n-5 |\n-6 | 没有接受\n"
                "10 | ⌥ Space 被其他程序占用\n");
    }
    void hotKeyFails() {
        QFETCH(const QStringList, cells);
        TestServices services;
        services.registrar().status = cells[0].toInt();
        const AppContext context(services);
        services.hotKeys().setup();
        if (cells[1].isEmpty()) {
            QTest::qWait(1500);
            QVERIFY(services.notifier().shown.isEmpty());
            return;
        }
        QTRY_COMPARE(services.notifier().shown.size(), 1);
        QVERIFY(services.notifier().shown[0].text.contains(cells[1]));
        QCOMPARE(services.notifier().shown[0].buttons.size(), 1);
        services.notifier().handler(services.notifier().shown[0].action, {});
        QVERIFY(services.hotKeys().showSettingsSheet());
    }

    /// The user is told once of each shortcut, also after another start.
    void hotKeyFailsOnce() {
        TestServices services;
        const HotKeyShortcut &free = HotKeyShortcut::presets().at(3);
        services.registrar().free = {free.keyCode, free.carbonModifiers};
        for (int start = 0; start < 2; ++start) {
            const AppContext context(services);
            for (const qint32 status : {HotKeyStatus::ok, 10}) {
                services.registrar().status = status;
                services.hotKeys().setup();
            }
            QTRY_COMPARE(services.hotKeys().offeredShortcut(), free);
            QTest::qWait(1500);
            QCOMPARE(services.notifier().shown.size(), 1);
        }
        const AppContext context(services);
        QCOMPARE(services.notifier().shown[0].buttons[0].label, u"改用 ⌃ Space"_s);
        services.hotKeys().updateShortcut(HotKeyShortcut::presets().at(1));
        QTRY_COMPARE(services.notifier().shown.size(), 2);
        services.registrar().status = HotKeyStatus::ok;
        services.notifier().handler(services.notifier().shown[1].buttons[0].action, {});
        QCOMPARE(services.hotKeys().currentShortcut(), free);
        QTRY_VERIFY(services.hotKeys().offeredShortcut().id.isEmpty());
    }

    void firstClosing_data() { addRows("0 | 按 ⌥ Space\n10 | 再次点击程序的图标\n"); }
    void firstClosing() {
        QFETCH(const QStringList, cells);
        TestServices services;
        services.registrar().status = cells[0].toInt();
        AppContext context(services);
        services.hotKeys().setup();
        QQuickWindow window;
        context.delegate().setMainWindow(&window);
        context.delegate().enforceSingleWindowPolicy();
        for (int i = 0; i < 2; ++i) {
            window.show();
            window.close();
            QVERIFY(!window.isVisible());
        }
        QCOMPARE(services.notifier().shown.size(), 1);
        QVERIFY(services.notifier().shown[0].text.contains(cells[1]));
        QCOMPARE(services.notifier().shown[0].buttons[0].label, u"退出"_s);
    }

    void dailyReminder() {
        QString time = u"2025-03-12T09:00:00Z"_s;
        const auto clock = [&] {
            return *Instant::fromIso8601(time);
        };
        const auto calendar = [] {
            return Calendar{QTimeZone("Asia/Shanghai")};
        };
        TestServices services(R"([{"word":"apple","lastSearchedDate":"2025-01-01T00:00:00Z"}])",
                              u"http://127.0.0.1:9"_s, nullptr, clock, calendar);
        AppContext context(services);
        QQuickWindow window;
        context.delegate().setMainWindow(&window);
        const auto count = [&] {
            Q_EMIT context.content().timePassed();
            return services.notifier().shown.size();
        };
        Q_EMIT context.delegate().launched();
        QCOMPARE(count(), 0); // not wanted
        context.content().setSelectedTab(ContentView::TabItem::WeeklyReview);
        window.show();
        window.requestActivate();
        QTRY_VERIFY(window.isActive());
        context.preferences().setRemindsDaily(true);
        QCOMPARE(count(), 0); // the cards are open
        window.hide();
        QTRY_COMPARE(count(), 1);
        QCOMPARE(services.notifier().shown[0].title, u"今日待复习 1 词"_s);
        time = u"2025-03-12T15:59:00Z"_s;
        QCOMPARE(count(), 1);
        time = u"2025-03-12T16:00:00Z"_s; // midnight in Shanghai
        UserDefaults other(services.defaults().filePath());
        other.set(DailyReminder::dayKey, u"2025-03-13"_s);
        QCOMPARE(count(), 1); // another process has reminded
        time = u"2025-03-13T16:00:00Z"_s;
        QCOMPARE(count(), 2);
        context.content().setSelectedTab(ContentView::TabItem::Statistics);
        services.hotKeys().setShowSettingsSheet(true);
        services.notifier().handler(services.notifier().shown[1].action, {});
        QCOMPARE(context.content().selectedTab(), ContentView::TabItem::WeeklyReview);
        QVERIFY(!services.hotKeys().showSettingsSheet());
        services.storage().deleteWord(u"apple"_s);
        time = u"2025-03-14T16:00:00Z"_s;
        QCOMPARE(count(), 2);
    }

    void tray() {
        TestServices services("[]");
        AppContext context(services);
        auto &tray = services.tray();
        Q_EMIT context.delegate().launched();
        context.preferences().setShowsTrayIcon(true);
        QVERIFY(!tray.shown);
        tray.hasPlace = true;
        QSignalSpy changes(&context.tray(), &TrayMenu::isAvailableChanged);
        tray.change();
        QCOMPARE(changes.size(), 1);
        QVERIFY(tray.shown);
        services.storage().addOrUpdateSearch({.headword = u"apple"_s, .posGroups = {}, .rawText = {}});
        QCOMPARE(tray.shown->commands, (QStringList{u"查词"_s, u"今日待复习 1 词"_s, u"退出"_s}));
        QVERIFY(!tray.shown->images.isEmpty());
        // The icon is really drawn.
        QCOMPARE(tray.shown->images.constLast().pixelColor(64, 12).alpha(), 255);
        tray.choose(1, {});
        QCOMPARE(context.content().selectedTab(), ContentView::TabItem::WeeklyReview);
        context.preferences().setShowsTrayIcon(false);
        QVERIFY(!tray.shown);
    }

    void earlyRequests() {
        QStringList done;
        RequestQueue queue(
            {.activate = [&](const ActivationTokens &) { done += u"activate"_s; },
             .open = [&](const QStringList &urls, const ActivationTokens &) { done += urls; },
             .activateAction =
                 [&](const QString &action, const QString &parameter, const ActivationTokens &tokens) {
                     done += action + parameter + tokens.startupId;
                 },
             .lookup =
                 [](const QString &) {
                     return std::nullopt;
                 }});
        const ApplicationRequests entry = queue.entry();
        entry.open({u"lexiquill:apple"_s}, {});
        entry.activateAction(u"search"_s, u"-pear-"_s, {.activationToken = {}, .startupId = u"id"_s});
        QCOMPARE(done, QStringList());
        queue.open();
        entry.activate({});
        QCOMPARE(done, u"lexiquill:apple search-pear-id activate"_s.split(u' '));
    }

    void tokens_data() {
        addRows("own | start | own\n | start | start\nown | | own\n | |\n"
                " | _TIME123 |\n | a_TIME123 | a_TIME123\n");
    }
    void tokens() {
        QFETCH(const QStringList, cells);
        QCOMPARE(waylandToken({.activationToken = cells[0], .startupId = cells[1]}), cells[2]);
    }

    /// Where only the window with the focus may read, the text is read when there is the focus.
    void selectionNeedsTheFocus() {
        QGuiApplication::clipboard()->setText(u"apple"_s);
        QStringList taken;
        const auto take = [&](const QString &text) {
            taken += text;
        };
        SelectionReader always(SelectionReader::Access::Always);
        always.read(take);
        QTRY_COMPARE(taken, QStringList{u"apple"_s});
        SelectionReader reader(SelectionReader::Access::WithFocus, {.focus = 10s, .selection = 20ms});
        reader.read(take);
        QTest::qWait(100);
        QCOMPARE(taken.size(), 1);
        auto window = std::make_unique<QQuickWindow>();
        window->show();
        window->requestActivate();
        QTRY_COMPARE(taken.size(), 2);
        QCOMPARE(taken.last(), u"apple"_s);
        window.reset();
        QTRY_COMPARE(QGuiApplication::focusWindow(), nullptr);
        SelectionReader impatient(SelectionReader::Access::WithFocus, {.focus = 20ms, .selection = 20ms});
        impatient.read(take);
        QTRY_COMPARE(taken.size(), 3);
        QCOMPARE(taken.last(), QString());
    }
};

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    NoticesTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "notices_test.moc"
