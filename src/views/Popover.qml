import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import QtQuick.Window

// The popover under the tray icon: the task in hand, the day's queue, the day
// plan, the rollover bar, routines, toasts, the next-up screen and the add
// field.
ThemedWindow {
    id: root
    objectName: "popoverRoot"
    required property QtObject popover
    required property QtObject manager
    // The away banner's object (AwayBanner), when the idle monitor runs.
    property QtObject awayBanner: null
    // The task whose inline editor is open ("" = none).
    property string editingId: ""

    width: 380
    height: 560
    minimumWidth: 360
    minimumHeight: 420
    visible: false
    color: appTheme.window
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
            else if (root.editingId.length > 0)
                root.editingId = ""
            else
                root.manager.hide()
        }
    }

    Rectangle {
        anchors.fill: parent
        color: "transparent"
        border.color: appTheme.separator
        border.width: 1
    }

    ColumnLayout {
        id: content
        anchors.fill: parent
        anchors.margins: 12
        spacing: 8

        // Day navigation and the routine menu.
        RowLayout {
            Layout.fillWidth: true
            spacing: 4
            PopButton {
                objectName: "previousDay"
                iconName: "previous"
                flat: true
                //: Popover: button that shows the day before
                //% "Previous day"
                ToolTip.text: qsTrId("popover.day.previous")
                onClicked: root.popover.previousDay()
            }
            ColumnLayout {
                objectName: "dayHeading"
                Layout.fillWidth: true
                spacing: 0
                Label {
                    objectName: "dayTitle"
                    Layout.fillWidth: true
                    text: root.popover.dayTitle
                    color: appTheme.text
                    font.pixelSize: 17
                    font.weight: Font.DemiBold
                    elide: Text.ElideRight
                    horizontalAlignment: Text.AlignHCenter
                    Accessible.role: Accessible.Heading
                    Accessible.name: text + ", " + root.popover.dayDate
                }
                Label {
                    objectName: "dayDate"
                    Layout.fillWidth: true
                    text: root.popover.dayDate
                    color: appTheme.secondaryText
                    font.pixelSize: 12
                    elide: Text.ElideRight
                    horizontalAlignment: Text.AlignHCenter
                }
            }
            PopButton {
                objectName: "todayButton"
                visible: !root.popover.isToday
                iconName: "today"
                flat: true
                ToolTip.text: root.popover.texts.today
                onClicked: root.popover.today()
            }
            PopButton {
                objectName: "nextDay"
                iconName: "next"
                flat: true
                //: Popover: button that shows the day after
                //% "Next day"
                ToolTip.text: qsTrId("popover.day.next")
                onClicked: root.popover.nextDay()
            }
            PopButton {
                id: routineButton
                objectName: "routineButton"
                iconName: "menu"
                flat: true
                ToolTip.text: root.popover.texts.routineTooltip
                onClicked: routineMenu.open()

                Menu {
                    id: routineMenu
                    y: routineButton.height
                    MenuItem {
                        text: root.popover.texts.routineLoad
                        enabled: false
                    }
                    Instantiator {
                        model: root.popover.routines
                        delegate: MenuItem {
                            required property var modelData
                            text: modelData.name
                            onTriggered: root.popover.loadRoutine(modelData.id)
                        }
                        onObjectAdded: (index, object) => routineMenu.insertItem(index + 1, object)
                        onObjectRemoved: (index, object) => routineMenu.removeItem(object)
                    }
                    MenuItem {
                        visible: root.popover.routines.length === 0
                        height: visible ? implicitHeight : 0
                        text: root.popover.texts.routineNone
                        enabled: false
                    }
                    MenuSeparator {}
                    MenuItem {
                        text: root.popover.texts.routineSaveQueue
                        enabled: root.popover.tasks.openCount > 0
                        onTriggered: routineNamePopup.open()
                    }
                    MenuItem {
                        objectName: "manageRoutines"
                        text: root.popover.texts.routineManage
                        onTriggered: root.popover.manageRoutines()
                    }
                }
            }
        }

        // Unfinished work of the past week (today only).
        Rectangle {
            objectName: "rolloverBanner"
            Layout.fillWidth: true
            visible: root.popover.rolloverVisible
            implicitHeight: rolloverColumn.implicitHeight + 16
            radius: 8
            color: appTheme.surface
            border.color: appTheme.accent
            ColumnLayout {
                id: rolloverColumn
                anchors.fill: parent
                anchors.margins: 8
                spacing: 6
                Label {
                    Layout.fillWidth: true
                    text: root.popover.rolloverText
                    color: appTheme.text
                    wrapMode: Text.Wrap
                }
                Flow {
                    Layout.fillWidth: true
                    spacing: 6
                    PopButton {
                        objectName: "rollForward"
                        text: root.popover.texts.rollForward
                        highlighted: true
                        onClicked: root.popover.rollForward()
                    }
                    PopButton {
                        objectName: "rolloverArchive"
                        text: root.popover.texts.archive
                        onClicked: root.popover.archiveRollover()
                    }
                    PopButton {
                        objectName: "rolloverDismiss"
                        text: root.popover.texts.dismiss
                        flat: true
                        onClicked: root.popover.dismissRollover()
                    }
                }
            }
        }

        AwayBanner {
            Layout.fillWidth: true
            model: root.awayBanner
        }

        // The task in hand.
        Rectangle {
            objectName: "taskInHandCard"
            Accessible.role: Accessible.Grouping
            Accessible.name: root.popover.cardTitle
            Accessible.description: root.popover.countdownText + " " + root.popover.countdownCaption
            Layout.fillWidth: true
            visible: root.popover.hasTaskInHand
            implicitHeight: cardColumn.implicitHeight + 20
            radius: 10
            color: appTheme.surface
            border.color: root.popover.isOverdue ? appTheme.danger : appTheme.separator
            ColumnLayout {
                id: cardColumn
                anchors.fill: parent
                anchors.margins: 10
                spacing: 6
                RowLayout {
                    Layout.fillWidth: true
                    Label {
                        Layout.fillWidth: true
                        text: root.popover.cardTitle
                        color: appTheme.text
                        font.pixelSize: 16
                        font.weight: Font.DemiBold
                        wrapMode: Text.Wrap
                        maximumLineCount: 2
                        elide: Text.ElideRight
                    }
                    Label {
                        text: root.popover.cardStatus
                        color: appTheme.secondaryText
                        elide: Text.ElideRight
                        Layout.maximumWidth: 110
                    }
                }
                RowLayout {
                    Layout.fillWidth: true
                    spacing: 6
                    Label {
                        objectName: "countdown"
                        text: root.popover.countdownText
                        color: root.popover.isOverdue ? appTheme.danger : appTheme.text
                        font.pixelSize: 26
                        font.family: "monospace"
                    }
                    Label {
                        Layout.fillWidth: true
                        text: root.popover.countdownCaption
                        color: appTheme.secondaryText
                        elide: Text.ElideRight
                    }
                }
                ProgressBar {
                    id: progress
                    Layout.fillWidth: true
                    from: 0
                    to: 1
                    value: root.popover.progress
                    background: Rectangle {
                        implicitHeight: 4
                        radius: 2
                        color: appTheme.separator
                    }
                    contentItem: Item {
                        implicitHeight: 4
                        Rectangle {
                            width: progress.visualPosition * parent.width
                            height: parent.height
                            radius: 2
                            color: root.popover.isOverdue ? appTheme.danger : appTheme.accent
                        }
                    }
                }
                Flow {
                    Layout.fillWidth: true
                    spacing: 6
                    PopButton {
                        objectName: "timerButton"
                        text: root.popover.timerLabel
                        highlighted: !root.popover.timerRunning
                        onClicked: root.popover.toggleTimer()
                    }
                    PopButton {
                        objectName: "doneButton"
                        //: Task card button that marks the task in hand done
                        //% "Done"
                        text: qsTrId("popover.card.done")
                        onClicked: root.popover.completeTaskInHand()
                    }
                    PopButton {
                        objectName: "extendChip"
                        text: root.popover.extendLabel
                        flat: true
                        ToolTip.text: root.popover.extendTooltip
                        onClicked: root.popover.extendTaskInHand(root.popover.extendMinutes)
                    }
                }
                Label {
                    Layout.fillWidth: true
                    visible: text.length > 0
                    text: root.popover.cardNotes
                    color: appTheme.secondaryText
                    wrapMode: Text.Wrap
                    maximumLineCount: 4
                    elide: Text.ElideRight
                }
            }
        }

        // The day's queue, then its completed tasks.
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
            ScrollBar.vertical: ScrollBar {}

            Label {
                anchors.centerIn: parent
                width: parent.width - 24
                visible: list.count === 0
                //: Popover: the shown day has no tasks
                //% "Nothing planned. Add a task below."
                text: qsTrId("popover.list.empty")
                color: appTheme.secondaryText
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
            }

            delegate: TaskRow {
                width: list.width
                popover: root.popover
                listView: list
                editing: root.editingId === model.id
                onEditRequested: root.editingId = model.id
                onEditFinished: root.editingId = ""
            }
        }

        // The day plan.
        ColumnLayout {
            objectName: "dayPlanFooter"
            Layout.fillWidth: true
            spacing: 2
            visible: root.popover.footerSummary.length > 0 || root.popover.footerOverflow.length > 0
                     || root.popover.footerUntimed.length > 0 || root.popover.footerWorkdayEnd.length > 0
            Label {
                Layout.fillWidth: true
                visible: text.length > 0
                text: root.popover.footerSummary
                color: appTheme.secondaryText
                font.pixelSize: 12
                wrapMode: Text.Wrap
                Accessible.name: root.popover.footerAccessibleSummary
            }
            Label {
                objectName: "footerWorkdayEnd"
                Layout.fillWidth: true
                visible: text.length > 0
                text: root.popover.footerWorkdayEnd
                color: appTheme.secondaryText
                font.pixelSize: 12
                wrapMode: Text.Wrap
            }
            RowLayout {
                Layout.fillWidth: true
                visible: root.popover.overflowCount > 0
                Label {
                    Layout.fillWidth: true
                    text: root.popover.footerOverflow
                    color: appTheme.danger
                    font.pixelSize: 12
                    elide: Text.ElideRight
                }
                PopButton {
                    objectName: "moveOverflow"
                    text: root.popover.texts.moveOverflowShort
                    flat: true
                    ToolTip.text: root.popover.texts.moveOverflow
                    onClicked: root.popover.moveOverflowToTomorrow()
                }
            }
            Label {
                Layout.fillWidth: true
                visible: text.length > 0
                text: root.popover.footerUntimed
                color: appTheme.secondaryText
                font.pixelSize: 12
                elide: Text.ElideRight
            }
        }

        // Toasts, one at a time, above the add field.
        Rectangle {
            objectName: "toast"
            Layout.fillWidth: true
            visible: root.popover.toastVisible
            implicitHeight: toastRow.implicitHeight + 10
            radius: 8
            color: appTheme.text
            RowLayout {
                id: toastRow
                anchors.fill: parent
                anchors.leftMargin: 12
                anchors.rightMargin: 4
                spacing: 8
                Label {
                    Layout.fillWidth: true
                    text: root.popover.toastText
                    color: appTheme.window
                    elide: Text.ElideRight
                }
                PopButton {
                    objectName: "toastUndo"
                    visible: root.popover.toastCanUndo
                    text: root.popover.texts.undo
                    flat: true
                    palette.buttonText: appTheme.window
                    onClicked: root.popover.undoToast()
                }
            }
        }

        // The add field with what the line will set.
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 4
            TextField {
                id: addField
                objectName: "addField"
                Layout.fillWidth: true
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
                spacing: 4
                visible: root.popover.draft.title.length > 0
                Chip {
                    visible: root.popover.draft.durationText.length > 0
                    text: root.popover.draft.durationText
                }
                Chip {
                    visible: root.popover.draft.dayLabel.length > 0
                    text: root.popover.draft.dayLabel
                }
                Chip {
                    visible: root.popover.draft.urgent
                    tint: appTheme.danger
                    //: Quick-add chip: the typed task goes first in the queue
                    //% "Urgent"
                    text: qsTrId("quickAdd.chip.urgent")
                }
            }
            Label {
                objectName: "addError"
                Layout.fillWidth: true
                visible: text.length > 0
                text: root.popover.draft.error
                color: appTheme.danger
                font.pixelSize: 12
                wrapMode: Text.Wrap
            }
        }
    }

    // After a completion: what is next.
    Rectangle {
        objectName: "nextUpScreen"
        anchors.fill: parent
        visible: root.popover.nextUpVisible
        color: appTheme.window
        onVisibleChanged: if (visible) nextUpStartButton.forceActiveFocus()
        MouseArea { anchors.fill: parent }
        ColumnLayout {
            anchors.fill: parent
            anchors.margins: 24
            spacing: 12
            Item { Layout.fillHeight: true }
            Label {
                Layout.fillWidth: true
                text: root.popover.texts.completionTitle
                color: appTheme.text
                font.pixelSize: 22
                font.weight: Font.DemiBold
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
            }
            Label {
                Layout.fillWidth: true
                text: root.popover.nextUpFocused
                color: appTheme.secondaryText
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
            }
            Label {
                Layout.fillWidth: true
                text: root.popover.nextUpHasTask ? root.popover.texts.completionNextUp
                                                 : root.popover.texts.completionQueueEmpty
                color: appTheme.secondaryText
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
            }
            Label {
                Layout.fillWidth: true
                visible: root.popover.nextUpHasTask
                text: root.popover.nextUpTaskTitle
                      + (root.popover.nextUpTaskDuration.length > 0 ? " · " + root.popover.nextUpTaskDuration : "")
                color: appTheme.text
                font.pixelSize: 17
                wrapMode: Text.Wrap
                maximumLineCount: 3
                elide: Text.ElideRight
                horizontalAlignment: Text.AlignHCenter
            }
            RowLayout {
                Layout.alignment: Qt.AlignHCenter
                spacing: 8
                PopButton {
                    id: nextUpStartButton
                    objectName: "nextUpStart"
                    visible: root.popover.nextUpHasTask
                    highlighted: true
                    text: root.popover.texts.completionStart
                    onClicked: root.popover.startNextUp()
                }
                PopButton {
                    objectName: "nextUpSkip"
                    text: root.popover.nextUpSkipLabel
                    onClicked: root.popover.skipNextUp()
                }
            }
            Item { Layout.fillHeight: true }
        }
    }

    // The name of a routine made from the queue.
    Popup {
        id: routineNamePopup
        anchors.centerIn: parent
        width: parent.width - 48
        modal: true
        focus: true
        onOpened: routineName.forceActiveFocus()
        background: Rectangle { color: appTheme.surface; radius: 8; border.color: appTheme.separator }
        contentItem: ColumnLayout {
            spacing: 8
            Label {
                Layout.fillWidth: true
                text: root.popover.texts.routineNameField
                color: appTheme.text
                elide: Text.ElideRight
            }
            TextField {
                id: routineName
                objectName: "routineName"
                Layout.fillWidth: true
                placeholderText: root.popover.texts.routineNamePlaceholder
                onAccepted: saveRoutine.clicked()
            }
            RowLayout {
                Layout.fillWidth: true
                Item { Layout.fillWidth: true }
                PopButton {
                    //: Button that closes a small form without saving
                    //% "Cancel"
                    text: qsTrId("popover.cancel")
                    onClicked: routineNamePopup.close()
                }
                PopButton {
                    id: saveRoutine
                    highlighted: true
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
}
