import QtQuick
import Lexiquill

/// Adds the files that are dropped on it, and tells so while they are above it.
DropArea {
    id: area

    readonly property bool isWanted: containsDrag

    anchors.fill: parent

    keys: ["text/uri-list"]
    onEntered: drag => {
        drag.accepted = drag.hasUrls && drag.urls.some(url => `${url}`.startsWith("file:"));
        if (drag.accepted)
            drag.action = Qt.CopyAction;
    }
    onDropped: drop => {
        drop.accept(Qt.CopyAction);
        DictionaryImports.open(drop.urls, true);
    }

    Rectangle {
        anchors.fill: parent
        visible: area.isWanted
        color: Theme.isDark ? Qt.rgba(0.12, 0.12, 0.13, 0.86) : Qt.rgba(0.96, 0.96, 0.97, 0.88)

        Rectangle {
            anchors.fill: parent
            anchors.margins: 2 * Theme.unit
            radius: Theme.radius
            color: "transparent"
            border.width: 2
            border.color: Theme.accent
        }
        Column {
            anchors.centerIn: parent
            spacing: 2 * Theme.unit

            SymbolIcon {
                anchors.horizontalCenter: parent.horizontalCenter
                width: Theme.px(48)
                height: Theme.px(48)
                symbol: "books.vertical.fill"
                color: Theme.accent
            }
            ThemedText {
                anchors.horizontalCenter: parent.horizontalCenter
                role: ThemedText.Heading
                // Hidden texts load their fonts, too.
                font.weight: area.isWanted ? Font.DemiBold : Font.Normal
                text: "松开以添加词典"
                Accessible.role: Accessible.AlertMessage
            }
        }
    }
}
