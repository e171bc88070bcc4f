import QtQuick
import Tarnwell.Widget

// Text in the widget: the user's font at body size in the text colour, and
// read by screen readers as what it says.
Text {
    color: Theme.text
    font.family: Theme.fontFamily
    font.pixelSize: Theme.bodySize
    elide: Text.ElideRight
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
