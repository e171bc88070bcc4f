#include "NotificationActionRouter.h"

#include "ActiveTaskService.h"
#include "NotificationService.h"
#include "TaskCompletionFlow.h"
#include "kit/Logging.h"
#include "persistence/RepositoryError.h"
#include "persistence/StoreError.h"
#include "persistence/Task.h"

namespace tarnwell {

NotificationActionRouter::NotificationActionRouter(NotificationCenter &center, ActiveTaskService &activeTaskService,
                                                   SoundService &soundService, CompletionPresenter &presenter,
                                                   QObject *parent)
    : QObject(parent)
    , m_activeTasks(activeTaskService)
    , m_sounds(soundService)
    , m_presenter(presenter)
{
    connect(&center, &NotificationCenter::responded, this, &NotificationActionRouter::handle);
}

void NotificationActionRouter::handle(const NotificationResponse &response)
{
    const QString &action = response.actionIdentifier;
    const QUuid id = QUuid::fromString(response.taskID);
    Task *task = nullptr;
    if (!id.isNull()) {
        try {
            task = m_activeTasks.context().existingObject<Task>(id);
        } catch (const StoreError &error) {
            qCWarning(lcServices).noquote()
                << QStringLiteral("Notification action %1 lookup failed: %2").arg(action, error.description());
        }
    }
    if (!task) {
        qCInfo(lcServices).noquote() << QStringLiteral("Notification action %1 missing task lookup").arg(action);
        return;
    }

    if (action == QLatin1String(NotificationService::Constants::doneAction)) {
        if (task->completed()) {
            // Done twice (the tray menu first, then the notification): nothing left to do.
            qCInfo(lcServices).noquote() << QStringLiteral("Notification action DONE: the task is already done");
            return;
        }
        TaskCompletionFlow::complete(task->id(), m_activeTasks, m_sounds, m_presenter, true);
        Q_EMIT popoverOpenRequested(QLatin1String(Constants::reasonNextUp), response.activationToken);
        return;
    }
    if (action == QLatin1String(NotificationService::Constants::extendAction)) {
        const int minutes = NotificationService::extendMinutes(m_activeTasks.settingsStore());
        try {
            m_activeTasks.taskRepository().updateTask(task, task->title(), task->notes(),
                                                      qint64(task->durationMinutes().value_or(0)) + minutes,
                                                      task->dueDate());
        } catch (const StoreError &error) {
            qCCritical(lcServices).noquote()
                << QStringLiteral("Notification action PLUS_TEN save failed: %1").arg(error.description());
            return;
        } catch (const RepositoryError &error) {
            qCWarning(lcServices).noquote()
                << QStringLiteral("Notification action PLUS_TEN refused: %1").arg(QLatin1String(error.key()));
            return;
        }
        qCInfo(lcServices).noquote() << QStringLiteral("Notification action PLUS_TEN added %1 minutes").arg(minutes);
        return;
    }
    Q_EMIT popoverOpenRequested(QLatin1String(Constants::reasonDefault), response.activationToken);
}

} // namespace tarnwell
