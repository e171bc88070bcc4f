#include "TaskExchange.h"

#include "persistence/Day.h"
#include "persistence/DayRepository.h"
#include "persistence/RepositoryError.h"
#include "persistence/Routine.h"
#include "persistence/RoutineItem.h"
#include "persistence/RoutineRepository.h"
#include "persistence/StoreContext.h"
#include "persistence/Task.h"
#include "persistence/TaskRepository.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <limits>

namespace tarnwell::TaskExchange {

namespace {

QString isoInstant(const QDateTime &instant)
{
    return instant.toUTC().toString(Qt::ISODateWithMs);
}

void putDate(QJsonObject &o, const char *key, const std::optional<QDateTime> &value)
{
    if (value && value->isValid())
        o.insert(QLatin1String(key), isoInstant(*value));
}

template<typename T>
void putOptional(QJsonObject &o, const char *key, const std::optional<T> &value)
{
    if (value)
        o.insert(QLatin1String(key), *value);
}

QList<Task *> orderedTasks(const Day *day)
{
    QList<Task *> tasks = day->tasks();
    std::stable_sort(tasks.begin(), tasks.end(), [](const Task *a, const Task *b) {
        // Completed tasks keep old indexes, so ties happen; the id settles them
        // so that the same store always exports the same file.
        if (a->orderIndex() != b->orderIndex())
            return a->orderIndex() < b->orderIndex();
        if (a->createdAt() != b->createdAt())
            return a->createdAt() < b->createdAt();
        return a->id().toString() < b->id().toString();
    });
    return tasks;
}

QJsonObject taskJson(const Task &t)
{
    QJsonObject o;
    o.insert(QStringLiteral("id"), t.id().toString(QUuid::WithoutBraces));
    o.insert(QStringLiteral("title"), t.title());
    putOptional(o, "notes", t.notes());
    putOptional(o, "durationMinutes", t.durationMinutes());
    o.insert(QStringLiteral("urgent"), t.urgent());
    o.insert(QStringLiteral("orderIndex"), t.orderIndex());
    o.insert(QStringLiteral("completed"), t.completed());
    putDate(o, "completedAt", t.completedAt());
    o.insert(QStringLiteral("archived"), t.archived());
    putOptional(o, "actualSecondsFocused", t.actualSecondsFocused());
    putDate(o, "activeStartedAt", t.activeStartedAt());
    o.insert(QStringLiteral("actualEditedManually"), t.actualEditedManually());
    putOptional(o, "awaySecondsDiscarded", t.awaySecondsDiscarded());
    putDate(o, "dueDate", t.dueDate());
    putDate(o, "rolledFromDate", t.rolledFromDate());
    if (const auto item = t.routineItemID())
        o.insert(QStringLiteral("routineItemID"), item->toString(QUuid::WithoutBraces));
    o.insert(QStringLiteral("createdAt"), isoInstant(t.createdAt()));
    o.insert(QStringLiteral("updatedAt"), isoInstant(t.updatedAt()));
    return o;
}

QString csvField(const QString &value)
{
    if (!value.contains(u',') && !value.contains(u'"') && !value.contains(u'\n') && !value.contains(u'\r'))
        return value;
    QString quoted = value;
    quoted.replace(QStringLiteral("\""), QStringLiteral("\"\""));
    return u'"' + quoted + u'"';
}

// Reads the fields of one record, naming its line and field in errors.
class RecordReader
{
public:
    RecordReader(const QByteArray &raw, const QJsonObject &object, QString path, int line)
        : m_raw(raw)
        , m_object(object)
        , m_path(std::move(path))
        , m_line(line)
    {
    }

    [[noreturn]] void fail(const QString &field, const QString &reason) const
    {
        //: Import refused; %1 is the line of the file, %2 the field, %3 what is wrong with it
        //% "Line %1, field “%2”: %3"
        throw ImportError(qtTrId("error.import.field").arg(m_line).arg(m_path + u'.' + field, reason));
    }
    [[noreturn]] void invalid(const QString &field) const
    {
        //: Import refused: a field is missing or holds the wrong kind of value
        //% "missing or not a valid value"
        fail(field, qtTrId("error.import.invalidValue"));
    }

