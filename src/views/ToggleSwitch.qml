import QtQuick
import QtQuick.Templates as T
import Tarnwell.Views

// An on/off setting: its label on the left, a drawn track on the right that
// fills with the accent when on. Space toggles it; `caption`, when given,
// explains it under the label in the secondary colour.
T.Switch {
    id: control
    property string caption: ""
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    padding: 0
    spacing: Tokens.spaceM
    font.family: Theme.fontFamily
    font.pixelSize: Theme.bodySize
    implicitWidth: Math.max(implicitContentWidth + spacing + indicator.width, 120)
    implicitHeight: Math.max(Tokens.controlHeight, implicitContentHeight)
    Accessible.name: text
    Accessible.description: caption

    indicator: Rectangle {
        objectName: "track"
        x: control.width - width
        // Level with the label's first line, however far the caption runs.
        y: (Tokens.controlHeight - height) / 2
        width: 40
        height: 22
        radius: height / 2
        color: {
            if (!control.enabled)
                return control.checked ? Theme.secondaryText : Theme.hover
            if (control.checked)
                return control.down ? Theme.accentPressed : control.hovered ? Theme.accentHover : Theme.accent
            return control.down ? Theme.pressed : control.hovered ? Theme.hover : Theme.surface
        }
        border.width: control.checked ? 0 : 2
        border.color: control.enabled ? Theme.border : Theme.separator
        Rectangle {
            objectName: control.enabled ? "glyph" : "knob"
            width: 16
            height: 16
            radius: 8
            y: 3
            x: control.checked ? parent.width - width - 3 : 3
            color: control.checked ? (control.enabled ? Theme.onAccent : Theme.window)
                                   : (control.enabled ? Theme.secondaryText : Theme.separator)
            Behavior on x { NumberAnimation { duration: Theme.motionShort; easing.type: Easing.OutCubic } }
        }
        FocusRing {
            visible: control.visualFocus
            cornerRadius: parent.radius
        }
    }

    // Our own template, not a style to override: the content is made with the switch (its parts' sizes are the switch's).
    // qmllint disable deferred-property-id
    contentItem: Column {
        rightPadding: control.indicator.width + control.spacing
        topPadding: Math.max(0, (Tokens.controlHeight - label.implicitHeight / Math.max(1, label.lineCount)) / 2)
        bottomPadding: captionText.visible ? 0 : topPadding
        spacing: 2
        Text {
            id: label
            objectName: "text"
            width: parent.width - parent.rightPadding
            text: control.text
            font: control.font
            color: control.enabled ? Theme.text : Theme.secondaryText
            wrapMode: Text.Wrap
        }
        Text {
            id: captionText
            objectName: "caption"
            width: parent.width - parent.rightPadding
            visible: control.caption.length > 0
            text: control.caption
            font.family: Theme.fontFamily
            font.pixelSize: Theme.smallSize
            color: Theme.secondaryText
            wrapMode: Text.Wrap
        }
    }
    // qmllint enable deferred-property-id
}
