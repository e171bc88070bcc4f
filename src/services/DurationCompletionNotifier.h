#pragma once

#include <QUuid>

#include <optional>

namespace tarnwell {

class Task;

// Receives the countdown's events; the notification service turns them into
// desktop notifications.
class DurationCompletionNotifier
{
public:
    virtual ~DurationCompletionNotifier() = default;
    // The task's planned time is used up.
    virtual void notifyDurationComplete(Task &task) = 0;
    // The task's planned time ends in `minutesLeft` minutes (the configured
    // warning span).
    virtual void notifyEndingSoon(Task &task, int minutesLeft) = 0;
    // Takes back the ending-soon warning shown for that task, if any.
    virtual void withdrawEndingSoon(const std::optional<QUuid> &taskID) = 0;
};

// Stands in where no notification service is wired: logs each event and
// does nothing else.
class LoggingDurationCompletionNotifier final : public DurationCompletionNotifier
{
public:
    void notifyDurationComplete(Task &task) override;
    void notifyEndingSoon(Task &task, int minutesLeft) override;
    void withdrawEndingSoon(const std::optional<QUuid> &taskID) override;
};

} // namespace tarnwell
