#pragma once

#include "kit/Clock.h"

#include <QDateTime>

// A clock that only moves when the test moves it.
struct ManualClock
{
    QDateTime now;

    explicit ManualClock(const QDateTime &start = QDateTime(QDate(2026, 3, 4), QTime(10, 0), Qt::UTC))
        : now(start.toUTC())
    {
    }
    tarnwell::Clock clock()
    {
        return [this] { return now; };
    }
    void advance(qint64 msecs) { now = now.addMSecs(msecs); }
};
