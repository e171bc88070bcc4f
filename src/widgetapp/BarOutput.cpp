#include "BarOutput.h"

#include "WidgetProgramTexts.h"
#include "services/DurationFormat.h"
#include "services/PlanningTexts.h"
#include "widget/TarnwellSharedJSON.h"

#include <QHash>
#include <QRegularExpression>

namespace tarnwell::widgetapp::BarOutput {

namespace {

QString minutes(qint64 count, const WidgetSnapshot &s)
{
    return QStringLiteral("%1 %2").arg(count).arg(s.minutesUnit);
}

QString markupEscaped(const QString &text)
{
    return text.toHtmlEscaped();
}

QString itemLine(const WidgetSnapshot::Item &item, const WidgetSnapshot &s)
{
    if (!item.durationMinutes)
        return item.title;
    return QStringLiteral("%1 (%2)").arg(item.title, minutes(*item.durationMinutes, s));
}

QString tooltip(const WidgetSnapshot &s, const LiveTiming &timing)
{
    QStringList lines{s.dayLabel};
    if (s.anchor) {
        const QString time = timeText(s, timing, true);
        lines << (time.isEmpty() ? s.anchor->title : QStringLiteral("%1 \u00B7 %2").arg(s.anchor->title, time));
    } else {
        lines << WidgetProgramTexts::nothingQueued();
    }
    if (!s.upNext.isEmpty()) {
        lines << WidgetProgramTexts::upNext();
        for (const auto &item : s.upNext)
            lines << QStringLiteral("  \u2022 ") + itemLine(item, s);
    }
    lines << s.summaryLine;
    if (s.plannedLabel)
        lines << PlanningTexts::dayPlanPlanned(*s.plannedLabel);
    return lines.join(QLatin1Char('\n'));
}

} // namespace

QString timeText(const WidgetSnapshot &s, const LiveTiming &t, bool seconds)
{
    if (!s.anchor)
        return {};
    if (s.totalSeconds && t.remainingSeconds) {
        const qint64 r = *t.remainingSeconds;
        if (seconds)
            return DurationFormat::clock(r);
        if (r > 0)
            return minutes((r + 59) / 60, s);
        return QLatin1Char('+') + minutes(-r / 60, s);
    }
    if (!t.running && t.elapsedSeconds == 0)
        return {};
    return seconds ? DurationFormat::clock(t.elapsedSeconds) : minutes(t.elapsedSeconds / 60, s);
}

QByteArray waybar(const std::optional<WidgetSnapshot> &snapshot, const QDateTime &now, bool seconds)
{
    namespace json = TarnwellSharedJSON;
    QString text;
    QString tip = WidgetProgramTexts::notRunning();
    LiveTiming timing;
    if (snapshot) {
        timing = LiveTiming::at(*snapshot, now);
        if (snapshot->anchor) {
            const QString time = timeText(*snapshot, timing, seconds);
            text = time.isEmpty() ? snapshot->anchor->title
                                  : QStringLiteral("%1 \u00B7 %2").arg(snapshot->anchor->title, time);
        } else {
            text = WidgetProgramTexts::nothingQueued();
        }
        tip = tooltip(*snapshot, timing);
    }
    const QString state = LiveTiming::name(timing.state);
    return json::ObjectWriter()
        .add("text", markupEscaped(text))
        .add("alt", state)
        .add("tooltip", markupEscaped(tip))
        .add("class", state)
        .add("percentage", qint64(timing.percentage))
        .finish();
}

QString format(const QString &pattern, const std::optional<WidgetSnapshot> &snapshot, const QDateTime &now,
               bool seconds)
{
    QHash<QString, QString> fields;
    LiveTiming timing;
    if (snapshot) {
        const WidgetSnapshot &s = *snapshot;
        timing = LiveTiming::at(s, now);
        fields.insert(QStringLiteral("title"), s.anchor ? s.anchor->title : WidgetProgramTexts::nothingQueued());
        fields.insert(QStringLiteral("time"), timeText(s, timing, seconds));
        fields.insert(QStringLiteral("done"), QString::number(s.completedCount));
        fields.insert(QStringLiteral("total"), QString::number(s.totalCount));
        fields.insert(QStringLiteral("next"), s.upNext.isEmpty() ? QString() : s.upNext.first().title);
        fields.insert(QStringLiteral("summary"), s.summaryLine);
        fields.insert(QStringLiteral("planned"), s.plannedLabel.value_or(QString()));
        fields.insert(QStringLiteral("day"), s.dayLabel);
    }
    fields.insert(QStringLiteral("state"), LiveTiming::name(timing.state));
    fields.insert(QStringLiteral("percentage"), QString::number(timing.percentage));
    if (!snapshot)
        return {}; // nothing current: an empty line hides the block

    static const QRegularExpression field(QStringLiteral("\\{([a-z]+)\\}"));
    QString out;
    qsizetype last = 0;
    for (auto it = field.globalMatch(pattern); it.hasNext();) {
        const auto match = it.next();
        out += pattern.mid(last, match.capturedStart() - last);
        const auto value = fields.constFind(match.captured(1));
        out += value != fields.constEnd() ? *value : match.captured(0);
        last = match.capturedEnd();
    }
    out += pattern.mid(last);
    // One line per update: a title cannot break it.
    out.replace(QLatin1Char('\n'), QLatin1Char(' '));
    return out.trimmed();
}

} // namespace tarnwell::widgetapp::BarOutput
