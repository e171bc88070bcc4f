import QtQuick
import Tarnwell.Views

// Time away: the idle-gap prompt (keep or discard) and the note about a
// pause made while the session was away (resume). Hidden when neither applies.
Banner {
    id: banner
    objectName: "awayBanner"
    property AwayBannerModel model: null

    visible: model !== null && (model.gapVisible || model.autoPausedVisible)
    iconName: banner.model && banner.model.gapVisible ? "pause" : "play"
    text: banner.model ? (banner.model.gapVisible ? banner.model.promptText : banner.model.noteText) : ""

    ActionButton {
        objectName: "awayKeep"
        visible: banner.model !== null && banner.model.gapVisible
        kind: "primary"
        text: banner.model ? banner.model.keepText : ""
        onClicked: banner.model.keep()
    }
    ActionButton {
        objectName: "awayDiscard"
        visible: banner.model !== null && banner.model.gapVisible
        text: banner.model ? banner.model.discardText : ""
        onClicked: banner.model.discard()
    }
    ActionButton {
        objectName: "awayResume"
        visible: banner.model !== null && !banner.model.gapVisible && banner.model.autoPausedVisible
        kind: "primary"
        iconName: "play"
        text: banner.model ? banner.model.resumeText : ""
        onClicked: banner.model.resume()
    }
}
