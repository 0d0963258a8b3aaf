#pragma once

#include "network/http_message.h"
#include "platform/installation.h"
#include "platform/shared_directory.h"
#include "support/cancellation.h"
#include "update/remote_update_info.h"
#include "update/update_script.h"

#include <QCoroTask>
#include <QFile>
#include <QObject>
#include <QTimer>
#include <QUrl>
#include <QVariant>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace lexiquill {

class HttpClient;

/// Keeps the program up to date: asks its server for the newest release, downloads it on the user's request,
/// and runs a script that replaces the running program with it and starts it. All its state changes on the
/// thread that it lives on.
class UpdateManager : public QObject {
    Q_OBJECT
    Q_PROPERTY(QUrl updateCheckURL READ updateCheckURL NOTIFY updateCheckURLChanged)
    Q_PROPERTY(bool hasServer READ hasServer NOTIFY updateCheckURLChanged)
    Q_PROPERTY(QString currentVersion READ currentVersion CONSTANT)
    Q_PROPERTY(QString currentBuild READ currentBuild CONSTANT)
    Q_PROPERTY(bool canInstall READ canInstall CONSTANT)
    Q_PROPERTY(QString installActionText READ installActionText CONSTANT)
    Q_PROPERTY(bool isChecking READ isChecking NOTIFY isCheckingChanged)
    Q_PROPERTY(QVariant availableUpdate READ availableUpdateValue NOTIFY availableUpdateChanged)
    Q_PROPERTY(
        bool showUpdateSheet READ showUpdateSheet WRITE setShowUpdateSheet NOTIFY showUpdateSheetChanged)
    Q_PROPERTY(bool isDownloading READ isDownloading NOTIFY isDownloadingChanged)
    Q_PROPERTY(bool isInstalling READ isInstalling NOTIFY isInstallingChanged)
    Q_PROPERTY(double downloadProgress READ downloadProgress NOTIFY downloadProgressChanged)
    Q_PROPERTY(QString statusMessage READ statusMessage NOTIFY statusMessageChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)

public:
    struct Dependencies {
        HttpClient &http;
        QUrl updateCheckURL; ///< the URL of the version record
        QString currentVersion;
        QString currentBuild;
        Installation installation;
        ScriptPlatform platform;
        std::function<void(int status)> quit; ///< ends the process
        /// The directory for archive and script; other users may write to it, too.
        QString directory = QStringLiteral("/tmp");
        std::chrono::milliseconds idleLimit{60'000}; ///< of a check
        std::chrono::milliseconds checkLimit{60'000};
        std::chrono::milliseconds stallLimit{30'000}; ///< the longest time without progress of a download
        std::chrono::milliseconds downloadLimit = std::chrono::hours(7 * 24);
        qint64 recordLimit = qint64{1} << 20;  ///< bytes
        qint64 archiveLimit = qint64{2} << 30; ///< bytes
    };

    explicit UpdateManager(Dependencies dependencies, QObject *parent = nullptr);
    ~UpdateManager() override;

    /// Checks for a newer release; does nothing while a check is in progress. The result appears in the
    /// properties. `manual`: the user asked for the check, so failures are reported, too. Without a server
    /// nothing is sent.
    Q_INVOKABLE void checkForUpdates(bool manual);
    /// Downloads the release, installs it and ends the process; does nothing while a download is in progress.
    /// Failures appear in `errorMessage`. A download of the same release that was interrupted or cancelled
    /// since the program started goes on where it ended, if the server supports that.
    Q_INVOKABLE void startDownloadAndInstall(const lexiquill::RemoteUpdateInfo &update);
    /// Ends the download; too late once the installation has begun.
    Q_INVOKABLE void cancelDownload();

    QUrl updateCheckURL() const { return m_dependencies.updateCheckURL; }
    /// Later checks ask another server. A release that the previous one offered is forgotten, and a check in
    /// progress ends without a result.
    void setUpdateCheckURL(const QUrl &url);
    /// Whether there is a server to ask.
    bool hasServer() const;
    QString currentVersion() const { return m_dependencies.currentVersion; }
    QString currentBuild() const { return m_dependencies.currentBuild; }
    /// False when the system's package manager updates the program.
    bool canInstall() const { return !m_dependencies.installation.isManagedBySystem; }
    /// The action that the dialog offers: to update, or to use the package manager if the program cannot
    /// update itself.
    QString installActionText() const;

    bool isChecking() const { return m_isChecking; }
    /// Whether the user has asked for the last check, at its start or since.
    bool isCheckManual() const { return m_isCheckManual; }
    /// The newer release that was found; no value if there is none.
    const std::optional<RemoteUpdateInfo> &availableUpdate() const { return m_availableUpdate; }
    /// The same as a property's value; invalid if there is none.
    QVariant availableUpdateValue() const;
    /// Whether the window should show the update dialog.
    bool showUpdateSheet() const { return m_showUpdateSheet; }
    void setShowUpdateSheet(bool show);
    bool isDownloading() const { return m_isDownloading; }
    /// Whether the script has been started; the process is then about to end.
    bool isInstalling() const { return m_isInstalling; }
    /// The part that is downloaded, 0…1; 0 while the size is unknown.
    double downloadProgress() const { return m_downloadProgress; }
    /// The current status for the user; null when there is none.
    QString statusMessage() const { return m_statusMessage; }
    /// The error message for the user; null when there is none.
    QString errorMessage() const { return m_errorMessage; }

Q_SIGNALS:
    void updateCheckURLChanged();
    void isCheckingChanged();
    void availableUpdateChanged();
    void showUpdateSheetChanged();
    void isDownloadingChanged();
    void isInstallingChanged();
    void downloadProgressChanged();
    void statusMessageChanged();
    void errorMessageChanged();

private:
    /// A download: what has arrived, and what is needed to go on.
    struct Download {
        QUrl url;
        std::unique_ptr<SharedDirectory> directory;
        QFile file; ///< without a name
        QByteArray validator;
        std::optional<qint64> total; ///< bytes

        bool canGoOn() const { return file.isOpen() && !validator.isEmpty() && file.size() > 0; }
        bool empty() { return file.resize(0) && file.seek(0); }
    };

    template <typename T> void change(T &field, const T &value, void (UpdateManager::*changed)());
    void setIsDownloading(bool isDownloading);
    void setStatusMessage(const QString &message);
    void setErrorMessage(const QString &message);

    QCoro::Task<> check(bool manual);
    void judge(const QByteArray &record, bool manual);
    QCoro::Task<> download(std::shared_ptr<Download> download);
    HttpRequest downloadRequest(Download &download, const std::stop_token &stop);
    void showProgress(qint64 received, std::optional<qint64> total);
    /// Creates archive and unpack directory.
    SharedDirectory::Failure prepareUnpacking(SharedDirectory &directory, const QFile &downloaded) const;
    void executeSelfReplaceAndRestart(SharedDirectory &directory);
    void endDownload(const QString &message);
    /// The same, and removes what has been downloaded.
    void giveUpDownload(const QString &message);

    Dependencies m_dependencies;
    UpdatePaths m_paths;
    bool m_isChecking = false;
    bool m_isCheckManual = false;
    std::optional<RemoteUpdateInfo> m_availableUpdate;
    bool m_showUpdateSheet = false;
    bool m_isDownloading = false;
    bool m_isInstalling = false;
    double m_downloadProgress = 0;
    QString m_statusMessage;
    QString m_errorMessage;
    QTimer m_quitTimer;
    std::unique_ptr<Cancellation> m_check;
    std::unique_ptr<Cancellation> m_downloadTask;
    std::shared_ptr<Download> m_download; ///< in progress, or ended early
};

} // namespace lexiquill
