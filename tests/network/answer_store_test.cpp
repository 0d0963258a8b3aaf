#include "network/answer_store.h"
#include "support/test.h"

#include <QRandomGenerator>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

using namespace lexiquill;

namespace {

QUrl url(const QString &word) {
    return QUrl(u"https://example.org/jsonapi?q="_s + word);
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
        const QString path = directory.filePath(u"new/http"_s);
        const AnswerStore store(path);
        QVERIFY(!store.find(url(u"a"_s)));
        const QByteArray bytes("\0\n\xff", 3);
        const QStringList words{u"a"_s, u"A"_s, u"../../x"_s, QString(100'000, u'x'), QString()};
        for (const QString &word : words)
            store.keep(url(word), bytes + word.toUtf8());
        store.keep(url(u"empty"_s), QByteArray());
        for (const QString &word : words)
            QCOMPARE(AnswerStore(path).find(url(word)), bytes + word.toUtf8());
        QCOMPARE(store.find(url(u"empty"_s)), ""_ba);
        store.keep(url(u"a"_s), "new");
        QCOMPARE(store.find(url(u"a"_s)), "new"_ba);

        QCOMPARE(files(path).size(), words.size() + 1);
        QCOMPARE(QDir(directory.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList{u"new"_s});
        const auto owner = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
        QCOMPARE(QFile::permissions(path), owner | QFile::ExeOwner | QFile::ExeUser);
        QCOMPARE(QFile::permissions(path + u'/' + files(path).first()), owner);
    }

    /// The place of the damage, from the end if negative.
    void damagedFileIsNoAnswer_data() {
        addRows("cut | 0\ncut | 40\ncut | -1\nchanged | 0\nchanged | 40\nchanged | 120\nchanged | -1\n");
    }

    void damagedFileIsNoAnswer() {
        QFETCH(const QStringList, cells);
        const int position = cells[1].toInt();
        const QTemporaryDir directory;
        const AnswerStore store(directory.path());
        store.keep(url(u"a"_s), QByteArray(1000, 'x'));
        QFile file(directory.filePath(files(directory.path()).first()));
        QVERIFY(file.open(QIODevice::ReadWrite));
        const qint64 offset = position < 0 ? file.size() + position : position;
        if (cells[0] == u"cut")
            QVERIFY(file.resize(offset));
        else
            QVERIFY(file.seek(offset) && file.write("#") == 1);
        file.close();
        QVERIFY(!store.find(url(u"a"_s)));
        store.keep(url(u"a"_s), "new");
        QCOMPARE(store.find(url(u"a"_s)), "new"_ba);
    }

    void otherThingsInTheWay() {
        const QTemporaryDir directory;
        const AnswerStore store(directory.path());
        const QUrl a = url(u"a"_s);
        store.keep(a, "x");
        const QString path = directory.filePath(files(directory.path()).first());
        QVERIFY(QFile::remove(path));
        QVERIFY(QDir().mkpath(path + u"/x"_s));
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

        const AnswerStore nowhere(u"/proc/none/http"_s);
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
        QCOMPARE(kept.join(u' '), u"6 7 8 9 10 11"_s);
        store.keep(url(u"large"_s), QByteArray(10'001, 'x'));
        QCOMPARE(files(directory.path()).size(), 6);

        // A file that a killed process has left behind.
        QFile left(directory.filePath(u"abcdefgh.tmp"_s));
        QVERIFY(left.open(QIODevice::WriteOnly) &&
                left.setFileTime(now.addSecs(-7'200), QFileDevice::FileModificationTime));
        store.keep(url(u"b"_s), "x");
        QVERIFY(!left.exists());
    }

    void manyProcesses() {
        const QTemporaryDir directory;
        const AnswerStore store(directory.path(), 200'000);
        const auto body = [](int i) {
            return QByteArray::number(i).repeated(4'000);
        };
        QRandomGenerator random(20250314);
        QList<pid_t> children;
        const pid_t parent = ::getpid();
        for (int child = 0; child < 4; ++child) {
            const pid_t process = ::fork();
            if (process == 0) {
                for (int i = 0; ::getppid() == parent; i = (i + child + 1) % 40)
                    store.keep(url(QString::number(i)), body(i));
                ::_exit(0);
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
