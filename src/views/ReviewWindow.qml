import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import QtQuick.Window
import Tarnwell.Views

// The review of estimates: one week or month (Alt+Left and Alt+Right move,
// Alt+Home comes back to now), a chart of planned against measured minutes
// per group of planned durations, a verdict per group, the tasks that ran
// furthest past their plan, and the completed tasks without a plan.
ThemedWindow {
    id: root
    objectName: "reviewRoot"
    required property ReviewModel review
    required property ReviewWindowController controller

    width: 760
    height: 680
    minimumWidth: 640
    minimumHeight: 520
    visible: false
    //: Title of the review window (window lists, screen readers)
    //% "Review of your estimates"
    title: qsTrId("review.window.title")

    Shortcut { sequence: "Escape"; onActivated: root.controller.hide() }
    Shortcut { sequence: "Alt+Left"; onActivated: root.review.previous() }
    Shortcut { sequence: "Alt+Right"; onActivated: root.review.next() }
    Shortcut { sequence: "Alt+Home"; onActivated: root.review.current() }

    Flickable {
        id: flick
        anchors.fill: parent
        clip: true
        contentWidth: width
        contentHeight: column.implicitHeight + 2 * Tokens.spaceXl
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: ScrollBarThin {}

        ColumnLayout {
            id: column
            x: Tokens.spaceXl
            y: Tokens.spaceXl
            width: flick.width - 2 * Tokens.spaceXl
            spacing: Tokens.spaceM

            // The period and how to move.
            RowLayout {
                Layout.fillWidth: true
                spacing: Tokens.spaceS
                IconButton {
                    objectName: "previousPeriod"
                    iconName: "previous"
                    //: Review: button that shows the week or month before
                    //% "Earlier"
                    hint: qsTrId("review.previous")
                    onClicked: root.review.previous()
                }
                ColumnLayout {
                    Layout.fillWidth: true
                    spacing: 0
                    TextBlock {
                        objectName: "periodTitle"
                        Layout.fillWidth: true
                        role: "heading"
                        text: root.review.periodTitle
                        wrapMode: Text.Wrap
                        elide: Text.ElideNone
                    }
                    TextBlock {
                        Layout.fillWidth: true
                        role: "secondary"
                        text: root.review.summaryLine
                        wrapMode: Text.Wrap
                        elide: Text.ElideNone
                    }
                }
                IconButton {
                    objectName: "nextPeriod"
                    iconName: "next"
                    enabled: !root.review.isCurrent
                    //: Review: button that shows the week or month after
                    //% "Later"
                    hint: qsTrId("review.next")
                    onClicked: root.review.next()
                }
                Row {
                    spacing: Tokens.spaceXs
                    Accessible.role: Accessible.Grouping
                    ActionButton {
                        objectName: "weekly"
                        kind: root.review.monthly ? "secondary" : "primary"
                        Accessible.checkable: true
                        Accessible.checked: !root.review.monthly
                        //: Review: shows one week at a time
                        //% "Week"
                        text: qsTrId("review.week")
                        onClicked: root.review.monthly = false
                    }
                    ActionButton {
                        objectName: "monthly"
                        kind: root.review.monthly ? "primary" : "secondary"
                        Accessible.checkable: true
                        Accessible.checked: root.review.monthly
                        //: Review: shows one month at a time
                        //% "Month"
                        text: qsTrId("review.month")
                        onClicked: root.review.monthly = true
                    }
                }
            }

            // Planned against measured, per group: the medians.
            Card {
                objectName: "reviewChart"
                Layout.fillWidth: true
                implicitHeight: chartColumn.implicitHeight + 2 * padding
                Accessible.role: Accessible.Chart
                //: Review: name of the chart for screen readers
                //% "Median planned and measured minutes per group"
                Accessible.name: qsTrId("review.chart")
                ColumnLayout {
                    id: chartColumn
                    width: parent.width
                    spacing: Tokens.spaceS
                    RowLayout {
                        spacing: Tokens.spaceM
                        Rectangle {
                            implicitWidth: 12; implicitHeight: 12; radius: 3
                            color: Theme.accentSoft
                            border.width: 1
                            border.color: Theme.accentText
                        }
                        TextBlock {
                            role: "secondary"
                            //: Review: chart legend for the planned minutes' bar
                            //% "Planned (median)"
                            text: qsTrId("review.legend.planned")
                        }
                        Rectangle { implicitWidth: 12; implicitHeight: 12; radius: 3; color: Theme.accent }
                        TextBlock {
                            role: "secondary"
                            //: Review: chart legend for the measured minutes' bar
                            //% "Measured (median)"
                            text: qsTrId("review.legend.actual")
                        }
                    }
                    Canvas {
                        id: chart
                        objectName: "chartCanvas"
                        Layout.fillWidth: true
                        Layout.preferredHeight: 180
                        readonly property var buckets: root.review.buckets
                        readonly property real maxMinutes: Math.max(root.review.chartMaxMinutes, 15)
                        onBucketsChanged: requestPaint()
                        onWidthChanged: requestPaint()
                        Connections {
                            target: Theme
                            function onChanged() { chart.requestPaint() }
                        }
                        onPaint: {
                            const ctx = getContext("2d")
                            ctx.reset()
                            const w = width, h = height
                            const base = h - 1
                            // Grid lines at quarters of the scale.
                            ctx.strokeStyle = Theme.separator
                            ctx.lineWidth = 1
                            for (let i = 0; i <= 4; ++i) {
                                const y = Math.round(base - (base - 8) * i / 4) + 0.5
                                ctx.beginPath(); ctx.moveTo(0, y); ctx.lineTo(w, y); ctx.stroke()
                            }
                            const groups = buckets.length
                            if (groups === 0)
                                return
                            const slot = w / groups
                            const bar = Math.min(36, slot / 4)
                            for (let g = 0; g < groups; ++g) {
                                const b = buckets[g]
                                if (b.count === 0)
                                    continue
                                const cx = slot * g + slot / 2
                                const ph = (base - 8) * b.plannedMinutes / maxMinutes
                                const ah = (base - 8) * b.actualMinutes / maxMinutes
                                ctx.fillStyle = Theme.accentSoft
                                ctx.strokeStyle = Theme.accentText
                                ctx.fillRect(cx - bar - 2, base - ph, bar, ph)
                                ctx.strokeRect(cx - bar - 2 + 0.5, base - ph + 0.5, bar - 1, ph - 1)
                                ctx.fillStyle = Theme.accent
                                ctx.fillRect(cx + 2, base - ah, bar, ah)
                            }
                        }
                    }
                    RowLayout {
                        Layout.fillWidth: true
                        spacing: 0
                        Repeater {
                            model: root.review.buckets
                            delegate: ColumnLayout {
                                id: bucketLabel
                                required property var modelData
                                Layout.fillWidth: true
                                Layout.preferredWidth: 1
                                spacing: 0
                                TextBlock {
                                    Layout.fillWidth: true
                                    horizontalAlignment: Text.AlignHCenter
                                    role: "caption"
                                    text: bucketLabel.modelData.title
                                    wrapMode: Text.Wrap
                                    elide: Text.ElideNone
                                }
                                TextBlock {
                                    Layout.fillWidth: true
                                    horizontalAlignment: Text.AlignHCenter
                                    role: "secondary"
                                    visible: bucketLabel.modelData.count > 0
                                    text: bucketLabel.modelData.plannedText + " → " + bucketLabel.modelData.actualText
                                }
                            }
                        }
                    }
                }
            }

            // A verdict per group.
            Repeater {
                model: root.review.buckets
                delegate: RowLayout {
                    id: verdictRow
                    required property var modelData
                    required property int index
                    objectName: "verdict-" + index
                    Layout.fillWidth: true
                    spacing: Tokens.spaceM
                    Accessible.role: Accessible.StaticText
                    Accessible.name: modelData.verdict
                    Chip {
                        Layout.alignment: Qt.AlignTop
                        tone: verdictRow.modelData.tone
                        text: verdictRow.modelData.count > 0 ? verdictRow.modelData.ratioText : "–"
                    }
                    ColumnLayout {
                        Layout.fillWidth: true
                        spacing: 0
                        TextBlock {
                            Layout.fillWidth: true
                            text: verdictRow.modelData.verdict
                            wrapMode: Text.Wrap
                            elide: Text.ElideNone
                        }
                        TextBlock {
                            Layout.fillWidth: true
                            visible: verdictRow.modelData.count > 0
                            role: "secondary"
                            //: Review: a group's figures; %1 = number of tasks, %2 = median planned ("25m"), %3 = median measured ("35m")
                            //% "%1 tasks · planned %2 · measured %3 (medians)"
                            text: qsTrId("review.bucket.figures").arg(verdictRow.modelData.count)
                                  .arg(verdictRow.modelData.plannedText).arg(verdictRow.modelData.actualText)
                            wrapMode: Text.Wrap
                            elide: Text.ElideNone
                        }
                    }
                }
            }

            // The tasks that ran furthest past their plan.
            TextBlock {
                Layout.fillWidth: true
                Layout.topMargin: Tokens.spaceS
                visible: root.review.offenders.length > 0
                role: "title"
                //: Review: heading of the tasks that ran furthest past their plan
                //% "Furthest over plan"
                text: qsTrId("review.offenders")
            }
            Repeater {
                model: root.review.offenders
                delegate: ListRow {
                    id: offenderRow
                    required property var modelData
                    Layout.fillWidth: true
                    implicitHeight: 40
                    Accessible.role: Accessible.ListItem
                    Accessible.name: modelData.title + ", " + modelData.date + ", " + modelData.overrunText
                    RowLayout {
                        anchors.fill: parent
                        anchors.leftMargin: Tokens.spaceS
                        anchors.rightMargin: Tokens.spaceS
                        spacing: Tokens.spaceM
                        TextBlock {
                            Layout.preferredWidth: 110
                            role: "secondary"
                            text: offenderRow.modelData.date
                        }
                        TextBlock {
                            Layout.fillWidth: true
                            text: offenderRow.modelData.title
                        }
                        TextBlock {
                            role: "secondary"
                            text: offenderRow.modelData.plannedText + " → " + offenderRow.modelData.actualText
                        }
                        TextBlock {
                            Layout.preferredWidth: 64
                            horizontalAlignment: Text.AlignRight
                            role: "danger"
                            font.weight: Font.DemiBold
                            text: offenderRow.modelData.overrunText
                        }
                    }
                }
            }

            TextBlock {
                objectName: "unplanned"
                Layout.fillWidth: true
                Layout.topMargin: Tokens.spaceS
                visible: text.length > 0
                role: "secondary"
                text: root.review.unplannedLine
                wrapMode: Text.Wrap
                elide: Text.ElideNone
            }
        }
    }
}
