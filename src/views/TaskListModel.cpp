#include "TaskListModel.h"

#include "persistence/Task.h"
#include "services/FocusTime.h"

#include <QSet>

namespace tarnwell {

TaskListModel::TaskListModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

TaskListModel::Row TaskListModel::rowFor(Task *task, const Task *taskInHand, const QDateTime &now)
{
    Row row;
    row.task = task;
    row.id = task->id();
    row.title = task->title();
    row.notes = task->notes().value_or(QString());
    row.durationMinutes = task->durationMinutes().value_or(-1);
    row.urgent = task->urgent();
    row.completed = task->completed();
    row.isTaskInHand = task == taskInHand;
    row.rolledOver = task->rolledFromDate().has_value();
    row.focusedSeconds = FocusTime::focusedSeconds(*task, now);
    row.dueDate = task->dueDate().value_or(QDateTime());
    return row;
}

void TaskListModel::setTasks(const QList<Task *> &open, const QList<Task *> &completed, const Task *taskInHand,
                             const QDateTime &now)
{
    QList<Row> rows;
    rows.reserve(open.size() + completed.size());
    for (Task *task : open)
        rows.append(rowFor(task, taskInHand, now));
    for (Task *task : completed)
        rows.append(rowFor(task, taskInHand, now));

    const int openBefore = m_openCount;
    const qsizetype countBefore = m_rows.size();
    // Another day, or nothing in common: start afresh.
    bool shared = false;
    for (const Row &row : std::as_const(rows))
        shared = shared || rowOf(row.id) >= 0;
    if (!shared) {
        beginResetModel();
        m_rows = std::move(rows);
        m_openCount = int(open.size());
        endResetModel();
    } else {
        reconcile(rows);
        m_openCount = int(open.size());
    }
    if (m_rows.size() != countBefore || m_openCount != openBefore)
        Q_EMIT countChanged();
}

// Turns the shown rows into `rows` by removing, moving and inserting single
// rows, so that a view can show each change as it happens (a task that moves
// slides to its place) rather than being rebuilt.
void TaskListModel::reconcile(const QList<Row> &rows)
{
    QSet<QUuid> wanted;
    for (const Row &row : rows)
        wanted.insert(row.id);
    for (qsizetype i = m_rows.size() - 1; i >= 0; --i) {
        if (wanted.contains(m_rows[i].id))
            continue;
        beginRemoveRows({}, int(i), int(i));
        m_rows.removeAt(i);
        endRemoveRows();
    }
    for (qsizetype i = 0; i < rows.size(); ++i) {
        const int at = rowOf(rows[i].id);
        if (at < 0) {
            beginInsertRows({}, int(i), int(i));
            m_rows.insert(i, rows[i]);
            endInsertRows();
            continue;
        }
        if (at != i) {
            beginMoveRows({}, at, at, {}, int(i));
            m_rows.move(at, i);
            endMoveRows();
        }
        if (!(m_rows[i] == rows[i])) {
            m_rows[i] = rows[i];
            const QModelIndex changed = index(int(i));
            Q_EMIT dataChanged(changed, changed);
        }
    }
}

int TaskListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant TaskListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Row &row = m_rows.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case TitleRole:
        return row.title;
    case IdRole:
        return row.id.toString(QUuid::WithoutBraces);
    case NotesRole:
        return row.notes;
    case DurationMinutesRole:
        return row.durationMinutes;
    case UrgentRole:
        return row.urgent;
    case CompletedRole:
        return row.completed;
    case IsTaskInHandRole:
        return row.isTaskInHand;
    case RolledOverRole:
        return row.rolledOver;
    case FocusedSecondsRole:
        return row.focusedSeconds;
    case DueDateRole:
        return row.dueDate;
    default:
        return {};
    }
}

QHash<int, QByteArray> TaskListModel::roleNames() const
{
    return {
        {IdRole, "id"},
        {TitleRole, "title"},
        {NotesRole, "notes"},
        {DurationMinutesRole, "durationMinutes"},
        {UrgentRole, "urgent"},
        {CompletedRole, "completed"},
        {IsTaskInHandRole, "isTaskInHand"},
        {RolledOverRole, "rolledOver"},
        {FocusedSecondsRole, "focusedSeconds"},
        {DueDateRole, "dueDate"},
    };
}

Task *TaskListModel::taskAt(int row) const
{
    return row >= 0 && row < m_rows.size() ? m_rows.at(row).task : nullptr;
}

int TaskListModel::rowOf(const QUuid &id) const
{
    for (qsizetype i = 0; i < m_rows.size(); ++i)
        if (m_rows[i].id == id)
            return int(i);
    return -1;
}

QList<QUuid> TaskListModel::openIds() const
{
    QList<QUuid> ids;
    for (int i = 0; i < m_openCount; ++i)
        ids.append(m_rows.at(i).id);
    return ids;
}

} // namespace tarnwell
