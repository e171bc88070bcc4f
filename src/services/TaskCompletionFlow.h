#pragma once

#include <QString>
#include <QUuid>

#include <optional>

namespace tarnwell {

class ActiveTaskService;
class SoundService;

// What the next-up screen shows after a completion.
struct NextUpModalContext
{
    QString completedTaskTitle;
    qint64 focusedSeconds = 0;
    std::optional<QString> nextTaskTitle;
    std::optional<qint32> nextTaskDurationMinutes;
    std::optional<QUuid> nextTaskID;

    friend bool operator==(const NextUpModalContext &, const NextUpModalContext &) = default;
};

// The popover, as far as completing a task needs it.
class CompletionPresenter
{
public:
    virtual ~CompletionPresenter() = default;
    virtual void presentNextUp(const NextUpModalContext &context) = 0;
    virtual void updatePresentation() = 0;
};

// The one road by which the task in hand is marked done: from the card, from
// a notification's done action and from the widget's done command.
namespace TaskCompletionFlow {

// Completes the task with this id with its focused seconds, brings the next
// task up (not running), plays the end chime, and, when `presentNextUp` is
// set, shows the next-up screen. Failures are logged; nothing is reported.
void complete(const QUuid &taskID, ActiveTaskService &activeTaskService, SoundService &soundService,
              CompletionPresenter &presenter, bool presentNextUp = true);

} // namespace TaskCompletionFlow
} // namespace tarnwell
