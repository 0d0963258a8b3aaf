#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QQuickItem>

namespace lexiquill {

/// Tells screen readers about messages.
class Announcer : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    explicit Announcer(QObject *parent = nullptr) : QObject(parent) {}

    /// The message has appeared, or has another text.
    Q_INVOKABLE static void announce(QQuickItem *message);
};

} // namespace lexiquill
