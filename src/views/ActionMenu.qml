import QtQuick
import QtQuick.Templates as T
import Tarnwell.Views

// A drop-down list of actions (ActionMenuItem, MenuDivider) on a raised
// surface; it fades in quickly.
T.Menu {
    id: control
    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            contentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             contentHeight + topPadding + bottomPadding)
    padding: Tokens.spaceXs
    margins: 0
    overlap: 1

    delegate: ActionMenuItem {}

    contentItem: ListView {
        implicitHeight: contentHeight
        model: control.contentModel
        interactive: Window.window ? contentHeight + control.topPadding + control.bottomPadding > Window.window.height : false
        clip: true
        currentIndex: control.currentIndex
    }

    background: Rectangle {
        implicitWidth: 200
        implicitHeight: 40
        radius: Tokens.radiusM
        color: Theme.surface
        border.width: 1
        border.color: Theme.separator
        Rectangle {
            z: -1
            anchors.fill: parent
            anchors.topMargin: 2
            anchors.bottomMargin: -3
            radius: parent.radius + 1
            color: Theme.shadow
            opacity: 0.5
        }
    }

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.motionShort }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.motionShort }
    }
}
