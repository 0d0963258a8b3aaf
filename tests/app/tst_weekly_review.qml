import QtQuick
import QtTest
import Lexiquill

TestCase {
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

    /// The item below `parent` with this accessible name that can be seen.
    function find(parent: Item, name: string): Item {
        for (let i = 0; i < parent.children.length; ++i) {
            const child = parent.children[i];
            if (!child.visible)
                continue;
            if (child.Accessible.name === name)
                return child;
            const found = find(child, name);
            if (found)
                return found;
        }
        return null;
    }

    /// Clicks once everything has its place.
    function click(parent: Item, name: string): void {
        const item = find(parent, name);
        for (let outer = item; outer; outer = outer.parent)
            tryVerify(() => !isPolishScheduled(outer));
        mouseClick(item);
    }

    function test_a_round_with_the_keyboard() {
        const screen = createTemporaryObject(reviewScreen, tests);
        screen.forceActiveFocus();
        tryVerify(() => find(screen, "0 / 5") !== null);
        verify(find(screen, "记住了") === null);
        keyClick(Qt.Key_1);
        verify(find(screen, "0 / 5") !== null, "no answer before the meaning is shown");
        keyClick(Qt.Key_Space);
        verify(find(screen, "记住了") !== null && find(screen, "没记住") !== null);
        keyClick(Qt.Key_1);
        verify(find(screen, "1 / 5") !== null);
        keyClick(Qt.Key_Space);
        keyClick(Qt.Key_2);
        verify(find(screen, "2 / 5") !== null);
        keyClick(Qt.Key_Z, Qt.ControlModifier);
        verify(find(screen, "1 / 5") !== null);
        click(screen, "没记住");
        for (let i = 2; i < 5; ++i) {
            keyClick(Qt.Key_Space);
            keyClick(Qt.Key_1);
        }
        verify(find(screen, "本轮复习完成") !== null);
        verify(find(screen, "复习 5 词 · 记住 4 · 没记住 1 · 正确率 80%") !== null);
        click(screen, "再练没记住的 1 词");
        verify(find(screen, "0 / 1") !== null);
        keyClick(Qt.Key_Space);
        keyClick(Qt.Key_1);
        verify(find(screen, "继续复习") !== null);
        keyClick(Qt.Key_Return);
        verify(find(screen, "今天的卡片都复习过了") !== null);
    }

    function test_list() {
        const screen = createTemporaryObject(reviewScreen, tests);
        click(screen, "列表");
        tryVerify(() => find(screen, "5 词") !== null);
        click(screen, "新词");
        tryVerify(() => find(screen, "5 词") === null);
        click(screen, "到期");
        tryVerify(() => find(screen, "5 词") !== null);
        screen.visible = false;
        screen.visible = true;
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Return);
        verify(ContentView.externalSelectedWord !== "");
    }
}
