#include "platform/linux/linux_dictionary_services.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace lexiquill;

namespace {

struct Outcome {
    int status;
    QString message;
};

class StarterCompilerTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_directory;

    Outcome compile(const QString &source) {
        QFile file(m_directory.filePath(QStringLiteral("source.txt")));
        if (!file.open(QIODevice::WriteOnly) || file.write(source.toUtf8()) < 0)
            return {-1, file.errorString()};
        file.close();
        QProcess compiler;
        compiler.start(QStringLiteral(LEXIQUILL_STARTER_COMPILER),
                       {file.fileName(), m_directory.filePath(QStringLiteral("dic"))});
        compiler.waitForFinished();
        return {compiler.exitCode(), QString::fromUtf8(compiler.readAllStandardError())};
    }

private Q_SLOTS:
    void compiles() {
        const Outcome outcome = compile(QStringLiteral("run [rʌn]\n"
                                                       "v.\n"
                                                       "1. 跑；奔跑\n"
                                                       "▸ Run! 快跑！\n"
                                                       "2. (口语) 经营\n"
                                                       "\n"
                                                       "zoo [zuː]\n"
                                                       "n.\n"
                                                       "1. 动物园\n"));
        QCOMPARE(outcome.message, QString());
        QCOMPARE(outcome.status, 0);
        LinuxDictionaryServices services({m_directory.filePath(QStringLiteral("dic"))}, {},
                                         m_directory.filePath(QStringLiteral("cache")));
        QCOMPARE(services.copyTextDefinition(QStringLiteral("run")),
                 QStringLiteral("run | rʌn | verb ① 跑；奔跑 ▸ Run! 快跑！ ② (口语) 经营"));
        QCOMPARE(services.copyTextDefinition(QStringLiteral("zoos")),
                 QStringLiteral("zoo | zuː | noun ① 动物园"));
    }

    void namesTheFaultyLine_data() {
        QTest::addColumn<QString>("source");
        QTest::addColumn<int>("line");
        const QString good = QStringLiteral("a [ə]\nadj.\n1. 一个\n▸ A dog barked. 一条狗叫了。\n");
        QTest::newRow("nothing") << QString() << 0;
        QTest::newRow("no transcription") << QStringLiteral("a\nadj.\n1. 一个\n") << 1;
        QTest::newRow("not a transcription") << QStringLiteral("a [ДА]\nadj.\n1. 一个\n") << 1;
        QTest::newRow("unknown part of speech") << QStringLiteral("a [ə]\nart.\n1. 一个\n") << 2;
        QTest::newRow("wrong number") << QStringLiteral("a [ə]\nadj.\n2. 一个\n") << 3;
        QTest::newRow("Latin gloss") << QStringLiteral("a [ə]\nadj.\n1. one\n") << 3;
        QTest::newRow("ASCII separator") << QStringLiteral("a [ə]\nadj.\n1. 一个; 某个\n") << 3;
        QTest::newRow("example without translation")
            << QStringLiteral("a [ə]\nadj.\n1. 一个\n▸ A dog.\n") << 4;
        QTest::newRow("part of speech twice") << QStringLiteral("a [ə]\nadj.\n1. 一个\nadj.\n1. 某个\n") << 4;
        QTest::newRow("no sense") << QStringLiteral("a [ə]\nadj.\n") << 2;
        QTest::newRow("headword twice") << good + u'\n' + good << 6;
        QTest::newRow("two blank lines") << good + QStringLiteral("\n\n") + good << 6;
        QTest::newRow("bar") << QStringLiteral("a [ə]\nadj.\n1. 一|个\n") << 3;
    }

    void namesTheFaultyLine() {
        QFETCH(const QString, source);
        QFETCH(const int, line);
        const Outcome outcome = compile(source);
        QCOMPARE(outcome.status, 1);
        QVERIFY2(outcome.message.contains(QStringLiteral("line %1: ").arg(line)),
                 qPrintable(outcome.message));
    }
};

} // namespace

QTEST_GUILESS_MAIN(StarterCompilerTest)
#include "starter_compiler_test.moc"
