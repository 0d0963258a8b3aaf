pragma Singleton

import QtQuick
import Lexiquill

/// Colours, spacing and font sizes for light and dark mode.
QtObject {
    id: theme

    readonly property bool isDark: DesktopAppearance.isDark

    readonly property color blue: "#0A84FF"
    readonly property color green: "#34C759"
    readonly property color purple: "#AF52DE"
    readonly property color orange: "#FF9500"
    readonly property color red: "#FF3B30"
    readonly property color gray: isDark ? "#98989D" : "#8E8E93"
    readonly property color accent: blue
    /// The ground of white text in the accent colour: selected rows, main buttons.
    readonly property color selected: strong(accent)

    /// Background of the detail area, and the colours of the elements on it.
    readonly property color ground: isDark ? "#1E1E20" : "#F5F5F7"
    readonly property color sidebarGround: isDark ? "#26262A" : "#ECECEF"
    readonly property color card: isDark ? "#2C2C2F" : "#FFFFFF"
    readonly property color sheet: isDark ? "#2A2A2D" : "#FBFBFC"
    readonly property color field: isDark ? "#38383C" : "#FFFFFF"
    readonly property color fieldBorder: isDark ? "#4A4A4F" : "#D6D6DB"
    /// The outline that shows where a control is.
    readonly property color controlBorder: isDark ? "#929298" : "#7C7C82"
    /// The two lines of the focus ring. One of them stands out on every ground.
    readonly property color focus: isDark ? "#5EB0FF" : selected
    readonly property color focusGap: isDark ? "#1E1E20" : "#FFFFFF"
    /// The part of a progress bar that is not filled yet.
    readonly property color track: isDark ? "#3A3A3E" : "#EAEAED"
    readonly property color fill: isDark ? "#3A3A3E" : "#E6E6EA"
    readonly property color hover: isDark ? Qt.rgba(1, 1, 1, 0.07) : Qt.rgba(0, 0, 0, 0.05)
    readonly property color pressed: isDark ? Qt.rgba(1, 1, 1, 0.13) : Qt.rgba(0, 0, 0, 0.1)
    readonly property color separator: isDark ? Qt.rgba(1, 1, 1, 0.1) : Qt.rgba(0, 0, 0, 0.09)
    readonly property color dim: Qt.rgba(0, 0, 0, isDark ? 0.5 : 0.32)

    readonly property color text: isDark ? "#F2F2F4" : "#1D1D1F"
    readonly property color secondaryText: isDark ? "#B8B8BE" : "#5A5A60"
    readonly property color tertiaryText: isDark ? "#B2B2B8" : "#6A6A70"
    readonly property color selection: isDark ? Qt.rgba(0.04, 0.52, 1, 0.28) : Qt.rgba(0.04, 0.52, 1, 0.14)

    /// The grounds with the least contrast for colours: of the screens and sheets, and of a hovered row.
    readonly property color worstGround: isDark ? "#333336" : "#F0F0F2"

    /// How much larger than usual all is shown; the user's choice.
    readonly property real zoom: Preferences.zoomPercent / 100
    readonly property int unit: px(8)
    readonly property int radius: px(12)
    readonly property int controlRadius: px(8)
    readonly property int controlHeight: px(32)
    readonly property int motion: 150

    readonly property int headwordSize: px(28)
    readonly property int titleSize: px(20)
    readonly property int headingSize: px(16)
    readonly property int bodySize: px(14)
    readonly property int captionSize: px(12)
    readonly property int smallSize: px(11)
    readonly property real lineHeight: 1.35

    /// A length in points at the chosen zoom.
    function px(points: real): real {
        return Math.round(points * theme.zoom);
    }

    /// The colour of a badge; gray for an unknown name.
    function badgeColor(name: string): color {
        switch (name) {
        case "blue":
            return theme.blue;
        case "green":
            return theme.green;
        case "purple":
            return theme.purple;
        case "orange":
            return theme.orange;
        case "red":
            return theme.red;
        default:
            return theme.gray;
        }
    }

    /// A faint version of a colour, as the background of text in that colour.
    function tint(base: color): color {
        return Qt.rgba(base.r, base.g, base.b, theme.isDark ? 0.22 : 0.12);
    }

    /// A tone of a colour for text on the tint of that colour, or on any ground of a screen or sheet.
    function onTint(base: color): color {
        return Contrast.readable(base, Qt.tint(theme.worstGround, theme.tint(base)), 4.5);
    }

    /// A tone of a colour for symbols and lines on any ground of a screen or sheet.
    function sign(base: color): color {
        return Contrast.readable(base, theme.worstGround, 3);
    }

    /// A tone of a colour for the ground of white text.
    function strong(base: color): color {
        return Contrast.readable(base, "#FFFFFF", 4.5);
    }
}
