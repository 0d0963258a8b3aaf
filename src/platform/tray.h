#pragma once

#include "platform/application_endpoint.h"

#include <QImage>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace lexiquill {

/// What an icon in the tray shows.
struct TrayContent {
    QString title;
    QString iconName;     ///< in the desktop's icon theme
    QList<QImage> images; ///< the icon, if the theme does not have it
    QStringList commands; ///< of the menu; a click on the icon means the first one

    friend bool operator==(const TrayContent &, const TrayContent &) = default;
};

/// The place for icons of programs that stay in the background; not every desktop has one. This class itself
/// is a desktop without it.
class Tray {
public:
    using CommandHandler = std::function<void(qsizetype command, const ActivationTokens &tokens)>;

    virtual ~Tray() = default;

    /// Starts to watch for a tray. `changed` is called from the event loop whenever `isThere` changes;
    /// `chosen` with the position of a command when the user chooses it.
    virtual void watch(const std::function<void()> &, const CommandHandler &) {}
    /// Whether there is a tray that shows icons.
    virtual bool isThere() const { return false; }
    /// Shows the icon, or changes it. It also appears in a tray that comes later.
    virtual void show(const TrayContent &) {}
    virtual void hide() {}
};

std::unique_ptr<Tray> makeTray();

} // namespace lexiquill
