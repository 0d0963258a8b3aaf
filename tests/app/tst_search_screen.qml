import QtQuick
import QtTest
import Lexiquill

ScreenTest {
    id: tests

    name: "SearchScreen"

    property var window: null
    property var field: null

    Component {
        id: mainWindow

        MainWindow {}
    }

    Component {
        id: noteEditor

        NoteEditor {}
    }

    function initTestCase() {
        window = mainWindow.createObject(null);
        window.show();
        window.requestActivate();
        tryCompare(window, "active", true);
        field = tests.find(window.contentItem, item => item instanceof SearchField);
    }

    function cleanupTestCase() {
        window.destroy();
    }

    function type(text) {
        for (const letter of text)
            keyClick(letter);
    }

    function card() {
        return tests.find(window.contentItem, item => item instanceof DefinitionCard);
    }

    function suggestions() {
        return tests.find(window.contentItem, item => item instanceof SuggestionList);
    }

    function test_1_caret_waits_and_return_looks_up() {
        verify(field.activeFocus);
        verify(tests.named(window.contentItem, "欢迎使用 Lexiquill"));
        tests.type("concise");
        keyClick(Qt.Key_Return);
        tryVerify(() => tests.card() !== null);
        tryCompare(tests.card(), "word", "concise");
        tryCompare(tests.card(), "visible", true);
        compare(field.selectedText, "concise");
        verify(!tests.named(window.contentItem, "欢迎使用 Lexiquill"));
    }

    function test_2_typing_on_offers_words_and_arrows_choose() {
        tests.type("eph");
        compare(tests.card().visible && tests.suggestions().visible, false);
        tryVerify(() => tests.suggestions().count > 0);
        keyClick(Qt.Key_Down);
        const chosen = tests.suggestions().model.wordAt(0);
        keyClick(Qt.Key_Return);
        tryCompare(tests.card(), "word", chosen);
        compare(field.text, chosen);
    }

    function test_2_base_form_is_named() {
        tests.type("went");
        keyClick(Qt.Key_Return);
        tryCompare(tests.card(), "word", "go");
        verify(tests.named(tests.card(), "went → go"));
        tests.type("go");
        keyClick(Qt.Key_Return);
        tryVerify(() => !tests.named(tests.card(), "went → go"));
        compare(tests.card().word, "go");
    }

    function test_2_unknown_word_is_named() {
        tests.type("beleive");
        keyClick(Qt.Key_Return);
        tryVerify(() => tests.named(window.contentItem, "没有找到“beleive”"));
        tryVerify(() => tests.suggestions().model.wordAt(0) === "believe");
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Return);
        tryCompare(tests.card(), "word", "believe");
    }

    function lookUp(word) {
        keyClick(Qt.Key_1, Qt.ControlModifier);
        tests.type(word);
        keyClick(Qt.Key_Return);
        tryVerify(() => tests.card()?.word === word && tests.card().visible);
        // The parts of the definition get their places with the next frame.
        waitForRendering(window.contentItem, 1000);
    }

    /// The text of a definition that contains `part`.
    function definition(part) {
        return tests.find(tests.card(), item => item instanceof SelectableText && item.visible && item.getText(0, item.length).includes(part));
    }

    /// Points at the middle of a word of the definition.
    function pointAt(text, word) {
        const start = text.getText(0, text.length).indexOf(word);
        const left = text.positionToRectangle(start);
        const right = text.positionToRectangle(start + word.length);
        return Qt.point((left.x + right.x) / 2, left.y + left.height / 2);
    }

    function test_3_words_seen_are_gone_through() {
        for (const word of ["apple", "banana", "take"])
            tests.lookUp(word);
        keyClick(Qt.Key_Left, Qt.AltModifier);
        compare(tests.card().word, "banana");
        compare(field.selectedText, "banana");
        tests.card().remove();
        // The word that was deleted is passed over.
        keyClick(Qt.Key_Left, Qt.AltModifier);
        compare(tests.card().word, "apple");
        keyClick(Qt.Key_Right, Qt.AltModifier);
        compare(tests.card().word, "take");
        keyClick(Qt.Key_Right, Qt.AltModifier);
        compare(tests.card().word, "take");
    }

    function test_3_definitions_are_selected_and_lead_on() {
        tests.lookUp("take");
        const text = tests.definition("umbrella");
        const place = tests.pointAt(text, "Someone");
        mouseDrag(text, place.x, place.y, 60, 0);
        verify(text.selectedText !== "");
        keyClick(Qt.Key_C, Qt.ControlModifier);
        keyClick(Qt.Key_Escape);
        compare(text.selectedText, "");
        // Typing goes on in the field.
        keyClick("x");
        compare(field.text, "x");
        verify(field.activeFocus);
        keyClick(Qt.Key_V, Qt.ControlModifier);
        verify(field.text.length > 2);
        for (const [word, click] of [["umbrella", (text, place) => mouseDoubleClickSequence(text, place.x, place.y)], ["school", (text, place) => mouseClick(text, place.x, place.y, Qt.LeftButton, Qt.ControlModifier)]]) {
            tests.lookUp("take");
            const text = tests.definition(word);
            click(text, tests.pointAt(text, word));
            tryCompare(tests.card(), "word", word);
        }
    }

    function test_3_the_menu_of_a_word() {
        tests.lookUp("take");
        const text = tests.definition("umbrella");
        const place = tests.pointAt(text, "umbrella");
        mouseClick(text, place.x, place.y, Qt.RightButton);
        tryVerify(() => tests.named(window.contentItem, "查询“umbrella”"));
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Return);
        tryCompare(tests.card(), "word", "umbrella");
    }

    function test_3_zoom() {
        const before = field.height;
        keyClick(Qt.Key_Equal, Qt.ControlModifier);
        compare(Preferences.zoomPercent, 110);
        verify(field.height > before);
        keyClick(Qt.Key_Minus, Qt.ControlModifier);
        keyClick(Qt.Key_Minus, Qt.ControlModifier);
        verify(field.height < before);
        keyClick(Qt.Key_0, Qt.ControlModifier);
        compare(field.height, before);
    }

    function test_3_answers_stay_within_reach() {
        window.width = 600;
        window.height = 400;
        tests.lookUp("take");
        const area = tests.find(window.contentItem, item => item instanceof ScrollArea && item.visible && item.contentHeight > item.height);
        for (const key of [Qt.Key_PageDown, Qt.Key_PageUp]) {
            const before = area.contentY;
            keyClick(key);
            verify(area.contentY !== before);
            for (const name of ["记住了", "没记住"]) {
                const button = tests.named(window.contentItem, name);
                const bottom = button.mapToItem(window.contentItem, 0, button.height).y;
                verify(bottom <= window.height && bottom > area.mapToItem(window.contentItem, 0, area.height).y);
            }
        }
        window.width = 880;
        window.height = 600;
    }

    function test_3_deletion_is_undone_data() {
        return [
            {tag: "button", undo: toast => toast.action()},
            {tag: "key", undo: () => keyClick(Qt.Key_Z, Qt.ControlModifier)}
        ];
    }

    function test_3_deletion_is_undone(row) {
        tests.lookUp("apple");
        const remove = tests.named(tests.card(), "从生词本删除");
        remove.forceActiveFocus();
        keyClick(Qt.Key_Return);
        compare(tests.card().exists, false);
        compare(field.text, "");
        verify(field.activeFocus);
        const toast = tests.find(window.contentItem, item => item instanceof Toast && item.visible);
        // Longer than a search of the dictionaries.
        wait(300);
        for (let i = 0; i < tests.suggestions().count; ++i)
            verify(tests.suggestions().model.wordAt(i) !== "apple");
        row.undo(toast);
        compare(tests.card().exists, true);
        compare(tests.card().word, "apple");
        verify(tests.card().visible);
    }

    function test_3_a_pasted_text_stays_in_one_line() {
        keyClick(Qt.Key_1, Qt.ControlModifier);
        field.text = "no\nsuch\n\nword here";
        tryVerify(() => tests.named(window.contentItem, "按回车键查询“no such word here”"));
        field.text = "";
    }

    function test_4_note_stays_with_its_word() {
        const editor = noteEditor.createObject(window.contentItem);
        const area = tests.find(editor, item => item.Accessible.name === "我的笔记");
        area.forceActiveFocus();
        tests.type("abc");
        editor.stored = "xyz";
        compare(area.text, "abc");
        // Nothing stores the text, as if the word had been deleted meanwhile.
        editor.finish();
        compare(area.text, "xyz");
        // A change from outside does not count as typing.
        editor.stored = "";
        compare(area.text, "");
        compare(editor.isEdited, false);
        editor.destroy();
    }
}
