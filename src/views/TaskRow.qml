import QtQuick
import QtQuick.Layouts
import Tarnwell.Views

// One task of the popover's list: drag handle, tick, title with its urgency
// flag and plan, its actions, and an inline editor.
ListRow {
    id: row
    required property var model
    required property int index
    required property PopoverModel popover
    required property ListView listView
    // The history, where the popover has one: decides whether a past day's row may change.
    property HistoryModel history: null
    readonly property bool editable: history ? history.canEdit : true
    property bool editing: false
    readonly property bool open: !model.completed
    readonly property bool today: popover.isToday

    signal editRequested()
    signal editFinished()

    Accessible.role: Accessible.ListItem
    Accessible.name: row.model.title

    selected: row.model.isTaskInHand && !row.editing
    current: row.activeFocus && !row.editing
    implicitHeight: editing ? editor.implicitHeight + 16 : Math.max(Tokens.rowHeight, summary.implicitHeight + 12)

    RowLayout {
        id: summary
        visible: !row.editing
        anchors.fill: parent
        anchors.leftMargin: Tokens.spaceXs
        anchors.rightMargin: Tokens.spaceXs
        spacing: Tokens.spaceXs

        Icon {
            id: handle
            name: "handle"
            visible: row.open && row.editable
            opacity: row.hovered || row.activeFocus || dragArea.pressed ? 1 : 0.55
            color: Theme.secondaryText
            Layout.preferredWidth: Tokens.iconSmall
            Layout.preferredHeight: Tokens.iconSize
            MouseArea {
                id: dragArea
                objectName: "dragHandle"
                anchors.fill: parent
                anchors.margins: -4
                cursorShape: Qt.SizeVerCursor
                preventStealing: true
                onReleased: (mouse) => {
                    const p = handle.mapToItem(row.listView.contentItem, mouse.x, mouse.y)
                    const to = row.listView.indexAt(row.listView.width / 2, p.y)
                    if (to >= 0 && to !== row.index)
                        row.popover.moveToPosition(row.model.id,
                                                   Math.min(to, row.popover.tasks.openCount - 1))
                }
            }
        }
        Item {
            // Completed rows keep their tick where the handle was.
            visible: !row.open
            Layout.preferredWidth: Tokens.iconSmall
        }
        CheckCircle {
            objectName: "completeBox"
            checked: row.model.completed
            enabled: row.editable
            //: Task row: tick that marks the task done (or open again)
            //% "Done"
            text: qsTrId("popover.row.done")
            onToggled: checked ? row.popover.completeTask(row.model.id) : row.popover.reopenTask(row.model.id)
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 0
            RowLayout {
                Layout.fillWidth: true
                spacing: Tokens.spaceXs
                Icon {
                    objectName: "urgentMark"
                    visible: row.model.urgent
                    name: "urgent"
                    color: row.model.completed ? Theme.secondaryText : Theme.dangerText
                    Layout.preferredWidth: Tokens.iconSmall
                    Layout.preferredHeight: Tokens.iconSmall
                    Accessible.role: Accessible.Graphic
                    Accessible.name: qsTrId("quickAdd.chip.urgent")
                }
                TextBlock {
                    objectName: "rowTitle"
                    Layout.fillWidth: true
                    text: row.model.title
                    role: row.model.completed ? "secondary" : "body"
                    font.pixelSize: Theme.bodySize
                    font.strikeout: row.model.completed
                    font.weight: row.model.isTaskInHand ? Font.DemiBold : Font.Normal
                }
            }
            TextBlock {
                Layout.fillWidth: true
                readonly property var parts: {
                    const list = []
                    const d = row.popover.editor.durationText(row.model.durationMinutes)
                    if (d.length > 0)
                        list.push(d)
                    if (row.model.completed && row.model.focusedSeconds > 0)
                        //: Task row: the focused time of a done task; %1 = as 25m
                        //% "focused %1"
                        list.push(qsTrId("popover.row.focused").arg(
                            row.popover.editor.durationText(Math.max(1, Math.round(row.model.focusedSeconds / 60)))))
                    if (row.model.rolledOver)
                        //: Task row: marks a task carried over from an earlier day
                        //% "carried over"
                        list.push(qsTrId("popover.row.rolledOver"))
                    if (row.model.dueDate && !isNaN(row.model.dueDate.getTime()))
                        //: Task row: the task's due date; %1 = a short date
                        //% "due %1"
                        list.push(qsTrId("popover.row.due").arg(row.model.dueDate.toLocaleDateString(Qt.locale(), Locale.ShortFormat)))
                    return list
                }
                visible: parts.length > 0
                text: parts.join(" · ")
                role: "caption"
            }
        }
        IconButton {
            id: actionsButton
            objectName: "rowActions"
            visible: row.editable
            iconName: "more"
            opacity: row.hovered || row.activeFocus || activeFocus || (row.actions && row.actions.visible) ? 1 : 0.7
            //: Task row: button that opens the task's actions
            //% "Task actions"
            hint: qsTrId("popover.row.actions")
            onClicked: row.openActions()
        }
    }

    // The actions menu is made when first opened: most rows never need one.
    property ActionMenu actions: null
    function openActions() {
        if (!row.actions)
            row.actions = actionsMenu.createObject(actionsButton)
        row.actions.open()
    }
    // Qt 6.4's qmllint takes ids outside a delegate or Component for unqualified; this one is only made here.
    // qmllint disable unqualified
    Component {
        id: actionsMenu
        ActionMenu {
            y: actionsButton.height
            ActionMenuItem {
                objectName: "startNow"
                iconName: "play"
                visible: row.open && row.today && !row.model.isTaskInHand
                //: Task row action: make this the task in hand and start its timer
                //% "Start now"
                text: qsTrId("popover.row.startNow")
                onTriggered: row.popover.startNow(row.model.id)
            }
            ActionMenuItem {
                visible: row.open
                iconName: "rollover"
                //: Task row action: move the task to the next day
                //% "Move to tomorrow"
                text: qsTrId("popover.row.moveToTomorrow")
                onTriggered: row.popover.moveToTomorrow(row.model.id)
            }
            ActionMenuItem {
                visible: row.open && row.index > 0
                iconName: "up"
                //: Task row action: move the task one place up in the queue
                //% "Move up"
                text: qsTrId("popover.row.moveUp")
                onTriggered: row.popover.moveUp(row.model.id)
            }
            ActionMenuItem {
                visible: row.open && row.index < row.popover.tasks.openCount - 1
                iconName: "down"
                //: Task row action: move the task one place down in the queue
                //% "Move down"
                text: qsTrId("popover.row.moveDown")
                onTriggered: row.popover.moveDown(row.model.id)
            }
            ActionMenuItem {
                iconName: "edit"
                //: Task row action: open the task's editor
                //% "Edit…"
                text: qsTrId("popover.row.edit")
                onTriggered: row.editRequested()
            }
            ActionMenuItem {
                iconName: "close"
                danger: true
                //: Task row action: delete the task
                //% "Delete"
                text: qsTrId("popover.row.delete")
                onTriggered: row.popover.deleteTask(row.model.id)
            }
        }
    }
    // qmllint enable unqualified

    // The current row of the list takes the keys: Enter edits, Space ticks,
    // Delete deletes, Alt+Up/Down moves, the menu key opens the actions.
    focus: ListView.isCurrentItem
    Keys.onPressed: (event) => {
        if (row.editing || !row.editable)
            return
        const id = row.model.id
        if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter) {
            row.editRequested()
        } else if (event.key === Qt.Key_Space) {
            row.open ? row.popover.completeTask(id) : row.popover.reopenTask(id)
        } else if (event.key === Qt.Key_Delete) {
            row.popover.deleteTask(id)
        } else if ((event.modifiers & Qt.AltModifier) && (event.key === Qt.Key_Up || event.key === Qt.Key_Down)) {
            const to = row.index + (event.key === Qt.Key_Up ? -1 : 1)
            event.key === Qt.Key_Up ? row.popover.moveUp(id) : row.popover.moveDown(id)
            const view = row.listView
            Qt.callLater(() => { view.currentIndex = Math.max(0, Math.min(to, view.count - 1)) })
        } else if (event.key === Qt.Key_Menu) {
            row.openActions()
        } else {
            return
        }
        event.accepted = true
    }

    ColumnLayout {
        id: editor
        visible: row.editing
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: Tokens.spaceS
        spacing: Tokens.spaceXs + 2
        onVisibleChanged: if (visible) {
            titleField.text = row.model.title
            notesField.text = row.model.notes
            minutesField.text = row.popover.editor.durationText(row.model.durationMinutes)
            repeatBox.currentIndex = row.popover.editor.repeatChoice(row.model.id)
            dueField.text = row.model.dueDate && !isNaN(row.model.dueDate.getTime())
                    ? Qt.formatDate(row.model.dueDate, "yyyy-MM-dd") : ""
            focusField.text = row.history ? row.history.focusText(row.model.id) : ""
            errorLabel.text = ""
            titleField.forceActiveFocus()
        }

        function save() {
            let due = new Date(NaN)
            if (dueField.text.trim().length > 0) {
                due = new Date(dueField.text.trim() + "T12:00:00")
                if (isNaN(due.getTime())) {
                    //: Task editor: the typed due date cannot be read
                    //% "Type the due date as YYYY-MM-DD."
                    errorLabel.text = qsTrId("popover.edit.dueDateInvalid")
                    return
                }
            }
            const id = row.model.id
            let error = row.popover.editor.save(id, titleField.text, notesField.text, minutesField.text, due)
            if (error.length === 0 && focusField.visible)
                error = row.history.correctFocus(id, focusField.text)
            if (error.length === 0)
                error = row.popover.editor.setRepeat(id, repeatBox.currentIndex)
            errorLabel.text = error
            if (error.length === 0) {
                row.editFinished()
                row.forceActiveFocus()
            }
        }

        InputField {
            id: titleField
            objectName: "editTitle"
            Layout.fillWidth: true
            //: Task editor: placeholder of the title field
            //% "Title"
            placeholderText: qsTrId("popover.edit.title")
            onAccepted: editor.save()
        }
        InputField {
            id: notesField
            Layout.fillWidth: true
            //: Task editor: placeholder of the notes field
            //% "Notes"
            placeholderText: qsTrId("popover.edit.notes")
            onAccepted: editor.save()
        }
        RowLayout {
            Layout.fillWidth: true
            InputField {
                id: minutesField
                objectName: "editDuration"
                Layout.fillWidth: true
                //: Task editor: placeholder of the planned time field
                //% "Planned time, e.g. 1h 30m"
                placeholderText: qsTrId("popover.edit.duration")
                Accessible.name: placeholderText
                onAccepted: editor.save()
            }
            InputField {
                id: dueField
                Layout.fillWidth: true
                //: Task editor: placeholder of the due date field (keep YYYY-MM-DD)
                //% "Due YYYY-MM-DD"
                placeholderText: qsTrId("popover.edit.dueDate")
                onAccepted: editor.save()
            }
        }
        InputField {
            id: focusField
            objectName: "editFocused"
            // A done task of a past day: its measured time may be corrected.
            visible: row.model.completed && row.history !== null && row.history.isPast
            Layout.fillWidth: true
            //: Task editor: placeholder of the field that corrects a done task's focused time
            //% "Focused time, e.g. 25m"
            placeholderText: qsTrId("popover.edit.focused")
            Accessible.name: placeholderText
            onAccepted: editor.save()
        }
        RowLayout {
            Layout.fillWidth: true
            TextBlock {
                text: row.popover.texts.repeat
            }
            SelectBox {
                id: repeatBox
                objectName: "editRepeat"
                Layout.fillWidth: true
                model: row.popover.editor.repeatOptions
                Accessible.name: row.popover.texts.repeat
                // Chosen weekdays are set in the routines window; here they only show.
                disabledIndexes: [3]
            }
        }
        TextBlock {
            id: errorLabel
            objectName: "editError"
            Layout.fillWidth: true
            visible: text.length > 0
            role: "danger"
            wrapMode: Text.Wrap
        }
        RowLayout {
            Layout.fillWidth: true
            Item { Layout.fillWidth: true }
            ActionButton {
                //: Button that closes a small form without saving
                //% "Cancel"
                text: qsTrId("popover.cancel")
                onClicked: row.editFinished()
            }
            ActionButton {
                kind: "primary"
                //: Button that saves a small form
                //% "Save"
                text: qsTrId("popover.save")
                onClicked: editor.save()
            }
        }
    }
}
