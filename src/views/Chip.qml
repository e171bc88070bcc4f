import QtQuick
import QtQuick.Controls

// A small rounded label: what a typed line will set (duration, day, urgent).
Rectangle {
    id: chip
    property string text
    property color tint: appTheme.accent

    implicitWidth: label.width + 14
    implicitHeight: label.implicitHeight + 6
    radius: height / 2
    color: Qt.rgba(tint.r, tint.g, tint.b, 0.15)
    border.color: tint
    border.width: 1

    Label {
        id: label
        anchors.centerIn: parent
        width: Math.min(implicitWidth, 160)
        text: chip.text
        color: chip.tint
        font.pixelSize: 12
        elide: Text.ElideRight
    }
}
