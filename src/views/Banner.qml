import QtQuick
import QtQuick.Layouts
import Tarnwell.Views

// A message across the window that asks for a decision (unfinished work to
// carry over, time away to keep or discard): an icon, its text and a row of
// buttons (the banner's children).
Rectangle {
    id: banner
    property string text
    property string iconName: ""
    default property alias actions: actionRow.data

    implicitHeight: column.implicitHeight + 2 * Tokens.spaceM
    radius: Tokens.radiusM
    color: Theme.accentSoft
    border.width: 1
    border.color: Qt.rgba(Theme.accent.r, Theme.accent.g, Theme.accent.b, 0.45)
    Accessible.role: Accessible.Grouping
    Accessible.name: text

    ColumnLayout {
        id: column
        anchors.fill: parent
        anchors.margins: Tokens.spaceM
        spacing: Tokens.spaceS
        RowLayout {
            Layout.fillWidth: true
            spacing: Tokens.spaceS
            Icon {
                objectName: "glyph"
                visible: banner.iconName.length > 0
                name: banner.iconName
                color: Theme.accentText
                Layout.preferredWidth: Tokens.iconSize
                Layout.preferredHeight: Tokens.iconSize
                Layout.alignment: Qt.AlignTop
            }
            TextBlock {
                objectName: "text"
                Layout.fillWidth: true
                text: banner.text
                wrapMode: Text.Wrap
                elide: Text.ElideNone
            }
        }
        Flow {
            id: actionRow
            Layout.fillWidth: true
            spacing: Tokens.spaceS
            visible: children.length > 0
        }
    }
}
