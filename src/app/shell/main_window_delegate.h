#pragma once

#include <QObject>
#include <QQuickWindow>

namespace lexiquill {

class AppDelegate;

/// Makes closing a window hide it: its content and its state survive until it is shown again. Keeps a
/// shortcut of the application's from the text fields.
class MainWindowDelegate : public QObject {
    Q_OBJECT

public:
    explicit MainWindowDelegate(AppDelegate &application) : m_application(application) {}

    /// Hides the window and says no.
    bool windowShouldClose(QQuickWindow &window);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    AppDelegate &m_application;
};

} // namespace lexiquill
