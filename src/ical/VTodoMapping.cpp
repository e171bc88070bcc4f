#include "VTodoMapping.h"

#include <libical/ical.h>

#include <QList>

#include <limits>
#include <memory>

namespace tarnwell::VTodoMapping {

namespace {

using Component = std::unique_ptr<icalcomponent, decltype(&icalcomponent_free)>;

constexpr const char *plannedName = "X-TARNWELL-PLANNED-MINUTES";
constexpr const char *dayName = "X-TARNWELL-DAY"; // YYYYMMDD, for a to-do that has no date of its own
constexpr const char *orderName = "X-TARNWELL-ORDER";
constexpr const char *focusedName = "X-TARNWELL-FOCUSED-SECONDS";
constexpr const char *discardedName = "X-TARNWELL-DISCARDED-SECONDS";
constexpr int maxPlannedMinutes = 7 * 24 * 60;

Component parse(const QByteArray &ics)
{
    if (ics.isEmpty())
        return {nullptr, &icalcomponent_free};
    return {icalparser_parse_string(ics.constData()), &icalcomponent_free};
}

icalcomponent *firstTodo(icalcomponent *root)
{
    if (!root)
        return nullptr;
    if (icalcomponent_isa(root) == ICAL_VTODO_COMPONENT)
        return root;
    return icalcomponent_get_first_component(root, ICAL_VTODO_COMPONENT);
}

// iCalendar text holds no control characters but tab and line feed. libical
// escapes a line feed, drops some others, writes a carriage return as it is
// (which ends the content line early) and can lose a tab where it folds a
// line; and it drops blanks around a value. So, both ways, line ends become
// line feeds, a tab a blank, the other control characters go, and so does
// white space at either end: a value reads back as it was written.
QString plainLines(QString value)
{
    value.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    value.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    value.replace(QLatin1Char('\t'), QLatin1Char(' '));
    value.removeIf([](QChar c) { return (c.unicode() < 0x20 && c != u'\n') || c.unicode() == 0x7f; });
    return value.trimmed();
}

QString text(const char *value)
{
    return value ? plainLines(QString::fromUtf8(value)) : QString();
}

QByteArray icalText(const QString &value)
{
    return plainLines(value).toUtf8();
}

// A time iCalendar can write: four-digit year and a real calendar date.
bool writable(icaltimetype t)
{
    return !icaltime_is_null_time(t) && icaltime_is_valid_time(t) && t.year >= 1 && t.year <= 9999 &&
        QDate(t.year, t.month, t.day).isValid();
}

QDateTime instant(icaltimetype t)
{
    if (!writable(t))
        return {};
    return QDateTime::fromSecsSinceEpoch(
        icaltime_as_timet_with_zone(t, t.zone ? t.zone : icaltimezone_get_utc_timezone()), Qt::UTC);
}

QDate date(icaltimetype t)
{
    if (!writable(t))
        return {};
    return QDate(t.year, t.month, t.day);
}

icaltimetype utc(const QDateTime &at)
{
    return icaltime_from_timet_with_zone(at.toSecsSinceEpoch(), 0, icaltimezone_get_utc_timezone());
}

icaltimetype dateOnly(const QDate &d)
{
    icaltimetype t = icaltime_null_date();
    t.year = d.year();
    t.month = d.month();
    t.day = d.day();
    return t;
}

std::optional<int> extension(icalcomponent *todo, const char *name, int low, int high)
{
    for (icalproperty *p = icalcomponent_get_first_property(todo, ICAL_X_PROPERTY); p;
         p = icalcomponent_get_next_property(todo, ICAL_X_PROPERTY)) {
        if (qstrcmp(icalproperty_get_x_name(p), name) != 0)
            continue;
        bool ok = false;
        const qlonglong value = QByteArray(icalproperty_get_x(p)).trimmed().toLongLong(&ok);
        if (ok && value >= low && value <= high)
            return int(value);
        return std::nullopt;
    }
    return std::nullopt;
}

void removeAll(icalcomponent *todo, icalproperty_kind kind)
{
    while (icalproperty *p = icalcomponent_get_first_property(todo, kind)) {
        icalcomponent_remove_property(todo, p);
        icalproperty_free(p);
    }
}

void removeExtension(icalcomponent *todo, const char *name)
{
    QList<icalproperty *> ours;
    for (icalproperty *p = icalcomponent_get_first_property(todo, ICAL_X_PROPERTY); p;
         p = icalcomponent_get_next_property(todo, ICAL_X_PROPERTY))
        if (qstrcmp(icalproperty_get_x_name(p), name) == 0)
            ours << p;
    for (icalproperty *p : ours) {
        icalcomponent_remove_property(todo, p);
        icalproperty_free(p);
    }
}

void setExtension(icalcomponent *todo, const char *name, std::optional<int> value)
{
    removeExtension(todo, name);
    if (!value)
        return;
    icalproperty *p = icalproperty_new_x(QByteArray::number(*value).constData());
    icalproperty_set_x_name(p, name);
    icalcomponent_add_property(todo, p);
}

void replace(icalcomponent *todo, icalproperty_kind kind, icalproperty *value)
{
    removeAll(todo, kind);
    if (value)
        icalcomponent_add_property(todo, value);
}

} // namespace

std::optional<TodoFields> read(const QByteArray &ics)
{
    const Component root = parse(ics);
    icalcomponent *todo = firstTodo(root.get());
    if (!todo)
        return std::nullopt;
    TodoFields f;
    f.uid = text(icalcomponent_get_uid(todo));
    if (f.uid.isEmpty())
        return std::nullopt;
    f.title = text(icalcomponent_get_summary(todo));
    f.notes = text(icalcomponent_get_description(todo));
    f.day = date(icalcomponent_get_due(todo));
    if (!f.day.isValid())
        f.day = date(icalcomponent_get_dtstart(todo));
    if (!f.day.isValid())
        if (const auto day = extension(todo, dayName, 10101, 99991231))
            f.day = QDate(*day / 10000, *day / 100 % 100, *day % 100);
    if (icalproperty *p = icalcomponent_get_first_property(todo, ICAL_PRIORITY_PROPERTY)) {
        const int priority = icalproperty_get_priority(p);
        f.urgent = priority >= 1 && priority <= 4;
    }
    const icalproperty_status status = icalcomponent_get_status(todo);
    f.cancelled = status == ICAL_STATUS_CANCELLED;
    if (icalproperty *p = icalcomponent_get_first_property(todo, ICAL_COMPLETED_PROPERTY)) {
        const QDateTime at = instant(icalproperty_get_completed(p));
        if (at.isValid())
            f.completedAt = at;
    }
    int percent = 0;
    if (icalproperty *p = icalcomponent_get_first_property(todo, ICAL_PERCENTCOMPLETE_PROPERTY))
        percent = icalproperty_get_percentcomplete(p);
    f.completed = status == ICAL_STATUS_COMPLETED || (!f.cancelled && (f.completedAt || percent >= 100));
    if (icalproperty *p = icalcomponent_get_first_property(todo, ICAL_LASTMODIFIED_PROPERTY)) {
        const QDateTime at = instant(icalproperty_get_lastmodified(p));
        if (at.isValid())
            f.lastModified = at;
    }
    f.plannedMinutes = extension(todo, plannedName, 1, maxPlannedMinutes);
    f.order = extension(todo, orderName, 0, std::numeric_limits<int>::max());
    f.focusedSeconds = extension(todo, focusedName, 0, std::numeric_limits<int>::max()).value_or(0);
    f.discardedSeconds = extension(todo, discardedName, 0, std::numeric_limits<int>::max()).value_or(0);
    return f;
}

QByteArray write(const TodoFields &f, const QDateTime &now, const QByteArray &previous)
{
    Component root = parse(previous);
    icalcomponent *todo = firstTodo(root.get());
    if (todo && icalcomponent_isa(root.get()) != ICAL_VCALENDAR_COMPONENT) {
        // A bare VTODO, or one inside something that is not a calendar (which
        // would write out as nothing): put it in a calendar of its own.
        Component calendar(icalcomponent_new(ICAL_VCALENDAR_COMPONENT), &icalcomponent_free);
        icalcomponent_add_property(calendar.get(), icalproperty_new_version("2.0"));
        icalcomponent_add_property(calendar.get(), icalproperty_new_prodid("-//Tarnwell//Tarnwell//EN"));
        if (todo == root.get()) {
            icalcomponent_add_component(calendar.get(), root.release());
        } else {
            icalcomponent_remove_component(icalcomponent_get_parent(todo), todo);
            icalcomponent_add_component(calendar.get(), todo);
        }
        root = std::move(calendar);
    }
    if (!todo) {
        root.reset(icalcomponent_new(ICAL_VCALENDAR_COMPONENT));
        icalcomponent_add_property(root.get(), icalproperty_new_version("2.0"));
        icalcomponent_add_property(root.get(), icalproperty_new_prodid("-//Tarnwell//Tarnwell//EN"));
        todo = icalcomponent_new(ICAL_VTODO_COMPONENT);
        icalcomponent_add_component(root.get(), todo);
    }

    replace(todo, ICAL_UID_PROPERTY, icalproperty_new_uid(icalText(f.uid).constData()));
    replace(todo, ICAL_DTSTAMP_PROPERTY, icalproperty_new_dtstamp(utc(now)));
    replace(todo, ICAL_LASTMODIFIED_PROPERTY, icalproperty_new_lastmodified(utc(f.lastModified.value_or(now))));
    replace(todo, ICAL_SUMMARY_PROPERTY, icalproperty_new_summary(icalText(f.title).constData()));
    replace(todo, ICAL_DESCRIPTION_PROPERTY,
            f.notes.isEmpty() ? nullptr : icalproperty_new_description(icalText(f.notes).constData()));

    // The day goes where the to-do keeps its date: its due date when it has
    // only that, else its start (and a due date moves along with it). Another
    // client's to-do without a date keeps none, so that other clients do not
    // show it as started: the day it is planned for travels as an X- property.
    const bool hasStart = icalcomponent_get_first_property(todo, ICAL_DTSTART_PROPERTY);
    const bool hasDue = icalcomponent_get_first_property(todo, ICAL_DUE_PROPERTY);
    const bool undatedElsewhere = !previous.isEmpty() && !hasStart && !hasDue;
    if (!f.day.isValid()) {
        removeAll(todo, ICAL_DTSTART_PROPERTY);
        removeAll(todo, ICAL_DUE_PROPERTY);
        removeExtension(todo, dayName);
    } else if (undatedElsewhere) {
        setExtension(todo, dayName, f.day.year() * 10000 + f.day.month() * 100 + f.day.day());
    } else {
        if (hasStart || !hasDue)
            replace(todo, ICAL_DTSTART_PROPERTY, icalproperty_new_dtstart(dateOnly(f.day)));
        if (hasDue)
            replace(todo, ICAL_DUE_PROPERTY, icalproperty_new_due(dateOnly(f.day)));
        removeExtension(todo, dayName);
    }
    removeAll(todo, ICAL_DURATION_PROPERTY); // DTSTART with DUE and DURATION together is invalid

    // Urgent is a high priority; another client's medium or low one is kept.
    int priority = 0;
    if (icalproperty *p = icalcomponent_get_first_property(todo, ICAL_PRIORITY_PROPERTY))
        priority = icalproperty_get_priority(p);
    const bool high = priority >= 1 && priority <= 4;
    if (f.urgent && !high)
        replace(todo, ICAL_PRIORITY_PROPERTY, icalproperty_new_priority(1));
    else if (!f.urgent && high)
        removeAll(todo, ICAL_PRIORITY_PROPERTY);

    const icalproperty_status before = icalcomponent_get_status(todo);
    if (f.completed) {
        icalcomponent_set_status(todo, ICAL_STATUS_COMPLETED);
        replace(todo, ICAL_COMPLETED_PROPERTY, icalproperty_new_completed(utc(f.completedAt.value_or(now))));
        replace(todo, ICAL_PERCENTCOMPLETE_PROPERTY, icalproperty_new_percentcomplete(100));
    } else {
        removeAll(todo, ICAL_COMPLETED_PROPERTY);
        if (icalproperty *p = icalcomponent_get_first_property(todo, ICAL_PERCENTCOMPLETE_PROPERTY);
            p && icalproperty_get_percentcomplete(p) >= 100)
            removeAll(todo, ICAL_PERCENTCOMPLETE_PROPERTY);
        if (f.cancelled)
            icalcomponent_set_status(todo, ICAL_STATUS_CANCELLED);
        else if (before != ICAL_STATUS_INPROCESS)
            icalcomponent_set_status(todo, ICAL_STATUS_NEEDSACTION);
    }

    setExtension(todo, plannedName, f.plannedMinutes);
    setExtension(todo, orderName, f.order);
    setExtension(todo, focusedName, f.focusedSeconds > 0 ? std::optional<int>(f.focusedSeconds) : std::nullopt);
    setExtension(todo, discardedName, f.discardedSeconds > 0 ? std::optional<int>(f.discardedSeconds) : std::nullopt);

    char *out = icalcomponent_as_ical_string_r(root.get());
    QByteArray bytes(out);
    icalmemory_free_buffer(out);
    return bytes;
}

} // namespace tarnwell::VTodoMapping
