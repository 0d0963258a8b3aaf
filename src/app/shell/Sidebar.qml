pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// The four tabs, and below them the commands for the whole window.
Rectangle {
    id: sidebar

    /// Shows symbols only.
    property bool isCollapsed: false
    /// Created when it is first opened.
    property ApplicationMenu menu: null

    signal updateCheckRequested
    signal closeRequested
    /// The user has switched the dictionary source.
    signal sourceSwitched

    function openMenu(): void {
        if (!sidebar.menu)
            sidebar.menu = menuComponent.createObject(sidebar) as ApplicationMenu;
        sidebar.menu.popup(menuRow, menuRow.width, menuRow.height - sidebar.menu.implicitHeight);
    }

    width: isCollapsed ? Theme.px(56) : Theme.px(200)
    color: Theme.sidebarGround

    // All rows can be reached in a low window, too.
    ScrollArea {
        id: area

        anchors.fill: parent
        contentHeight: Math.max(height, tabs.height + commands.height + 5 * Theme.unit)

        Column {
            id: tabs

            x: Theme.unit
            y: 2 * Theme.unit
            width: area.contentWidth - 2 * Theme.unit
            spacing: Theme.px(2)
            Accessible.role: Accessible.PageTabList
            Accessible.name: "页面"

            Repeater {
                model: [ContentView.TabItem.Dictionary, ContentView.TabItem.WeeklyReview, ContentView.TabItem.History, ContentView.TabItem.Statistics]

                SidebarTab {
                    required property int modelData

                    width: parent?.width ?? 0
                    isCollapsed: sidebar.isCollapsed
                    text: ContentView.title(modelData)
                    symbol: ContentView.iconName(modelData)
                    checked: ContentView.selectedTab === modelData
                    badge: modelData === ContentView.TabItem.WeeklyReview && ContentView.dueCount > 0 ? ContentView.dueCount.toString() : ""
                    onClicked: ContentView.selectedTab = modelData
                }
            }
        }
        Column {
            id: commands

            x: Theme.unit
            y: area.contentHeight - height - Theme.unit
            width: area.contentWidth - 2 * Theme.unit
            spacing: Theme.px(2)

            SidebarRow {
                width: parent.width
                isCollapsed: sidebar.isCollapsed
                symbol: SyncManager.isLoggedIn ? "person.crop.circle.fill.badge.checkmark" : "person.crop.circle"
                text: SyncManager.isLoggedIn ? SyncManager.currentUser : "多端同步"
                help: ContentView.accountHelp
                onClicked: SyncManager.showAccountSheet = true
            }
            SidebarRow {
                width: parent.width
                isCollapsed: sidebar.isCollapsed
                symbol: ContentView.sourceIconName(DictionaryService.currentMode)
                text: ContentView.sourceTitle(DictionaryService.currentMode)
                help: "词典数据源切换：有道在线词典 (默认，带发音与例句) / 苹果本地离线词典"
                onClicked: {
                    DictionaryService.currentMode = DictionaryService.currentMode === Lexiquill.YoudaoOnline ? Lexiquill.AppleOffline : Lexiquill.YoudaoOnline;
                    sidebar.sourceSwitched();
                }
            }
            SidebarRow {
                width: parent.width
                isCollapsed: sidebar.isCollapsed
                isBusy: ContentView.isIndexingSpotlight
                symbol: "sparkle.magnifyingglass"
                text: "同步 Spotlight"
                help: "将当前生词本及核心考点词库建立系统 Spotlight 索引"
                enabled: !ContentView.isIndexingSpotlight
                onClicked: ContentView.syncToSpotlight()
            }
            SidebarRow {
                width: parent.width
                isCollapsed: sidebar.isCollapsed
                symbol: "arrow.down.circle"
                isBusy: UpdateManager.isChecking || UpdateManager.isDownloading
                mark: UpdatePresenter.isWaiting ? "有新版本" : ""
                text: "检查更新..."
                help: ContentView.updateHelp
                onClicked: sidebar.updateCheckRequested()
            }
            SidebarRow {
                width: parent.width
                isCollapsed: sidebar.isCollapsed
                symbol: "keyboard"
                isStruckOut: HotKeyManager.hasFailed
                text: "全局快捷键: " + HotKeyManager.currentShortcut.symbolString + " (点击自定义)"
                help: isStruckOut ? "快捷键未生效，点击查看" : ""
                isTall: !isCollapsed
                onClicked: HotKeyManager.showSettingsSheet = true
            }
            SidebarRow {
                id: menuRow

                width: parent.width
                isCollapsed: sidebar.isCollapsed
                isOpen: sidebar.menu?.visible ?? false
                symbol: "line.3.horizontal"
                text: "菜单"
                onClicked: sidebar.openMenu()
            }
        }
    }

    Component {
        id: menuComponent

        ApplicationMenu {
            onUpdateCheckRequested: sidebar.updateCheckRequested()
            onCloseRequested: sidebar.closeRequested()
        }
    }
}
