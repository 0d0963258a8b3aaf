import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// A button for a secondary action.
T.Button {
    id: control

    /// A symbol before the text; empty for none.
    property string symbol: ""
    /// Colour of the text and the symbol.
    property color tint: Theme.text
    property color ground: Theme.fill
    /// Background colours when hovered and when pressed.
    property color hoveredGround: isTinted ? Qt.rgba(ground.r, ground.g, ground.b, ground.a + 0.06) : Theme.isDark ? "#46464B" : "#DCDCE1"
    property color pressedGround: isTinted ? Qt.rgba(ground.r, ground.g, ground.b, ground.a + 0.1) : Theme.isDark ? "#55555A" : "#CFCFD5"
    /// The opaque colour below the button.
    property color surface: Theme.card
    readonly property bool isTinted: ground.a < 1
    /// The tone of `tint` that is readable on the button in each of its states.
    readonly property color foreground: Contrast.readable(tint, Qt.tint(surface, pressedGround), 4.5)

    implicitWidth: Math.max(implicitContentWidth + leftPadding + rightPadding, Theme.controlHeight)
    implicitHeight: Math.max(implicitContentHeight + topPadding + bottomPadding, Theme.controlHeight)
    horizontalPadding: 2 * Theme.unit
    verticalPadding: Theme.px(5)
    font.pixelSize: Theme.bodySize
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.45
    Accessible.name: text
    Accessible.onPressAction: control.clicked()
    Keys.onReturnPressed: control.clicked()
    Keys.onEnterPressed: control.clicked()

    contentItem: Item {
        // Not the implicit width of the row, which shrinks when the text is elided.
        implicitWidth: label.implicitWidth + (control.symbol === "" ? 0 : Theme.px(16) + row.spacing)
        implicitHeight: row.implicitHeight

        Row {
            id: row

            anchors.centerIn: parent
            spacing: Theme.px(6)

            SymbolIcon {
                anchors.verticalCenter: parent.verticalCenter
                width: Theme.px(16)
                height: Theme.px(16)
                visible: control.symbol !== ""
                symbol: control.symbol
                color: control.foreground
            }
            Text {
                id: label

                anchors.verticalCenter: parent.verticalCenter
                visible: text !== ""
                width: Math.min(implicitWidth, Math.max(0, control.availableWidth - (control.symbol === "" ? 0 : Theme.px(22))))
                text: control.text
                font.pixelSize: control.font.pixelSize
                font.weight: control.font.weight
                color: control.foreground
                elide: Text.ElideRight
                textFormat: Text.PlainText
                renderType: Text.NativeRendering
            }
        }
    }
    background: Rectangle {
        radius: Theme.controlRadius
        color: control.down ? control.pressedGround : control.hovered ? control.hoveredGround : control.ground

        FocusRing {
            shown: control.visualFocus
        }
    }
}
