#pragma once

#include "platform/hot_key_registrar.h"

#include <QList>
#include <QObject>
#include <QPointer>

namespace lexiquill {

/// The application's windows, as far as bringing the main window forward needs them. Every operation is a
/// single step; in which order they come is decided here in `hotkey`. Windows and views are whatever objects
/// the window toolkit has.
class HotKeyWindows {
public:
    struct Window {
        QPointer<QObject> window; ///< null once it is gone
        bool canBecomeMain = false;
        bool isPanel = false; ///< a utility panel, an alert or a sheet
        double width = 0;     ///< of its frame, in points
    };

    virtual ~HotKeyWindows() = default;

    /// Makes this the active application, whichever has been. `press` is the cause; empty without a press.
    virtual void activateApplication(const HotKeyPress &press) = 0;

    /// All windows, in the application's order.
    virtual QList<Window> windows() const = 0;
    /// The one window that has been accepted as main; null without one.
    virtual QObject *mainWindow() const = 0;
    virtual void setMainWindow(QObject *window) = 0;

    virtual void disallowTabbing(QObject *window) = 0;
    /// Hides it.
    virtual void orderOut(QObject *window) = 0;
    virtual void close(QObject *window) = 0;

    virtual bool isMiniaturized(QObject *window) const = 0;
    virtual void deminiaturize(QObject *window) = 0;
    virtual void setAlpha(QObject *window, double alpha) = 0;
    virtual void setOpaque(QObject *window) = 0;
    virtual void setVisible(QObject *window) = 0;
    virtual void makeKeyAndOrderFront(QObject *window) = 0;
    /// Also when another application is active.
    virtual void orderFrontRegardless(QObject *window) = 0;
    virtual void setContentNeedsDisplay(QObject *window) = 0;

    /// Tells the screens to bring the search field forward ("FocusSearchInput").
    virtual void postFocusSearchInput() = 0;

    /// The content view of the window that has the keyboard; null without one.
    virtual QObject *keyWindowContent() const = 0;
    virtual QList<QObject *> subviews(QObject *view) const = 0;
    virtual bool isEditableTextField(QObject *view) const = 0;
    virtual void makeFirstResponder(QObject *view) = 0;
};

/// Leaves one main window of the candidates that are more than 300 points wide: the one that is known, or
/// else the first. The others are closed.
void keepOneMainWindow(HotKeyWindows &windows);

/// Puts the keyboard into the first editable text field of the key window, depth first in the order of the
/// views. Nothing happens without one.
void focusFirstTextField(HotKeyWindows &windows);

} // namespace lexiquill
