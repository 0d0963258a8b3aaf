#include "desktop_search/search_file.h"
#include "program.h"
#include "stardict_headwords.h"
#include "support/test.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QSet>
#include <QThread>

using namespace lexiquill;

namespace {

/// Words of the starter dictionary that are not among those of the first run.
QStringList starterWords() {
    QStringList words =
        tools::stardictHeadwords(QStringLiteral(LEXIQUILL_STARTER_DIRECTORY "/lexiquill-starter.idx"));
    for (const char *const seed : {"concise", "ephemeral", "serendipity", "ubiquitous", "eloquent"})
        words.removeOne(QString::fromLatin1(seed));
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
    /// All processes also compete for the first run and for the index.
    void fiftySearchesAndOneReview() {
        const Home home;
        const QStringList words = starterWords().first(50);
        const auto review = home.start({u"review"_s, u"concise"_s});
        std::vector<std::unique_ptr<QProcess>> searches;
        for (const QString &word : words)
            searches.push_back(home.start({u"search"_s, word}));
        for (const auto &search : searches) {
            const Outcome outcome = Home::finish(*search);
            QCOMPARE(outcome.status, 0);
            QVERIFY(outcome.output.contains(u"| 查词 1 次\n"_s));
        }
        QVERIFY(Home::finish(*review, "1\n").output.contains(u"✅"_s));
        const auto saved = home.words();
        QVERIFY(saved);
        QCOMPARE(saved->size(), 55);
        QVERIFY(namesOf(*saved).contains(QSet<QString>(words.begin(), words.end())));
        for (const WordRecord &record : *saved)
            QCOMPARE(record.reviewHistory.size(), record.word == u"concise"_s ? 1 : 0);
        const auto index = openSearchFile(home.path(u"XDG_DATA_HOME/Lexiquill/search-index.sqlite"_s));
        for (const QString &word : words)
            QVERIFY2(index->items({u"word:"_s + word.toLower()}).size() == 1, qPrintable(word));
    }

    void killedSearches() {
        const Home home;
        const QStringList words = starterWords();
        const auto search = [&](qsizetype i) {
            return home.start({u"search"_s, words.at(i)});
        };
        // The second run takes the usual time: the first one also creates the wordbook and the lookup tables.
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
            if (outcome.status == 0 && outcome.output.endsWith(u"=\n\n"_s))
                acknowledged += words.at(next);
            else
                ++killed;
            const auto saved = home.words();
            QVERIFY(saved);
            QVERIFY(namesOf(*saved).contains(acknowledged));
            QCOMPARE(namesOf(*saved).size(), saved->size());
        }
        // Files that the killed processes left behind do not cause problems.
        QCOMPARE(Home::finish(*search(next)).status, 0);
        QVERIFY(namesOf(*home.words()).contains(words.at(next)));
    }
};

QTEST_GUILESS_MAIN(ProcessesTest)
#include "processes_test.moc"
