import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tarnwell.Views
import Tarnwell.Widget

// The desktop widget: the day, the task in hand with its countdown and two
// buttons, what comes next, and the day's progress. Everything it shows comes
// from `widget` (WidgetWindowModel); colours come from Theme.
ThemedWindow {
    id: root
    required property WidgetWindowModel widget

    title: "Tarnwell"
    flags: Qt.FramelessWindowHint | Qt.WindowStaysOnBottomHint
    width: 320
    height: content.implicitHeight + 2 * content.anchors.margins
    minimumWidth: width
    maximumWidth: width
    visible: false

    // Drag anywhere to move the window.
    DragHandler {
        target: null
        onActiveChanged: if (active) root.startSystemMove()
    }

    Rectangle {
        anchors.fill: parent
        color: "transparent"
        border.width: 1
        border.color: Theme.separator
    }

    ColumnLayout {
        id: content
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: 12
        spacing: 8

        Label {
            visible: root.widget.available
            text: root.widget.dayLabel
            color: Theme.secondaryText
            font.bold: true
            elide: Text.ElideRight
            Layout.fillWidth: true
        }

        Label {
            objectName: "emptyState"
            visible: root.widget.emptyText.length > 0
            text: root.widget.emptyText
            color: Theme.text
            wrapMode: Text.Wrap
            Layout.fillWidth: true
            Layout.topMargin: root.widget.available ? 0 : 8
            Layout.bottomMargin: root.widget.available ? 0 : 8
        }

        Rectangle {
            visible: root.widget.hasTask
            color: Theme.surface
            radius: 8
            border.width: 1
            border.color: Theme.separator
            Layout.fillWidth: true
            implicitHeight: card.implicitHeight + 20

            ColumnLayout {
                id: card
                anchors.fill: parent
                anchors.margins: 10
                spacing: 6

                Label {
                    text: root.widget.title
                    color: Theme.text
                    font.pixelSize: 15
                    font.bold: true
                    wrapMode: Text.Wrap
                    maximumLineCount: 2
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                RowLayout {
                    visible: root.widget.timeText.length > 0
                    spacing: 6
                    Label {
                        text: root.widget.timeText
                        color: root.widget.overdue ? Theme.danger : Theme.text
                        font.pixelSize: 22
                    }
                    Label {
                        text: root.widget.timeCaption
                        color: Theme.secondaryText
                        Layout.alignment: Qt.AlignBaseline
                    }
                }
                ProgressLine {
                    visible: root.widget.hasPlan
                    Layout.fillWidth: true
                    value: root.widget.progress
                    overdue: root.widget.overdue
                }
                RowLayout {
                    spacing: 8
                    Layout.topMargin: 2
                    ActionButton {
                        objectName: "timerButton"
                        text: root.widget.toggleText
                        kind: root.widget.running ? "secondary" : "primary"
                        iconName: root.widget.running ? "pause" : "play"
                        onClicked: root.widget.toggleTimer()
                    }
                    ActionButton {
                        objectName: "doneButton"
                        iconName: "done"
                        text: root.widget.doneText
                        onClicked: root.widget.complete()
                    }
                }
            }
        }

        Label {
            visible: root.widget.upNext.length > 0
            text: root.widget.upNextText
            color: Theme.secondaryText
            font.pixelSize: 12
            Layout.topMargin: 2
        }
        Repeater {
            model: root.widget.upNext
            RowLayout {
                id: upNextRow
                required property var modelData
                spacing: 8
                Layout.fillWidth: true
                Label {
                    text: upNextRow.modelData.title
                    color: Theme.text
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                Label {
                    visible: text.length > 0
                    text: upNextRow.modelData.duration
                    color: Theme.secondaryText
                }
            }
        }

        Rectangle {
            visible: root.widget.available
            color: Theme.separator
            implicitHeight: 1
            Layout.fillWidth: true
            Layout.topMargin: 2
        }
        RowLayout {
            visible: root.widget.available
            spacing: 8
            Layout.fillWidth: true
            Label {
                text: root.widget.summaryLine
                color: Theme.secondaryText
                font.pixelSize: 12
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
            Label {
                visible: text.length > 0
                text: root.widget.plannedText
                color: Theme.secondaryText
                font.pixelSize: 12
            }
        }
    }
}
