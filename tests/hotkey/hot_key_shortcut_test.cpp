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

    /// A text in the JSON, its replacement, and whether a shortcut can be read from the result.
    void damagedJson_data() {
        addRows(R"(
            {    | {"more":[{}], | yes
            :49  | :49.0         | yes
            :49  | :4294967295   | yes
            "id" | "ID"          | no
            49   | "49"          | no
            :49  | :-1           | no
            :49  | :4294967296   | no
            :49  | :49.5         | no)");
    }

    void damagedJson() {
        QFETCH(const QStringList, cells);
        QByteArray json = encodeHotKeyShortcut(HotKeyShortcut::defaultShortcut());
        json.replace(cells[0].toUtf8(), cells[1].toUtf8());
        QCOMPARE(decodeHotKeyShortcut(json).has_value(), cells[2] == u"yes");
        QVERIFY(!decodeHotKeyShortcut(QByteArray(50'000, '[')));
    }
};

} // namespace

QTEST_GUILESS_MAIN(HotKeyShortcutTest)
#include "hot_key_shortcut_test.moc"
