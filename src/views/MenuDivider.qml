import QtQuick
import QtQuick.Templates as T
import Tarnwell.Views

// A line between groups of an ActionMenu.
T.MenuSeparator {
    padding: Tokens.spaceXs
    implicitHeight: 1 + topPadding + bottomPadding
    implicitWidth: 180
    contentItem: Rectangle {
        implicitHeight: 1
        color: Theme.separator
    }
}
