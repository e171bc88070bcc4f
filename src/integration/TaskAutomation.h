#pragma once

#include "AddTaskIntent.h"
#include "AutomationArguments.h"
#include "TaskExchange.h"
#include "kit/Calendar.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QObject>

#include <exception>
#include <functional>

namespace tarnwell {

class ActiveTaskService;
class CompletionPresenter;
class SoundService;

// Refusals of a driving request that are not argument or store errors.
class AutomationError : public std::exception
{
public:
    enum class Kind { noTaskInHand, taskNotFound };
    AutomationError(Kind kind, QString message)
        : m_kind(kind)
        , m_message(std::move(message))
    {
    }
    Kind kind() const { return m_kind; }
    const QString &message() const { return m_message; }
    const char *what() const noexcept override { return "automation refused"; }

private:
    Kind m_kind;
    QString m_message;
};

// What scripts may read and do in the running agent: add tasks, read the day,
// drive the task in hand, export and import. The bus interface
// org.tarnwell.Tarnwell1 is a thin skin over this. Errors are thrown:
// ArgumentError, RepositoryError, StoreError, ImportError, AutomationError.
class TaskAutomation : public QObject
{
    Q_OBJECT
public:
    // Writes an iCalendar file of the given days (the agent injects the
    // libical writer; none means the format is not offered).
    using CalendarWriter = std::function<QByteArray(const QList<class Day *> &days, const Calendar &calendar)>;

    TaskAutomation(ActiveTaskService &activeTasks, SoundService &sounds, CompletionPresenter &presenter,
                   Calendar calendar, CalendarWriter calendarWriter = {}, QObject *parent = nullptr);

    // The add-task intent; returns the stored title.
    QString addTask(const QString &title, qint64 durationMinutes, bool urgent);
    // One quick-add line; its day words place it on that day.
    QString addQuickTask(const QString &line);

    QJsonObject status() const;
    QJsonArray tasks(const QString &day) const;

    // Completes the task in hand (or the open task with this id) through the
    // completion flow, without the next-up screen; returns its title.
    QString complete(const QString &taskId);
    // The timer of the task in hand; each returns its title.
    QString start();
    QString pause();
    QString toggle();

    QByteArray exportData(const QString &format, const QString &from, const QString &to);
    TaskExchange::ImportSummary importData(const QByteArray &document);

    static QString noTaskInHandText();

    // The two ways of adding, shared with the command line's road without an
    // agent: checked arguments, the title rules, one save.
    static QString addChecked(AddTaskIntentRunner &runner, const QString &title, qint64 durationMinutes, bool urgent);
    static QString addQuickLine(DayRepository &days, TaskRepository &tasks, const Calendar &calendar,
                                const QDateTime &now, const QString &line);

Q_SIGNALS:
    // The day's queue, the task in hand or its timer changed.
    void changed();

private:
    class Task *taskInHand() const;

    ActiveTaskService &m_activeTasks;
    SoundService &m_sounds;
    CompletionPresenter &m_presenter;
    Calendar m_calendar;
    CalendarWriter m_calendarWriter;
    AddTaskIntentRunner m_runner;
};

} // namespace tarnwell
