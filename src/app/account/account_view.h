#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QString>

namespace lexiquill {

class SyncManager;

/// The state of the account sheet: the typed text, and the result of the last login or registration.
class AccountView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool isRegisterMode MEMBER m_isRegisterMode NOTIFY isRegisterModeChanged)
    Q_PROPERTY(QString username MEMBER m_username NOTIFY usernameChanged)
    Q_PROPERTY(QString password MEMBER m_password NOTIFY passwordChanged)
    Q_PROPERTY(bool isSubmitting READ isSubmitting NOTIFY isSubmittingChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(QString successMessage READ successMessage NOTIFY successMessageChanged)
    Q_PROPERTY(QString serverAddress READ serverAddress NOTIFY serverChanged)
    Q_PROPERTY(QString lastSyncText READ lastSyncText NOTIFY lastSyncTextChanged)

public:
    explicit AccountView(QObject *parent = nullptr);

    bool isSubmitting() const { return m_isSubmitting; }
    /// Result of the last attempt; null when there is no message.
    const QString &errorMessage() const { return m_errorMessage; }
    const QString &successMessage() const { return m_successMessage; }
    /// The base URL of the server, without a slash at the end.
    QString serverAddress() const;
    /// Time of the last sync in the format of the user's locale; empty before the first sync.
    QString lastSyncText() const;

    /// Logs in or registers with the text as typed. Clears the password after success.
    Q_INVOKABLE void submitAuth();

Q_SIGNALS:
    void serverChanged();
    void isRegisterModeChanged();
    void usernameChanged();
    void passwordChanged();
    void isSubmittingChanged();
    void errorMessageChanged();
    void successMessageChanged();
    void lastSyncTextChanged();

private:
    void finish(bool wasRegistration, bool isSuccess, const QString &message);
    void setIsSubmitting(bool isSubmitting);
    void setErrorMessage(const QString &message);
    void setSuccessMessage(const QString &message);

    SyncManager &m_sync;
    bool m_isRegisterMode = false;
    QString m_username = QStringLiteral("");
    QString m_password = QStringLiteral("");
    bool m_isSubmitting = false;
    QString m_errorMessage;
    QString m_successMessage;
};

} // namespace lexiquill
