import QtQuick
import Tarnwell.Views

// The keyboard focus ring: a line in the accent drawn just outside its
// parent, at 3:1 or better against the window behind it.
Rectangle {
    property real cornerRadius: Tokens.radiusS
    objectName: "focusRing"
    anchors.fill: parent
    anchors.margins: -(Tokens.ringGap + Tokens.ringWidth)
    radius: cornerRadius + Tokens.ringGap + Tokens.ringWidth
    color: "transparent"
    border.width: Tokens.ringWidth
    border.color: Theme.focusRing
}
