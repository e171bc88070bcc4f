#pragma once

#include <QString>

namespace tarnwell {

// The clock format of the task card and the countdown: "mm:ss" below an hour,
// "h:mm:ss" from an hour on, with "+" in front of time beyond the plan
// (a negative number of seconds).
namespace DurationFormat {

QString clock(qint64 seconds);

} // namespace DurationFormat
} // namespace tarnwell
