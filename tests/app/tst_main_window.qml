import QtQuick
import QtTest
import Lexiquill

ScreenTest {
    id: tests

    name: "MainWindow"

    property var window: null

    Component {
        id: mainWindow

        MainWindow {}
    }

    WordListModel {
        id: words
    }
    WordCard {
        id: card
    }

    function initTestCase() {
        window = mainWindow.createObject(null);
        window.show();
        verify(waitForRendering(window.contentItem));
    }

    function cleanupTestCase() {
        window.destroy();
    }

    function test_sheet_keeps_the_keyboard() {
        window.requestActivate();
        tryCompare(window, "active", true);
        HotKeyManager.showSettingsSheet = true;
        ContentView.postFocusSearchInput();
        keyClick(Qt.Key_Escape);
        compare(HotKeyManager.showSettingsSheet, false);
    }

    function test_the_wheel_scrolls_a_sheet() {
        HotKeyManager.showSettingsSheet = true;
        let area = null;
        tryVerify(() => (area = scrollArea(window.contentItem)) !== null);
        const place = area.mapToItem(window.contentItem, area.width / 2, area.height / 2);
        mouseWheel(window.contentItem, place.x, place.y, 0, -480);
        tryVerify(() => area.contentY > 0);
        HotKeyManager.showSettingsSheet = false;
    }

    /// The scroll area of the open sheet.
    function scrollArea(item) {
        for (let i = item.children.length - 1; i >= 0; --i) {
            const child = item.children[i];
            const found = child.visible ? scrollArea(child) : null;
            if (found || (child.visible && child.reveal && child.contentY !== undefined))
                return found ?? child;
        }
        return null;
    }

    function test_the_search_field_is_reached_and_selected_data() {
        return [
            {tag: "Ctrl+1", press: () => keyClick(Qt.Key_1, Qt.ControlModifier)},
            {tag: "Ctrl+F", press: () => keyClick(Qt.Key_F, Qt.ControlModifier)},
            {tag: "/", press: () => keyClick("/")},
            {tag: "Escape", press: () => keyClick(Qt.Key_Escape)}
        ];
    }

    function test_the_search_field_is_reached_and_selected(row) {
        window.requestActivate();
        tryCompare(window, "active", true);
        for (const tab of [ContentView.TabItem.WeeklyReview, ContentView.TabItem.Statistics]) {
            keyClick(Qt.Key_1, Qt.ControlModifier);
            tryVerify(() => window.activeFocusItem?.Accessible.name === "查词");
            const field = window.activeFocusItem;
            field.text = "half";
            ContentView.selectedTab = tab;
            tryVerify(() => window.activeFocusItem !== field);
            row.press();
            tryCompare(window, "activeFocusItem", field);
            if (row.tag !== "Escape")
                compare(field.selectedText, "half");
            field.text = "";
        }
    }

    function test_a_switch_of_the_source_is_told_and_undone() {
        const toast = findChild(window.contentItem, "windowToast");
        const before = DictionaryService.currentMode;
        const row = find(window.contentItem, item => item instanceof SidebarRow && item.text === ContentView.sourceTitle(before));
        mouseClick(row);
        verify(DictionaryService.currentMode !== before);
        verify(toast.visible && toast.message.startsWith("已切换到" + ContentView.sourceTitle(DictionaryService.currentMode)));
        toast.action();
        compare(DictionaryService.currentMode, before);
    }

    function test_a_tag_opens_the_wordbook() {
        window.requestActivate();
        tryCompare(window, "active", true);
        words.choose(2, WordListModel.Replace);
        card.wordId = words.selectedId;
        card.saveNotes("for the #exam");
        compare(card.tags, ["exam"]);
        // Also if the wordbook has not been opened before.
        ContentView.showTaggedWords("Exam");
        tryVerify(() => named(window.contentItem, "单词列表")?.count === 1);
        const list = named(window.contentItem, "单词列表");
        compare(list.itemAtIndex(0).word, card.headword);
        tryVerify(() => list.activeFocus);
        ContentView.selectedTab = ContentView.TabItem.Dictionary;
        tryVerify(() => !list.visible && !list.activeFocus);
    }

    function test_update_check_tells_its_outcome() {
        window.checkForUpdates();
        const toast = findChild(window.contentItem, "windowToast");
        tryCompare(toast, "visible", true);
        verify(toast.message !== "");
    }

    function test_the_keyboard_returns_when_a_sheet_or_the_menu_closes_data() {
        return [
            {tag: "sheet", open: () => keyClick(Qt.Key_Comma, Qt.ControlModifier), isSheet: true},
            {tag: "menu", open: () => keyClick(Qt.Key_F10), isSheet: false}
        ];
    }

    function test_the_keyboard_returns_when_a_sheet_or_the_menu_closes(row) {
        window.requestActivate();
        tryCompare(window, "active", true);
        keyClick(Qt.Key_1, Qt.ControlModifier);
        tryVerify(() => window.activeFocusItem?.Accessible.name === "查词");
        const field = window.activeFocusItem;
        row.open();
        tryVerify(() => window.activeFocusItem && window.activeFocusItem !== field);
        compare(HotKeyManager.showSettingsSheet, row.isSheet);
        keyClick(Qt.Key_Escape);
        tryCompare(window, "activeFocusItem", field);
        verify(!HotKeyManager.showSettingsSheet);
    }
}
