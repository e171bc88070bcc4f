#pragma once

#include "kit/Calendar.h"
#include "kit/Clock.h"
#include "services/TaskCompletionFlow.h"

#include <QObject>
#include <QTimer>
#include <QUuid>
#include <QVariantList>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <optional>

namespace tarnwell {

class ActiveTaskService;
class AppSettingsStore;
class CountdownService;
class Day;
class QuickAddDraft;
class RolloverService;
class RoutineRepository;
class RoutineService;
class SoundService;
class Task;
class TaskEditor;
class TaskListModel;

// The popover's fixed texts from the shared string tables (`texts` in QML),
// made again in a new language.
struct PopoverTexts
{
    Q_GADGET
    QML_VALUE_TYPE(popoverTexts)
    Q_PROPERTY(QString today MEMBER today)
    Q_PROPERTY(QString repeat MEMBER repeat)
    Q_PROPERTY(QString undo MEMBER undo)
    Q_PROPERTY(QString moveOverflow MEMBER moveOverflow)
    Q_PROPERTY(QString moveOverflowShort MEMBER moveOverflowShort)
    Q_PROPERTY(QString rollForward MEMBER rollForward)
    Q_PROPERTY(QString archive MEMBER archive)
    Q_PROPERTY(QString dismiss MEMBER dismiss)
    Q_PROPERTY(QString routineLoad MEMBER routineLoad)
    Q_PROPERTY(QString routineSaveQueue MEMBER routineSaveQueue)
    Q_PROPERTY(QString routineManage MEMBER routineManage)
    Q_PROPERTY(QString routineNone MEMBER routineNone)
    Q_PROPERTY(QString routineTooltip MEMBER routineTooltip)
    Q_PROPERTY(QString routineNameField MEMBER routineNameField)
    Q_PROPERTY(QString routineNamePlaceholder MEMBER routineNamePlaceholder)
    Q_PROPERTY(QString completionTitle MEMBER completionTitle)
    Q_PROPERTY(QString completionNextUp MEMBER completionNextUp)
    Q_PROPERTY(QString completionQueueEmpty MEMBER completionQueueEmpty)
    Q_PROPERTY(QString completionStart MEMBER completionStart)
public:
    QString today, repeat, undo, moveOverflow, moveOverflowShort, rollForward, archive, dismiss, routineLoad,
        routineSaveQueue, routineManage, routineNone, routineTooltip, routineNameField, routineNamePlaceholder,
        completionTitle, completionNextUp, completionQueueEmpty, completionStart;
};

// What the popover shows and does: one day's list (today by default), the
// task-in-hand card, the day plan footer, the rollover bar, the routine menu,
// toasts and the next-up screen after a completion. The QML only binds to
// this object and calls its operations.
class PopoverModel : public QObject, public CompletionPresenter
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_MOC_INCLUDE("views/QuickAddDraft.h")
    Q_MOC_INCLUDE("views/TaskEditor.h")
    Q_MOC_INCLUDE("views/TaskListModel.h")
    // The shown day.
    Q_PROPERTY(int dayOffset READ dayOffset NOTIFY dayChanged)
    Q_PROPERTY(bool isToday READ isToday NOTIFY dayChanged)
    Q_PROPERTY(QString dayTitle READ dayTitle NOTIFY dayChanged)
    Q_PROPERTY(QString dayDate READ dayDate NOTIFY dayChanged)
    // The rows' inline editor.
    Q_PROPERTY(tarnwell::TaskEditor *editor READ editorObject CONSTANT)
    Q_PROPERTY(tarnwell::TaskListModel *tasks READ tasksObject CONSTANT)
    Q_PROPERTY(tarnwell::QuickAddDraft *draft READ draftObject CONSTANT)
    // The task-in-hand card.
    Q_PROPERTY(bool hasTaskInHand READ hasTaskInHand NOTIFY cardChanged)
    Q_PROPERTY(QString taskInHandId READ taskInHandId NOTIFY cardChanged)
    Q_PROPERTY(QString cardTitle READ cardTitle NOTIFY cardChanged)
    Q_PROPERTY(QString cardNotes READ cardNotes NOTIFY cardChanged)
    Q_PROPERTY(QString cardStatus READ cardStatus NOTIFY cardChanged)
    Q_PROPERTY(QString timerLabel READ timerLabel NOTIFY cardChanged)
    Q_PROPERTY(bool timerRunning READ timerRunning NOTIFY cardChanged)
    Q_PROPERTY(QString countdownText READ countdownText NOTIFY cardChanged)
    Q_PROPERTY(QString countdownCaption READ countdownCaption NOTIFY cardChanged)
    Q_PROPERTY(double progress READ progress NOTIFY cardChanged)
    Q_PROPERTY(bool isOverdue READ isOverdue NOTIFY cardChanged)
    Q_PROPERTY(int extendMinutes READ extendMinutes NOTIFY cardChanged)
    Q_PROPERTY(QString extendLabel READ extendLabel NOTIFY cardChanged)
    Q_PROPERTY(QString extendTooltip READ extendTooltip NOTIFY cardChanged)
    // The day plan footer.
    Q_PROPERTY(QString footerSummary READ footerSummary NOTIFY footerChanged)
    Q_PROPERTY(QString footerAccessibleSummary READ footerAccessibleSummary NOTIFY footerChanged)
    Q_PROPERTY(QString footerWorkdayEnd READ footerWorkdayEnd NOTIFY footerChanged)
    Q_PROPERTY(QString footerOverflow READ footerOverflow NOTIFY footerChanged)
    Q_PROPERTY(QString footerUntimed READ footerUntimed NOTIFY footerChanged)
    Q_PROPERTY(int overflowCount READ overflowCount NOTIFY footerChanged)
    // The rollover bar (today only).
    Q_PROPERTY(bool rolloverVisible READ rolloverVisible NOTIFY rolloverChanged)
    Q_PROPERTY(QString rolloverText READ rolloverText NOTIFY rolloverChanged)
    // The routine menu: a list of {id, name}.
    Q_PROPERTY(QVariantList routines READ routines NOTIFY routinesChanged)
    // The toast at the front of the queue.
    Q_PROPERTY(bool toastVisible READ toastVisible NOTIFY toastChanged)
    Q_PROPERTY(QString toastText READ toastText NOTIFY toastChanged)
    Q_PROPERTY(bool toastCanUndo READ toastCanUndo NOTIFY toastChanged)
    // The next-up screen.
    Q_PROPERTY(bool nextUpVisible READ nextUpVisible NOTIFY nextUpChanged)
    Q_PROPERTY(QString nextUpFocused READ nextUpFocused NOTIFY nextUpChanged)
    Q_PROPERTY(bool nextUpHasTask READ nextUpHasTask NOTIFY nextUpChanged)
    Q_PROPERTY(QString nextUpTaskTitle READ nextUpTaskTitle NOTIFY nextUpChanged)
    Q_PROPERTY(QString nextUpTaskDuration READ nextUpTaskDuration NOTIFY nextUpChanged)
    Q_PROPERTY(QString nextUpSkipLabel READ nextUpSkipLabel NOTIFY nextUpChanged)
    // Fixed texts from the shared string tables.
    Q_PROPERTY(tarnwell::PopoverTexts texts READ texts NOTIFY textsChanged)
public:
    struct Constants
    {
        static constexpr int toastMilliseconds = 4000;
    };

