#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

struct xcb_connection_t;

namespace lexiquill::bench {

/// The cost of a program with a window.
struct WindowCost {
    double seconds = 0; ///< from the start of the program until its main window is mapped
    // Of its processes, two seconds later:
    double mebibytes = 0;        ///< proportional set size
    double privateMebibytes = 0; ///< memory that no other process shares
};

/// Starts programs on the display of this process, one at a time. There must be no window manager.
class WindowMeter {
public:
    WindowMeter();

    /// No value when no window appears within ten seconds. The variables ("NAME=value") are added to the
    /// environment of this process. The program is ended afterwards.
    std::optional<WindowCost> measure(const std::vector<std::string> &command,
                                      const std::vector<std::string> &variables);

private:
    bool awaitMainWindow();

    struct Disconnect {
        void operator()(xcb_connection_t *connection) const;
    };
    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
};

} // namespace lexiquill::bench
