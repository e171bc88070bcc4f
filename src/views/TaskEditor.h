#pragma once

#include <QDateTime>
#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace tarnwell {

class ActiveTaskService;
class RoutineService;
class Task;

// The inline task editor of the popover's rows: title, notes, planned time
// (typed the way quick add reads it: "45", "1h 30m", "1.5h"), due date and
// the Repeat row.
class TaskEditor : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(QStringList repeatOptions READ repeatOptions NOTIFY textsChanged)
public:
    // The Repeat row's choices, in this order.
    enum RepeatChoice { never, everyDay, weekdays, custom };
    Q_ENUM(RepeatChoice)

    TaskEditor(ActiveTaskService &activeTasks, RoutineService &routines, QObject *parent = nullptr);

    // Saves every field; returns the text to show in place, empty when saved.
    // A duration that cannot be read changes nothing.
    Q_INVOKABLE QString save(const QString &id, const QString &title, const QString &notes, const QString &duration,
                             const QDateTime &dueDate);
    QString save(Task *task, const QString &title, const QString &notes, std::optional<qint64> minutes,
                 const QDateTime &dueDate);
    // The planned time as the field shows it ("1h 30m"), empty when unplanned.
    Q_INVOKABLE QString durationText(int minutes) const;

    QStringList repeatOptions() const;
    Q_INVOKABLE int repeatChoice(const QString &id) const;
    // Never, every day or weekdays for the routine the task came from. A task
    // of its own becomes a one-task routine first, so it can repeat too.
    // Returns the text to show in place, empty when done.
    Q_INVOKABLE QString setRepeat(const QString &id, int choice);

    void retranslate() { Q_EMIT textsChanged(); }

Q_SIGNALS:
    void textsChanged();

private:
    Task *task(const QString &id) const;

    ActiveTaskService &m_activeTasks;
    RoutineService &m_routines;
};

} // namespace tarnwell
