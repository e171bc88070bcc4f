#include "TaskSnapshot.h"

#include "persistence/Task.h"
#include "services/FocusTime.h"

#include <algorithm>

namespace tarnwell::TaskSnapshot {

QJsonObject task(const Task &task, const QDateTime &now)
{
    QJsonObject o;
    o.insert(QStringLiteral("id"), task.id().toString(QUuid::WithoutBraces));
    o.insert(QStringLiteral("title"), task.title());
    if (const auto minutes = task.durationMinutes())
        o.insert(QStringLiteral("durationMinutes"), *minutes);
    o.insert(QStringLiteral("urgent"), task.urgent());
    o.insert(QStringLiteral("completed"), task.completed());
    const qint64 focused = FocusTime::focusedSeconds(task, now);
    o.insert(QStringLiteral("focusedSeconds"), focused);
    o.insert(QStringLiteral("running"), FocusTime::isRunning(task));
    if (const auto minutes = task.durationMinutes(); minutes && !task.completed()) {
        const qint64 remaining = qint64(*minutes) * 60 - focused;
        o.insert(QStringLiteral("remainingSeconds"), remaining);
        o.insert(QStringLiteral("overdue"), remaining < 0);
    }
    return o;
}

QJsonObject status(const QList<Task *> &queue, const QDate &day, const QDateTime &now)
{
    QJsonObject o;
    o.insert(QStringLiteral("day"), day.toString(Qt::ISODate));
    o.insert(QStringLiteral("active"), queue.isEmpty() ? QJsonValue() : QJsonValue(task(*queue.first(), now)));
    QJsonArray list;
    qint64 planned = 0;
    for (const Task *t : queue) {
        list.append(task(*t, now));
        planned += t->durationMinutes().value_or(0);
    }
    o.insert(QStringLiteral("queue"), list);
    o.insert(QStringLiteral("plannedMinutes"), planned);
    return o;
}

QJsonArray dayTasks(const QList<Task *> &tasks, const QDateTime &now)
{
    QList<Task *> sorted = tasks;
    const auto rank = [](const Task *t) { return t->completed() || t->archived() ? 1 : 0; };
    std::stable_sort(sorted.begin(), sorted.end(), [&](const Task *a, const Task *b) {
        if (rank(a) != rank(b))
            return rank(a) < rank(b);
        return a->orderIndex() < b->orderIndex();
    });
    QJsonArray out;
    for (const Task *t : sorted) {
        QJsonObject o = task(*t, now);
        o.insert(QStringLiteral("archived"), t->archived());
        out.append(o);
    }
    return out;
}

} // namespace tarnwell::TaskSnapshot
