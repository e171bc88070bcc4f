#pragma once

#include <QtGlobal>

namespace tarnwell {

class Day;

// A day's finished work: how many tasks were completed and the seconds of
// focus measured on them. The widget's summary line and the day's wrap-up
// read it from here.
struct DailySummary
{
    int completedCount = 0;
    qint64 focusedSeconds = 0;
    // Minutes planned for the completed tasks that had a plan.
    qint64 plannedMinutes = 0;

    // None gives the empty summary.
    static DailySummary load(const Day *day);
};

} // namespace tarnwell
