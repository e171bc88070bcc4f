import QtQuick
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
    height: content.height + 2 * content.y
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

    // Plain positioners rather than Qt Quick Layouts: one module less in a
    // window that stays on the desktop all day. A hidden child takes no room.
    Column {
        id: content
        x: 12
        y: 12
        width: root.width - 24
        spacing: 8

        WidgetText {
            visible: root.widget.available
            width: parent.width
            text: root.widget.dayLabel
            color: Theme.secondaryText
            font.bold: true
            elide: Text.ElideRight
        }

        WidgetText {
            objectName: "emptyState"
            visible: root.widget.emptyText.length > 0
            width: parent.width
            text: root.widget.emptyText
            color: Theme.text
            wrapMode: Text.Wrap
            topPadding: root.widget.available ? 0 : 8
            bottomPadding: root.widget.available ? 0 : 8
        }

        Rectangle {
            visible: root.widget.hasTask
            width: parent.width
            height: card.height + 20
            color: Theme.surface
            radius: 8
            border.width: 1
            border.color: Theme.separator

            Column {
                id: card
                x: 10
                y: 10
                width: parent.width - 20
                spacing: 6

                WidgetText {
                    width: parent.width
                    text: root.widget.title
                    color: Theme.text
                    font.pixelSize: 15
                    font.bold: true
                    wrapMode: Text.Wrap
                    maximumLineCount: 2
                    elide: Text.ElideRight
                }
                Row {
                    visible: root.widget.timeText.length > 0
                    spacing: 6
                    WidgetText {
                        id: time
                        text: root.widget.timeText
                        color: root.widget.overdue ? Theme.danger : Theme.text
                        font.pixelSize: 22
                    }
                    WidgetText {
                        anchors.baseline: time.baseline
                        text: root.widget.timeCaption
                        color: Theme.secondaryText
                    }
                }
                // The share of the plan used; in the danger colour when overdue.
                Rectangle {
                    visible: root.widget.hasPlan
                    width: parent.width
                    height: 6
                    radius: 3
                    color: Theme.pressed
                    Rectangle {
                        width: Math.min(1, Math.max(0, root.widget.progress)) * parent.width
                        height: parent.height
                        radius: 3
                        color: root.widget.overdue ? Theme.danger : Theme.accent
                    }
                }
                Row {
                    spacing: 8
                    topPadding: 2
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
            width: parent.width
            text: root.widget.upNextText
            color: Theme.secondaryText
            font.pixelSize: 12
            topPadding: 2
        }
        Repeater {
            model: root.widget.upNext
            Row {
                id: upNextRow
                required property var modelData
                width: parent ? parent.width : 0
                spacing: 8
                WidgetText {
                    width: upNextRow.width - (duration.visible ? duration.width + upNextRow.spacing : 0)
                    text: upNextRow.modelData.title
                    color: Theme.text
                    elide: Text.ElideRight
                }
                WidgetText {
                    id: duration
                    visible: text.length > 0
                    text: upNextRow.modelData.duration
                    color: Theme.secondaryText
                }
            }
        }

        // The rule above the summary, 2 px further down than the spacing.
        Item {
            visible: root.widget.available
            width: parent.width
            height: 3
            Rectangle {
                anchors.bottom: parent.bottom
                width: parent.width
                height: 1
                color: Theme.separator
            }
        }
        Row {
            visible: root.widget.available
            width: parent.width
            spacing: 8
            WidgetText {
                width: parent.width - (planned.visible ? planned.width + parent.spacing : 0)
                text: root.widget.summaryLine
                color: Theme.secondaryText
                font.pixelSize: 12
                wrapMode: Text.Wrap
            }
            WidgetText {
                id: planned
                visible: text.length > 0
                text: root.widget.plannedText
                color: Theme.secondaryText
                font.pixelSize: 12
            }
        }
    }
}
