#include "DurationCompletionNotifier.h"

#include "kit/Logging.h"
#include "persistence/Task.h"

namespace tarnwell {

namespace {
QString idText(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces);
}
} // namespace

void LoggingDurationCompletionNotifier::notifyDurationComplete(Task &task)
{
    qCInfo(lcServices).noquote() << QStringLiteral("Duration complete for task %1").arg(idText(task.id()));
}

void LoggingDurationCompletionNotifier::notifyEndingSoon(Task &task, int minutesLeft)
{
    qCInfo(lcServices).noquote()
        << QStringLiteral("Task %1 ends in %2 minutes").arg(idText(task.id())).arg(minutesLeft);
}

void LoggingDurationCompletionNotifier::withdrawEndingSoon(const std::optional<QUuid> &taskID)
{
    qCInfo(lcServices).noquote() << QStringLiteral("Withdraw the ending-soon warning of task %1")
                                        .arg(taskID ? idText(*taskID) : QStringLiteral("(none)"));
}

} // namespace tarnwell
