#include "platform/linux/linux_dictionary_services.h"
#include "support/test.h"

#include <QProcess>

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
        const QString file = m_directory.filePath(u"source.txt"_s);
        writeFile(file, source.toUtf8());
        QProcess compiler;
        compiler.start(QStringLiteral(LEXIQUILL_STARTER_COMPILER), {file, m_directory.filePath(u"dic"_s)});
        compiler.waitForFinished();
        return {compiler.exitCode(), QString::fromUtf8(compiler.readAllStandardError())};
    }

private Q_SLOTS:
    void compiles() {
        const Outcome outcome = compile(u"run [rʌn]\nv.\n1. 跑；奔跑\n▸ Run! 快跑！\n2. (口语) 经营\n\n"
                                        "zoo [zuː]\nn.\n1. 动物园\n"_s);
        QCOMPARE(outcome.message, QString());
        QCOMPARE(outcome.status, 0);
        LinuxDictionaryServices services({m_directory.filePath(u"dic"_s)}, {},
                                         m_directory.filePath(u"cache"_s));
        QCOMPARE(services.copyTextDefinition(u"run"_s),
                 u"run | rʌn | verb ① 跑；奔跑 ▸ Run! 快跑！ ② (口语) 经营"_s);
        QCOMPARE(services.copyTextDefinition(u"zoos"_s), u"zoo | zuː | noun ① 动物园"_s);
    }

    void namesTheFaultyLine_data() {
        columns<QString, int>("source", "line");
        const QString good = u"a [ə]\nadj.\n1. 一个\n▸ A dog barked. 一条狗叫了。\n"_s;
        QTest::newRow("not a transcription") << QString(good).replace(u'ə', u'Д') << 1;
        QTest::newRow("unknown part of speech") << QString(good).replace(u"adj."_s, u"art."_s) << 2;
        QTest::newRow("Latin gloss") << QString(good).replace(u"一个"_s, u"one"_s) << 3;
        QTest::newRow("ASCII separator") << QString(good).replace(u"一个"_s, u"一个; 某个"_s) << 3;
        QTest::newRow("example without translation") << QString(good).remove(u" 一条狗叫了。"_s) << 4;
        QTest::newRow("part of speech twice") << u"a [ə]\nadj.\n1. 一个\nadj.\n1. 某个\n"_s << 4;
        QTest::newRow("headword twice") << good + u'\n' + good << 6;
    }

    void namesTheFaultyLine() {
        QFETCH(const QString, source);
        QFETCH(const int, line);
        const Outcome outcome = compile(source);
        QCOMPARE(outcome.status, 1);
        QVERIFY2(outcome.message.contains(u"line %1: "_s.arg(line)), qPrintable(outcome.message));
    }
};

} // namespace

QTEST_GUILESS_MAIN(StarterCompilerTest)
#include "starter_compiler_test.moc"
