import QtQuick
import QtQuick.Controls

// A button that Tab reaches and that Enter and Space both press.
Button {
    id: button
    focusPolicy: Qt.StrongFocus
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()
    ToolTip.visible: hovered && ToolTip.text.length > 0
    ToolTip.delay: 600
}
