import QtQuick
import QtQuick.Templates as T
import Tarnwell.Views

// The action button inside a toast, drawn on the toast's inverted colours.
T.Button {
    id: control
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    padding: Tokens.spaceS
    leftPadding: Tokens.spaceM
    rightPadding: Tokens.spaceM
    font.family: Theme.fontFamily
    font.pixelSize: Theme.bodySize
    font.weight: Font.DemiBold
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Math.max(Tokens.controlHeight - 4, implicitContentHeight + topPadding + bottomPadding)
    Keys.onReturnPressed: control.clicked()
    Keys.onEnterPressed: control.clicked()
    Accessible.name: text
    contentItem: Text {
        objectName: "text"
        text: control.text
        font: control.font
        color: Theme.onToast
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
    background: Rectangle {
        radius: Tokens.radiusS
        color: control.down ? Qt.rgba(Theme.onToast.r, Theme.onToast.g, Theme.onToast.b, 0.24)
             : control.hovered ? Qt.rgba(Theme.onToast.r, Theme.onToast.g, Theme.onToast.b, 0.14)
             : "transparent"
        Rectangle {
            objectName: "focusRing"
            visible: control.visualFocus
            anchors.fill: parent
            radius: parent.radius
            color: "transparent"
            border.width: Tokens.ringWidth
            border.color: Theme.onToast
        }
    }
}
