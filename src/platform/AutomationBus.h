#pragma once

#include "ApplicationBus.h"

#include <QByteArray>
#include <QDBusContext>
#include <QPointer>

namespace tarnwell {
class SyncService;
class TaskAutomation;
} // namespace tarnwell

namespace tarnwell::platform {

// The single-instance object with the automation interface beside
// org.freedesktop.Application: org.tarnwell.Tarnwell1, described by
// org.tarnwell.Tarnwell1.xml (the adaptor is generated from it; Qt's
// generator stops at XML comments, so the description lives here).
//
// AddTask(s title, i durationMinutes, b urgent) -> s storedTitle: a task on
//   today (made when missing); minutes 0 or less: unplanned; urgent: first.
// AddQuickTask(s line) -> s storedTitle: one quick-add line ("Write · 45m !").
// Status() -> s: JSON of today's queue and the task in hand with its timer and
//   countdown (as `tarnwell status --json`). Tasks(s day) -> s: JSON of every
//   task of a day ("YYYY-MM-DD", "" for today).
// Complete(s taskId) -> s title: the task in hand ("") or the open task with
//   this UUID, through the completion flow without the next-up screen.
// Start(), Pause(), Toggle() -> s title: the timer of the task in hand.
// Export(s format, s from, s to) -> ay: json, csv or ics; days "" = open.
// Import(ay json) -> (i days, i tasks, i routines, i skipped): all or nothing.
// Sync() -> s: asks for a sync pass and answers when it has ended, with JSON
//   of its outcome ({"ok", "error", "message", "pulled", "pushed", "removed"}).
// SyncStatus() -> s: JSON of the account, the state, the last sync and the
//   last error (as `tarnwell sync --status --json`).
// Changed: the queue, the task in hand or its timer changed.
// SyncChanged: the sync state, the last sync time or the last error changed.
//
// Errors (org.tarnwell.Tarnwell1.Error.*): InvalidArgument, Validation (a
// title rule), NoTaskInHand, TaskNotFound, Import, Store, NotReady (the agent
// is still starting). Texts are in the agent's language; an error changes
// nothing.
class AutomationBus : public ApplicationBus, protected QDBusContext
{
    Q_OBJECT
public:
    struct Constants
    {
        static constexpr const char *interfaceName = "org.tarnwell.Tarnwell1";
    };

    explicit AutomationBus(QDBusConnection connection, QObject *parent = nullptr);
    ~AutomationBus() override;

    void setAutomation(TaskAutomation *automation);
    void setSync(SyncService *sync);

    // The interface's methods (called by the generated adaptor).
    QString AddTask(const QString &title, int durationMinutes, bool urgent);
    QString AddQuickTask(const QString &line);
    QString Status();
    QString Tasks(const QString &day);
    QString Complete(const QString &taskId);
    QString Start();
    QString Pause();
    QString Toggle();
    QByteArray Export(const QString &format, const QString &from, const QString &to);
    int Import(const QByteArray &document, int &tasks, int &routines, int &skipped);
    QString Sync();
    QString SyncStatus();

Q_SIGNALS:
    void Changed();
    void SyncChanged();

private:
    template<typename Result, typename Work>
    Result answer(Work work);

    QPointer<TaskAutomation> m_automation;
    QPointer<SyncService> m_sync;
};

} // namespace tarnwell::platform
