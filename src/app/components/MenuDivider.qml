import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// A line between groups of commands in a menu.
T.MenuSeparator {
    verticalPadding: 4
    implicitHeight: 9
    contentItem: Separator {}
}
