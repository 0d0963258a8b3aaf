#include "update/update_manager.h"

#include "network/http_client.h"
#include "support/web_address.h"
#include "update/update_failures.h"
#include "update/version_order.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>

#include <compare>

namespace lexiquill {

namespace {

using namespace std::chrono_literals;

/// How long the script may take to start before the process ends.
constexpr auto timeToQuit = 150ms;

/// Whether what has been downloaded may be part of the whole archive after this failure.
bool isWorthKeeping(HttpError error) {
    return error != HttpError::CannotWrite && error != HttpError::TooLarge &&
           error != HttpError::CannotResume;
}

QString nameOf(const QString &path) {
    return QFileInfo(path).fileName();
}

} // namespace

UpdateManager::UpdateManager(Dependencies dependencies, QObject *parent)
    : QObject(parent),
      m_dependencies(std::move(dependencies)),
      m_paths(UpdatePaths::in(m_dependencies.directory)) {
    m_quitTimer.setSingleShot(true);
    connect(&m_quitTimer, &QTimer::timeout, this, [this] { m_dependencies.quit(0); });
}

UpdateManager::~UpdateManager() = default;

QString UpdateManager::installActionText() const {
    return canInstall() ? QStringLiteral("立即更新并重启") : QStringLiteral("请使用系统的软件包管理器更新");
}

QVariant UpdateManager::availableUpdateValue() const {
    return m_availableUpdate ? QVariant::fromValue(*m_availableUpdate) : QVariant();
}

template <typename T> void UpdateManager::change(T &field, const T &value, void (UpdateManager::*changed)()) {
    if (field == value)
        return;
    field = value;
    Q_EMIT(this->*changed)();
}

void UpdateManager::setShowUpdateSheet(bool show) {
    change(m_showUpdateSheet, show, &UpdateManager::showUpdateSheetChanged);
}

void UpdateManager::setIsDownloading(bool isDownloading) {
    change(m_isDownloading, isDownloading, &UpdateManager::isDownloadingChanged);
}

void UpdateManager::setStatusMessage(const QString &message) {
    change(m_statusMessage, message, &UpdateManager::statusMessageChanged);
}

void UpdateManager::setErrorMessage(const QString &message) {
    change(m_errorMessage, message, &UpdateManager::errorMessageChanged);
}

void UpdateManager::setUpdateCheckURL(const QUrl &url) {
    if (url == m_dependencies.updateCheckURL)
        return;
    m_dependencies.updateCheckURL = url;
    m_check.reset();
    change(m_isChecking, false, &UpdateManager::isCheckingChanged);
    if (!m_isDownloading) {
        setShowUpdateSheet(false);
        change(m_availableUpdate, {}, &UpdateManager::availableUpdateChanged);
        m_download.reset();
    }
    setErrorMessage({});
    setStatusMessage({});
    Q_EMIT updateCheckURLChanged();
}

bool UpdateManager::hasServer() const {
    return !isReservedHost(m_dependencies.updateCheckURL);
}

void UpdateManager::checkForUpdates(bool manual) {
    if (m_isChecking) {
        m_isCheckManual = m_isCheckManual || manual;
        return;
    }
    m_isCheckManual = manual;
    if (!hasServer()) {
        if (manual)
            setErrorMessage(QStringLiteral("尚未设置服务器，无法检查更新"));
        return;
    }
    change(m_isChecking, true, &UpdateManager::isCheckingChanged);
    setErrorMessage({});
    m_check = std::make_unique<Cancellation>();
    check(manual);
}

QCoro::Task<> UpdateManager::check(bool manual) {
    const std::stop_token stop = m_check->token();
    HttpRequest request;
    request.url = m_dependencies.updateCheckURL;
    request.idleLimit = m_dependencies.idleLimit;
    request.totalLimit = m_dependencies.checkLimit;
    request.bodyLimit = m_dependencies.recordLimit;
    request.stop = stop;
    const HttpReply reply = co_await m_dependencies.http.send(request);
    if (stop.stop_requested())
        co_return;
    change(m_isChecking, false, &UpdateManager::isCheckingChanged);
    if (!reply.error)
        judge(reply.body, manual);
    else if (manual)
        setErrorMessage(QStringLiteral("检查更新失败: ") + description(*reply.error));
}

void UpdateManager::judge(const QByteArray &record, bool manual) {
    const std::optional<RemoteUpdateInfo> info = decodeRemoteUpdateInfo(record);
    if (info && std::is_gt(compareVersions(info->version, currentVersion()))) {
        change(m_availableUpdate, info, &UpdateManager::availableUpdateChanged);
        setShowUpdateSheet(true);
    } else if (!manual) {
        return;
    } else if (record.isEmpty()) {
        setErrorMessage(QStringLiteral("服务器返回空数据"));
    } else if (!info) {
        setErrorMessage(QStringLiteral("解析更新信息异常"));
    } else {
        setStatusMessage(QStringLiteral("当前已是最新版本 (v") + currentVersion() + u')');
    }
}

void UpdateManager::startDownloadAndInstall(const RemoteUpdateInfo &update) {
    if (m_isDownloading)
        return;
    if (!canInstall())
        return setErrorMessage(installActionText());
    const QUrl url(update.downloadUrl, QUrl::StrictMode);
    if (!isAcceptableUrl(url))
        return setErrorMessage(QStringLiteral("无效的下载链接"));
    if (const auto obstacle = obstacleToReplacing(m_dependencies.installation.applicationPath))
        return setErrorMessage(QStringLiteral("无法替换应用程序: ") + displayText(*obstacle));
    if (!m_download || m_download->url != url || !m_download->canGoOn())
        m_download = std::make_shared<Download>();
    m_download->url = url;
    setIsDownloading(true);
    change(m_downloadProgress, 0.0, &UpdateManager::downloadProgressChanged);
    showProgress(m_download->file.isOpen() ? m_download->file.size() : 0, m_download->total);
    setStatusMessage(QStringLiteral("正在下载最新版本..."));
    m_downloadTask = std::make_unique<Cancellation>();
    download(m_download);
}

void UpdateManager::cancelDownload() {
    if (!m_isDownloading || m_isInstalling)
        return;
    m_downloadTask.reset();
    setIsDownloading(false);
    setStatusMessage(QStringLiteral("已取消下载"));
}

void UpdateManager::showProgress(qint64 received, std::optional<qint64> total) {
    if (total.value_or(0) < 1)
        return;
    change(m_downloadProgress, static_cast<double>(received) / static_cast<double>(*total),
           &UpdateManager::downloadProgressChanged);
}

HttpRequest UpdateManager::downloadRequest(Download &download, const std::stop_token &stop) {
    HttpRequest request;
    request.url = download.url;
    request.idleLimit = m_dependencies.stallLimit;
    request.totalLimit = m_dependencies.downloadLimit;
    request.bodyLimit = m_dependencies.archiveLimit;
    request.stop = stop;
    request.sink = &download.file;
    if (download.canGoOn())
        request.start = BodyStart{.size = download.file.size(), .validator = download.validator};
    request.emptySink = [&download] {
        return download.empty();
    };
    request.onProgress = [this, &download](qint64 received, std::optional<qint64> total) {
        download.total = total;
        showProgress(received, total);
    };
    return request;
}

QCoro::Task<> UpdateManager::download(std::shared_ptr<Download> download) {
    const std::stop_token stop = m_downloadTask->token();
    if (!download->file.isOpen()) {
        download->directory = SharedDirectory::at(m_dependencies.directory);
        if (const auto failure = download->directory->openUnnamed(download->file)) {
            giveUpDownload(QStringLiteral("下载中断: ") + displayText(*failure));
            co_return;
        }
    }
    HttpReply reply;
    do {
        // After an answer that does not fit to what is there, once more from the beginning.
        if (reply.error) {
            download->validator.clear();
            download->empty();
        }
        reply = co_await m_dependencies.http.send(downloadRequest(*download, stop));
        if (reply.status == 200)
            download->validator = reply.validator;
        if (stop.stop_requested())
            co_return;
    } while (reply.error == HttpError::CannotResume && download->canGoOn());
    if (reply.error) {
        const QString message = QStringLiteral("下载中断: ") + description(*reply.error);
        isWorthKeeping(*reply.error) ? endDownload(message) : giveUpDownload(message);
    } else if (!reply.isOk()) {
        // An error page is not an archive.
        endDownload(QStringLiteral("下载中断: 服务器返回状态 ") + QString::number(reply.status));
    } else if (const auto failure = prepareUnpacking(*download->directory, download->file)) {
        giveUpDownload(QStringLiteral("文件解压准备失败: ") + displayText(*failure));
    } else {
        download->file.close();
        setStatusMessage(QStringLiteral("下载完成，正在自动安装并重启新版..."));
        executeSelfReplaceAndRestart(*download->directory);
    }
}

SharedDirectory::Failure UpdateManager::prepareUnpacking(SharedDirectory &directory,
                                                         const QFile &downloaded) const {
    for (const QString &path : {m_paths.archive, m_paths.unpackDirectory}) {
        if (auto failure = directory.remove(nameOf(path)))
            return failure;
    }
    if (auto failure = directory.createDirectory(nameOf(m_paths.unpackDirectory)))
        return failure;
    return directory.publish(downloaded, nameOf(m_paths.archive));
}

void UpdateManager::executeSelfReplaceAndRestart(SharedDirectory &directory) {
    const QByteArray script =
        updateScript(m_dependencies.platform, m_paths, m_dependencies.installation.applicationPath,
                     QCoreApplication::applicationPid());
    // The script writes to any file with the name of its log, so that file must be ours before the script
    // starts.
    auto failure = directory.createFile(nameOf(m_paths.log), SharedDirectory::FileKind::Private, {});
    if (!failure)
        failure = directory.createFile(nameOf(m_paths.script), SharedDirectory::FileKind::Script, script);
    const auto abandon = [&](const QString &message) {
        for (const QString &path : {m_paths.archive, m_paths.unpackDirectory})
            directory.remove(nameOf(path));
        giveUpDownload(message);
    };
    if (failure)
        return abandon(QStringLiteral("安装脚本创建失败: ") + displayText(*failure));
    // Start in "/", because the script may remove the working directory of this process.
    if (!QProcess::startDetached(QStringLiteral("/bin/bash"),
                                 {QStringLiteral("-c"), QStringLiteral("nohup ") + shellWord(m_paths.script) +
                                                            QStringLiteral(" >/dev/null 2>&1 &")},
                                 QStringLiteral("/")))
        return abandon(QStringLiteral("安装脚本启动失败"));
    change(m_isInstalling, true, &UpdateManager::isInstallingChanged);
    m_quitTimer.start(timeToQuit);
}

void UpdateManager::endDownload(const QString &message) {
    setIsDownloading(false);
    setErrorMessage(message);
}

void UpdateManager::giveUpDownload(const QString &message) {
    m_download.reset();
    endDownload(message);
}

} // namespace lexiquill
