#include "cli/terminal_lookup.h"

#include "support/cancellation.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <memory>
#include <optional>

namespace lexiquill::terminal {

namespace {

constexpr std::chrono::seconds patience{5};

/// Where a lookup leaves its result, for as long as it or the one who waits is there.
struct Slot {
    std::optional<LookupResult> result;
    QEventLoop *waiting = nullptr;
};

QCoro::Task<void> lookUpInto(std::shared_ptr<Slot> slot, DictionaryService &dictionary, QString term,
                             std::stop_token stop) {
    LookupResult result = co_await dictionary.lookup(term, stop);
    if (stop.stop_requested())
        co_return;
    slot->result = std::move(result);
    if (slot->waiting != nullptr)
        slot->waiting->quit();
}

/// What event loops and timers need; never destroyed, for the process ends without a farewell.
void makeApplication() {
    static int argumentCount = 1;
    static char name[] = "Lexiquill";
    static char *arguments[] = {name, nullptr};
    new QCoreApplication(argumentCount, arguments);
}

} // namespace

LookupResult lookUp(const CommandServices &services, const QString &term) {
    const QDeadlineTimer deadline(patience);
    DictionaryService &dictionary = services.dictionary();
    const DictionarySourceMode mode = dictionary.currentMode();
    if (mode == DictionarySourceMode::YoudaoOnline && QCoreApplication::instance() == nullptr)
        makeApplication();
    Cancellation cancellation;
    const auto slot = std::make_shared<Slot>();
    const auto task = lookUpInto(slot, dictionary, term, cancellation.token());
    if (!task.isReady()) {
        QEventLoop loop;
        QTimer timer;
        slot->waiting = &loop;
        QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
        timer.setTimerType(Qt::PreciseTimer);
        timer.start(std::chrono::milliseconds(deadline.remainingTime()));
        loop.exec();
        slot->waiting = nullptr;
    }
    if (slot->result)
        return *slot->result;
    cancellation.cancel();
    return {.entry = services.offlineDictionaries().lookup(term), .actualMode = mode};
}

} // namespace lexiquill::terminal
