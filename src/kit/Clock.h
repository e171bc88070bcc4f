#pragma once

#include <QDateTime>
#include <functional>

namespace tarnwell {

// Every reading of "now" goes through a Clock so that tests can pin time.
using Clock = std::function<QDateTime()>;

// The real clock: the current instant in UTC.
inline Clock systemClock()
{
    return [] { return QDateTime::currentDateTimeUtc(); };
}

// Whole seconds from `from` to `to`, truncated toward zero.
inline qint64 wholeSecondsBetween(const QDateTime &from, const QDateTime &to)
{
    return from.msecsTo(to) / 1000;
}

} // namespace tarnwell
