#pragma once

#include <QObject>
#include <QQuickWindow>

namespace lexiquill {

class AppDelegate;

/// Hides a window instead of closing it, so that its content and state are kept. Also stops text fields from
/// handling one of the application's shortcuts.
class MainWindowDelegate : public QObject {
    Q_OBJECT

public:
    explicit MainWindowDelegate(AppDelegate &application) : m_application(application) {}

    /// Hides the window and returns false.
    bool windowShouldClose(QQuickWindow &window);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    AppDelegate &m_application;
};

} // namespace lexiquill
