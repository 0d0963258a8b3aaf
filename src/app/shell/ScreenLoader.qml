import QtQuick
import Lexiquill

/// Loads the screen of a tab when the tab is first selected, and keeps it.
Loader {
    id: loader

    required property int tab
    /// The screen's file, relative to the folder of the screens.
    required property string screen
    readonly property bool isSelected: ContentView.selectedTab === tab

    property bool wasSelected: false

    anchors.fill: parent
    visible: isSelected
    focus: isSelected
    active: wasSelected
    source: Qt.resolvedUrl("../" + screen)
    // The first screen must be part of the first frame; the others may load later.
    asynchronous: tab !== ContentView.TabItem.Dictionary
    onIsSelectedChanged: if (isSelected)
        wasSelected = true
    Component.onCompleted: if (isSelected)
        wasSelected = true
}
