import QtQuick
import QtQuick.Templates as T
import Tarnwell.Views

// The round tick that marks a task done: an outlined circle, filled with the
// accent and a drawn tick when checked. Space toggles it; `text` names it for
// screen readers (it shows no text).
T.CheckBox {
    id: control
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    padding: 4
    implicitWidth: Tokens.checkSize + leftPadding + rightPadding
    implicitHeight: Tokens.checkSize + topPadding + bottomPadding
    Accessible.name: text

    indicator: Rectangle {
        x: control.leftPadding
        y: (control.height - height) / 2
        width: Tokens.checkSize
        height: Tokens.checkSize
        radius: width / 2
        color: {
            if (control.checked)
                return !control.enabled ? Theme.secondaryText
                     : control.down ? Theme.accentPressed
                     : control.hovered ? Theme.accentHover : Theme.accent
            if (!control.enabled)
                return "transparent"
            return control.down ? Theme.pressed : control.hovered ? Theme.hover : "transparent"
        }
        border.width: control.checked ? 0 : 2
        border.color: control.enabled && control.hovered ? Theme.accentText
                      : control.enabled ? Theme.border : Theme.separator

        Icon {
            objectName: "glyph"
            anchors.centerIn: parent
            width: Tokens.iconSmall
            height: Tokens.iconSmall
            name: "done"
            color: control.enabled ? Theme.onAccent : Theme.window
            opacity: control.checked ? 1 : 0
            scale: control.checked ? 1 : 0.6
            Behavior on opacity { NumberAnimation { duration: Theme.motionShort } }
            Behavior on scale { NumberAnimation { duration: Theme.motionShort; easing.type: Easing.OutBack } }
        }
        FocusRing {
            visible: control.visualFocus
            cornerRadius: parent.radius
        }
    }
    contentItem: Item {}
}
