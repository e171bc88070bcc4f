#include "RoutinesModel.h"

#include "kit/Logging.h"
#include "persistence/RepositoryError.h"
#include "persistence/RoutineRepository.h"
#include "persistence/StoreError.h"
#include "services/DurationParser.h"
#include "services/PlanningTexts.h"

#include <QLocale>

#include <algorithm>
#include <utility>

namespace tarnwell {

namespace {

QString nameRequired()
{
    //: Routines window: shown in place when a routine's name is left empty
    //% "A routine needs a name."
    return qtTrId("settings.routines.nameRequired");
}

QString minutesInvalid()
{
    //: Routines window: shown in place when a task template's minutes are not a duration
    //% "Write the minutes as 45, 45m or 1h30."
    return qtTrId("settings.routines.minutesInvalid");
}

} // namespace

QString attemptRoutineChange(const std::function<void()> &change)
{
    try {
        change();
        return {};
    } catch (const RepositoryError &error) {
        return error.localizedDescription();
    } catch (const StoreError &error) {
        qCCritical(lcServices).noquote() << QStringLiteral("Routine change failed: %1").arg(error.description());
        return error.description();
    }
}

// Task templates ---------------------------------------------------------------

RoutineItemsModel::RoutineItemsModel(RoutineRepository &repository, QObject *parent)
    : SnapshotListModel(parent)
    , m_repository(repository)
{
    connect(this, &QAbstractItemModel::rowsInserted, this, &RoutineItemsModel::countChanged);
    connect(this, &QAbstractItemModel::rowsRemoved, this, &RoutineItemsModel::countChanged);
    connect(this, &QAbstractItemModel::modelReset, this, &RoutineItemsModel::countChanged);
}

QVariant RoutineItemsModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const RoutineItemRow &row = m_rows[index.row()];
    switch (role) {
    case IdRole:
        return row.id.toString(QUuid::WithoutBraces);
    case Qt::DisplayRole:
    case TitleRole:
        return row.title;
    case MinutesRole:
        return row.minutes;
    default:
        return {};
    }
}

QHash<int, QByteArray> RoutineItemsModel::roleNames() const
{
    return {{IdRole, "id"}, {TitleRole, "title"}, {MinutesRole, "minutes"}};
}

void RoutineItemsModel::setRoutine(Routine *routine)
{
    if (routine == m_routine)
        return;
    m_routine = routine;
    refresh();
}

void RoutineItemsModel::refresh()
{
    QList<RoutineItemRow> fresh;
    if (m_routine && !m_routine->isDeleted()) {
        const auto items = RoutineRepository::items(m_routine);
        for (RoutineItem *item : items)
            fresh << RoutineItemRow{item->id(), item, item->title(), item->durationMinutes().value_or(-1)};
    }
    replaceRows(fresh);
}

// A draft from the window's fields; the error to show when the minutes are
// not a duration.
static std::optional<QString> draftOf(const QString &title, const QString &minutes, std::optional<QString> notes,
                                      RoutineRepository::ItemDraft &draft)
{
    draft.title = title;
    draft.notes = std::move(notes);
    if (minutes.trimmed().isEmpty()) {
        draft.durationMinutes.reset();
        return std::nullopt;
    }
    draft.durationMinutes = DurationParser::parse(minutes);
    if (!draft.durationMinutes)
        return minutesInvalid();
    return std::nullopt;
}

QString RoutineItemsModel::add(const QString &title, const QString &minutes)
{
    if (!m_routine)
        return {};
    RoutineRepository::ItemDraft draft;
    if (const auto error = draftOf(title, minutes, std::nullopt, draft))
        return *error;
    QString error = attemptRoutineChange([&] { m_repository.appendItem(m_routine, draft); });
    refresh();
    return error;
}

QString RoutineItemsModel::update(int row, const QString &title, const QString &minutes)
{
    if (!hasRow(row))
        return {};
    RoutineItem *item = m_rows[row].item;
    RoutineRepository::ItemDraft draft;
    if (const auto error = draftOf(title, minutes, item->notes(), draft))
        return *error;
    QString error = attemptRoutineChange([&] { m_repository.updateItem(item, draft); });
    refresh();
    return error;
}

void RoutineItemsModel::remove(int row)
{
    if (!hasRow(row))
        return;
    attemptRoutineChange([&] { m_repository.removeItem(m_rows[row].item); });
    refresh();
}

bool RoutineItemsModel::move(int row, int offset)
{
    if (!hasRow(row))
        return false;
    bool moved = false;
    attemptRoutineChange([&] { moved = m_repository.moveItem(m_rows[row].item, offset); });
    refresh();
    return moved;
}

