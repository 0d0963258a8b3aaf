// Usage: window_probe [--cpu] [RECORDS [HEADWORDS]]
// Simulates a user of the real window, without a display, with a wordbook of RECORDS words (default: 20,000)
// and a dictionary of HEADWORDS words (default: 500,000). Prints how long events and frames block the main
// thread. The time until a change of the wordbook is saved has its own column. With --cpu, measures the CPU
// time of the main thread, without waiting times, so that results of a busy machine can be compared.

#include "app/preferences/backup_list_model.h"
#include "app/review/weekly_review.h"
#include "app/shell/app_context.h"
#include "app/shell/lexiquill_app.h"
#include "app/wordbook/word_list_model.h"
#include "http_server.h"
#include "main/desktop_services.h"
#include "main_thread_meter.h"
#include "model/record_codec.h"
#include "platform/process.h"
#include "sample_data.h"
#include "settings/user_defaults.h"
#include "storage/storage_manager.h"
#include "storage/wordbook_file.h"
#include "storage/wordbook_watcher.h"
#include "sync/sync_manager.h"

#include <QDir>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QProcess>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>

#include <algorithm>
#include <cstdio>
#include <numeric>

using namespace lexiquill;
using namespace lexiquill::bench;
using Tab = ContentView::TabItem;

namespace {

constexpr int keyPause = 60; // milliseconds; fast typing
constexpr double limit = 16; // milliseconds

class Probe {
public:
    Probe(MeteredApplication &application, QQuickWindow &window)
        : m_application(application),
          m_window(window) {}

    /// Runs `action` and prints its cost.
    template <typename Action> void run(const char *name, Action action) {
        MeteredApplication::pump(300);
        m_application.take();
        action();
        MeteredApplication::pump(300);
        const auto times = m_application.take();
        const auto longest = [](const std::vector<double> &values) {
            return values.empty() ? 0.0 : *std::ranges::max_element(values);
        };
        const auto over = [](const std::vector<double> &values) {
            return std::ranges::count_if(values, [](double value) { return value > limit; });
        };
        std::printf("| %s | %.1f | %td | %.1f | %zu | %.1f | %td |\n", name, longest(times.blocks),
                    over(times.blocks), longest(times.saves), times.frames.size(), longest(times.frames),
                    over(times.frames));
        std::fflush(stdout);
    }

