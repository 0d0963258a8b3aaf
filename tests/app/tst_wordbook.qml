import QtQuick
import QtTest
import Lexiquill

ScreenTest {
    id: tests

    name: "Wordbook"
    when: windowShown

    property var window: null
    property var screen: null

    Component {
        id: wordbookWindow

        Window {
            property alias screen: wordbook

            id: window

            width: 680
            height: 600

            WordbookScreen {
                id: wordbook

                anchors.fill: parent
                focus: true
            }
            FocusGuard {
                window: window
                content: wordbook
            }
        }
    }

    function initTestCase() {
        window = wordbookWindow.createObject(null);
        screen = window.screen;
        window.show();
        window.requestActivate();
        tryCompare(window, "active", true);
    }

    function init() {
        failOnWarning(/.?/);
        window.width = 680;
        window.height = 600;
        tryCompare(screen, "isNarrow", false);
        tryCompare(screen, "height", 600);
        tryVerify(() => !isPolishScheduled(named(screen, "单词列表")));
    }

    function test_keys() {
        const list = named(screen, "单词列表");
        compare(list.count, 5);
        keyClick(Qt.Key_F, Qt.ControlModifier);
        keyClick(Qt.Key_Down);
        verify(list.activeFocus);
        keyClick(Qt.Key_Home);
        compare(list.currentIndex, 0);
        verify(named(screen, "复习历史"));
        keyClick(Qt.Key_End);
        compare(list.currentIndex, 4);
        keyClick(Qt.Key_Up, Qt.ShiftModifier);
        verify(named(screen, "已选择 2 个单词"));
        const practise = named(screen, "练习");
        tryVerify(() => !isPolishScheduled(practise.parent));
        mouseClick(practise);
        compare(ContentView.selectedTab, ContentView.TabItem.WeeklyReview);
        compare(ContentView.takePractice().length, 2);
        list.forceActiveFocus();
        keyClick(Qt.Key_Delete);
        compare(list.count, 3);
        verify(named(screen, "已删除 2 个单词"));
        keyClick(Qt.Key_Z, Qt.ControlModifier);
        compare(list.count, 5);
        keyClick(Qt.Key_A, Qt.ControlModifier);
        verify(named(screen, "已选择 5 个单词"));
        keyClick(Qt.Key_Delete);
        verify(named(screen, "生词本还是空的"));
        mouseClick(named(screen, "撤销"));
        compare(list.count, 5);
    }

    function test_filter() {
        const list = named(screen, "单词列表");
        keyClick(Qt.Key_F, Qt.ControlModifier);
        for (const letter of "serend")
            keyClick(letter);
        compare(list.count, 1);
        keyClick("q");
        verify(named(screen, "没有符合条件的单词"));
        keyClick(Qt.Key_Escape);
        compare(list.count, 5);
    }

    function test_tags() {
        const list = named(screen, "单词列表");
        mouseClick(list.itemAtIndex(1));
        const word = list.itemAtIndex(1).word;
        verify(!named(screen, "标签"));
        named(screen, "我的笔记").forceActiveFocus();
        for (const letter of "see #exam ")
            keyClick(letter);
        list.forceActiveFocus();
        compare(named(screen, "标签").model, ["全部标签", "#exam（1）"]);
        mouseClick(named(screen, "标签 exam"));
        compare(list.count, 1);
        compare(list.itemAtIndex(0).word, word);
        compare(named(screen, "标签").displayText, "#exam（1）");
        verify(list.activeFocus);
        keyClick(Qt.Key_Delete);
        // The choice of tags disappears with the last tag.
        compare(list.count, 4);
        verify(!named(screen, "标签"));
        keyClick(Qt.Key_Z, Qt.ControlModifier);
        compare(list.count, 5);
        keyClick(Qt.Key_F, Qt.ControlModifier);
        for (const letter of "#EX")
            keyClick(letter);
        compare(list.count, 1);
        keyClick(Qt.Key_Escape);
    }

    function test_hidden_items_lose_the_keyboard() {
        const list = named(screen, "单词列表");
        mouseClick(list.itemAtIndex(0));
        named(screen, "删除").forceActiveFocus();
        keyClick(Qt.Key_Space);
        verify(list.activeFocus);
        compare(list.count, 4);
        // Deleted elsewhere, while the keyboard is in its card.
        const note = named(screen, "我的笔记");
        note.forceActiveFocus();
        screen.model.clearSelection();
        tryVerify(() => !note.activeFocus && window.activeFocusItem.visible);
        list.forceActiveFocus();
        keyClick(Qt.Key_Z, Qt.ControlModifier);
        compare(list.count, 5);
        keyClick(Qt.Key_F, Qt.ControlModifier);
        keyClick("q");
        keyClick("q");
        mouseClick(named(screen, "显示全部"));
        tryVerify(() => list.activeFocus);
        // The record replaces the list, which must not move on unseen.
        keyClick(Qt.Key_Home);
        window.width = 540;
        window.height = 300;
        tryCompare(screen, "isNarrow", true);
        screen.showsDetail = false;
        list.forceActiveFocus();
        keyClick(Qt.Key_Return);
        tryVerify(() => !list.activeFocus);
        keyClick(Qt.Key_Down);
        compare(list.currentIndex, 0);
        const detail = find(find(screen, item => item instanceof WordDetail), item => item instanceof ScrollArea);
        keyClick(Qt.Key_Home);
        compare(detail.contentY, 0);
        keyClick(Qt.Key_End);
        verify(detail.contentY > 0);
        keyClick(Qt.Key_Escape);
        verify(list.activeFocus);
    }

    function test_review_chart() {
        const list = named(screen, "单词列表");
        mouseClick(list.itemAtIndex(4));
        for (const answer of ["记住了", "没记住"])
            mouseClick(find(screen, item => item instanceof PlainButton && item.text === answer));
        const chart = named(screen, "复习曲线");
        verify(chart.Accessible.description.startsWith("复习 2 次，记住 1 次"));
        chart.forceActiveFocus();
        compare(chart.Accessible.description, "2025-03-12：没记住，间隔 1 天 · 系数 2.35");
        keyClick(Qt.Key_Left);
        verify(named(screen, "2025-03-12：记住了，间隔 1 天 · 系数 2.55"));
        list.forceActiveFocus();
        verify(chart.Accessible.description.startsWith("复习 2 次"));
    }

    function test_page_keys_in_the_field() {
        const list = named(screen, "单词列表");
        window.height = 300;
        keyClick(Qt.Key_F, Qt.ControlModifier);
        tryVerify(() => list.height < list.contentHeight);
        keyClick(Qt.Key_PageDown);
        verify(list.contentY > 0);
        keyClick(Qt.Key_PageUp);
        compare(list.contentY, 0);
    }

    function test_mouse() {
        const list = named(screen, "单词列表");
        mouseClick(list.itemAtIndex(1));
        mouseClick(list.itemAtIndex(3), 20, 20, Qt.LeftButton, Qt.ShiftModifier);
        verify(named(screen, "已选择 3 个单词"));
        mouseClick(list.itemAtIndex(2), 20, 20, Qt.LeftButton, Qt.ControlModifier);
        verify(named(screen, "已选择 2 个单词"));
    }

    function test_the_split_is_kept() {
        const list = named(screen, "单词列表");
        const before = list.width;
        mouseDrag(screen, before, 300, 60, 0);
        tryVerify(() => Math.abs(list.width - before - 60) < 12);
        compare(Preferences.listWidth, list.width);
        // Both parts stay usable.
        mouseDrag(screen, list.width, 300, 400, 0);
        verify(list.width <= screen.width - 240);
        mouseDoubleClickSequence(screen, list.width, 300);
        tryCompare(list, "width", before);
    }

    function test_the_menu_of_a_word() {
        const list = named(screen, "单词列表");
        mouseClick(list.itemAtIndex(1), 20, 20, Qt.RightButton);
        tryVerify(() => named(window.contentItem, "在查词页打开"));
        verify(list.itemAtIndex(1).selected);
        for (const key of [Qt.Key_Down, Qt.Key_Down, Qt.Key_Down, Qt.Key_Return])
            keyClick(key);
        compare(list.count, 4);
        keyClick(Qt.Key_Z, Qt.ControlModifier);
        compare(list.count, 5);
    }

    function test_a_narrow_window_has_two_levels() {
        const list = named(screen, "单词列表");
        mouseClick(list.itemAtIndex(0));
        screen.showsDetail = false;
        window.width = 540;
        tryCompare(screen, "isNarrow", true);
        verify(!named(screen, "复习历史"));
        list.forceActiveFocus();
        keyClick(Qt.Key_Return);
        verify(named(screen, "复习历史"));
        verify(!named(screen, "单词列表"));
        keyClick(Qt.Key_Escape);
        verify(list.visible);
        mouseClick(list.itemAtIndex(2));
        verify(named(screen, "复习历史"));
        mouseClick(named(screen, "生词本"));
        verify(list.activeFocus);
    }
}