// Routines ---------------------------------------------------------------------

RoutinesModel::RoutinesModel(RoutineRepository &repository, QObject *parent)
    : SnapshotListModel(parent)
    , m_repository(repository)
    , m_items(new RoutineItemsModel(repository, this))
{
    connect(this, &QAbstractItemModel::rowsInserted, this, &RoutinesModel::countChanged);
    connect(this, &QAbstractItemModel::rowsRemoved, this, &RoutinesModel::countChanged);
    connect(this, &QAbstractItemModel::modelReset, this, &RoutinesModel::countChanged);
    // Changes from anywhere (this window, the popover's routine menu) show here.
    connect(&m_repository.context(), &StoreContext::objectsDidChange, this, [this] { refresh(); });
    refresh();
}

RoutinesModel::~RoutinesModel() = default;

QVariant RoutinesModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const RoutineRow &row = m_rows[index.row()];
    const RoutineSchedule schedule{row.mask};
    switch (role) {
    case IdRole:
        return row.id.toString(QUuid::WithoutBraces);
    case Qt::DisplayRole:
    case NameRole:
        return row.name;
    case RepeatKindRole:
        return int(schedule.kind());
    case RepeatMaskRole:
        return int(row.mask);
    case RepeatLabelRole:
        return PlanningTexts::repeatOption(schedule.kind());
    case ItemCountRole:
        return row.itemCount;
    default:
        return {};
    }
}

QHash<int, QByteArray> RoutinesModel::roleNames() const
{
    return {{IdRole, "id"},
            {NameRole, "name"},
            {RepeatKindRole, "repeatKind"},
            {RepeatMaskRole, "repeatMask"},
            {RepeatLabelRole, "repeatLabel"},
            {ItemCountRole, "itemCount"}};
}

void RoutinesModel::refresh()
{
    // Our own saves announce themselves while we are still reading.
    if (m_refreshing)
        return;
    m_refreshing = true;
    try {
        QList<RoutineRow> fresh;
        const auto routines = m_repository.routines();
        for (Routine *routine : routines)
            fresh << RoutineRow{routine->id(), routine, routine->name(), routine->repeatWeekdays(),
                                int(routine->items().size())};
        replaceRows(fresh);
        updateCurrent(m_currentId, false);
        m_items->refresh();
    } catch (const StoreError &error) {
        qCCritical(lcServices).noquote() << QStringLiteral("Routines refresh failed: %1").arg(error.description());
    }
    m_refreshing = false;
}

// Keeps the current routine by identity; when it is gone, the one now in its
// place (or the last) becomes current.
void RoutinesModel::updateCurrent(const QUuid &id, bool forget)
{
    int row = -1;
    for (int i = 0; i < m_rows.size(); ++i)
        if (m_rows[i].id == id)
            row = i;
    if (row < 0 && !m_rows.isEmpty())
        row = std::clamp(m_current, 0, int(m_rows.size()) - 1);
    const QUuid newId = row < 0 ? QUuid() : m_rows[row].id;
    if (forget || newId != m_currentId)
        m_customChosen = false;
    m_current = row;
    m_currentId = newId;
    m_items->setRoutine(currentRoutine());
    announce();
}

// Tells the window what changed about the current routine, and nothing when
// nothing did (a field being typed in keeps its text).
void RoutinesModel::announce()
{
    const Shown now{m_current, m_currentId, currentName(), hasRow(m_current) ? m_rows[m_current].mask : qint16(0),
                    m_customChosen};
    const Shown before = std::exchange(m_shown, now);
    if (before.row != now.row || before.id != now.id)
        Q_EMIT currentIndexChanged();
    if (!(before == now))
        Q_EMIT currentChanged();
}

void RoutinesModel::setCurrentIndex(int row)
{
    if (row == m_current || !hasRow(row))
        return;
    m_current = row;
    updateCurrent(m_rows[row].id, true);
}

Routine *RoutinesModel::routineAt(int row) const
{
    return hasRow(row) ? m_rows[row].routine : nullptr;
}

Routine *RoutinesModel::currentRoutine() const
{
    return routineAt(m_current);
}

QString RoutinesModel::currentName() const
{
    return hasRow(m_current) ? m_rows[m_current].name : QString();
}

int RoutinesModel::repeatChoice() const
{
    if (!hasRow(m_current))
        return int(RoutineSchedule::Kind::never);
    if (m_customChosen)
        return int(RoutineSchedule::Kind::custom);
    return int(RoutineSchedule{m_rows[m_current].mask}.kind());
}

