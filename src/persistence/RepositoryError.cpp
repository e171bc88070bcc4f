#include "RepositoryError.h"

#include <QCoreApplication>

namespace tarnwell {

const char *RepositoryError::key() const
{
    switch (m_kind) {
    case Kind::titleEmpty:
        return "error.repository.titleEmpty";
    case Kind::titleTooLong:
        return "error.repository.titleTooLong";
    case Kind::reorderMismatch:
        return "error.repository.reorderMismatch";
    case Kind::dayNotFound:
        return "error.repository.dayNotFound";
    }
    return "";
}

QString RepositoryError::localizedDescription() const
{
    switch (m_kind) {
    case Kind::titleEmpty:
        //: Shown when a task title is empty
        //% "A task needs a title."
        return qtTrId("error.repository.titleEmpty");
    case Kind::titleTooLong:
        //: Shown when a task title exceeds the maximum character limit
        //% "A title can have at most %n characters."
        return qtTrId("error.repository.titleTooLong", m_limit);
    case Kind::reorderMismatch:
        //: Shown when reorderTasks receives an order list that does not match the day's task ids
        //% "The list changed while you were reordering it. Please try again."
        return qtTrId("error.repository.reorderMismatch");
    case Kind::dayNotFound:
        //: Shown when a Day row cannot be located for a given date
        //% "That day could not be found."
        return qtTrId("error.repository.dayNotFound");
    }
    return {};
}

} // namespace tarnwell
