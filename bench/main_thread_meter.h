#pragma once

#include <QGuiApplication>

#include <ctime>
#include <vector>

namespace lexiquill::bench {

/// An application that measures how long each event blocks the main thread. Frames are measured separately,
/// because here the CPU draws them.
class MeteredApplication final : public QGuiApplication {
    Q_OBJECT

public:
    using QGuiApplication::QGuiApplication;

    bool notify(QObject *receiver, QEvent *event) override;

    /// Measures the CPU time of the main thread, without waiting times, so that results of a busy machine are
    /// comparable.
    void countProcessorTime() { m_clock = CLOCK_THREAD_CPUTIME_ID; }

    /// Lets the event loop run.
    static void pump(int milliseconds);
    /// Measures `work` like an event.
    template <typename Work> void measure(Work work) {
        const Span span(*this);
        work();
    }
    /// A change has been saved. The time from here to the end of the current event is the screens' reaction
    /// to it.
    void markSaved();

    /// The durations since the last take(), in milliseconds: of the events without the time up to a save, of
    /// the saves, and of the frames.
    struct Times {
        std::vector<double> blocks;
        std::vector<double> saves;
        std::vector<double> frames;
    };
    Times take();

private:
    class Span {
    public:
        explicit Span(MeteredApplication &meter);
        ~Span();
        Q_DISABLE_COPY_MOVE(Span)

    private:
        MeteredApplication &m_meter;
    };

    double elapsed() const;

    clockid_t m_clock = CLOCK_MONOTONIC;
    int m_depth = 0;
    timespec m_start{};
    bool m_isFrame = false; ///< whether a frame is drawn in the event
    double m_saved = 0;     ///< milliseconds from the start of the event to the last save in it
    Times m_times;
};

} // namespace lexiquill::bench
