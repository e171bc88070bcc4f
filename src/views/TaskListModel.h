#pragma once

#include <QAbstractListModel>
#include <QDateTime>
#include <QList>
#include <QUuid>
#include <QtQml/qqmlregistration.h>

namespace tarnwell {

class Task;

// One day's tasks for the popover's list: the open tasks in queue order, then
// (when asked for) the completed ones. Changes arrive as single rows removed,
// moved, inserted or changed, so that a completed task can be seen moving to
// the completed part; another day's tasks reset the model.
class TaskListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(int count READ rowCount NOTIFY countChanged)
    Q_PROPERTY(int openCount READ openCount NOTIFY countChanged)
public:
    enum Role {
        IdRole = Qt::UserRole + 1,
        TitleRole,
        NotesRole,
        DurationMinutesRole,
        UrgentRole,
        CompletedRole,
        IsTaskInHandRole,
        RolledOverRole,
        FocusedSecondsRole,
        DueDateRole,
    };
    Q_ENUM(Role)

    explicit TaskListModel(QObject *parent = nullptr);

    // `open` in queue order and `completed` in the order to show them;
    // `taskInHand` is marked (none on another day); focused seconds are
    // taken at `now`.
    void setTasks(const QList<Task *> &open, const QList<Task *> &completed, const Task *taskInHand,
                  const QDateTime &now);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    int openCount() const { return m_openCount; }
    Task *taskAt(int row) const;
    int rowOf(const QUuid &id) const;
    // The open tasks' ids in their shown order.
    QList<QUuid> openIds() const;

Q_SIGNALS:
    void countChanged();

private:
    struct Row
    {
        Task *task = nullptr;
        QUuid id;
        QString title;
        QString notes;
        int durationMinutes = -1;
        bool urgent = false;
        bool completed = false;
        bool isTaskInHand = false;
        bool rolledOver = false;
        qint64 focusedSeconds = 0;
        QDateTime dueDate;

        bool operator==(const Row &) const = default;
    };
    static Row rowFor(Task *task, const Task *taskInHand, const QDateTime &now);
    void reconcile(const QList<Row> &rows);

    QList<Row> m_rows;
    int m_openCount = 0;
};

} // namespace tarnwell
