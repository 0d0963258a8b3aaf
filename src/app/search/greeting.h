#pragma once

#include <QObject>
#include <QQmlEngine>

namespace lexiquill {

struct Services;

/// Tells a new user what to do, until the first word has been looked up.
class Greeting : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool isShown READ isShown NOTIFY isShownChanged)

public:
    explicit Greeting(QObject *parent = nullptr);

    bool isShown() const { return m_isShown; }
    /// Never greets again.
    Q_INVOKABLE void dismiss();

Q_SIGNALS:
    void isShownChanged();

private:
    Services &m_services;
    bool m_isShown;
};

} // namespace lexiquill
