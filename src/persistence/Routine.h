#pragma once

#include "ManagedObject.h"

namespace tarnwell {

class RoutineItem;

// A saved list of task templates, optionally repeating on weekdays.
class Routine final : public ManagedObject
{
public:
    enum Attribute { Id, Name, OrderIndex, RepeatWeekdays, LastAppliedDate, CreatedAt, UpdatedAt };
    enum Relationship { Items };

    Routine();
    static const EntityDescription &description();

    QString name() const { return string(Name); }
    void setName(const QString &v) { setValue(Name, v); }
    qint32 orderIndex() const { return int32(OrderIndex); }
    void setOrderIndex(qint32 v) { setValue(OrderIndex, v); }
    qint16 repeatWeekdays() const { return qint16(int32(RepeatWeekdays)); }
    void setRepeatWeekdays(qint16 v) { setValue(RepeatWeekdays, int(v)); }
    std::optional<QDateTime> lastAppliedDate() const { return optDate(LastAppliedDate); }
    void setLastAppliedDate(const std::optional<QDateTime> &v) { setValue(LastAppliedDate, fromOptional(v)); }
    std::optional<QDateTime> createdAt() const { return optDate(CreatedAt); }
    void setCreatedAt(const std::optional<QDateTime> &v) { setValue(CreatedAt, fromOptional(v)); }
    std::optional<QDateTime> updatedAt() const { return optDate(UpdatedAt); }
    void setUpdatedAt(const std::optional<QDateTime> &v) { setValue(UpdatedAt, fromOptional(v)); }

    QList<RoutineItem *> items() const;
};

} // namespace tarnwell
