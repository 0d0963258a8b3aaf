#include "platform/linux/desktop/portal_color_scheme.h"

#include "platform/linux/desktop/portal_request.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace lexiquill {

namespace {

const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");

/// The older method of the portal wraps its value twice.
QVariant unwrapped(QVariant value) {
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

std::optional<bool> preference(const QVariant &value) {
    switch (unwrapped(value).toUInt()) {
    case 1:
        return true;
    case 2:
        return false;
    default:
        return std::nullopt;
    }
}

} // namespace

std::unique_ptr<ColorScheme> watchColorScheme(std::function<void(std::optional<bool>)> report) {
    return std::make_unique<PortalColorScheme>(std::move(report));
}

PortalColorScheme::PortalColorScheme(std::function<void(std::optional<bool>)> report)
    : m_report(std::move(report)) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    bus.connect(Portal::service, Portal::path, settingsInterface, QStringLiteral("SettingChanged"), this,
                SLOT(takeChange(QString, QString, QDBusVariant)));
    QDBusMessage call = QDBusMessage::createMethodCall(Portal::service, Portal::path, settingsInterface,
                                                       QStringLiteral("Read"));
    call << appearance << colorScheme;
    auto *const watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (reply.isValid())
            m_report(preference(reply.value().variant()));
        watcher->deleteLater();
    });
}

void PortalColorScheme::takeChange(const QString &space, const QString &key, const QDBusVariant &value) {
    if (space == appearance && key == colorScheme)
        m_report(preference(value.variant()));
}

} // namespace lexiquill
