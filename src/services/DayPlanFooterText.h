#pragma once

#include "DayPlanCalculator.h"

#include <QLocale>
#include <QString>

namespace tarnwell {

// The lines of the footer under the up-next list, formatted from a DayPlan.
// A line that has nothing to say is empty.
class DayPlanFooterText
{
public:
    struct Lines
    {
        QString planned; // "1h 41m planned"; empty when nothing timed is left
        QString finish; // "Done 21:53"; only with a finish date
        QString workdayEnd; // "Workday ends 18:00" / "Workday ended 18:00"; only today
        QString overflow; // how many tasks do not fit; empty when none
        QString untimed; // how many tasks have no duration; empty when none
        QString summary; // planned, finish and workday end on one line
        QString accessibleSummary;
    };

    // Whole hours and minutes, rounded up to the next minute: "1h 41m", "2h", "45m".
    static QString formatDuration(qint64 seconds);
    // Hours and minutes of an instant in the calendar's time zone.
    static QString formatTime(const QDateTime &instant, const Calendar &calendar, const QLocale &locale = QLocale());

    static Lines lines(const DayPlan &plan, bool isToday, const std::optional<QDateTime> &workdayEnd,
                       const QDateTime &now, const Calendar &calendar, const QLocale &locale = QLocale());
};

} // namespace tarnwell
