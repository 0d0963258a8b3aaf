#include "e2e/program.h"
#include "http_server.h"
#include "support/secret.h"
#include "support/test.h"
#include "sync/protocol/sync_messages.h"
#include "sync/sync_manager.h"

#include <QDirIterator>

using namespace lexiquill;
using namespace std::chrono_literals;
using Manner = ServedAnswer::Manner;

namespace {

const QString ann = u"Ann"_s;
const QString password = u"pa\"ss\\wörd\n 密码"_s;
const Instant now{763637213.25};

/// JSON with ' for ".
QByteArray json(const char *text) {
    return QByteArray(text).replace('\'', '"');
}

/// A user's home with a running manager, and all notifications that a screen gets from it.
class Party {
public:
    explicit Party(const QString &server, const char *wordbook = "[{'word': 'apple'}]",
                   bool isLoggedIn = false) {
        home.setWordbook(json(wordbook));
        if (isLoggedIn)
            defaults.set(SyncManager::userDefaultsKey, ann);
        storage = std::make_unique<StorageManager>(StorageManager::Dependencies{
            .storageFile = home.wordbookPath(), .deletedWords = m_deletedWords, .firstWords = [] {
                return QList<WordRecord>();
            }});
        sync = std::make_unique<SyncManager>(SyncManager::Dependencies{.apiBase = server + u"/api"_s,
                                                                       .http = http,
                                                                       .storage = *storage,
                                                                       .defaults = defaults,
                                                                       .clock = [] { return now; },
                                                                       .idleLimit = 1500ms,
                                                                       .totalLimit = 6s});
        const auto tell = [this](auto signal, auto describe) {
            QObject::connect(sync.get(), signal, sync.get(), [this, describe] { news += describe(); });
        };
        tell(&SyncManager::currentUserChanged, [this] { return u"user "_s + sync->currentUser(); });
        tell(&SyncManager::isSyncingChanged,
             [this] { return QString::fromLatin1(sync->isSyncing() ? "syncing" : "idle"); });
        tell(&SyncManager::lastSyncTimeChanged, [] { return u"time"_s; });
        tell(&SyncManager::syncStatusMessageChanged, [this] { return sync->syncStatusMessage(); });
        tell(&SyncManager::showAccountSheetChanged, [] { return u"sheet"_s; });
        QObject::connect(storage.get(), &StorageManager::wordsChanged,
                         [this] { news += u"words "_s + words(); });
        news.clear();
    }

    SyncManager::Completion completion() {
        return [this](bool isSuccess, const std::optional<QString> &message) {
            news += message.value_or(u"done"_s);
            hasCompleted = true;
            if (isSuccess == message.has_value())
                news += u"contradiction"_s;
        };
    }
    void login() {
        sync->login(ann, password, completion());
        QTRY_VERIFY(hasCompleted);
    }
    void registerUser() {
        sync->registerUser(ann, password, completion());
        QTRY_VERIFY(hasCompleted);
    }
    void syncWithCloud() {
        sync->syncWithCloud();
        QTRY_VERIFY(!sync->isSyncing());
    }

    QString words() const {
        QStringList list;
        for (const WordRecord &record : storage->words())
            list += record.word;
        return list.join(u' ');
    }
    /// The notifications since the last call.
    QString takeNews() { return std::exchange(news, {}).join(u" | "_s); }
    QString stored(const QString &key) const { return UserDefaults(home.settingsPath()).string(key); }

    Home home;
    QStringList news;
    bool hasCompleted = false;
    UserDefaults defaults{home.settingsPath()};

private:
    DeletedWords m_deletedWords{defaults};

public:
    HttpClient http;
    std::unique_ptr<StorageManager> storage;
    std::unique_ptr<SyncManager> sync;
};

ServedAnswer answer(const char *text) {
    return {.body = json(text)};
}

} // namespace

class SyncManagerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void requests() {
        HttpServer server(answer("{'success': true}"));
        Party party(server.base(), "[{'word': '苹果 apple', 'lastReviewDate': '2025-03-14T09:26:53Z'}]");
        const QByteArray words = encodeWordRecords(party.storage->words(), JsonForm::Wire);
        QVERIFY(words.contains("\"lastReviewDate\":763637213,"));
        party.defaults.set(DeletedWords::key, QStringList{u"pear"_s});

