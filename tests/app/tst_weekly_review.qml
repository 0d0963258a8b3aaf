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

    /// Clicks when the layout is complete.
    function click(parent: Item, name: string): void {
        const item = named(parent, name);
        for (let outer = item; outer; outer = outer.parent)
            tryVerify(() => !isPolishScheduled(outer));
        mouseClick(item);
    }

    function test_a_round_with_the_keyboard() {
        const screen = createTemporaryObject(reviewScreen, tests);
        screen.forceActiveFocus();
        tryVerify(() => named(screen, "0 / 5") !== null);
        verify(named(screen, "记住了") === null);
        keyClick(Qt.Key_1);
        verify(named(screen, "0 / 5") !== null, "no answer before the meaning is shown");
        keyClick(Qt.Key_Space);
        verify(named(screen, "记住了") !== null && named(screen, "没记住") !== null);
        keyClick(Qt.Key_1);
        verify(named(screen, "1 / 5") !== null);
        keyClick(Qt.Key_Space);
        keyClick(Qt.Key_2);
        verify(named(screen, "2 / 5") !== null);
        keyClick(Qt.Key_Z, Qt.ControlModifier);
        verify(named(screen, "1 / 5") !== null);
        click(screen, "没记住");
        for (let i = 2; i < 5; ++i) {
            keyClick(Qt.Key_Space);
            keyClick(Qt.Key_1);
        }
        verify(named(screen, "本轮复习完成") !== null);
        verify(named(screen, "复习 5 词 · 记住 4 · 没记住 1 · 正确率 80%") !== null);
        click(screen, "再练没记住的 1 词");
        verify(named(screen, "0 / 1") !== null);
        keyClick(Qt.Key_Space);
        keyClick(Qt.Key_1);
        verify(named(screen, "继续复习") !== null);
        keyClick(Qt.Key_Return);
        verify(named(screen, "今天的卡片都复习过了") !== null);
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
