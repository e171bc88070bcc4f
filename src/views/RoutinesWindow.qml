import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import QtQuick.Window

// Routines: the saved routines on the left, the chosen one's name, repeat
// rule and task templates on the right. Escape closes an open form first,
// then the window.
ThemedWindow {
    id: root
    objectName: "routinesRoot"
    required property QtObject routines
    required property QtObject controller

    width: 760
    height: 520
    minimumWidth: 620
    minimumHeight: 400
    visible: false
    //: Routines window and settings tab: title
    //% "Routines"
    title: qsTrId("settings.routines.title")

    function focusList() {
        routineList.forceActiveFocus()
    }

    function durationText(minutes) {
        if (minutes < 1)
            return ""
        const h = Math.floor(minutes / 60)
        const m = minutes % 60
        return h === 0 ? m + "m" : (m === 0 ? h + "h" : h + "h " + m + "m")
    }

    Shortcut {
        sequence: "Escape"
        onActivated: {
            if (deleteDialog.opened)
                deleteDialog.close()
            else if (itemList.editingRow >= 0)
                itemList.editingRow = -1
            else
                root.controller.hide()
        }
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 16
        spacing: 12

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2
            Label {
                Layout.fillWidth: true
                text: root.title
                font.bold: true
                font.pixelSize: 18
                elide: Text.ElideRight
            }
            Label {
                Layout.fillWidth: true
                //: Routines settings tab: caption under the title
                //% "Saved lists of tasks to load into a day, or to add themselves on chosen weekdays."
                text: qsTrId("settings.routines.caption")
                color: appTheme.secondaryText
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

                    delegate: ItemDelegate {
                        id: routineRow
                        required property int index
                        required property string name
                        required property string repeatLabel
                        required property int repeatKind
                        required property int itemCount
                        width: ListView.view.width
                        highlighted: ListView.isCurrentItem
                        focusPolicy: Qt.NoFocus
                        Accessible.name: name
                        onClicked: {
                            // A name being typed is saved to its own routine first.
                            routineList.forceActiveFocus()
                            root.routines.currentIndex = index
                        }
                        background: Rectangle {
                            radius: 6
                            color: routineRow.highlighted ? Qt.rgba(appTheme.accent.r, appTheme.accent.g, appTheme.accent.b, 0.14)
                                                          : "transparent"
                            border.color: routineRow.highlighted && routineList.activeFocus ? appTheme.accent : "transparent"
                        }
                        contentItem: ColumnLayout {
                            spacing: 0
                            Label {
                                Layout.fillWidth: true
                                text: routineRow.name
                                elide: Text.ElideRight
                                color: appTheme.text
                            }
                            Label {
                                Layout.fillWidth: true
                                visible: routineRow.repeatKind !== 0
                                text: routineRow.repeatLabel
                                elide: Text.ElideRight
                                font.pixelSize: 11
                                color: appTheme.secondaryText
                            }
                        }
                    }
                }
                PopButton {
                    objectName: "newRoutine"
                    Layout.fillWidth: true
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
                color: appTheme.separator
            }

            // Nothing saved yet.
            ColumnLayout {
                objectName: "routinesEmpty"
                visible: root.routines.count === 0
                Layout.fillWidth: true
                Layout.fillHeight: true
                Item { Layout.fillHeight: true }
                Label {
                    Layout.fillWidth: true
                    horizontalAlignment: Text.AlignHCenter
                    //: Routines settings tab: shown when no routine is saved yet
                    //% "No routines yet"
                    text: qsTrId("settings.routines.empty")
                    font.bold: true
                    wrapMode: Text.Wrap
                }
                Label {
                    Layout.fillWidth: true
                    horizontalAlignment: Text.AlignHCenter
                    //: Routines settings tab: how to make a routine, under the empty message
                    //% "Make one with New routine, or save a day's queue from the popover's routine menu."
                    text: qsTrId("settings.routines.emptyCaption")
                    color: appTheme.secondaryText
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

                    Label {
                        //: Routines settings tab: label of the routine's name field
                        //% "Name"
                        text: qsTrId("settings.routines.name")
                    }
                    TextField {
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
                    Label {
                        id: nameError
                        objectName: "nameError"
                        Layout.fillWidth: true
                        visible: text.length > 0
                        text: nameField.error
                        color: appTheme.danger
                        wrapMode: Text.Wrap
                    }

                    Label {
                        text: root.routines.texts.repeatMenu
                    }
                    ComboBox {
                        id: repeatBox
                        objectName: "repeatMenu"
                        Layout.fillWidth: true
                        model: root.routines.repeatOptions
                        textRole: "text"
                        valueRole: "kind"
                        // Read again once the options exist: indexOfValue alone does not follow the model.
                        currentIndex: count > 0 ? indexOfValue(root.routines.repeatChoice) : -1
                        Accessible.name: root.routines.texts.repeatMenu
                        onActivated: root.routines.setRepeatChoice(currentValue)
                    }
                    Item { Layout.preferredWidth: 1; visible: weekdayToggles.visible }
                    Flow {
                        id: weekdayToggles
                        objectName: "weekdayToggles"
                        Layout.fillWidth: true
                        visible: root.routines.repeatChoice === 3
                        spacing: 4
                        Repeater {
                            model: root.routines.weekdays
                            delegate: PopButton {
                                required property var modelData
                                implicitWidth: Math.max(40, implicitContentWidth + leftPadding + rightPadding)
                                // A chosen day in the accent colour.
                                palette.dark: appTheme.accent
                                palette.brightText: appTheme.dark ? appTheme.window : appTheme.surface
                                text: modelData.name
                                checkable: true
                                checked: modelData.on
                                flat: !checked
                                Accessible.name: modelData.longName
                                onClicked: root.routines.setWeekday(modelData.weekday, checked)
                            }
                        }
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

                    delegate: Item {
                        id: itemRow
                        required property int index
                        required property string title
                        required property int minutes
                        readonly property bool editing: itemList.editingRow === index
                        width: ListView.view.width
                        implicitHeight: editing ? editor.implicitHeight + 8 : Math.max(summary.implicitHeight, 32)

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

                        Rectangle {
                            anchors.fill: parent
                            radius: 6
                            color: itemRow.ListView.isCurrentItem && itemList.activeFocus ? appTheme.surface : "transparent"
                            border.color: itemRow.ListView.isCurrentItem && itemList.activeFocus ? appTheme.accent : "transparent"
                        }

                        RowLayout {
                            id: summary
                            visible: !itemRow.editing
                            anchors.fill: parent
                            anchors.leftMargin: 6
                            spacing: 4
                            Label {
                                Layout.fillWidth: true
                                text: itemRow.title
                                elide: Text.ElideRight
                            }
                            Label {
                                text: root.durationText(itemRow.minutes)
                                color: appTheme.secondaryText
                            }
                            PopButton {
                                text: "↑"
                                flat: true
                                implicitWidth: 32
                                enabled: itemRow.index > 0
                                focusPolicy: Qt.NoFocus
                                //: Task row action: move the task one place up in the queue
                                //% "Move up"
                                ToolTip.text: qsTrId("popover.row.moveUp")
                                Accessible.name: ToolTip.text
                                onClicked: root.routines.items.move(itemRow.index, -1)
                            }
                            PopButton {
                                text: "↓"
                                flat: true
                                implicitWidth: 32
                                enabled: itemRow.index < itemList.count - 1
                                focusPolicy: Qt.NoFocus
                                //: Task row action: move the task one place down in the queue
                                //% "Move down"
                                ToolTip.text: qsTrId("popover.row.moveDown")
                                Accessible.name: ToolTip.text
                                onClicked: root.routines.items.move(itemRow.index, 1)
                            }
                            PopButton {
                                objectName: "editItem"
                                text: "✎"
                                flat: true
                                implicitWidth: 32
                                focusPolicy: Qt.NoFocus
                                //: Task row action: open the task's editor
                                //% "Edit…"
                                ToolTip.text: qsTrId("popover.row.edit")
                                Accessible.name: ToolTip.text
                                onClicked: {
                                    itemList.currentIndex = itemRow.index
                                    itemList.editingRow = itemRow.index
                                }
                            }
                            PopButton {
                                objectName: "removeItem"
                                text: "✕"
                                flat: true
                                implicitWidth: 32
                                focusPolicy: Qt.NoFocus
                                //: Routines settings tab: removes a task template from the routine
                                //% "Remove task"
                                ToolTip.text: qsTrId("settings.routines.removeTask")
                                Accessible.name: ToolTip.text
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
                                TextField {
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
                                TextField {
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
                                PopButton {
                                    //: Button that closes a small form without saving
                                    //% "Cancel"
                                    text: qsTrId("popover.cancel")
                                    onClicked: itemList.editingRow = -1
                                }
                                PopButton {
                                    //: Button that saves a small form
                                    //% "Save"
                                    text: qsTrId("popover.save")
                                    highlighted: true
                                    onClicked: editor.save()
                                }
                            }
                            Label {
                                objectName: "editItemError"
                                Layout.fillWidth: true
                                visible: text.length > 0
                                text: editor.error
                                color: appTheme.danger
                                wrapMode: Text.Wrap
                            }
                        }
                    }
                }

                // A new task template.
                RowLayout {
                    Layout.fillWidth: true
                    spacing: 6
                    TextField {
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
                    TextField {
                        id: newMinutes
                        objectName: "newItemMinutes"
                        Layout.preferredWidth: 90
                        //: Task editor: placeholder of the planned minutes field
                        //% "Minutes"
                        placeholderText: qsTrId("popover.edit.minutes")
                        Accessible.name: placeholderText
                        onAccepted: addTask.clicked()
                    }
                    PopButton {
                        id: addTask
                        objectName: "addItem"
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
                Label {
                    id: addError
                    objectName: "addItemError"
                    Layout.fillWidth: true
                    visible: text.length > 0
                    color: appTheme.danger
                    wrapMode: Text.Wrap
                    Connections {
                        target: root.routines
                        function onCurrentIndexChanged() { addError.text = "" }
                    }
                }

                RowLayout {
                    Layout.fillWidth: true
                    Item { Layout.fillWidth: true }
                    PopButton {
                        objectName: "deleteRoutine"
                        //: Routines settings tab: deletes the chosen routine
                        //% "Delete routine"
                        text: qsTrId("settings.routines.delete")
                        palette.buttonText: appTheme.danger
                        onClicked: deleteDialog.open()
                    }
                }
            }
        }
    }

    // Deleting asks first.
    Dialog {
        id: deleteDialog
        objectName: "deleteDialog"
        anchors.centerIn: parent
        width: Math.min(420, root.width - 32)
        modal: true
        closePolicy: Popup.CloseOnEscape
        //: Routines settings tab: title of the question before a routine is deleted; %1 = routine name
        //% "Delete “%1”?"
        title: qsTrId("settings.routines.delete.confirm").arg(root.routines.currentName)
        onOpened: cancelDelete.forceActiveFocus()
        onClosed: routineList.forceActiveFocus()
        contentItem: Label {
            //: Routines settings tab: what deleting a routine removes and what it leaves alone
            //% "The routine and its task templates are removed. Tasks already loaded into your days stay, but no longer repeat."
            text: qsTrId("settings.routines.delete.body")
            wrapMode: Text.Wrap
        }
        footer: DialogButtonBox {
            PopButton {
                id: cancelDelete
                //: Button that closes a small form without saving
                //% "Cancel"
                text: qsTrId("popover.cancel")
                DialogButtonBox.buttonRole: DialogButtonBox.RejectRole
            }
            PopButton {
                objectName: "confirmDelete"
                //: Routines settings tab: deletes the chosen routine
                //% "Delete routine"
                text: qsTrId("settings.routines.delete")
                DialogButtonBox.buttonRole: DialogButtonBox.AcceptRole
            }
        }
        onAccepted: root.routines.remove(root.routines.currentIndex)
    }
}
