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
        tests.type("concise");
        keyClick(Qt.Key_Return);
        tryVerify(() => tests.card() !== null);
        tryCompare(tests.card(), "word", "concise");
        tryCompare(tests.card(), "visible", true);
        compare(field.selectedText, "concise");
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

    function test_3_deletion_is_undone() {
        const word = tests.card().word;
        tests.card().remove();
        compare(tests.card().exists, false);
        compare(field.text, "");
        const toast = tests.find(window.contentItem, item => item instanceof Toast && item.visible);
        toast.action();
        compare(tests.card().exists, true);
        compare(tests.card().word, word);
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
