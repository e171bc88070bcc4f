#pragma once

#include "kit/Calendar.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace tarnwell {

class StoreContext;
class Task;

// One task found by its title.
struct TaskHistoryHit
{
    QUuid id;
    QString title;
    QDate day;
    bool completed = false;
    qint64 focusedSeconds = 0;
    std::optional<qint32> plannedMinutes;
};

// Past days' tasks: finding them by any part of the title, and whether one
// may still be changed.
class TaskHistory
{
public:
    struct Limits
    {
        static constexpr int results = 50;
        // The title index works on runs of three characters; shorter text
        // is looked for by reading the titles, newest first.
        static constexpr int shortestIndexed = 3;
    };

    TaskHistory(StoreContext &context, Calendar calendar);

    // The newest tasks (by when they were made) whose title contains `text`,
    // ignoring case, newest day first. Reads saved rows: the popover saves
    // every change at once.
    QList<TaskHistoryHit> search(const QString &text, int limit = Limits::results) const;

    // A task of today or a later day may always be changed; one of an
    // earlier day only while editing the history is switched on.
    static bool editable(const Task &task, const QDateTime &today, bool editHistoryEnabled);

private:
    StoreContext &m_context;
    Calendar m_calendar;
};

} // namespace tarnwell
