import QtQuick
import QtQuick.Layouts
import Tarnwell.Views

// Every component of the module in every state it takes, one row a
// component and one column a state: normal, hover, pressed, focused,
// disabled, checked. Each sample is named "<component>.<state>"; disabled
// and checked are set here, the passing states (hover, pressed, focus) are
// brought about by whoever looks at it (the gallery test does so with the
// pointer and the keyboard, one sample at a time).
ThemedWindow {
    id: gallery
    objectName: "gallery"
    width: 110 + 6 * 140 + 60
    height: column.implicitHeight + 40
    visible: true
    title: "Tarnwell components"

    readonly property var stateNames: ["normal", "hover", "pressed", "focused", "disabled", "checked"]

    component Cell: Item {
        property string look
        implicitWidth: 140
        implicitHeight: 44
    }

    ColumnLayout {
        id: column
        x: 20
        y: 20
        spacing: 6

        RowLayout {
            spacing: 0
            Item { implicitWidth: 110 }
            Repeater {
                model: gallery.stateNames
                TextBlock {
                    required property string modelData
                    Layout.preferredWidth: 140
                    role: "caption"
                    text: modelData
                }
            }
        }

        // Qt 6.4's qmllint takes ids outside a delegate or Component for unqualified; this one is only made here.
        // qmllint disable unqualified
        Repeater {
            model: ["primary", "secondary", "flat", "danger"]
            RowLayout {
                id: buttonRow
                required property string modelData
                spacing: 0
                TextBlock { Layout.preferredWidth: 110; role: "caption"; text: buttonRow.modelData }
                Repeater {
                    model: gallery.stateNames
                    Cell {
                        id: cell
                        required property string modelData
                        look: modelData
                        ActionButton {
                            objectName: buttonRow.modelData + "." + cell.look
                            anchors.verticalCenter: parent.verticalCenter
                            visible: cell.look !== "checked"
                            kind: buttonRow.modelData
                            iconName: "play"
                            text: "Start"
                            enabled: cell.look !== "disabled"
                        }
                    }
                }
            }
        }
        // qmllint enable unqualified

        RowLayout {
            spacing: 0
            TextBlock { Layout.preferredWidth: 110; role: "caption"; text: "toggle" }
            Repeater {
                model: gallery.stateNames
                Cell {
                    id: toggleCell
                    required property string modelData
                    look: modelData
                    ActionButton {
                        objectName: "toggle." + toggleCell.look
                        anchors.verticalCenter: parent.verticalCenter
                        text: "Mon"
                        checkable: true
                        checked: toggleCell.look === "checked"
                        enabled: toggleCell.look !== "disabled"
                    }
                }
            }
        }

        RowLayout {
            spacing: 0
            TextBlock { Layout.preferredWidth: 110; role: "caption"; text: "switch" }
            Repeater {
                model: gallery.stateNames
                Cell {
                    id: switchCell
                    required property string modelData
                    look: modelData
                    ToggleSwitch {
                        objectName: "switch." + switchCell.look
                        anchors.verticalCenter: parent.verticalCenter
                        width: 124
                        text: "Sound"
                        checked: switchCell.look === "checked"
                        enabled: switchCell.look !== "disabled"
                    }
                }
            }
        }

        RowLayout {
            spacing: 0
            TextBlock { Layout.preferredWidth: 110; role: "caption"; text: "recorder" }
            Repeater {
                model: gallery.stateNames
                Cell {
                    id: recorderCell
                    required property string modelData
                    look: modelData
                    KeyRecorder {
                        // Checked: recording, waiting for the keys.
                        objectName: "recorder." + recorderCell.look
                        anchors.verticalCenter: parent.verticalCenter
                        implicitWidth: 124
                        keysText: "Super+Shift+J"
                        waitingText: "Press the keys…"
                        recording: recorderCell.look === "checked"
                        enabled: recorderCell.look !== "disabled"
                    }
                }
            }
        }

        RowLayout {
            spacing: 0
            TextBlock { Layout.preferredWidth: 110; role: "caption"; text: "icon" }
            Repeater {
                model: gallery.stateNames
                Cell {
                    id: iconCell
                    required property string modelData
                    look: modelData
                    IconButton {
                        objectName: "icon." + iconCell.look
                        visible: iconCell.look !== "checked"
                        anchors.verticalCenter: parent.verticalCenter
                        iconName: "next"
                        hint: "Next day"
                        enabled: iconCell.look !== "disabled"
                    }
                }
            }
        }

        RowLayout {
            spacing: 0
            TextBlock { Layout.preferredWidth: 110; role: "caption"; text: "check" }
            Repeater {
                model: gallery.stateNames
                Cell {
                    id: checkCell
                    required property string modelData
                    look: modelData
                    CheckCircle {
                        objectName: "check." + checkCell.look
                        anchors.verticalCenter: parent.verticalCenter
                        text: "Done"
                        checked: checkCell.look === "checked"
                        enabled: checkCell.look !== "disabled"
                    }
                }
            }
        }

        RowLayout {
            spacing: 0
            TextBlock { Layout.preferredWidth: 110; role: "caption"; text: "field" }
            Repeater {
                model: gallery.stateNames
                Cell {
                    id: fieldCell
                    required property string modelData
                    look: modelData
                    InputField {
                        objectName: "field." + fieldCell.look
                        visible: fieldCell.look !== "checked"
                        anchors.verticalCenter: parent.verticalCenter
                        width: 124
                        placeholderText: "Add a task"
                        enabled: fieldCell.look !== "disabled"
                    }
                }
            }
        }

        RowLayout {
            spacing: 0
            TextBlock { Layout.preferredWidth: 110; role: "caption"; text: "select" }
            Repeater {
                model: gallery.stateNames
                Cell {
                    id: selectCell
                    required property string modelData
                    look: modelData
                    SelectBox {
                        objectName: "select." + selectCell.look
                        visible: selectCell.look !== "pressed" && selectCell.look !== "checked"
                        anchors.verticalCenter: parent.verticalCenter
                        width: 124
                        model: ["Weekdays", "Never"]
                        enabled: selectCell.look !== "disabled"
                    }
                }
            }
        }

        RowLayout {
            spacing: 0
            TextBlock { Layout.preferredWidth: 110; role: "caption"; text: "row" }
            Repeater {
                model: gallery.stateNames
                Cell {
                    id: rowCell
                    required property string modelData
                    look: modelData
                    ListRow {
                        objectName: "row." + rowCell.look
                        visible: rowCell.look !== "disabled"
                        anchors.verticalCenter: parent.verticalCenter
                        width: 128
                        implicitHeight: 36
                        selected: rowCell.look === "checked"
                        current: activeFocus
                        RowLayout {
                            anchors.fill: parent
                            anchors.leftMargin: 6
                            Icon {
                                objectName: "glyph"
                                name: "urgent"
                                color: Theme.dangerText
                                Layout.preferredWidth: 16
                                Layout.preferredHeight: 16
                            }
                            TextBlock { objectName: "text"; text: "Write report" }
                        }
                    }
                }
            }
        }

        RowLayout {
            spacing: 0
            TextBlock { Layout.preferredWidth: 110; role: "caption"; text: "menu item" }
            Repeater {
                model: gallery.stateNames
                Cell {
                    id: menuCell
                    required property string modelData
                    look: modelData
                    Rectangle {
                        visible: menuCell.look !== "checked"
                        anchors.verticalCenter: parent.verticalCenter
                        width: 132
                        height: 40
                        radius: Tokens.radiusM
                        color: Theme.surface
                        border.color: Theme.separator
                        ActionMenuItem {
                            objectName: "menuItem." + menuCell.look
                            visible: menuCell.look !== "checked"
                            x: 4
                            y: 4
                            width: 124
                            iconName: "rollover"
                            text: "Tomorrow"
                            enabled: menuCell.look !== "disabled"
                        }
                    }
                }
            }
        }

        RowLayout {
            spacing: 0
            TextBlock { Layout.preferredWidth: 110; role: "caption"; text: "chip, text" }
            Cell {
                Chip { objectName: "chipAccent.normal"; anchors.verticalCenter: parent.verticalCenter; iconName: "extend"; text: "45m" }
            }
            Cell {
                Chip { objectName: "chipDanger.normal"; anchors.verticalCenter: parent.verticalCenter; tone: "danger"; iconName: "urgent"; text: "Urgent" }
            }
            Cell {
                Chip { objectName: "chipNeutral.normal"; anchors.verticalCenter: parent.verticalCenter; tone: "neutral"; iconName: "pause"; text: "Paused" }
            }
            Cell {
                TextBlock { objectName: "secondaryText.normal"; anchors.verticalCenter: parent.verticalCenter; role: "secondary"; text: "3 of 5 planned" }
            }
            Cell {
                TextBlock { objectName: "dangerText.normal"; anchors.verticalCenter: parent.verticalCenter; role: "danger"; text: "Over by 20m" }
            }
            Cell {
                TextBlock { objectName: "accentText.normal"; anchors.verticalCenter: parent.verticalCenter; role: "accent"; text: "Carried over" }
            }
        }

        RowLayout {
            spacing: Tokens.spaceL
            Item { implicitWidth: 110 - Tokens.spaceL }
            Banner {
                objectName: "banner.normal"
                Layout.preferredWidth: 300
                iconName: "rollover"
                text: "2 unfinished tasks from the past week."
                ActionButton { objectName: "bannerAction.focused"; kind: "primary"; text: "Carry over" }
                ActionButton { text: "Archive"; iconName: "archive" }
            }
            Card {
                objectName: "card.normal"
                Layout.preferredWidth: 220
                implicitHeight: cardColumn.implicitHeight + 2 * padding
                ColumnLayout {
                    id: cardColumn
                    width: parent.width
                    TextBlock { objectName: "text"; role: "title"; text: "Write report" }
                    TextBlock { objectName: "countdown"; role: "display"; text: "24:10" }
                    ProgressLine { objectName: "progress.normal"; Layout.fillWidth: true; value: 0.4 }
                    ProgressLine { objectName: "progress.overdue"; Layout.fillWidth: true; value: 1; overdue: true }
                }
            }
            ColumnLayout {
                Toast {
                    objectName: "toast.normal"
                    Layout.preferredWidth: 240
                    shown: true
                    text: "Moved to tomorrow"
                    actionText: "Undo"
                }
                PageDots { objectName: "dots.normal"; count: 4; current: 1 }
            }
        }
        RowLayout {
            spacing: 0
            TextBlock { Layout.preferredWidth: 110; role: "caption"; text: "icons" }
            Row {
                    spacing: 6
                    Repeater {
                        model: ["play", "pause", "done", "extend", "previous", "next", "today", "menu", "handle",
                                "urgent", "routine", "rollover", "archive", "settings", "review", "bell", "keyboard",
                                "shield", "info", "warning", "folder"]
                        Icon {
                            required property string modelData
                            objectName: "icon-" + modelData
                            name: modelData
                            color: Theme.text
                            width: 20
                            height: 20
                        }
                    }
                }
            }
        }
}
