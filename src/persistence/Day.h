#pragma once

#include "ManagedObject.h"

namespace tarnwell {

class Task;

// One calendar day that owns tasks. `date` is the local start of the day.
class Day final : public ManagedObject
{
public:
    enum Attribute { Id, Date, CreatedAt };
    enum Relationship { Tasks };

    Day();
    static const EntityDescription &description();

    QDateTime date() const { return ManagedObject::date(Date); }
    void setDate(const QDateTime &v) { setValue(Date, fromDate(v)); }
    std::optional<QDateTime> createdAt() const { return optDate(CreatedAt); }
    void setCreatedAt(const std::optional<QDateTime> &v) { setValue(CreatedAt, fromOptional(v)); }

    // Unordered: order within a day comes only from Task::orderIndex.
    QList<Task *> tasks() const;
};

} // namespace tarnwell
