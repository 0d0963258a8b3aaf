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

/// Holds the result of a lookup. Shared by the lookup and its waiting caller; exists as long as one of them
/// does.
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

/// Creates the application object that event loops and timers need. It is never destroyed, because the
/// process ends without cleaning up.
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
