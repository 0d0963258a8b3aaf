#include "sync/sync_manager.h"

#include "support/secret.h"
#include "sync/sync_messages.h"

#include <cmath>
#include <utility>

namespace lexiquill {

const QString SyncManager::userDefaultsKey = QStringLiteral("lexiquill_logged_user");
const QString SyncManager::tokenDefaultsKey = QStringLiteral("lexiquill_token");

namespace {

constexpr qint64 longestAnswer = qint64{64} << 20;

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

SyncManager::SyncManager(Dependencies dependencies, QObject *parent)
    : QObject(parent),
      m_dependencies(std::move(dependencies)),
      m_currentUser(m_dependencies.defaults.string(userDefaultsKey)) {}

void SyncManager::registerUser(const QString &username, const QString &password,
                               const Completion &completion) {
    const auto url = endpoint("/auth/register");
    if (!url)
        return;
    post(*url, encodeCredentials(username, password, m_dependencies.storage.words()),
         [this, username, completion](const HttpReply &reply) {
             if (!enterAccount(reply, username, QStringLiteral("注册失败"), completion))
                 return;
             setSyncStatusMessage(QStringLiteral("注册并同步完成"));
             complete(completion, true);
         });
}

void SyncManager::login(const QString &username, const QString &password, const Completion &completion) {
    const auto url = endpoint("/auth/login");
    if (!url)
        return;
    post(*url, encodeCredentials(username, password, m_dependencies.storage.words()),
         [this, username, completion](const HttpReply &reply) {
             const auto answer = enterAccount(reply, username, QStringLiteral("登录失败"), completion);
             if (!answer)
                 return;
             if (const auto words = decodeCloudWords(*answer, m_dependencies.clock()))
                 m_dependencies.storage.mergeCloudWords(*words);
             complete(completion, true);
         });
}

void SyncManager::logout() {
    setCurrentUser(QString());
    m_dependencies.defaults.remove(userDefaultsKey);
    m_dependencies.defaults.remove(tokenDefaultsKey);
    setSyncStatusMessage(QString());
}

void SyncManager::syncWithCloud() {
    const auto url = endpoint("/sync");
    if (!isLoggedIn() || !url)
        return;
    setIsSyncing(true);
    // What other processes have deleted must go out, too.
    m_dependencies.defaults.refresh();
    const StorageManager &storage = m_dependencies.storage;
    post(*url, encodeSync(m_currentUser, storage.words(), storage.deletedWords()),
         [this](const HttpReply &reply) { finishSync(reply); });
}

void SyncManager::syncDeletionToCloud(const QString &word) {
    const auto url = endpoint("/sync/delete");
    if (isLoggedIn() && url)
        post(*url, encodeDeletion(m_currentUser, word), nullptr);
}

/// Nothing when the base and the path make no URL.
std::optional<QUrl> SyncManager::endpoint(const char *path) const {
    const QUrl url(apiBase() + QLatin1StringView(path), QUrl::StrictMode);
    return url.isValid() ? std::optional(url) : std::nullopt;
}

void SyncManager::post(const QUrl &url, const QByteArray &body, const ReplyHandler &handle) {
    send({.method = HttpRequest::Method::Post,
          .url = url,
          .headers = {{"Content-Type", "application/json"}},
          .body = body,
          .idleLimit = m_dependencies.idleLimit,
          .totalLimit = m_dependencies.totalLimit,
          .bodyLimit = longestAnswer,
          .staysAtOrigin = true,
          .cancellation = m_destruction.token()},
         handle);
}

/// Sends a request and overwrites its body. The reply is handled in a turn of its own of the event loop, and
/// not at all when the manager is gone by then.
QCoro::Task<> SyncManager::send(HttpRequest request, ReplyHandler handle) {
    const WipedAtEnd wiped(request.body);
    const HttpReply reply = co_await m_dependencies.http.send(request);
    if (request.cancellation.isCancelled() || !handle)
        co_return;
    const auto handleReply = [handle, reply] {
        handle(reply);
    };
    QMetaObject::invokeMethod(this, handleReply, Qt::QueuedConnection);
}

/// Enters the state of being logged in if the server says so; else completes with its message or another.
std::optional<ServerAnswer> SyncManager::enterAccount(const HttpReply &reply, const QString &username,
                                                      const QString &failureMessage,
                                                      const Completion &completion) {
    auto answer = reply.error ? std::nullopt : decodeServerAnswer(reply.body);
    if (!answer) {
        complete(completion, false, reply.error.value_or(QStringLiteral("服务器响应异常")));
        return std::nullopt;
    }
    if (!answer->isSuccess) {
        complete(completion, false, answer->message.value_or(failureMessage));
        return std::nullopt;
    }
    setCurrentUser(username.isNull() ? QStringLiteral("") : username);
    m_dependencies.defaults.set(userDefaultsKey, m_currentUser);
    if (answer->token)
        m_dependencies.defaults.set(tokenDefaultsKey, *answer->token);
    setLastSyncTimeToNow();
    return answer;
}

void SyncManager::finishSync(const HttpReply &reply) {
    setIsSyncing(false);
    if (reply.error)
        return setSyncStatusMessage(QStringLiteral("同步失败: ") + *reply.error);
    const auto answer = decodeServerAnswer(reply.body);
    if (!answer)
        return setSyncStatusMessage(QStringLiteral("同步响应异常"));
    if (!answer->isSuccess)
        return setSyncStatusMessage(answer->message.value_or(QStringLiteral("同步失败")));
    setLastSyncTimeToNow();
    const auto words = decodeCloudWords(*answer, m_dependencies.clock());
    if (!words)
        return setSyncStatusMessage(QStringLiteral("同步完成"));
    m_dependencies.storage.mergeCloudWords(*words);
    setSyncStatusMessage(
        QStringLiteral("双向同步完成 (共 %1 词)").arg(m_dependencies.storage.words().size()));
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

void SyncManager::setSyncStatusMessage(const QString &message) {
    const QString previous = std::exchange(m_syncStatusMessage, message);
    if (previous != message || previous.isNull() != message.isNull())
        Q_EMIT syncStatusMessageChanged();
}

} // namespace lexiquill
