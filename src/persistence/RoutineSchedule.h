#pragma once

#include <QHashFunctions>
#include <QtGlobal>

namespace tarnwell {

// The weekdays a routine repeats on, as stored in Routine::repeatWeekdays:
// bit (w - 1) stands for weekday w, 1 = Sunday ... 7 = Saturday.
struct RoutineSchedule
{
    enum class Kind { never, everyDay, weekdays, custom };

    qint16 mask = 0;

    static constexpr RoutineSchedule never() { return {0}; }
    static constexpr RoutineSchedule everyDay() { return {127}; }
    static constexpr RoutineSchedule weekdays() { return {62}; } // Monday to Friday

    // False for a weekday outside 1...7.
    constexpr bool contains(int weekday) const { return weekday >= 1 && weekday <= 7 && (mask >> (weekday - 1)) & 1; }
    constexpr Kind kind() const
    {
        if (mask == never().mask)
            return Kind::never;
        if (mask == everyDay().mask)
            return Kind::everyDay;
        if (mask == weekdays().mask)
            return Kind::weekdays;
        return Kind::custom;
    }
    // The same schedule with `weekday` switched on or off.
    constexpr RoutineSchedule with(int weekday, bool on) const
    {
        if (weekday < 1 || weekday > 7)
            return *this;
        const int bit = 1 << (weekday - 1);
        return {qint16(on ? (mask | bit) : (mask & ~bit))};
    }

    friend constexpr bool operator==(RoutineSchedule, RoutineSchedule) = default;
    friend size_t qHash(RoutineSchedule schedule, size_t seed = 0) noexcept { return qHash(schedule.mask, seed); }
};

} // namespace tarnwell
