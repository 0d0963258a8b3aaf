#include "sync/sync_manager.h"

#include "model/record_merge.h"
#include "support/background_task.h"
#include "support/secret.h"
#include "support/web_address.h"
#include "sync/protocol/sync_messages.h"

#include <cmath>
#include <utility>

namespace lexiquill {

const QString SyncManager::userDefaultsKey = QStringLiteral("lexiquill_logged_user");
const QString SyncManager::tokenDefaultsKey = QStringLiteral("lexiquill_token");
const QString SyncManager::serverDefaultsKey = QStringLiteral("lexiquill_logged_server");

namespace {

constexpr qint64 longestAnswer = qint64{64} << 20;
constexpr int mostDeletionsAtOnce = 4;

QString noServer() {
    return QStringLiteral("尚未设置服务器");
}

/// Overwrites a text when it goes out of scope.
class WipedAtEnd {
public:
    explicit WipedAtEnd(const QByteArray &bytes) : m_bytes(bytes) {}
    ~WipedAtEnd() { wipe(m_bytes); }
    Q_DISABLE_COPY_MOVE(WipedAtEnd)

private:
    QByteArray m_bytes;
};

void complete(const SyncManager::Completion &completion, bool isSuccess,
              const std::optional<QString> &message = {}) {
    if (completion)
        completion(isSuccess, message);
}

} // namespace

/// A reply and its content, parsed on another thread: a large wordbook takes longer than a frame may take.
struct SyncManager::Response {
    HttpReply reply;
    std::optional<ServerAnswer> answer;
    std::optional<QList<WordRecord>> words;
    QList<WordRecord> known; ///< the wordbook when the reply arrived
    QList<WordRecord> news;  ///< those of `words` that would change it

