#include "PopoverModel.h"

#include "QuickAddDraft.h"
#include "TaskEditor.h"
#include "TaskListModel.h"
#include "ViewTexts.h"
#include "kit/Logging.h"
#include "persistence/Day.h"
#include "persistence/RoutineRepository.h"
#include "persistence/Task.h"
#include "services/ActiveTaskService.h"
#include "services/CountdownService.h"
#include "services/DayPlanCalculator.h"
#include "services/DayPlanFooterText.h"
#include "services/DurationFormat.h"
#include "services/FocusTexts.h"
#include "services/FocusTime.h"
#include "services/PlanningTexts.h"
#include "services/RolloverService.h"
#include "services/RoutineService.h"
#include "services/TaskHistory.h"
#include "settings/AppSettingsStore.h"

#include <algorithm>

namespace tarnwell {

PopoverModel::PopoverModel(Services services, QObject *parent)
    : QObject(parent)
    , m_activeTasks(services.activeTasks)
    , m_countdown(services.countdown)
    , m_sound(services.sound)
    , m_settings(services.settings)
    , m_routineRepository(services.routines)
    , m_routineService(services.routineService)
    , m_rollover(services.rollover)
    , m_calendar(std::move(services.calendar))
    , m_clock(std::move(services.clock))
    , m_tasks(new TaskListModel(this))
    , m_editor(new TaskEditor(m_activeTasks, services.routineService, this))
    , m_draft(
          new QuickAddDraft(m_activeTasks.taskRepository(), m_activeTasks.dayRepository(), m_calendar, m_clock, this))
{
    m_toastTimer.setSingleShot(true);
    m_toastTimer.setInterval(Constants::toastMilliseconds);
    connect(&m_toastTimer, &QTimer::timeout, this, &PopoverModel::popToast);

    connect(&m_activeTasks, &ActiveTaskService::queueChanged, this, [this] { refresh(); });
    connect(&m_activeTasks, &ActiveTaskService::activeTaskChanged, this, [this] { refreshCard(); });
    connect(&m_activeTasks.context(), &StoreContext::objectsDidChange, this, [this] { refresh(); });
    // The countdown ticks every second: only the card and the footer follow.
    connect(&m_countdown, &CountdownService::remainingSecondsChanged, this, [this] {
        refreshCard();
        refreshFooter();
    });
    connect(&m_settings, &AppSettingsStore::settingChanged, this, [this] {
        refreshCard();
        refreshFooter();
        Q_EMIT cardChanged(); // the extend chip follows the overtime preset
        Q_EMIT nextUpChanged();
    });
    refresh();
}

PopoverModel::~PopoverModel() = default;

QDateTime PopoverModel::shownDate() const
{
    return m_calendar.startOfDayAdding(now(), m_dayOffset);
}

Day *PopoverModel::shownDay(bool create) const
{
    DayRepository &days = m_activeTasks.dayRepository();
    return create ? days.fetchOrCreateDay(shownDate()) : days.day(shownDate());
}

QString PopoverModel::dayTitle() const
{
    const QDate today = m_calendar.date(now());
    return ViewTexts::dayTitle(today.addDays(m_dayOffset), today);
}

QString PopoverModel::dayDate() const
{
    return ViewTexts::dayDate(shownDate().toTimeZone(m_calendar.timeZone()).date());
}

Task *PopoverModel::task(const QString &id) const
{
    const QUuid uuid = QUuid::fromString(id);
    if (uuid.isNull())
        return nullptr;
    return m_activeTasks.context().existingObject<Task>(uuid);
}

Task *PopoverModel::editableTask(const QString &id) const
{
    Task *t = task(id);
    if (!t || !TaskHistory::editable(*t, m_activeTasks.dayRepository().today(), m_settings.editHistoryEnabled()))
        return nullptr;
    return t;
}

QList<Task *> PopoverModel::openTasks() const
{
    return m_activeTasks.taskRepository().openTasks(shownDay());
}

void PopoverModel::refresh()
{
    // A change made while refreshing (none of ours) must not recurse.
    if (m_refreshing)
        return;
    m_refreshing = true;
    try {
        refreshList();
        refreshCard();
        refreshFooter();
        refreshRollover();
        refreshRoutines();
    } catch (const StoreError &error) {
        qCCritical(lcServices).noquote() << QStringLiteral("Popover refresh failed: %1").arg(error.description());
    }
    m_refreshing = false;
}

void PopoverModel::refreshList()
{
    const Day *day = shownDay();
    const QList<Task *> open = m_activeTasks.taskRepository().openTasks(day);
    QList<Task *> done;
    if (day) {
        const auto all = day->tasks();
        for (Task *t : all)
            if (t->completed() && !t->archived())
                done.append(t);
        std::stable_sort(done.begin(), done.end(), [](const Task *a, const Task *b) {
            return a->completedAt().value_or(QDateTime()) < b->completedAt().value_or(QDateTime());
        });
    }
    m_tasks->setTasks(open, done, isToday() ? m_activeTasks.activeTask() : nullptr, now());
}

void PopoverModel::refreshCard()
{
    Card card;
    Task *task = isToday() ? m_activeTasks.activeTask() : nullptr;
    if (task) {
        const QDateTime at = now();
        const FocusTime::TimerState state = FocusTime::timerState(*task);
        const qint64 focused = FocusTime::focusedSeconds(*task, at);
        card.task = task;
        card.title = task->title();
        card.notes = task->notes().value_or(QString());
        card.status = FocusTexts::status(state);
        card.timerLabel = FocusTexts::timerAction(state);
        card.running = state == FocusTime::TimerState::focusing;
        card.overdue = m_countdown.isOverdue();
        const std::optional<qint64> remaining = m_countdown.remainingSeconds();
        const std::optional<qint32> planned = task->durationMinutes();
        if (remaining && planned && *planned > 0) {
            card.countdown = DurationFormat::clock(*remaining);
            card.caption = *remaining < 0 ? FocusTexts::countdownOver() : FocusTexts::countdownLeft();
            card.progress = std::clamp(double(focused) / (double(*planned) * 60.0), 0.0, 1.0);
        } else {
            card.countdown = DurationFormat::clock(focused);
        }
    }
    if (card == m_card)
        return;
    m_card = card;
    Q_EMIT cardChanged();
}

void PopoverModel::refreshFooter()
{
    const QDateTime at = now();
    const QList<Task *> open = openTasks();
    const std::optional<QDateTime> end = DayPlanCalculator::workdayEnd(m_settings.workdayEndMinutes(), at, m_calendar);
    const DayPlan plan =
        DayPlanCalculator::plan(open, isToday() ? m_countdown.remainingSeconds() : std::nullopt, isToday(), at, end);
    const DayPlanFooterText::Lines lines = DayPlanFooterText::lines(plan, isToday(), end, at, m_calendar);
    Footer footer{lines.summary, lines.accessibleSummary, lines.workdayEnd, lines.overflow, lines.untimed};
    const bool overflowChanged = plan.overflow != m_overflow;
    m_overflow = plan.overflow;
    if (footer == m_footer && !overflowChanged)
        return;
    m_footer = footer;
    Q_EMIT footerChanged();
}

void PopoverModel::refreshRollover()
{
    QList<Task *> tasks;
    QString text;
    if (isToday() && !m_rollover.isDismissedToday()) {
        if (const std::optional<RolloverCandidate> candidate = m_rollover.candidate()) {
            tasks = candidate->tasks;
            const int count = int(tasks.size());
            text = m_rollover.isFromYesterday(*candidate) ? PlanningTexts::rolloverFromYesterday(count)
                                                          : PlanningTexts::rolloverFromEarlier(count);
        }
    }
    if (tasks == m_rolloverTasks && text == m_rolloverText)
        return;
    m_rolloverTasks = tasks;
    m_rolloverText = text;
    Q_EMIT rolloverChanged();
}

void PopoverModel::refreshRoutines()
{
    QVariantList list;
    const auto routines = m_routineRepository.routines();
    for (const Routine *routine : routines)
        list.append(QVariantMap{{QStringLiteral("id"), routine->id().toString(QUuid::WithoutBraces)},
                                {QStringLiteral("name"), routine->name()}});
    if (list == m_routineList)
        return;
    m_routineList = list;
    Q_EMIT routinesChanged();
}

void PopoverModel::setDayOffset(int offset)
{
    if (offset == m_dayOffset)
        return;
    m_dayOffset = offset;
    m_draft->setDefaultDayOffset(offset);
    Q_EMIT dayChanged();
    refresh();
}

void PopoverModel::previousDay()
{
    setDayOffset(m_dayOffset - 1);
}

void PopoverModel::nextDay()
{
    setDayOffset(m_dayOffset + 1);
}

void PopoverModel::today()
{
    setDayOffset(0);
}

bool PopoverModel::attempt(const std::function<void()> &change)
{
    try {
        change();
        return true;
    } catch (const RepositoryError &error) {
        showToast(error.localizedDescription());
    } catch (const StoreError &error) {
        qCCritical(lcServices).noquote() << QStringLiteral("Popover change failed: %1").arg(error.description());
        showToast(error.description());
    }
    refresh();
    return false;
}

// The task-in-hand card ------------------------------------------------------

QString PopoverModel::taskInHandId() const
{
    return m_card.task ? m_card.task->id().toString(QUuid::WithoutBraces) : QString();
}

int PopoverModel::extendMinutes() const
{
    return std::max(1, m_settings.overtimePresetMinutes());
}

QString PopoverModel::extendLabel() const
{
    return ViewTexts::extendChip(extendMinutes());
}

QString PopoverModel::extendTooltip() const
{
    return ViewTexts::extendTooltip(extendMinutes());
}

void PopoverModel::toggleTimer()
{
    if (Task *task = m_activeTasks.activeTask())
        m_activeTasks.toggleTimer(task);
    refreshCard();
}

void PopoverModel::completeTaskInHand()
{
    if (Task *task = m_activeTasks.activeTask())
        TaskCompletionFlow::complete(task->id(), m_activeTasks, m_sound, *this);
}

void PopoverModel::extendTaskInHand(int minutes)
{
    Task *task = m_activeTasks.activeTask();
    if (!task)
        return;
    const qint64 added = minutes > 0 ? minutes : extendMinutes();
    attempt([&] {
        m_activeTasks.taskRepository().updateTask(task, task->title(), task->notes(),
                                                  qint64(task->durationMinutes().value_or(0)) + added, task->dueDate());
    });
}

// Task rows ----------------------------------------------------------------

void PopoverModel::completeTask(const QString &id)
{
    Task *t = editableTask(id);
    if (!t || t->completed())
        return;
    if (t == m_activeTasks.activeTask()) {
        completeTaskInHand();
        return;
    }
    // A task ticked on a past day counts as done on that day.
    QDateTime at = now();
    if (const Day *day = t->day(); day && day->date() < m_activeTasks.dayRepository().today())
        at = std::min(at, m_calendar.startOfDayAdding(day->date(), 1).addSecs(-1));
    attempt([&] { m_activeTasks.taskRepository().complete(t, at, FocusTime::focusedSeconds(*t, at)); });
}

void PopoverModel::reopenTask(const QString &id)
{
    if (Task *t = editableTask(id))
        attempt([&] { m_activeTasks.taskRepository().reopen(t); });
}

bool PopoverModel::startNow(const QString &id)
{
    Task *t = task(id);
    Day *today = m_activeTasks.dayRepository().day(m_activeTasks.dayRepository().today());
    if (!t || !today || t->day() != today || t->completed() || t->archived())
        return false;
    // Hand over first, while the old task is still in hand: its running time
    // stops. Then bring the task to the head and run it.
    m_activeTasks.activate(t);
    QList<QUuid> order;
    const auto open = m_activeTasks.taskRepository().openTasks(today);
    order.append(t->id());
    for (const Task *other : open)
        if (other != t)
            order.append(other->id());
    if (!attempt([&] { m_activeTasks.taskRepository().reorderTasks(today, order); }))
        return false;
    m_activeTasks.refresh();
    m_activeTasks.startTimer(t);
    return true;
}

void PopoverModel::moveToTomorrow(const QString &id)
{
    Task *t = editableTask(id);
    if (!t || t->completed())
        return;
    TaskRepository &repository = m_activeTasks.taskRepository();
    const TaskRepository::TaskDayPlacement placement = repository.placement(t);
    if (attempt([&] { repository.moveToNextDay(t); })) {
        showToast(ViewTexts::movedToTomorrow(t->title()),
                  [this, t, placement] { attempt([&] { m_activeTasks.taskRepository().restore(t, placement); }); });
    }
}

void PopoverModel::moveUp(const QString &id)
{
    if (Task *t = editableTask(id))
        attempt([&] { m_activeTasks.taskRepository().moveTask(t, TaskRepository::Direction::up); });
}

void PopoverModel::moveDown(const QString &id)
{
    if (Task *t = editableTask(id))
        attempt([&] { m_activeTasks.taskRepository().moveTask(t, TaskRepository::Direction::down); });
}

QString PopoverModel::reorder(const QStringList &ids)
{
    if (m_dayOffset < 0 && !m_settings.editHistoryEnabled())
        return {};
    QList<QUuid> order;
    for (const QString &id : ids)
        order.append(QUuid::fromString(id));
    try {
        m_activeTasks.taskRepository().reorderTasks(shownDay(true), order);
    } catch (const RepositoryError &error) {
        refresh();
        return error.localizedDescription();
    } catch (const StoreError &error) {
        refresh();
        return error.description();
    }
    return {};
}

QString PopoverModel::moveToPosition(const QString &id, int to)
{
    QList<QUuid> order = m_tasks->openIds();
    const qsizetype from = order.indexOf(QUuid::fromString(id));
    if (from < 0 || order.isEmpty())
        return {};
    order.move(from, std::clamp<qsizetype>(to, 0, order.size() - 1));
    QStringList ids;
    for (const QUuid &uuid : order)
        ids.append(uuid.toString(QUuid::WithoutBraces));
    return reorder(ids);
}

void PopoverModel::deleteTask(const QString &id)
{
    Task *t = editableTask(id);
    if (!t)
        return;
    const QString title = t->title();
    if (attempt([&] {
            m_activeTasks.context().deleteObject(t);
            m_activeTasks.context().save();
        }))
        showToast(ViewTexts::deleted(title));
}

// The footer -----------------------------------------------------------------

void PopoverModel::moveOverflowToTomorrow()
{
    refreshFooter();
    const QList<Task *> moving = m_overflow;
    if (moving.isEmpty())
        return;
    TaskRepository &repository = m_activeTasks.taskRepository();
    QList<TaskRepository::TaskDayPlacement> placements;
    for (Task *t : moving)
        placements.append(repository.placement(t));
    // Each lands at the head of tomorrow: moving the last first keeps their order.
    const bool moved = attempt([&] {
        for (qsizetype i = moving.size() - 1; i >= 0; --i)
            repository.moveToNextDay(moving.at(i));
    });
    if (!moved)
        return;
    showToast(ViewTexts::movedOverflow(int(moving.size())), [this, moving, placements] {
        attempt([&] {
            for (qsizetype i = 0; i < moving.size(); ++i)
                m_activeTasks.taskRepository().restore(moving[i], placements[i]);
        });
    });
}

// The rollover bar -----------------------------------------------------------

void PopoverModel::rollForward()
{
    const QList<Task *> tasks = m_rolloverTasks;
    if (!tasks.isEmpty())
        attempt([&] { m_rollover.rollForward(tasks); });
    m_activeTasks.refresh();
    refresh();
}

void PopoverModel::archiveRollover()
{
    const QList<Task *> tasks = m_rolloverTasks;
    if (!tasks.isEmpty())
        attempt([&] { m_rollover.archive(tasks); });
    refresh();
}

void PopoverModel::dismissRollover()
{
    m_rollover.dismissForToday();
    refreshRollover();
}

// The routine menu -----------------------------------------------------------

void PopoverModel::loadRoutine(const QString &id)
{
    const QUuid uuid = QUuid::fromString(id);
    Routine *routine = uuid.isNull() ? nullptr : m_activeTasks.context().existingObject<Routine>(uuid);
    if (!routine)
        return;
    int added = 0;
    if (!attempt([&] { added = m_routineService.load(routine, shownDay(true)); }))
        return;
    m_activeTasks.refresh();
    showToast(added > 0 ? PlanningTexts::toastRoutineLoaded(added)
                        : PlanningTexts::toastRoutineAlreadyLoaded(routine->name()));
}

void PopoverModel::manageRoutines()
{
    Q_EMIT manageRoutinesRequested();
}

void PopoverModel::saveQueueAsRoutine(const QString &name)
{
    Routine *routine = nullptr;
    if (attempt([&] { routine = m_routineService.saveQueue(openTasks(), name.trimmed()); }) && routine) {
        refreshRoutines();
        showToast(PlanningTexts::toastRoutineSaved(routine->name()));
    }
}

// Toasts -----------------------------------------------------------------------

void PopoverModel::showToast(const QString &text, std::function<void()> undo)
{
    m_toasts.append(Toast{text, std::move(undo)});
    if (m_toasts.size() == 1) {
        m_toastTimer.start();
        Q_EMIT toastChanged();
    }
}

void PopoverModel::popToast()
{
    if (m_toasts.isEmpty())
        return;
    m_toasts.removeFirst();
    if (!m_toasts.isEmpty())
        m_toastTimer.start();
    else
        m_toastTimer.stop();
    Q_EMIT toastChanged();
}

void PopoverModel::undoToast()
{
    if (m_toasts.isEmpty())
        return;
    const std::function<void()> undo = m_toasts.first().undo;
    popToast();
    if (undo) {
        undo();
        m_activeTasks.refresh();
    }
}

void PopoverModel::dismissToast()
{
    popToast();
}

// The next-up screen -----------------------------------------------------------

void PopoverModel::presentNextUp(const NextUpModalContext &context)
{
    m_nextUp = context;
    Q_EMIT nextUpChanged();
}

void PopoverModel::updatePresentation()
{
    refresh();
}

QString PopoverModel::nextUpFocused() const
{
    return m_nextUp ? FocusTexts::completionFocused(DurationFormat::clock(m_nextUp->focusedSeconds)) : QString();
}

QString PopoverModel::nextUpTaskTitle() const
{
    return m_nextUp ? m_nextUp->nextTaskTitle.value_or(QString()) : QString();
}

QString PopoverModel::nextUpTaskDuration() const
{
    if (!m_nextUp || !m_nextUp->nextTaskDurationMinutes)
        return {};
    return DayPlanFooterText::formatDuration(qint64(*m_nextUp->nextTaskDurationMinutes) * 60);
}

QString PopoverModel::nextUpSkipLabel() const
{
    return FocusTexts::completionSkip(m_settings.skipBreakPresetMinutes());
}

void PopoverModel::startNextUp()
{
    const std::optional<NextUpModalContext> context = std::exchange(m_nextUp, std::nullopt);
    Q_EMIT nextUpChanged();
    if (!context || !context->nextTaskID)
        return;
    Task *next = m_activeTasks.context().existingObject<Task>(*context->nextTaskID);
    if (!next || next->completed() || next->archived())
        return;
    if (next == m_activeTasks.activeTask()) {
        m_activeTasks.activate(next);
        m_activeTasks.startTimer(next);
    } else {
        startNow(next->id().toString(QUuid::WithoutBraces));
    }
}

void PopoverModel::skipNextUp()
{
    if (!m_nextUp)
        return;
    m_nextUp.reset();
    Q_EMIT nextUpChanged();
}

// Texts ------------------------------------------------------------------------

PopoverTexts PopoverModel::texts() const
{
    PopoverTexts texts;
    texts.today = ViewTexts::today();
    texts.repeat = PlanningTexts::repeatMenu();
    texts.undo = ViewTexts::undo();
    texts.moveOverflow = PlanningTexts::dayPlanMoveOverflow();
    texts.moveOverflowShort = PlanningTexts::dayPlanMoveOverflowShort();
    texts.rollForward = PlanningTexts::rolloverRollForward();
    texts.archive = PlanningTexts::rolloverArchive();
    texts.dismiss = PlanningTexts::rolloverDismiss();
    texts.routineLoad = PlanningTexts::routineMenuLoad();
    texts.routineSaveQueue = PlanningTexts::routineMenuSaveQueue();
    texts.routineManage = PlanningTexts::routineMenuManage();
    texts.routineNone = PlanningTexts::routineMenuNone();
    texts.routineTooltip = PlanningTexts::routineMenuTooltip();
    texts.routineNameField = PlanningTexts::routineNameField();
    texts.routineNamePlaceholder = PlanningTexts::routineNameFieldPlaceholder();
    texts.completionTitle = FocusTexts::completionTitle();
    texts.completionNextUp = FocusTexts::completionNextUp();
    texts.completionQueueEmpty = FocusTexts::completionQueueEmpty();
    texts.completionStart = FocusTexts::completionStart();
    return texts;
}

void PopoverModel::retranslate()
{
    m_editor->retranslate();
    m_card = Card{};
    m_footer = Footer{};
    m_rolloverText.clear();
    m_rolloverTasks.clear();
    Q_EMIT textsChanged();
    Q_EMIT dayChanged();
    Q_EMIT nextUpChanged();
    refresh();
}

} // namespace tarnwell
