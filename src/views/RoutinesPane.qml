import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tarnwell.Views

// Routines: the saved routines on the left, the chosen one's name, repeat
// rule and task templates on the right. The routines window and the
// settings window's Routines tab both show it.
Item {
    id: root
    objectName: "routinesPane"
    required property RoutinesModel routines
    //: Routines window and settings tab: title
    //% "Routines"
    readonly property string title: qsTrId("settings.routines.title")
    // The window's title already names it where the pane is the whole window.
    property bool showHeading: true

    function focusList() {
        routineList.forceActiveFocus()
    }

    // Escape closes an open form first; false when there was none.
    function handleEscape() {
        if (deleteDialog.opened)
            deleteDialog.close()
        else if (itemList.editingRow >= 0)
            itemList.editingRow = -1
        else
            return false
        return true
    }

    function durationText(minutes) {
        if (minutes < 1)
            return ""
        const h = Math.floor(minutes / 60)
        const m = minutes % 60
        return h === 0 ? m + "m" : (m === 0 ? h + "h" : h + "h " + m + "m")
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 12

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2
            TextBlock {
                Layout.fillWidth: true
                visible: root.showHeading
                role: "heading"
                text: root.title
            }
            TextBlock {
                Layout.fillWidth: true
                role: "secondary"
                //: Routines settings tab: caption under the title
                //% "Saved lists of tasks to load into a day, or to add themselves on chosen weekdays."
                text: qsTrId("settings.routines.caption")
                wrapMode: Text.Wrap
            }
        }

        RowLayout {
            Layout.fillWidth: true
            Layout.fillHeight: true
            spacing: 16

            // The routines.
            ColumnLayout {
                Layout.preferredWidth: 220
                Layout.maximumWidth: 260
                Layout.fillHeight: true
                spacing: 8

                ListView {
                    id: routineList
                    objectName: "routineList"
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    clip: true
                    activeFocusOnTab: true
                    keyNavigationEnabled: true
                    model: root.routines
                    currentIndex: root.routines.currentIndex
                    onCurrentIndexChanged: root.routines.currentIndex = currentIndex
                    Accessible.name: root.title
                    Accessible.role: Accessible.List
                    Keys.onDeletePressed: if (root.routines.count > 0) deleteDialog.open()

                    // Qt 6.4's qmllint takes ids outside a delegate or Component for unqualified; this one is only made here.
                    // qmllint disable unqualified
                    delegate: ListRow {
                        id: routineRow
                        required property int index
                        required property string name
                        required property string repeatLabel
                        required property int repeatKind
                        required property int itemCount
                        width: ListView.view.width
                        selected: ListView.isCurrentItem
                        current: ListView.isCurrentItem && routineList.activeFocus
                        Accessible.role: Accessible.ListItem
                        Accessible.name: name
                        onClicked: {
                            // A name being typed is saved to its own routine first.
                            routineList.forceActiveFocus()
                            root.routines.currentIndex = index
                        }
                        RowLayout {
                            anchors.fill: parent
                            anchors.leftMargin: Tokens.spaceS
                            anchors.rightMargin: Tokens.spaceS
                            spacing: Tokens.spaceS
                            Icon {
                                name: "routine"
                                color: routineRow.selected ? Theme.accentText : Theme.secondaryText
                                Layout.preferredWidth: Tokens.iconSmall
                                Layout.preferredHeight: Tokens.iconSmall
                            }
                            ColumnLayout {
                                Layout.fillWidth: true
                                spacing: 0
                                TextBlock {
                                    Layout.fillWidth: true
                                    text: routineRow.name
                                    font.weight: routineRow.selected ? Font.DemiBold : Font.Normal
                                }
                                TextBlock {
                                    Layout.fillWidth: true
                                    visible: routineRow.repeatKind !== 0
                                    role: "caption"
                                    text: routineRow.repeatLabel
                                }
                            }
                        }
                    }
                    // qmllint enable unqualified
                }
                ActionButton {
                    objectName: "newRoutine"
                    Layout.fillWidth: true
                    iconName: "add"
                    //: Routines settings tab: button that makes a new routine
                    //% "New routine"
                    text: qsTrId("settings.routines.new")
                    onClicked: {
                        root.routines.create()
                        nameField.forceActiveFocus()
                        nameField.selectAll()
                    }
                }
            }

            Rectangle {
                Layout.fillHeight: true
                Layout.preferredWidth: 1
                color: Theme.separator
            }

            // Nothing saved yet.
            ColumnLayout {
                objectName: "routinesEmpty"
                visible: root.routines.count === 0
                Layout.fillWidth: true
                Layout.fillHeight: true
                Item { Layout.fillHeight: true }
                Icon {
                    Layout.alignment: Qt.AlignHCenter
                    width: 32
                    height: 32
                    name: "routine"
                    color: Theme.secondaryText
                }
                TextBlock {
                    Layout.fillWidth: true
                    horizontalAlignment: Text.AlignHCenter
                    role: "title"
                    //: Routines settings tab: shown when no routine is saved yet
                    //% "No routines yet"
                    text: qsTrId("settings.routines.empty")
                    wrapMode: Text.Wrap
                }
                TextBlock {
                    Layout.fillWidth: true
                    horizontalAlignment: Text.AlignHCenter
                    role: "secondary"
                    //: Routines settings tab: how to make a routine, under the empty message
                    //% "Make one with New routine, or save a day's queue from the popover's routine menu."
                    text: qsTrId("settings.routines.emptyCaption")
                    wrapMode: Text.Wrap
                }
                Item { Layout.fillHeight: true }
            }

            // The chosen routine.
            ColumnLayout {
                id: detail
                visible: root.routines.count > 0
                Layout.fillWidth: true
                Layout.fillHeight: true
                spacing: 8

                GridLayout {
                    Layout.fillWidth: true
                    columns: 2
                    columnSpacing: 8
                    rowSpacing: 6

                    TextBlock {
                        //: Routines settings tab: label of the routine's name field
                        //% "Name"
                        text: qsTrId("settings.routines.name")
                    }
                    InputField {
                        id: nameField
                        objectName: "routineName"
                        Layout.fillWidth: true
                        text: root.routines.currentName
                        //: Routines settings tab: label of the routine's name field
                        //% "Name"
                        Accessible.name: qsTrId("settings.routines.name")
                        property string error: ""
                        function commit() {
                            error = root.routines.rename(root.routines.currentIndex, text)
                        }
                        onEditingFinished: commit()
                        Connections {
                            target: root.routines
                            function onCurrentIndexChanged() { nameField.error = "" }
                        }
                    }
                    Item { Layout.preferredWidth: 1; visible: nameError.visible }
                    TextBlock {
                        id: nameError
                        objectName: "nameError"
                        Layout.fillWidth: true
                        visible: text.length > 0
                        role: "danger"
                        text: nameField.error
                        wrapMode: Text.Wrap
                    }

                    TextBlock {
                        text: root.routines.repeatMenuText
                    }
                    SelectBox {
                        id: repeatBox
                        objectName: "repeatMenu"
                        Layout.fillWidth: true
                        model: root.routines.repeatOptions
                        textRole: "text"
                        valueRole: "kind"
                        // Read again once the options exist: indexOfValue alone does not follow the model.
                        currentIndex: count > 0 ? indexOfValue(root.routines.repeatChoice) : -1
                        Accessible.name: root.routines.repeatMenuText
                        onActivated: root.routines.setRepeatChoice(currentValue)
                    }
                    Item { Layout.preferredWidth: 1; visible: weekdayToggles.visible }
                    Flow {
                        id: weekdayToggles
                        objectName: "weekdayToggles"
                        Layout.fillWidth: true
                        visible: root.routines.repeatChoice === 3
                        spacing: 4
                        // Qt 6.4's qmllint takes ids outside a delegate or Component for unqualified; this one is only made here.
                        // qmllint disable unqualified
                        Repeater {
                            model: root.routines.weekdays
                            delegate: ActionButton {
                                required property var modelData
                                implicitWidth: Math.max(44, implicitContentWidth + leftPadding + rightPadding)
                                text: modelData.name
                                checkable: true
                                checked: modelData.on
                                Accessible.name: modelData.longName
                                onClicked: root.routines.setWeekday(modelData.weekday, checked)
                            }
                        }
                        // qmllint enable unqualified
                    }
                }

                // The task templates.
                ListView {
                    id: itemList
                    objectName: "itemList"
                    property int editingRow: -1
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    clip: true
                    activeFocusOnTab: true
                    keyNavigationEnabled: true
                    model: root.routines.items
                    Accessible.role: Accessible.List
                    Keys.onPressed: (event) => {
                        if (currentIndex < 0 || editingRow >= 0)
                            return
                        const row = currentIndex
                        if ((event.modifiers & Qt.AltModifier) && event.key === Qt.Key_Up) {
                            if (root.routines.items.move(row, -1))
                                currentIndex = row - 1
                            event.accepted = true
                        } else if ((event.modifiers & Qt.AltModifier) && event.key === Qt.Key_Down) {
                            if (root.routines.items.move(row, 1))
                                currentIndex = row + 1
                            event.accepted = true
                        } else if (event.key === Qt.Key_Delete) {
                            root.routines.items.remove(currentIndex)
                            event.accepted = true
                        } else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter) {
                            editingRow = currentIndex
                            event.accepted = true
                        }
                    }
                    Connections {
                        target: root.routines
                        function onCurrentIndexChanged() { itemList.editingRow = -1 }
                    }

                    // Qt 6.4's qmllint takes ids outside a delegate or Component for unqualified; this one is only made here.
                    // qmllint disable unqualified
                    delegate: ListRow {
                        id: itemRow
                        required property int index
                        required property string title
                        required property int minutes
                        readonly property bool editing: itemList.editingRow === index
                        width: ListView.view.width
                        implicitHeight: editing ? editor.implicitHeight + 8 : Math.max(summary.implicitHeight, 36)
                        current: !editing && ListView.isCurrentItem && itemList.activeFocus
                        Accessible.role: Accessible.ListItem
                        Accessible.name: title

                        onEditingChanged: {
                            if (editing) {
                                editTitle.text = title
                                editMinutes.text = minutes > 0 ? String(minutes) : ""
                                editor.error = ""
                                editTitle.forceActiveFocus()
                            } else if (editTitle.activeFocus || editMinutes.activeFocus) {
                                // Back to the list itself, not to the hidden fields.
                                itemList.currentIndex = index
                                editTitle.focus = false
                                editMinutes.focus = false
                                itemList.forceActiveFocus()
                            }
                        }

                        RowLayout {
                            id: summary
                            visible: !itemRow.editing
                            anchors.fill: parent
                            anchors.leftMargin: Tokens.spaceS
                            spacing: 2
                            TextBlock {
                                Layout.fillWidth: true
                                text: itemRow.title
                            }
                            TextBlock {
                                role: "secondary"
                                text: root.durationText(itemRow.minutes)
                                Layout.rightMargin: Tokens.spaceXs
                            }
                            IconButton {
                                iconName: "up"
                                enabled: itemRow.index > 0
                                focusPolicy: Qt.NoFocus
                                //: Task row action: move the task one place up in the queue
                                //% "Move up"
                                hint: qsTrId("popover.row.moveUp")
                                onClicked: root.routines.items.move(itemRow.index, -1)
                            }
                            IconButton {
                                iconName: "down"
                                enabled: itemRow.index < itemList.count - 1
                                focusPolicy: Qt.NoFocus
                                //: Task row action: move the task one place down in the queue
                                //% "Move down"
                                hint: qsTrId("popover.row.moveDown")
                                onClicked: root.routines.items.move(itemRow.index, 1)
                            }
                            IconButton {
                                objectName: "editItem"
                                iconName: "edit"
                                focusPolicy: Qt.NoFocus
                                //: Task row action: open the task's editor
                                //% "Edit…"
                                hint: qsTrId("popover.row.edit")
                                onClicked: {
                                    itemList.currentIndex = itemRow.index
                                    itemList.editingRow = itemRow.index
                                }
                            }
                            IconButton {
                                objectName: "removeItem"
                                iconName: "close"
                                focusPolicy: Qt.NoFocus
                                //: Routines settings tab: removes a task template from the routine
                                //% "Remove task"
                                hint: qsTrId("settings.routines.removeTask")
                                onClicked: root.routines.items.remove(itemRow.index)
                            }
                        }

                        ColumnLayout {
                            id: editor
                            property string error: ""
                            function save() {
                                error = root.routines.items.update(itemRow.index, editTitle.text, editMinutes.text)
                                if (error.length === 0)
                                    itemList.editingRow = -1
                            }
                            visible: itemRow.editing
                            anchors.left: parent.left
                            anchors.right: parent.right
                            anchors.top: parent.top
                            anchors.margins: 4
                            spacing: 4
                            RowLayout {
                                Layout.fillWidth: true
                                InputField {
                                    id: editTitle
                                    objectName: "editItemTitle"
                                    Layout.fillWidth: true
                                    //: Task editor: placeholder of the title field
                                    //% "Title"
                                    placeholderText: qsTrId("popover.edit.title")
                                    Accessible.name: placeholderText
                                    // Handled here, so that Enter does not reach the list and reopen the editor.
                                    Keys.onReturnPressed: editor.save()
                                    Keys.onEnterPressed: editor.save()
                                }
                                InputField {
                                    id: editMinutes
                                    Layout.preferredWidth: 90
                                    //: Task editor: placeholder of the planned minutes field
                                    //% "Minutes"
                                    placeholderText: qsTrId("popover.edit.minutes")
                                    Accessible.name: placeholderText
                                    // Handled here, so that Enter does not reach the list and reopen the editor.
                                    Keys.onReturnPressed: editor.save()
                                    Keys.onEnterPressed: editor.save()
                                }
                                ActionButton {
                                    //: Button that closes a small form without saving
                                    //% "Cancel"
                                    text: qsTrId("popover.cancel")
                                    onClicked: itemList.editingRow = -1
                                }
                                ActionButton {
                                    //: Button that saves a small form
                                    //% "Save"
                                    text: qsTrId("popover.save")
                                    kind: "primary"
                                    onClicked: editor.save()
                                }
                            }
                            TextBlock {
                                objectName: "editItemError"
                                Layout.fillWidth: true
                                visible: text.length > 0
                                role: "danger"
                                text: editor.error
                                wrapMode: Text.Wrap
                            }
                        }
                    }
                    // qmllint enable unqualified
                }

                // A new task template.
                RowLayout {
                    Layout.fillWidth: true
                    spacing: 6
                    InputField {
                        id: newTitle
                        objectName: "newItemTitle"
                        Layout.fillWidth: true
                        //: Task editor: placeholder of the title field
                        //% "Title"
                        placeholderText: qsTrId("popover.edit.title")
                        //: Routines settings tab: adds a task template to the routine
                        //% "Add task"
                        Accessible.name: qsTrId("settings.routines.addTask")
                        onAccepted: addTask.clicked()
                    }
                    InputField {
                        id: newMinutes
                        objectName: "newItemMinutes"
                        Layout.preferredWidth: 90
                        //: Task editor: placeholder of the planned minutes field
                        //% "Minutes"
                        placeholderText: qsTrId("popover.edit.minutes")
                        Accessible.name: placeholderText
                        onAccepted: addTask.clicked()
                    }
                    ActionButton {
                        id: addTask
                        objectName: "addItem"
                        iconName: "add"
                        //: Routines settings tab: adds a task template to the routine
                        //% "Add task"
                        text: qsTrId("settings.routines.addTask")
                        onClicked: {
                            addError.text = root.routines.items.add(newTitle.text, newMinutes.text)
                            if (addError.text.length === 0) {
                                newTitle.text = ""
                                newMinutes.text = ""
                                newTitle.forceActiveFocus()
                            }
                        }
                    }
                }
                TextBlock {
                    id: addError
                    objectName: "addItemError"
                    Layout.fillWidth: true
                    visible: text.length > 0
                    role: "danger"
                    wrapMode: Text.Wrap
                    Connections {
                        target: root.routines
                        function onCurrentIndexChanged() { addError.text = "" }
                    }
                }

                RowLayout {
                    Layout.fillWidth: true
                    Item { Layout.fillWidth: true }
                    ActionButton {
                        objectName: "deleteRoutine"
                        kind: "flat"
                        iconName: "close"
                        //: Routines settings tab: deletes the chosen routine
                        //% "Delete routine"
                        text: qsTrId("settings.routines.delete")
                        onClicked: deleteDialog.open()
                    }
                }
            }
        }
    }

    // Deleting asks first.
    Sheet {
        id: deleteDialog
        objectName: "deleteDialog"
        width: Math.min(420, root.width - 32)
        closePolicy: T.Popup.CloseOnEscape
        //: Routines settings tab: title of the question before a routine is deleted; %1 = routine name
        //% "Delete “%1”?"
        title: qsTrId("settings.routines.delete.confirm").arg(root.routines.currentName)
        onOpened: cancelDelete.forceActiveFocus()
        onClosed: routineList.forceActiveFocus()
        TextBlock {
            width: parent.width
            role: "secondary"
            //: Routines settings tab: what deleting a routine removes and what it leaves alone
            //% "The routine and its task templates are removed. Tasks already loaded into your days stay, but no longer repeat."
            text: qsTrId("settings.routines.delete.body")
            wrapMode: Text.Wrap
            elide: Text.ElideNone
        }
        Row {
            anchors.right: parent.right
            spacing: Tokens.spaceS
            ActionButton {
                id: cancelDelete
                //: Button that closes a small form without saving
                //% "Cancel"
                text: qsTrId("popover.cancel")
                onClicked: deleteDialog.close()
            }
            ActionButton {
                objectName: "confirmDelete"
                kind: "danger"
                //: Routines settings tab: deletes the chosen routine
                //% "Delete routine"
                text: qsTrId("settings.routines.delete")
                onClicked: {
                    deleteDialog.close()
                    root.routines.remove(root.routines.currentIndex)
                }
            }
        }
    }
}
