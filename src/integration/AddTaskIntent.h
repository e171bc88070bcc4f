#pragma once

#include <QString>

#include <optional>

namespace tarnwell {

class DayRepository;
class TaskRepository;

// Does the work of the "add a task" system action: a task on today's day
// (made when missing), with the repository's title rules and queue order.
class AddTaskIntentRunner
{
public:
    struct Outcome
    {
        QString title; // as stored (trimmed)
        friend bool operator==(const Outcome &a, const Outcome &b) { return a.title == b.title; }
    };

    AddTaskIntentRunner(DayRepository &days, TaskRepository &tasks);

    // Throws RepositoryError (title rules) and StoreError (a failed save).
    Outcome run(const QString &title, std::optional<int> durationMinutes, bool urgent);

private:
    DayRepository &m_days;
    TaskRepository &m_tasks;
};

// The "add a task to Tarnwell" action as other programs see it: three
// parameters and a confirmation. Reached through org.tarnwell.Tarnwell1.AddTask
// and `tarnwell add`.
struct AddTaskIntent
{
    QString title;
    std::optional<int> durationMinutes; // none: unplanned
    bool urgent = false;

    // Runs the intent and returns the confirmation to show; the runner's
    // errors pass through unchanged.
    QString perform(AddTaskIntentRunner &runner) const;

    static QString titleText();
    static QString descriptionText();
    static QString shortTitleText();
    static QString titleParameterText();
    static QString durationParameterText();
    static QString urgentParameterText();
    static QString confirmation(const QString &storedTitle);
};

} // namespace tarnwell
