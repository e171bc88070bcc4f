import QtQuick
import QtQuick.Templates as T
import Tarnwell.Views

// One action of an ActionMenu: the hover or keyboard highlight is the soft
// accent, a disabled item (a heading such as "Load a routine") reads in the
// secondary colour; `iconName` shows one of our icons before the text. A
// hidden item takes no room.
T.MenuItem {
    id: control
    property string iconName: ""
    property bool danger: false
    hoverEnabled: true
    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: visible ? Math.max(Tokens.controlHeight, implicitContentHeight + topPadding + bottomPadding) : 0
    height: visible ? implicitHeight : 0
    padding: 6
    leftPadding: Tokens.spaceS
    rightPadding: Tokens.spaceM
    font.family: Theme.fontFamily
    font.pixelSize: Theme.bodySize
    Accessible.name: text

    readonly property color foreground: !enabled ? Theme.secondaryText : danger ? Theme.dangerText : Theme.text

    contentItem: Row {
        spacing: Tokens.spaceS
        Item {
            width: Tokens.iconSmall
            height: Tokens.iconSmall
            anchors.verticalCenter: parent.verticalCenter
            visible: control.iconName.length > 0
            Icon {
                objectName: "glyph"
                anchors.fill: parent
                name: control.iconName
                color: control.foreground
            }
        }
        Text {
            objectName: "text"
            anchors.verticalCenter: parent.verticalCenter
            text: control.text
            font: control.font
            color: control.foreground
            elide: Text.ElideRight
        }
    }

    background: Rectangle {
        implicitWidth: 200
        implicitHeight: Tokens.controlHeight
        radius: Tokens.radiusS
        color: !control.enabled ? "transparent"
             : control.down ? Theme.pressed
             : control.highlighted || control.hovered ? Theme.accentSoft : "transparent"
        FocusRing {
            visible: control.visualFocus
            // Inside the row: a list clips what lies outside it.
            anchors.margins: 0
            radius: parent.radius
        }
    }
}
