// Tests the sheets as the user sees them, without a display: texts and states, with real servers on the
// loopback interface and real files.

#include "app/dictionaries/dictionary_texts.h"
#include "app/preferences/backup_list_model.h"
#include "app/preferences/server_address_editor.h"
#include "app/shell/app_context.h"
#include "app/shell/lexiquill_app.h"
#include "app/test_services.h"
#include "e2e/program.h"
#include "http_server.h"
#include "model/record_codec.h"
#include "stardict_writer.h"
#include "support/test.h"

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QClipboard>
#include <QDropEvent>
#include <QGuiApplication>
#include <QMimeData>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>

#include <optional>

using namespace lexiquill;
using Manner = ServedAnswer::Manner;

namespace {

/// A window that shows one sheet.
class Shown {
public:
    Shown(TestServices &services, const char *sheet) : m_context(services) {
        LexiquillApp::prepare(m_engine);
        m_engine.loadData("import QtQuick\nimport QtQuick.Window\nimport Lexiquill\n"
                          "Window { width: 880; height: 600; visible: true; " +
                          QByteArray(sheet) + " { visible: true } }");
        m_window = qobject_cast<QQuickWindow *>(m_engine.rootObjects().value(0));
        if (m_window != nullptr)
            m_window->requestActivate();
    }
    ~Shown() { qDeleteAll(m_engine.rootObjects()); }
    Q_DISABLE_COPY_MOVE(Shown)

    QQuickWindow *window() const { return m_window; }

    /// The texts in the window, from top to bottom of the item tree.
    QStringList texts() const {
        QStringList found;
        visit([&](const QQuickItem &item) {
            if (item.inherits("QQuickText"))
                found += item.property("text").toString();
        });
        found.removeAll(QString());
        return found;
    }
    bool shows(const QString &text) const { return texts().contains(text); }
    /// Whether the whole text is within the window, not scrolled away.
    bool showsWholly(const QString &text) const {
        bool isWhole = false;
        visit([&](const QQuickItem &item) {
            if (item.property("text") == text) {
                const QRectF place = item.mapRectToScene(item.boundingRect());
                isWhole = place.top() >= 0 && place.bottom() <= m_window->height() - 40;
            }
        });
        return isWhole;
    }
    /// The button, field or switch with that name; null if there is none.
    QQuickItem *control(const QString &name) const {
        QQuickItem *found = nullptr;
        visit([&](QQuickItem &item) {
            const bool isControl = item.inherits("QQuickAbstractButton") ||
                                   item.inherits("QQuickTextField") || item.inherits("QQuickComboBox");
            const QAccessibleInterface *const spoken = QAccessible::queryAccessibleInterface(&item);
            if (found == nullptr && isControl &&
                (item.property("text") == name || item.property("placeholderText") == name ||
                 (spoken != nullptr && spoken->text(QAccessible::Name) == name)))
                found = &item;
        });
        return found;
    }
    bool isEnabled(const QString &name) const {
        const QQuickItem *const item = control(name);
        return item != nullptr && item->isEnabled();
    }
    void click(const QString &name) const {
        QQuickItem *const item = control(name);
        QVERIFY2(item != nullptr && item->isEnabled(), qPrintable(name));
        QTRY_VERIFY(m_window->isActive());
        item->forceActiveFocus();
        QTest::keyClick(m_window, Qt::Key_Space);
    }
    void type(const QString &field, const QString &text) const {
        QTRY_VERIFY(m_window->isActive());
        QQuickItem *const item = control(field);
        QVERIFY2(item != nullptr, qPrintable(field));
        item->forceActiveFocus();
        QTest::keyClick(m_window, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(m_window, Qt::Key_Delete);
        for (const QChar &character : text)
            QTest::keyClick(m_window, character.toLatin1());
        QCOMPARE(item->property("text").toString(), text);
    }

private:
    template <typename Look> void visit(Look look) const {
        QList<QQuickItem *> waiting{m_window->contentItem()};
        while (!waiting.isEmpty()) {
            QQuickItem *const item = waiting.takeFirst();
            if (!item->isVisible())
                continue;
            look(*item);
            const auto children = item->childItems();
            for (qsizetype i = children.size() - 1; i >= 0; --i)
                waiting.prepend(children.at(i));
        }
    }

    AppContext m_context;
    QQmlApplicationEngine m_engine;
    QQuickWindow *m_window = nullptr;
};

QByteArray wordbook(const QStringList &words) {
    QList<WordRecord> records(words.size());
    for (qsizetype i = 0; i < words.size(); ++i)
        records[i].word = words.at(i);
    return encodeWordRecords(records, JsonForm::File);
}

QByteArray release(const QString &base) {
    return R"({"name":"Lexiquill","version":"1.10.0","build":"8","releaseDate":"2026-11-21",)"
           R"("releaseNotes":"更快，更稳。","downloadUrl":")" +
           base.toUtf8() + R"(/Lexiquill.zip"})";
}

