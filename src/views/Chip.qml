import QtQuick
import Tarnwell.Views

// A small rounded label for what a typed line will set (duration, day,
// urgent): a soft tint with text in the tone's text colour, and an optional
// icon before it. Tones: "accent", "danger", "neutral".
Rectangle {
    id: chip
    property string text
    property string tone: "accent"
    property string iconName: ""
    readonly property color foreground: tone === "danger" ? Theme.dangerText
                                        : tone === "neutral" ? Theme.text : Theme.accentText

    implicitWidth: row.implicitWidth + 2 * Tokens.spaceS
    implicitHeight: Math.max(24, label.implicitHeight + 6)
    radius: height / 2
    color: tone === "danger" ? Theme.dangerSoft : tone === "neutral" ? Theme.hover : Theme.accentSoft
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Row {
        id: row
        anchors.centerIn: parent
        spacing: Tokens.spaceXs
        Icon {
            objectName: "glyph"
            visible: chip.iconName.length > 0
            name: chip.iconName
            color: chip.foreground
            width: 14
            height: 14
            anchors.verticalCenter: parent.verticalCenter
        }
        Text {
            id: label
            objectName: "text"
            width: Math.min(implicitWidth, 180)
            text: chip.text
            color: chip.foreground
            font.family: Theme.fontFamily
            font.pixelSize: Theme.smallSize
            font.weight: Font.DemiBold
            elide: Text.ElideRight
            anchors.verticalCenter: parent.verticalCenter
        }
    }
}