    struct Services
    {
        ActiveTaskService &activeTasks;
        CountdownService &countdown;
        SoundService &sound;
        AppSettingsStore &settings;
        RoutineRepository &routines;
        RoutineService &routineService;
        RolloverService &rollover;
        Calendar calendar;
        Clock clock;
    };

    explicit PopoverModel(Services services, QObject *parent = nullptr);
    ~PopoverModel() override;

    TaskListModel &tasks() const { return *m_tasks; }
    TaskEditor &editor() const { return *m_editor; }
    TaskEditor *editorObject() const { return m_editor; }
    QuickAddDraft &draft() const { return *m_draft; }
    TaskListModel *tasksObject() const { return m_tasks; }
    QuickAddDraft *draftObject() const { return m_draft; }

    int dayOffset() const { return m_dayOffset; }
    bool isToday() const { return m_dayOffset == 0; }
    QString dayTitle() const;
    QString dayDate() const;
    // The shown day, made when asked to.
    Day *shownDay(bool create = false) const;

    bool hasTaskInHand() const { return m_card.task != nullptr; }
    QString taskInHandId() const;
    QString cardTitle() const { return m_card.title; }
    QString cardNotes() const { return m_card.notes; }
    QString cardStatus() const { return m_card.status; }
    QString timerLabel() const { return m_card.timerLabel; }
    bool timerRunning() const { return m_card.running; }
    QString countdownText() const { return m_card.countdown; }
    QString countdownCaption() const { return m_card.caption; }
    double progress() const { return m_card.progress; }
    bool isOverdue() const { return m_card.overdue; }
    int extendMinutes() const;
    QString extendLabel() const;
    QString extendTooltip() const;

    QString footerSummary() const { return m_footer.summary; }
    QString footerAccessibleSummary() const { return m_footer.accessibleSummary; }
    QString footerWorkdayEnd() const { return m_footer.workdayEnd; }
    QString footerOverflow() const { return m_footer.overflow; }
    QString footerUntimed() const { return m_footer.untimed; }
    int overflowCount() const { return int(m_overflow.size()); }

    bool rolloverVisible() const { return !m_rolloverTasks.isEmpty(); }
    QString rolloverText() const { return m_rolloverText; }

    QVariantList routines() const { return m_routineList; }

    bool toastVisible() const { return !m_toasts.isEmpty(); }
    QString toastText() const { return m_toasts.isEmpty() ? QString() : m_toasts.first().text; }
    bool toastCanUndo() const { return !m_toasts.isEmpty() && bool(m_toasts.first().undo); }

