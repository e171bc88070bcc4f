import QtQuick
import QtQuick.Controls
import Tarnwell.Views

// Every window of the product: the window colour and the user's font; the
// few stock pieces our components still use (tooltips) take the palette.
ApplicationWindow {
    color: Theme.window
    font.family: Theme.fontFamily
    font.pixelSize: Theme.bodySize
    palette.window: Theme.window
    palette.windowText: Theme.text
    palette.base: Theme.surface
    palette.alternateBase: Theme.window
    palette.text: Theme.text
    palette.button: Theme.surface
    palette.buttonText: Theme.text
    palette.brightText: Theme.danger
    palette.highlight: Theme.accent
    palette.highlightedText: Theme.dark ? Theme.window : Theme.surface
    palette.placeholderText: Theme.secondaryText
    palette.toolTipBase: Theme.surface
    palette.toolTipText: Theme.text
    palette.link: Theme.accent
    palette.light: Theme.surface
    palette.midlight: Theme.separator
    palette.mid: Theme.separator
    palette.dark: Theme.secondaryText
    palette.shadow: Theme.dark ? "#a0000000" : "#40000000"
    palette.disabled.text: Theme.secondaryText
    palette.disabled.buttonText: Theme.secondaryText
    palette.disabled.windowText: Theme.secondaryText
}
