#include "DayRepository.h"

namespace tarnwell {

namespace {

bool byDate(const ManagedObject *a, const ManagedObject *b)
{
    return static_cast<const Day *>(a)->date() < static_cast<const Day *>(b)->date();
}

} // namespace

DayRepository::DayRepository(StoreContext &context, Calendar calendar, Clock clock)
    : m_context(context)
    , m_calendar(std::move(calendar))
    , m_clock(std::move(clock))
{
}

Day *DayRepository::day(const QDateTime &date)
{
    const QDateTime start = m_calendar.startOfDay(date);
    FetchRequest request;
    request.where = QStringLiteral("date = ?");
    request.bindings = {start.toMSecsSinceEpoch()};
    request.matches = [start](const ManagedObject &o) { return static_cast<const Day &>(o).date() == start; };
    request.limit = 1;
    const auto found = m_context.fetch<Day>(request);
    return found.isEmpty() ? nullptr : found.first();
}

Day *DayRepository::fetchOrCreateDay(const QDateTime &date)
{
    if (Day *existing = day(date))
        return existing;
    Day *created = m_context.insertNew<Day>();
    created->setDate(m_calendar.startOfDay(date));
    created->setCreatedAt(m_clock());
    return created;
}

QList<Day *> DayRepository::days(const QDateTime &start, const QDateTime &end)
{
    FetchRequest request;
    request.where = QStringLiteral("date >= ? AND date <= ?");
    request.bindings = {start.toMSecsSinceEpoch(), end.toMSecsSinceEpoch()};
    request.matches = [start, end](const ManagedObject &o) {
        const QDateTime d = static_cast<const Day &>(o).date();
        return d >= start && d <= end;
    };
    request.orderBy = QStringLiteral("date ASC");
    request.lessThan = byDate;
    return m_context.fetch<Day>(request);
}

QList<Day *> DayRepository::days(const QDateTime &date, int lowerOffset, int upperOffset)
{
    if (lowerOffset > upperOffset)
        qFatal("Range requires lowerBound <= upperBound");
    return days(m_calendar.startOfDayAdding(date, lowerOffset), m_calendar.startOfDayAdding(date, upperOffset));
}

void DayRepository::deleteEmptyFutureDays()
{
    const QDateTime start = today();
    FetchRequest request;
    request.where = QStringLiteral("date > ?");
    request.bindings = {start.toMSecsSinceEpoch()};
    request.matches = [start](const ManagedObject &o) { return static_cast<const Day &>(o).date() > start; };
    const auto future = m_context.fetch<Day>(request);
    for (Day *d : future) {
        if (d->tasks().isEmpty())
            m_context.deleteObject(d);
    }
    saveIfNeeded();
}

void DayRepository::saveIfNeeded()
{
    if (m_context.hasChanges())
        m_context.save();
}

} // namespace tarnwell
