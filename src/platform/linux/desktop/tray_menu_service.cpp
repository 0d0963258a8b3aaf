#include "platform/linux/desktop/tray_menu_service.h"

#include <QDBusArgument>
#include <QDBusMetaType>

#include <algorithm>

namespace lexiquill {

namespace {

/// A menu has few items; a longer list of events is not from a user.
constexpr qsizetype mostEvents = 16;
constexpr int root = 0;

} // namespace

QDBusArgument &operator<<(QDBusArgument &argument, const TrayMenuRow &row) {
    argument.beginStructure();
    argument << row.id << row.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, TrayMenuRow &row) {
    argument.beginStructure();
    argument >> row.id >> row.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const TrayMenuLayout &layout) {
    argument.beginStructure();
    argument << layout.row.id << layout.row.properties << layout.children;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, TrayMenuLayout &layout) {
    argument.beginStructure();
    argument >> layout.row.id >> layout.row.properties >> layout.children;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const TrayMenuEvent &event) {
    argument.beginStructure();
    argument << event.id << event.name << event.data << event.timestamp;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, TrayMenuEvent &event) {
    argument.beginStructure();
    argument >> event.id >> event.name >> event.data >> event.timestamp;
    argument.endStructure();
    return argument;
}

TrayMenuService::TrayMenuService(std::function<void(qsizetype)> chosen) : m_chosen(std::move(chosen)) {}

void TrayMenuService::setCommands(const QStringList &commands) {
    if (commands == m_commands)
        return;
    m_commands = commands;
    ++m_revision;
    Q_EMIT changed(m_revision);
}

TrayMenuRow TrayMenuService::row(int id) const {
    if (id == root)
        return {.id = root, .properties = {{QStringLiteral("children-display"), QStringLiteral("submenu")}}};
    // A lonely underscore would mark a key of access.
    QString label = m_commands.at(id - 1);
    return {.id = id,
            .properties = {{QStringLiteral("label"), label.replace(u'_', QStringLiteral("__"))},
                           {QStringLiteral("enabled"), true},
                           {QStringLiteral("visible"), true}}};
}

bool TrayMenuService::layout(int id, int depth, TrayMenuLayout &layout) const {
    if (!has(id))
        return false;
    layout.row = row(id);
    if (id != root || depth == 0)
        return true;
    for (int command = 1; command <= m_commands.size(); ++command)
        layout.children +=
            QDBusVariant(QVariant::fromValue(TrayMenuLayout{.row = row(command), .children = {}}));
    return true;
}

QList<TrayMenuRow> TrayMenuService::rows(const QList<int> &ids) const {
    const QSet<int> wanted(ids.cbegin(), ids.cend());
    QList<TrayMenuRow> rows;
    for (int id = root; id <= m_commands.size(); ++id) {
        if (wanted.isEmpty() || wanted.contains(id))
            rows += row(id);
    }
    return rows;
}

void TrayMenuService::handle(const TrayMenuEvent &event) {
    if (event.name != QLatin1StringView("clicked") || event.id == root || !has(event.id))
        return;
    // The caller gets its answer first.
    QMetaObject::invokeMethod(
        this, [this, command = event.id - 1] { m_chosen(command); }, Qt::QueuedConnection);
}

void TrayMenuService::refuse() {
    if (calledFromDBus())
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("There is no such item."));
}

TrayMenuAdaptor::TrayMenuAdaptor(TrayMenuService *menu) : QDBusAbstractAdaptor(menu), m_menu(*menu) {
    qDBusRegisterMetaType<TrayMenuRow>();
    qDBusRegisterMetaType<QList<TrayMenuRow>>();
    qDBusRegisterMetaType<TrayMenuLayout>();
    qDBusRegisterMetaType<TrayMenuEvent>();
    qDBusRegisterMetaType<QList<TrayMenuEvent>>();
    connect(menu, &TrayMenuService::changed, this,
            [this](uint revision) { Q_EMIT LayoutUpdated(revision, root); });
}

uint TrayMenuAdaptor::GetLayout(int parentId, int recursionDepth, const QStringList &,
                                TrayMenuLayout &layout) {
    if (!m_menu.layout(parentId, recursionDepth, layout))
        m_menu.refuse();
    return m_menu.revision();
}

QList<TrayMenuRow> TrayMenuAdaptor::GetGroupProperties(const QList<int> &ids, const QStringList &) {
    return m_menu.rows(ids);
}

QDBusVariant TrayMenuAdaptor::GetProperty(int id, const QString &name) {
    const QVariant value =
        m_menu.has(id) ? m_menu.rows({id}).constFirst().properties.value(name) : QVariant();
    if (!value.isValid())
        m_menu.refuse();
    return QDBusVariant(value.isValid() ? value : QString());
}

void TrayMenuAdaptor::Event(int id, const QString &eventId, const QDBusVariant &data, uint timestamp) {
    m_menu.handle({.id = id, .name = eventId, .data = data, .timestamp = timestamp});
}

QList<int> TrayMenuAdaptor::EventGroup(const QList<TrayMenuEvent> &events) {
    QList<int> unknown;
    for (const TrayMenuEvent &event : events.first(std::min(events.size(), mostEvents))) {
        if (m_menu.has(event.id))
            m_menu.handle(event);
        else
            unknown += event.id;
    }
    return unknown;
}

bool TrayMenuAdaptor::AboutToShow(int) {
    return false;
}

QList<int> TrayMenuAdaptor::AboutToShowGroup(const QList<int> &ids, QList<int> &idErrors) {
    for (const int id : ids) {
        if (!m_menu.has(id))
            idErrors += id;
    }
    return {};
}

} // namespace lexiquill
