import QtQuick
import QtQuick.Controls

// Every window of the product: the window colour and the user's font; the
// few stock pieces our components still use (tooltips) take the palette.
ApplicationWindow {
    color: appTheme.window
    font.family: appTheme.fontFamily
    font.pixelSize: appTheme.bodySize
    palette.window: appTheme.window
    palette.windowText: appTheme.text
    palette.base: appTheme.surface
    palette.alternateBase: appTheme.window
    palette.text: appTheme.text
    palette.button: appTheme.surface
    palette.buttonText: appTheme.text
    palette.brightText: appTheme.danger
    palette.highlight: appTheme.accent
    palette.highlightedText: appTheme.dark ? appTheme.window : appTheme.surface
    palette.placeholderText: appTheme.secondaryText
    palette.toolTipBase: appTheme.surface
    palette.toolTipText: appTheme.text
    palette.link: appTheme.accent
    palette.light: appTheme.surface
    palette.midlight: appTheme.separator
    palette.mid: appTheme.separator
    palette.dark: appTheme.secondaryText
    palette.shadow: appTheme.dark ? "#a0000000" : "#40000000"
    palette.disabled.text: appTheme.secondaryText
    palette.disabled.buttonText: appTheme.secondaryText
    palette.disabled.windowText: appTheme.secondaryText
}
