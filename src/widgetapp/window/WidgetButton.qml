import QtQuick
import Tarnwell.Widget

// The widget's button: the product's button drawn from the same palette
// entries (accent fill for "primary", a framed surface otherwise), on plain
// Qt Quick so that the always-on widget does not load Qt Quick Controls.
// Hover, press and keyboard focus (Tab, then Space or Return) are designed as
// in the other windows; screen readers see a push button named by its text.
Item {
    id: control
    property string text
    property string kind: "secondary"
    property string iconName
    readonly property bool primary: kind === "primary"
    readonly property bool down: tap.pressed
    readonly property bool hovered: hover.hovered
    signal clicked

    activeFocusOnTab: true
    implicitHeight: 32
    implicitWidth: Math.max(56, content.implicitWidth + 24)
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.focusable: true
    Accessible.onPressAction: control.clicked()
    Keys.onSpacePressed: control.clicked()
    Keys.onReturnPressed: control.clicked()
    Keys.onEnterPressed: control.clicked()

    Rectangle {
        id: fill
        anchors.fill: parent
        radius: 6
        color: control.primary
               ? (control.down ? Theme.accentPressed : control.hovered ? Theme.accentHover : Theme.accent)
               : (control.down ? Theme.pressed : control.hovered ? Theme.hover : Theme.surface)
        border.width: control.primary ? 0 : 1
        border.color: Theme.border
    }
    // The keyboard focus ring, just outside the button.
    Rectangle {
        visible: control.activeFocus
        anchors.fill: parent
        anchors.margins: -3
        radius: fill.radius + 3
        color: "transparent"
        border.width: 2
        border.color: Theme.focusRing
    }
    Row {
        id: content
        anchors.centerIn: parent
        spacing: 6
        Icon {
            visible: control.iconName.length > 0
            name: control.iconName
            color: label.color
            width: 16
            height: 16
            anchors.verticalCenter: parent.verticalCenter
        }
        Text {
            id: label
            text: control.text
            color: control.primary ? Theme.onAccent : Theme.text
            font.family: Theme.fontFamily
            font.pixelSize: Theme.bodySize
            anchors.verticalCenter: parent.verticalCenter
        }
    }
    HoverHandler {
        id: hover
        cursorShape: Qt.PointingHandCursor
    }
    TapHandler {
        id: tap
        onTapped: control.clicked()
    }
}
