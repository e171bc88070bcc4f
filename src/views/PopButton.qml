import QtQuick
import QtQuick.Controls
import Tarnwell.Views

// The product's button. Tab reaches it, Enter and Space press it. Kinds:
// plain (a framed surface), `highlighted` or `checked` (filled with the
// accent) and `flat` (no frame until hovered). With `iconName` it shows one
// of our drawn icons, alone or before its text; `text` then still names it for
// screen readers. Every state keeps its text at 4.5:1 or better against what
// is behind it, and keyboard focus draws a ring in the accent colour.
Button {
    id: button
    property string iconName: ""
    readonly property bool iconOnly: iconName.length > 0 && text.length === 0
    readonly property bool filled: highlighted || checked
    readonly property color foreground: !enabled ? appTheme.secondaryText
                                        : filled ? appTheme.onAccent : appTheme.text

    focusPolicy: Qt.StrongFocus
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()
    ToolTip.visible: hovered && ToolTip.text.length > 0
    ToolTip.delay: 600
    Accessible.name: text.length > 0 ? text : ToolTip.text

    padding: iconOnly ? 6 : 8
    leftPadding: iconOnly ? 6 : 12
    rightPadding: iconOnly ? 6 : 12
    implicitWidth: Math.max(iconOnly ? 32 : 56, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(32, implicitContentHeight + topPadding + bottomPadding)

    contentItem: Row {
        spacing: 6
        Icon {
            visible: button.iconName.length > 0
            name: button.iconName
            color: button.foreground
            width: 18
            height: 18
            y: (parent.height - height) / 2
        }
        Label {
            visible: !button.iconOnly
            text: button.text
            color: button.foreground
            font: button.font
            elide: Text.ElideRight
            y: (parent.height - height) / 2
        }
    }

    background: Rectangle {
        implicitWidth: button.iconOnly ? 32 : 56
        implicitHeight: 32
        radius: 6
        color: {
            if (button.filled)
                return button.down ? Qt.darker(appTheme.accent, 1.15) : appTheme.accent
            if (button.down)
                return appTheme.pressed
            if (button.hovered)
                return appTheme.hover
            return button.flat ? "transparent" : appTheme.surface
        }
        border.width: button.flat || button.filled ? 0 : 1
        border.color: appTheme.separator
        opacity: button.enabled ? 1 : 0.6

        // The focus ring sits just outside the button.
        Rectangle {
            anchors.fill: parent
            anchors.margins: -3
            radius: parent.radius + 3
            color: "transparent"
            border.width: 2
            border.color: appTheme.focusRing
            visible: button.visualFocus
        }
    }
}