    QJsonValue raw(const char *key) const { return m_object.value(QLatin1String(key)); }
    bool has(const char *key) const
    {
        const QJsonValue v = raw(key);
        return !v.isUndefined() && !v.isNull();
    }

    QUuid uuid(const char *key) const
    {
        const QJsonValue v = raw(key);
        const QUuid id = v.isString() ? QUuid::fromString(v.toString()) : QUuid();
        if (id.isNull() || v.toString().size() > 38)
            invalid(QLatin1String(key));
        return id;
    }
    std::optional<QUuid> optUuid(const char *key) const
    {
        return has(key) ? std::optional<QUuid>(uuid(key)) : std::nullopt;
    }
    QString string(const char *key) const
    {
        const QJsonValue v = raw(key);
        if (!v.isString())
            invalid(QLatin1String(key));
        return v.toString();
    }
    std::optional<QString> optString(const char *key) const
    {
        return has(key) ? std::optional<QString>(string(key)) : std::nullopt;
    }
    qint32 int32(const char *key, qint64 min = std::numeric_limits<qint32>::min(),
                 qint64 max = std::numeric_limits<qint32>::max()) const
    {
        const QJsonValue v = raw(key);
        const double d = v.toDouble(std::numeric_limits<double>::quiet_NaN());
        // Range first: converting a number past any integer (1e300, NaN) is undefined.
        if (!v.isDouble() || !(d >= double(min) && d <= double(max)) || d != double(qint64(d)))
            invalid(QLatin1String(key));
        return qint32(qint64(d));
    }
    std::optional<qint32> optInt32(const char *key, qint64 min = std::numeric_limits<qint32>::min(),
                                   qint64 max = std::numeric_limits<qint32>::max()) const
    {
        return has(key) ? std::optional<qint32>(int32(key, min, max)) : std::nullopt;
    }
    bool boolean(const char *key) const
    {
        const QJsonValue v = raw(key);
        if (v.isUndefined())
            return false;
        if (!v.isBool())
            invalid(QLatin1String(key));
        return v.toBool();
    }
    QDateTime instant(const char *key) const
    {
        const QJsonValue v = raw(key);
        const QDateTime t = v.isString() ? QDateTime::fromString(v.toString(), Qt::ISODateWithMs) : QDateTime();
        if (!t.isValid())
            invalid(QLatin1String(key));
        return t.toUTC();
    }
    std::optional<QDateTime> optInstant(const char *key) const
    {
        return has(key) ? std::optional<QDateTime>(instant(key)) : std::nullopt;
    }
    QJsonArray array(const char *key) const
    {
        const QJsonValue v = raw(key);
        if (v.isUndefined())
            return {};
        if (!v.isArray())
            invalid(QLatin1String(key));
        return v.toArray();
    }

