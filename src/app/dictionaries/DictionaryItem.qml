import QtQuick
import Lexiquill

/// One dictionary of the list: drag handle, texts, switch and remove button.
FocusScope {
    id: row

    required property int index
    required property string path
    required property string name
    required property string about
    required property string detail
    required property string problem
    required property bool isOn
    required property bool isImported
    /// The number of dictionaries in the list.
    required property int count
    readonly property bool isBroken: problem !== ""
    readonly property alias isDragged: handle.pressed

    /// The user moves the row; `isFinal` when the order is meant to stay.
    signal movedTo(target: int, isFinal: bool)
    /// The pointer drags the row; `y` is in the coordinates of its parent.
    signal draggedTo(y: real)
    signal dropped
    signal switched(isOn: bool)
    signal removalRequested

    function moveBy(step: int): void {
        const target = row.index + step;
        if (target >= 0 && target < row.count)
            row.movedTo(target, true);
    }

    implicitHeight: texts.height + 2 * Theme.unit
    activeFocusOnTab: true
    Accessible.role: Accessible.ListItem
    Accessible.name: "第 " + (index + 1) + " 部，共 " + count + " 部：" + name + (isBroken ? "，无法使用" : isOn ? "" : "，已停用")
    Accessible.description: (isBroken ? problem : detail) + "。按 Ctrl 加上下方向键调整顺序"
    Accessible.focusable: true
    Accessible.focused: focusPlace.activeFocus
    Keys.onPressed: event => {
        const isMove = (event.modifiers & (Qt.ControlModifier | Qt.AltModifier)) !== 0;
        if (event.key === Qt.Key_Up && isMove)
            row.moveBy(-1);
        else if (event.key === Qt.Key_Down && isMove)
            row.moveBy(1);
        else if (event.key === Qt.Key_Delete && row.isImported)
            row.removalRequested();
        else
            return;
        event.accepted = true;
    }

    Rectangle {
        anchors.fill: parent
        radius: Theme.controlRadius
        color: row.isDragged ? Theme.pressed : area.hovered ? Theme.hover : "transparent"

        FocusRing {
            shown: focusPlace.activeFocus
        }
    }
    HoverHandler {
        id: area
    }
    Item {
        id: focusPlace

        anchors.fill: parent
        focus: true
    }
    MouseArea {
        id: handle

        width: 4 * Theme.unit
        height: parent.height
        enabled: row.count > 1
        preventStealing: true
        cursorShape: pressed ? Qt.ClosedHandCursor : Qt.OpenHandCursor
        onPressed: focusPlace.forceActiveFocus(Qt.MouseFocusReason)
        onPositionChanged: mouse => row.draggedTo(handle.mapToItem(row.parent, mouse.x, mouse.y).y)
        onReleased: row.dropped()
        onCanceled: row.dropped()

        SymbolIcon {
            anchors.centerIn: parent
            width: Theme.px(16)
            height: Theme.px(16)
            symbol: "line.3.horizontal"
            color: Theme.tertiaryText
            opacity: row.count > 1 ? 1 : 0.3
        }
    }
    Column {
        id: texts

        anchors.left: handle.right
        anchors.leftMargin: Theme.unit
        anchors.right: controls.left
        anchors.rightMargin: Theme.unit
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.px(2)
        opacity: row.isOn && !row.isBroken ? 1 : 0.6

        ThemedText {
            width: parent.width
            text: row.name
            elide: Text.ElideRight
            Accessible.ignored: true
        }
        ThemedText {
            width: parent.width
            role: ThemedText.Caption
            text: row.detail
            elide: Text.ElideMiddle
            Accessible.ignored: true
        }
        ThemedText {
            width: parent.width
            visible: text !== ""
            role: ThemedText.Caption
            text: row.isBroken ? row.problem : row.about
            color: row.isBroken ? Theme.onTint(Theme.red) : Theme.tertiaryText
            elide: Text.ElideRight

            HelpText {
                text: row.about
                shown: aboutArea.hovered && !row.isBroken
            }
            HoverHandler {
                id: aboutArea
            }
        }
    }
    Row {
        id: controls

        anchors.right: parent.right
        anchors.rightMargin: Theme.unit
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.unit

        IconButton {
            visible: row.isImported
            symbol: "trash"
            iconSize: Theme.px(16)
            text: "移除 " + row.name
            help: "移除"
            onClicked: row.removalRequested()
        }
        Toggle {
            id: toggle

            anchors.verticalCenter: parent.verticalCenter
            Accessible.name: "启用 " + row.name
            enabled: !row.isBroken
            checked: row.isOn && !row.isBroken
            onToggled: row.switched(checked)
        }
    }
}
