import QtQuick
import QtTest
import Lexiquill

ScreenTest {
    id: tests

    name: "SoundSection"
    when: windowShown

    Window {
        id: window

        width: 400
        height: 300
        visible: true

        SoundSection {
            id: section

            width: window.width
        }
    }

    function test_choices_are_kept() {
        compare(Preferences.accent, Preferences.American);
        verify(named(section, "美式发音").checked);
        mouseClick(named(section, "英式发音"));
        compare(Preferences.accent, Preferences.British);
        verify(named(section, "英式发音").checked && !named(section, "美式发音").checked);
        const toggle = named(section, "打开释义卡片或闪卡时自动朗读");
        for (const isOn of [true, false]) {
            mouseClick(toggle);
            compare(Preferences.pronouncesCards, isOn);
            compare(toggle.checked, isOn);
        }
        // A change elsewhere shows, too.
        Preferences.pronouncesCards = true;
        verify(toggle.checked);
    }
}
