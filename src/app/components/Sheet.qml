import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// A modal sheet over the dimmed window. Escape and the close button emit `dismissed`.
T.Dialog {
    id: sheet

    property bool closable: true
    /// Closing would end something: Escape and the close button then emit `closeAsked` instead.
    property bool asksBeforeClosing: false
    default property alias body: inner.data

    /// The user wants to close the sheet. The owner must hide it.
    signal dismissed
    signal closeAsked

    function requestClose(): void {
        if (sheet.asksBeforeClosing)
            sheet.closeAsked();
        else
            sheet.dismissed();
    }

    /// Scrolls as little as needed to show a part of the body.
    function reveal(part: Item): void {
        area.reveal(part);
    }

    /// Scrolls to a part of the body, so that it begins at the top if there is enough below it.
    function scrollTo(part: Item): void {
        const top = part.mapToItem(inner, 0, 0).y;
        area.contentY = Math.max(0, Math.min(top, area.contentHeight - area.height));
    }

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(Theme.px(480), parent ? parent.width - 4 * Theme.unit : Theme.px(480))
    height: Math.min(implicitHeight, parent ? parent.height - 4 * Theme.unit : implicitHeight)
    implicitHeight: header.height + inner.childrenRect.height + (title === "" ? 6 : 4) * Theme.unit
    padding: 0
    modal: true
    focus: true
    closePolicy: T.Popup.NoAutoClose
    T.Overlay.modal: Rectangle {
        color: Theme.dim
    }

    background: Rectangle {
        radius: Theme.radius
        color: Theme.sheet
        border.width: 1
        border.color: Theme.separator
    }
    contentItem: FocusScope {
        focus: true
        Keys.onEscapePressed: if (sheet.closable)
            sheet.requestClose()
        Keys.onUpPressed: area.contentY = Math.max(0, area.contentY - 5 * Theme.unit)
        Keys.onDownPressed: area.contentY = Math.max(0, Math.min(area.contentHeight - area.height, area.contentY + 5 * Theme.unit))

        Item {
            id: header

            width: parent.width
            height: sheet.title === "" ? 0 : 6 * Theme.unit

            ThemedText {
                anchors.left: parent.left
                anchors.leftMargin: 3 * Theme.unit
                anchors.right: close.left
                anchors.verticalCenter: parent.verticalCenter
                anchors.verticalCenterOffset: Theme.px(4)
                role: ThemedText.Heading
                text: sheet.title
                elide: Text.ElideRight
            }
            IconButton {
                id: close

                anchors.right: parent.right
                anchors.rightMargin: 2 * Theme.unit
                anchors.verticalCenter: parent.verticalCenter
                anchors.verticalCenterOffset: Theme.px(4)
                visible: sheet.title !== "" && sheet.closable
                symbol: "xmark"
                iconSize: Theme.px(15)
                text: "关闭"
                onClicked: sheet.requestClose()
            }
        }
        ScrollArea {
            id: area

            anchors.top: header.bottom
            anchors.topMargin: sheet.title === "" ? 3 * Theme.unit : Theme.unit
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 3 * Theme.unit
            anchors.left: parent.left
            anchors.right: parent.right
            contentHeight: inner.childrenRect.height

            Item {
                id: inner

                x: 3 * Theme.unit
                width: parent.width - 6 * Theme.unit
                height: childrenRect.height
            }
        }
    }
}
