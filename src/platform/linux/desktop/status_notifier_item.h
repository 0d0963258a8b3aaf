#pragma once

#include "platform/tray.h"

#include <QDBusAbstractAdaptor>
#include <QDBusObjectPath>

#include <functional>

namespace lexiquill {

/// A picture in the form of the tray: rows of ARGB in network byte order.
struct TrayPicture {
    int width = 0;
    int height = 0;
    QByteArray data;
};

/// The text that a tray shows above the icon.
struct TrayToolTip {
    QString iconName;
    QList<TrayPicture> pictures;
    QString title;
    QString text;
};

/// The D-Bus interface of an icon in the tray.
class StatusNotifierItem : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category CONSTANT)
    Q_PROPERTY(QString Id READ id CONSTANT)
    Q_PROPERTY(QString Title READ title CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(int WindowId READ windowId CONSTANT)
    Q_PROPERTY(QString IconThemePath READ noText CONSTANT)
    Q_PROPERTY(QDBusObjectPath Menu READ menu CONSTANT)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu CONSTANT)
    Q_PROPERTY(QString IconName READ iconName CONSTANT)
    Q_PROPERTY(QList<lexiquill::TrayPicture> IconPixmap READ iconPixmap CONSTANT)
    Q_PROPERTY(QString OverlayIconName READ noText CONSTANT)
    Q_PROPERTY(QList<lexiquill::TrayPicture> OverlayIconPixmap READ noPixmap CONSTANT)
    Q_PROPERTY(QString AttentionIconName READ noText CONSTANT)
    Q_PROPERTY(QList<lexiquill::TrayPicture> AttentionIconPixmap READ noPixmap CONSTANT)
    Q_PROPERTY(QString AttentionMovieName READ noText CONSTANT)
    Q_PROPERTY(lexiquill::TrayToolTip ToolTip READ toolTip CONSTANT)

public:
    /// `activated` is called from the event loop when the user clicks the icon; `tokenGiven` before that, on
    /// desktops with such tokens.
    StatusNotifierItem(QObject *parent, QDBusObjectPath menu, std::function<void()> activated,
                       std::function<void(const QString &token)> tokenGiven);

    void setContent(const TrayContent &content);

    QString category() const { return QStringLiteral("ApplicationStatus"); }
    QString id() const { return QStringLiteral("com.lexiquill.Lexiquill"); }
    QString title() const { return m_content.title; }
    QString status() const { return QStringLiteral("Active"); }
    int windowId() const { return 0; }
    QDBusObjectPath menu() const { return m_menu; }
    bool itemIsMenu() const { return false; }
    QString iconName() const { return m_content.iconName; }
    QList<TrayPicture> iconPixmap() const;
    TrayToolTip toolTip() const;
    QString noText() const { return {}; }
    QList<TrayPicture> noPixmap() const { return {}; }

public Q_SLOTS:
    void Activate(int x, int y);
    void SecondaryActivate(int x, int y);
    void ContextMenu(int x, int y);
    void Scroll(int delta, const QString &orientation);
    void ProvideXdgActivationToken(const QString &token);

Q_SIGNALS:
    void NewTitle();
    void NewIcon();
    void NewToolTip();

private:
    QDBusObjectPath m_menu;
    std::function<void()> m_activated;
    std::function<void(const QString &)> m_tokenGiven;
    TrayContent m_content;
};

} // namespace lexiquill

Q_DECLARE_METATYPE(lexiquill::TrayPicture)
Q_DECLARE_METATYPE(lexiquill::TrayToolTip)
