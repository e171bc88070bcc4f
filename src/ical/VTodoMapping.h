#pragma once

#include <QByteArray>
#include <QDate>
#include <QDateTime>
#include <QString>

#include <optional>

namespace tarnwell {

// A task as a synced VTODO carries it. Planned minutes, the order in the day
// and the measured seconds have no standard property and travel as
// X-TARNWELL- properties; the rest are the standard ones every CalDAV client
// shows (SUMMARY, DESCRIPTION, DUE/DTSTART, PRIORITY, STATUS, COMPLETED).
struct TodoFields
{
    QString uid;
    QString title;
    QString notes;
    QDate day; // DUE, else DTSTART, as a date; invalid when the to-do has neither
    bool urgent = false; // PRIORITY 1 to 4 (the high ones)
    std::optional<int> plannedMinutes;
    bool completed = false;
    std::optional<QDateTime> completedAt;
    bool cancelled = false; // STATUS:CANCELLED: archived
    std::optional<int> order; // place in the day
    int focusedSeconds = 0;
    int discardedSeconds = 0; // away time the user discounted
    std::optional<QDateTime> lastModified;

    bool operator==(const TodoFields &) const = default;
};

namespace VTodoMapping {

// The first VTODO of an iCalendar resource; nothing when there is none or the
// text is not iCalendar. Values out of range (negative seconds, minutes past a
// week) are left out rather than trusted.
std::optional<TodoFields> read(const QByteArray &ics);

// `fields` as an iCalendar resource. With `previous` (the resource as the
// server last had it) only the properties above are replaced: whatever other
// clients wrote (alarms, categories, their own X- properties, other
// components) is kept as it was.
QByteArray write(const TodoFields &fields, const QDateTime &now, const QByteArray &previous = {});

} // namespace VTodoMapping
} // namespace tarnwell
