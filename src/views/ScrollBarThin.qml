import QtQuick
import QtQuick.Templates as T
import Tarnwell.Views

// A thin scroll bar that shows while the list moves or is hovered.
T.ScrollBar {
    id: control
    hoverEnabled: true
    padding: 2
    implicitWidth: 8 + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    visible: control.policy !== T.ScrollBar.AlwaysOff && control.size < 1
    contentItem: Rectangle {
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: control.pressed ? Theme.secondaryText : Theme.border
        opacity: control.active || control.hovered ? 1 : 0
        Behavior on opacity { NumberAnimation { duration: Theme.motionMedium } }
    }
}
