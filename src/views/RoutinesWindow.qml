import QtQuick
import QtQuick.Window
import Tarnwell.Views

// The routines on their own (see RoutinesPane). Escape closes an open form
// first, then the window.
ThemedWindow {
    id: root
    objectName: "routinesRoot"
    required property RoutinesModel routines
    required property RoutinesWindowController controller

    width: 760
    height: 520
    minimumWidth: 620
    minimumHeight: 400
    visible: false
    title: pane.title

    function focusList() {
        pane.focusList()
    }

    Shortcut {
        sequence: "Escape"
        onActivated: {
            if (!pane.handleEscape())
                root.controller.hide()
        }
    }

    RoutinesPane {
        id: pane
        anchors.fill: parent
        anchors.margins: 16
        routines: root.routines
    }
}
