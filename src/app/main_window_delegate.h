#pragma once

#include <QObject>
#include <QQuickWindow>

namespace lexiquill {

/// Makes closing a window hide it: its content and its state survive until it is shown again. Keeps a
/// shortcut of the application's from the text fields.
class MainWindowDelegate : public QObject {
    Q_OBJECT

public:
    static MainWindowDelegate &shared();

    /// Hides the window and says no.
    static bool windowShouldClose(QQuickWindow &window);

    bool eventFilter(QObject *watched, QEvent *event) override;
};

} // namespace lexiquill
