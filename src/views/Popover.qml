import QtQml.Models
import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import QtQuick.Window
import Tarnwell.Views

// The popover under the tray icon: the task in hand, the day's queue, the day
// plan, the rollover bar, routines, toasts, the next-up screen and the add
// field.
ThemedWindow {
    id: root
    objectName: "popoverRoot"
    required property PopoverModel popover
    required property PopoverManager manager
    // The away banner's object (AwayBanner), when the idle monitor runs.
    property AwayBannerModel awayBanner: null
    // The history: a past day's line, whether it may be changed, the search.
    property HistoryModel history: null
    // The search over past tasks' titles covers the day's screen.
    property bool searching: false
    // The task whose inline editor is open ("" = none).
    property string editingId: ""

    width: 380
    height: 620
    minimumWidth: 360
    minimumHeight: 420
    visible: false
    color: Theme.window
    //: Title of the popover window (read by screen readers and window lists)
    //% "Today in Tarnwell"
    title: qsTrId("popover.window.title")

    function focusAddField() {
        addField.forceActiveFocus()
    }

    Shortcut {
        sequence: "Escape"
        onActivated: {
            if (routineNamePopup.opened)
                routineNamePopup.close()
            else if (root.searching)
                root.searching = false
            else if (root.editingId.length > 0)
                root.editingId = ""
            else
                root.manager.hide()
        }
    }

    Rectangle {
        anchors.fill: parent
        color: "transparent"
        border.color: Theme.separator
        border.width: 1
    }

    ColumnLayout {
        id: content
        anchors.fill: parent
        anchors.margins: Tokens.spaceM
        spacing: Tokens.spaceS

        // Day navigation and the routine menu.
        RowLayout {
            id: header
            Layout.fillWidth: true
            spacing: Tokens.spaceXs
            IconButton {
                objectName: "previousDay"
                iconName: "previous"
                //: Popover: button that shows the day before
                //% "Previous day"
                hint: qsTrId("popover.day.previous")
                onClicked: root.popover.previousDay()
            }
            ColumnLayout {
                objectName: "dayHeading"
                Layout.fillWidth: true
                spacing: 0
                TextBlock {
                    objectName: "dayTitle"
                    Layout.fillWidth: true
                    role: "title"
                    text: root.popover.dayTitle
                    horizontalAlignment: Text.AlignHCenter
                    Accessible.name: text + ", " + root.popover.dayDate
                }
                TextBlock {
                    objectName: "dayDate"
                    Layout.fillWidth: true
                    role: "secondary"
                    text: root.popover.dayDate
                    horizontalAlignment: Text.AlignHCenter
                }
            }
            IconButton {
                objectName: "todayButton"
                visible: !root.popover.isToday
                iconName: "today"
                hint: root.popover.texts.today
                onClicked: root.popover.today()
            }
            IconButton {
                objectName: "nextDay"
                iconName: "next"
                //: Popover: button that shows the day after
                //% "Next day"
                hint: qsTrId("popover.day.next")
                onClicked: root.popover.nextDay()
            }
            IconButton {
                objectName: "searchButton"
                visible: root.history !== null
                iconName: "search"
                //: Popover: button that opens the search over the titles of all tasks
                //% "Search past tasks"
                hint: qsTrId("popover.search")
                onClicked: {
                    root.searching = !root.searching
                    if (root.searching)
                        searchField.forceActiveFocus()
                }
            }
            IconButton {
                id: routineButton
                objectName: "routineButton"
                iconName: "menu"
                //: Popover: tooltip of the menu button with the routines, the review and the settings
                //% "Routines, review and settings"
                hint: qsTrId("popover.menu.tooltip")
                // Made when first opened.
                property ActionMenu menu: null
                onClicked: {
                    if (!menu)
                        menu = routineMenuComponent.createObject(routineButton)
                    menu.open()
                }

                // Qt 6.4's qmllint takes ids outside a delegate or Component for unqualified; this one is only made here.
                // qmllint disable unqualified
                Component {
                    id: routineMenuComponent
                ActionMenu {
                    id: routineMenu
                    y: routineButton.height
                    x: routineButton.width - width
                    ActionMenuItem {
                        text: root.popover.texts.routineLoad
                        enabled: false
                    }
                    Instantiator {
                        model: root.popover.routines
                        delegate: ActionMenuItem {
                            required property var modelData
                            iconName: "routine"
                            text: modelData.name
                            onTriggered: root.popover.loadRoutine(modelData.id)
                        }
                        onObjectAdded: (index, object) => routineMenu.insertItem(index + 1, object)
                        onObjectRemoved: (index, object) => routineMenu.removeItem(object)
                    }
                    ActionMenuItem {
                        visible: root.popover.routines.length === 0
                        text: root.popover.texts.routineNone
                        enabled: false
                    }
                    MenuDivider {}
                    ActionMenuItem {
                        iconName: "add"
                        text: root.popover.texts.routineSaveQueue
                        enabled: root.popover.tasks.openCount > 0
                        onTriggered: routineNamePopup.open()
                    }
                    ActionMenuItem {
                        objectName: "manageRoutines"
                        iconName: "routine"
                        text: root.popover.texts.routineManage
                        onTriggered: root.popover.manageRoutines()
                    }
                    MenuDivider {}
                    ActionMenuItem {
                        objectName: "openReview"
                        iconName: "review"
                        //: Popover menu: opens the review of estimates
                        //% "Review…"
                        text: qsTrId("popover.menu.review")
                        onTriggered: root.manager.requestReview()
                    }
                    ActionMenuItem {
                        objectName: "openWrapUp"
                        iconName: "wrapup"
                        //: Popover menu: opens the end-of-day wrap-up
                        //% "Wrap up the day…"
                        text: qsTrId("popover.menu.wrapUp")
                        onTriggered: root.manager.requestWrapUp()
                    }
                    ActionMenuItem {
                        objectName: "openSettings"
                        iconName: "settings"
                        //: Popover menu: opens the settings window
                        //% "Settings…"
                        text: qsTrId("popover.menu.settings")
                        onTriggered: root.manager.requestSettings()
                    }
                }
                }
                // qmllint enable unqualified
            }
        }

        // A past day: what was done and for how long.
        TextBlock {
            objectName: "historySummary"
            Layout.fillWidth: true
            visible: text.length > 0
            role: "secondary"
            horizontalAlignment: Text.AlignHCenter
            text: root.history ? root.history.daySummary : ""
            wrapMode: Text.Wrap
        }

        // Unfinished work of the past week (today only).
        Banner {
            objectName: "rolloverBanner"
            Layout.fillWidth: true
            visible: root.popover.rolloverVisible
            iconName: "rollover"
            text: root.popover.rolloverText
            ActionButton {
                objectName: "rollForward"
                kind: "primary"
                iconName: "rollover"
                text: root.popover.texts.rollForward
                onClicked: root.popover.rollForward()
            }
            ActionButton {
                objectName: "rolloverArchive"
                iconName: "archive"
                text: root.popover.texts.archive
                onClicked: root.popover.archiveRollover()
            }
            ActionButton {
                objectName: "rolloverDismiss"
                kind: "flat"
                text: root.popover.texts.dismiss
                onClicked: root.popover.dismissRollover()
            }
        }

        AwayBanner {
            Layout.fillWidth: true
            model: root.awayBanner
        }

        // The task in hand.
        Card {
            objectName: "taskInHandCard"
            Accessible.role: Accessible.Grouping
            Accessible.name: root.popover.cardTitle
            Accessible.description: root.popover.countdownText + " " + root.popover.countdownCaption
            Layout.fillWidth: true
            visible: root.popover.hasTaskInHand
            tone: root.popover.isOverdue ? "danger" : "normal"
            implicitHeight: cardColumn.implicitHeight + 2 * padding
            ColumnLayout {
                id: cardColumn
                width: parent.width
                spacing: Tokens.spaceS
                RowLayout {
                    Layout.fillWidth: true
                    spacing: Tokens.spaceS
                    TextBlock {
                        Layout.fillWidth: true
                        role: "title"
                        text: root.popover.cardTitle
                        wrapMode: Text.Wrap
                        maximumLineCount: 2
                    }
                    Chip {
                        objectName: "cardStatus"
                        visible: root.popover.cardStatus.length > 0
                        tone: root.popover.isOverdue ? "danger" : root.popover.timerRunning ? "accent" : "neutral"
                        iconName: root.popover.timerRunning ? "play" : "pause"
                        text: root.popover.cardStatus
                        Layout.maximumWidth: 130
                        Layout.alignment: Qt.AlignTop
                    }
                }
                RowLayout {
                    Layout.fillWidth: true
                    spacing: Tokens.spaceS
                    TextBlock {
                        objectName: "countdown"
                        text: root.popover.countdownText
                        role: root.popover.isOverdue ? "danger" : "body"
                        font.pixelSize: Theme.displaySize
                        font.weight: Font.DemiBold
                        elide: Text.ElideNone
                    }
                    TextBlock {
                        Layout.fillWidth: true
                        Layout.alignment: Qt.AlignBaseline
                        role: "secondary"
                        text: root.popover.countdownCaption
                    }
                }
                ProgressLine {
                    Layout.fillWidth: true
                    value: root.popover.progress
                    overdue: root.popover.isOverdue
                }
                Flow {
                    Layout.fillWidth: true
                    spacing: Tokens.spaceS
                    ActionButton {
                        objectName: "timerButton"
                        kind: root.popover.timerRunning ? "secondary" : "primary"
                        iconName: root.popover.timerRunning ? "pause" : "play"
                        text: root.popover.timerLabel
                        onClicked: root.popover.toggleTimer()
                    }
                    ActionButton {
                        objectName: "doneButton"
                        iconName: "done"
                        //: Task card button that marks the task in hand done
                        //% "Done"
                        text: qsTrId("popover.card.done")
                        onClicked: root.popover.completeTaskInHand()
                    }
                    ActionButton {
                        objectName: "extendChip"
                        kind: "flat"
                        iconName: "extend"
                        text: root.popover.extendLabel
                        hint: root.popover.extendTooltip
                        onClicked: root.popover.extendTaskInHand(root.popover.extendMinutes)
                    }
                }
                TextBlock {
                    Layout.fillWidth: true
                    visible: text.length > 0
                    role: "secondary"
                    text: root.popover.cardNotes
                    wrapMode: Text.Wrap
                    maximumLineCount: 4
                }
            }
        }

        // The day's queue, then its completed tasks. A task that moves
        // (reordered, or done and settling among the completed) slides to
        // its place; new rows fade in.
        ListView {
            id: list
            objectName: "taskList"
            Accessible.role: Accessible.List
            Accessible.name: root.popover.dayTitle
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            spacing: 2
            model: root.popover.tasks
            activeFocusOnTab: true
            keyNavigationEnabled: true
            boundsBehavior: Flickable.StopAtBounds
            T.ScrollBar.vertical: ScrollBarThin {}

            move: Transition {
                NumberAnimation { properties: "y"; duration: Theme.motionMedium; easing.type: Easing.OutCubic }
            }
            moveDisplaced: Transition {
                NumberAnimation { properties: "y"; duration: Theme.motionMedium; easing.type: Easing.OutCubic }
            }
            displaced: Transition {
                NumberAnimation { properties: "y"; duration: Theme.motionMedium; easing.type: Easing.OutCubic }
            }
            add: Transition {
                NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.motionMedium }
            }

            TextBlock {
                anchors.centerIn: parent
                width: parent.width - 24
                visible: list.count === 0
                role: "secondary"
                //: Popover: the shown day has no tasks
                //% "Nothing planned. Add a task below."
                text: qsTrId("popover.list.empty")
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
            }

            // Qt 6.4's qmllint takes ids outside a delegate or Component for unqualified; this one is only made here.
            // qmllint disable unqualified
            delegate: TaskRow {
                width: list.width
                popover: root.popover
                history: root.history
                listView: list
                editing: root.editingId === model.id
                onEditRequested: root.editingId = model.id
                onEditFinished: root.editingId = ""
            }
            // qmllint enable unqualified
        }

        // The day plan.
        ColumnLayout {
            objectName: "dayPlanFooter"
            Layout.fillWidth: true
            spacing: 2
            visible: root.popover.footerSummary.length > 0 || root.popover.footerOverflow.length > 0
                     || root.popover.footerUntimed.length > 0 || root.popover.footerWorkdayEnd.length > 0
            Rectangle {
                Layout.fillWidth: true
                Layout.bottomMargin: Tokens.spaceXs
                implicitHeight: 1
                color: Theme.separator
            }
            TextBlock {
                Layout.fillWidth: true
                visible: text.length > 0
                role: "secondary"
                text: root.popover.footerSummary
                wrapMode: Text.Wrap
                Accessible.name: root.popover.footerAccessibleSummary
            }
            TextBlock {
                objectName: "footerWorkdayEnd"
                Layout.fillWidth: true
                visible: text.length > 0
                role: "secondary"
                text: root.popover.footerWorkdayEnd
                wrapMode: Text.Wrap
            }
            RowLayout {
                Layout.fillWidth: true
                visible: root.popover.overflowCount > 0
                Icon {
                    name: "urgent"
                    color: Theme.dangerText
                    Layout.preferredWidth: Tokens.iconSmall
                    Layout.preferredHeight: Tokens.iconSmall
                }
                TextBlock {
                    Layout.fillWidth: true
                    role: "danger"
                    font.pixelSize: Theme.smallSize
                    text: root.popover.footerOverflow
                }
                ActionButton {
                    objectName: "moveOverflow"
                    kind: "flat"
                    iconName: "rollover"
                    text: root.popover.texts.moveOverflowShort
                    hint: root.popover.texts.moveOverflow
                    onClicked: root.popover.moveOverflowToTomorrow()
                }
            }
            TextBlock {
                Layout.fillWidth: true
                visible: text.length > 0
                role: "secondary"
                text: root.popover.footerUntimed
            }
        }

        // Toasts, one at a time, above the add field.
        Toast {
            objectName: "toast"
            Layout.fillWidth: true
            shown: root.popover.toastVisible
            text: root.popover.toastText
            actionText: root.popover.toastCanUndo ? root.popover.texts.undo : ""
            onActionTriggered: root.popover.undoToast()
        }

        // The add field with what the line will set.
        ColumnLayout {
            Layout.fillWidth: true
            spacing: Tokens.spaceXs
            InputField {
                id: addField
                objectName: "addField"
                Layout.fillWidth: true
                // A past day takes new tasks only while its history may be changed.
                enabled: root.history ? root.history.canEdit : true
                //: Popover: placeholder of the field that adds a task to the shown day
                //% "Add a task · 30m tomorrow !"
                placeholderText: qsTrId("popover.add.placeholder")
                Accessible.name: placeholderText
                onTextEdited: root.popover.draft.text = text
                onAccepted: root.popover.draft.commit()
                Connections {
                    target: root.popover.draft
                    function onTextChanged() {
                        if (addField.text !== root.popover.draft.text)
                            addField.text = root.popover.draft.text
                    }
                }
            }
            Flow {
                Layout.fillWidth: true
                spacing: Tokens.spaceXs
                visible: root.popover.draft.title.length > 0
                Chip {
                    visible: root.popover.draft.durationText.length > 0
                    iconName: "extend"
                    text: root.popover.draft.durationText
                }
                Chip {
                    visible: root.popover.draft.dayLabel.length > 0
                    iconName: "today"
                    text: root.popover.draft.dayLabel
                }
                Chip {
                    visible: root.popover.draft.urgent
                    tone: "danger"
                    iconName: "urgent"
                    //: Quick-add chip: the typed task goes first in the queue
                    //% "Urgent"
                    text: qsTrId("quickAdd.chip.urgent")
                }
            }
            TextBlock {
                objectName: "addError"
                Layout.fillWidth: true
                visible: text.length > 0
                role: "danger"
                font.pixelSize: Theme.smallSize
                text: root.popover.draft.error
                wrapMode: Text.Wrap
            }
        }
    }

    // The search over the titles of every day's tasks; a result opens its day.
    Rectangle {
        objectName: "historySearch"
        visible: root.searching
        color: Theme.window
        x: Tokens.spaceM
        y: Tokens.spaceM + header.height + Tokens.spaceS
        width: parent.width - 2 * Tokens.spaceM
        height: parent.height - y - Tokens.spaceM
        MouseArea { anchors.fill: parent }
        ColumnLayout {
            anchors.fill: parent
            spacing: Tokens.spaceS
            InputField {
                id: searchField
                objectName: "historySearchField"
                Layout.fillWidth: true
                //: Popover: placeholder of the field that searches past tasks by title
                //% "Find a task by its title"
                placeholderText: qsTrId("popover.search.placeholder")
                Accessible.name: placeholderText
                onTextEdited: if (root.history) root.history.query = text
                Keys.onDownPressed: results.forceActiveFocus()
            }
            TextBlock {
                objectName: "historySearchLine"
                Layout.fillWidth: true
                visible: text.length > 0
                role: "secondary"
                text: root.history ? root.history.resultsLine : ""
            }
            ListView {
                id: results
                objectName: "historyResults"
                Accessible.role: Accessible.List
                Accessible.name: root.history ? root.history.resultsLine : ""
                Layout.fillWidth: true
                Layout.fillHeight: true
                clip: true
                spacing: 2
                activeFocusOnTab: true
                keyNavigationEnabled: true
                boundsBehavior: Flickable.StopAtBounds
                T.ScrollBar.vertical: ScrollBarThin {}
                model: root.history ? root.history.results : []
                // Qt 6.4's qmllint takes ids outside a delegate or Component for unqualified; this one is only made here.
                // qmllint disable unqualified
                delegate: ListRow {
                    id: resultRow
                    required property var modelData
                    required property int index
                    width: results.width
                    implicitHeight: Math.max(Tokens.rowHeight, resultColumn.implicitHeight + 10)
                    current: ListView.isCurrentItem && results.activeFocus
                    Accessible.role: Accessible.ListItem
                    Accessible.name: resultRow.modelData.title + ", " + resultRow.modelData.date
                                     + (resultRow.modelData.detail.length > 0 ? ", " + resultRow.modelData.detail : "")
                    onClicked: {
                        root.history.openResult(resultRow.modelData.dayOffset)
                        root.searching = false
                    }
                    Keys.onReturnPressed: resultRow.clicked()
                    Keys.onEnterPressed: resultRow.clicked()
                    RowLayout {
                        anchors.fill: parent
                        anchors.leftMargin: Tokens.spaceS
                        anchors.rightMargin: Tokens.spaceS
                        spacing: Tokens.spaceS
                        Icon {
                            name: resultRow.modelData.completed ? "done" : "today"
                            color: resultRow.modelData.completed ? Theme.accentText : Theme.secondaryText
                            Layout.preferredWidth: Tokens.iconSmall
                            Layout.preferredHeight: Tokens.iconSmall
                        }
                        ColumnLayout {
                            id: resultColumn
                            Layout.fillWidth: true
                            spacing: 0
                            TextBlock {
                                Layout.fillWidth: true
                                text: resultRow.modelData.title
                            }
                            TextBlock {
                                Layout.fillWidth: true
                                role: "caption"
                                text: resultRow.modelData.date
                                      + (resultRow.modelData.detail.length > 0 ? " · " + resultRow.modelData.detail : "")
                            }
                        }
                    }
                }
                // qmllint enable unqualified
            }
        }
    }

    // After a completion: what is next (made only when shown).
    Loader {
        id: nextUpLoader
        // What takes the keyboard when the screen shows; the screen sets it.
        property Item focusTarget: null
        anchors.fill: parent
        active: false
        visible: root.popover.nextUpVisible
        sourceComponent: nextUpComponent
        onVisibleChanged: if (visible) {
            active = true
            focusTarget.forceActiveFocus()
        }
    }
    // Qt 6.4's qmllint takes ids outside a delegate or Component for unqualified; this one is only made here.
    // qmllint disable unqualified
    Component {
        id: nextUpComponent
    Rectangle {
        objectName: "nextUpScreen"
        color: Theme.window
        Component.onCompleted: nextUpLoader.focusTarget = nextUpStartButton
        MouseArea { anchors.fill: parent }
        ColumnLayout {
            anchors.fill: parent
            anchors.margins: Tokens.spaceXl
            spacing: Tokens.spaceM
            Item { Layout.fillHeight: true }
            Rectangle {
                Layout.alignment: Qt.AlignHCenter
                implicitWidth: 56
                implicitHeight: 56
                radius: 28
                color: Theme.accentSoft
                Icon {
                    anchors.centerIn: parent
                    width: 28
                    height: 28
                    name: "done"
                    color: Theme.accentText
                }
            }
            TextBlock {
                Layout.fillWidth: true
                role: "heading"
                text: root.popover.texts.completionTitle
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
            }
            TextBlock {
                Layout.fillWidth: true
                role: "secondary"
                text: root.popover.nextUpFocused
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
            }
            TextBlock {
                Layout.fillWidth: true
                role: "secondary"
                text: root.popover.nextUpHasTask ? root.popover.texts.completionNextUp
                                                 : root.popover.texts.completionQueueEmpty
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
            }
            TextBlock {
                Layout.fillWidth: true
                visible: root.popover.nextUpHasTask
                role: "title"
                text: root.popover.nextUpTaskTitle
                      + (root.popover.nextUpTaskDuration.length > 0 ? " · " + root.popover.nextUpTaskDuration : "")
                wrapMode: Text.Wrap
                maximumLineCount: 3
                horizontalAlignment: Text.AlignHCenter
            }
            RowLayout {
                Layout.alignment: Qt.AlignHCenter
                spacing: Tokens.spaceS
                ActionButton {
                    id: nextUpStartButton
                    objectName: "nextUpStart"
                    visible: root.popover.nextUpHasTask
                    kind: "primary"
                    iconName: "play"
                    text: root.popover.texts.completionStart
                    onClicked: root.popover.startNextUp()
                }
                ActionButton {
                    objectName: "nextUpSkip"
                    text: root.popover.nextUpSkipLabel
                    onClicked: root.popover.skipNextUp()
                }
            }
            Item { Layout.fillHeight: true }
        }
    }
    }
    // qmllint enable unqualified

    // The name of a routine made from the queue.
    Sheet {
        id: routineNamePopup
        width: parent.width - 48
        title: root.popover.texts.routineNameField
        onOpened: routineName.forceActiveFocus()
        InputField {
            id: routineName
            objectName: "routineName"
            width: parent.width
            placeholderText: root.popover.texts.routineNamePlaceholder
            onAccepted: saveRoutine.clicked()
        }
        Row {
            anchors.right: parent.right
            spacing: Tokens.spaceS
            ActionButton {
                //: Button that closes a small form without saving
                //% "Cancel"
                text: qsTrId("popover.cancel")
                onClicked: routineNamePopup.close()
            }
            ActionButton {
                id: saveRoutine
                kind: "primary"
                //: Button that saves a small form
                //% "Save"
                text: qsTrId("popover.save")
                onClicked: {
                    root.popover.saveQueueAsRoutine(routineName.text)
                    routineName.text = ""
                    routineNamePopup.close()
                }
            }
        }
    }
}