    // The reader of a nested record: its line is where its id stands.
    RecordReader child(const QJsonValue &value, const QString &path) const
    {
        if (!value.isObject())
            fail(path.mid(m_path.size() + 1), qtTrId("error.import.invalidValue"));
        const QJsonObject o = value.toObject();
        int line = m_line;
        const QJsonValue id = o.value(QStringLiteral("id"));
        if (id.isString() && !id.toString().isEmpty()) {
            const qsizetype at = m_raw.indexOf(QByteArray('"' + id.toString().toUtf8() + '"'));
            if (at >= 0)
                line = int(m_raw.left(at).count('\n')) + 1;
        }
        return RecordReader(m_raw, o, path, line);
    }

private:
    const QByteArray &m_raw;
    QJsonObject m_object;
    QString m_path;
    int m_line;
};

TaskRecord readTask(const RecordReader &r)
{
    TaskRecord t;
    t.id = r.uuid("id");
    t.title = r.string("title");
    try {
        t.title = TaskRepository::validatedTitle(t.title);
    } catch (const RepositoryError &error) {
        r.fail(QStringLiteral("title"), error.localizedDescription());
    }
    t.notes = r.optString("notes");
    t.durationMinutes = r.optInt32("durationMinutes", 1, 9999);
    t.urgent = r.boolean("urgent");
    t.orderIndex = r.int32("orderIndex");
    t.completed = r.boolean("completed");
    t.completedAt = r.optInstant("completedAt");
    t.archived = r.boolean("archived");
    t.actualSecondsFocused = r.optInt32("actualSecondsFocused");
    t.activeStartedAt = r.optInstant("activeStartedAt");
    t.actualEditedManually = r.boolean("actualEditedManually");
    t.awaySecondsDiscarded = r.optInt32("awaySecondsDiscarded");
    t.dueDate = r.optInstant("dueDate");
    t.rolledFromDate = r.optInstant("rolledFromDate");
    t.routineItemID = r.optUuid("routineItemID");
    t.createdAt = r.instant("createdAt");
    t.updatedAt = r.has("updatedAt") ? r.instant("updatedAt") : t.createdAt;
    return t;
}

} // namespace

QList<Day *> daysIn(DayRepository &days, const Range &range)
{
    const Calendar &calendar = days.calendar();
    const QDateTime start = calendar.startOfDay(range.from.value_or(QDate(1900, 1, 1)));
    const QDateTime end = calendar.startOfDay(range.to.value_or(QDate(9000, 1, 1)));
    return days.days(start, end);
}

QByteArray exportJson(StoreContext &context, DayRepository &days, const Range &range, const QDateTime &now)
{
    QJsonArray dayList;
    for (const Day *day : daysIn(days, range)) {
        QJsonObject d;
        d.insert(QStringLiteral("id"), day->id().toString(QUuid::WithoutBraces));
        d.insert(QStringLiteral("date"), days.calendar().date(day->date()).toString(Qt::ISODate));
        putDate(d, "createdAt", day->createdAt());
        QJsonArray tasks;
        for (const Task *t : orderedTasks(day))
            tasks.append(taskJson(*t));
        d.insert(QStringLiteral("tasks"), tasks);
        dayList.append(d);
    }
    QJsonArray routineList;
    RoutineRepository routines(context, [now] { return now; });
    for (const Routine *routine : routines.routines()) {
        QJsonObject r;
        r.insert(QStringLiteral("id"), routine->id().toString(QUuid::WithoutBraces));
        r.insert(QStringLiteral("name"), routine->name());
        r.insert(QStringLiteral("orderIndex"), routine->orderIndex());
        r.insert(QStringLiteral("repeatWeekdays"), routine->repeatWeekdays());
        putDate(r, "lastAppliedDate", routine->lastAppliedDate());
        putDate(r, "createdAt", routine->createdAt());
        putDate(r, "updatedAt", routine->updatedAt());
        QJsonArray items;
        for (const RoutineItem *item : RoutineRepository::items(routine)) {
            QJsonObject i;
            i.insert(QStringLiteral("id"), item->id().toString(QUuid::WithoutBraces));
            i.insert(QStringLiteral("title"), item->title());
            putOptional(i, "notes", item->notes());
            putOptional(i, "durationMinutes", item->durationMinutes());
            i.insert(QStringLiteral("orderIndex"), item->orderIndex());
            items.append(i);
        }
        r.insert(QStringLiteral("items"), items);
        routineList.append(r);
    }
    QJsonObject root;
    root.insert(QStringLiteral("format"), QLatin1String(Constants::format));
    root.insert(QStringLiteral("version"), Constants::version);
    root.insert(QStringLiteral("exportedAt"), isoInstant(now));
    root.insert(QStringLiteral("days"), dayList);
    root.insert(QStringLiteral("routines"), routineList);
    return QJsonDocument(root).toJson(QJsonDocument::Indented);
}

QByteArray exportCsv(DayRepository &days, const Range &range)
{
    QString out =
        QStringLiteral("date,title,planned_minutes,actual_minutes,difference_minutes,urgent,completed_at\r\n");
    for (const Day *day : daysIn(days, range)) {
        const QString date = days.calendar().date(day->date()).toString(Qt::ISODate);
        for (const Task *t : orderedTasks(day)) {
            if (!t->completed())
                continue;
            // Whole minutes, rounded half up, of the measured seconds.
            const qint64 actual = (qint64(t->actualSecondsFocused().value_or(0)) + 30) / 60;
            const auto planned = t->durationMinutes();
            QStringList row{date,
                            csvField(t->title()),
                            planned ? QString::number(*planned) : QString(),
                            QString::number(actual),
                            planned ? QString::number(actual - *planned) : QString(),
                            t->urgent() ? QStringLiteral("1") : QStringLiteral("0"),
                            t->completedAt() ? isoInstant(*t->completedAt()) : QString()};
            out += row.join(u',') + QStringLiteral("\r\n");
        }
    }
    return out.toUtf8();
}

Document read(const QByteArray &json)
{
    QJsonParseError parseError;
    const QJsonDocument doc = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        const int line = int(json.left(parseError.offset).count('\n')) + 1;
        //: Import refused: the file is not JSON; %1 is the line, %2 the parser's message
        //% "Line %1: this is not valid JSON (%2)."
        throw ImportError(qtTrId("error.import.notJson").arg(line).arg(parseError.errorString()));
    }
    const QJsonObject root = doc.object();
    if (!doc.isObject() || root.value(QStringLiteral("format")).toString() != QLatin1String(Constants::format) ||
        root.value(QStringLiteral("version")).toInt(-1) != Constants::version)
        //: Import refused: the JSON is not one of our exports; %1 is the expected format name, %2 the version
        //% "This is not a Tarnwell export (expected “format”: “%1” and “version”: %2)."
        throw ImportError(
            qtTrId("error.import.notExport").arg(QLatin1String(Constants::format)).arg(Constants::version));

