import QtQuick

/// Notices that the keyboard is in an item that has been hidden, where the user could not see it.
Item {
    id: watcher

    /// The scope whose items are watched, while it is visible and has the keyboard.
    required property Item scope

    readonly property Item focusItem: scope.Window.activeFocusItem
    readonly property bool isLost: scope.visible && scope.activeFocus && focusItem !== null && (!focusItem.visible || focusItem === scope)

    /// The keyboard needs another place.
    signal lost

    // Later, because whatever hides the item may choose the place itself.
    Timer {
        interval: 0
        running: watcher.isLost
        onTriggered: watcher.lost()
    }
}