const QString ann = u"ann"_s;
const QString password = u" pa ss "_s;

} // namespace

class SheetsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void account_data() {
        addRows("login    | {\"success\":true,\"words\":[]} | 登录成功，已拉取云端记录！\n"
                "register | {\"success\":true}              | 注册并同步成功！\n"
                "login    | {\"message\":\"密码错误\"}       | 密码错误\n"
                "register | {}                              | 注册失败\n");
    }
    void account() {
        QFETCH(const QStringList, cells);
        const bool isRegistration = cells.at(0) == u"register"_s;
        const bool isSuccess = cells.at(1).contains(u"\"success\":true"_s);
        HttpServer server(ServedAnswer{.body = cells.at(1).toUtf8()});
        TestServices services({}, server.base());
        const Shown sheet(services, "AccountSheet");
        sheet.window()->resize(600, 300);
        QVERIFY(sheet.shows(u"登录/注册以在手机浏览器 ("_s + server.base() + u"/app) 继续在线背诵"_s));
        QVERIFY(!sheet.isEnabled(u"登录"_s));
        QVERIFY(QAccessible::queryAccessibleInterface(sheet.control(u"密码"_s))->state().passwordEdit);
        QTRY_COMPARE(sheet.window()->activeFocusItem(), sheet.control(u"用户名"_s));

        sheet.type(u"用户名"_s, ann);
        sheet.type(u"密码"_s, password);
        // Typed text stays when the user switches between login and registration.
        sheet.click(u"注册新账号"_s);
        QVERIFY(sheet.isEnabled(u"注册并同步"_s));
        if (!isRegistration)
            sheet.click(u"登录已有账号"_s);
        QCOMPARE(sheet.control(u"密码"_s)->property("text").toString(), password);
        sheet.click(isRegistration ? u"注册并同步"_s : u"登录"_s);
        QVERIFY(!sheet.isEnabled(isRegistration ? u"注册并同步"_s : u"登录"_s));
        QTRY_VERIFY(sheet.shows(cells.at(2)));
        if (!isSuccess)
            QTRY_VERIFY(sheet.showsWholly(cells.at(2)));

        const ServedRequest request = server.requests().constFirst();
        QCOMPARE(request.target, isRegistration ? "/api/auth/register" : "/api/auth/login");
        QVERIFY(request.body.contains("\" pa ss \""));
        QCOMPARE(services.sync().isLoggedIn(), isSuccess);
        if (isSuccess) {
            QVERIFY(sheet.shows(u"已登录账号: ann"_s));
            QVERIFY(sheet.shows(u"上次云端同步: "_s +
                                QLocale().toString(services.sync().lastSyncTime(), QLocale::ShortFormat)));
            // A failure is not shown above an earlier success.
            server.stop();
            sheet.click(u"立即双向同步"_s);
            QTRY_VERIFY(services.sync().hasSyncFailed());
            QVERIFY(!sheet.shows(cells.at(2)));
            sheet.click(u"退出登录"_s);
        }
        // The password is kept only after a failure, for another try.
        QCOMPARE(sheet.control(u"密码"_s)->property("text").toString(), isSuccess ? QString() : password);
        QCOMPARE(sheet.control(u"用户名"_s)->property("text").toString(), ann);
    }

    void syncing() {
        HttpServer server(ServedAnswer{.body = "{\"success\":true}"});
        TestServices services({}, server.base());
        const Shown sheet(services, "AccountSheet");
        services.sync().login(ann, password, {});
        QTRY_VERIFY(sheet.shows(u"云端在线"_s));
        sheet.click(u"立即双向同步"_s);
        QVERIFY(sheet.control(u"正在同步..."_s));
        QVERIFY(!sheet.isEnabled(u"正在同步..."_s));
        QTRY_VERIFY(sheet.isEnabled(u"立即双向同步"_s));
        QVERIFY(sheet.shows(u"双向同步完成 (共 %1 词)"_s.arg(services.storage().words().size())));
        server.stop();
        sheet.click(u"立即双向同步"_s);
        QTRY_VERIFY(services.sync().syncStatusMessage().startsWith(u"同步失败: "_s));
        QVERIFY(sheet.shows(services.sync().syncStatusMessage()));
    }

    void update() {
        HttpServer server(ServedAnswer{});
        server.setHandler([base = server.base()](const ServedRequest &request) {
            if (request.target == "/version.json")
                return ServedAnswer{.body = release(base)};
            const QByteArray head = "HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n";
            return ServedAnswer{.body = head + QByteArray(999, 'x'), .manner = Manner::Raw};
        });
        TestServices services({}, server.base());
        UpdateManager &updater = services.updater();
        const Shown sheet(services, "UpdateSheet");
        QVERIFY(sheet.shows(u"暂无可用更新"_s));
        updater.checkForUpdates(false);
        QTRY_VERIFY(updater.showUpdateSheet());
        QVERIFY(sheet.shows(u"发现新版本 Lexiquill"_s) && sheet.shows(u"v1.0.0"_s));
        QVERIFY(!sheet.shows(u"暂无可用更新"_s));
        sheet.click(u"稍后再说"_s);
        QVERIFY(!updater.showUpdateSheet());
        QVERIFY(updater.availableUpdate());

        // Collect the texts at each signal, because the server may be very fast.
        QSet<QString> seen;
        connect(&updater, &UpdateManager::downloadProgressChanged, &updater, [&] {
            for (const QString &text : sheet.texts())
                seen.insert(text);
        });
        sheet.click(u"立即更新并重启"_s);
        QTRY_VERIFY(!updater.isDownloading());
        QVERIFY(seen.contains(u"正在下载最新版本..."_s) && seen.contains(u"99%"_s));
        QVERIFY(!seen.contains(u"100%"_s) && !seen.contains(u"立即更新并重启"_s));
        QCOMPARE(updater.downloadProgress(), 0.999);
        QVERIFY(updater.errorMessage().startsWith(u"下载中断: "_s));
        QVERIFY(sheet.shows(updater.errorMessage()));
        QVERIFY(sheet.isEnabled(u"立即更新并重启"_s));
    }

    void hotKey() {
        TestServices services;
        HotKeyManager &hotKeys = services.hotKeys();
        hotKeys.setup();
        const Shown sheet(services, "PreferencesSheet");
        QVERIFY(sheet.shows(u"已监听 [⌥ Space]"_s));
        QVERIFY(sheet.control(u"Option + 空格 (极简聚焦, 推荐)"_s)->property("checked").toBool());
        sheet.click(u"Command + Shift + D (标准词典快捷键)"_s);
        QCOMPARE(hotKeys.currentShortcut().id, u"cmd_shift_d"_s);
        QVERIFY(sheet.shows(u"已监听 [⌘ ⇧ D]"_s));
        QVERIFY(services.defaults().byteArray(HotKeyManager::userDefaultsKey).contains("\"keyCode\":2"));

        // The custom shortcut starts as the current one.
        QVERIFY(sheet.shows(u"⇧ ⌘ D"_s));
        sheet.click(u"⇧ Shift"_s);
        sheet.click(u"⌘ Command"_s);
        QVERIFY(sheet.shows(u"D"_s));
        QVERIFY(!sheet.isEnabled(u"使用此组合"_s));
        sheet.click(u"自定义"_s);
        QCOMPARE(hotKeys.currentShortcut().id, u"cmd_shift_d"_s);
        for (const char *name : {"⌃ Control", "⌥ Option", "⇧ Shift", "⌘ Command"})
            sheet.click(QString::fromUtf8(name));
        QVERIFY(sheet.shows(u"⌃ ⌥ ⇧ ⌘ D"_s));
        sheet.click(u"使用此组合"_s);
        QCOMPARE(hotKeys.currentShortcut().id, u"custom_6912_2"_s);
        QCOMPARE(hotKeys.currentShortcut().name, u"自定义: ⌃ ⌥ ⇧ ⌘ D"_s);
        QVERIFY(sheet.control(u"自定义"_s)->property("checked").toBool());
        sheet.click(u"恢复默认"_s);
        QVERIFY(sheet.shows(u"已监听 [⌥ Space]"_s));
    }

    void source() {
        TestServices services;
        const Shown sheet(services, "PreferencesSheet");
        sheet.click(u"苹果本地离线词典"_s);
        QCOMPARE(services.dictionary().currentMode(), DictionarySourceMode::AppleOffline);
        QVERIFY(!sheet.control(u"有道在线词典 (默认)"_s)->property("checked").toBool());
    }

    void dictionaries() {
        TestServices services;
        const QString directory = DictionaryShelf::importedDirectory() + u"/mine"_s;
        QVERIFY(QDir().mkpath(directory));
        QCOMPARE(tools::writeStarDict(directory, u"d"_s, {tools::plainEntry("apple", "n. mine")},
                                      {.bookName = "我的英汉词典"}),
                 QString());
        const Shown sheet(services, "PreferencesSheet");
        const auto firstMeaning = [&services] {
            return services.offlineDictionaries().lookup(u"apple"_s)->rawText;
        };
        QTRY_VERIFY(sheet.shows(u"我的英汉词典"_s));
        QVERIFY(sheet.shows(u"StarDict · 1 词 · "_s + shownPath(directory)));
        QVERIFY(firstMeaning().contains(u"mine"_s));
        sheet.click(u"启用 我的英汉词典"_s);
        QTRY_VERIFY(!firstMeaning().contains(u"mine"_s));
        sheet.click(u"启用 我的英汉词典"_s);
        QTRY_VERIFY(firstMeaning().contains(u"mine"_s));
        // From a control of a row the keys move the row.
        QTest::keyClick(sheet.window(), Qt::Key_Down, Qt::ControlModifier);
        const auto order = [&services] {
            services.defaults().refresh();
            return services.defaults().stringList(u"lexiquill_dictionary_order"_s);
        };
        QTRY_VERIFY(order().value(1).startsWith(directory));
        const QQuickItem *const row = sheet.control(u"启用 我的英汉词典"_s)->parentItem()->parentItem();
        QTest::qWait(400); // until the row has arrived
        const QPoint handle = row->mapToScene({16, row->height() / 2}).toPoint();
        QTest::mousePress(sheet.window(), Qt::LeftButton, {}, handle);
        for (int step = 1; step <= 10; ++step)
            QTest::mouseMove(sheet.window(), handle - QPoint(0, 8 * step));
        QTest::mouseRelease(sheet.window(), Qt::LeftButton, {}, handle - QPoint(0, 80));
        QTRY_VERIFY(order().value(0).startsWith(directory));

        sheet.click(u"移除 我的英汉词典"_s);
        QVERIFY(sheet.shows(u"移除“我的英汉词典”？"_s));
        sheet.click(u"移除"_s);
        QTRY_VERIFY(sheet.shows(u"已移除“我的英汉词典”"_s));
        QVERIFY(!QFile::exists(directory));
        QVERIFY(sheet.isEnabled(u"撤销移除 我的英汉词典"_s));
        QTest::keyClick(sheet.window(), Qt::Key_Z, Qt::ControlModifier);
        QTRY_VERIFY(sheet.shows(u"我的英汉词典"_s));
        QVERIFY(QFile::exists(directory + u"/d.ifo"_s));
    }

    void droppedFiles() {
        TestServices services;
        const Shown area(services, "DictionaryDropArea");
        const auto drop = [&area](const QList<QUrl> &urls) {
            QMimeData files;
            files.setUrls(urls);
            const QPoint place(100, 100);
            QDragEnterEvent enter(place, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(area.window(), &enter);
            QDropEvent event(place, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(area.window(), &event);
        };
        const DictionaryImports &imports = AppContext::current().imports();
        QTRY_VERIFY(area.window()->isActive());
        drop({QUrl(u"https://example.org/a.zip"_s)});
        QVERIFY(!imports.showSheet());
        drop(
            {QUrl::fromLocalFile(services.path(u"a.zip"_s)), QUrl::fromLocalFile(services.path(u"b.zip"_s))});
        QVERIFY(imports.showSheet());
        QTRY_COMPARE(imports.results().size(), 2);
    }

    void importSheet() {
        TestServices services;
        const Shown sheet(services, "ImportSheet");
        AppContext::current().imports().ask({services.path(u"missing.zip"_s)});
        QTRY_VERIFY(sheet.shows(u"添加词典“missing.zip”？"_s));
        sheet.click(u"添加"_s);
        QTRY_VERIFY(sheet.shows(u"missing.zip：文件不存在，或无法读取"_s));
    }

    void hotKeyThatIsTaken() {
        TestServices services;
        const HotKeyShortcut &free = HotKeyShortcut::presets().at(1);
        services.registrar().status = 10;
        services.registrar().free = {free.keyCode, free.carbonModifiers};
        const Shown sheet(services, "PreferencesSheet");
        QVERIFY(!sheet.control(u"改用 ⌘ ⇧ D"_s));
        services.hotKeys().setup();
        QTRY_VERIFY(sheet.control(u"改用 ⌘ ⇧ D"_s));
        services.registrar().status = HotKeyStatus::ok;
        sheet.click(u"改用 ⌘ ⇧ D"_s);
        QCOMPARE(services.hotKeys().currentShortcut(), free);
        QTRY_VERIFY(!sheet.control(u"改用 ⌘ ⇧ D"_s));
    }

    /// A desktop without system-wide hotkeys: its own settings can start the program.
    void hotKeyThatCannotExist() {
        TestServices services;
        services.registrar().status = HotKeyStatus::unavailable;
        const Shown sheet(services, "PreferencesSheet");
        QVERIFY(sheet.control(u"使用此组合"_s));
        services.hotKeys().setup();
        QTRY_VERIFY(!sheet.control(u"使用此组合"_s));
        QVERIFY(!sheet.control(u"Option + D"_s));
        sheet.click(u"复制命令"_s);
        const QString command = QGuiApplication::clipboard()->text();
        QVERIFY(command.contains(QCoreApplication::applicationFilePath()));
        QVERIFY(command.endsWith(u" --desktop-action=focus-search"_s));
        QVERIFY(sheet.shows(command));
    }

    void reminders() {
        TestServices services;
        const Shown sheet(services, "PreferencesSheet");
        sheet.click(u"每天提醒待复习的单词"_s);
        QVERIFY(AppContext::current().preferences().remindsDaily());
        QVERIFY(!sheet.control(u"在托盘中显示图标"_s));
        Q_EMIT AppContext::current().delegate().launched();
        services.tray().hasPlace = true;
        services.tray().change();
        sheet.click(u"在托盘中显示图标"_s);
        QVERIFY(services.tray().shown);
    }

    void addressRow() {
        TestServices services;
        const Shown sheet(services, "PreferencesSheet");
        const QString youdao = ServerAddressEditor::builtInYoudao();
        sheet.type(youdao, u"http://example.org"_s);
        QVERIFY(sheet.shows(u"请输入 https:// 开头的地址；只有本机地址可以用 http://"_s));
        QTest::keyClick(sheet.window(), Qt::Key_Return);
        QVERIFY(services.defaults().string(u"lexiquill_youdao_base"_s).isNull());
        sheet.type(youdao, u"https://example.org/"_s);
        QTest::keyClick(sheet.window(), Qt::Key_Return);
        QCOMPARE(services.defaults().string(u"lexiquill_youdao_base"_s), u"https://example.org"_s);
        QCOMPARE(services.servers().addresses().youdao, u"https://example.org"_s);
    }

    void anotherServer() {
        const HttpServer server(ServedAnswer{.body = "{\"success\":true}"});
        TestServices services({}, server.base());
        services.sync().login(ann, password, {});
        QTRY_VERIFY(services.sync().isLoggedIn());
        const Shown sheet(services, "PreferencesSheet");
        sheet.type(u"同步与更新服务器"_s, u"https://words.example.org/"_s);
        QTest::keyClick(sheet.window(), Qt::Key_Return);
        QVERIFY(sheet.shows(u"已更换服务器，需要重新登录"_s));
        QVERIFY(!services.sync().isLoggedIn());
        QCOMPARE(services.sync().apiBase(), u"https://words.example.org/api"_s);
        QCOMPARE(services.updater().updateCheckURL(), QUrl(u"https://words.example.org/version.json"_s));
    }

    void noServer() {
        TestServices services({}, u"https://lexiquill.invalid"_s);
        const Shown sheet(services, "AccountSheet");
        QVERIFY(sheet.isEnabled(u"设置服务器地址…"_s));
        QVERIFY(!sheet.texts().join(u' ').contains(u"invalid"_s) && !sheet.control(u"用户名"_s));
        QVERIFY(services.servers().store(ServerAddresses::serverKey, u"https://words.example.org"_s));
        QTRY_VERIFY(sheet.control(u"用户名"_s) && !sheet.control(u"设置服务器地址…"_s));
    }

    /// What the program that opens folders does.
    void unopenableFolders_data() { addRows("fails\nis missing"); }
    void unopenableFolders() {
        QFETCH(const QStringList, cells);
        TestServices services;
        const QByteArray programs = qgetenv("PATH");
        qputenv("PATH", QFile::encodeName(services.path({})));
        const QString opener = services.path(u"xdg-open"_s);
        if (cells[0] == u"fails"_s) {
            QVERIFY(writeFile(opener, "#!/bin/sh\nexit 3\n"));
            QVERIFY(QFile::setPermissions(opener, QFile::ReadOwner | QFile::ExeOwner));
        }
        const Shown sheet(services, "AboutSheet");
        QVERIFY(sheet.shows(u"版本 1.0.0 (1)"_s) && sheet.shows(u"MIT"_s));
        QVERIFY(sheet.shows(services.storage().storageFile()));
        sheet.click(u"打开设置所在的文件夹"_s);
        QTRY_VERIFY(
            sheet.shows(u"没有可以打开文件夹的程序："_s + QFileInfo(services.path({})).absoluteFilePath()));
        qputenv("PATH", programs);
    }

    void backups() {
        TestServices services;
        services.storage().deleteWord(u"concise"_s);
        const QString directory = services.path(u"backups/"_s);
        QVERIFY(writeFile(directory + u"vocabulary-2025-03-14.json"_s, wordbook({u"apple"_s, u"pear"_s})));
        QVERIFY(writeFile(directory + u"vocabulary-2025-03-13.json"_s, "[{\"word\":"));
        services.makeCurrent();
        BackupListModel model;
        const QAbstractItemModelTester tester(&model);
        QTRY_VERIFY(!model.isBusy());
        QCOMPARE(model.rowCount(), 3);
        QVERIFY(!model.index(2).data(BackupListModel::IsUsableRole).toBool());
        QCOMPARE(model.index(2).data(BackupListModel::DetailRole).toString(), u"文件已损坏 · 9 字节"_s);

        const QList<WordRecord> before = services.storage().words();
        model.restore(2);
        QTRY_VERIFY(!model.isBusy());
        QCOMPARE(model.errorMessage(), u"恢复失败：备份文件已损坏，生词本没有改变"_s);
        QCOMPARE(services.storage().words().size(), before.size());

        const Shown sheet(services, "PreferencesSheet");
        QTRY_VERIFY(sheet.shows(u"2025-03-14"_s));
        QVERIFY(sheet.shows(model.index(1).data(BackupListModel::DetailRole).toString()));
        sheet.click(u"恢复 2025-03-14 的备份"_s);
        QVERIFY(sheet.shows(u"恢复 2025-03-14 的备份？"_s));
        sheet.click(u"恢复"_s);
        QTRY_VERIFY(sheet.shows(u"已恢复 2 个单词，恢复前的生词本已另存为备份"_s));
        QCOMPARE(services.storage().words().size(), 2);
        QVERIFY(!sheet.shows(u"恢复 2025-03-14 的备份？"_s));
        const auto kept = WordbookBackup::list(directory).constFirst();
        QVERIFY(kept.isOfMoment);
        QTRY_VERIFY(sheet.shows(kept.date.toString(u"yyyy-MM-dd HH:mm:ss"_s) + u" 恢复前"_s));
        QCOMPARE(kept.read(Instant::now())->size(), before.size());
        model.reload();
        QTRY_COMPARE(model.rowCount(), 4);
    }
};

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    QGuiApplication application(argc, argv);
    LexiquillApp::setUpApplication();
    SheetsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "sheets_test.moc"
