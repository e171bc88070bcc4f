import QtQuick
import Tarnwell.Views

// The background of one row of a list: transparent at rest, the hover colour
// under the pointer, the pressed colour while pressed, the soft accent when
// `selected`, and the focus ring when the row is the keyboard's (`current`
// in a list that has the focus). The row's content goes inside.
Item {
    id: row
    property bool selected: false
    property bool current: false
    readonly property bool hovered: hover.hovered
    readonly property bool pressed: tap.pressed
    default property alias content: body.data
    signal clicked()

    implicitHeight: Tokens.rowHeight

    HoverHandler { id: hover }
    TapHandler {
        id: tap
        onTapped: row.clicked()
    }

    Rectangle {
        objectName: "rowBackground"
        anchors.fill: parent
        radius: Tokens.radiusS
        color: row.pressed ? Theme.pressed
             : row.selected ? Theme.accentSoft
             : row.hovered ? Theme.hover : "transparent"
        FocusRing {
            visible: row.current
            // Inside the row: a list clips what lies outside it.
            anchors.margins: 0
            radius: parent.radius
        }
    }
    Item {
        id: body
        anchors.fill: parent
    }
}
