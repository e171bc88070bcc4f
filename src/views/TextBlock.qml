import QtQuick
import Tarnwell.Views

// Text in one of the type roles: "display", "heading", "title", "body",
// "secondary", "caption", "danger" and "accent"; size from the type scale
// over the user's font, colour from the palette.
Text {
    property string role: "body"
    color: role === "secondary" || role === "caption" ? appTheme.secondaryText
         : role === "danger" ? appTheme.dangerText
         : role === "accent" ? appTheme.accentText : appTheme.text
    font.family: appTheme.fontFamily
    font.pixelSize: role === "display" ? appTheme.displaySize
                  : role === "heading" ? appTheme.headingSize
                  : role === "title" ? appTheme.titleSize
                  : role === "caption" ? appTheme.captionSize
                  : role === "secondary" ? appTheme.smallSize : appTheme.bodySize
    font.weight: role === "display" || role === "heading" || role === "title" ? Font.DemiBold : Font.Normal
    elide: Text.ElideRight
    Accessible.role: role === "heading" || role === "display" ? Accessible.Heading : Accessible.StaticText
    Accessible.name: text
}
