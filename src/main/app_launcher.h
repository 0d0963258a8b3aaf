#pragma once

namespace lexiquill {

/// Chooses between the terminal and the desktop interface.
struct AppLauncher {
    /// Takes the process arguments, the program path first. Ends the process after a terminal command.
    /// Otherwise returns the exit status.
    static int main(int argc, char **argv);
};

} // namespace lexiquill
