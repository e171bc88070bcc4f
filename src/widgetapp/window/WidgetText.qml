import QtQuick

// Text in the widget: the user's font at body size in the text colour, and
// read by screen readers as what it says.
Text {
    color: appTheme.text
    font.family: appTheme.fontFamily
    font.pixelSize: appTheme.bodySize
    elide: Text.ElideRight
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
