#include "Calendar.h"

namespace tarnwell {

Calendar::Calendar()
    : m_zone(std::make_shared<QTimeZone>(QTimeZone::systemTimeZone()))
{
}

Calendar::Calendar(const QTimeZone &zone)
    : m_zone(std::make_shared<QTimeZone>(zone))
{
}

QDate Calendar::date(const QDateTime &instant) const
{
    return instant.toTimeZone(*m_zone).date();
}

QDateTime Calendar::startOfDay(const QDateTime &instant) const
{
    return startOfDay(date(instant));
}

QDateTime Calendar::startOfDay(QDate day) const
{
    // QDate::startOfDay picks the first valid local time when midnight is
    // skipped by a daylight-saving jump.
    return day.startOfDay(*m_zone).toUTC();
}

QDateTime Calendar::startOfDayAdding(const QDateTime &instant, int days) const
{
    return startOfDay(date(instant).addDays(days));
}

int Calendar::weekday(const QDateTime &instant) const
{
    // Qt counts Monday = 1 ... Sunday = 7.
    return date(instant).dayOfWeek() % 7 + 1;
}

QDateTime Calendar::atMinuteOfDay(const QDateTime &instant, int minutes) const
{
    // The wall clock, not the seconds since midnight: on a daylight-saving
    // day 18:00 stays 18:00. A time the change skips counts from midnight.
    const QDateTime wall(date(instant), QTime(0, 0).addSecs(qint64(minutes) * 60), *m_zone);
    if (wall.isValid() && wall.time() == QTime(0, 0).addSecs(qint64(minutes) * 60))
        return wall.toUTC();
    return startOfDay(instant).toTimeZone(*m_zone).addSecs(qint64(minutes) * 60).toUTC();
}

QDateTime Calendar::nextStartOfDay(const QDateTime &instant) const
{
    return startOfDayAdding(instant, 1);
}

} // namespace tarnwell
