#pragma once

#include "kit/Calendar.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>

namespace tarnwell {

class Day;

// iCalendar export: one VTODO per task (all-day DTSTART on its day, STATUS,
// COMPLETED, PRIORITY 1 when urgent, planned minutes and focused seconds as
// X-TARNWELL- properties). libical does the folding, escaping and time forms.
namespace IcsWriter {

QByteArray write(const QList<Day *> &days, const Calendar &calendar, const QDateTime &now);

} // namespace IcsWriter
} // namespace tarnwell
