#pragma once

namespace lexiquill {

/// Runs the desktop application until it quits, and returns its exit status.
int runDesktopApplication(int argc, char **argv);

} // namespace lexiquill