    const RecordReader top(json, root, QString(), 1);
    Document document;
    QSet<QUuid> ids;
    QSet<QDate> dates;
    const auto unique = [&ids](const RecordReader &r, const QUuid &id) {
        if (ids.contains(id))
            //: Import refused: an id appears twice in the file
            //% "this id appears twice"
            r.fail(QStringLiteral("id"), qtTrId("error.import.duplicateId"));
        ids.insert(id);
    };
    const QJsonArray days = top.array("days");
    for (qsizetype i = 0; i < days.size(); ++i) {
        const RecordReader r = top.child(days.at(i), QStringLiteral("days[%1]").arg(i));
        DayRecord day;
        day.id = r.uuid("id");
        unique(r, day.id);
        day.date = QDate::fromString(r.string("date"), Qt::ISODate);
        if (!day.date.isValid())
            r.invalid(QStringLiteral("date"));
        if (dates.contains(day.date))
            //: Import refused: two days of the file have the same date
            //% "this date appears twice"
            r.fail(QStringLiteral("date"), qtTrId("error.import.duplicateDate"));
        dates.insert(day.date);
        day.createdAt = r.optInstant("createdAt");
        const QJsonArray tasks = r.array("tasks");
        for (qsizetype j = 0; j < tasks.size(); ++j) {
            const RecordReader tr = r.child(tasks.at(j), QStringLiteral("days[%1].tasks[%2]").arg(i).arg(j));
            TaskRecord task = readTask(tr);
            unique(tr, task.id);
            day.tasks.append(std::move(task));
        }
        document.days.append(std::move(day));
    }
    const QJsonArray routines = top.array("routines");
    for (qsizetype i = 0; i < routines.size(); ++i) {
        const RecordReader r = top.child(routines.at(i), QStringLiteral("routines[%1]").arg(i));
        RoutineRecord routine;
        routine.id = r.uuid("id");
        unique(r, routine.id);
        routine.name = r.string("name");
        routine.orderIndex = r.int32("orderIndex");
        routine.repeatWeekdays = qint16(r.int32("repeatWeekdays", 0, 127));
        routine.lastAppliedDate = r.optInstant("lastAppliedDate");
        routine.createdAt = r.optInstant("createdAt");
        routine.updatedAt = r.optInstant("updatedAt");
        const QJsonArray items = r.array("items");
        for (qsizetype j = 0; j < items.size(); ++j) {
            const RecordReader ir = r.child(items.at(j), QStringLiteral("routines[%1].items[%2]").arg(i).arg(j));
            RoutineItemRecord item;
            item.id = ir.uuid("id");
            unique(ir, item.id);
            item.title = ir.string("title");
            item.notes = ir.optString("notes");
            item.durationMinutes = ir.optInt32("durationMinutes", 1, 9999);
            item.orderIndex = ir.int32("orderIndex");
            routine.items.append(std::move(item));
        }
        document.routines.append(std::move(routine));
    }
    return document;
}

