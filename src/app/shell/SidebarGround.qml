import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// The background of a row of the sidebar.
Rectangle {
    id: ground

    required property T.AbstractButton row
    /// A menu that belongs to the row is open.
    property bool isOpen: false

    radius: Theme.controlRadius
    color: row.checked ? Theme.selected : row.down || isOpen ? Theme.pressed : row.hovered ? Theme.hover : "transparent"

    FocusRing {
        shown: ground.row.visualFocus
    }
}