    static ResponsePointer of(const HttpReply &reply, const QList<WordRecord> &known, Instant now) {
        auto response = std::make_shared<Response>();
        response->reply = reply;
        response->known = known;
        if (!reply.error)
            response->answer = decodeServerAnswer(reply.body);
        if (response->answer && response->answer->isSuccess)
            response->words = decodeCloudWords(*response->answer, now);
        if (response->words) {
            QList<WordRecord> merged = known;
            lexiquill::mergeCloudWords(merged, *response->words, {}, &response->news);
        }
        return response;
    }
};

SyncManager::SyncManager(Dependencies dependencies, QObject *parent)
    : QObject(parent),
      m_dependencies(std::move(dependencies)),
      m_currentUser(m_dependencies.defaults.string(userDefaultsKey)) {
    const QString server = m_dependencies.defaults.string(serverDefaultsKey);
    if (isLoggedIn() && !server.isNull() && !isSameOrigin(QUrl(server), QUrl(apiBase())))
        logout();
}

bool SyncManager::hasServer() const {
    const QUrl url(apiBase(), QUrl::StrictMode);
    return isAcceptableUrl(url) && !isReservedHost(url);
}

void SyncManager::setApiBase(const QString &base) {
    if (base == apiBase())
        return;
    // The answers to requests in progress are about the account on the previous server.
    m_requests = std::make_unique<Cancellation>();
    m_deletions.clear();
    m_deletionsUnderWay = 0;
    m_dependencies.apiBase = base;
    setIsSyncing(false);
    if (isLoggedIn())
        logout();
    if (std::exchange(m_lastSyncTime, {}).isValid())
        Q_EMIT lastSyncTimeChanged();
    Q_EMIT apiBaseChanged();
}

void SyncManager::registerUser(const QString &username, const QString &password,
                               const Completion &completion) {
    enter("/auth/register", username, password, completion,
          [this, username, completion](const ResponsePointer &response) {
              if (!enterAccount(*response, username, QStringLiteral("注册失败"), completion))
                  return;
              setSyncStatusMessage(QStringLiteral("注册并同步完成"));
              complete(completion, true);
          });
}

void SyncManager::login(const QString &username, const QString &password, const Completion &completion) {
    enter("/auth/login", username, password, completion,
          [this, username, completion](const ResponsePointer &response) {
              if (!enterAccount(*response, username, QStringLiteral("登录失败"), completion))
                  return;
              merge(response);
              complete(completion, true);
          });
}

/// Sends name and password with the words.
void SyncManager::enter(const char *path, const QString &username, const QString &password,
                        const Completion &completion, const Handler &handle) {
    const auto url = endpoint(path);
    if (isReservedHost(QUrl(apiBase()))) {
        const auto refuse = [completion] {
            complete(completion, false, noServer());
        };
        QMetaObject::invokeMethod(this, refuse, Qt::QueuedConnection);
    }
    if (!url)
        return;
    const auto encode = [username, password, words = m_dependencies.storage.words()] {
        return encodeCredentials(username, password, words);
    };
    post(*url, encode, handle);
}

void SyncManager::logout() {
    setCurrentUser(QString());
    m_dependencies.defaults.remove(userDefaultsKey);
    m_dependencies.defaults.remove(tokenDefaultsKey);
    m_dependencies.defaults.remove(serverDefaultsKey);
    setSyncStatusMessage(QString());
}

void SyncManager::syncWithCloud() {
    const auto url = endpoint("/sync");
    if (!isLoggedIn())
        return;
    if (isReservedHost(QUrl(apiBase())))
        return setSyncStatusMessage(QStringLiteral("同步失败: ") + noServer(), true);
    if (!url)
        return;
    setIsSyncing(true);
    // Words that other processes have deleted must be sent, too.
    m_dependencies.defaults.refresh();
    const StorageManager &storage = m_dependencies.storage;
    const auto encode = [user = m_currentUser, words = storage.words(), deleted = storage.deletedWords()] {
        return encodeSync(user, words, deleted);
    };
    post(*url, encode, [this](const ResponsePointer &response) { finishSync(response); });
}

void SyncManager::syncDeletionToCloud(const QString &word) {
    const auto url = endpoint("/sync/delete");
    if (!isLoggedIn() || !url)
        return;
    m_deletions.enqueue(encodeDeletion(m_currentUser, word));
    if (m_deletionsUnderWay < mostDeletionsAtOnce)
        tellDeletions(*url);
}

/// Sends one request after the other until none is left.
QCoro::Task<> SyncManager::tellDeletions(QUrl url) {
    const std::stop_token stop = m_requests->token();
    ++m_deletionsUnderWay;
    while (!m_deletions.isEmpty()) {
        co_await m_dependencies.http.send(request(url, m_deletions.dequeue()));
        if (stop.stop_requested())
            co_return;
    }
    --m_deletionsUnderWay;
}

/// No value without a server, or when the base and the path do not form a URL.
std::optional<QUrl> SyncManager::endpoint(const char *path) const {
    const QUrl url(apiBase() + QLatin1StringView(path), QUrl::StrictMode);
    return !isReservedHost(url) && url.isValid() ? std::optional(url) : std::nullopt;
}

HttpRequest SyncManager::request(const QUrl &url, const QByteArray &body) const {
    return {.method = HttpRequest::Method::Post,
            .url = url,
            .headers = {{"Content-Type", "application/json"}},
            .body = body,
            .idleLimit = m_dependencies.idleLimit,
            .totalLimit = m_dependencies.totalLimit,
            .bodyLimit = longestAnswer,
            .staysAtOrigin = true,
            .stop = m_requests->token()};
}

/// Creates the body on another thread and sends it.
void SyncManager::post(const QUrl &url, const std::function<QByteArray()> &encode, const Handler &handle) {
    runInBackground(this, encode, [this, url, handle, stop = m_requests->token()](const QByteArray &body) {
        if (stop.stop_requested())
            const WipedAtEnd wiped(body);
        else
            send(request(url, body), handle);
    });
}

/// Sends a request and overwrites its body. The reply is handled later, from the event loop; not at all if
/// the manager has been destroyed by then.
QCoro::Task<> SyncManager::send(HttpRequest request, Handler handle) {
    const WipedAtEnd wiped(request.body);
    const HttpReply reply = co_await m_dependencies.http.send(request);
    if (request.stop.stop_requested())
        co_return;
    const auto read = [reply, known = m_dependencies.storage.words(), now = m_dependencies.clock()] {
        return Response::of(reply, known, now);
    };
    runInBackground(this, read, [handle, stop = request.stop](const ResponsePointer &response) {
        if (!stop.stop_requested())
            handle(response);
    });
}

/// Sets the user as logged in if the server accepts that. Otherwise completes with the server's message, or
/// with another one.
bool SyncManager::enterAccount(const Response &response, const QString &username,
                               const QString &failureMessage, const Completion &completion) {
    const auto &answer = response.answer;
    if (!answer) {
        const auto &error = response.reply.error;
        complete(completion, false, error ? description(*error) : QStringLiteral("服务器响应异常"));
        return false;
    }
    if (!answer->isSuccess) {
        complete(completion, false, answer->message.value_or(failureMessage));
        return false;
    }
    setCurrentUser(username.isNull() ? QStringLiteral("") : username);
    m_dependencies.defaults.set(userDefaultsKey, m_currentUser);
    m_dependencies.defaults.set(serverDefaultsKey, apiBase());
    if (answer->token)
        m_dependencies.defaults.set(tokenDefaultsKey, *answer->token);
    setLastSyncTimeToNow();
    return true;
}

void SyncManager::finishSync(const ResponsePointer &response) {
    const auto &answer = response->answer;
    setIsSyncing(false);
    if (response->reply.error)
        return setSyncStatusMessage(QStringLiteral("同步失败: ") + description(*response->reply.error), true);
    if (!answer)
        return setSyncStatusMessage(QStringLiteral("同步响应异常"), true);
    if (!answer->isSuccess)
        return setSyncStatusMessage(answer->message.value_or(QStringLiteral("同步失败")), true);
    setLastSyncTimeToNow();
    if (!response->words)
        return setSyncStatusMessage(QStringLiteral("同步完成"));
    merge(response);
    setSyncStatusMessage(
        QStringLiteral("双向同步完成 (共 %1 词)").arg(m_dependencies.storage.words().size()));
}

/// Merges the server's words. If the wordbook has not changed since the comparison, merges only the news.
void SyncManager::merge(const ResponsePointer &response) {
    StorageManager &storage = m_dependencies.storage;
    const bool areStillKnown = storage.areStill(response->known);
    // Release the shared list, because it would otherwise be copied when it changes.
    if (areStillKnown)
        response->known.clear();
    if (response->words)
        storage.mergeCloudWords(areStillKnown ? response->news : *response->words);
    discardInBackground(std::exchange(*response, {}));
}

void SyncManager::setShowAccountSheet(bool isShown) {
    if (std::exchange(m_showAccountSheet, isShown) != isShown)
        Q_EMIT showAccountSheetChanged();
}

void SyncManager::setIsSyncing(bool isSyncing) {
    if (std::exchange(m_isSyncing, isSyncing) != isSyncing)
        Q_EMIT isSyncingChanged();
}

void SyncManager::setLastSyncTimeToNow() {
    const auto milliseconds = std::llround(m_dependencies.clock().unixSeconds() * 1000);
    const QDateTime now = QDateTime::fromMSecsSinceEpoch(milliseconds);
    if (std::exchange(m_lastSyncTime, now) != now)
        Q_EMIT lastSyncTimeChanged();
}

void SyncManager::setCurrentUser(const QString &user) {
    const QString previous = std::exchange(m_currentUser, user);
    if (previous != user || previous.isNull() != user.isNull())
        Q_EMIT currentUserChanged();
}

void SyncManager::setSyncStatusMessage(const QString &message, bool isFailure) {
    const QString previous = std::exchange(m_syncStatusMessage, message);
    const bool hadFailed = std::exchange(m_hasSyncFailed, isFailure);
    if (hadFailed != isFailure || previous != message || previous.isNull() != message.isNull())
        Q_EMIT syncStatusMessageChanged();
}

} // namespace lexiquill
