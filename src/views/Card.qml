import QtQuick
import Tarnwell.Views

// A raised surface that groups one thing (the task in hand); `tone`
// "danger" draws its frame in the danger colour.
Rectangle {
    id: card
    property string tone: "normal"
    default property alias content: body.data
    property int padding: Tokens.spaceM
    implicitHeight: body.childrenRect.height + 2 * padding
    radius: Tokens.radiusL
    color: Theme.surface
    border.width: tone === "danger" ? 2 : 1
    border.color: tone === "danger" ? Theme.danger : Theme.separator
    Item {
        id: body
        anchors.fill: parent
        anchors.margins: card.padding
    }
}
