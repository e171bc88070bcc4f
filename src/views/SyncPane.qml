import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tarnwell.Views

// Sync: the CalDAV account (server, user name, password for the keyring),
// the calendar that holds the tasks, the state of sync and its last error,
// "Sync now", and turning sync off with the choice of what happens to the
// synced tasks here.
Flickable {
    id: root
    objectName: "syncPane"
    required property SyncSettingsModel sync
    //: Settings tab: sync with a CalDAV server
    //% "Sync"
    readonly property string title: qsTrId("settings.tab.sync")
    property bool confirmingOff: false

    // Escape closes the question of turning sync off first; false when it was not open.
    function handleEscape() {
        if (!root.confirmingOff)
            return false
        root.confirmingOff = false
        return true
    }

    clip: true
    contentWidth: width
    contentHeight: column.implicitHeight + 2 * Tokens.spaceXl
    boundsBehavior: Flickable.StopAtBounds
    T.ScrollBar.vertical: ScrollBarThin {}

    // A label on the left, its field on the right.
    component FieldRow: RowLayout {
        id: fieldRow
        property string label
        default property alias field: slot.data
        Layout.fillWidth: true
        spacing: Tokens.spaceL
        TextBlock {
            Layout.fillWidth: true
            text: fieldRow.label
            wrapMode: Text.Wrap
            elide: Text.ElideNone
        }
        Item {
            id: slot
            Layout.preferredWidth: 340
            implicitHeight: children.length > 0 ? children[0].implicitHeight : 0
        }
    }

    ColumnLayout {
        id: column
        x: Tokens.spaceXl
        y: Tokens.spaceXl
        width: root.width - 2 * Tokens.spaceXl
        spacing: Tokens.spaceM

        TextBlock {
            Layout.fillWidth: true
            role: "heading"
            text: root.title
            wrapMode: Text.Wrap
            elide: Text.ElideNone
        }
        TextBlock {
            Layout.fillWidth: true
            role: "secondary"
            //: Settings, Sync: what the tab is for
            //% "Keep your tasks in step with a CalDAV server you already use (Nextcloud, Radicale, Baïkal and others), and through it with your other devices."
            text: qsTrId("settings.sync.caption")
            wrapMode: Text.Wrap
            elide: Text.ElideNone
        }

        // Why sync cannot be used here at all.
        RowLayout {
            objectName: "syncUnavailable"
            Layout.fillWidth: true
            visible: !root.sync.available
            spacing: Tokens.spaceS
            Icon {
                name: "warning"
                color: Theme.danger
                Layout.preferredWidth: Tokens.iconSize
                Layout.preferredHeight: Tokens.iconSize
                Layout.alignment: Qt.AlignTop
            }
            TextBlock {
                Layout.fillWidth: true
                text: root.sync.unavailableText
                wrapMode: Text.Wrap
                elide: Text.ElideNone
                Accessible.role: Accessible.AlertMessage
                Accessible.name: text
            }
        }

        // The state, the last sync and what went wrong.
        Card {
            Layout.fillWidth: true
            implicitHeight: stateColumn.implicitHeight + 2 * padding
            visible: root.sync.available
            tone: root.sync.errorText.length > 0 ? "danger" : "normal"
            Accessible.role: Accessible.Grouping
            Accessible.name: root.sync.stateText
            ColumnLayout {
                id: stateColumn
                width: parent.width
                spacing: Tokens.spaceXs
                RowLayout {
                    Layout.fillWidth: true
                    spacing: Tokens.spaceS
                    Icon {
                        name: root.sync.errorText.length > 0 ? "warning" : "sync"
                        color: root.sync.errorText.length > 0 ? Theme.danger : Theme.secondaryText
                        Layout.preferredWidth: Tokens.iconSize
                        Layout.preferredHeight: Tokens.iconSize
                    }
                    TextBlock {
                        objectName: "syncState"
                        Layout.fillWidth: true
                        text: root.sync.stateText
                        wrapMode: Text.Wrap
                        elide: Text.ElideNone
                    }
                }
                TextBlock {
                    objectName: "syncLast"
                    Layout.fillWidth: true
                    visible: root.sync.syncOn
                    role: "secondary"
                    text: root.sync.lastSyncText
                }
                TextBlock {
                    objectName: "syncError"
                    Layout.fillWidth: true
                    visible: text.length > 0
                    role: "danger"
                    text: root.sync.errorText
                    wrapMode: Text.Wrap
                    elide: Text.ElideNone
                    Accessible.role: Accessible.AlertMessage
                    Accessible.name: text
                }
                RowLayout {
                    Layout.topMargin: Tokens.spaceXs
                    visible: root.sync.syncOn && !root.confirmingOff
                    spacing: Tokens.spaceS
                    ActionButton {
                        objectName: "syncNow"
                        //: Settings, Sync: button that starts a pass at once
                        //% "Sync now"
                        text: qsTrId("settings.sync.now")
                        iconName: "sync"
                        enabled: !root.sync.syncing
                        onClicked: root.sync.syncNow()
                    }
                    ActionButton {
                        objectName: "syncTurnOff"
                        kind: "flat"
                        //: Settings, Sync: button that turns sync off (asks what to do with the synced tasks)
                        //% "Turn off sync…"
                        text: qsTrId("settings.sync.turnOff")
                        onClicked: {
                            root.confirmingOff = true
                            keepButton.forceActiveFocus()
                        }
                    }
                }
                // Turning off: keep the synced tasks as local ones, or remove them here.
                ColumnLayout {
                    Layout.fillWidth: true
                    Layout.topMargin: Tokens.spaceXs
                    visible: root.confirmingOff
                    spacing: Tokens.spaceS
                    TextBlock {
                        Layout.fillWidth: true
                        //: Settings, Sync: the question when sync is turned off
                        //% "What should happen to the tasks that are synced with the server? The server keeps its copies either way."
                        text: qsTrId("settings.sync.off.question")
                        wrapMode: Text.Wrap
                        elide: Text.ElideNone
                    }
                    Flow {
                        Layout.fillWidth: true
                        spacing: Tokens.spaceS
                        ActionButton {
                            id: keepButton
                            objectName: "syncOffKeep"
                            kind: "primary"
                            //: Settings, Sync: turn sync off and keep the synced tasks on this computer
                            //% "Keep them here"
                            text: qsTrId("settings.sync.off.keep")
                            onClicked: {
                                root.confirmingOff = false
                                root.sync.turnOff(false)
                            }
                        }
                        ActionButton {
                            objectName: "syncOffRemove"
                            kind: "danger"
                            //: Settings, Sync: turn sync off and delete the synced tasks on this computer (not on the server)
                            //% "Remove them from this computer"
                            text: qsTrId("settings.sync.off.remove")
                            onClicked: {
                                root.confirmingOff = false
                                root.sync.turnOff(true)
                            }
                        }
                        ActionButton {
                            objectName: "syncOffCancel"
                            kind: "flat"
                            //: Settings, Sync: keep sync on after all
                            //% "Cancel"
                            text: qsTrId("settings.sync.off.cancel")
                            onClicked: root.confirmingOff = false
                        }
                    }
                }
            }
        }

        TextBlock {
            Layout.fillWidth: true
            Layout.topMargin: Tokens.spaceM
            role: "title"
            //: Settings, Sync: heading of the account fields
            //% "Account"
            text: qsTrId("settings.sync.account")
        }
        FieldRow {
            //: Settings, Sync: label of the server address field
            //% "Server address"
            label: qsTrId("settings.sync.server")
            InputField {
                id: serverField
                objectName: "syncServer"
                width: parent.width
                enabled: root.sync.available
                text: root.sync.server
                placeholderText: "https://dav.example.com"
                inputMethodHints: Qt.ImhUrlCharactersOnly | Qt.ImhNoAutoUppercase
                Accessible.name: qsTrId("settings.sync.server")
            }
        }
        FieldRow {
            //: Settings, Sync: label of the user name field
            //% "User name"
            label: qsTrId("settings.sync.user")
            InputField {
                id: userField
                objectName: "syncUser"
                width: parent.width
                enabled: root.sync.available
                text: root.sync.user
                inputMethodHints: Qt.ImhNoAutoUppercase
                Accessible.name: qsTrId("settings.sync.user")
            }
        }
        FieldRow {
            //: Settings, Sync: label of the password field
            //% "Password"
            label: qsTrId("settings.sync.password")
            InputField {
                id: passwordField
                objectName: "syncPassword"
                width: parent.width
                enabled: root.sync.available
                echoMode: TextInput.Password
                //: Settings, Sync: placeholder of the password field while sync is on (the keyring has it)
                //% "Kept in the keyring; type to change it"
                placeholderText: root.sync.syncOn ? qsTrId("settings.sync.password.kept") : ""
                inputMethodHints: Qt.ImhSensitiveData | Qt.ImhNoPredictiveText | Qt.ImhHiddenText
                Accessible.name: qsTrId("settings.sync.password")
                Accessible.description: root.sync.keyringText
            }
        }
        TextBlock {
            Layout.fillWidth: true
            visible: text.length > 0
            role: "secondary"
            text: root.sync.keyringText
            wrapMode: Text.Wrap
            elide: Text.ElideNone
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: Tokens.spaceM
            ActionButton {
                objectName: "syncFind"
                //: Settings, Sync: button that asks the server which calendars can hold tasks
                //% "Find calendars"
                text: qsTrId("settings.sync.find")
                enabled: root.sync.available && !root.sync.busy
                onClicked: root.sync.findCalendars(serverField.text, userField.text, passwordField.text)
            }
            TextBlock {
                objectName: "syncMessage"
                Layout.fillWidth: true
                role: "secondary"
                text: root.sync.message
                wrapMode: Text.Wrap
                elide: Text.ElideNone
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
        FieldRow {
            visible: root.sync.collections.length > 0
            //: Settings, Sync: label of the choice of calendar
            //% "Calendar for tasks"
            label: qsTrId("settings.sync.calendar")
            SelectBox {
                objectName: "syncCalendar"
                width: parent.width
                enabled: root.sync.available
                model: root.sync.collections
                textRole: "text"
                valueRole: "value"
                currentIndex: count > 0 ? indexOfValue(root.sync.collection) : -1
                Accessible.name: qsTrId("settings.sync.calendar")
                onActivated: root.sync.collection = currentValue
            }
        }
        ActionButton {
            objectName: "syncTurnOn"
            Layout.topMargin: Tokens.spaceS
            kind: "primary"
            enabled: root.sync.available && root.sync.collection.length > 0
            text: root.sync.syncOn
                  //: Settings, Sync: button that stores changed account details while sync is on
                  //% "Save and sync"
                  ? qsTrId("settings.sync.save")
                  //: Settings, Sync: button that stores the password in the keyring and turns sync on
                  //% "Turn on sync"
                  : qsTrId("settings.sync.turnOn")
            onClicked: {
                root.sync.turnOn(serverField.text, userField.text, passwordField.text)
                passwordField.clear()
            }
        }
    }
}
