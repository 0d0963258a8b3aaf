pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// A list of all records of the wordbook, with the selected record beside it. In a narrow window the record
/// replaces the list.
FocusScope {
    id: screen

    readonly property bool isNarrow: width < Theme.px(620)
    /// In a narrow window, whether the selected record is shown instead of the list.
    property bool showsDetail: false
    readonly property real narrowestPart: Theme.px(240)
    /// The width of the list while its edge is dragged; otherwise 0.
    property real draggedWidth: 0
    readonly property real listWidth: draggedWidth > 0 ? draggedWidth : Preferences.listWidth > 0 ? Preferences.listWidth : Math.round(Math.max(Theme.px(290), Math.min(Theme.px(400), width * 0.42)))
    readonly property bool isDetailLevel: isNarrow && showsDetail && words.selectedCount > 0

    function deleteSelected(): void {
        const message = words.deleteSelected();
        if (message === "")
            return;
        screen.showsDetail = false;
        list.forceActiveFocus();
        toast.show(message, "撤销", () => screen.undo());
    }

    function undo(): void {
        toast.hide();
        words.undoDeletion();
    }

    /// Lists the words with the tag that was chosen on a card.
    function showRequestedTag(): void {
        const tag = ContentView.takeRequestedTag();
        if (tag === "")
            return;
        search.clear();
        words.filter = 0;
        words.filterByTag(tag);
        screen.showList();
    }

    /// Moves the keyboard to the filter; false if it is there already.
    function takeKeyboard(): bool {
        const hadKeyboard = search.activeFocus;
        screen.showsDetail = false;
        search.forceActiveFocus();
        search.selectAll();
        return !hadKeyboard;
    }

    /// In a narrow window, shows the selected record instead of the list.
    function showDetail(): void {
        screen.showsDetail = true;
        if (screen.isDetailLevel)
            (detail.item as WordDetail).forceActiveFocus();
    }

    function showList(): void {
        screen.showsDetail = false;
        list.forceActiveFocus();
    }

    function openInDictionary(): void {
        if (list.currentItem)
            ContentView.handleExternalWordLookup((list.currentItem as WordRowItem).word);
    }

    focus: true
    Keys.onPressed: event => {
        if (event.matches(StandardKey.Find)) {
            screen.takeKeyboard();
        } else if (event.matches(StandardKey.Undo)) {
            screen.undo();
        } else if (event.key === Qt.Key_Escape && screen.isDetailLevel) {
            screen.showList();
        } else if (event.key === Qt.Key_Escape && search.length > 0) {
            search.clear();
        } else {
            return;
        }
        event.accepted = true;
    }

    Component.onCompleted: showRequestedTag()

    Connections {
        target: ContentView

        function onTagRequested(): void {
            screen.showRequestedTag();
        }
    }

    readonly property WordListModel model: WordListModel {
        id: words

        active: screen.visible
        searchText: search.text
        onListReplaced: list.positionViewAtBeginning()
        onRestored: list.showCurrent()
    }

    Item {
        id: listPane

        anchors.left: parent.left
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        width: screen.isNarrow ? parent.width : Math.max(screen.narrowestPart, Math.min(screen.listWidth, parent.width - screen.narrowestPart))
        visible: !screen.isDetailLevel

        Item {
            id: tools

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.margins: 2 * Theme.unit
            height: (tagBox.visible && !isWide ? 3 : 2) * (Theme.controlHeight + Theme.unit) - Theme.unit

            /// Whether all choices fit into one row.
            readonly property bool isWide: width >= 3 * 104 + 2 * Theme.unit
            readonly property int columns: tagBox.visible && isWide ? 3 : 2
            readonly property real boxWidth: (width - (columns - 1) * Theme.unit) / columns

            SearchField {
                id: search

                anchors.left: parent.left
                anchors.right: parent.right
                focus: true
                placeholderText: "筛选单词、释义或笔记"
                Keys.onDownPressed: list.enter()
                Keys.onReturnPressed: list.enter()
                Keys.onPressed: event => {
                    if (event.key === Qt.Key_PageUp || event.key === Qt.Key_PageDown) {
                        list.scrollPage(event.key === Qt.Key_PageUp ? -1 : 1);
                        event.accepted = true;
                    }
                }
            }
            ChoiceBox {
                id: filterBox

                anchors.left: parent.left
                y: Theme.controlHeight + Theme.unit
                width: tools.boxWidth
                name: "状态"
                model: words.filterNames
                currentIndex: words.filter
                onActivated: index => words.filter = index
            }
            ChoiceBox {
                x: filterBox.width + Theme.unit
                y: filterBox.y
                width: tools.boxWidth
                name: "排序"
                model: words.orderNames
                currentIndex: words.order
                onActivated: index => words.order = index
            }
            ChoiceBox {
                id: tagBox

                anchors.right: parent.right
                anchors.bottom: parent.bottom
                width: tools.isWide ? tools.boxWidth : parent.width
                visible: words.tagNames.length > 0
                name: "标签"
                model: words.tagNames
                currentIndex: words.tag
                onActivated: index => words.tag = index
            }
        }
        ListView {
            id: list

            function enter(): void {
                if (words.currentRow < 0)
                    words.choose(0, WordListModel.Replace);
                list.forceActiveFocus();
                list.showCurrent();
            }

            function move(row: int, extend: bool): void {
                words.choose(row, extend ? WordListModel.Extend : WordListModel.Replace);
                list.showCurrent();
            }

            function scrollPage(direction: int): void {
                const end = Math.max(0, list.contentHeight - list.height);
                list.contentY = list.originY + Math.max(0, Math.min(end, list.contentY - list.originY + direction * (list.height - 56)));
            }

            function showCurrent(): void {
                if (words.currentRow >= 0)
                    list.positionViewAtIndex(words.currentRow, ListView.Contain);
            }

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: tools.bottom
            anchors.topMargin: Theme.unit
            anchors.bottom: footer.top
            clip: true
            activeFocusOnTab: true
            reuseItems: true
            cacheBuffer: 224
            boundsBehavior: Flickable.StopAtBounds
            keyNavigationEnabled: false
            highlightFollowsCurrentItem: false
            model: words
            currentIndex: words.currentRow
            T.ScrollBar.vertical: ThinScrollBar {}
            Accessible.role: Accessible.List
            Accessible.name: "单词列表"

            delegate: WordRowItem {
                id: row

                ListView.onPooled: visible = false
                ListView.onReused: visible = true
                onPressed: modifiers => {
                    list.forceActiveFocus();
                    words.choose(row.index, modifiers & Qt.ShiftModifier ? WordListModel.Extend : modifiers & Qt.ControlModifier ? WordListModel.Toggle : WordListModel.Replace);
                    if (modifiers & (Qt.ShiftModifier | Qt.ControlModifier))
                        screen.showsDetail = false;
                    else
                        screen.showDetail();
                }
                onDoubleClicked: screen.openInDictionary()
            }

            Keys.onPressed: event => {
                const page = Math.max(1, Math.floor(list.height / Theme.px(56)) - 1);
                const extend = (event.modifiers & Qt.ShiftModifier) !== 0;
                if (event.matches(StandardKey.SelectAll))
                    words.selectAll();
                else if (event.key === Qt.Key_Delete || event.key === Qt.Key_Backspace)
                    screen.deleteSelected();
                else if (event.key === Qt.Key_Up && words.currentRow === 0 && !extend)
                    search.forceActiveFocus();
                else if (event.key === Qt.Key_Up)
                    list.move(words.currentRow - 1, extend);
                else if (event.key === Qt.Key_Down)
                    list.move(words.currentRow + 1, extend);
                else if (event.key === Qt.Key_PageUp)
                    list.move(words.currentRow - page, extend);
                else if (event.key === Qt.Key_PageDown)
                    list.move(words.currentRow + page, extend);
                else if (event.key === Qt.Key_Home)
                    list.move(0, extend);
                else if (event.key === Qt.Key_End)
                    list.move(words.count - 1, extend);
                else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
                    screen.isNarrow ? screen.showDetail() : screen.openInDictionary();
                else
                    return;
                event.accepted = true;
            }

            WordListMenu {
                words: words
                onLookUpRequested: screen.openInDictionary()
                onDeleteRequested: screen.deleteSelected()
            }
            EmptyHint {
                anchors.centerIn: parent
                width: parent.width - 6 * Theme.unit
                visible: words.count === 0 && !words.isLoading
                symbol: words.totalCount === 0 ? "text.book.closed" : "magnifyingglass"
                title: words.totalCount === 0 ? "生词本还是空的" : "没有符合条件的单词"
                text: words.totalCount === 0 ? "查过的单词会自动收录在这里，并安排复习。" : "换一个关键词，或选择其他状态或标签。"
                action: words.totalCount === 0 ? "去查词" : "显示全部"
                onTaken: {
                    if (words.totalCount === 0) {
                        ContentView.postFocusSearchInput();
                    } else {
                        search.clear();
                        words.filter = 0;
                        words.tag = 0;
                        list.forceActiveFocus();
                    }
                }
            }
        }
        Item {
            id: footer

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            height: Theme.px(32)

            Separator {
                anchors.left: parent.left
                anchors.right: parent.right
            }
            ThemedText {
                anchors.left: parent.left
                anchors.leftMargin: 2.5 * Theme.unit
                anchors.verticalCenter: parent.verticalCenter
                role: ThemedText.Small
                text: words.selectedCount > 1 ? "已选择 " + words.selectedCount + " 个，共 " + words.countText : words.countText
            }
            IconButton {
                anchors.right: remove.left
                anchors.verticalCenter: parent.verticalCenter
                width: Theme.px(26)
                height: Theme.px(26)
                iconSize: Theme.px(16)
                visible: words.selectedCount > 0
                symbol: "rectangle.stack"
                text: "练习所选单词"
                onClicked: ContentView.practice(words.selectedIds())
            }
            IconButton {
                id: remove

                anchors.right: parent.right
                anchors.rightMargin: 1.5 * Theme.unit
                anchors.verticalCenter: parent.verticalCenter
                width: Theme.px(26)
                height: Theme.px(26)
                iconSize: Theme.px(16)
                visible: words.selectedCount > 0
                symbol: "trash"
                text: "删除所选单词"
                onClicked: screen.deleteSelected()
            }
        }
    }
    Separator {
        anchors.left: listPane.right
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        visible: !screen.isNarrow
    }
    MouseArea {
        id: splitter

        property real start: 0

        anchors.top: parent.top
        anchors.bottom: parent.bottom
        x: listPane.width - width / 2
        width: Theme.unit
        visible: !screen.isNarrow
        cursorShape: Qt.SplitHCursor
        onPressed: event => start = event.x
        onPositionChanged: event => screen.draggedWidth = Math.max(screen.narrowestPart, Math.min(x + width / 2 + event.x - start, screen.width - screen.narrowestPart))
        onReleased: {
            if (screen.draggedWidth > 0)
                Preferences.listWidth = screen.draggedWidth;
            screen.draggedWidth = 0;
        }
        onCanceled: screen.draggedWidth = 0
        onDoubleClicked: Preferences.listWidth = 0
    }
    Item {
        id: detailPane

        anchors.left: screen.isNarrow ? parent.left : listPane.right
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.leftMargin: 2 * Theme.unit
        anchors.rightMargin: Theme.px(4)
        visible: !screen.isNarrow || screen.isDetailLevel

        PlainButton {
            id: back

            anchors.left: parent.left
            anchors.top: parent.top
            anchors.topMargin: Theme.unit
            visible: screen.isNarrow
            symbol: "chevron.left"
            ground: "transparent"
            tint: Theme.accent
            text: "生词本"
            onClicked: screen.showList()
        }
        Loader {
            id: detail

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: back.visible ? back.bottom : parent.top
            anchors.topMargin: back.visible ? Theme.unit : 2 * Theme.unit
            anchors.bottom: parent.bottom
            visible: words.selectedId !== ""
            // Made step by step after the list, but at once if it is needed before it is complete.
            asynchronous: words.selectedId === ""
            source: "WordDetail.qml"
            onLoaded: {
                const shown = item as WordDetail;
                shown.focus = true;
                shown.toast = toast;
                shown.wordId = Qt.binding(() => words.selectedId);
                shown.deleteRequested.connect(screen.deleteSelected);
            }
        }
        EmptyHint {
            anchors.centerIn: parent
            width: parent.width - 4 * Theme.unit
            visible: words.selectedId === "" && words.totalCount > 0
            symbol: words.selectedCount > 1 ? "rectangle.stack" : "text.book.closed"
            title: words.selectedCount > 1 ? "已选择 " + words.selectedCount + " 个单词" : "选择一个单词"
            text: words.selectedCount > 1 ? "练习不影响复习安排。按 Delete 删除，删除后可以撤销。" : "它的释义、笔记和复习历史会显示在这里。"
            action: words.selectedCount > 1 ? "删除" : ""
            otherAction: words.selectedCount > 1 ? "练习" : ""
            onTaken: screen.deleteSelected()
            onOtherTaken: ContentView.practice(words.selectedIds())
        }
    }
    Toast {
        id: toast
    }
}
