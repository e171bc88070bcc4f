#pragma once

#include "ManagedObject.h"

namespace tarnwell {

class Routine;

// One task template of a routine.
class RoutineItem final : public ManagedObject
{
public:
    enum Attribute { Id, Title, Notes, DurationMinutes, OrderIndex, RoutineReference };

    RoutineItem();
    static const EntityDescription &description();

    QString title() const { return string(Title); }
    void setTitle(const QString &v) { setValue(Title, v); }
    std::optional<QString> notes() const { return optString(Notes); }
    void setNotes(const std::optional<QString> &v) { setValue(Notes, fromOptional(v)); }
    std::optional<qint32> durationMinutes() const { return optInt32(DurationMinutes); }
    void setDurationMinutes(std::optional<qint32> v) { setValue(DurationMinutes, fromOptional(v)); }
    qint32 orderIndex() const { return int32(OrderIndex); }
    void setOrderIndex(qint32 v) { setValue(OrderIndex, v); }

    Routine *routine() const;
    void setRoutine(Routine *routine);
};

} // namespace tarnwell
