#pragma once

#include "Routine.h"
#include "RoutineItem.h"
#include "StoreContext.h"
#include "kit/Clock.h"

#include <QSet>
#include <QUuid>

#include <optional>

namespace tarnwell {

// Stores routines and their task templates. Every operation that changes data
// saves before it returns; a save error is thrown to the caller.
class RoutineRepository
{
public:
    // One task template to save.
    struct ItemDraft
    {
        QString title;
        std::optional<int> durationMinutes;
        std::optional<QString> notes;

        friend bool operator==(const ItemDraft &, const ItemDraft &) = default;
    };

    RoutineRepository(StoreContext &context, Clock clock);

    StoreContext &context() const { return m_context; }

    // Every routine, by orderIndex, then createdAt.
    QList<Routine *> routines();
    // The routine's items in their order.
    static QList<RoutineItem *> items(const Routine *routine);
    // The item with this identifier, or none.
    RoutineItem *item(const QUuid &id);
    // Identifiers of the items whose routine repeats on `weekday`
    // (1 = Sunday ... 7 = Saturday).
    QSet<QUuid> itemIDsRepeating(int weekday);

    // A new routine after the others. Titles are checked like task titles
    // (RepositoryError); nothing is stored when one is refused.
    Routine *createRoutine(const QString &name, const QList<ItemDraft> &items = {});
    void rename(Routine *routine, const QString &name);
    void setRepeatWeekdays(Routine *routine, qint16 mask);
    void deleteRoutine(Routine *routine);

    RoutineItem *appendItem(Routine *routine, const ItemDraft &draft);
    void updateItem(RoutineItem *item, const ItemDraft &draft);
    void removeItem(RoutineItem *item);
    // Moves the item `offset` places within its routine (-1 up, +1 down) and
    // numbers the items afresh. False, and nothing changes, past either end.
    bool moveItem(RoutineItem *item, int offset);

private:
    RoutineItem *insertItem(Routine *routine, const ItemDraft &draft, qint32 orderIndex);
    static ItemDraft checked(const ItemDraft &draft);
    void save();

    StoreContext &m_context;
    Clock m_clock;
};

} // namespace tarnwell
