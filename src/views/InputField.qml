import QtQuick
import QtQuick.Templates as T
import Tarnwell.Views

// A one-line text field: a framed surface whose frame turns to the accent
// while it has the keyboard; placeholder and disabled text in the secondary
// colour, which still reads at 4.5:1.
T.TextField {
    id: control
    hoverEnabled: true
    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            placeholder.implicitWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(Tokens.controlHeight, contentHeight + topPadding + bottomPadding)
    padding: 6
    leftPadding: 10
    rightPadding: 10
    color: enabled ? Theme.text : Theme.secondaryText
    selectionColor: Theme.accent
    selectedTextColor: Theme.onAccent
    placeholderTextColor: Theme.secondaryText
    verticalAlignment: TextInput.AlignVCenter
    font.family: Theme.fontFamily
    font.pixelSize: Theme.bodySize
    Accessible.name: placeholderText

    Text {
        id: placeholder
        objectName: "placeholder"
        x: control.leftPadding
        y: control.topPadding
        width: control.width - (control.leftPadding + control.rightPadding)
        height: control.height - (control.topPadding + control.bottomPadding)
        text: control.placeholderText
        font: control.font
        color: control.placeholderTextColor
        verticalAlignment: control.verticalAlignment
        visible: !control.length && !control.preeditText && (!control.activeFocus || control.horizontalAlignment !== Qt.AlignHCenter)
        elide: Text.ElideRight
    }

    background: Rectangle {
        implicitWidth: 160
        implicitHeight: Tokens.controlHeight
        radius: Tokens.radiusS
        color: control.enabled ? Theme.surface : Theme.hover
        border.width: 1
        border.color: control.activeFocus ? Theme.focusRing
                    : control.enabled && control.hovered ? Theme.secondaryText
                    : control.enabled ? Theme.border : Theme.separator
        FocusRing {
            visible: control.activeFocus
            cornerRadius: parent.radius
        }
    }
}
