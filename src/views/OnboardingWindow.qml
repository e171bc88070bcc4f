import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import QtQuick.Window

// First-run pages: the task in hand, quick add, adding from anywhere, the tray.
ThemedWindow {
    id: root
    required property QtObject coordinator
    property int page: 0
    readonly property int pageCount: 4

    width: 520
    height: 380
    minimumWidth: 420
    minimumHeight: 340
    visible: false
    color: appTheme.window
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

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 28
        spacing: 16

        Label {
            Layout.fillWidth: true
            text: root.pages[root.page].heading
            color: appTheme.text
            font.pixelSize: 24
            font.weight: Font.DemiBold
            wrapMode: Text.Wrap
        }
        Label {
            Layout.fillWidth: true
            Layout.fillHeight: true
            text: root.pages[root.page].body
            color: appTheme.secondaryText
            font.pixelSize: 15
            wrapMode: Text.Wrap
            verticalAlignment: Text.AlignTop
        }
        Row {
            Layout.alignment: Qt.AlignHCenter
            spacing: 8
            Repeater {
                model: root.pageCount
                Rectangle {
                    required property int index
                    width: 8; height: 8; radius: 4
                    color: index === root.page ? appTheme.accent : appTheme.separator
                }
            }
        }
        RowLayout {
            Layout.fillWidth: true
            PopButton {
                objectName: "onboardingBack"
                //: Button that goes back one first-run page
                //% "Back"
                text: qsTrId("onboarding.back")
                visible: root.page > 0
                onClicked: root.page -= 1
            }
            Item { Layout.fillWidth: true }
            PopButton {
                id: next
                objectName: "onboardingNext"
                highlighted: true
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
