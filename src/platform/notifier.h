#pragma once

#include "platform/application_endpoint.h"

#include <QList>
#include <QString>

#include <functional>
#include <memory>

namespace lexiquill {

/// A message that the desktop shows above all windows.
struct DesktopNotification {
    struct Button {
        QString action;
        QString label;
    };

    QString id; ///< a later notification of the same id replaces this one
    QString title;
    QString text;
    QString action; ///< of a click on the notification itself
    QList<Button> buttons = {};
};

/// The desktop's notifications. This class itself shows nothing.
class Notifier {
public:
    using ActionHandler = std::function<void(const QString &action, const ActivationTokens &tokens)>;

    virtual ~Notifier() = default;

    /// Shows a notification; nothing happens if the desktop shows none. `chosen` is called from the event
    /// loop with the action that the user chooses, at most once, with tokens that allow a window to take the
    /// focus.
    virtual void show(const DesktopNotification &, const ActionHandler &) {}
    /// Removes what is still shown. To be called before the process ends, which would leave dead buttons.
    virtual void withdrawAll() {}
};

std::unique_ptr<Notifier> makeNotifier();

} // namespace lexiquill
