import QtQuick

/// Creates a file dialog when it is first shown. Tells if it cannot be shown: its QML module is not installed,
/// or neither the desktop nor Qt has one.
Loader {
    id: loader

    readonly property var dialog: item
    property bool wasShown: false
    property bool wasAccepted: false

    /// There is no dialog on the screen. Emitted for every attempt. `missing` is the package that is likely to be
    /// missing.
    signal failed(missing: string)

    /// `open` is called with the dialog, and must open it.
    function show(open: var): void {
        loader.active = true;
        loader.wasShown = false;
        loader.wasAccepted = false;
        noticing.restart();
        closing.restart();
        if (loader.item)
            open(loader.item);
    }

    active: false

    Connections {
        target: loader.item
        ignoreUnknownSignals: true

        function onVisibleChanged(): void {
            // One that closes itself at once has been refused by the desktop.
            loader.wasShown = loader.dialog.visible || (loader.wasShown && !closing.running);
        }
        function onAccepted(): void {
            loader.wasAccepted = true;
        }
    }
    // Nobody closes a dialog within this time.
    Timer {
        id: closing

        interval: 250
    }
    Timer {
        id: noticing

        interval: 500
        onTriggered: if (!loader.wasAccepted && !loader.wasShown)
            loader.failed(loader.status === Loader.Error ? "qml6-module-qtquick-dialogs" : "qml6-module-qtquick-controls")
    }
}