        party.sync->syncWithCloud();
        party.sync->syncDeletionToCloud(ann);
        party.registerUser();
        party.hasCompleted = false;
        party.login();
        party.syncWithCloud();
        party.sync->syncDeletionToCloud(u"ice \"cream\""_s);
        QTRY_COMPARE(server.requests().size(), 4);

        const QByteArray credentials =
            "{\"username\":\"Ann\",\"clientWords\":" + words + ",\"password\":\"pa\\\"ss\\\\wörd\\n 密码\"}";
        const std::pair<QByteArray, QByteArray> expected[] = {
            {"/api/auth/register", credentials},
            {"/api/auth/login", credentials},
            {"/api/sync", "{\"username\":\"Ann\",\"words\":" + words + ",\"deletedWords\":[\"pear\"]}"},
            {"/api/sync/delete", "{\"username\":\"Ann\",\"word\":\"ice \\\"cream\\\"\"}"},
        };
        const QList<ServedRequest> requests = server.requests();
        for (qsizetype i = 0; i < requests.size(); ++i) {
            QCOMPARE(requests[i].method, "POST"_ba);
            QCOMPARE(requests[i].target, expected[i].first);
            QCOMPARE(requests[i].body, expected[i].second);
            QCOMPARE(requests[i].header("Content-Type"), "application/json"_ba);
            QVERIFY(requests[i].header("Authorization").isNull());
        }
    }

    void answers_data() {
        columns<ServedAnswer, QString, QString, QString>("served", "login", "registration", "sync");
        const auto row = [](const char *name, const ServedAnswer &served, const char *account,
                            const char *registration, const char *sync) {
            QTest::newRow(name) << served << QString::fromUtf8(account) << QString::fromUtf8(registration)
                                << QString::fromUtf8(sync);
        };
        const auto broken = [&](const char *name, const ServedAnswer &served, const QByteArray &error) {
            row(name, served, error, error, "同步失败: " + error);
        };
        const QByteArray success = json("{'success': true}");
        broken("cut", {.body = success, .manner = Manner::Cut}, "连接中断");
        broken("too large",
               {.body = "HTTP/1.1 200 OK\r\nContent-Length: 67108865\r\n\r\n", .manner = Manner::Raw},
               "服务器响应过大");
        broken("other server", {.status = 307, .headers = {{"Location", "https://a.invalid/api"}}},
               "重定向到不安全的地址");

        const auto strange = [&](const char *name, const QByteArray &body) {
            row(name, {.body = body}, "服务器响应异常", "服务器响应异常", "同步响应异常");
        };
        const QByteArray open = json("{'success': true, 'x': ");
        strange("nothing", {});
        strange("HTML", "<!DOCTYPE html><html><body>502 Bad Gateway</body></html>");
        strange("cut off by the server", success.chopped(1));
        strange("two values", success + success);
        strange("very deep", open + QByteArray(20'000'000, '['));

        const auto refused = [&](const char *name, const char *body) {
            row(name, answer(body), "登录失败", "注册失败", "同步失败");
        };
        refused("empty object", "{}");
        refused("success 1", "{'success': 1, 'message': null}");
        row("endless message", {.body = "{\"message\":\"" + QByteArray(70'000, 'x') + "\"}"}, "登录失败",
            "注册失败", "同步失败");
        row("message", answer("{'message': '密码\\n错误', 'success': false, 'token': 't'}"), "密码\n错误",
            "密码\n错误", "密码\n错误");

        const auto accepted = [&](const char *name, const ServedAnswer &served,
                                  const char *sync = "双向同步完成 (共 1 词)") {
            row(name, served, "done", "done", sync);
        };
        accepted("no words", {.body = success});
        accepted("status 500", {.status = 500, .body = success});
        accepted("no list", answer("{'success': true, 'words': 5}"), "同步完成");
        accepted("too many",
                 {.body = json("{'success': true, 'words': [{}") + ",{}"_ba.repeated(500'000) + "]}"},
                 "同步完成");
        accepted("no record", answer("{'success': true, 'words': [{'word': 'x'}, 1]}"), "同步完成");
    }

    void answers() {
        QFETCH(const ServedAnswer, served);
        QFETCH(const QString, login);
        QFETCH(const QString, registration);
        QFETCH(const QString, sync);
        const HttpServer server(served);
        const QString entered = u"user Ann | time | "_s;
        const QString completed = u"注册并同步完成 | "_s;
        const bool isAccepted = login == u"done"_s;

        Party newcomer(server.base());
        newcomer.registerUser();
        QCOMPARE(newcomer.takeNews(), isAccepted ? entered + completed + registration : registration);
        Party returning(server.base());
        returning.login();
        QCOMPARE(returning.takeNews(), isAccepted ? entered + login : login);
        Party party(server.base(), "[{'word': 'apple'}]", true);
        party.syncWithCloud();
        QCOMPARE(party.takeNews(), u"syncing | idle | "_s + (isAccepted ? u"time | "_s : QString()) + sync);
        for (const Party *each : {&newcomer, &returning, &party}) {
            QCOMPARE(each->words(), u"apple"_s);
            QCOMPARE(each->sync->lastSyncTime().isValid(), isAccepted);
            QVERIFY(each->stored(SyncManager::tokenDefaultsKey).isNull());
        }
        QCOMPARE(returning.sync->isLoggedIn(), isAccepted);
    }

    void unreachable() {
        Party party(refusingBase(), "[]", true);
        party.sync->syncWithCloud();
        QVERIFY(party.sync->isSyncing());
        QTRY_VERIFY(!party.sync->isSyncing());
        QCOMPARE(party.takeNews(), u"syncing | idle | 同步失败: 连接被拒绝"_s);
        party.login();
        QCOMPARE(party.takeNews(), u"连接被拒绝"_s);
        Party nowhere(u"https://["_s, "[]", true);
        nowhere.sync->syncWithCloud();
        nowhere.sync->login(ann, password, nowhere.completion());
        QCOMPARE(nowhere.takeNews(), QString());
    }

    void anAccountsLife() {
        HttpServer server(
            answer("{'success': true, 'token': 'one', 'words': [{'word': 'pear'}, {'word': 'Plum'}]}"));
        Party party(server.base());
        party.defaults.set(DeletedWords::key, QStringList{u"plum"_s});
        party.login();
        QCOMPARE(party.takeNews(), u"user Ann | time | words apple pear | done"_s);
        QCOMPARE(party.sync->lastSyncTime(), QDateTime::fromMSecsSinceEpoch(1741944413250));
        QCOMPARE(party.stored(SyncManager::tokenDefaultsKey), u"one"_s);
        QDirIterator files(party.home.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QByteArray content = readFile(files.next());
            QVERIFY(!content.contains("wörd") && !content.contains("密码") && !content.contains("pa\\\""));
        }

        server.setHandler([](const ServedRequest &) { return answer("{'success': true, 'token': null}"); });
        party.login();
        QCOMPARE(party.stored(SyncManager::tokenDefaultsKey), u"one"_s);
        party.syncWithCloud();
        party.takeNews();
        // Another manager sees the changes, because the state comes only from the settings.
        const SyncManager later({.apiBase = server.base(),
                                 .http = party.http,
                                 .storage = *party.storage,
                                 .defaults = party.defaults});
        QCOMPARE(later.currentUser(), ann);
        QVERIFY(!later.lastSyncTime().isValid() && later.syncStatusMessage().isNull());

        party.sync->logout();
        QCOMPARE(party.takeNews(), u"user  | "_s);
        QVERIFY(!party.sync->isLoggedIn() && party.sync->lastSyncTime().isValid());
        QVERIFY(party.stored(SyncManager::userDefaultsKey).isNull());
        QVERIFY(party.stored(SyncManager::tokenDefaultsKey).isNull());
        QCOMPARE(party.words(), u"apple pear"_s);
        party.sync->setShowAccountSheet(true);
        party.sync->setShowAccountSheet(true);
        QCOMPARE(party.takeNews(), u"sheet"_s);
    }

    void registrationTakesNoWords() {
        const HttpServer server(answer("{'success': true, 'words': [{'word': 'pear'}]}"));
        Party party(server.base());
        party.registerUser();
        QCOMPARE(party.takeNews(), u"user Ann | time | 注册并同步完成 | done"_s);
    }

    void whatOthersDoMeanwhileStays() {
        HttpServer server(ServedAnswer{});
        Party party(server.base(), "[{'word': 'banana'}]", true);
        server.setHandler([&](const ServedRequest &) {
            party.home.run("review|banana", "1\n");
            party.home.run("search|abandon");
            UserDefaults(party.home.settingsPath()).set(DeletedWords::key, QStringList{u"plum"_s});
            return answer("{'success': true, 'words': [{'word': 'BANANA'}, {'word': 'plum'}, {'word': "
                          "'pear'}]}");
        });
        party.syncWithCloud();
        QCOMPARE(party.takeNews(), u"syncing | idle | time | words abandon banana pear | "
                                   "双向同步完成 (共 3 词)"_s);
        const auto saved = party.home.words();
        QCOMPARE(saved->size(), 3);
        QCOMPARE(saved->at(1).repetitionCount, 1);
    }

    /// The account of one server is nothing to another one, and its answers come too late.
    void anotherServer() {
        HttpServer first(answer("{'success': true, 'token': 't'}"));
        const HttpServer second(answer("{'success': true}"));
        Party party(first.base());
        party.login();
        first.setHandler([](const ServedRequest &) { return ServedAnswer{.manner = Manner::Silent}; });
        party.sync->syncWithCloud();
        QTRY_COMPARE(first.requests().size(), 2);
        party.takeNews();
        party.sync->setApiBase(second.base() + u"/api"_s);
        QCOMPARE(party.takeNews(), u"idle | user  | time"_s);
        QVERIFY(!party.sync->isLoggedIn() && party.stored(SyncManager::tokenDefaultsKey).isNull());
        party.sync->syncWithCloud();
        party.sync->syncDeletionToCloud(ann);
        QTRY_COMPARE(first.openConnections(), 0);
        party.hasCompleted = false;
        party.login();
        party.syncWithCloud();
        QCOMPARE(second.requests().size(), 2);

        // The address may also change between two starts.
        const SyncManager later({.apiBase = first.base() + u"/api"_s,
                                 .http = party.http,
                                 .storage = *party.storage,
                                 .defaults = party.defaults});
        QVERIFY(!later.isLoggedIn() && party.stored(SyncManager::userDefaultsKey).isNull());
    }

    void noServer() {
        Party party(u"https://lexiquill.invalid"_s, "[]", true);
        QVERIFY(!party.sync->hasServer());
        party.login();
        party.sync->syncWithCloud();
        QCOMPARE(party.takeNews(), u"尚未设置服务器 | 同步失败: 尚未设置服务器"_s);
        QVERIFY(party.sync->hasSyncFailed() && !party.sync->isSyncing());
    }

    void aGoneManagerDoesNothing() {
        const HttpServer server(ServedAnswer{.manner = Manner::Silent});
        Party party(server.base(), "[]", true);
        party.sync->syncWithCloud();
        party.sync->login(ann, password, party.completion());
        QTRY_COMPARE(server.requests().size(), 2);
        party.sync.reset();
        QTRY_COMPARE(server.openConnections(), 0);
        QCOMPARE(party.takeNews(), u"syncing"_s);
    }

    void manyDeletionsTakeTurns() {
        HttpServer server(ServedAnswer{.manner = Manner::Silent});
        Party party(server.base(), "[]", true);
        QList<QByteArray> told;
        for (int i = 0; i < 100; ++i) {
            party.sync->syncDeletionToCloud(QString::number(i));
            told += "{\"username\":\"Ann\",\"word\":\"" + QByteArray::number(i) + "\"}";
        }
        // Waiting deletions belong to the user who was logged in.
        party.sync->logout();
        QTRY_COMPARE(server.requests().size(), 4);
        QTest::qWait(200);
        QCOMPARE(server.requests().size(), 4);
        server.setHandler([](const ServedRequest &) { return ServedAnswer{}; });
        QTRY_COMPARE(server.requests().size(), told.size());
        for (const ServedRequest &request : server.requests())
            QVERIFY(told.removeOne(request.body));
    }

    void secretsAreWiped() {
        const QByteArray body = encodeCredentials(ann, password, {});
        const QByteArrayList shared{body};
        QVERIFY(shared.first().contains("wörd"));
        wipe(body);
        QCOMPARE(shared.first(), QByteArray(body.size(), '\0'));
    }
};

QTEST_GUILESS_MAIN(SyncManagerTest)
#include "sync_manager_test.moc"
