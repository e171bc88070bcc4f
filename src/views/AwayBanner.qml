import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// Time away: the idle-gap prompt (keep or discard) and the note about a
// pause made while the session was away (resume). Hidden when neither applies.
Rectangle {
    id: banner
    objectName: "awayBanner"
    property QtObject model: null

    visible: model !== null && (model.gapVisible || model.autoPausedVisible)
    implicitHeight: column.implicitHeight + 16
    radius: 8
    color: appTheme.surface
    border.color: appTheme.accent

    ColumnLayout {
        id: column
        anchors.fill: parent
        anchors.margins: 8
        spacing: 6
        Label {
            Layout.fillWidth: true
            text: banner.model ? (banner.model.gapVisible ? banner.model.promptText : banner.model.noteText) : ""
            color: appTheme.text
            wrapMode: Text.Wrap
        }
        Flow {
            Layout.fillWidth: true
            spacing: 6
            visible: banner.model !== null && banner.model.gapVisible
            PopButton {
                objectName: "awayKeep"
                text: banner.model ? banner.model.keepText : ""
                highlighted: true
                onClicked: banner.model.keep()
            }
            PopButton {
                objectName: "awayDiscard"
                text: banner.model ? banner.model.discardText : ""
                onClicked: banner.model.discard()
            }
        }
        PopButton {
            objectName: "awayResume"
            visible: banner.model !== null && !banner.model.gapVisible && banner.model.autoPausedVisible
            text: banner.model ? banner.model.resumeText : ""
            highlighted: true
            onClicked: banner.model.resume()
        }
    }
}
