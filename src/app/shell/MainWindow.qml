import QtQuick
import QtQuick.Window
import Lexiquill

/// The main window: the sidebar beside the selected screen, and the sheets above them.
Window {
    id: window

    readonly property bool isNarrow: width < Theme.px(720)
    /// True while the user waits for the result of an update check.
    property bool awaitsUpdateCheck: false

    function checkForUpdates(): void {
        if (!UpdateManager.hasServer) {
            toast.show("尚未设置服务器，无法检查更新", "设置服务器…", () => window.showServerSettings());
            return;
        }
        if (UpdatePresenter.present())
            return;
        window.awaitsUpdateCheck = !UpdateManager.isChecking;
        UpdateManager.checkForUpdates(true);
    }

    function showServerSettings(): void {
        SyncManager.showAccountSheet = false;
        HotKeyManager.showSettingsSheet = true;
        (preferences.item as PreferencesSheet).showServers();
    }

    /// Shows the result of the check. A newer release has its own sheet instead.
    function tellOfUpdateCheck(): void {
        window.awaitsUpdateCheck = false;
        const message = UpdateManager.errorMessage || UpdateManager.statusMessage;
        if (message && !UpdateManager.showUpdateSheet)
            toast.show(message, "", null);
    }

    /// Tells what the other source does, and how to go back.
    function tellOfSource(): void {
        const mode = DictionaryService.currentMode;
        const message = mode === Lexiquill.YoudaoOnline ? "先查在线词典，查不到再查本地词典" : "只查本地词典，查词时不联网";
        toast.show("已切换到" + ContentView.sourceTitle(mode) + "：" + message, "撤销", () => {
            DictionaryService.currentMode = mode === Lexiquill.YoudaoOnline ? Lexiquill.AppleOffline : Lexiquill.YoudaoOnline;
        });
    }

    function zoom(percent: int): void {
        Preferences.zoomPercent = percent;
        toast.show("显示大小 " + Preferences.zoomPercent + "%", "", null);
    }

    title: "Lexiquill"
    width: 880
    height: 600
    minimumWidth: 600
    minimumHeight: 400
    color: Theme.ground
    onVisibleChanged: if (visible)
        ContentView.appear()
    Component.onCompleted: UpdatePresenter.watch(window)
    // When a sheet or menu closes, no item has focus. Return it to the item that had it before.
    onActiveFocusItemChanged: if (active && (activeFocusItem === null || activeFocusItem === contentItem))
        content.forceActiveFocus()

    FocusScope {
        id: content

        anchors.fill: parent
        focus: true
        // No item has used it, so there is nothing else to close.
        Keys.onEscapePressed: event => {
            event.accepted = ContentView.selectedTab !== ContentView.TabItem.Dictionary;
            ContentView.selectedTab = ContentView.TabItem.Dictionary;
        }

        Sidebar {
            id: sidebar

            anchors.left: parent.left
            anchors.top: parent.top
            anchors.bottom: parent.bottom
            isCollapsed: window.isNarrow
            onUpdateCheckRequested: window.checkForUpdates()
            onCloseRequested: window.close()
            onSourceSwitched: window.tellOfSource()
        }
        Item {
            id: detail

            anchors.left: sidebar.right
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.bottom: parent.bottom
            // A message covers nothing.
            anchors.bottomMargin: toast.reservedHeight

            ScreenLoader {
                tab: ContentView.TabItem.Dictionary
                screen: "search/SearchScreen.qml"
            }
            ScreenLoader {
                tab: ContentView.TabItem.WeeklyReview
                screen: "review/WeeklyReviewScreen.qml"
            }
            ScreenLoader {
                id: wordbook

                tab: ContentView.TabItem.History
                screen: "wordbook/WordbookScreen.qml"
            }
            ScreenLoader {
                tab: ContentView.TabItem.Statistics
                screen: "statistics/StatisticsScreen.qml"
            }
        }
        Toast {
            id: toast

            objectName: "windowToast"
        }
    }

    FocusGuard {
        window: window
        content: content
    }
    DictionaryDropArea {
        // Above the sheets while something is dragged; otherwise it would keep the mouse wheel from them.
        z: isWanted ? 2000000 : -1
    }

    Connections {
        target: UpdateManager

        // The message is set after this signal.
        function onIsCheckingChanged(): void {
            if (window.awaitsUpdateCheck && !UpdateManager.isChecking)
                outcome.start();
        }
    }
    Timer {
        id: outcome

        interval: 0
        onTriggered: window.tellOfUpdateCheck()
    }

    SheetLoader {
        id: preferences

        sheet: "preferences/PreferencesSheet.qml"
        shown: HotKeyManager.showSettingsSheet
        onDismissed: HotKeyManager.showSettingsSheet = false
    }
    SheetLoader {
        id: account

        sheet: "account/AccountSheet.qml"
        shown: SyncManager.showAccountSheet
        onDismissed: SyncManager.showAccountSheet = false
    }
    SheetLoader {
        sheet: "update/UpdateSheet.qml"
        shown: UpdatePresenter.isPresented
        onDismissed: UpdateManager.showUpdateSheet = false
    }
    Connections {
        target: account.item as AccountSheet

        function onServerWanted(): void {
            window.showServerSettings();
        }
    }
    SheetLoader {
        sheet: "about/AboutSheet.qml"
        shown: ContentView.showAbout
        onDismissed: ContentView.showAbout = false
    }
    SheetLoader {
        id: imports

        sheet: "dictionaries/ImportSheet.qml"
        shown: DictionaryImports.showSheet
        onDismissed: DictionaryImports.dismiss()
    }
    Connections {
        target: imports.item as ImportSheet

        function onManaged(): void {
            DictionaryImports.dismiss();
            HotKeyManager.showSettingsSheet = true;
            (preferences.item as PreferencesSheet).showDictionaries();
        }
    }
    SheetLoader {
        sheet: "shell/SpotlightAlert.qml"
        shown: ContentView.showSpotlightAlert
        onDismissed: ContentView.showSpotlightAlert = false
    }

    Shortcut {
        sequence: "Ctrl+U"
        onActivated: window.checkForUpdates()
    }
    Shortcut {
        sequence: "Ctrl+,"
        onActivated: HotKeyManager.showSettingsSheet = true
    }
    Shortcut {
        sequence: "Ctrl+W"
        // Also while a sheet is open.
        context: Qt.ApplicationShortcut
        onActivated: window.close()
    }
    Shortcut {
        sequence: "Ctrl+Q"
        context: Qt.ApplicationShortcut
        onActivated: AppDelegate.terminate()
    }
    Shortcut {
        sequence: "F10"
        onActivated: sidebar.openMenu()
    }
    Shortcut {
        // The filter of the wordbook comes first there.
        sequence: "Ctrl+F"
        onActivated: if (ContentView.selectedTab !== ContentView.TabItem.History || !(wordbook.item as WordbookScreen)?.takeKeyboard())
            ContentView.postFocusSearchInput()
    }
    Shortcut {
        // Text fields take it themselves.
        sequence: "/"
        onActivated: ContentView.postFocusSearchInput()
    }
    Shortcut {
        sequences: ["Ctrl++", "Ctrl+="]
        onActivated: window.zoom(Preferences.zoomPercent + 10)
    }
    Shortcut {
        sequence: "Ctrl+-"
        onActivated: window.zoom(Preferences.zoomPercent - 10)
    }
    Shortcut {
        sequence: "Ctrl+0"
        onActivated: window.zoom(100)
    }
    Shortcut {
        sequence: "Ctrl+1"
        onActivated: ContentView.postFocusSearchInput()
    }
    Shortcut {
        sequence: "Ctrl+2"
        onActivated: ContentView.selectedTab = ContentView.TabItem.WeeklyReview
    }
    Shortcut {
        sequence: "Ctrl+3"
        onActivated: ContentView.selectedTab = ContentView.TabItem.History
    }
    Shortcut {
        sequence: "Ctrl+4"
        onActivated: ContentView.selectedTab = ContentView.TabItem.Statistics
    }
}
