import QtQuick
import Lexiquill

/// Makes the screen of a tab when it is first selected, and keeps it.
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
    // The first screen belongs to the first frame; the others may take their time.
    asynchronous: tab !== ContentView.TabItem.Dictionary
    onIsSelectedChanged: if (isSelected)
        wasSelected = true
    Component.onCompleted: if (isSelected)
        wasSelected = true
}
