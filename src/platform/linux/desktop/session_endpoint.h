#pragma once

#include "platform/application_endpoint.h"

#include <QDBusAbstractAdaptor>
#include <QDBusContext>
#include <QSocketNotifier>
#include <QVariantMap>

#include <memory>

namespace lexiquill {

/// The application's object on the session bus.
class SessionEndpoint : public QObject, protected QDBusContext, public ApplicationEndpoint {
    Q_OBJECT

public:
    bool claim(ApplicationRequests requests) override;

private Q_SLOTS:
    /// The bus has ended before this process. Later starts then reach the process by the socket.
    void outliveBus() { claimSocket(); }

private:
    friend class FreedesktopApplication;
    friend class LookupService;

    bool claimSocket();
    void takeFromSocket(int listener);
    /// Answers the current call with an error.
    void refuse(const QString &message);

    ApplicationRequests m_requests;
    std::unique_ptr<QSocketNotifier> m_socketNotifier;
};

/// The D-Bus interface by which desktops start and control applications.
class FreedesktopApplication : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit FreedesktopApplication(SessionEndpoint *endpoint);

public Q_SLOTS:
    void Activate(const QVariantMap &platformData);
    void Open(const QStringList &uris, const QVariantMap &platformData);
    void ActivateAction(const QString &name, const QVariantList &parameters, const QVariantMap &platformData);

private:
    SessionEndpoint &m_endpoint;
};

/// The lookup interface for other programs.
class LookupService : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.lexiquill.Lexiquill")

public:
    explicit LookupService(SessionEndpoint *endpoint);

public Q_SLOTS:
    /// Brings the window to the front and looks the text up; a blank text is an error.
    void Lookup(const QString &text);

private:
    SessionEndpoint &m_endpoint;
};

} // namespace lexiquill
