#include "TodoMerge.h"

#include <algorithm>

namespace tarnwell::sync {

TodoFields mergeTodo(const std::optional<TodoFields> &base, const TodoFields &local, const QDateTime &localEdited,
                     const TodoFields &remote)
{
    const QDateTime remoteEdited = remote.lastModified.value_or(QDateTime());
    const bool remoteLater = remoteEdited.isValid() && (!localEdited.isValid() || remoteEdited > localEdited);
    TodoFields out = local;
    // One field: the side that changed it; the later edit when both did.
    const auto pick = [&](auto TodoFields::*field) {
        const bool localChanged = !base || local.*field != (*base).*field;
        const bool remoteChanged = !base || remote.*field != (*base).*field;
        if (remoteChanged && (!localChanged || remoteLater))
            out.*field = remote.*field;
    };
    pick(&TodoFields::title);
    pick(&TodoFields::notes);
    pick(&TodoFields::day);
    pick(&TodoFields::urgent);
    pick(&TodoFields::plannedMinutes);
    pick(&TodoFields::cancelled);
    pick(&TodoFields::order);

    // Completion travels with its time. Without a base, done on either side is done.
    const bool localChanged = !base || local.completed != base->completed;
    const bool remoteChanged = !base || remote.completed != base->completed;
    const TodoFields *completion = &local;
    if (!base)
        completion = remote.completed && !local.completed ? &remote : &local;
    else if (remoteChanged && (!localChanged || remoteLater))
        completion = &remote;
    out.completed = completion->completed;
    out.completedAt = completion->completedAt;

    out.focusedSeconds = std::max(local.focusedSeconds, remote.focusedSeconds);
    out.discardedSeconds = std::max(local.discardedSeconds, remote.discardedSeconds);
    out.lastModified =
        remoteLater ? remote.lastModified : (localEdited.isValid() ? std::optional(localEdited) : remote.lastModified);
    return out;
}

} // namespace tarnwell::sync
