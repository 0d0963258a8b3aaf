#include "support/ini_format.h"
#include "support/user_defaults.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

using namespace lexiquill;

namespace {

QByteArray readAll(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class IniFormatTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void valuesComeBack_data() {
        QTest::addColumn<QVariant>("value");
        const auto row = [](const char *name, const QVariant &value) {
            QTest::newRow(name) << value;
        };
        row("empty", QString());
        row("Chinese", QStringLiteral("单词, 词典；“好”"));
        row("special", QStringLiteral(" a=b;c#d \"e\" \\f\\ [g] %41 "));
        row("at", QStringLiteral("@home"));
        row("typed look", QStringLiteral("@ByteArray(x)"));
        row("control and digits",
            QStringLiteral("a\nb\tc\x01") + QStringLiteral("f9\x7f") + QStringLiteral("e g"));
        row("beyond the basic plane", QStringLiteral("📖"));
        row("list", QStringList{QStringLiteral("ice cream"), QStringLiteral("a, b"), QString(),
                                QStringLiteral("@x"), QStringLiteral("\"")});
        row("bytes", QByteArray("{\"k\":\"\\x\"}\x00\x01\xff\n@", 15));
    }

    /// Both through this program's reader and through QSettings, whose format it is.
    void valuesComeBack() {
        QFETCH(const QVariant, value);
        const QVariantMap values{{QStringLiteral("key"), value}, {QStringLiteral("Group/k y"), value}};
        const QByteArray text = iniText(values);
        QCOMPARE(iniValues(text), values);

        QTemporaryDir directory;
        QFile file(directory.filePath(QStringLiteral("settings.conf")));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
        file.close();
        const QSettings settings(file.fileName(), QSettings::IniFormat);
        QCOMPARE(settings.value(QStringLiteral("key")), value);
        QCOMPARE(settings.value(QStringLiteral("Group/k y")), value);
    }

    void readsWhatOthersWrite_data() {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QVariant>("value");
        QTest::newRow("plain") << QByteArray("k=a b ") << QVariant(QStringLiteral("a b"));
        QTest::newRow("blanks") << QByteArray(" k = a\r") << QVariant(QStringLiteral("a"));
        QTest::newRow("plain list") << QByteArray("k=a, \"b, c\"")
                                    << QVariant(QStringList{QStringLiteral("a"), QStringLiteral("b, c")});
        QTest::newRow("invalid") << QByteArray("k=@Invalid()") << QVariant();
        QTest::newRow("variant") << QByteArray("k=@Variant(\\0\\0\\0\\x9)") << QVariant();
        QTest::newRow("comment") << QByteArray("; k=a") << QVariant();
        QTest::newRow("open quote") << QByteArray("k=\"a,b") << QVariant(QStringLiteral("a,b"));
        QTest::newRow("lone backslash") << QByteArray("k=a\\") << QVariant(QStringLiteral("a\\"));
        QTest::newRow("endless escape")
            << "k=\\x" + QByteArray(100'000, 'f') << QVariant(QString(QChar(0xffff)));
    }

    void readsWhatOthersWrite() {
        QFETCH(const QByteArray, line);
        QFETCH(const QVariant, value);
        QCOMPARE(iniValues("[General]\n" + line + "\n").value(QStringLiteral("k")), value);
    }

    /// Two processes that write the same number of bytes in the same instant.
    void seesEveryReplacement() {
        QTemporaryDir directory;
        const QString path = directory.filePath(QStringLiteral("new/settings.conf"));
        UserDefaults here(path);
        UserDefaults there(path);
        const QString key = QStringLiteral("k");
        for (int i = 0; i < 200; ++i) {
            UserDefaults &writer = i % 2 == 0 ? here : there;
            UserDefaults &reader = i % 2 == 0 ? there : here;
            const QString value = QString::number(1000 + i);
            writer.set(key, value);
            reader.refresh();
            QCOMPARE(reader.string(key), value);
        }
    }

    void bytesAndRemoval() {
        const QTemporaryDir directory;
        const QString path = directory.filePath(QStringLiteral("settings.conf"));
        const QString key = QStringLiteral("k");
        const QByteArray bytes("{\"a\":\"\x00\xff\"}", 10);
        UserDefaults here(path);
        here.set(key, bytes);
        here.set(QStringLiteral("other"), QStringLiteral(""));
        const QString empty = UserDefaults(path).string(QStringLiteral("other"));
        QVERIFY(empty.isEmpty() && !empty.isNull());
        here.set(QStringLiteral("other"), QStringLiteral("x"));
        QCOMPARE(UserDefaults(path).byteArray(key), bytes);
        QVERIFY(UserDefaults(path).string(key).isNull() && here.byteArray(QStringLiteral("other")).isNull());
        UserDefaults there(path);
        here.remove(key);
        there.refresh();
        QVERIFY(there.byteArray(key).isNull() && here.byteArray(key).isNull());
        QCOMPARE(there.string(QStringLiteral("other")), QStringLiteral("x"));
        QCOMPARE(iniValues(readAll(path)).keys(), QStringList{QStringLiteral("other")});

        // A removal that cannot be written yet is not forgotten, nor undone by what others write.
        QVERIFY(QFile::rename(path, path + u'~') && QDir().mkpath(path));
        here.remove(QStringLiteral("other"));
        QVERIFY(QDir().rmdir(path) && QFile::rename(path + u'~', path));
        here.refresh();
        QVERIFY(here.string(QStringLiteral("other")).isNull());
        here.set(key, QStringLiteral("y"));
        QCOMPARE(iniValues(readAll(path)).keys(), QStringList{key});
    }

    void isForItsOwnerOnly() {
        const QTemporaryDir directory;
        const QString path = directory.filePath(QStringLiteral("settings.conf"));
        const auto owner = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
        UserDefaults settings(path);
        for (int i = 0; i < 2; ++i) {
            settings.set(QStringLiteral("k"), QString::number(i));
            QCOMPARE(QFile::permissions(path), owner);
            QVERIFY(
                QFile::setPermissions(path, owner | QFile::ReadGroup | QFile::ReadOther | QFile::ExeOther));
        }
    }
};

} // namespace

QTEST_GUILESS_MAIN(IniFormatTest)
#include "ini_format_test.moc"
