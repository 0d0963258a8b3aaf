#include "settings/ini_format.h"
#include "settings/user_defaults.h"
#include "support/test.h"

#include <QSettings>

using namespace lexiquill;

namespace {

class IniFormatTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void valuesComeBack_data() {
        QTest::addColumn<QVariant>("value");
        QTest::newRow("empty") << QVariant(QString());
        QTest::newRow("special") << QVariant(u" 词；=b;c#d \"e\" \\f\\ [g] %41 📖 "_s);
        QTest::newRow("typed look") << QVariant(u"@ByteArray(x)"_s);
        QTest::newRow("control and digits") << QVariant(u"a\nb\tc\x01"_s + u"f9\x7f"_s + u"e g"_s);
        QTest::newRow("list") << QVariant(
            QStringList{u"ice cream"_s, u"a, b"_s, QString(), u"@x"_s, u"\""_s});
        QTest::newRow("bytes") << QVariant(QByteArray("{\"k\":\"\\x\"}\x00\x01\xff\n@", 15));
    }

    /// Read with this program's reader and with QSettings, which defines the format.
    void valuesComeBack() {
        QFETCH(const QVariant, value);
        const QVariantMap values{{u"key"_s, value}, {u"Group/k y"_s, value}};
        const QByteArray text = iniText(values);
        QCOMPARE(iniValues(text), values);

        QTemporaryDir directory;
        const QString path = directory.filePath(u"settings.conf"_s);
        QVERIFY(writeFile(path, text));
        const QSettings settings(path, QSettings::IniFormat);
        QCOMPARE(settings.value(u"key"_s), value);
        QCOMPARE(settings.value(u"Group/k y"_s), value);
    }

    void readsWhatOthersWrite_data() {
        columns<QByteArray, QVariant>("line", "value");
        QTest::newRow("blanks") << " k = a\r"_ba << QVariant(u"a"_s);
        QTest::newRow("plain list") << "k=a, \"b, c\""_ba << QVariant(QStringList{u"a"_s, u"b, c"_s});
        QTest::newRow("variant") << "k=@Variant(\\0\\0\\0\\v\\0\\x3f\\xff\\xff)"_ba << QVariant();
        QTest::newRow("open quote") << "k=\"a,b"_ba << QVariant(u"a,b"_s);
        QTest::newRow("lone backslash") << "k=a\\"_ba << QVariant(u"a\\"_s);
        QTest::newRow("endless escape")
            << "k=\\x" + QByteArray(100'000, 'f') << QVariant(QString(QChar(0xffff)));
    }

    void readsWhatOthersWrite() {
        QFETCH(const QByteArray, line);
        QFETCH(const QVariant, value);
        QCOMPARE(iniValues("[General]\n" + line + "\n").value(u"k"_s), value);
    }

    /// Two objects that write the same number of bytes at the same time, like two processes.
    void seesEveryReplacement() {
        QTemporaryDir directory;
        const QString path = directory.filePath(u"new/settings.conf"_s);
        UserDefaults here(path);
        UserDefaults there(path);
        const QString key = u"k"_s;
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
        const QString path = directory.filePath(u"settings.conf"_s);
        const QString key = u"k"_s;
        const QByteArray bytes("{\"a\":\"\x00\xff\"}", 10);
        UserDefaults here(path);
        here.set(key, bytes);
        here.set(u"other"_s, u""_s);
        const QString empty = UserDefaults(path).string(u"other"_s);
        QVERIFY(empty.isEmpty() && !empty.isNull());
        here.set(u"other"_s, u"x"_s);
        QCOMPARE(UserDefaults(path).byteArray(key), bytes);
        QVERIFY(UserDefaults(path).string(key).isNull() && here.byteArray(u"other"_s).isNull());
        UserDefaults there(path);
        here.remove(key);
        there.refresh();
        QVERIFY(there.byteArray(key).isNull() && here.byteArray(key).isNull());
        QCOMPARE(there.string(u"other"_s), u"x"_s);
        QCOMPARE(iniValues(readFile(path)).keys(), QStringList{u"other"_s});

        // A removal that cannot be written yet is kept, and is not undone when others write.
        QVERIFY(QFile::rename(path, path + u'~') && QDir().mkpath(path));
        here.remove(u"other"_s);
        QVERIFY(QDir().rmdir(path) && QFile::rename(path + u'~', path));
        here.refresh();
        QVERIFY(here.string(u"other"_s).isNull());
        here.set(key, u"y"_s);
        QCOMPARE(iniValues(readFile(path)).keys(), QStringList{key});
    }

    void isForItsOwnerOnly() {
        const QTemporaryDir directory;
        const QString path = directory.filePath(u"settings.conf"_s);
        const auto owner = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
        UserDefaults settings(path);
        for (int i = 0; i < 2; ++i) {
            settings.set(u"k"_s, QString::number(i));
            QCOMPARE(QFile::permissions(path), owner);
            QVERIFY(
                QFile::setPermissions(path, owner | QFile::ReadGroup | QFile::ReadOther | QFile::ExeOther));
        }
    }
};

} // namespace

QTEST_GUILESS_MAIN(IniFormatTest)
#include "ini_format_test.moc"
