import QtQuick
import QtQuick.Layouts
import Tarnwell.Widget

// The desktop widget: the day, the task in hand with its countdown and two
// buttons, what comes next, and the day's progress. Everything it shows comes
// from `widget` (WidgetWindowModel); colours come from Theme. It is built
// on plain Qt Quick (no Qt Quick Controls): it stays on the desktop all day,
// so it keeps its memory small.
Window {
    id: root
    required property WidgetWindowModel widget

    title: "Tarnwell"
    flags: Qt.FramelessWindowHint | Qt.WindowStaysOnBottomHint
    width: 320
    height: content.implicitHeight + 2 * content.anchors.margins
    minimumWidth: width
    maximumWidth: width
    visible: false
    color: Theme.window

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

        WidgetText {
            visible: root.widget.available
            text: root.widget.dayLabel
            color: Theme.secondaryText
            font.bold: true
            elide: Text.ElideRight
            Layout.fillWidth: true
        }

        WidgetText {
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

                WidgetText {
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
                    WidgetText {
                        text: root.widget.timeText
                        color: root.widget.overdue ? Theme.danger : Theme.text
                        font.pixelSize: 22
                    }
                    WidgetText {
                        text: root.widget.timeCaption
                        color: Theme.secondaryText
                        Layout.alignment: Qt.AlignBaseline
                    }
                }
                // The share of the plan used; in the danger colour when overdue.
                Rectangle {
                    visible: root.widget.hasPlan
                    Layout.fillWidth: true
                    implicitHeight: 6
                    radius: 3
                    color: Theme.pressed
                    Rectangle {
                        width: Math.min(1, Math.max(0, root.widget.progress)) * parent.width
                        height: parent.height
                        radius: 3
                        color: root.widget.overdue ? Theme.danger : Theme.accent
                    }
                }
                RowLayout {
                    spacing: 8
                    Layout.topMargin: 2
                    WidgetButton {
                        objectName: "timerButton"
                        text: root.widget.toggleText
                        kind: root.widget.running ? "secondary" : "primary"
                        iconName: root.widget.running ? "pause" : "play"
                        onClicked: root.widget.toggleTimer()
                    }
                    WidgetButton {
                        objectName: "doneButton"
                        iconName: "done"
                        text: root.widget.doneText
                        onClicked: root.widget.complete()
                    }
                }
            }
        }

        WidgetText {
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
                WidgetText {
                    text: upNextRow.modelData.title
                    color: Theme.text
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                WidgetText {
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
            WidgetText {
                text: root.widget.summaryLine
                color: Theme.secondaryText
                font.pixelSize: 12
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
            WidgetText {
                visible: text.length > 0
                text: root.widget.plannedText
                color: Theme.secondaryText
                font.pixelSize: 12
            }
        }
    }
}
