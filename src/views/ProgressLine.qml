import QtQuick
import QtQuick.Templates as T
import Tarnwell.Views

// A thin bar for the share of the plan used; in the danger colour when
// `overdue`. The fill eases to a new value.
T.ProgressBar {
    id: control
    property bool overdue: false
    from: 0
    to: 1
    implicitWidth: 200
    implicitHeight: 6
    background: Rectangle {
        implicitHeight: 6
        radius: 3
        color: Theme.pressed
    }
    contentItem: Item {
        implicitHeight: 6
        Rectangle {
            objectName: "progressFill"
            width: control.visualPosition * parent.width
            height: parent.height
            radius: 3
            color: control.overdue ? Theme.danger : Theme.accent
            Behavior on width { NumberAnimation { duration: Theme.motionMedium } }
        }
    }
}
