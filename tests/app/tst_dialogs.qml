import QtQuick
import QtTest
import Lexiquill

/// A file dialog that does not appear is reported, at every attempt.
ScreenTest {
    id: tests

    name: "Dialogs"

    component FakeDialog: QtObject {
        property bool visible: false

        signal accepted
    }

    DialogLoader {
        id: loader

        sourceComponent: FakeDialog {}
    }
    DialogLoader {
        id: missing

        source: "NoSuchDialog.qml"
    }
    SignalSpy {
        id: failures

        signalName: "failed"
    }

    function test_dialogs_data() {
        return [
            {
                tag: "appears",
                open: dialog => dialog.visible = true,
                failures: 0
            },
            {
                tag: "does not appear",
                open: () => {},
                failures: 1
            },
            {
                tag: "is refused by the desktop",
                open: dialog => {
                    dialog.visible = true;
                    dialog.visible = false;
                },
                failures: 1
            },
            {
                tag: "is accepted at once",
                open: dialog => {
                    dialog.visible = true;
                    dialog.visible = false;
                    dialog.accepted();
                },
                failures: 0
            }
        ];
    }

    function test_dialogs(row) {
        failures.target = loader;
        for (let attempt = 1; attempt <= 2; ++attempt) {
            failures.clear();
            loader.show(row.open);
            wait(700);
            compare(failures.count, row.failures);
            loader.item.visible = false;
        }
    }

    function test_a_missing_module() {
        failures.target = missing;
        failures.clear();
        ignoreWarning(/NoSuchDialog/);
        for (let attempt = 1; attempt <= 2; ++attempt) {
            missing.show(() => fail("there is no dialog"));
            tryCompare(failures, "count", attempt);
        }
    }
}
