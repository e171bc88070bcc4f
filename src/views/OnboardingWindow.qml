import QtQuick
import QtQuick.Layouts
import QtQuick.Window
import Tarnwell.Views

// First-run pages: the task in hand, quick add, adding from anywhere, the tray.
ThemedWindow {
    id: root
    required property OnboardingCoordinator coordinator
    property int page: 0
    readonly property int pageCount: 4

    width: 520
    height: 420
    minimumWidth: 420
    minimumHeight: 400
    visible: false
    color: Theme.window
    //: Title of the first-run window
    //% "Welcome to Tarnwell"
    title: qsTrId("onboarding.window.title")

    readonly property var pages: [
        //: First-run page heading about the task in hand
        //% "One task in hand"
        { heading: qsTrId("onboarding.taskInHand.title"),
        //: First-run page text about the task in hand
        //% "The first open task of today is the one you are working on. Start its timer and Tarnwell measures the time you really spend against what you planned."
          body: qsTrId("onboarding.taskInHand.body") },
        //: First-run page heading about quick add
        //% "Add a task in one line"
        { heading: qsTrId("onboarding.quickAdd.title"),
        //: First-run page text about the quick-add syntax; keep the example line as it is
        //% "Type a title, then a middle dot or a tilde and the details: “Write report · 45m tomorrow !” plans 45 minutes tomorrow and puts it first."
          body: qsTrId("onboarding.quickAdd.body") },
        //: First-run page heading about adding a task from any application
        //% "Add from anywhere"
        { heading: qsTrId("onboarding.anywhere.title"),
        //: First-run page text about adding a task from any application; keep the command as it is
        //% "Give the command “tarnwell tarnwell://quickadd” a keyboard shortcut in your desktop's settings, and the quick-add window opens from any application."
          body: qsTrId("onboarding.anywhere.body") },
        //: First-run page heading about the tray
        //% "At home in the tray"
        { heading: qsTrId("onboarding.tray.title"),
        //: First-run page text about the status item in the tray
        //% "Tarnwell has no main window. Its icon in the tray shows the task in hand and the time left; click it to see your day."
          body: qsTrId("onboarding.tray.body") }
    ]

    Shortcut { sequence: "Escape"; onActivated: root.coordinator.finish() }
    Shortcut { sequences: ["Return", "Enter"]; onActivated: next.clicked() }

    // The drawn icon of each page.
    readonly property var pageIcons: ["play", "add", "extend", "today"]

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 28
        spacing: Tokens.spaceL

        Rectangle {
            implicitWidth: 48
            implicitHeight: 48
            radius: Tokens.radiusL
            color: Theme.accentSoft
            Icon {
                anchors.centerIn: parent
                width: 28
                height: 28
                name: root.pageIcons[root.page]
                color: Theme.accentText
            }
        }
        TextBlock {
            Layout.fillWidth: true
            role: "display"
            font.pixelSize: Theme.headingSize + 4
            text: root.pages[root.page].heading
            wrapMode: Text.Wrap
            elide: Text.ElideNone
        }
        TextBlock {
            Layout.fillWidth: true
            Layout.fillHeight: true
            role: "secondary"
            font.pixelSize: Theme.titleSize
            lineHeight: 1.15
            text: root.pages[root.page].body
            wrapMode: Text.Wrap
            elide: Text.ElideNone
            verticalAlignment: Text.AlignTop
        }
        PageDots {
            Layout.alignment: Qt.AlignHCenter
            count: root.pageCount
            current: root.page
        }
        RowLayout {
            Layout.fillWidth: true
            ActionButton {
                objectName: "onboardingBack"
                //: Button that goes back one first-run page
                //% "Back"
                text: qsTrId("onboarding.back")
                visible: root.page > 0
                onClicked: root.page -= 1
            }
            Item { Layout.fillWidth: true }
            ActionButton {
                id: next
                objectName: "onboardingNext"
                kind: "primary"
                text: root.page < root.pageCount - 1
                      //: Button that shows the next first-run page
                      //% "Next"
                      ? qsTrId("onboarding.next")
                      //: Button that closes the first-run window
                      //% "Get started"
                      : qsTrId("onboarding.finish")
                onClicked: root.page < root.pageCount - 1 ? root.page += 1 : root.coordinator.finish()
            }
        }
    }
}
