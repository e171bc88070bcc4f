#pragma once

#include "kit/Calendar.h"

#include <QDate>
#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>
#include <QList>

namespace tarnwell {

class Task;

// The JSON that scripts read from `tarnwell status --json`, `tarnwell list
// --json` and the bus's Status and Tasks methods. Built the same way from the
// agent's queue and from the store read directly.
namespace TaskSnapshot {

// One task with its focus figures at `now`.
QJsonObject task(const Task &task, const QDateTime &now);
// {"day", "active": task or null (with "running", "focusedSeconds",
// "remainingSeconds", "overdue"), "queue": [open tasks], "plannedMinutes"}.
QJsonObject status(const QList<Task *> &queue, const QDate &day, const QDateTime &now);
// Every task of a day: open ones in queue order, then completed and archived.
QJsonArray dayTasks(const QList<Task *> &tasks, const QDateTime &now);

} // namespace TaskSnapshot
} // namespace tarnwell
