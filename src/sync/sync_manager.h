#pragma once

#include "network/http_client.h"
#include "settings/user_defaults.h"
#include "storage/storage_manager.h"
#include "support/cancellation.h"
#include "support/instant.h"

#include <QCoroTask>
#include <QDateTime>
#include <QObject>
#include <QQueue>
#include <QString>
#include <QUrl>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace lexiquill {

/// The client of the program's own account server: registers, logs in, and synchronises the wordbook. Results
/// are reported through the properties or a completion, in both cases only after the call has returned. Every
/// message is in Chinese. Without a configured server nothing is sent, and every request fails. An account
/// belongs to the server on which it was made: with another server nobody is logged in. To be used on the
/// main thread.
class SyncManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString apiBase READ apiBase NOTIFY apiBaseChanged)
    Q_PROPERTY(bool hasServer READ hasServer NOTIFY apiBaseChanged)
    Q_PROPERTY(QString currentUser READ currentUser NOTIFY currentUserChanged)
    Q_PROPERTY(bool isLoggedIn READ isLoggedIn NOTIFY currentUserChanged)
    Q_PROPERTY(bool isSyncing READ isSyncing NOTIFY isSyncingChanged)
    Q_PROPERTY(QDateTime lastSyncTime READ lastSyncTime NOTIFY lastSyncTimeChanged)
    Q_PROPERTY(QString syncStatusMessage READ syncStatusMessage NOTIFY syncStatusMessageChanged)
    Q_PROPERTY(bool hasSyncFailed READ hasSyncFailed NOTIFY syncStatusMessageChanged)
    Q_PROPERTY(
        bool showAccountSheet READ showAccountSheet WRITE setShowAccountSheet NOTIFY showAccountSheetChanged)

public:
    struct Dependencies {
        QString apiBase; ///< the URL that every endpoint is appended to, without a slash at the end
        HttpClient &http;
        StorageManager &storage;
        UserDefaults &defaults;
        Clock clock = Instant::now;
        /// The longest time without any progress.
        std::chrono::milliseconds idleLimit = std::chrono::seconds{60};
        /// The longest total time: a large wordbook on a slow connection takes more than a minute.
        std::chrono::milliseconds totalLimit = std::chrono::minutes{10};
    };
    /// `message` says what went wrong; it is absent on success.
    using Completion = std::function<void(bool isSuccess, const std::optional<QString> &message)>;

    /// Restores the user name that was stored last, if that was on the same server.
    explicit SyncManager(Dependencies dependencies, QObject *parent = nullptr);

    const QString &apiBase() const { return m_dependencies.apiBase; }
    /// Changes the server: requests in progress are abandoned, their completions are not called, and the user
    /// is logged out.
    void setApiBase(const QString &base);
    /// Whether a server is configured.
    bool hasServer() const;
    /// The logged-in user; null when there is none.
    const QString &currentUser() const { return m_currentUser; }
    bool isLoggedIn() const { return !m_currentUser.isNull(); }
    /// Whether a two-way sync is in progress. If several run at once, false after the first answer.
    bool isSyncing() const { return m_isSyncing; }
    /// The time of the last successful login, registration or sync since the program started; invalid before
    /// that.
    const QDateTime &lastSyncTime() const { return m_lastSyncTime; }
    /// The outcome of the last sync or registration; null when there is none.
    const QString &syncStatusMessage() const { return m_syncStatusMessage; }
    /// Whether that message is about a failure.
    bool hasSyncFailed() const { return m_hasSyncFailed; }
    bool showAccountSheet() const { return m_showAccountSheet; }
    void setShowAccountSheet(bool isShown);

    /// Creates an account with the local words in it, and logs in.
    void registerUser(const QString &username, const QString &password, const Completion &completion);
    /// Logs in and merges the words of the account.
    void login(const QString &username, const QString &password, const Completion &completion);
    /// Logs out. The words stay.
    Q_INVOKABLE void logout();
    /// Sends the whole wordbook and merges the server's words. Does nothing when nobody is logged in.
    Q_INVOKABLE void syncWithCloud();
    /// Reports a deletion to the server and ignores its answer. Does nothing when nobody is logged in. Of
    /// many deletions, a few are sent at a time, in order.
    void syncDeletionToCloud(const QString &word);

    static const QString userDefaultsKey;  ///< "lexiquill_logged_user"
    static const QString tokenDefaultsKey; ///< "lexiquill_token"
    /// "lexiquill_logged_server": the `apiBase` of the login; missing if an earlier version stored the login
    static const QString serverDefaultsKey;

Q_SIGNALS:
    void apiBaseChanged();
    void currentUserChanged();
    void isSyncingChanged();
    void lastSyncTimeChanged();
    void syncStatusMessageChanged();
    void showAccountSheetChanged();

private:
    struct Response;
    using ResponsePointer = std::shared_ptr<Response>;
    using Handler = std::function<void(const ResponsePointer &)>;

    std::optional<QUrl> endpoint(const char *path) const;
    void enter(const char *path, const QString &username, const QString &password,
               const Completion &completion, const Handler &handle);
    HttpRequest request(const QUrl &url, const QByteArray &body) const;
    void post(const QUrl &url, const std::function<QByteArray()> &encode, const Handler &handle);
    QCoro::Task<> send(HttpRequest request, Handler handle);
    QCoro::Task<> tellDeletions(QUrl url);
    bool enterAccount(const Response &response, const QString &username, const QString &failureMessage,
                      const Completion &completion);
    void finishSync(const ResponsePointer &response);
    void merge(const ResponsePointer &response);
    void setIsSyncing(bool isSyncing);
    void setLastSyncTimeToNow();
    void setCurrentUser(const QString &user);
    void setSyncStatusMessage(const QString &message, bool isFailure = false);

    Dependencies m_dependencies;
    QString m_currentUser;
    bool m_isSyncing = false;
    QDateTime m_lastSyncTime;
    QString m_syncStatusMessage;
    bool m_hasSyncFailed = false;
    bool m_showAccountSheet = false;
    QQueue<QByteArray> m_deletions; ///< bodies of requests that are still to be sent
    int m_deletionsUnderWay = 0;
    /// Of all requests to the current server.
    std::unique_ptr<Cancellation> m_requests = std::make_unique<Cancellation>();
};

} // namespace lexiquill
