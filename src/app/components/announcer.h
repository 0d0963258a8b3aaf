#pragma once

#include <QQmlEngine>
#include <QQuickItem>

namespace lexiquill {

/// Tells assistive tools of messages that change while they are shown. Qt itself tells of an item that
/// appears.
class Announcer : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// Lets a screen reader speak the name of an item, which must have the role of an alert. Does nothing
    /// while no assistive tool runs.
    Q_INVOKABLE static void announce(QQuickItem *alert);
};

} // namespace lexiquill
