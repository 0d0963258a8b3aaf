#include "program.h"
#include "support/user_defaults.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QSet>
#include <QTest>
#include <QThread>

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

using namespace lexiquill;

namespace {

/// Words of the starter dictionary that are not among those of the first run.
QStringList starterWords() {
    static const QStringList seeds =
        QStringLiteral("concise ephemeral serendipity ubiquitous eloquent").split(u' ');
    QStringList words;
    for (const QByteArray &line : readFile(QStringLiteral(LEXIQUILL_STARTER_SOURCE)).split('\n')) {
        const QString word = QString::fromUtf8(line.left(qMax(0, line.indexOf(" ["))));
        if (!word.isEmpty() && !seeds.contains(word))
            words += word;
    }
    return words;
}

QSet<QString> namesOf(const QList<WordRecord> &words) {
    QSet<QString> names;
    for (const WordRecord &record : words)
        names += record.word;
    return names;
}

} // namespace

class ProcessesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// All of them race for the first run, too.
    void fiftySearchesAndOneReview() {
        const Home home;
        const QStringList words = starterWords().first(50);
        const auto review = home.start({QStringLiteral("review"), QStringLiteral("concise")});
        std::vector<std::unique_ptr<QProcess>> searches;
        for (const QString &word : words)
            searches.push_back(home.start({QStringLiteral("search"), word}));
        for (const auto &search : searches) {
            const Outcome outcome = Home::finish(*search);
            QCOMPARE(outcome.status, 0);
            QVERIFY(outcome.output.contains(QStringLiteral("| 查词 1 次\n")));
        }
        QVERIFY(Home::finish(*review, "1\n").output.contains(QStringLiteral("✅")));
        const auto saved = home.words();
        QVERIFY(saved);
        QCOMPARE(saved->size(), 55);
        QVERIFY(namesOf(*saved).contains(QSet<QString>(words.begin(), words.end())));
        for (const WordRecord &record : *saved)
            QCOMPARE(record.reviewHistory.size(), record.word == QStringLiteral("concise") ? 1 : 0);
    }

    void killedSearches() {
        const Home home;
        const QStringList words = starterWords();
        const auto search = [&](qsizetype i) {
            return home.start({QStringLiteral("search"), words.at(i)});
        };
        // The second run takes the usual time: the first one also lays the wordbook and its tables down.
        QCOMPARE(Home::finish(*search(0)).status, 0);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(Home::finish(*search(1)).status, 0);
        const auto longest = static_cast<quint32>(timer.nsecsElapsed() / 800);
        QRandomGenerator random(20250314);
        QSet<QString> acknowledged{words.at(0), words.at(1)};
        qsizetype next = 2;
        for (int killed = 0; killed < 60; ++next) {
            const auto process = search(next);
            QThread::usleep(random.bounded(longest));
            process->kill();
            const Outcome outcome = Home::finish(*process);
            if (outcome.status == 0 && outcome.output.endsWith(QStringLiteral("=\n\n")))
                acknowledged += words.at(next);
            else
                ++killed;
            const auto saved = home.words();
            QVERIFY(saved);
            QVERIFY(namesOf(*saved).contains(acknowledged));
            QCOMPARE(namesOf(*saved).size(), saved->size());
        }
        // Nothing that the killed ones left behind is in the way.
        QCOMPARE(Home::finish(*search(next)).status, 0);
        QVERIFY(namesOf(*home.words()).contains(words.at(next)));
    }

    void killedSettings() {
        const Home home;
        const QString deleted = QStringLiteral("lexiquill_deleted_words");
        const QString mode = QStringLiteral("dictionarySourceMode");
        const QStringList some = starterWords().first(20);
        const QStringList many = starterWords().first(500);
        {
            UserDefaults settings(home.settingsPath());
            settings.set(deleted, some);
            settings.set(mode, QStringLiteral("appleOffline"));
        }
        QRandomGenerator random(20250314);
        for (int i = 0; i < 60; ++i) {
            const pid_t child = ::fork();
            if (child == 0) {
                UserDefaults settings(home.settingsPath());
                for (;;) {
                    settings.set(deleted, many);
                    settings.set(mode, QStringLiteral("youdaoOnline"));
                    settings.set(deleted, some);
                    settings.set(mode, QStringLiteral("appleOffline"));
                }
            }
            QThread::usleep(random.bounded(quint32{10000}));
            ::kill(child, SIGKILL);
            QCOMPARE(::waitpid(child, nullptr, 0), child);
            const UserDefaults settings(home.settingsPath());
            const QStringList words = settings.stringList(deleted);
            QVERIFY(words == some || words == many);
            QVERIFY(settings.string(mode) == QStringLiteral("appleOffline") ||
                    settings.string(mode) == QStringLiteral("youdaoOnline"));
        }
    }
};

QTEST_GUILESS_MAIN(ProcessesTest)
#include "processes_test.moc"
