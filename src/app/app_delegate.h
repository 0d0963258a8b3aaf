#pragma once

#include <QObject>
#include <QPointer>
#include <QQmlEngine>
#include <QQuickWindow>

namespace lexiquill {

/// The application's side of the window: starts the services, keeps to one main window, and ends the process.
class AppDelegate : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    static AppDelegate &shared();
    static AppDelegate *create(QQmlEngine *engine, QJSEngine *scripts);

    /// The one window accepted as main; null before there is one.
    QQuickWindow *mainWindow() const { return m_mainWindow; }
    void setMainWindow(QQuickWindow *window) { m_mainWindow = window; }

    /// Ends the process in good order.
    Q_INVOKABLE void terminate();

private:
    /// Private, or else the engine would make an instance of its own.
    AppDelegate() = default;

    QPointer<QQuickWindow> m_mainWindow;
};

} // namespace lexiquill
