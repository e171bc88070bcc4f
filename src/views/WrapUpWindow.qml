import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import QtQuick.Window
import Tarnwell.Views

// The end of the day: what was done and how long it took against the plan,
// how close the estimates came, what is left, and the two ways to close the
// day: move the rest to tomorrow (with Undo) or call it done for today.
ThemedWindow {
    id: root
    objectName: "wrapUpRoot"
    required property WrapUpModel wrapUp
    required property WrapUpWindowController controller

    width: 460
    height: 600
    minimumWidth: 400
    minimumHeight: 440
    visible: false
    //: Title of the end-of-day wrap-up window (window lists, screen readers)
    //% "Wrap up the day"
    title: qsTrId("wrapUp.window.title")

    Shortcut { sequence: "Escape"; onActivated: root.controller.hide() }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Tokens.spaceXl
        spacing: Tokens.spaceM

        // The day and its headline figures.
        RowLayout {
            Layout.fillWidth: true
            spacing: Tokens.spaceM
            Rectangle {
                implicitWidth: 44
                implicitHeight: 44
                radius: 22
                color: Theme.accentSoft
                Icon {
                    anchors.centerIn: parent
                    width: 22
                    height: 22
                    name: "wrapup"
                    color: Theme.accentText
                }
            }
            ColumnLayout {
                Layout.fillWidth: true
                spacing: 0
                TextBlock {
                    objectName: "wrapUpHeading"
                    Layout.fillWidth: true
                    role: "heading"
                    text: root.wrapUp.doneLine
                    wrapMode: Text.Wrap
                    elide: Text.ElideNone
                }
                TextBlock {
                    Layout.fillWidth: true
                    role: "secondary"
                    text: root.wrapUp.dayTitle + " · " + root.wrapUp.focusedText
                    wrapMode: Text.Wrap
                    elide: Text.ElideNone
                }
            }
        }

        // Focused against planned, and the day's estimates.
        Card {
            objectName: "wrapUpFigures"
            Layout.fillWidth: true
            implicitHeight: figures.implicitHeight + 2 * padding
            Accessible.role: Accessible.Grouping
            Accessible.name: root.wrapUp.plannedLine + " " + root.wrapUp.accuracyLine
            ColumnLayout {
                id: figures
                width: parent.width
                spacing: Tokens.spaceXs
                TextBlock {
                    objectName: "plannedLine"
                    Layout.fillWidth: true
                    text: root.wrapUp.plannedLine
                    wrapMode: Text.Wrap
                    elide: Text.ElideNone
                }
                RowLayout {
                    Layout.fillWidth: true
                    visible: root.wrapUp.accuracyLine.length > 0
                    spacing: Tokens.spaceXs
                    Icon {
                        name: root.wrapUp.accuracyTone === "good" ? "done" : "review"
                        color: root.wrapUp.accuracyTone === "good" ? Theme.accentText
                             : root.wrapUp.accuracyTone === "over" ? Theme.dangerText : Theme.secondaryText
                        Layout.preferredWidth: Tokens.iconSmall
                        Layout.preferredHeight: Tokens.iconSmall
                    }
                    TextBlock {
                        objectName: "accuracyLine"
                        Layout.fillWidth: true
                        role: root.wrapUp.accuracyTone === "over" ? "danger" : "secondary"
                        text: root.wrapUp.accuracyLine
                        wrapMode: Text.Wrap
                        elide: Text.ElideNone
                    }
                }
            }
        }

        // Done, then left, in one scrolling list.
        Flickable {
            id: flick
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            contentWidth: width
            contentHeight: lists.implicitHeight
            boundsBehavior: Flickable.StopAtBounds
            T.ScrollBar.vertical: ScrollBarThin {}

            ColumnLayout {
                id: lists
                width: flick.width
                spacing: 2
                TextBlock {
                    Layout.fillWidth: true
                    visible: root.wrapUp.done.length > 0
                    role: "title"
                    //: Wrap-up: heading of the tasks completed today
                    //% "Done"
                    text: qsTrId("wrapUp.done.heading")
                }
                Repeater {
                    model: root.wrapUp.done
                    delegate: ListRow {
                        id: doneRow
                        required property var modelData
                        Layout.fillWidth: true
                        implicitHeight: 34
                        Accessible.role: Accessible.ListItem
                        Accessible.name: doneRow.modelData.title + ", " + doneRow.modelData.detail
                        RowLayout {
                            anchors.fill: parent
                            anchors.leftMargin: Tokens.spaceXs
                            anchors.rightMargin: Tokens.spaceXs
                            spacing: Tokens.spaceS
                            Icon {
                                name: "done"
                                color: Theme.accentText
                                Layout.preferredWidth: Tokens.iconSmall
                                Layout.preferredHeight: Tokens.iconSmall
                            }
                            TextBlock {
                                Layout.fillWidth: true
                                text: doneRow.modelData.title
                            }
                            TextBlock {
                                role: "secondary"
                                text: doneRow.modelData.detail
                            }
                        }
                    }
                }
                TextBlock {
                    objectName: "leftLine"
                    Layout.fillWidth: true
                    Layout.topMargin: Tokens.spaceS
                    role: "title"
                    text: root.wrapUp.leftLine
                    wrapMode: Text.Wrap
                    elide: Text.ElideNone
                }
                Repeater {
                    model: root.wrapUp.left
                    delegate: ListRow {
                        id: leftRow
                        required property var modelData
                        Layout.fillWidth: true
                        implicitHeight: 34
                        Accessible.role: Accessible.ListItem
                        Accessible.name: leftRow.modelData.title + (leftRow.modelData.detail.length > 0 ? ", " + leftRow.modelData.detail : "")
                        RowLayout {
                            anchors.fill: parent
                            anchors.leftMargin: Tokens.spaceXs
                            anchors.rightMargin: Tokens.spaceXs
                            spacing: Tokens.spaceS
                            Rectangle {
                                Layout.preferredWidth: Tokens.iconSmall
                                Layout.preferredHeight: Tokens.iconSmall
                                radius: width / 2
                                color: "transparent"
                                border.color: Theme.secondaryText
                                border.width: 1.5
                            }
                            TextBlock {
                                Layout.fillWidth: true
                                text: leftRow.modelData.title
                            }
                            TextBlock {
                                role: "secondary"
                                text: leftRow.modelData.detail
                            }
                        }
                    }
                }
            }
        }

        Toast {
            objectName: "wrapUpToast"
            Layout.fillWidth: true
            shown: root.wrapUp.toastVisible
            text: root.wrapUp.toastText
            //: Wrap-up: takes the move to tomorrow back
            //% "Undo"
            actionText: qsTrId("wrapUp.undo")
            onActionTriggered: root.wrapUp.undo()
        }

        Flow {
            Layout.fillWidth: true
            spacing: Tokens.spaceS
            layoutDirection: Qt.RightToLeft
            ActionButton {
                objectName: "doneForToday"
                kind: "primary"
                iconName: "done"
                //: Wrap-up: ends the day; the wrap-up is not offered again today
                //% "Done for today"
                text: qsTrId("wrapUp.doneForToday")
                onClicked: root.wrapUp.doneForToday()
            }
            ActionButton {
                objectName: "moveRest"
                visible: root.wrapUp.left.length > 0
                iconName: "rollover"
                //: Wrap-up: moves every open task of today to the head of tomorrow's queue
                //% "Move the rest to tomorrow"
                text: qsTrId("wrapUp.moveRest")
                onClicked: root.wrapUp.moveRestToTomorrow()
            }
        }
    }
}
