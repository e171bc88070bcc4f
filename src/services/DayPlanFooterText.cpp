#include "DayPlanFooterText.h"

#include "PlanningTexts.h"

#include <QRegularExpression>

namespace tarnwell {

QString DayPlanFooterText::formatDuration(qint64 seconds)
{
    const qint64 minutes = seconds <= 0 ? 0 : (seconds + 59) / 60;
    const qint64 hours = minutes / 60;
    const qint64 rest = minutes % 60;
    if (hours == 0)
        return QStringLiteral("%1m").arg(rest);
    if (rest == 0)
        return QStringLiteral("%1h").arg(hours);
    return QStringLiteral("%1h %2m").arg(hours).arg(rest);
}

QString DayPlanFooterText::formatTime(const QDateTime &instant, const Calendar &calendar, const QLocale &locale)
{
    // The locale's short time style, without seconds should it carry them.
    QString format = locale.timeFormat(QLocale::ShortFormat);
    static const QRegularExpression seconds(QStringLiteral("[:.]?ss?"));
    format.remove(seconds);
    return locale.toString(instant.toTimeZone(calendar.timeZone()).time(), format);
}

DayPlanFooterText::Lines DayPlanFooterText::lines(const DayPlan &plan, bool isToday,
                                                  const std::optional<QDateTime> &workdayEnd, const QDateTime &now,
                                                  const Calendar &calendar, const QLocale &locale)
{
    Lines out;
    QStringList parts;
    if (plan.totalSeconds > 0) {
        out.planned = PlanningTexts::dayPlanPlanned(formatDuration(plan.totalSeconds));
        parts << out.planned;
    }
    if (plan.finishDate) {
        out.finish = PlanningTexts::dayPlanFinishPrefix() + u' ' + formatTime(*plan.finishDate, calendar, locale);
        parts << out.finish;
    }
    if (isToday && workdayEnd) {
        const QString time = formatTime(*workdayEnd, calendar, locale);
        out.workdayEnd =
            now < *workdayEnd ? PlanningTexts::dayPlanWorkdayEnds(time) : PlanningTexts::dayPlanWorkdayEnded(time);
        parts << PlanningTexts::dayPlanWorkday(time);
    }
    if (!plan.overflow.isEmpty())
        out.overflow = PlanningTexts::dayPlanOverflowCount(int(plan.overflow.size()));
    if (plan.untimedCount > 0)
        out.untimed = PlanningTexts::dayPlanUntimed(int(plan.untimedCount));
    out.summary = parts.join(QStringLiteral(" · "));
    if (!parts.isEmpty())
        out.accessibleSummary = PlanningTexts::dayPlanSummary(parts.join(QStringLiteral(", ")));
    return out;
}

} // namespace tarnwell