    bool nextUpVisible() const { return m_nextUp.has_value(); }
    QString nextUpFocused() const;
    bool nextUpHasTask() const { return m_nextUp && m_nextUp->nextTaskID.has_value(); }
    QString nextUpTaskTitle() const;
    QString nextUpTaskDuration() const;
    QString nextUpSkipLabel() const;
    const std::optional<NextUpModalContext> &nextUpContext() const { return m_nextUp; }

    PopoverTexts texts() const;

    // Day navigation.
    Q_INVOKABLE void previousDay();
    Q_INVOKABLE void nextDay();
    Q_INVOKABLE void today();
    // The day `offset` days from today (a history search result).
    Q_INVOKABLE void showDay(int offset) { setDayOffset(offset); }

    // The task-in-hand card.
    Q_INVOKABLE void toggleTimer();
    Q_INVOKABLE void completeTaskInHand();
    // Adds minutes to the plan; 0 or less adds the overtime preset.
    Q_INVOKABLE void extendTaskInHand(int minutes = 0);

    // Task rows; ids are task ids as text.
    Q_INVOKABLE void completeTask(const QString &id);
    Q_INVOKABLE void reopenTask(const QString &id);
    // Today's task becomes the task in hand and its timer runs.
    Q_INVOKABLE bool startNow(const QString &id);
    Q_INVOKABLE void moveToTomorrow(const QString &id);
    Q_INVOKABLE void moveUp(const QString &id);
    Q_INVOKABLE void moveDown(const QString &id);
    // The open tasks of the shown day in their new order; "" or the reason.
    Q_INVOKABLE QString reorder(const QStringList &ids);
    // The shown day's open task `id` moves to position `to` (drag and drop).
    Q_INVOKABLE QString moveToPosition(const QString &id, int to);
    Q_INVOKABLE void deleteTask(const QString &id);

    // The footer: the tasks past the workday go to tomorrow, keeping their order.
    Q_INVOKABLE void moveOverflowToTomorrow();

    // The rollover bar.
    Q_INVOKABLE void rollForward();
    Q_INVOKABLE void archiveRollover();
    Q_INVOKABLE void dismissRollover();

    // The routine menu.
    Q_INVOKABLE void loadRoutine(const QString &id);
    Q_INVOKABLE void saveQueueAsRoutine(const QString &name);
    // Asks for the routines window (manageRoutinesRequested).
    Q_INVOKABLE void manageRoutines();

    // Toasts.
    Q_INVOKABLE void undoToast();
    Q_INVOKABLE void dismissToast();
    void showToast(const QString &text, std::function<void()> undo = {});

    // The next-up screen.
    Q_INVOKABLE void startNextUp();
    Q_INVOKABLE void skipNextUp();

    // CompletionPresenter
    void presentNextUp(const NextUpModalContext &context) override;
    void updatePresentation() override;

    // Re-reads everything (the list, the card, the footer, the bar, the menu).
    Q_INVOKABLE void refresh();
    // The texts of a new language.
    void retranslate();

Q_SIGNALS:
    void dayChanged();
    void cardChanged();
    void footerChanged();
    void rolloverChanged();
    void routinesChanged();
    void toastChanged();
    void nextUpChanged();
    void textsChanged();
    // The routine menu's "manage" entry: the owner shows the routines window.
    void manageRoutinesRequested();

private:
    struct Card
    {
        Task *task = nullptr;
        QString title;
        QString notes;
        QString status;
        QString timerLabel;
        bool running = false;
        QString countdown;
        QString caption;
        double progress = 0;
        bool overdue = false;

        bool operator==(const Card &) const = default;
    };
    struct Footer
    {
        QString summary;
        QString accessibleSummary;
        QString workdayEnd;
        QString overflow;
        QString untimed;

        bool operator==(const Footer &) const = default;
    };
    struct Toast
    {
        QString text;
        std::function<void()> undo;
    };

    QDateTime now() const { return m_clock(); }
    QDateTime shownDate() const;
    // A task the user may change here: none of a past day unless editing
    // the history is switched on.
    Task *task(const QString &id) const;
    Task *editableTask(const QString &id) const;
    QList<Task *> openTasks() const;
    void refreshList();
    void refreshCard();
    void refreshFooter();
    void refreshRollover();
    void refreshRoutines();
    void setDayOffset(int offset);
    void popToast();
    // Runs a store change; a failure becomes a toast. True on success.
    bool attempt(const std::function<void()> &change);

    ActiveTaskService &m_activeTasks;
    CountdownService &m_countdown;
    SoundService &m_sound;
    AppSettingsStore &m_settings;
    RoutineRepository &m_routineRepository;
    RoutineService &m_routineService;
    RolloverService &m_rollover;
    Calendar m_calendar;
    Clock m_clock;

    TaskListModel *m_tasks;
    TaskEditor *m_editor;
    QuickAddDraft *m_draft;
    int m_dayOffset = 0;
    Card m_card;
    Footer m_footer;
    QList<Task *> m_overflow;
    QList<Task *> m_rolloverTasks;
    QString m_rolloverText;
    QVariantList m_routineList;
    QList<Toast> m_toasts;
    QTimer m_toastTimer;
    std::optional<NextUpModalContext> m_nextUp;
    bool m_refreshing = false;
};

} // namespace tarnwell