    void key(int key, const QString &text = {}, Qt::KeyboardModifiers modifiers = {}) {
        QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
        QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
        QCoreApplication::sendEvent(&m_window, &press);
        QCoreApplication::sendEvent(&m_window, &release);
        MeteredApplication::pump(keyPause);
    }
    void type(const QString &text) {
        for (const QChar each : text)
            key(each.toUpper().unicode(), each);
    }
    void erase(qsizetype count) {
        for (qsizetype i = 0; i < count; ++i)
            key(Qt::Key_Backspace);
    }
    /// Scrolls the longest visible list by `pixels` for each of `steps` frames.
    void scroll(int steps, int pixels) {
        QQuickItem *list = nullptr;
        for (QQuickItem *const item : m_window.findChildren<QQuickItem *>()) {
            const auto rows = [](const QQuickItem *view) {
                return view == nullptr ? 0 : view->property("count").toInt();
            };
            if (item->inherits("QQuickListView") && item->isVisible() && rows(item) > rows(list))
                list = item;
        }
        for (int i = 1; list != nullptr && i <= steps; ++i) {
            m_application.measure([&] { list->setProperty("contentY", i * pixels); });
            MeteredApplication::pump(17);
        }
    }
    void show(Tab tab) {
        m_application.measure([tab] { AppContext::current().content().setSelectedTab(tab); });
        MeteredApplication::pump(1000);
    }
    /// Lets another process look a word up, and returns the milliseconds until the window has it.
    double lookUpElsewhere(const QString &word) {
        StorageManager &storage = shared<StorageManager>();
        QProcess other;
        other.start(QStringLiteral(LEXIQUILL_PROGRAM), {QStringLiteral("search"), word});
        while (other.state() != QProcess::NotRunning)
            MeteredApplication::pump(5);
        QElapsedTimer timer;
        timer.start();
        const auto count = [&] {
            return storage.words().first().word == word;
        };
        while (!count() && !timer.hasExpired(20'000))
            MeteredApplication::pump(2);
        return static_cast<double>(timer.elapsed());
    }
    void measure(const std::function<void()> &work) { m_application.measure(work); }

private:
    MeteredApplication &m_application;
    QQuickWindow &m_window;
};

/// Creates the directories of a user, and makes the process use them.
void makeHome(int records, quint32 headwords, const QString &server) {
    const QDir home(newDirectory());
    for (const char *name : {"DATA", "CONFIG", "CACHE"})
        qputenv(("XDG_" + QByteArray(name) + "_HOME").constData(),
                home.filePath(QString::fromLatin1(name)).toUtf8());
    qputenv("HOME", home.path().toUtf8());
    const QString dictionary = home.filePath(QStringLiteral("DATA/stardict/dic"));
    const QString wordbook = StorageManager::standardStorageFile();
    if (!home.mkpath(dictionary) || !QDir().mkpath(QFileInfo(wordbook).path()) ||
        !writeDictionary(dictionary, SampleFormat::StarDict, madeUpWords(headwords)) ||
        !saveRecords(wordbook, records))
        std::fprintf(stderr, "the sample data could not be written\n");
    UserDefaults settings(UserDefaults::standardFilePath());
    settings.set(QStringLiteral("dictionarySourceMode"), QStringLiteral("appleOffline"));
    settings.set(QStringLiteral("lexiquill_server_base"), server);
}

void typeAndLookUp(Probe &probe) {
    probe.show(Tab::Dictionary);
    probe.run("search: type a word and erase it", [&] {
        probe.type(QStringLiteral("abandon"));
        probe.erase(7);
    });
    probe.run("search: type Chinese", [&] {
        probe.type(QStringLiteral("抛弃"));
        probe.erase(2);
    });
    probe.run("search: look a word up", [&] {
        probe.type(QString::fromLatin1(madeUpWord(77)));
        probe.key(Qt::Key_Return);
    });
    probe.run("search: answer the card", [&] {
        const WordRecord record = shared<StorageManager>().words().first();
        probe.measure([&] { shared<StorageManager>().recordReview(record.id, ReviewFeedback::Forgot); });
    });
    probe.run("search: type during publication to the system's search", [&] {
        probe.measure([] { AppContext::current().content().syncToSpotlight(); });
        probe.type(QStringLiteral("abandon"));
        while (AppContext::current().content().isIndexingSpotlight())
            MeteredApplication::pump(100);
    });
    // In an event, because only then the event loop destroys the sheet, which has the keyboard.
    QMetaObject::invokeMethod(
        &AppContext::current().content(),
        [] { AppContext::current().content().setShowSpotlightAlert(false); }, Qt::QueuedConnection);
    MeteredApplication::pump(300);
}

void useWordbook(Probe &probe, QQuickWindow &window) {
    probe.run("wordbook: open", [&] { probe.show(Tab::History); });
    auto &words = *window.findChild<WordListModel *>();
    const auto filter = [&](const QString &text) {
        probe.type(text);
        if (words.searchText() != text)
            std::fprintf(stderr, "the keys did not reach the filter field\n");
        probe.erase(text.size());
    };
    probe.run("wordbook: type an English filter and erase it", [&] { filter(QStringLiteral("ation")); });
    probe.run("wordbook: type a Chinese filter and erase it", [&] { filter(QStringLiteral("听到的词")); });
    probe.run("wordbook: type a tag and erase it", [&] { filter(QStringLiteral("#工作")); });
    probe.run("wordbook: go through statuses and orders", [&] {
        for (int i = 1; i <= WordListModel::filterNames().size(); ++i) {
            probe.measure(
                [&] { words.setFilter(i % static_cast<int>(WordListModel::filterNames().size())); });
            MeteredApplication::pump(keyPause);
        }
        for (int i = 1; i <= WordListModel::orderNames().size(); ++i) {
            probe.measure([&] { words.setOrder(i % static_cast<int>(WordListModel::orderNames().size())); });
            MeteredApplication::pump(keyPause);
        }
    });
    probe.run("wordbook: scroll slowly", [&] { probe.scroll(200, 10); });
    probe.run("wordbook: scroll fast", [&] { probe.scroll(200, 900); });
    probe.run("wordbook: keys down, page down, end, home", [&] {
        for (const int key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_PageDown, Qt::Key_PageDown,
                              Qt::Key_End, Qt::Key_Home})
            probe.key(key);
    });
    probe.run("wordbook: select all", [&] { probe.key(Qt::Key_A, {}, Qt::ControlModifier); });
    probe.run("wordbook: write a note", [&] {
        const QUuid id = shared<StorageManager>().words().at(100).id;
        probe.measure([&] { shared<StorageManager>().setUserNotes(id, QStringLiteral("一条笔记")); });
    });
    probe.run("wordbook: delete 2,000 words", [&] {
        words.choose(0, WordListModel::Selection::Replace);
        words.choose(1999, WordListModel::Selection::Extend);
        MeteredApplication::pump(200);
        probe.measure([&] { words.deleteSelected(); });
        MeteredApplication::pump(2000);
    });
    probe.run("wordbook: undo the deletion", [&] {
        probe.measure([&] { words.undoDeletion(); });
        MeteredApplication::pump(200);
    });
}

void useOtherScreens(Probe &probe, QQuickWindow &window) {
    probe.run("review: open", [&] { probe.show(Tab::WeeklyReview); });
    probe.run("review: answer three cards", [&] {
        for (int i = 0; i < 3; ++i) {
            probe.key(Qt::Key_Space, QStringLiteral(" "));
            probe.key(Qt::Key_1, QStringLiteral("1"));
        }
    });
    probe.run("review: export the plan", [&] {
        auto &review = *window.findChild<WeeklyReview *>();
        const QUrl file = QUrl::fromLocalFile(newDirectory() + QStringLiteral("/plan.md"));
        probe.measure([&] { review.exportTo(file); });
        MeteredApplication::pump(500);
    });
    probe.run("statistics: open", [&] { probe.show(Tab::Statistics); });
    probe.run("statistics: a review is recorded", [&] {
        const QUuid id = shared<StorageManager>().words().at(200).id;
        probe.measure([&] { shared<StorageManager>().recordReview(id, ReviewFeedback::Remembered); });
    });
}

void restoreBackup(Probe &probe) {
    BackupListModel backups;
    const auto wait = [&] {
        while (backups.isBusy())
            MeteredApplication::pump(20);
    };
    wait();
    probe.run("preferences: restore a backup", [&] {
        probe.measure([&] { backups.restore(0); });
        wait();
    });
    if (backups.successMessage().isEmpty())
        std::fprintf(stderr, "the backup was not restored\n");
}

void watchOtherProcesses(Probe &probe) {
    struct Case {
        const char *name;
        Tab tab;
    };
    quint32 number = 1000;
    for (const auto &[name, tab] :
         {Case{"another process looks a word up: search", Tab::Dictionary},
          Case{"the same: review", Tab::WeeklyReview}, Case{"the same: wordbook", Tab::History},
          Case{"the same: statistics", Tab::Statistics}}) {
        probe.show(tab);
        double delay = 0;
        probe.run(name, [&] { delay = probe.lookUpElsewhere(QString::fromLatin1(madeUpWord(++number))); });
        std::fprintf(stderr, "%s: there after %.0f ms\n", name, delay);
    }
}

void useServer(Probe &probe) {
    probe.show(Tab::Dictionary);
    const auto wait = [] {
        while (shared<SyncManager>().isSyncing())
            MeteredApplication::pump(20);
    };
    probe.run("log in", [&] {
        bool isDone = false;
        probe.measure([&] {
            shared<SyncManager>().login(QStringLiteral("ann"), QStringLiteral("secret"),
                                        [&](bool, const std::optional<QString> &) { isDone = true; });
        });
        while (!isDone)
            MeteredApplication::pump(20);
    });
    probe.run("type during a sync", [&] {
        probe.measure([] { shared<SyncManager>().syncWithCloud(); });
        probe.type(QStringLiteral("abandon"));
        wait();
    });
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const bool countsProcessorTime = argc > 1 && qstrcmp(argv[1], "--cpu") == 0;
    const int first = countsProcessorTime ? 2 : 1;
    const int records = argc > first ? QByteArrayView(argv[first]).toInt() : 20'000;
    const quint32 headwords = argc > first + 1 ? QByteArrayView(argv[first + 1]).toUInt() : 500'000;
    QByteArray cloud =
        R"({"success":true,"words":)" + encodeWordRecords(sampleRecords(records), JsonForm::Wire) + '}';
    HttpServer server([&](const ServedRequest &) { return ServedAnswer{.body = cloud}; });
    makeHome(records, headwords, server.base());

    MeteredApplication application(argc, argv);
    LexiquillApp::setUpApplication();
    if (countsProcessorTime)
        application.countProcessorTime();
    StorageManager &storage = shared<StorageManager>();
    // Connected first, so that the work of the other receivers does not count as part of the save.
    QObject::connect(&storage, &StorageManager::wordsChanged, &application, &MeteredApplication::markSaved);
    AppContext context(shared<Services>());
    const WordbookWatcher watcher(storage, storage.storageFile());
    QQmlApplicationEngine engine;
    LexiquillApp::prepare(engine);
    engine.load(LexiquillApp::mainWindowUrl());
    if (engine.rootObjects().isEmpty())
        return EXIT_FAILURE;
    auto &window = *qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
    window.show();
    window.requestActivate();
    MeteredApplication::pump(1500);

    Probe probe(application, window);
    std::printf(
        "| %d records, times in ms | longest event | over 16 | longest save | frames | longest | over "
        "16 |\n| :--- | ---: | ---: | ---: | ---: | ---: | ---: |\n",
        records);
    typeAndLookUp(probe);
    useWordbook(probe, window);
    useOtherScreens(probe, window);
    watchOtherProcesses(probe);
    restoreBackup(probe);
    useServer(probe);
    std::fflush(stdout);
    // Return normally, so that the directory with the sample data is removed.
    return EXIT_SUCCESS;
}