int RoutinesModel::weekdayOf(Qt::DayOfWeek day)
{
    return int(day) % 7 + 1;
}

QList<int> RoutinesModel::weekOrder(Qt::DayOfWeek firstDay)
{
    QList<int> order;
    for (int i = 0; i < 7; ++i)
        order << weekdayOf(Qt::DayOfWeek((int(firstDay) - 1 + i) % 7 + 1));
    return order;
}

QVariantList RoutinesModel::weekdays() const
{
    const QLocale locale;
    const RoutineSchedule schedule{hasRow(m_current) ? m_rows[m_current].mask : qint16(0)};
    QVariantList list;
    const auto order = weekOrder(locale.firstDayOfWeek());
    for (int weekday : order) {
        const int qtDay = weekday == 1 ? Qt::Sunday : weekday - 1;
        list << QVariantMap{{QStringLiteral("weekday"), weekday},
                            {QStringLiteral("name"), locale.dayName(qtDay, QLocale::ShortFormat)},
                            {QStringLiteral("longName"), locale.dayName(qtDay, QLocale::LongFormat)},
                            {QStringLiteral("on"), schedule.contains(weekday)}};
    }
    return list;
}

QVariantList RoutinesModel::repeatOptions() const
{
    QVariantList list;
    for (auto kind : {RoutineSchedule::Kind::never, RoutineSchedule::Kind::everyDay, RoutineSchedule::Kind::weekdays,
                      RoutineSchedule::Kind::custom})
        list << QVariantMap{{QStringLiteral("kind"), int(kind)},
                            {QStringLiteral("text"), PlanningTexts::repeatOption(kind)}};
    return list;
}

QString RoutinesModel::repeatMenuText() const
{
    return PlanningTexts::repeatMenu();
}

void RoutinesModel::retranslate()
{
    Q_EMIT textsChanged();
    Q_EMIT currentChanged();
    if (!m_rows.isEmpty())
        Q_EMIT dataChanged(index(0), index(int(m_rows.size()) - 1), {RepeatLabelRole});
}

int RoutinesModel::create()
{
    Routine *routine = nullptr;
    attemptRoutineChange([&] { routine = m_repository.createRoutine(PlanningTexts::routineDefaultName()); });
    refresh();
    if (!routine)
        return -1;
    for (int row = 0; row < m_rows.size(); ++row) {
        if (m_rows[row].routine == routine) {
            setCurrentIndex(row);
            return row;
        }
    }
    return -1;
}

QString RoutinesModel::rename(int row, const QString &name)
{
    Routine *routine = routineAt(row);
    if (!routine)
        return {};
    if (name.trimmed().isEmpty())
        return nameRequired();
    if (name.trimmed() == routine->name())
        return {};
    QString error = attemptRoutineChange([&] { m_repository.rename(routine, name); });
    refresh();
    return error;
}

void RoutinesModel::remove(int row)
{
    Routine *routine = routineAt(row);
    if (!routine)
        return;
    attemptRoutineChange([&] { m_repository.deleteRoutine(routine); });
    refresh();
}

void RoutinesModel::setMask(qint16 mask)
{
    Routine *routine = currentRoutine();
    if (!routine || routine->repeatWeekdays() == mask)
        return;
    attemptRoutineChange([&] { m_repository.setRepeatWeekdays(routine, mask); });
    refresh();
}

void RoutinesModel::setRepeatChoice(int kind)
{
    if (!currentRoutine())
        return;
    switch (RoutineSchedule::Kind(kind)) {
    case RoutineSchedule::Kind::never:
        m_customChosen = false;
        setMask(RoutineSchedule::never().mask);
        break;
    case RoutineSchedule::Kind::everyDay:
        m_customChosen = false;
        setMask(RoutineSchedule::everyDay().mask);
        break;
    case RoutineSchedule::Kind::weekdays:
        m_customChosen = false;
        setMask(RoutineSchedule::weekdays().mask);
        break;
    case RoutineSchedule::Kind::custom:
        m_customChosen = true;
        break;
    default:
        return;
    }
    announce();
}

void RoutinesModel::setWeekday(int weekday, bool on)
{
    Routine *routine = currentRoutine();
    if (!routine)
        return;
    // The toggles stay open even when the days add up to a named schedule.
    m_customChosen = true;
    setMask(RoutineSchedule{routine->repeatWeekdays()}.with(weekday, on).mask);
    announce();
}

} // namespace tarnwell
