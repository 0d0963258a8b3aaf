#include "main_thread_meter.h"

#include <QElapsedTimer>
#include <QEvent>
#include <QThread>
#include <QWindow>

#include <utility>

namespace lexiquill::bench {

/// Milliseconds since the start of the event.
double MeteredApplication::elapsed() const {
    constexpr double perSecond = 1e3;
    constexpr double nanoseconds = 1e-6;
    timespec now{};
    clock_gettime(m_clock, &now);
    return static_cast<double>(now.tv_sec - m_start.tv_sec) * perSecond +
           static_cast<double>(now.tv_nsec - m_start.tv_nsec) * nanoseconds;
}

MeteredApplication::Span::Span(MeteredApplication &meter) : m_meter(meter) {
    if (m_meter.m_depth++ > 0)
        return;
    m_meter.m_saved = 0;
    m_meter.m_isFrame = false;
    clock_gettime(m_meter.m_clock, &m_meter.m_start);
}

MeteredApplication::Span::~Span() {
    if (--m_meter.m_depth > 0)
        return;
    const double time = m_meter.elapsed();
    if (m_meter.m_isFrame)
        m_meter.m_times.frames.push_back(time);
    else
        m_meter.m_times.blocks.push_back(time - m_meter.m_saved);
    if (m_meter.m_saved > 0)
        m_meter.m_times.saves.push_back(m_meter.m_saved);
}

bool MeteredApplication::notify(QObject *receiver, QEvent *event) {
    if (QThread::currentThread() != thread())
        return QGuiApplication::notify(receiver, event);
    const Span span(*this);
    if (event->type() == QEvent::UpdateRequest && qobject_cast<QWindow *>(receiver) != nullptr)
        m_isFrame = true;
    return QGuiApplication::notify(receiver, event);
}

void MeteredApplication::pump(int milliseconds) {
    QElapsedTimer timer;
    timer.start();
    while (!timer.hasExpired(milliseconds))
        processEvents(QEventLoop::AllEvents, 1);
}

void MeteredApplication::markSaved() {
    if (m_depth > 0)
        m_saved = elapsed();
}

MeteredApplication::Times MeteredApplication::take() {
    return std::exchange(m_times, {});
}

} // namespace lexiquill::bench
