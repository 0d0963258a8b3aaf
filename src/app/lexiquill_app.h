#pragma once

#include <QQmlEngine>
#include <QUrl>

namespace lexiquill {

/// The desktop application: one window whose content is made of the screens.
class LexiquillApp {
public:
    /// Makes the screens known to an engine.
    static void prepare(QQmlEngine &engine);
    static QUrl mainWindowUrl();
    /// Fonts and names; to be called once there is an application object.
    static void setUpApplication();

    /// Runs the application until it is quit and returns the exit status.
    static int run(int argc, char **argv);
};

} // namespace lexiquill
