#pragma once

#include <QDate>
#include <QDateTime>
#include <QTimeZone>

#include <memory>

namespace tarnwell {

// The user's calendar: Gregorian days in one time zone. All start-of-day and
// day arithmetic goes through here so that daylight-saving changes are handled
// in one place.
//
// Copies share their zone: the composition root makes one calendar, every
// service keeps a copy, and a time-zone change made through any of them
// (setTimeZone) is seen by all at once.
class Calendar
{
public:
    // The system time zone (honours TZ).
    Calendar();
    explicit Calendar(const QTimeZone &zone);

    QTimeZone timeZone() const { return *m_zone; }
    // Moves this calendar and every copy of it to another zone.
    void setTimeZone(const QTimeZone &zone) { *m_zone = zone; }

    // The local calendar date that `instant` falls on.
    QDate date(const QDateTime &instant) const;
    // The first instant of the local day that `instant` falls on.
    QDateTime startOfDay(const QDateTime &instant) const;
    // The first instant of a local calendar date.
    QDateTime startOfDay(QDate date) const;
    // The start of the day `days` calendar days after the day of `instant`.
    QDateTime startOfDayAdding(const QDateTime &instant, int days) const;
    // Weekday of `instant` with 1 = Sunday ... 7 = Saturday.
    int weekday(const QDateTime &instant) const;
    // The instant at a wall-clock time of the day of `instant`.
    QDateTime atMinuteOfDay(const QDateTime &instant, int minutes) const;
    // The next local midnight strictly after `instant`.
    QDateTime nextStartOfDay(const QDateTime &instant) const;

private:
    std::shared_ptr<QTimeZone> m_zone;
};

} // namespace tarnwell
