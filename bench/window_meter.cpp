#include "window_meter.h"

#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <thread>

namespace lexiquill::bench {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

/// Dialogs, menus and helper windows are smaller.
constexpr int leastWidth = 400;

/// All processes below this one.
std::vector<pid_t> descendants(pid_t process) {
    std::vector<pid_t> found;
    const std::string path = "/proc/" + std::to_string(process);
    // In the measured programs, only the first thread starts processes.
    std::ifstream children(path + "/task/" + std::to_string(process) + "/children");
    for (pid_t child = 0; children >> child;) {
        found.push_back(child);
        for (const pid_t below : descendants(child))
            found.push_back(below);
    }
    return found;
}

void addMemory(WindowCost &cost, pid_t process) {
    std::ifstream rollup("/proc/" + std::to_string(process) + "/smaps_rollup");
    for (std::string word; rollup >> word;) {
        const bool isProportional = word == "Pss:";
        const bool isPrivate = word == "Private_Clean:" || word == "Private_Dirty:";
        double kibibytes = 0;
        if ((isProportional || isPrivate) && rollup >> kibibytes)
            (isProportional ? cost.mebibytes : cost.privateMebibytes) += kibibytes / 1024;
    }
}

/// Ends all processes that have been started, and waits for them.
void endDescendants() {
    for (const int signal : {SIGTERM, SIGKILL}) {
        for (const pid_t process : descendants(getpid()))
            kill(process, signal);
        const auto deadline = Clock::now() + 3s;
        while (Clock::now() < deadline) {
            const pid_t ended = waitpid(-1, nullptr, WNOHANG);
            if (ended < 0)
                return;
            if (ended == 0)
                std::this_thread::sleep_for(5ms);
        }
    }
}

std::vector<char *> pointers(const std::vector<std::string> &texts) {
    std::vector<char *> result;
    result.reserve(texts.size() + 1);
    for (const std::string &text : texts)
        result.push_back(const_cast<char *>(text.c_str()));
    result.push_back(nullptr);
    return result;
}

} // namespace

void WindowMeter::Disconnect::operator()(xcb_connection_t *connection) const {
    xcb_disconnect(connection);
}

WindowMeter::WindowMeter() : m_connection(xcb_connect(nullptr, nullptr)) {
    // Orphaned processes become children of this process.
    prctl(PR_SET_CHILD_SUBREAPER, 1);
    const xcb_screen_t *const screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data;
    constexpr std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_connection.get(), screen->root, XCB_CW_EVENT_MASK, &events);
    xcb_flush(m_connection.get());
}

std::optional<WindowCost> WindowMeter::measure(const std::vector<std::string> &command,
                                               const std::vector<std::string> &variables) {
    // Discard the remaining events of the previous program.
    while (xcb_generic_event_t *const event = xcb_poll_for_event(m_connection.get()))
        std::free(event);
    const std::vector<char *> arguments = pointers(command);
    const auto start = Clock::now();
    const pid_t process = fork();
    if (process == 0) {
        for (const std::string &variable : variables)
            putenv(const_cast<char *>(variable.c_str()));
        // Discard the error messages of the program.
        if (std::freopen("/dev/null", "w", stderr) == nullptr)
            _exit(127);
        execvp(arguments[0], arguments.data());
        _exit(127);
    }
    std::optional<WindowCost> cost;
    if (awaitMainWindow()) {
        cost = WindowCost{.seconds = std::chrono::duration<double>(Clock::now() - start).count()};
        std::this_thread::sleep_for(2s);
        for (const pid_t each : descendants(getpid()))
            addMemory(*cost, each);
    }
    endDescendants();
    return cost;
}

bool WindowMeter::awaitMainWindow() {
    xcb_connection_t *const connection = m_connection.get();
    pollfd ready{.fd = xcb_get_file_descriptor(connection), .events = POLLIN, .revents = 0};
    for (const auto deadline = Clock::now() + 10s; Clock::now() < deadline; poll(&ready, 1, 100)) {
        while (xcb_generic_event_t *const event = xcb_poll_for_event(connection)) {
            const std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> owner(event, &std::free);
            if ((event->response_type & 0x7f) != XCB_MAP_NOTIFY)
                continue;
            const auto *const mapped = reinterpret_cast<const xcb_map_notify_event_t *>(event);
            const std::unique_ptr<xcb_get_geometry_reply_t, decltype(&std::free)> geometry(
                xcb_get_geometry_reply(connection, xcb_get_geometry(connection, mapped->window), nullptr),
                &std::free);
            if (mapped->override_redirect == 0 && geometry && geometry->width >= leastWidth)
                return true;
        }
    }
    return false;
}

} // namespace lexiquill::bench
