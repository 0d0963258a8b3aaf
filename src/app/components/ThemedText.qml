import QtQuick
import Lexiquill

/// Text in the colours and sizes of the theme.
Text {
    enum Role {
        Body,
        Caption,
        Small,
        Heading,
        Title,
        Headword
    }

    property int role: ThemedText.Body
    readonly property bool isCaption: role === ThemedText.Caption || role === ThemedText.Small

    color: isCaption ? Theme.secondaryText : Theme.text
    font.pixelSize: {
        switch (role) {
        case ThemedText.Caption:
            return Theme.captionSize;
        case ThemedText.Small:
            return Theme.smallSize;
        case ThemedText.Heading:
            return Theme.headingSize;
        case ThemedText.Title:
            return Theme.titleSize;
        case ThemedText.Headword:
            return Theme.headwordSize;
        default:
            return Theme.bodySize;
        }
    }
    font.weight: role >= ThemedText.Heading ? Font.DemiBold : Font.Normal
    textFormat: Text.PlainText
    renderType: Text.NativeRendering
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.ignored: text === ""
}
