#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

namespace lexiquill {

/// What lets a window take the focus because somebody asked for it; each may be empty.
struct ActivationTokens {
    QString activationToken; ///< of Wayland
    QString startupId;       ///< of X11's start-up notification

    /// Those that this process was started with; takes them out of the environment.
    static ActivationTokens take();
};

/// What other programs, the desktop and later starts of the program ask of the running one. Texts are of any
/// content, but at most `longestText` characters long.
struct ApplicationRequests {
    static constexpr qsizetype longestText = 4096;
    static constexpr qsizetype mostUrls = 16;

    std::function<void(const ActivationTokens &)> activate;
    std::function<void(const QStringList &urls, const ActivationTokens &)> open;
    std::function<void(const QString &action, const QString &parameter, const ActivationTokens &)>
        activateAction;
    /// Looks a text up; answers with what is wrong with it, if anything is.
    std::function<std::optional<QString>(const QString &text)> lookup;
};

/// Makes this process the one that the session knows as the application.
class ApplicationEndpoint {
public:
    virtual ~ApplicationEndpoint() = default;

    /// False when another process is the application already. Requests come on the calling thread, from its
    /// event loop.
    virtual bool claim(ApplicationRequests requests) = 0;
};

/// Over the session bus, or without one over a socket of the user's.
std::unique_ptr<ApplicationEndpoint> makeApplicationEndpoint();

/// One request of a start of the program: nothing but to come forward, or an address, or an action.
struct StartRequest {
    QString url = {};
    QString action = {};

    /// What the arguments of a start by the desktop ask for.
    static StartRequest fromArguments(const QStringList &arguments);
};

/// Hands the request to the running application. False when none is running.
bool forwardStart(const StartRequest &request, const ActivationTokens &tokens);

} // namespace lexiquill
