import QtQuick
import QtQuick.Templates as T
import Tarnwell.Views

// A small modal form over the window (a name to type, a question to answer)
// on a raised surface, the window dimmed behind it. `title` heads it; its
// children go below the heading.
T.Popup {
    id: sheet
    property string title
    default property alias content: body.data
    anchors.centerIn: T.Overlay.overlay
    modal: true
    focus: true
    padding: Tokens.spaceL
    implicitWidth: Math.max(implicitBackgroundWidth, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding

    T.Overlay.modal: Rectangle {
        color: Theme.shadow
        Behavior on opacity { NumberAnimation { duration: Theme.motionShort } }
    }
    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.motionShort }
        NumberAnimation { property: "scale"; from: 0.96; to: 1; duration: Theme.motionShort; easing.type: Easing.OutCubic }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.motionShort }
    }

    // Our own template, not a style to override: `content` aliases into it, so it is made with the sheet.
    // qmllint disable deferred-property-id
    contentItem: Column {
        spacing: Tokens.spaceM
        TextBlock {
            width: parent.width
            visible: sheet.title.length > 0
            role: "title"
            text: sheet.title
            wrapMode: Text.Wrap
            elide: Text.ElideNone
        }
        Column {
            id: body
            width: parent.width
            spacing: Tokens.spaceM
        }
    }
    // qmllint enable deferred-property-id
    background: Rectangle {
        radius: Tokens.radiusL
        color: Theme.surface
        border.width: 1
        border.color: Theme.separator
    }
}
