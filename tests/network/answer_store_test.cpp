#include "network/answer_store.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

using namespace lexiquill;

namespace {

QUrl url(const QString &word) {
    return QUrl(QStringLiteral("https://example.org/jsonapi?q=") + word);
}

QStringList files(const QString &directory) {
    return QDir(directory).entryList(QDir::Files | QDir::Hidden | QDir::System);
}

} // namespace

class AnswerStoreTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void findsWhatWasKept() {
        const QTemporaryDir directory;
        const QString path = directory.filePath(QStringLiteral("new/http"));
        const AnswerStore store(path);
        QVERIFY(!store.find(url(QStringLiteral("a"))));
        const QByteArray bytes("\0\n\xff", 3);
        const QStringList words{QStringLiteral("a"), QStringLiteral("A"), QStringLiteral("../../x"),
                                QString(100'000, u'x'), QString()};
        for (const QString &word : words)
            store.keep(url(word), bytes + word.toUtf8());
        store.keep(url(QStringLiteral("empty")), QByteArray());
        for (const QString &word : words)
            QCOMPARE(AnswerStore(path).find(url(word)), bytes + word.toUtf8());
        QCOMPARE(store.find(url(QStringLiteral("empty"))), QByteArray(""));
        store.keep(url(QStringLiteral("a")), "new");
        QCOMPARE(store.find(url(QStringLiteral("a"))), QByteArray("new"));

        QCOMPARE(files(path).size(), words.size() + 1);
        QCOMPARE(QDir(directory.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList{QStringLiteral("new")});
        const auto owner = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
        QCOMPARE(QFile::permissions(path), owner | QFile::ExeOwner | QFile::ExeUser);
        QCOMPARE(QFile::permissions(path + u'/' + files(path).first()), owner);
    }

    void damagedFileIsNoAnswer_data() {
        QTest::addColumn<int>("position"); // of the damage, from the end if negative
        QTest::addColumn<bool>("isCut");
        for (const int position : {0, 1, 40, 120, -1, -500})
            for (const bool isCut : {false, true})
                QTest::addRow("%s at %d", isCut ? "cut" : "changed", position) << position << isCut;
    }

    void damagedFileIsNoAnswer() {
        QFETCH(const int, position);
        QFETCH(const bool, isCut);
        const QTemporaryDir directory;
        const AnswerStore store(directory.path());
        store.keep(url(QStringLiteral("a")), QByteArray(1000, 'x'));
        QFile file(directory.filePath(files(directory.path()).first()));
        QVERIFY(file.open(QIODevice::ReadWrite));
        const qint64 offset = position < 0 ? file.size() + position : position;
        if (isCut)
            QVERIFY(file.resize(offset));
        else
            QVERIFY(file.seek(offset) && file.write("#") == 1);
        file.close();
        QVERIFY(!store.find(url(QStringLiteral("a"))));
        store.keep(url(QStringLiteral("a")), "new");
        QCOMPARE(store.find(url(QStringLiteral("a"))), QByteArray("new"));
    }

    void otherThingsInTheWay() {
        const QTemporaryDir directory;
        const AnswerStore store(directory.path());
        const QUrl a = url(QStringLiteral("a"));
        store.keep(a, "x");
        const QString path = directory.filePath(files(directory.path()).first());
        QVERIFY(QFile::remove(path));
        QVERIFY(QDir().mkpath(path + QStringLiteral("/x")));
        store.keep(a, "x");
        QVERIFY(!store.find(a));
        QCOMPARE(files(directory.path()), QStringList());
        QVERIFY(QDir(path).removeRecursively());
        QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        QVERIFY(!store.find(a));
        QVERIFY(QFile::remove(path));
        QFile huge(path);
        QVERIFY(huge.open(QIODevice::WriteOnly) && huge.resize(qint64{1} << 40));
        QVERIFY(!store.find(a));

        const AnswerStore nowhere(QStringLiteral("/proc/none/http"));
        nowhere.keep(a, "x");
        QVERIFY(!nowhere.find(a));
    }

    void theOldestGoFirst() {
        const QTemporaryDir directory;
        const AnswerStore store(directory.path(), 10'000);
        const QDateTime now = QDateTime::currentDateTimeUtc();
        for (int i = 0; i < 12; ++i) {
            const QStringList before = files(directory.path());
            store.keep(url(QString::number(i)), QByteArray(1'500, 'x'));
            for (const QString &name : files(directory.path())) {
                QFile file(directory.filePath(name));
                if (!before.contains(name))
                    QVERIFY(file.open(QIODevice::ReadWrite) &&
                            file.setFileTime(now.addSecs(i - 100), QFileDevice::FileModificationTime));
            }
        }
        QStringList kept;
        for (int i = 0; i < 12; ++i) {
            if (store.find(url(QString::number(i))))
                kept += QString::number(i);
        }
        QCOMPARE(kept.join(u' '), QStringLiteral("6 7 8 9 10 11"));
        store.keep(url(QStringLiteral("large")), QByteArray(10'001, 'x'));
        QCOMPARE(files(directory.path()).size(), 6);

        // What a killed process has left behind.
        QFile left(directory.filePath(QStringLiteral("abcdefgh.tmp")));
        QVERIFY(left.open(QIODevice::WriteOnly) &&
                left.setFileTime(now.addSecs(-7'200), QFileDevice::FileModificationTime));
        store.keep(url(QStringLiteral("b")), "x");
        QVERIFY(!left.exists());
    }

    void whatDoesNotBelongThere() {
        const QTemporaryDir directory;
        const AnswerStore store(directory.path(), 10'000);
        store.keep(url(QStringLiteral("a")), "x");
        const auto put = [&](const char *name, qint64 size, qint64 secondsFromNow) {
            QFile file(directory.filePath(QString::fromLatin1(name)));
            const QDateTime time = QDateTime::currentDateTimeUtc().addSecs(secondsFromNow);
            return file.open(QIODevice::WriteOnly) && file.resize(size) &&
                   file.setFileTime(time, QFileDevice::FileModificationTime);
        };
        // From a time when the clock was ahead; small enough to stay until room is needed.
        QVERIFY(put("future", 9'000, 1'000'000) && put("huge", 20'000, 10));
        store.keep(url(QStringLiteral("b")), QByteArray(1'000, 'x'));
        QVERIFY(store.find(url(QStringLiteral("a"))) && store.find(url(QStringLiteral("b"))));
        QCOMPARE(files(directory.path()).size(), 2);
    }

    void manyProcesses() {
        const QTemporaryDir directory;
        const AnswerStore store(directory.path(), 200'000);
        const auto body = [](int i) {
            return QByteArray::number(i).repeated(4'000);
        };
        QRandomGenerator random(20250314);
        QList<pid_t> children;
        for (int child = 0; child < 4; ++child) {
            const pid_t process = ::fork();
            if (process == 0) {
                for (int i = 0;; i = (i + child + 1) % 40)
                    store.keep(url(QString::number(i)), body(i));
            }
            children += process;
        }
        for (int found = 0; found < 300;) {
            const int i = random.bounded(40);
            if (const auto answer = store.find(url(QString::number(i)))) {
                QCOMPARE(*answer, body(i));
                ++found;
            }
        }
        for (const pid_t child : children) {
            ::kill(child, SIGKILL);
            QCOMPARE(::waitpid(child, nullptr, 0), child);
        }
    }
};

QTEST_GUILESS_MAIN(AnswerStoreTest)
#include "answer_store_test.moc"
