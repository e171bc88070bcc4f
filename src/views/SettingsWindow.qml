import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import QtQuick.Window
import Tarnwell.Views

// The settings: the tabs down the left (Up and Down move between them,
// Ctrl+Page Down and Ctrl+Page Up from anywhere), the chosen tab on the right.
// Every control writes through its tab's model at once; there is nothing to
// save. Escape closes an open form of the Routines tab (or the Sync tab's question) first, then the window.
ThemedWindow {
    id: root
    objectName: "settingsRoot"
    required property GeneralSettingsModel general
    required property ReminderSettingsModel reminders
    required property HotkeySettingsModel hotkeys
    required property RoutinesModel routines
    required property SyncSettingsModel sync
    required property PermissionsModel permissions
    required property AboutModel about
    required property SettingsWindowController controller
    property int currentTab: 0

    width: 880
    height: 620
    minimumWidth: 760
    minimumHeight: 520
    visible: false
    //: Title of the settings window (window lists, screen readers)
    //% "Tarnwell Settings"
    title: qsTrId("settings.window.title")

    readonly property var tabs: [
        //: Settings tab: general settings
        //% "General"
        { name: "general", icon: "settings", title: qsTrId("settings.tab.general") },
        //: Settings tab: notifications and sounds
        //% "Reminders"
        { name: "reminders", icon: "bell", title: qsTrId("settings.tab.reminders") },
        //: Settings tab: keyboard shortcuts
        //% "Hotkeys"
        { name: "hotkeys", icon: "keyboard", title: qsTrId("settings.tab.hotkeys") },
        { name: "routines", icon: "routine", title: qsTrId("settings.routines.title") },
        { name: "sync", icon: "sync", title: qsTrId("settings.tab.sync") },
        //: Settings tab: what works on this desktop
        //% "Permissions"
        { name: "permissions", icon: "shield", title: qsTrId("settings.tab.permissions") },
        //: Settings tab: version, licence, data folder
        //% "About"
        { name: "about", icon: "info", title: qsTrId("settings.tab.about") }
    ]

    function focusTabs() {
        tabList.forceActiveFocus()
    }

    Shortcut {
        sequence: "Escape"
        onActivated: {
            if (!(root.currentTab === 3 && routinesPane.handleEscape())
                    && !(root.currentTab === 4 && syncPane.handleEscape()))
                root.controller.hide()
        }
    }
    Shortcut {
        sequences: ["Ctrl+PgDown"]
        onActivated: root.currentTab = (root.currentTab + 1) % root.tabs.length
    }
    Shortcut {
        sequences: ["Ctrl+PgUp"]
        onActivated: root.currentTab = (root.currentTab + root.tabs.length - 1) % root.tabs.length
    }

    // A setting: its label (and an optional explanation) on the left, its
    // control on the right.
    component SettingRow: Item {
        id: settingRow
        property string label
        property string caption: ""
        default property alias control: slot.data
        Layout.fillWidth: true
        implicitHeight: Math.max(labels.implicitHeight, slot.height)
        // Anchored rather than laid out: the control's width may settle
        // only after its text is measured, and the label gives way at once.
        ColumnLayout {
            id: labels
            anchors.left: parent.left
            anchors.right: slot.left
            anchors.rightMargin: Tokens.spaceL
            anchors.verticalCenter: parent.verticalCenter
            spacing: 2
            TextBlock {
                Layout.fillWidth: true
                text: settingRow.label
                wrapMode: Text.Wrap
                elide: Text.ElideNone
            }
            TextBlock {
                Layout.fillWidth: true
                visible: settingRow.caption.length > 0
                role: "secondary"
                text: settingRow.caption
                wrapMode: Text.Wrap
                elide: Text.ElideNone
            }
        }
        Item {
            id: slot
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            width: children.length > 0 ? children[0].width : 0
            height: children.length > 0 ? children[0].height : 0
        }
    }

    // A choice that shows the stored `value` and reports the user's `chosen`
    // one; it shows the stored value again after a choice and when its
    // options are made anew (another language).
    component SettingSelect: SelectBox {
        id: select
        property var value
        signal chosen(var value)
        width: 220
        currentIndex: count > 0 ? indexOfValue(value) : -1
        onActivated: {
            select.chosen(currentValue)
            currentIndex = Qt.binding(() => select.count > 0 ? select.indexOfValue(select.value) : -1)
        }
    }

    // A group of settings under a small heading.
    component SectionTitle: TextBlock {
        Layout.fillWidth: true
        Layout.topMargin: Tokens.spaceM
        role: "title"
        wrapMode: Text.Wrap
        elide: Text.ElideNone
    }

    // One tab's page: a heading and its settings, scrolled when taller.
    component Page: Flickable {
        id: page
        property string heading
        default property alias body: pageColumn.data
        clip: true
        contentWidth: width
        contentHeight: pageColumn.implicitHeight + 2 * Tokens.spaceXl
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: ScrollBarThin {}
        ColumnLayout {
            id: pageColumn
            x: Tokens.spaceXl
            y: Tokens.spaceXl
            width: page.width - 2 * Tokens.spaceXl
            spacing: Tokens.spaceM
            TextBlock {
                Layout.fillWidth: true
                role: "heading"
                text: page.heading
                wrapMode: Text.Wrap
                elide: Text.ElideNone
            }
        }
    }

    RowLayout {
        anchors.fill: parent
        spacing: 0

        // The tabs.
        Item {
            Layout.fillHeight: true
            Layout.preferredWidth: 210
            ListView {
                id: tabList
                objectName: "settingsTabs"
                anchors.fill: parent
                anchors.margins: Tokens.spaceS
                spacing: 2
                activeFocusOnTab: true
                keyNavigationEnabled: true
                model: root.tabs
                currentIndex: root.currentTab
                onCurrentIndexChanged: root.currentTab = currentIndex
                Accessible.role: Accessible.PageTabList
                Accessible.name: root.title
                // Qt 6.4's qmllint takes ids outside a delegate or Component for unqualified; this one is only made here.
                // qmllint disable unqualified
                delegate: ListRow {
                    id: tabRow
                    required property int index
                    required property var modelData
                    objectName: "tab-" + modelData.name
                    width: ListView.view.width
                    implicitHeight: 40
                    selected: ListView.isCurrentItem
                    current: ListView.isCurrentItem && tabList.activeFocus
                    Accessible.role: Accessible.PageTab
                    Accessible.name: modelData.title
                    Accessible.selected: selected
                    onClicked: {
                        root.currentTab = index
                        tabList.forceActiveFocus()
                    }
                    RowLayout {
                        anchors.fill: parent
                        anchors.leftMargin: Tokens.spaceM
                        anchors.rightMargin: Tokens.spaceS
                        spacing: Tokens.spaceS
                        Icon {
                            name: tabRow.modelData.icon
                            color: tabRow.selected ? Theme.accentText : Theme.secondaryText
                            Layout.preferredWidth: Tokens.iconSize
                            Layout.preferredHeight: Tokens.iconSize
                        }
                        TextBlock {
                            Layout.fillWidth: true
                            text: tabRow.modelData.title
                            font.weight: tabRow.selected ? Font.DemiBold : Font.Normal
                            color: tabRow.selected ? Theme.accentText : Theme.text
                        }
                    }
                }
                // qmllint enable unqualified
            }
        }
        Rectangle {
            Layout.fillHeight: true
            Layout.preferredWidth: 1
            color: Theme.separator
        }

        StackLayout {
            id: pages
            objectName: "settingsPages"
            Layout.fillWidth: true
            Layout.fillHeight: true
            currentIndex: root.currentTab

            // ---- General
            Page {
                objectName: "page-general"
                heading: root.tabs[0].title

                SettingRow {
                    //: Settings, General: label of the language menu
                    //% "Language"
                    label: qsTrId("settings.general.language")
                    SettingSelect {
                        objectName: "languageBox"
                        model: root.general.languages
                        textRole: "text"
                        valueRole: "value"
                        value: root.general.language
                        Accessible.name: qsTrId("settings.general.language")
                        onChosen: (choice) => root.general.language = choice
                    }
                }
                SettingRow {
                    //: Settings, General: label of the light/dark menu
                    //% "Appearance"
                    label: qsTrId("settings.general.appearance")
                    SettingSelect {
                        objectName: "appearanceBox"
                        textRole: "text"
                        valueRole: "value"
                        model: [
                            //: Settings, General: appearance follows the desktop
                            //% "Same as the desktop"
                            { value: "auto", text: qsTrId("settings.general.appearance.system") },
                            //: Settings, General: always the light palette
                            //% "Light"
                            { value: "light", text: qsTrId("settings.general.appearance.light") },
                            //: Settings, General: always the dark palette
                            //% "Dark"
                            { value: "dark", text: qsTrId("settings.general.appearance.dark") }
                        ]
                        value: root.general.appearance
                        Accessible.name: qsTrId("settings.general.appearance")
                        onChosen: (choice) => root.general.appearance = choice
                    }
                }
                ToggleSwitch {
                    objectName: "launchAtLogin"
                    Layout.fillWidth: true
                    //: Settings, General: switch that starts Tarnwell when the user logs in
                    //% "Start Tarnwell when I log in"
                    text: qsTrId("settings.general.launchAtLogin")
                    checked: root.general.launchAtLogin
                    onToggled: root.general.launchAtLogin = checked
                }

                SectionTitle {
                    //: Settings, General: heading of the workday and day plan settings
                    //% "Your day"
                    text: qsTrId("settings.general.day")
                }
                ToggleSwitch {
                    id: workdaySwitch
                    objectName: "workdayEnd"
                    Layout.fillWidth: true
                    //: Settings, General: switch for the end of the workday
                    //% "End of the workday"
                    text: qsTrId("settings.general.workdayEnd.title")
                    //: Settings, General: what the workday end does
                    //% "The day plan under the list warns when the queued work runs past this time."
                    caption: qsTrId("settings.general.workdayEnd.caption")
                    checked: root.general.workdayEndEnabled
                    onToggled: root.general.workdayEndEnabled = checked
                }
                SettingRow {
                    visible: root.general.workdayEndEnabled
                    //: Settings, General: label of the field with the workday end's time
                    //% "Workday ends at"
                    label: qsTrId("settings.general.workdayEnd.time")
                    InputField {
                        id: workdayTime
                        objectName: "workdayEndTime"
                        width: 120
                        text: root.general.workdayEndText
                        inputMethodHints: Qt.ImhPreferNumbers
                        Accessible.name: qsTrId("settings.general.workdayEnd.time")
                        onEditingFinished: workdayError.text = root.general.setWorkdayEndText(text)
                    }
                }
                TextBlock {
                    id: workdayError
                    objectName: "workdayEndError"
                    Layout.fillWidth: true
                    visible: text.length > 0 && root.general.workdayEndEnabled
                    role: "danger"
                    wrapMode: Text.Wrap
                }
                Card {
                    Layout.fillWidth: true
                    implicitHeight: dayPlanColumn.implicitHeight + 2 * padding
                    Accessible.role: Accessible.Grouping
                    Accessible.name: dayPlanTitle.text
                    ColumnLayout {
                        id: dayPlanColumn
                        width: parent.width
                        spacing: 2
                        TextBlock {
                            id: dayPlanTitle
                            Layout.fillWidth: true
                            font.weight: Font.DemiBold
                            //: Settings, General: heading of the explanation of the day plan footer
                            //% "The day plan"
                            text: qsTrId("settings.general.dayPlan.title")
                            wrapMode: Text.Wrap
                            elide: Text.ElideNone
                        }
                        TextBlock {
                            Layout.fillWidth: true
                            role: "secondary"
                            //: Settings, General: explanation of the day plan footer under the task list
                            //% "Under the list, the planned minutes still ahead add up to a finish time. With a workday end, the tasks that no longer fit are counted and can be moved to tomorrow in one go. Tasks without minutes are counted apart."
                            text: qsTrId("settings.general.dayPlan.caption")
                            wrapMode: Text.Wrap
                            elide: Text.ElideNone
                        }
                    }
                }

                SectionTitle {
                    //: Settings, General: heading of the tray settings
                    //% "In the tray"
                    text: qsTrId("settings.general.tray")
                }
                SettingRow {
                    //: Settings, General: how many characters of the task's title the tray shows
                    //% "Title length in the tray"
                    label: qsTrId("settings.general.trayTitle")
                    SettingSelect {
                        objectName: "trayTitleBox"
                        textRole: "text"
                        valueRole: "value"
                        model: Array.from([0, 8, 12, 16, 24, 32]).map(n => ({
                            value: n,
                            text: n === 0
                                  //: Settings, General: tray title length option that shows only the countdown
                                  //% "Countdown only"
                                  ? qsTrId("settings.general.trayTitle.none")
                                  //: Settings, General: tray title length option; %1 = a number of characters
                                  //% "%1 characters"
                                  : qsTrId("settings.general.trayTitle.chars").arg(n)
                        }))
                        value: root.general.menuBarMaxChars
                        Accessible.name: qsTrId("settings.general.trayTitle")
                        onChosen: (choice) => root.general.menuBarMaxChars = choice
                    }
                }
                ToggleSwitch {
                    objectName: "minimalIdle"
                    Layout.fillWidth: true
                    //: Settings, General: switch that hides the tray's text while no task is in hand
                    //% "Only the icon while no task is in hand"
                    text: qsTrId("settings.general.minimalIdle")
                    checked: root.general.minimalIdleMode
                    onToggled: root.general.minimalIdleMode = checked
                }
                SettingRow {
                    //: Settings, General: label of the idle threshold menu
                    //% "Ask about time away after"
                    label: qsTrId("settings.general.idle")
                    //: Settings, General: what the idle threshold does
                    //% "While the timer runs, a stretch without keyboard or mouse this long is offered to subtract from the measured time."
                    caption: qsTrId("settings.general.idle.caption")
                    SettingSelect {
                        objectName: "idleBox"
                        textRole: "text"
                        valueRole: "value"
                        model: Array.from([5, 10, 15, 0]).map(n => ({
                            value: n,
                            text: n === 0
                                  //: Settings, General: idle threshold option: never ask about time away
                                  //% "Never"
                                  ? qsTrId("settings.general.idle.off")
                                  //: Settings, General: idle threshold option; %1 = minutes
                                  //% "%1 minutes"
                                  : qsTrId("settings.general.idle.minutes").arg(n)
                        }))
                        value: root.general.idleThresholdMinutes
                        Accessible.name: qsTrId("settings.general.idle")
                        onChosen: (choice) => root.general.idleThresholdMinutes = choice
                    }
                }
                ToggleSwitch {
                    objectName: "editHistory"
                    Layout.fillWidth: true
                    //: Settings, General: switch that lets the tasks of past days be changed
                    //% "Edit past days"
                    text: qsTrId("settings.general.editHistory")
                    //: Settings, General: what editing past days allows
                    //% "Correct the title, plan or measured time of a task on an earlier day, or tick it. Off, past days are only shown."
                    caption: qsTrId("settings.general.editHistory.caption")
                    checked: root.general.editHistory
                    onToggled: root.general.editHistory = checked
                }
            }

            // ---- Reminders
            Page {
                objectName: "page-reminders"
                heading: root.tabs[1].title
                ToggleSwitch {
                    objectName: "notifications"
                    Layout.fillWidth: true
                    //: Settings, Reminders: switch for desktop notifications
                    //% "Notifications"
                    text: qsTrId("settings.reminders.notifications")
                    //: Settings, Reminders: what the notifications are
                    //% "When the planned time of the task in hand is up, with Done and more time as buttons."
                    caption: qsTrId("settings.reminders.notifications.caption")
                    checked: root.reminders.notificationsEnabled
                    onToggled: root.reminders.notificationsEnabled = checked
                }
                SettingRow {
                    //: Settings, Reminders: label of the menu for the warning before the planned end
                    //% "Warn before the end"
                    label: qsTrId("settings.reminders.warning")
                    SettingSelect {
                        objectName: "warningBox"
                        textRole: "text"
                        valueRole: "value"
                        model: Array.from([0, 1, 2, 5, 10]).map(n => ({
                            value: n,
                            text: n === 0
                                  //: Settings, Reminders: warning option: no warning before the planned end
                                  //% "No warning"
                                  ? qsTrId("settings.reminders.warning.off")
                                  //: Settings, Reminders: warning option; %1 = minutes before the planned end
                                  //% "%1 min before"
                                  : qsTrId("settings.reminders.warning.minutes").arg(n)
                        }))
                        value: root.reminders.warningMinutes
                        Accessible.name: qsTrId("settings.reminders.warning")
                        onChosen: (choice) => root.reminders.warningMinutes = choice
                    }
                }
                SettingRow {
                    //: Settings, Reminders: label of the menu with the minutes the "+N" button adds
                    //% "More time adds"
                    label: qsTrId("settings.reminders.overtime")
                    SettingSelect {
                        objectName: "overtimeBox"
                        textRole: "text"
                        valueRole: "value"
                        model: Array.from([5, 10, 15, 20, 30]).map(n => ({
                            value: n,
                            //: Settings, Reminders: option of the minutes "+N" adds; %1 = minutes
                            //% "%1 minutes"
                            text: qsTrId("settings.reminders.overtime.minutes").arg(n)
                        }))
                        value: root.reminders.overtimeMinutes
                        Accessible.name: qsTrId("settings.reminders.overtime")
                        onChosen: (choice) => root.reminders.overtimeMinutes = choice
                    }
                }
                SectionTitle {
                    //: Settings, Reminders: heading of the sound settings
                    //% "Sound"
                    text: qsTrId("settings.reminders.sound.title")
                }
                ToggleSwitch {
                    objectName: "sound"
                    Layout.fillWidth: true
                    //: Settings, Reminders: switch for the chimes
                    //% "Play a chime at the warning and at the end"
                    text: qsTrId("settings.reminders.sound")
                    //: Settings, Reminders: how loud the chimes are
                    //% "The warning plays softer than the end."
                    caption: qsTrId("settings.reminders.sound.caption")
                    checked: root.reminders.soundEnabled
                    onToggled: root.reminders.soundEnabled = checked
                }
                SettingRow {
                    //: Settings, Reminders: label of the chime volume menu
                    //% "Volume"
                    label: qsTrId("settings.reminders.volume")
                    SettingSelect {
                        objectName: "volumeBox"
                        enabled: root.reminders.soundEnabled
                        textRole: "text"
                        valueRole: "value"
                        model: Array.from([10, 25, 50, 75, 100]).map(n => ({
                            value: n,
                            //: Settings, Reminders: volume option; %1 = percent of full volume
                            //% "%1%"
                            text: qsTrId("settings.reminders.volume.percent").arg(n)
                        }))
                        value: root.reminders.volumePercent
                        Accessible.name: qsTrId("settings.reminders.volume")
                        onChosen: (choice) => root.reminders.volumePercent = choice
                    }
                }
                Repeater {
                    model: [
                        //: Settings, Reminders: label of the chime played when the planned time is up
                        //% "Time is up"
                        { event: 0, name: "chimeBox", label: qsTrId("settings.reminders.chime.end") },
                        //: Settings, Reminders: label of the chime played at the warning before the end
                        //% "Warning"
                        { event: 1, name: "warningChimeBox", label: qsTrId("settings.reminders.chime.warning") },
                        //: Settings, Reminders: label of the chime played when a task is completed
                        //% "Task completed"
                        { event: 2, name: "completionChimeBox", label: qsTrId("settings.reminders.chime.completion") }
                    // Qt 6.4's qmllint takes ids outside a delegate or Component for unqualified; this one is only made here.
                    // qmllint disable unqualified
                    ]
                    delegate: SettingRow {
                        id: chimeRow
                        required property var modelData
                        label: modelData.label
                        Row {
                            spacing: Tokens.spaceS
                            SettingSelect {
                                id: eventChimeBox
                                objectName: chimeRow.modelData.name
                                width: 176
                                enabled: root.reminders.soundEnabled
                                model: root.reminders.chimes
                                value: chimeRow.modelData.event === 1 ? root.reminders.warningChime
                                     : chimeRow.modelData.event === 2 ? root.reminders.completionChime
                                     : root.reminders.chime
                                //: Settings, Reminders: accessible name of a chime menu; %1 = the event
                                //% "Chime: %1"
                                Accessible.name: qsTrId("settings.reminders.chime.of").arg(chimeRow.modelData.label)
                                onChosen: (choice) => {
                                    if (chimeRow.modelData.event === 1)
                                        root.reminders.warningChime = choice
                                    else if (chimeRow.modelData.event === 2)
                                        root.reminders.completionChime = choice
                                    else
                                        root.reminders.chime = choice
                                }
                            }
                            IconButton {
                                objectName: chimeRow.modelData.name + "Preview"
                                iconName: "play"
                                //: Settings, Reminders: button that plays a chime; %1 = the event
                                //% "Play the chime: %1"
                                hint: qsTrId("settings.reminders.preview.of").arg(chimeRow.modelData.label)
                                onClicked: root.reminders.preview(eventChimeBox.currentText, chimeRow.modelData.event)
                            }
                        }
                    }
                    // qmllint enable unqualified
                }
            }

            // ---- Hotkeys
            Page {
                objectName: "page-hotkeys"
                heading: root.tabs[2].title
                TextBlock {
                    Layout.fillWidth: true
                    role: "secondary"
                    //: Settings, Hotkeys: how to change a hot key
                    //% "These work everywhere. To change one, choose it and press the new keys, with Super, Ctrl or Alt."
                    text: qsTrId("settings.hotkeys.caption")
                    wrapMode: Text.Wrap
                    elide: Text.ElideNone
                }
                Repeater {
                    model: [
                        { action: "togglePopover", title: qsTrId("settings.hotkeys.togglePopover") },
                        { action: "quickAdd", title: qsTrId("settings.hotkeys.quickAdd") }
                    // Qt 6.4's qmllint takes ids outside a delegate or Component for unqualified; this one is only made here.
                    // qmllint disable unqualified
                    ]
                    delegate: ColumnLayout {
                        id: hotkeyRow
                        required property var modelData
                        readonly property bool isToggle: modelData.action === "togglePopover"
                        property string hint: ""
                        Layout.fillWidth: true
                        spacing: Tokens.spaceXs
                        SettingRow {
                            label: hotkeyRow.modelData.title
                            Row {
                                spacing: Tokens.spaceS
                                KeyRecorder {
                                    objectName: "recorder-" + hotkeyRow.modelData.action
                                    keysText: hotkeyRow.isToggle ? root.hotkeys.togglePopover : root.hotkeys.quickAdd
                                    text: hotkeyRow.modelData.title
                                    Accessible.name: hotkeyRow.modelData.title
                                    onRecordingChanged: if (recording) hotkeyRow.hint = ""
                                    onRecorded: (key, modifiers, scanCode) => {
                                        const text = root.hotkeys.recordedText(key, modifiers, scanCode)
                                        if (text.length === 0)
                                            //: Settings, Hotkeys: a pressed combination that cannot be a hot key
                                            //% "Hold Super, Ctrl or Alt together with a letter, a digit, Space, Return, Tab, Delete or an arrow key."
                                            hotkeyRow.hint = qsTrId("settings.hotkeys.needsModifier")
                                        else
                                            root.hotkeys.apply(hotkeyRow.modelData.action, text)
                                    }
                                }
                                ActionButton {
                                    kind: "flat"
                                    //: Settings, Hotkeys: button that puts a hot key back to its first combination
                                    //% "Default"
                                    text: qsTrId("settings.hotkeys.default")
                                    Accessible.name: text + ", " + hotkeyRow.modelData.title
                                    onClicked: root.hotkeys.restoreDefault(hotkeyRow.modelData.action)
                                }
                            }
                        }
                        TextBlock {
                            objectName: "hotkeyMessage-" + hotkeyRow.modelData.action
                            Layout.fillWidth: true
                            visible: text.length > 0
                            role: "danger"
                            text: hotkeyRow.hint.length > 0 ? hotkeyRow.hint
                                  : hotkeyRow.isToggle ? root.hotkeys.togglePopoverMessage : root.hotkeys.quickAddMessage
                            wrapMode: Text.Wrap
                            elide: Text.ElideNone
                        }
                    }
                    // qmllint enable unqualified
                }
                Card {
                    objectName: "hotkeyBackend"
                    Layout.fillWidth: true
                    implicitHeight: backendColumn.implicitHeight + 2 * padding
                    ColumnLayout {
                        id: backendColumn
                        width: parent.width
                        spacing: Tokens.spaceXs
                        TextBlock {
                            Layout.fillWidth: true
                            wrapMode: Text.Wrap
                            elide: Text.ElideNone
                            text: root.hotkeys.backend === "portal"
                                  //: Settings, Hotkeys: which way global hot keys reach the desktop
                                  //% "Global hot keys go through the desktop's shortcuts portal; it may ask you to confirm them."
                                  ? qsTrId("settings.hotkeys.backend.portal")
                                  : root.hotkeys.backend === "kglobalaccel"
                                  //: Settings, Hotkeys: which way global hot keys reach the desktop
                                  //% "Global hot keys go through KDE's shortcut service; they also show in System Settings."
                                  ? qsTrId("settings.hotkeys.backend.kglobalaccel")
                                  : root.hotkeys.backend === "x11"
                                  //: Settings, Hotkeys: which way global hot keys reach the desktop
                                  //% "Global hot keys are taken from the X server directly."
                                  ? qsTrId("settings.hotkeys.backend.x11")
                                  //: Settings, Hotkeys: no way to register global hot keys on this desktop
                                  //% "This desktop lets no program set global hot keys. Add shortcuts in the desktop's keyboard settings that run these commands instead:"
                                  : qsTrId("settings.hotkeys.backend.none")
                        }
                        Repeater {
                            model: root.hotkeys.backend.length === 0
                                   ? [{ title: qsTrId("settings.hotkeys.togglePopover"), command: root.hotkeys.togglePopoverCommand },
                                      { title: qsTrId("settings.hotkeys.quickAdd"), command: root.hotkeys.quickAddCommand }]
                                   : []
                            delegate: RowLayout {
                                id: commandRow
                                required property var modelData
                                Layout.fillWidth: true
                                TextBlock {
                                    Layout.preferredWidth: 200
                                    role: "secondary"
                                    text: commandRow.modelData.title
                                }
                                TextEdit {
                                    Layout.fillWidth: true
                                    readOnly: true
                                    selectByMouse: true
                                    activeFocusOnTab: true
                                    text: commandRow.modelData.command
                                    font.family: "monospace"
                                    font.pixelSize: Theme.smallSize
                                    color: Theme.text
                                    selectionColor: Theme.accent
                                    selectedTextColor: Theme.onAccent
                                    Accessible.role: Accessible.EditableText
                                    Accessible.name: commandRow.modelData.title
                                }
                            }
                        }
                    }
                }
                SectionTitle {
                    //: Settings, Hotkeys: heading of the list of the popover's fixed shortcuts
                    //% "While the popover is open"
                    text: qsTrId("settings.hotkeys.builtIn.title")
                }
                Repeater {
                    model: root.hotkeys.builtIns
                    delegate: RowLayout {
                        id: builtInRow
                        required property var modelData
                        Layout.fillWidth: true
                        spacing: Tokens.spaceM
                        Accessible.role: Accessible.StaticText
                        Accessible.name: modelData.label + ": " + modelData.keys
                        Item {
                            Layout.preferredWidth: 130
                            implicitHeight: keyChip.implicitHeight
                            Chip {
                                id: keyChip
                                tone: "neutral"
                                text: builtInRow.modelData.keys
                            }
                        }
                        TextBlock {
                            Layout.fillWidth: true
                            text: builtInRow.modelData.label
                        }
                    }
                }
            }

            // ---- Routines
            Item {
                objectName: "page-routines"
                RoutinesPane {
                    id: routinesPane
                    anchors.fill: parent
                    anchors.margins: Tokens.spaceXl
                    routines: root.routines
                }
            }

            // ---- Sync
            SyncPane {
                id: syncPane
                objectName: "page-sync"
                sync: root.sync
            }

            // ---- Permissions
            Page {
                objectName: "page-permissions"
                heading: root.tabs[5].title
                TextBlock {
                    Layout.fillWidth: true
                    role: "secondary"
                    //: Settings, Permissions: what the tab shows
                    //% "What Tarnwell can use on this desktop right now. Nothing here is required: without a facility, the rest keeps working."
                    text: qsTrId("settings.permissions.caption")
                    wrapMode: Text.Wrap
                    elide: Text.ElideNone
                }
                Repeater {
                    model: root.permissions.facilities
                    delegate: Card {
                        id: facility
                        required property var modelData
                        objectName: "facility-" + modelData.id
                        Layout.fillWidth: true
                        implicitHeight: facilityRow.implicitHeight + 2 * padding
                        Accessible.role: Accessible.Grouping
                        Accessible.name: modelData.title + ": " + stateText.text
                        Accessible.description: modelData.explanation + " " + modelData.fix
                        RowLayout {
                            id: facilityRow
                            width: parent.width
                            spacing: Tokens.spaceM
                            Icon {
                                Layout.alignment: Qt.AlignTop
                                Layout.preferredWidth: Tokens.iconSize
                                Layout.preferredHeight: Tokens.iconSize
                                name: facility.modelData.state === "working" ? "done"
                                      : facility.modelData.state === "limited" ? "warning" : "close"
                                color: facility.modelData.state === "working" ? Theme.accentText
                                       : facility.modelData.state === "limited" ? Theme.text : Theme.dangerText
                            }
                            ColumnLayout {
                                Layout.fillWidth: true
                                spacing: 2
                                RowLayout {
                                    Layout.fillWidth: true
                                    TextBlock {
                                        Layout.fillWidth: true
                                        font.weight: Font.DemiBold
                                        text: facility.modelData.title
                                        wrapMode: Text.Wrap
                                        elide: Text.ElideNone
                                    }
                                    Chip {
                                        id: stateText
                                        tone: facility.modelData.state === "working" ? "accent"
                                              : facility.modelData.state === "limited" ? "neutral" : "danger"
                                        text: facility.modelData.state === "working"
                                              //: Settings, Permissions: state of a facility that works
                                              //% "Working"
                                              ? qsTrId("settings.permissions.working")
                                              : facility.modelData.state === "limited"
                                              //: Settings, Permissions: state of a facility that works in part
                                              //% "In part"
                                              ? qsTrId("settings.permissions.limited")
                                              //: Settings, Permissions: state of a facility this desktop lacks
                                              //% "Not available"
                                              : qsTrId("settings.permissions.missing")
                                    }
                                }
                                TextBlock {
                                    Layout.fillWidth: true
                                    role: "secondary"
                                    text: facility.modelData.explanation
                                    wrapMode: Text.Wrap
                                    elide: Text.ElideNone
                                }
                                TextBlock {
                                    Layout.fillWidth: true
                                    visible: text.length > 0
                                    text: facility.modelData.fix
                                    wrapMode: Text.Wrap
                                    elide: Text.ElideNone
                                }
                            }
                        }
                    }
                }
                ActionButton {
                    objectName: "checkAgain"
                    //: Settings, Permissions: button that looks at the desktop again
                    //% "Check again"
                    text: qsTrId("settings.permissions.refresh")
                    onClicked: root.permissions.refresh()
                }
            }

            // ---- About
            Page {
                objectName: "page-about"
                heading: root.tabs[6].title
                RowLayout {
                    spacing: Tokens.spaceM
                    ColumnLayout {
                        spacing: 0
                        TextBlock {
                            role: "title"
                            text: "Tarnwell"
                        }
                        TextBlock {
                            role: "secondary"
                            //: Settings, About: the program's version; %1 = a version number
                            //% "Version %1"
                            text: qsTrId("settings.about.version").arg(root.about.version)
                        }
                    }
                }
                TextBlock {
                    Layout.fillWidth: true
                    //: Settings, About: the licence
                    //% "© 2026 The Tarnwell team. Tarnwell is not yet published under a licence; all rights are reserved."
                    text: qsTrId("settings.about.licence")
                    wrapMode: Text.Wrap
                    elide: Text.ElideNone
                }
                SectionTitle {
                    //: Settings, About: heading of the data folder
                    //% "Your data"
                    text: qsTrId("settings.about.data")
                }
                TextBlock {
                    Layout.fillWidth: true
                    role: "secondary"
                    //: Settings, About: where the data is
                    //% "Everything Tarnwell keeps is in one file in this folder, on this computer only:"
                    text: qsTrId("settings.about.data.caption")
                    wrapMode: Text.Wrap
                    elide: Text.ElideNone
                }
                RowLayout {
                    Layout.fillWidth: true
                    spacing: Tokens.spaceS
                    TextEdit {
                        objectName: "dataFolder"
                        Layout.fillWidth: true
                        readOnly: true
                        selectByMouse: true
                        activeFocusOnTab: true
                        wrapMode: TextEdit.WrapAnywhere
                        text: root.about.dataFolder
                        font.family: "monospace"
                        font.pixelSize: Theme.smallSize
                        color: Theme.text
                        selectionColor: Theme.accent
                        selectedTextColor: Theme.onAccent
                        Accessible.role: Accessible.EditableText
                        Accessible.name: qsTrId("settings.about.data")
                    }
                    ActionButton {
                        objectName: "openDataFolder"
                        iconName: "folder"
                        //: Settings, About: button that opens the data folder in the file manager
                        //% "Open folder"
                        text: qsTrId("settings.about.openFolder")
                        onClicked: root.about.openDataFolder()
                    }
                }
                TextBlock {
                    Layout.fillWidth: true
                    role: "secondary"
                    //: Settings, About: how to export; %1 = a command line
                    //% "To keep a copy elsewhere, export everything with: %1"
                    text: qsTrId("settings.about.export").arg(root.about.exportCommand)
                    wrapMode: Text.Wrap
                    elide: Text.ElideNone
                }
                SectionTitle {
                    //: Settings, About: heading of where the logs go
                    //% "Logs"
                    text: qsTrId("settings.about.logs")
                }
                TextBlock {
                    Layout.fillWidth: true
                    role: "secondary"
                    //: Settings, About: where the logs go; the command must stay as it is
                    //% "Tarnwell writes what it does to the system journal (read it with journalctl --user -t tarnwell), or to its standard error when started from a terminal."
                    text: qsTrId("settings.about.logs.caption")
                    wrapMode: Text.Wrap
                    elide: Text.ElideNone
                }
            }
        }
    }
}
