#include "platform/linux/desktop/status_notifier_item.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QtEndian>

namespace lexiquill {

namespace {

TrayPicture pictureOf(const QImage &image) {
    const QImage pixels = image.convertToFormat(QImage::Format_ARGB32);
    const qsizetype count = qsizetype{pixels.width()} * pixels.height();
    TrayPicture picture{.width = pixels.width(), .height = pixels.height(), .data = {}};
    picture.data.resize(count * 4);
    qToBigEndian<quint32>(pixels.constBits(), count, picture.data.data());
    return picture;
}

} // namespace

QDBusArgument &operator<<(QDBusArgument &argument, const TrayPicture &picture) {
    argument.beginStructure();
    argument << picture.width << picture.height << picture.data;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, TrayPicture &picture) {
    argument.beginStructure();
    argument >> picture.width >> picture.height >> picture.data;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const TrayToolTip &tip) {
    argument.beginStructure();
    argument << tip.iconName << tip.pictures << tip.title << tip.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, TrayToolTip &tip) {
    argument.beginStructure();
    argument >> tip.iconName >> tip.pictures >> tip.title >> tip.text;
    argument.endStructure();
    return argument;
}

StatusNotifierItem::StatusNotifierItem(QObject *parent, QDBusObjectPath menu, std::function<void()> activated,
                                       std::function<void(const QString &)> tokenGiven)
    : QDBusAbstractAdaptor(parent),
      m_menu(std::move(menu)),
      m_activated(std::move(activated)),
      m_tokenGiven(std::move(tokenGiven)) {
    qDBusRegisterMetaType<TrayPicture>();
    qDBusRegisterMetaType<QList<TrayPicture>>();
    qDBusRegisterMetaType<TrayToolTip>();
}

void StatusNotifierItem::setContent(const TrayContent &content) {
    const TrayContent before = std::exchange(m_content, content);
    if (before.title != content.title) {
        Q_EMIT NewTitle();
        Q_EMIT NewToolTip();
    }
    if (before.iconName != content.iconName || before.images != content.images)
        Q_EMIT NewIcon();
}

QList<TrayPicture> StatusNotifierItem::iconPixmap() const {
    QList<TrayPicture> pictures;
    for (const QImage &image : m_content.images)
        pictures += pictureOf(image);
    return pictures;
}

TrayToolTip StatusNotifierItem::toolTip() const {
    return {.iconName = {}, .pictures = {}, .title = m_content.title, .text = {}};
}

void StatusNotifierItem::Activate(int, int) {
    // The caller gets its answer first.
    QMetaObject::invokeMethod(this, m_activated, Qt::QueuedConnection);
}

void StatusNotifierItem::SecondaryActivate(int x, int y) {
    Activate(x, y);
}

// The desktop shows the menu itself.
void StatusNotifierItem::ContextMenu(int, int) {}

void StatusNotifierItem::Scroll(int, const QString &) {}

void StatusNotifierItem::ProvideXdgActivationToken(const QString &token) {
    m_tokenGiven(token.left(ApplicationRequests::longestText));
}

} // namespace lexiquill
