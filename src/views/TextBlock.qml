import QtQuick
import Tarnwell.Views

// Text in one of the type roles: "display", "heading", "title", "body",
// "secondary", "caption", "danger" and "accent"; size from the type scale
// over the user's font, colour from the palette.
Text {
    property string role: "body"
    color: role === "secondary" || role === "caption" ? Theme.secondaryText
         : role === "danger" ? Theme.dangerText
         : role === "accent" ? Theme.accentText : Theme.text
    font.family: Theme.fontFamily
    font.pixelSize: role === "display" ? Theme.displaySize
                  : role === "heading" ? Theme.headingSize
                  : role === "title" ? Theme.titleSize
                  : role === "caption" ? Theme.captionSize
                  : role === "secondary" ? Theme.smallSize : Theme.bodySize
    font.weight: role === "display" || role === "heading" || role === "title" ? Font.DemiBold : Font.Normal
    elide: Text.ElideRight
    Accessible.role: role === "heading" || role === "display" ? Accessible.Heading : Accessible.StaticText
    Accessible.name: text
}
