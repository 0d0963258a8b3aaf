#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

namespace lexiquill {

/// Tokens that allow a window to take the focus on a user's request; each may be empty.
struct ActivationTokens {
    QString activationToken; ///< of Wayland
    QString startupId;       ///< of X11's start-up notification

    /// The tokens that this process was started with. They stay in its environment, because the window
    /// system's own part of the graphics library reads them, too.
    static ActivationTokens ofThisProcess();
};

/// The handlers for requests from other programs, the desktop and later starts of this program. Texts may
/// have any content, but at most `longestText` characters; addresses at most `longestUrl`.
struct ApplicationRequests {
    static constexpr qsizetype longestText = 4096;
    /// A dictionary may consist of many files.
    static constexpr qsizetype mostUrls = 200;
    /// Enough for the longest path, with every byte percent-encoded.
    static constexpr qsizetype longestUrl = 3 * 4096 + 16;

    /// The addresses that a process may pass on: not more than `mostUrls`, and none that is too long.
    static QStringList acceptable(const QStringList &urls);

    std::function<void(const ActivationTokens &)> activate;
    std::function<void(const QStringList &urls, const ActivationTokens &)> open;
    std::function<void(const QString &action, const QString &parameter, const ActivationTokens &)>
        activateAction;
    /// Looks a text up; returns an error message if the text cannot be used.
    std::function<std::optional<QString>(const QString &text)> lookup;
};

/// Makes this process the application instance of the session.
class ApplicationEndpoint {
public:
    virtual ~ApplicationEndpoint() = default;

    /// False when another process is the application already. Requests arrive on the calling thread, from its
    /// event loop.
    virtual bool claim(ApplicationRequests requests) = 0;
};

/// Uses the session bus, or a socket of the user if there is no bus.
std::unique_ptr<ApplicationEndpoint> makeApplicationEndpoint();

/// The request of one start of the program: show the window, open addresses, or run an action.
struct StartRequest {
    QStringList urls = {};
    QString action = {};

    /// The request in the arguments of a start by the desktop: an address of this program, or
    /// "--desktop-action=NAME". After "--desktop-action=open" follow paths and addresses.
    static StartRequest fromArguments(const QStringList &arguments);
};

/// Passes the request to the running application. False when none is running.
bool forwardStart(const StartRequest &request, const ActivationTokens &tokens);

} // namespace lexiquill
