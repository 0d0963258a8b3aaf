import QtQuick
import QtQuick.Controls

/// A minimal window for comparison: a field, a button and a list.
ApplicationWindow {
    visible: true
    width: 880
    height: 600
    title: "Words"

    Row {
        id: bar

        TextField {
            placeholderText: "Word"
        }
        Button {
            text: "Add"
        }
    }
    ListView {
        anchors.fill: parent
        anchors.topMargin: bar.height
        model: 100
        delegate: ItemDelegate {
            required property int index

            width: ListView.view.width
            text: "Word " + index
        }
    }
}
