#pragma once

#include "platform/hot_key_registrar.h"

#include <QList>
#include <QObject>
#include <QPointer>

namespace lexiquill {

/// The operations on the application's windows that are needed to bring the main window to the front. Every
/// operation is a single step; the code in `hotkey` decides their order. Windows and views are objects of the
/// window toolkit.
class HotKeyWindows {
public:
    struct Window {
        QPointer<QObject> window; ///< null once it is destroyed
        bool canBecomeMain = false;
        bool isPanel = false; ///< a utility panel, an alert or a sheet
        double width = 0;     ///< of its frame, in points
    };

    virtual ~HotKeyWindows() = default;

    /// Makes this the active application. `press` is the cause; empty if no key was pressed.
    virtual void activateApplication(const HotKeyPress &press) = 0;

    /// All windows, in the application's order.
    virtual QList<Window> windows() const = 0;
    /// The main window; null if there is none.
    virtual QObject *mainWindow() const = 0;
    virtual void setMainWindow(QObject *window) = 0;

    virtual void disallowTabbing(QObject *window) = 0;
    /// Hides the window.
    virtual void orderOut(QObject *window) = 0;
    virtual void close(QObject *window) = 0;

    virtual bool isMiniaturized(QObject *window) const = 0;
    virtual void deminiaturize(QObject *window) = 0;
    virtual void setAlpha(QObject *window, double alpha) = 0;
    virtual void setOpaque(QObject *window) = 0;
    virtual void setVisible(QObject *window) = 0;
    virtual void makeKeyAndOrderFront(QObject *window) = 0;
    /// Brings the window to the front even if another application is active.
    virtual void orderFrontRegardless(QObject *window) = 0;
    virtual void setContentNeedsDisplay(QObject *window) = 0;

    /// Tells the screens to show and focus the search field ("FocusSearchInput").
    virtual void postFocusSearchInput() = 0;

    /// The content view of the window with keyboard focus; null if there is none.
    virtual QObject *keyWindowContent() const = 0;
    virtual QList<QObject *> subviews(QObject *view) const = 0;
    virtual bool isEditableTextField(QObject *view) const = 0;
    virtual void makeFirstResponder(QObject *view) = 0;
};

/// Keeps one main window among the candidates that are more than 300 points wide: the current one, or the
/// first if there is none. Closes the others.
void keepOneMainWindow(HotKeyWindows &windows);

/// Focuses the first editable text field of the window with keyboard focus, depth first in the order of the
/// views. Does nothing if there is none.
void focusFirstTextField(HotKeyWindows &windows);

} // namespace lexiquill
