#pragma once

#include "ManagedObject.h"

namespace tarnwell {

class Day;

// One task, planned on one day.
class Task final : public ManagedObject
{
public:
    enum Attribute {
        Id,
        Title,
        Notes,
        DurationMinutes,
        Urgent,
        OrderIndex,
        Completed,
        CompletedAt,
        Archived,
        ActualSecondsFocused,
        ActiveStartedAt,
        ActualEditedManually,
        AwaySecondsDiscarded,
        DueDate,
        RolledFromDate,
        RoutineItemID,
        CreatedAt,
        UpdatedAt,
        DayReference,
    };

    Task();
    static const EntityDescription &description();

    QString title() const { return string(Title); }
    void setTitle(const QString &v) { setValue(Title, v); }
    std::optional<QString> notes() const { return optString(Notes); }
    void setNotes(const std::optional<QString> &v) { setValue(Notes, fromOptional(v)); }
    std::optional<qint32> durationMinutes() const { return optInt32(DurationMinutes); }
    void setDurationMinutes(std::optional<qint32> v) { setValue(DurationMinutes, fromOptional(v)); }
    bool urgent() const { return boolean(Urgent); }
    void setUrgent(bool v) { setValue(Urgent, v); }
    qint32 orderIndex() const { return int32(OrderIndex); }
    void setOrderIndex(qint32 v) { setValue(OrderIndex, v); }
    bool completed() const { return boolean(Completed); }
    void setCompleted(bool v) { setValue(Completed, v); }
    std::optional<QDateTime> completedAt() const { return optDate(CompletedAt); }
    void setCompletedAt(const std::optional<QDateTime> &v) { setValue(CompletedAt, fromOptional(v)); }
    bool archived() const { return boolean(Archived); }
    void setArchived(bool v) { setValue(Archived, v); }
    std::optional<qint32> actualSecondsFocused() const { return optInt32(ActualSecondsFocused); }
    void setActualSecondsFocused(std::optional<qint32> v) { setValue(ActualSecondsFocused, fromOptional(v)); }
    std::optional<QDateTime> activeStartedAt() const { return optDate(ActiveStartedAt); }
    void setActiveStartedAt(const std::optional<QDateTime> &v) { setValue(ActiveStartedAt, fromOptional(v)); }
    bool actualEditedManually() const { return boolean(ActualEditedManually); }
    void setActualEditedManually(bool v) { setValue(ActualEditedManually, v); }
    std::optional<qint32> awaySecondsDiscarded() const { return optInt32(AwaySecondsDiscarded); }
    void setAwaySecondsDiscarded(std::optional<qint32> v) { setValue(AwaySecondsDiscarded, fromOptional(v)); }
    std::optional<QDateTime> dueDate() const { return optDate(DueDate); }
    void setDueDate(const std::optional<QDateTime> &v) { setValue(DueDate, fromOptional(v)); }
    std::optional<QDateTime> rolledFromDate() const { return optDate(RolledFromDate); }
    void setRolledFromDate(const std::optional<QDateTime> &v) { setValue(RolledFromDate, fromOptional(v)); }
    std::optional<QUuid> routineItemID() const { return optUuid(RoutineItemID); }
    void setRoutineItemID(const std::optional<QUuid> &v) { setValue(RoutineItemID, fromOptional(v)); }
    QDateTime createdAt() const { return date(CreatedAt); }
    void setCreatedAt(const QDateTime &v) { setValue(CreatedAt, fromDate(v)); }
    QDateTime updatedAt() const { return date(UpdatedAt); }
    void setUpdatedAt(const QDateTime &v) { setValue(UpdatedAt, fromDate(v)); }

    Day *day() const;
    void setDay(Day *day);
};

} // namespace tarnwell
