#include "RoutineRepository.h"

#include "TaskRepository.h"
#include "kit/Checked.h"
#include "RoutineSchedule.h"

#include <algorithm>

namespace tarnwell {

namespace {

bool routineBefore(const Routine *a, const Routine *b)
{
    if (a->orderIndex() != b->orderIndex())
        return a->orderIndex() < b->orderIndex();
    // A routine without a creation date sorts first, as NULL does in SQLite.
    const QDateTime ca = a->createdAt().value_or(QDateTime());
    const QDateTime cb = b->createdAt().value_or(QDateTime());
    if (!ca.isValid() || !cb.isValid())
        return !ca.isValid() && cb.isValid();
    return ca < cb;
}

} // namespace

RoutineRepository::RoutineRepository(StoreContext &context, Clock clock)
    : m_context(context)
    , m_clock(std::move(clock))
{
}

QList<Routine *> RoutineRepository::routines()
{
    FetchRequest request;
    request.orderBy = QStringLiteral("order_index ASC, created_at ASC");
    request.lessThan = [](const ManagedObject *a, const ManagedObject *b) {
        return routineBefore(static_cast<const Routine *>(a), static_cast<const Routine *>(b));
    };
    return m_context.fetch<Routine>(request);
}

QList<RoutineItem *> RoutineRepository::items(const Routine *routine)
{
    if (!routine)
        return {};
    QList<RoutineItem *> list = routine->items();
    std::stable_sort(list.begin(), list.end(),
                     [](const RoutineItem *a, const RoutineItem *b) { return a->orderIndex() < b->orderIndex(); });
    return list;
}

RoutineItem *RoutineRepository::item(const QUuid &id)
{
    if (id.isNull())
        return nullptr;
    FetchRequest request;
    request.where = QStringLiteral("id = ?");
    request.bindings = {id.toString(QUuid::WithoutBraces)};
    request.matches = [id](const ManagedObject &o) { return o.id() == id; };
    request.limit = 1;
    const auto found = m_context.fetch<RoutineItem>(request);
    return found.isEmpty() ? nullptr : found.first();
}

QSet<QUuid> RoutineRepository::itemIDsRepeating(int weekday)
{
    QSet<QUuid> ids;
    if (!RoutineSchedule::everyDay().contains(weekday))
        return ids;
    FetchRequest request;
    request.where = QStringLiteral("routine_id IN (SELECT id FROM routines WHERE repeat_weekdays != 0)");
    request.matches = [](const ManagedObject &o) {
        const Routine *routine = static_cast<const RoutineItem &>(o).routine();
        return routine && routine->repeatWeekdays() != 0;
    };
    const auto found = m_context.fetch<RoutineItem>(request);
    for (const RoutineItem *item : found) {
        const Routine *routine = item->routine();
        // The routine's own in-memory value decides, should it differ from its row.
        if (!routine || !RoutineSchedule{routine->repeatWeekdays()}.contains(weekday))
            continue;
        if (!item->id().isNull())
            ids.insert(item->id());
    }
    return ids;
}

RoutineRepository::ItemDraft RoutineRepository::checked(const ItemDraft &draft)
{
    ItemDraft out = draft;
    out.title = TaskRepository::validatedTitle(draft.title);
    return out;
}

RoutineItem *RoutineRepository::insertItem(Routine *routine, const ItemDraft &draft, qint32 orderIndex)
{
    RoutineItem *item = m_context.insertNew<RoutineItem>();
    item->setTitle(draft.title);
    item->setDurationMinutes(draft.durationMinutes);
    item->setNotes(draft.notes);
    item->setOrderIndex(orderIndex);
    item->setRoutine(routine);
    return item;
}

Routine *RoutineRepository::createRoutine(const QString &name, const QList<ItemDraft> &drafts)
{
    QList<ItemDraft> valid;
    valid.reserve(drafts.size());
    for (const ItemDraft &draft : drafts)
        valid.append(checked(draft));

    const QList<Routine *> existing = routines();
    qint64 next = 0;
    for (const Routine *r : existing)
        next = std::max<qint64>(next, qint64(r->orderIndex()) + 1);

    const QDateTime now = m_clock();
    Routine *routine = m_context.insertNew<Routine>();
    routine->setName(name.trimmed());
    routine->setOrderIndex(checkedInt32(next, "orderIndex"));
    routine->setRepeatWeekdays(RoutineSchedule::never().mask);
    routine->setCreatedAt(now);
    routine->setUpdatedAt(now);
    for (qsizetype i = 0; i < valid.size(); ++i)
        insertItem(routine, valid[i], checkedInt32(i, "orderIndex"));
    save();
    return routine;
}

void RoutineRepository::rename(Routine *routine, const QString &name)
{
    routine->setName(name.trimmed());
    routine->setUpdatedAt(m_clock());
    save();
}

void RoutineRepository::setRepeatWeekdays(Routine *routine, qint16 mask)
{
    routine->setRepeatWeekdays(mask);
    routine->setUpdatedAt(m_clock());
    save();
}

void RoutineRepository::deleteRoutine(Routine *routine)
{
    // The items go with it; tasks made from them stay and keep their now
    // dangling routineItemID.
    m_context.deleteObject(routine);
    save();
}

RoutineItem *RoutineRepository::appendItem(Routine *routine, const ItemDraft &draft)
{
    const ItemDraft valid = checked(draft);
    const QList<RoutineItem *> current = items(routine);
    const qint64 next = current.isEmpty() ? 0 : qint64(current.last()->orderIndex()) + 1;
    RoutineItem *item = insertItem(routine, valid, checkedInt32(next, "orderIndex"));
    routine->setUpdatedAt(m_clock());
    save();
    return item;
}

void RoutineRepository::updateItem(RoutineItem *item, const ItemDraft &draft)
{
    const ItemDraft valid = checked(draft);
    item->setTitle(valid.title);
    item->setDurationMinutes(valid.durationMinutes);
    item->setNotes(valid.notes);
    if (Routine *routine = item->routine())
        routine->setUpdatedAt(m_clock());
    save();
}

void RoutineRepository::removeItem(RoutineItem *item)
{
    if (Routine *routine = item->routine())
        routine->setUpdatedAt(m_clock());
    m_context.deleteObject(item);
    save();
}

bool RoutineRepository::moveItem(RoutineItem *item, int offset)
{
    Routine *routine = item->routine();
    QList<RoutineItem *> list = items(routine);
    const qsizetype from = list.indexOf(item);
    const qsizetype to = from + offset;
    if (from < 0 || to < 0 || to >= list.size() || offset == 0)
        return false;
    list.move(from, to);
    for (qsizetype i = 0; i < list.size(); ++i)
        if (list[i]->orderIndex() != i)
            list[i]->setOrderIndex(checkedInt32(i, "orderIndex"));
    routine->setUpdatedAt(m_clock());
    save();
    return true;
}

void RoutineRepository::save()
{
    if (m_context.hasChanges())
        m_context.save();
}

} // namespace tarnwell
