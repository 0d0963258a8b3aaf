import QtQuick
import QtTest
import Lexiquill

/// Where the keyboard is, and what it does in groups of choices and in menus.
ScreenTest {
    id: tests

    name: "Keyboard"
    when: windowShown

    property var window: null

    Component {
        id: mainWindow

        MainWindow {}
    }

    Component {
        id: sidebarTab

        SidebarTab {
            width: 40
            symbol: "calendar"
            text: "每周复习"
            isCollapsed: true
        }
    }

    Component {
        id: plainButton

        PlainButton {
            text: "临时"
        }
    }

    Component {
        id: noteEditor

        NoteEditor {
            width: 300
        }
    }

    SignalSpy {
        id: edited

        signalName: "edited"
    }

    function init() {
        failOnWarning(/.?/);
        window = mainWindow.createObject(null);
        window.show();
        window.requestActivate();
        tryCompare(window, "active", true);
    }

    function cleanup() {
        HotKeyManager.showSettingsSheet = false;
        SyncManager.showAccountSheet = false;
        UpdateManager.showUpdateSheet = false;
        ContentView.selectedTab = ContentView.TabItem.Dictionary;
        window.destroy();
        wait(0);
    }

    /// The root of the open sheet, or else of the selected screen.
    function place() {
        let item = window.activeFocusItem;
        while (item && !(item instanceof ScreenLoader) && item.parent?.toString().indexOf("Overlay") !== 0 && item.parent !== window.contentItem)
            item = item.parent;
        return item;
    }

    function isInside(item, container) {
        while (item && item !== container)
            item = item.parent;
        return item === container;
    }

    /// The stops of the Tab key on the screen or sheet.
    function stops() {
        const found = [];
        const start = window.activeFocusItem;
        for (let item = start.nextItemInFocusChain(true); item && found.indexOf(item) < 0 && found.length < 100; item = item.nextItemInFocusChain(true)) {
            found.push(item);
        }
        return found;
    }

    function test_no_lost_item_keeps_the_keyboard_data() {
        const rows = [];
        const places = {
            search: () => ContentView.selectedTab = ContentView.TabItem.Dictionary,
            article: () => ContentView.handleExternalWordLookup("concise"),
            review: () => ContentView.selectedTab = ContentView.TabItem.WeeklyReview,
            wordbook: () => ContentView.selectedTab = ContentView.TabItem.History,
            statistics: () => ContentView.selectedTab = ContentView.TabItem.Statistics,
            preferences: () => HotKeyManager.showSettingsSheet = true,
            account: () => SyncManager.showAccountSheet = true,
            update: () => UpdateManager.showUpdateSheet = true
        };
        for (const name in places) {
            for (const property of ["visible", "enabled"])
                rows.push({tag: name + ", not " + property, open: places[name], property: property});
        }
        return rows;
    }

    function test_no_lost_item_keeps_the_keyboard(row) {
        row.open();
        wait(300);
        const screen = place();
        const all = stops().filter(item => isInside(item, screen));
        verify(all.length > 0);
        for (const item of all) {
            if (!item.visible || !item.enabled)
                continue;
            item.forceActiveFocus(Qt.TabFocusReason);
            wait(0);
            const held = window.activeFocusItem;
            held[row.property] = false;
            wait(5);
            const now = window.activeFocusItem;
            verify(now && now !== held && now.visible && now.enabled, item.Accessible.name);
            verify(isInside(now, screen), "outside: " + item.Accessible.name + " -> " + now);
            verify(all.length === 1 || now.activeFocusOnTab || now.Accessible.name !== "", item.Accessible.name + " -> " + now);
            held[row.property] = true;
            wait(5);
            compare(window.activeFocusItem, held);
        }
    }

    function test_the_keyboard_after_an_action_data() {
        return [
            {
                tag: "the button of a deleted word vanishes",
                open: () => ContentView.handleExternalWordLookup("concise"),
                button: "从生词本删除"
            },
            {
                tag: "a saved address cannot be saved again",
                open: () => HotKeyManager.showSettingsSheet = true,
                field: "有道词典",
                text: "https://example.org",
                button: "保存有道词典",
                next: "有道词典"
            }
        ];
    }

    function test_the_keyboard_after_an_action(row) {
        row.open();
        tryVerify(() => named(window.contentItem, row.button));
        if (row.field)
            find(place(), item => item instanceof TextInputField && item.Accessible.name === row.field).text = row.text;
        const button = named(window.contentItem, row.button);
        verify(button.enabled);
        const screen = place();
        button.forceActiveFocus(Qt.TabFocusReason);
        keyClick(Qt.Key_Space);
        tryVerify(() => !button.visible || !button.enabled);
        tryVerify(() => window.activeFocusItem.activeFocusOnTab && window.activeFocusItem !== button);
        const now = window.activeFocusItem;
        verify(now.visible && now.enabled && isInside(now, screen));
        if (row.next)
            compare(now.Accessible.name, row.next);
        // It shows where it is; text fields always do.
        verify(now.visualFocus ?? true);
    }

    function test_the_keyboard_after_the_end_of_an_item() {
        HotKeyManager.showSettingsSheet = true;
        tryVerify(() => place() && find(place(), item => item instanceof ServerAddressRow));
        const row = find(place(), item => item instanceof ServerAddressRow);
        const button = plainButton.createObject(row);
        button.forceActiveFocus(Qt.TabFocusReason);
        const before = button.nextItemInFocusChain(false);
        wait(0);
        button.destroy();
        tryCompare(window, "activeFocusItem", before);
    }

    function radios(item) {
        return stops().filter(stop => stop instanceof RadioChoice && isInside(stop, item));
    }

    function test_a_group_of_choices_is_one_stop() {
        HotKeyManager.showSettingsSheet = true;
        tryVerify(() => place() && find(place(), item => item instanceof ChoiceGroup));
        const sheet = place();
        compare(radios(sheet).length, 3);
        const group = find(sheet, item => item instanceof ChoiceGroup && item.children[0].trailing !== "");
        const rows = Array.from(group.children).filter(item => item instanceof RadioChoice);
        radios(group)[0].forceActiveFocus();
        const steps = [[Qt.Key_Home, 0], [Qt.Key_Down, 1], [Qt.Key_Right, 2], [Qt.Key_Up, 1], [Qt.Key_Left, 0], [Qt.Key_Up, rows.length - 1], [Qt.Key_Down, 0], [Qt.Key_End, rows.length - 1]];
        for (const [key, index] of steps) {
            keyClick(key);
            verify(rows[index].activeFocus, "focus after " + key);
            compare(radios(group), [rows[index]]);
            compare(rows.findIndex(each => each.checked), index);
        }
        keyClick(Qt.Key_Tab);
        verify(!isInside(window.activeFocusItem, group));
        keyClick(Qt.Key_Backtab);
        verify(rows[rows.length - 1].activeFocus);
        HotKeyManager.resetToDefault();
    }

    function test_segments_are_one_stop() {
        SyncManager.showAccountSheet = true;
        tryVerify(() => place() && find(place(), item => item instanceof SegmentedControl));
        const control = find(place(), item => item instanceof SegmentedControl);
        compare(radios(control).length, 1);
        radios(control)[0].forceActiveFocus();
        for (const [key, index] of [[Qt.Key_Right, 1], [Qt.Key_Right, 0], [Qt.Key_Left, 1], [Qt.Key_Home, 0]]) {
            keyClick(key);
            compare(control.currentIndex, index);
            verify(radios(control)[0].activeFocus);
        }
    }

    function test_field_menu_data() {
        return [
            {tag: "right button", open: field => mouseClick(field, 30, 10, Qt.RightButton)},
            {tag: "Shift+F10", open: () => keyClick(Qt.Key_F10, Qt.ShiftModifier)},
            {tag: "menu key", open: () => keyClick(Qt.Key_Menu)}
        ];
    }

    function test_field_menu(row) {
        const field = find(window.contentItem, item => item instanceof SearchField);
        const choose = name => {
            row.open(field);
            tryVerify(() => named(window.contentItem, name)?.enabled);
            mouseClick(named(window.contentItem, name));
            tryVerify(() => !named(window.contentItem, name));
            verify(field.activeFocus);
        };
        tryVerify(() => field.activeFocus);
        for (const letter of "abc")
            keyClick(letter);
        choose("全选");
        compare(field.selectedText, "abc");
        choose("剪切");
        compare(field.text, "");
        choose("粘贴");
        choose("粘贴");
        compare(field.text, "abcabc");
        choose("撤销");
        compare(field.text, "abc");
        row.open(field);
        tryVerify(() => named(window.contentItem, "复制"));
        verify(!named(window.contentItem, "复制").enabled);
        keyClick(Qt.Key_Escape);
        tryVerify(() => field.activeFocus);
        keyClick("d");
        compare(field.text, "abcd");
    }

    function test_the_menu_edits_a_note() {
        const editor = noteEditor.createObject(window.contentItem, {stored: "old"});
        edited.target = editor;
        editor.forceActiveFocus();
        keyClick(Qt.Key_A, Qt.ControlModifier);
        keyClick(Qt.Key_F10, Qt.ShiftModifier);
        tryVerify(() => named(window.contentItem, "剪切")?.enabled);
        mouseClick(named(window.contentItem, "剪切"));
        tryVerify(() => window.activeFocusItem.text === "");
        find(window.contentItem, item => item instanceof SearchField).forceActiveFocus();
        compare(edited.count, 1);
        compare(edited.signalArguments[0][0], "");
        editor.destroy();
    }

    function test_a_failure_is_scrolled_into_view() {
        window.height = 400;
        HotKeyManager.showSettingsSheet = true;
        tryVerify(() => place() && find(place(), item => item instanceof ServerAddressRow));
        const row = find(place(), item => item instanceof ServerAddressRow);
        const area = find(place(), item => item instanceof ScrollArea);
        // Until the sections have their heights.
        wait(300);
        find(row, item => item instanceof TextInputField).forceActiveFocus();
        for (const letter of "ftp")
            keyClick(letter);
        const line = find(row, item => item instanceof MessageLine);
        tryVerify(() => line.visible && line.height > 0);
        tryVerify(() => line.mapToItem(area, 0, line.height).y <= area.height);
    }

    function test_badge_of_the_collapsed_sidebar_data() {
        return [
            {tag: "7", shown: "7"},
            {tag: "42", shown: "42"},
            {tag: "100", shown: "100"},
            {tag: "123456", shown: "99+"}
        ];
    }

    function test_badge_of_the_collapsed_sidebar(row) {
        const entry = sidebarTab.createObject(window.contentItem, {badge: row.tag});
        const badge = find(entry, item => item instanceof Badge);
        const label = find(badge, item => item.text === row.shown && item.font !== undefined);
        verify(label);
        compare(label.font.pixelSize, 11);
        verify(label.font.bold);
        compare(badge.width, Math.max(18, label.implicitWidth + 12));
        const place = badge.mapToItem(entry, 0, 0);
        verify(place.x >= 0 && place.y >= 0 && place.x + badge.width <= entry.width && place.y + badge.height <= entry.height);
        entry.destroy();
    }
}
