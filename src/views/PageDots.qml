import QtQuick
import Tarnwell.Views

// Where a series of pages is: one dot a page, the current one in the accent
// and wider.
Row {
    id: dots
    property int count: 0
    property int current: 0
    spacing: Tokens.spaceS
    // Qt 6.4's qmllint takes ids outside a delegate or Component for unqualified; this one is only made here.
    // qmllint disable unqualified
    Repeater {
        model: dots.count
        Rectangle {
            required property int index
            width: index === dots.current ? 20 : 8
            height: 8
            radius: 4
            color: index === dots.current ? Theme.accent : Theme.border
            Behavior on width { NumberAnimation { duration: Theme.motionMedium; easing.type: Easing.OutCubic } }
        }
    }
    // qmllint enable unqualified
}
