#include "IcsWriter.h"

#include <libical/ical.h>

#include <memory>

namespace tarnwell::IcsWriter {

namespace {

icaltimetype utcTime(const QDateTime &instant)
{
    return icaltime_from_timet_with_zone(instant.toSecsSinceEpoch(), 0, icaltimezone_get_utc_timezone());
}

icaltimetype dateOnly(const QDate &date)
{
    icaltimetype t = icaltime_null_date();
    t.year = date.year();
    t.month = date.month();
    t.day = date.day();
    return t;
}

void addText(icalcomponent *todo, icalproperty *(*make)(const char *), const QString &text)
{
    icalcomponent_add_property(todo, make(text.toUtf8().constData()));
}

void addExtension(icalcomponent *todo, const char *name, qint64 value)
{
    icalproperty *p = icalproperty_new_x(QByteArray::number(value).constData());
    icalproperty_set_x_name(p, name);
    icalcomponent_add_property(todo, p);
}

} // namespace

QByteArray write(const QList<Todo> &todos, const QDateTime &now)
{
    std::unique_ptr<icalcomponent, decltype(&icalcomponent_free)> root(icalcomponent_new(ICAL_VCALENDAR_COMPONENT),
                                                                       &icalcomponent_free);
    icalcomponent_add_property(root.get(), icalproperty_new_version("2.0"));
    icalcomponent_add_property(root.get(), icalproperty_new_prodid("-//Tarnwell//Tarnwell//EN"));
    for (const Todo &task : todos) {
        icalcomponent *todo = icalcomponent_new(ICAL_VTODO_COMPONENT);
        addText(todo, icalproperty_new_uid, task.uid);
        icalcomponent_add_property(todo, icalproperty_new_dtstamp(utcTime(now)));
        icalcomponent_add_property(todo, icalproperty_new_dtstart(dateOnly(task.day)));
        addText(todo, icalproperty_new_summary, task.title);
        if (!task.notes.isEmpty())
            addText(todo, icalproperty_new_description, task.notes);
        if (task.createdAt.isValid())
            icalcomponent_add_property(todo, icalproperty_new_created(utcTime(task.createdAt)));
        if (task.updatedAt.isValid())
            icalcomponent_add_property(todo, icalproperty_new_lastmodified(utcTime(task.updatedAt)));
        if (task.urgent)
            icalcomponent_add_property(todo, icalproperty_new_priority(1));
        if (task.completed) {
            icalcomponent_add_property(todo, icalproperty_new_status(ICAL_STATUS_COMPLETED));
            if (task.completedAt)
                icalcomponent_add_property(todo, icalproperty_new_completed(utcTime(*task.completedAt)));
        } else if (task.archived) {
            icalcomponent_add_property(todo, icalproperty_new_status(ICAL_STATUS_CANCELLED));
        } else {
            icalcomponent_add_property(todo, icalproperty_new_status(ICAL_STATUS_NEEDSACTION));
        }
        if (task.plannedMinutes)
            addExtension(todo, "X-TARNWELL-PLANNED-MINUTES", *task.plannedMinutes);
        if (task.focusedSeconds)
            addExtension(todo, "X-TARNWELL-FOCUSED-SECONDS", *task.focusedSeconds);
        icalcomponent_add_component(root.get(), todo);
    }
    char *text = icalcomponent_as_ical_string_r(root.get());
    QByteArray out(text);
    icalmemory_free_buffer(text);
    return out;
}

} // namespace tarnwell::IcsWriter
