pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// Opens a menu for the item that it is put into: with the right mouse button, the menu key, or Shift+F10 while the item
/// has the keyboard. The menu is created when it is first opened.
Item {
    id: context

    required property Component menu
    /// The menu; null before it is first opened.
    property StyledMenu opened: null
    /// Where the keys open the menu, in the item's coordinates.
    property point place: Qt.point(Theme.unit, parent ? parent.height : 0)

    /// The menu is about to open at this point of the item.
    signal aboutToOpen(x: real, y: real)

    function open(x: real, y: real): void {
        if (!context.opened)
            context.opened = context.menu.createObject(context) as StyledMenu;
        context.aboutToOpen(x, y);
        context.opened.popup(context.parent, x, y);
    }

    anchors.fill: parent

    TapHandler {
        acceptedButtons: Qt.RightButton
        gesturePolicy: TapHandler.WithinBounds
        onPressedChanged: if (pressed)
            context.open(point.position.x, point.position.y)
    }
    Shortcut {
        sequences: ["Menu", "Shift+F10"]
        enabled: context.parent?.activeFocus ?? false
        onActivated: context.open(context.place.x, context.place.y)
    }
}
