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

    // The share the fill shows. It eases over visible jumps only (more time,
    // another task): a running timer's tick moves it by less than a pixel,
    // and easing that would draw frames nobody sees.
    property real shownPosition: control.visualPosition
    Behavior on shownPosition {
        id: ease
        enabled: Math.abs(ease.targetValue - control.shownPosition) * control.availableWidth > 2
        NumberAnimation { duration: Theme.motionMedium }
    }

    background: Rectangle {
        implicitHeight: 6
        radius: 3
        color: Theme.pressed
    }
    contentItem: Item {
        implicitHeight: 6
        Rectangle {
            objectName: "progressFill"
            width: control.shownPosition * parent.width
            height: parent.height
            radius: 3
            color: control.overdue ? Theme.danger : Theme.accent
        }
    }
}
