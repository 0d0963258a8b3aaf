#pragma once

#include <QStringList>

namespace lexiquill {

/// Chooses between the terminal and the desktop face.
struct AppLauncher {
    /// `arguments`: the process arguments, the program path first. Ends the process after a terminal
    /// command; returns only on the desktop path.
    static void main(const QStringList &arguments);
};

} // namespace lexiquill
