pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// Creates a sheet when it is shown and destroys it when it is closed.
Loader {
    id: loader

    /// The sheet's file, relative to the folder of the screens.
    required property string sheet
    required property bool shown

    /// The user wants to close the sheet.
    signal dismissed

    active: shown
    source: Qt.resolvedUrl("../" + sheet)
    onLoaded: (item as Sheet)?.open()

    Connections {
        target: loader.item
        ignoreUnknownSignals: true

        function onDismissed(): void {
            loader.dismissed();
        }
    }
}
