#pragma once

#include "Day.h"
#include "StoreContext.h"
#include "kit/Calendar.h"
#include "kit/Clock.h"

namespace tarnwell {

// Finds and creates days; guarantees one Day per local start of day.
class DayRepository
{
public:
    struct Constants
    {
        static constexpr const char *entityName = "Day";
    };

    DayRepository(StoreContext &context, Calendar calendar, Clock clock);

    StoreContext &context() const { return m_context; }
    const Calendar &calendar() const { return m_calendar; }
    const Clock &clock() const { return m_clock; }
    // The start of the day of clock().
    QDateTime today() const { return m_calendar.startOfDay(m_clock()); }

    // The day whose date is the start of the day of `date`, or none.
    Day *day(const QDateTime &date);
    // As day(), inserting the day when it does not exist yet. Does not save.
    Day *fetchOrCreateDay(const QDateTime &date);
    // Days with start <= date <= end (both starts of days), oldest first.
    QList<Day *> days(const QDateTime &start, const QDateTime &end);
    // Days from the start of `date` plus `lowerOffset` days to plus
    // `upperOffset` days. A lower offset above the upper one stops the process.
    QList<Day *> days(const QDateTime &date, int lowerOffset, int upperOffset);
    // Deletes the empty days after today, then saves if anything changed.
    void deleteEmptyFutureDays();
    // Saves the context if it has changes; throws the store's error.
    void saveIfNeeded();

private:
    StoreContext &m_context;
    Calendar m_calendar;
    Clock m_clock;
};

} // namespace tarnwell
