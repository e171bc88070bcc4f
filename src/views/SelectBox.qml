import QtQuick
import QtQuick.Templates as T
import Tarnwell.Views

// A choice of one among a few (a repeat rule): framed like a field, with a
// drawn chevron; its list opens below it in the menu's look. `model` entries
// may be texts or objects (then `textRole`/`valueRole` as usual); an entry
// listed in `disabledIndexes` shows but cannot be chosen.
T.ComboBox {
    id: control
    property var disabledIndexes: []
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(Tokens.controlHeight, implicitContentHeight + topPadding + bottomPadding)
    leftPadding: 10
    rightPadding: 10 + Tokens.iconSmall + Tokens.spaceXs
    font.family: Theme.fontFamily
    font.pixelSize: Theme.bodySize

    // Qt 6.4's qmllint takes ids outside a delegate or Component for unqualified; this one is only made here.
    // qmllint disable unqualified
    delegate: T.ItemDelegate {
        id: option
        required property int index
        required property var modelData
        width: ListView.view.width
        implicitHeight: Tokens.controlHeight
        padding: 6
        leftPadding: Tokens.spaceS
        enabled: control.disabledIndexes.indexOf(index) < 0
        hoverEnabled: true
        highlighted: control.highlightedIndex === index
        text: control.textRole.length > 0 ? modelData[control.textRole] : modelData
        font: control.font
        Accessible.name: text
        contentItem: Text {
            objectName: "text"
            text: option.text
            font: option.font
            color: option.enabled ? Theme.text : Theme.secondaryText
            verticalAlignment: Text.AlignVCenter
            elide: Text.ElideRight
        }
        background: Rectangle {
            radius: Tokens.radiusS
            color: !option.enabled ? "transparent"
                 : option.down ? Theme.pressed
                 : option.highlighted || option.hovered ? Theme.accentSoft : "transparent"
        }
    }
    // qmllint enable unqualified

    indicator: Icon {
        objectName: "glyph"
        x: control.width - width - 8
        y: (control.height - height) / 2
        width: Tokens.iconSmall
        height: Tokens.iconSmall
        // The chevron, pointing down; up while the list is open.
        name: "next"
        color: Theme.secondaryText
        rotation: control.popup.visible ? 270 : 90
        Behavior on rotation { NumberAnimation { duration: Theme.motionShort } }
    }

    contentItem: Text {
        objectName: "text"
        text: control.displayText
        font: control.font
        color: control.enabled ? Theme.text : Theme.secondaryText
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }

    background: Rectangle {
        implicitWidth: 160
        implicitHeight: Tokens.controlHeight
        radius: Tokens.radiusS
        color: !control.enabled ? Theme.hover
             : control.down ? Theme.pressed
             : control.hovered ? Theme.hover : Theme.surface
        border.width: 1
        border.color: control.enabled ? Theme.border : Theme.separator
        FocusRing {
            visible: control.visualFocus
            cornerRadius: parent.radius
        }
    }

    popup: T.Popup {
        y: control.height + 2
        width: control.width
        implicitHeight: Math.min(contentItem.implicitHeight + topPadding + bottomPadding, 320)
        padding: Tokens.spaceXs
        contentItem: ListView {
            clip: true
            implicitHeight: contentHeight
            model: control.delegateModel
            currentIndex: control.highlightedIndex
        }
        background: Rectangle {
            radius: Tokens.radiusM
            color: Theme.surface
            border.width: 1
            border.color: Theme.separator
        }
        enter: Transition {
            NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.motionShort }
        }
    }
}
