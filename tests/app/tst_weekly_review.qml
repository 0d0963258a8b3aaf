import QtQuick
import QtTest
import Lexiquill

ScreenTest {
    id: tests

    name: "WeeklyReview"
    when: windowShown
    width: 600
    height: 400
    visible: true

    Component {
        id: reviewScreen

        WeeklyReviewScreen {
            width: 600
            height: 400
        }
    }

    Component {
        id: reviewSection

        ReviewSection {
            width: 400
        }
    }

    /// Clicks when the layout is complete.
    function click(parent: Item, name: string): void {
        const item = named(parent, name);
        for (let outer = item; outer; outer = outer.parent)
            tryVerify(() => !isPolishScheduled(outer));
        mouseClick(item);
    }

    readonly property Item keyboardItem: Window.activeFocusItem

    WordListModel {
        id: words
    }

    /// Shows the screen with the keyboard.
    function open(): Item {
        const screen = createTemporaryObject(reviewScreen, tests);
        screen.forceActiveFocus();
        return screen;
    }

    /// Whether the item with the keyboard is visible and has this name.
    function hasKeyboard(name: string): bool {
        return keyboardItem.visible && keyboardItem.Accessible.name === name;
    }

    function type(text: string): void {
        for (const letter of text)
            keyClick(letter);
    }

    function test_a_chosen_round_size() {
        Preferences.roundSize = 2;
        const screen = open();
        tryVerify(() => named(screen, "0 / 2") !== null);
        const section = createTemporaryObject(reviewSection, tests);
        const box = find(section, item => item instanceof ChoiceBox);
        compare(box.displayText, "2 张");
        box.forceActiveFocus();
        keyClick(Qt.Key_Down);
        compare(Preferences.roundSize, 10);
        compare(box.displayText, "10 张");
        compare(box.count, 6);
        screen.forceActiveFocus();
        for (let i = 0; i < 2; ++i) {
            keyClick(Qt.Key_Space);
            verify(named(screen, i + " / 2") !== null);
            keyClick(Qt.Key_1);
        }
        verify(named(screen, "还有 3 词到期") !== null && hasKeyboard("继续复习 3 词"));
        keyClick(Qt.Key_Z, Qt.ControlModifier);
        keyClick(Qt.Key_Z, Qt.ControlModifier);
    }

    function test_a_round_with_the_keyboard() {
        const screen = open();
        tryVerify(() => named(screen, "0 / 5") !== null);
        verify(named(screen, "记住了 · 1 天后") === null);
        const word = keyboardItem.Accessible.name;
        keyClick(Qt.Key_1);
        verify(named(screen, "0 / 5") !== null, "no answer before the meaning is shown");
        keyClick(Qt.Key_Space);
        verify(named(screen, "记住了 · 1 天后") !== null && named(screen, "没记住 · 1 天后") !== null);
        verify(keyboardItem.Accessible.name.startsWith(word + "，"), "the turned card is announced");
        keyClick(Qt.Key_Tab);
        keyClick(Qt.Key_1);
        verify(named(screen, "1 / 5") !== null && keyboardItem.visible);
        verify(!hasKeyboard(word));
        keyClick(Qt.Key_Tab);
        verify(hasKeyboard("朗读"));
        keyClick(Qt.Key_Tab);
        verify(hasKeyboard("显示释义（空格）"));
        keyClick(Qt.Key_Return);
        keyClick(Qt.Key_2);
        verify(named(screen, "2 / 5") !== null);
        keyClick(Qt.Key_Z, Qt.ControlModifier);
        verify(named(screen, "1 / 5") !== null);
        click(screen, "没记住 · 1 天后");
        for (let i = 2; i < 5; ++i) {
            keyClick(Qt.Key_Space);
            keyClick(Qt.Key_1);
        }
        verify(named(screen, "本轮复习完成") !== null);
        verify(named(screen, "复习 5 词 · 记住 4 · 没记住 1 · 正确率 80%") !== null);
        verify(hasKeyboard("再练没记住的 1 词"));
        keyClick(Qt.Key_Return);
        verify(named(screen, "0 / 1") !== null && named(screen, "练习，不影响复习安排") !== null);
        keyClick(Qt.Key_Space);
        verify(named(screen, "没记住") !== null, "a practice has no next review");
        keyClick(Qt.Key_1);
        verify(named(screen, "本轮练习完成") !== null);
        verify(hasKeyboard("全部再来一遍"));
    }

    function test_keys_scroll_a_long_card() {
        const screen = open();
        words.selectAll();
        ContentView.practice(words.selectedIds());
        compare(ContentView.selectedTab, ContentView.TabItem.WeeklyReview);
        verify(named(screen, "0 / 5") !== null && named(screen, "练习，不影响复习安排") !== null);
        keyClick(Qt.Key_Space);
        const area = find(screen, item => item.visible && item instanceof ScrollArea);
        tryVerify(() => area.contentHeight > area.height);
        const end = area.contentHeight - area.height;
        for (const [key, place] of [[Qt.Key_End, end], [Qt.Key_Home, 0], [Qt.Key_Down, Math.min(end, 48)], [Qt.Key_Up, 0]]) {
            keyClick(key);
            compare(area.contentY, place);
        }
        keyClick(Qt.Key_PageDown);
        verify(area.contentY > 0);
        for (const answer of ["记住了", "没记住"]) {
            const button = named(screen, answer);
            const bottom = button.mapToItem(screen, 0, button.height).y;
            verify(bottom > button.height && bottom <= screen.height);
        }
    }

    function test_spelling_data() {
        return [
            {tag: "right", change: word => word.toUpperCase(), answer: "记住了", result: "拼写正确"},
            {tag: "wrong", change: word => word.substring(1), answer: "没记住", result: "漏写"}
        ];
    }

    function test_spelling(row) {
        const screen = open();
        words.selectAll();
        ContentView.practice(words.selectedIds());
        click(screen, "拼写");
        tryVerify(() => hasKeyboard("单词的拼写"));
        const word = words.data(words.index(0, 0), Qt.UserRole);
        const tells = item => item.visible && `${item.text ?? ""}`.toLowerCase().includes(word.toLowerCase());
        verify(find(screen, tells) === null, "the question does not show the word");
        type(row.change(word));
        keyClick(Qt.Key_Return);
        verify(find(screen, tells) !== null);
        verify(find(screen, item => item.visible && item.Accessible.name.includes(row.result)) !== null);
        verify(hasKeyboard(row.answer) && keyboardItem.Accessible.description.includes(row.result));
        keyClick(Qt.Key_Return);
        verify(named(screen, "1 / 5") !== null && hasKeyboard("单词的拼写"));
        compare(keyboardItem.text, "");
        keyClick(Qt.Key_Z, Qt.ControlModifier);
        verify(named(screen, "0 / 5") !== null && named(screen, word) !== null);
    }

    function test_list() {
        const screen = createTemporaryObject(reviewScreen, tests);
        click(screen, "列表");
        tryVerify(() => named(screen, "5 词") !== null);
        click(screen, "新词");
        tryVerify(() => named(screen, "5 词") === null);
        click(screen, "到期");
        tryVerify(() => named(screen, "5 词") !== null);
        screen.visible = false;
        screen.visible = true;
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Return);
        verify(ContentView.externalSelectedWord !== "");
    }
}
