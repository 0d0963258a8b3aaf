#include "app/account/account_view.h"

#include "app/shell/services.h"
#include "sync/sync_manager.h"

#include <QLocale>
#include <QPointer>

#include <utility>

namespace lexiquill {

AccountView::AccountView(QObject *parent) : QObject(parent), m_sync(Services::current().sync) {
    connect(&m_sync, &SyncManager::lastSyncTimeChanged, this, &AccountView::lastSyncTextChanged);
    connect(&m_sync, &SyncManager::currentUserChanged, this, [this] {
        if (!m_sync.isLoggedIn())
            setSuccessMessage({});
    });
    // The success of the login says nothing about a later sync.
    const auto forgetSuccess = [this] {
        if (m_sync.isSyncing() || m_sync.hasSyncFailed())
            setSuccessMessage({});
    };
    connect(&m_sync, &SyncManager::isSyncingChanged, this, forgetSuccess);
    connect(&m_sync, &SyncManager::syncStatusMessageChanged, this, forgetSuccess);
    connect(&m_sync, &SyncManager::apiBaseChanged, this, [this] {
        setIsSubmitting(false);
        setErrorMessage({});
        Q_EMIT serverChanged();
    });
}

QString AccountView::serverAddress() const {
    QString address = m_sync.apiBase();
    if (address.endsWith(QLatin1StringView("/api")))
        address.chop(4);
    return address;
}

QString AccountView::lastSyncText() const {
    const QDateTime &time = m_sync.lastSyncTime();
    return time.isValid() ? QLocale().toString(time, QLocale::ShortFormat) : QString();
}

void AccountView::submitAuth() {
    setIsSubmitting(true);
    setErrorMessage({});
    setSuccessMessage({});
    const bool isRegistration = m_isRegisterMode;
    const auto completion = [self = QPointer(this), isRegistration](bool isSuccess,
                                                                    const std::optional<QString> &message) {
        if (self)
            self->finish(isRegistration, isSuccess, message.value_or(QString()));
    };
    if (isRegistration)
        m_sync.registerUser(m_username, m_password, completion);
    else
        m_sync.login(m_username, m_password, completion);
}

void AccountView::finish(bool wasRegistration, bool isSuccess, const QString &message) {
    setIsSubmitting(false);
    if (!isSuccess) {
        const QString usual = wasRegistration ? QStringLiteral("注册失败") : QStringLiteral("登录失败");
        return setErrorMessage(message.isNull() ? usual : message);
    }
    m_password = QStringLiteral("");
    Q_EMIT passwordChanged();
    setSuccessMessage(wasRegistration ? QStringLiteral("注册并同步成功！")
                                      : QStringLiteral("登录成功，已拉取云端记录！"));
}

void AccountView::setIsSubmitting(bool isSubmitting) {
    if (std::exchange(m_isSubmitting, isSubmitting) != isSubmitting)
        Q_EMIT isSubmittingChanged();
}

void AccountView::setErrorMessage(const QString &message) {
    if (std::exchange(m_errorMessage, message) != message)
        Q_EMIT errorMessageChanged();
}

void AccountView::setSuccessMessage(const QString &message) {
    if (std::exchange(m_successMessage, message) != message)
        Q_EMIT successMessageChanged();
}

} // namespace lexiquill
