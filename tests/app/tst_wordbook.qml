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

            width: 680
            height: 600

            WordbookScreen {
                id: wordbook

                anchors.fill: parent
                focus: true
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
        tryCompare(screen, "isNarrow", false);
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
        mouseClick(named(screen, "练习"));
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

    function test_mouse() {
        const list = named(screen, "单词列表");
        mouseClick(list.itemAtIndex(1));
        mouseClick(list.itemAtIndex(3), 20, 20, Qt.LeftButton, Qt.ShiftModifier);
        verify(named(screen, "已选择 3 个单词"));
        mouseClick(list.itemAtIndex(2), 20, 20, Qt.LeftButton, Qt.ControlModifier);
        verify(named(screen, "已选择 2 个单词"));
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
