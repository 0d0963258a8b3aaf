#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusContext>
#include <QDBusVariant>
#include <QList>
#include <QStringList>
#include <QVariantMap>

#include <functional>

namespace lexiquill {

/// The properties of one item of a menu.
struct TrayMenuRow {
    int id = 0;
    QVariantMap properties;
};

/// One item of a menu, with the items below it.
struct TrayMenuLayout {
    TrayMenuRow row;
    QList<QDBusVariant> children;
};

/// What happened to an item of a menu.
struct TrayMenuEvent {
    int id = 0;
    QString name;
    QDBusVariant data;
    uint timestamp = 0;
};

/// A menu of commands that the desktop shows (com.canonical.dbusmenu). The root has the id 0, the commands
/// have the ids from 1 on.
class TrayMenuService : public QObject, public QDBusContext {
    Q_OBJECT

public:
    /// `chosen` gets the position of a command, from the event loop.
    explicit TrayMenuService(std::function<void(qsizetype)> chosen);

    void setCommands(const QStringList &commands);

    uint revision() const { return m_revision; }
    /// False for an unknown id. `depth`: levels below the item; negative for all.
    bool layout(int id, int depth, TrayMenuLayout &layout) const;
    /// The rows with these ids, without those that do not exist; all if `ids` is empty.
    QList<TrayMenuRow> rows(const QList<int> &ids) const;
    bool has(int id) const { return id >= 0 && id <= m_commands.size(); }
    void handle(const TrayMenuEvent &event);
    /// Answers the current call with an error.
    void refuse();

Q_SIGNALS:
    void changed(uint revision);

private:
    TrayMenuRow row(int id) const;

    std::function<void(qsizetype)> m_chosen;
    QStringList m_commands;
    uint m_revision = 1;
};

/// The D-Bus interface of the menu.
class TrayMenuAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version CONSTANT)
    Q_PROPERTY(QString TextDirection READ textDirection CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath CONSTANT)

public:
    explicit TrayMenuAdaptor(TrayMenuService *menu);

    uint version() const { return 3; }
    QString textDirection() const { return QStringLiteral("ltr"); }
    QString status() const { return QStringLiteral("normal"); }
    QStringList iconThemePath() const { return {}; }

public Q_SLOTS:
    uint GetLayout(int parentId, int recursionDepth, const QStringList &propertyNames,
                   lexiquill::TrayMenuLayout &layout);
    QList<lexiquill::TrayMenuRow> GetGroupProperties(const QList<int> &ids, const QStringList &propertyNames);
    QDBusVariant GetProperty(int id, const QString &name);
    void Event(int id, const QString &eventId, const QDBusVariant &data, uint timestamp);
    QList<int> EventGroup(const QList<lexiquill::TrayMenuEvent> &events);
    bool AboutToShow(int id);
    QList<int> AboutToShowGroup(const QList<int> &ids, QList<int> &idErrors);

Q_SIGNALS:
    void LayoutUpdated(uint revision, int parent);

private:
    TrayMenuService &m_menu;
};

} // namespace lexiquill

Q_DECLARE_METATYPE(lexiquill::TrayMenuRow)
Q_DECLARE_METATYPE(lexiquill::TrayMenuLayout)
Q_DECLARE_METATYPE(lexiquill::TrayMenuEvent)
