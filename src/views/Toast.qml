import QtQuick
import QtQuick.Layouts
import Tarnwell.Views

// A short note about what just happened, with an optional action (Undo).
// It slides up into place when `shown` and slides away again; its colours are
// the window's inverted, so it stands out from anything under it.
Item {
    id: toast
    property bool shown: false
    property string text
    property string actionText: ""
    signal actionTriggered()

    implicitHeight: shown || slide.running ? box.implicitHeight : 0
    visible: shown || slide.running
    clip: true
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text

    Rectangle {
        id: box
        objectName: "toastBox"
        width: parent.width
        implicitHeight: row.implicitHeight + Tokens.spaceS * 2
        radius: Tokens.radiusM
        color: Theme.toast
        y: toast.shown ? 0 : height
        opacity: toast.shown ? 1 : 0
        Behavior on y { NumberAnimation { id: slide; duration: Theme.motionMedium; easing.type: Easing.OutCubic } }
        Behavior on opacity { NumberAnimation { duration: Theme.motionMedium } }

        RowLayout {
            id: row
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            anchors.leftMargin: Tokens.spaceM
            anchors.rightMargin: Tokens.spaceXs
            spacing: Tokens.spaceS
            Text {
                objectName: "text"
                Layout.fillWidth: true
                Layout.minimumHeight: Tokens.controlHeight
                verticalAlignment: Text.AlignVCenter
                text: toast.text
                color: Theme.onToast
                font.family: Theme.fontFamily
                font.pixelSize: Theme.bodySize
                // Two lines before it is cut: German and Turkish notes run long.
                wrapMode: Text.Wrap
                maximumLineCount: 2
                elide: Text.ElideRight
            }
            ToastAction {
                objectName: "toastAction"
                visible: toast.actionText.length > 0
                text: toast.actionText
                onClicked: toast.actionTriggered()
            }
        }
    }
}
