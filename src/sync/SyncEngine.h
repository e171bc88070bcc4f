#pragma once

#include "ical/VTodoMapping.h"
#include "kit/Clock.h"
#include "persistence/SyncStateRepository.h"
#include "sync/CalDavClient.h"
#include "sync/SyncTypes.h"

#include <QDate>
#include <QHash>
#include <QObject>
#include <QSet>

#include <deque>
#include <functional>
#include <memory>
#include <optional>

class QNetworkAccessManager;

namespace tarnwell {
class Day;
class DayRepository;
class StoreContext;
class LogCheckpointer;
class Task;
} // namespace tarnwell

namespace tarnwell::sync {

// Two-way sync of the store's tasks with one CalDAV collection of to-dos.
//
// A pass pulls first: the changes since the stored sync token (or, where the
// server has no tokens or forgot ours, every etag compared with what the
// store knows), fetched in batches and applied to the store in slices that
// yield to the event loop. A task changed only on the server takes the
// server's copy; one changed on both sides is merged field by field
// (mergeTodo); one deleted on the server is deleted here unless it changed
// here since. The new token is stored with the last slice. Then it pushes:
// tasks never written (If-None-Match), tasks changed since both sides agreed
// (If-Match), and deletions. Everything it knows between passes is in the
// store (SyncStateRepository), so a pass cut short anywhere loses nothing.
class SyncEngine : public QObject, public SyncPass
{
    Q_OBJECT
public:
    struct Tuning
    {
        int fetchBatch = 100; // resources per calendar-multiget
        // Per slice on the main loop: resources applied and saved in about
        // this much time (the save's part estimated from the last saves), and
        // at most this many.
        int sliceMilliseconds = 3;
        int sliceItems = 15;
        // Saved resources between two checkpoints of the store's log. Each
        // one lets the log start over, and the first commit after that waits
        // for the disk once: a few per pass, not one per slice.
        int checkpointItems = 120;
        int parallelWrites = 4; // PUT and DELETE requests in flight at once
        int scanRows = 200; // tasks looked at per turn when finding what to write
    };

    SyncEngine(StoreContext &context, DayRepository &days, QNetworkAccessManager &network, Clock clock,
               QObject *parent = nullptr);
    ~SyncEngine() override;

    void setTuning(const Tuning &tuning) { m_tuning = tuning; }
    bool isRunning() const { return m_pass != nullptr; }

    void run(const SyncAccount &account, const QString &password, Done done) override;
    void cancel() override;
    void forget(bool removeLocalCopies) override;
    bool isSavingServerChanges() const override { return m_savingServerChanges; }

    // A foreign to-do's summary as a task title: one line, trimmed, at most
    // as long as a title may be; an empty one becomes the first line of the
    // notes, else a placeholder.
    static QString taskTitle(const QString &summary, const QString &notes);

Q_SIGNALS:
    // After each slice saved to the store (tests and benches watch the pace).
    void sliceSaved(int applied);

private:
    struct Pass;
    struct Incoming
    {
        QString href;
        QString etag;
        QByteArray data;
        bool removed = false;
    };
    struct Write
    {
        enum class Kind { create, update, remove } kind;
        QUuid taskId;
        QString href;
    };

    using StateOp = std::function<void()>;

    // Pull.
    void askChanges(const QString &token);
    // The tombstones the store holds, and for a whole listing every etag;
    // false when the pass failed.
    bool loadKnown(bool everything);
    // The etag the store has for `href`, if it has the resource (throws StoreError).
    std::optional<QString> knownEtag(const QString &href) const;
    // Takes in what the server listed, a slice per turn of the event loop;
    // `everything`: the whole collection, so what is missing from it was removed.
    void takeListing(CalDavChanges listing, bool everything);
    void queueListed();
    void queueChanged(const QString &href, const QString &etag);
    void fetchNext();
    void kick(); // an apply slice on the next turn of the event loop
    void applySlice();
    void applyOne(const Incoming &in, QList<StateOp> &ops);
    void applyRemoval(const QString &href, QList<StateOp> &ops);
    // Merges `data` (the server's copy at `etag`) into the task of `item`, or
    // into `task` met for the first time when `item` is empty.
    void mergeInto(Task *task, const std::optional<SyncStateRepository::Item> &item, const QString &href,
                   const QString &etag, const QByteArray &data, const TodoFields &remote, QList<StateOp> &ops);
    void continuePull(); // the next slice, if anything waits for one
    void finishPull();
    // A checkpoint of the store's log, made off the main loop.
    void askCheckpoint();
    // Made at the first pass over a store file (none for one in memory).
    LogCheckpointer *checkpointer();

    // Push.
    void startPush();
    void scanWrites(); // a page of the tasks to write per turn of the event loop
    void pumpWrites();
    void startWrite(const Write &write);
    void writeAnswered(const Write &write, const CalDavStatus &status, const QString &etag, const QByteArray &text,
                       const QString &fingerprint);
    void conflictFetched(const Write &write, const CalDavStatus &status, const QList<CalDavResource> &found);
    void flushOps();
    void scheduleFlush();

    void fail(const CalDavStatus &status);
    void finish();
    // `relaxed`: the commit does not wait for the disk (see trySave).
    std::optional<CalDavStatus> trySave(const QList<StateOp> &ops, bool relaxed);
    bool save(const QList<StateOp> &ops, bool relaxed); // fails the pass when the store refuses
    // Schedules `step` on the next turn of the event loop, for this pass only.
    void later(void (SyncEngine::*step)());
    bool isCurrent(quint64 generation) const { return m_pass && m_generation == generation; }

    // The task as a to-do, against the server's last copy where there is one.
    TodoFields localFields(const Task &task, const std::optional<TodoFields> &base) const;
    void applyFields(Task *task, const TodoFields &fields, bool isNew);
    Day *dayFor(const QDate &date);

    StoreContext &m_context;
    DayRepository &m_days;
    SyncStateRepository m_state;
    CalDavClient *m_client;
    Clock m_clock;
    Tuning m_tuning;

    quint64 m_generation = 0;
    std::unique_ptr<LogCheckpointer> m_checkpointer;
    std::unique_ptr<Pass> m_pass;
    bool m_savingServerChanges = false;
    qint64 m_saveNsPerItem = 150000; // a slice's save per resource, as saves went lately
};

} // namespace tarnwell::sync
