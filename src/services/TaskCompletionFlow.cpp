#include "TaskCompletionFlow.h"

#include "ActiveTaskService.h"
#include "FocusTime.h"
#include "SoundService.h"
#include "kit/Logging.h"

namespace tarnwell::TaskCompletionFlow {

void complete(const QUuid &taskID, ActiveTaskService &activeTaskService, SoundService &soundService,
              CompletionPresenter &presenter, bool presentNextUp)
{
    Task *task = nullptr;
    try {
        task = activeTaskService.context().existingObject<Task>(taskID);
    } catch (const StoreError &error) {
        qCCritical(lcServices).noquote()
            << QStringLiteral("TaskCompletionFlow lookupTask failed: %1").arg(error.description());
        return;
    }
    if (!task)
        return;

    const QDateTime now = activeTaskService.clock()();
    const qint64 focused = FocusTime::focusedSeconds(*task, now);
    NextUpModalContext context{task->title(), focused, std::nullopt, std::nullopt, std::nullopt};
    // The task after this one, taken before completing changes the queue.
    if (const Task *next = activeTaskService.nextTask()) {
        context.nextTaskTitle = next->title();
        context.nextTaskDurationMinutes = next->durationMinutes();
        context.nextTaskID = next->id();
    }

    try {
        activeTaskService.taskRepository().complete(task, now, focused);
    } catch (const StoreError &error) {
        qCCritical(lcServices).noquote()
            << QStringLiteral("TaskCompletionFlow complete failed: %1").arg(error.description());
        return;
    }

    activeTaskService.refresh();
    // No haptic feedback: Linux desktops have none.
    soundService.play(SoundService::Cue::completion);
    if (presentNextUp)
        presenter.presentNextUp(context);
    presenter.updatePresentation();
}

} // namespace tarnwell::TaskCompletionFlow
