import QtQuick
import QtQuick.Templates as T
import Tarnwell.Views

// Records a key combination: framed like a field and showing the current
// combination; Space, Enter or a click starts recording, the next
// combination with a modifier ends it (`recorded` carries the key event),
// Escape or Tab gives up. While recording the frame is the accent and the
// text asks for the keys.
T.Button {
    id: control
    property string keysText
    property bool recording: false
    //: Settings, Hotkeys: shown in a hot-key recorder while it waits for keys
    //% "Press the keys…"
    property string waitingText: qsTrId("settings.hotkeys.recording")
    signal recorded(int key, int modifiers, int scanCode)

    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    padding: 6
    leftPadding: 10
    rightPadding: 10
    font.family: Theme.fontFamily
    font.pixelSize: Theme.bodySize
    implicitWidth: Math.max(180, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(Tokens.controlHeight, implicitContentHeight + topPadding + bottomPadding)
    Accessible.role: Accessible.Button
    Accessible.description: recording ? waitingText : keysText

    onClicked: recording = true
    // While recording, every key is ours: no window shortcut (Escape) fires.
    Keys.onShortcutOverride: (event) => { event.accepted = control.recording }
    Keys.onReturnPressed: (event) => { if (!recording) recording = true; else event.accepted = false }
    onActiveFocusChanged: if (!activeFocus) recording = false
    Keys.onPressed: (event) => {
        if (!control.recording)
            return
        const bare = (event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier | Qt.ShiftModifier)) === 0
        if (bare && (event.key === Qt.Key_Tab || event.key === Qt.Key_Backtab)) {
            control.recording = false
            event.accepted = false
            return
        }
        event.accepted = true
        if (bare && event.key === Qt.Key_Escape) {
            control.recording = false
            return
        }
        if ([Qt.Key_Shift, Qt.Key_Control, Qt.Key_Alt, Qt.Key_Meta, Qt.Key_Super_L, Qt.Key_Super_R,
             Qt.Key_AltGr].indexOf(event.key) >= 0)
            return
        control.recording = false
        control.recorded(event.key, event.modifiers, event.nativeScanCode)
    }

    contentItem: Text {
        objectName: "text"
        text: control.recording ? control.waitingText : control.keysText
        font: control.font
        color: control.recording ? Theme.accentText : control.enabled ? Theme.text : Theme.secondaryText
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }

    background: Rectangle {
        implicitWidth: 180
        implicitHeight: Tokens.controlHeight
        radius: Tokens.radiusS
        color: control.recording ? Theme.accentSoft
             : !control.enabled ? Theme.hover
             : control.down ? Theme.pressed
             : control.hovered ? Theme.hover : Theme.surface
        border.width: control.recording ? 2 : 1
        border.color: control.recording ? Theme.focusRing : control.enabled ? Theme.border : Theme.separator
        Icon {
            objectName: "glyph"
            anchors.right: parent.right
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            width: Tokens.iconSmall
            height: Tokens.iconSmall
            name: "keyboard"
            color: control.recording ? Theme.accentText : Theme.secondaryText
        }
        FocusRing {
            visible: control.visualFocus && !control.recording
            cornerRadius: parent.radius
        }
    }
}