ImportSummary apply(const Document &document, StoreContext &context, DayRepository &days)
{
    ImportSummary summary;
    QList<ManagedObject *> added;
    try {
        for (const DayRecord &record : document.days) {
            const QDateTime start = days.calendar().startOfDay(record.date);
            Day *day = days.day(start);
            if (!day) {
                day = new Day;
                day->assignId(record.id);
                day->setDate(start);
                day->setCreatedAt(record.createdAt);
                context.insertObject(day);
                added.append(day);
                ++summary.days;
            }
            for (const TaskRecord &t : record.tasks) {
                if (context.existingObject<Task>(t.id)) {
                    ++summary.skipped;
                    continue;
                }
                auto *task = new Task;
                task->assignId(t.id);
                task->setTitle(t.title);
                task->setNotes(t.notes);
                task->setDurationMinutes(t.durationMinutes);
                task->setUrgent(t.urgent);
                task->setOrderIndex(t.orderIndex);
                task->setCompleted(t.completed);
                task->setCompletedAt(t.completedAt);
                task->setArchived(t.archived);
                task->setActualSecondsFocused(t.actualSecondsFocused);
                task->setActiveStartedAt(t.activeStartedAt);
                task->setActualEditedManually(t.actualEditedManually);
                task->setAwaySecondsDiscarded(t.awaySecondsDiscarded);
                task->setDueDate(t.dueDate);
                task->setRolledFromDate(t.rolledFromDate);
                task->setRoutineItemID(t.routineItemID);
                task->setCreatedAt(t.createdAt);
                task->setUpdatedAt(t.updatedAt);
                task->setDay(day);
                context.insertObject(task);
                added.append(task);
                ++summary.tasks;
            }
        }
        for (const RoutineRecord &r : document.routines) {
            if (context.existingObject<Routine>(r.id)) {
                ++summary.skipped;
                continue;
            }
            auto *routine = new Routine;
            routine->assignId(r.id);
            routine->setName(r.name);
            routine->setOrderIndex(r.orderIndex);
            routine->setRepeatWeekdays(r.repeatWeekdays);
            routine->setLastAppliedDate(r.lastAppliedDate);
            routine->setCreatedAt(r.createdAt);
            routine->setUpdatedAt(r.updatedAt);
            context.insertObject(routine);
            added.append(routine);
            for (const RoutineItemRecord &i : r.items) {
                if (context.existingObject<RoutineItem>(i.id))
                    continue;
                auto *item = new RoutineItem;
                item->assignId(i.id);
                item->setTitle(i.title);
                item->setNotes(i.notes);
                item->setDurationMinutes(i.durationMinutes);
                item->setOrderIndex(i.orderIndex);
                item->setRoutine(routine);
                context.insertObject(item);
                added.append(item);
            }
            ++summary.routines;
        }
        context.save();
    } catch (...) {
        // Nothing of a refused import stays behind, not even in memory; the
        // newest first. (An index loop: clang 14, which builds the fuzzers and
        // runs clang-tidy, cannot take GCC 12's ranges over a QList.)
        for (qsizetype i = added.size() - 1; i >= 0; --i)
            context.deleteObject(added.at(i));
        throw;
    }
    return summary;
}

} // namespace tarnwell::TaskExchange
