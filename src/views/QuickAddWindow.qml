import QtQuick
import QtQuick.Layouts
import QtQuick.Window
import Tarnwell.Views

// The floating quick-add window: one line, chips for what it will set, a day
// picker; Enter adds, Escape closes.
ThemedWindow {
    id: root
    objectName: "quickAddRoot"
    required property QuickAddDraft draft
    required property QuickAddWindowController controller

    width: 460
    height: column.implicitHeight + 32
    minimumWidth: 360
    visible: false
    color: Theme.window
    //: Title of the quick-add window
    //% "Quick add"
    title: qsTrId("quickAdd.window.title")

    function focusField() {
        field.forceActiveFocus()
    }

    Shortcut {
        sequence: "Escape"
        onActivated: root.controller.hide()
    }

    // The frame follows the content, which the window's height follows a
    // moment later.
    Rectangle {
        anchors.fill: column
        anchors.margins: -Tokens.spaceL
        color: "transparent"
        border.color: Theme.separator
        radius: Tokens.radiusL
    }

    ColumnLayout {
        id: column
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: Tokens.spaceL
        spacing: Tokens.spaceS + 2

        InputField {
            id: field
            objectName: "quickAddField"
            Layout.fillWidth: true
            implicitHeight: 40
            font.pixelSize: Theme.titleSize
            //: Quick-add window: placeholder of the line that becomes a task
            //% "Write report · 45m tomorrow !"
            placeholderText: qsTrId("quickAdd.field.placeholder")
            Accessible.name: root.title
            onTextEdited: root.draft.text = text
            onAccepted: root.draft.commit()
            Connections {
                target: root.draft
                function onTextChanged() {
                    if (field.text !== root.draft.text)
                        field.text = root.draft.text
                }
            }
        }
        Flow {
            Layout.fillWidth: true
            spacing: Tokens.spaceXs
            visible: root.draft.title.length > 0
            Chip {
                visible: root.draft.durationText.length > 0
                iconName: "extend"
                text: root.draft.durationText
            }
            Chip {
                visible: root.draft.dayLabel.length > 0
                iconName: "today"
                text: root.draft.dayLabel
            }
            Chip {
                visible: root.draft.urgent
                tone: "danger"
                iconName: "urgent"
                //: Quick-add chip: the typed task goes first in the queue
                //% "Urgent"
                text: qsTrId("quickAdd.chip.urgent")
            }
        }
        Flow {
            objectName: "dayPicker"
            Layout.fillWidth: true
            spacing: Tokens.spaceXs
            Repeater {
                model: 7
                // Qt 6.4's qmllint takes ids outside a delegate or Component for unqualified; this one is only made here.
                // qmllint disable unqualified
                delegate: ActionButton {
                    required property int index
                    readonly property int chosen: root.draft.dayOffset < 0 ? root.draft.defaultDayOffset
                                                                           : root.draft.dayOffset
                    text: root.draft.dayLabelFor(index)
                    checkable: true
                    checked: chosen === index
                    kind: "flat"
                    onClicked: root.draft.overrideDayOffset(index)
                }
                // qmllint enable unqualified
            }
        }
        TextBlock {
            objectName: "quickAddError"
            Layout.fillWidth: true
            visible: text.length > 0
            role: "danger"
            text: root.draft.error
            wrapMode: Text.Wrap
        }
    }
}
