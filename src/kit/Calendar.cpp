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
    return startOfDay(instant).toTimeZone(*m_zone).addSecs(qint64(minutes) * 60).toUTC();
}

QDateTime Calendar::nextStartOfDay(const QDateTime &instant) const
{
    return startOfDayAdding(instant, 1);
}

} // namespace tarnwell
