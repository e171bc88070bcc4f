#pragma once

#include "kit/Calendar.h"

#include <QByteArray>
#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

namespace tarnwell {

class Day;

// iCalendar export: one VTODO per task (all-day DTSTART on its day, STATUS,
// COMPLETED, PRIORITY 1 when urgent, planned minutes and focused seconds as
// X-TARNWELL- properties). libical does the folding, escaping and time forms.
namespace IcsWriter {

// A task as the export writes it, read off the store beforehand, so that the
// writing half needs nothing but Qt Core and libical (the command line loads
// it on demand).
struct Todo
{
    QString uid;
    QDate day;
    QString title;
    QString notes;
    QDateTime createdAt;
    QDateTime updatedAt;
    bool urgent = false;
    bool completed = false;
    std::optional<QDateTime> completedAt;
    bool archived = false;
    std::optional<qint64> plannedMinutes;
    std::optional<qint64> focusedSeconds;
};

QList<Todo> todos(const QList<Day *> &days, const Calendar &calendar);
QByteArray write(const QList<Todo> &todos, const QDateTime &now);

inline QByteArray write(const QList<Day *> &days, const Calendar &calendar, const QDateTime &now)
{
    return write(todos(days, calendar), now);
}

} // namespace IcsWriter
} // namespace tarnwell
