#include "hotkey/hot_key_shortcut.h"
#include "support/test.h"

#include <QSet>

using namespace lexiquill;

namespace {

class HotKeyShortcutTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void customShortcuts_data() {
        addRows(R"(
            cosC | 49  | 6912 | ⌃ ⌥ ⇧ ⌘ Space
            c__C | 2   | 4352 | ⌃ ⌘ D
            _o__ | 103 | 2048 | ⌥ F11
            ____ | 42  | 0    | \)");
    }

    void customShortcuts() {
        QFETCH(const QStringList, cells);
        const QString &toggles = cells[0];
        const VirtualKey *const key = findVirtualKey(cells[1].toUInt());
        QVERIFY(key);
        const auto shortcut = HotKeyShortcut::custom({.control = toggles.contains(u'c'),
                                                      .option = toggles.contains(u'o'),
                                                      .shift = toggles.contains(u's'),
                                                      .command = toggles.contains(u'C')},
                                                     *key);
        QCOMPARE(shortcut.keyCode, key->code);
        QCOMPARE(QString::number(shortcut.carbonModifiers), cells[2]);
        QCOMPARE(shortcut.symbolString, cells[3]);
        QCOMPARE(shortcut.id, u"custom_"_s + cells[2] + u'_' + cells[1]);
        QCOMPARE(shortcut.name, u"自定义: "_s + cells[3]);
        QCOMPARE(decodeHotKeyShortcut(encodeHotKeyShortcut(shortcut)), shortcut);
    }

    void presets() {
        const QList<HotKeyShortcut> &presets = HotKeyShortcut::presets();
        QCOMPARE(QSet<HotKeyShortcut>(presets.begin(), presets.end()).size(), 6);
        QCOMPARE(encodeHotKeyShortcut(presets[1]),
                 "{'id':'cmd_shift_d','name':'Command + Shift + D (标准词典快捷键)','keyCode':2,"
                 "'carbonModifiers':768,'symbolString':'⌘ ⇧ D'}"_ba.replace('\'', '"'));
    }

    /// The list that the user chooses from must not offer a key twice, whichever way it is looked at.
    void keysAreDistinct() {
        const std::span<const VirtualKey> keys = virtualKeys();
        for (auto a = keys.begin(); a != keys.end(); ++a) {
            for (auto b = a + 1; b != keys.end(); ++b)
                QVERIFY(a->code != b->code && a->keysym != b->keysym && a->position != b->position &&
                        a->name != b->name);
        }
        QVERIFY(!findVirtualKey(10'000));
    }

    void damagedJson_data() {
        columns<QByteArray, bool>("json", "isReadable");
        const QByteArray whole = encodeHotKeyShortcut(HotKeyShortcut::defaultShortcut());
        const auto changed = [&](const char *before, const char *after) {
            return QByteArray(whole).replace(before, after);
        };
        const auto row = [](const char *name, const QByteArray &json, bool isReadable = false) {
            QTest::newRow(name) << json << isReadable;
        };
        row("other order and more", changed("{", "{\"more\":[{}],"), true);
        row("whole number with a fraction", changed(":49", ":49.0"), true);
        row("greatest code", changed(":49", ":4294967295"), true);
        row("missing", changed("\"id\"", "\"ID\""));
        row("text for a number", changed("49", "\"49\""));
        row("negative", changed(":49", ":-1"));
        row("too great", changed(":49", ":4294967296"));
        row("fraction", changed(":49", ":49.5"));
        row("deep", QByteArray(50'000, '['));
    }

    void damagedJson() {
        QFETCH(const QByteArray, json);
        QFETCH(const bool, isReadable);
        QCOMPARE(decodeHotKeyShortcut(json).has_value(), isReadable);
    }
};

} // namespace

QTEST_GUILESS_MAIN(HotKeyShortcutTest)
#include "hot_key_shortcut_test.moc"
