#include "SyncEngine.h"

#include "TodoMerge.h"
#include "kit/Logging.h"
#include "persistence/Day.h"
#include "persistence/DayRepository.h"
#include "persistence/LogCheckpointer.h"
#include "persistence/StoreContext.h"
#include "persistence/Task.h"
#include "persistence/TaskRepository.h"

#include <QElapsedTimer>
#include <QSqlQuery>
#include <QTextBoundaryFinder>
#include <QTimer>

#include <algorithm>
#include <limits>

namespace tarnwell::sync {

namespace {

constexpr int maxPlannedMinutes = 9999; // what the task editor accepts

// A to-do as this store can hold it: the title a task may have, planned
// minutes within the editor's range, instants in whole seconds (what
// iCalendar keeps).
TodoFields normalized(TodoFields f)
{
    f.title = SyncEngine::taskTitle(f.title, f.notes);
    if (f.plannedMinutes && *f.plannedMinutes > maxPlannedMinutes)
        f.plannedMinutes = maxPlannedMinutes;
    if (f.completedAt)
        f.completedAt = QDateTime::fromSecsSinceEpoch(f.completedAt->toSecsSinceEpoch(), Qt::UTC);
    return f;
}

// Equal in everything a task holds (not the uid, not the edit time).
bool sameContent(const TodoFields &a, const TodoFields &b)
{
    TodoFields x = a;
    TodoFields y = b;
    x.uid = y.uid;
    x.lastModified = y.lastModified;
    return x == y;
}

QString hrefOf(const QUrl &url)
{
    return url.toString(QUrl::FullyEncoded);
}

bool isFatal(CalDavError error)
{
    return error == CalDavError::network || error == CalDavError::unauthorized || error == CalDavError::certificate ||
        error == CalDavError::notCalDav;
}

// Commits that do not wait for the disk, while it lives: SQLite's NORMAL
// instead of the store's FULL, and only on a write-ahead log, where a power
// cut can undo the last commits but never damages the file or reorders them.
class RelaxedCommits
{
public:
    explicit RelaxedCommits(const QSqlDatabase &db)
        : m_db(db)
    {
        QSqlQuery q(m_db);
        if (!q.exec(QStringLiteral("PRAGMA journal_mode")) || !q.next() ||
            q.value(0).toString().compare(QLatin1String("wal"), Qt::CaseInsensitive) != 0)
            return;
        if (!q.exec(QStringLiteral("PRAGMA synchronous")) || !q.next() || q.value(0).toInt() <= normal)
            return;
        m_level = q.value(0).toInt();
        if (!q.exec(QStringLiteral("PRAGMA synchronous = %1").arg(normal)))
            m_level = 0;
    }
    ~RelaxedCommits()
    {
        if (m_level > 0)
            QSqlQuery(m_db).exec(QStringLiteral("PRAGMA synchronous = %1").arg(m_level));
    }
    RelaxedCommits(const RelaxedCommits &) = delete;
    RelaxedCommits &operator=(const RelaxedCommits &) = delete;

private:
    static constexpr int normal = 1;
    QSqlDatabase m_db;
    int m_level = 0; // the level to go back to; 0: nothing was changed
};

// SQLite copies its write-ahead log into the database file (a checkpoint)
// inside whichever commit pushes the log past 1,000 pages: a thousand pages
// in one step, 4–6 ms of the main thread's CPU on top of the commit, and two
// disk flushes. While it lives, that automatic checkpoint is off and the
// pass asks for one after each slice's worth of saved resources, when the
// log holds only their pages; it runs off the main loop (LogCheckpointer).
// Durability is unchanged: a checkpoint waits for the disk as before, only
// not on the main thread.
class OwnCheckpoints
{
public:
    OwnCheckpoints(const QSqlDatabase &db, LogCheckpointer *background)
        : m_db(db)
        , m_background(background)
    {
        if (!m_background)
            return;
        QSqlQuery q(m_db);
        if (!q.exec(QStringLiteral("PRAGMA journal_mode")) || !q.next() ||
            q.value(0).toString().compare(QLatin1String("wal"), Qt::CaseInsensitive) != 0)
            return;
        if (!q.exec(QStringLiteral("PRAGMA wal_autocheckpoint")) || !q.next() || q.value(0).toInt() <= 0)
            return;
        m_pages = q.value(0).toInt();
        if (!q.exec(QStringLiteral("PRAGMA wal_autocheckpoint = 0")))
            m_pages = 0;
    }
    ~OwnCheckpoints()
    {
        if (m_pages > 0)
            QSqlQuery(m_db).exec(QStringLiteral("PRAGMA wal_autocheckpoint = %1").arg(m_pages));
    }
    OwnCheckpoints(const OwnCheckpoints &) = delete;
    OwnCheckpoints &operator=(const OwnCheckpoints &) = delete;

    bool active() const { return m_pages > 0; }
    // Returns at once; the copy is made on the checkpointer's thread.
    void request() const
    {
        if (m_pages > 0)
            m_background->request();
    }

private:
    QSqlDatabase m_db;
    LogCheckpointer *m_background = nullptr;
    int m_pages = 0; // the automatic threshold to go back to; 0: nothing was changed
};

} // namespace

struct SyncEngine::Pass
{
    Pass(const QSqlDatabase &db, LogCheckpointer *background)
        : checkpoints(db, background)
    {
    }
    OwnCheckpoints checkpoints;
    SyncAccount account;
    Done done;
    SyncOutcome outcome;
    QString collection; // hrefOf(account.collection)
    QString newToken;

    // Pull.
    QHash<QString, QString> knownEtags; // href → etag of every item, read for a whole listing only
    QHash<QString, QString> tombstones; // href → etag
    CalDavChanges listing; // what the server listed, taken in a slice per turn
    qsizetype listed = 0;
    bool everything = false; // the listing is the whole collection
    QSet<QString> present; // of a whole listing, the hrefs taken in so far
    QList<QUrl> toFetch; // not yet asked for: each batch leaves as it is sent, not all at the end
    std::deque<Incoming> incoming;
    QList<Task *> madeInSlice; // tasks the slice under way made for to-dos met for the first time
    QHash<QDate, Day *> days;

    // Push.
    qint64 scannedRow = 0;
    bool scanning = false;
    std::deque<Write> writes;
    QList<StateOp> pendingOps;
    CalDavStatus firstFailure; // a resource the server refused; the pass goes on
    int inFlight = 0;

    bool resetState = false; // the store's state belongs to another collection
    bool fetching = false;
    bool sliceScheduled = false;
    bool flushScheduled = false;
    int sinceCheckpoint = 0; // resources saved since the last checkpoint was asked for
};

SyncEngine::SyncEngine(StoreContext &context, DayRepository &days, QNetworkAccessManager &network, Clock clock,
                       QObject *parent)
    : QObject(parent)
    , m_context(context)
    , m_days(days)
    , m_state(context)
    , m_client(new CalDavClient(network, this))
    , m_clock(std::move(clock))
{
}

SyncEngine::~SyncEngine() = default;

QString SyncEngine::taskTitle(const QString &summary, const QString &notes)
{
    const auto oneLine = [](QString text) {
        text.replace(QLatin1Char('\r'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
        return text.trimmed();
    };
    QString title = oneLine(summary);
    if (title.isEmpty())
        title = oneLine(notes.section(QLatin1Char('\n'), 0, 0));
    if (title.isEmpty())
        //: The title of a task that came from a to-do without a summary (written by another calendar program)
        //% "Untitled to-do"
        title = qtTrId("sync.task.untitled");
    const int limit = TaskRepository::Limits::titleCharacters;
    if (TaskRepository::characterCount(title) > limit) {
        // Cut on a character boundary and mark the cut.
        QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, title);
        qsizetype end = 0;
        for (int i = 0; i < limit - 1 && end >= 0; ++i)
            end = finder.toNextBoundary();
        title = title.left(end).trimmed() + QChar(0x2026);
    }
    return title;
}

// ---------------------------------------------------------------- the pass

void SyncEngine::run(const SyncAccount &account, const QString &password, Done done)
{
    cancel();
    m_pass = std::make_unique<Pass>(m_context.database(), checkpointer());
    m_pass->account = account;
    m_pass->done = std::move(done);
    m_pass->collection = hrefOf(account.collection);
    const quint64 generation = ++m_generation;
    if (!account.isComplete()) {
        QTimer::singleShot(0, this, [this, generation] {
            if (isCurrent(generation))
                fail(CalDavStatus{CalDavError::notFound, 0, QStringLiteral("the sync account is incomplete")});
        });
        return;
    }
    m_client->setCredentials(account.user, password);
    try {
        const auto stored = m_state.collection();
        m_pass->resetState = stored && *stored != m_pass->collection;
        const QString token = m_pass->resetState ? QString() : m_state.syncToken();
        qCInfo(lcServices).noquote() << QStringLiteral("Sync pass with %1 started (%2)")
                                            .arg(m_pass->collection,
                                                 token.isEmpty() ? QStringLiteral("everything")
                                                                 : QStringLiteral("changes since the last token"));
        askChanges(token);
    } catch (const StoreError &error) {
        const CalDavStatus status{CalDavError::server, 0,
                                  QStringLiteral("reading the sync state: %1").arg(error.description())};
        QTimer::singleShot(0, this, [this, generation, status] {
            if (isCurrent(generation))
                fail(status);
        });
    }
}

void SyncEngine::cancel()
{
    if (!m_pass)
        return;
    ++m_generation;
    // What the slices saved is consistent on its own; what the server
    // accepted is noted before the pass goes.
    if (!m_pass->pendingOps.isEmpty())
        trySave(std::exchange(m_pass->pendingOps, {}), !m_context.hasChanges());
    m_pass.reset();
    qCInfo(lcServices) << "Sync pass cancelled";
}

void SyncEngine::forget(bool removeLocalCopies)
{
    cancel();
    try {
        if (removeLocalCopies) {
            for (const QUuid &id : m_state.syncedTasks())
                if (Task *task = m_context.existingObject<Task>(id))
                    m_context.deleteObject(task);
        }
        // The deletions' tombstones go with everything else.
        m_context.save([this] { m_state.clear(); });
        qCInfo(lcServices).noquote() << QStringLiteral("Sync state forgotten%1")
                                            .arg(removeLocalCopies ? QStringLiteral(", synced tasks removed here")
                                                                   : QString());
    } catch (const StoreError &error) {
        qCWarning(lcServices).noquote() << "Forgetting the sync state failed:" << error.description();
    }
}

void SyncEngine::fail(const CalDavStatus &status)
{
    if (!m_pass)
        return;
    qCWarning(lcServices).noquote() << QStringLiteral("Sync pass failed: %1").arg(status.detail);
    m_pass->outcome.status = status;
    finish();
}

void SyncEngine::finish()
{
    std::optional<CalDavStatus> unsaved;
    if (!m_pass->pendingOps.isEmpty())
        unsaved = trySave(std::exchange(m_pass->pendingOps, {}), !m_context.hasChanges());
    std::unique_ptr<Pass> pass = std::move(m_pass);
    if (unsaved && pass->outcome.status.ok())
        pass->outcome.status = *unsaved;
    ++m_generation;
    pass->outcome.finishedAt = m_clock();
    if (pass->outcome.status.ok() && !pass->firstFailure.ok())
        pass->outcome.status = pass->firstFailure;
    if (pass->outcome.status.ok())
        qCInfo(lcServices).noquote() << QStringLiteral("Sync pass done: %1 pulled, %2 pushed, %3 removed")
                                            .arg(pass->outcome.pulled)
                                            .arg(pass->outcome.pushed)
                                            .arg(pass->outcome.removed);
    if (pass->done)
        pass->done(pass->outcome);
}

// A pass's own saves are relaxed: they wait for no disk flush (several
// milliseconds each, and at times a hundred, on the main thread). Nothing of
// the user's is at stake: their changes are saved as they are made, a save
// that carries someone else's pending changes is never relaxed, and the next
// ordinary save flushes these commits too. What a power cut can take back is
// a pass's last commits, in order, and the next pass does them again: the
// sync token goes in the last slice's commit, so it is lost with what it
// covers; a write the server took but the store forgot comes back as a
// conflict with the same content and is matched.
std::optional<CalDavStatus> SyncEngine::trySave(const QList<StateOp> &ops, bool relaxed)
{
    try {
        std::optional<RelaxedCommits> lazily;
        if (relaxed)
            lazily.emplace(m_context.database());
        m_context.save([&ops] {
            for (const StateOp &op : ops)
                op();
        });
        return std::nullopt;
    } catch (const StoreError &error) {
        return CalDavStatus{CalDavError::server, 0, QStringLiteral("saving to the store: %1").arg(error.description())};
    }
}

bool SyncEngine::save(const QList<StateOp> &ops, bool relaxed)
{
    if (const auto failed = trySave(ops, relaxed)) {
        fail(*failed);
        return false;
    }
    return true;
}

// ---------------------------------------------------------------- pull

void SyncEngine::askChanges(const QString &token)
{
    const quint64 generation = m_generation;
    m_client->changesSince(
        m_pass->account.collection, token,
        [this, generation, token](const CalDavStatus &status, const CalDavChanges &changes) {
            if (!isCurrent(generation))
                return;
            if (status.error == CalDavError::invalidSyncToken && !token.isEmpty()) {
                // The server forgot our token: everything again, compared by etag.
                qCInfo(lcServices) << "The server no longer knows the sync token; comparing every etag";
                askChanges(QString());
                return;
            }
            if (status.ok() && !changes.syncToken.isEmpty()) {
                // Nothing changed (the common pass): the known etags need not be read.
                const bool quiet = !token.isEmpty() && changes.changed.isEmpty() && changes.removed.isEmpty();
                if (!quiet && !loadKnown(token.isEmpty()))
                    return;
                takeListing(changes, token.isEmpty());
                return;
            }
            if (isFatal(status.error)) {
                fail(status);
                return;
            }
            // No incremental sync here: list every etag.
            m_client->listEtags(m_pass->account.collection,
                                [this, generation](const CalDavStatus &listed, const QList<CalDavResource> &all) {
                                    if (!isCurrent(generation))
                                        return;
                                    if (!listed.ok()) {
                                        fail(listed);
                                        return;
                                    }
                                    if (loadKnown(true))
                                        takeListing(CalDavChanges{QString(), all, {}}, true);
                                });
        });
}

bool SyncEngine::loadKnown(bool everything)
{
    if (m_pass->resetState)
        return true; // everything it knows belongs to another collection
    try {
        if (everything)
            m_pass->knownEtags = m_state.etags();
        for (const auto &t : m_state.tombstones())
            m_pass->tombstones.insert(t.href, t.etag);
        return true;
    } catch (const StoreError &error) {
        fail(CalDavStatus{CalDavError::server, 0,
                          QStringLiteral("reading the sync state: %1").arg(error.description())});
        return false;
    }
}

void SyncEngine::takeListing(CalDavChanges listing, bool everything)
{
    m_pass->newToken = listing.syncToken;
    m_pass->listing = std::move(listing);
    m_pass->listed = 0;
    m_pass->everything = everything;
    queueListed();
}

void SyncEngine::queueListed()
{
    QElapsedTimer clock;
    clock.start();
    const qint64 budgetNs = qint64(m_tuning.sliceMilliseconds) * 1000000;
    const CalDavChanges &listing = m_pass->listing;
    const qsizetype total = listing.changed.size() + listing.removed.size();
    try {
        for (; m_pass->listed < total; ++m_pass->listed) {
            if (m_pass->listed % 64 == 63 && clock.nsecsElapsed() >= budgetNs) {
                later(&SyncEngine::queueListed);
                return;
            }
            if (m_pass->listed < listing.changed.size()) {
                const CalDavResource &r = listing.changed.at(m_pass->listed);
                const QString href = hrefOf(r.url);
                if (m_pass->everything)
                    m_pass->present.insert(href);
                queueChanged(href, r.etag);
            } else {
                const QString href = hrefOf(listing.removed.at(m_pass->listed - listing.changed.size()));
                if (knownEtag(href) || m_pass->tombstones.contains(href))
                    m_pass->incoming.push_back({href, {}, {}, true});
            }
        }
    } catch (const StoreError &error) {
        fail(CalDavStatus{CalDavError::server, 0,
                          QStringLiteral("reading the sync state: %1").arg(error.description())});
        return;
    }
    if (m_pass->everything) {
        // What the store knows and the whole listing lacks was removed there.
        const QSet<QString> &present = m_pass->present;
        for (auto it = m_pass->knownEtags.cbegin(); it != m_pass->knownEtags.cend(); ++it)
            if (!present.contains(it.key()) && !it.value().isEmpty())
                m_pass->incoming.push_back({it.key(), {}, {}, true});
        for (auto it = m_pass->tombstones.cbegin(); it != m_pass->tombstones.cend(); ++it)
            if (!present.contains(it.key()))
                m_pass->incoming.push_back({it.key(), {}, {}, true});
    }
    m_pass->listing = {};
    m_pass->present = {};
    fetchNext();
    kick();
}

void SyncEngine::later(void (SyncEngine::*step)())
{
    const quint64 generation = m_generation;
    // A timer, not a posted call: the main loop's due timers and input are
    // served before it, so no two steps of a pass run back to back.
    auto *timer = new QTimer(this);
    timer->setSingleShot(true);
    connect(timer, &QTimer::timeout, this, [this, timer, generation, step] {
        timer->deleteLater();
        if (isCurrent(generation))
            (this->*step)();
    });
    timer->start(0);
}

std::optional<QString> SyncEngine::knownEtag(const QString &href) const
{
    // A whole listing reads every etag at once; a few changes ask the store.
    if (m_pass->everything) {
        const auto it = m_pass->knownEtags.constFind(href);
        return it == m_pass->knownEtags.cend() ? std::nullopt : std::optional(*it);
    }
    return m_state.etagAt(href);
}

void SyncEngine::queueChanged(const QString &href, const QString &etag)
{
    // What the store already has (our own writes come back this way too),
    // and what was deleted here at the same etag, needs nothing.
    if (const auto known = knownEtag(href); known && !etag.isEmpty() && *known == etag)
        return;
    const auto dead = m_pass->tombstones.constFind(href);
    if (dead != m_pass->tombstones.cend() && *dead == etag)
        return;
    m_pass->toFetch.append(QUrl(href));
}

void SyncEngine::kick()
{
    if (!m_pass || m_pass->sliceScheduled)
        return;
    m_pass->sliceScheduled = true;
    later(&SyncEngine::applySlice);
}

void SyncEngine::fetchNext()
{
    if (m_pass->toFetch.isEmpty())
        return;
    const QList<QUrl> batch = m_pass->toFetch.first(std::min<qsizetype>(m_tuning.fetchBatch, m_pass->toFetch.size()));
    m_pass->toFetch.remove(0, batch.size());
    m_pass->fetching = true;
    const quint64 generation = m_generation;
    m_client->fetch(m_pass->account.collection, batch,
                    [this, generation](const CalDavStatus &status, const QList<CalDavResource> &found) {
                        if (!isCurrent(generation))
                            return;
                        m_pass->fetching = false;
                        if (!status.ok()) {
                            fail(status);
                            return;
                        }
                        for (const CalDavResource &r : found)
                            m_pass->incoming.push_back({hrefOf(r.url), r.etag, r.calendarData, false});
                        // The next batch travels while this one is applied.
                        fetchNext();
                        kick();
                    });
}

void SyncEngine::applySlice()
{
    m_pass->sliceScheduled = false;
    // Someone else's unsaved changes are saved first, in the ordinary way,
    // so that the slice's own save can be relaxed.
    if (m_context.hasChanges() && !save({}, false))
        return;
    // What the slice changes is announced by its own save (or, for anything
    // the save fails to write, on a later turn, as a change made here).
    m_context.processPendingChanges();
    QElapsedTimer clock;
    clock.start();
    QList<StateOp> ops;
    int applied = 0;
    if (m_pass->resetState) {
        m_pass->resetState = false;
        ops.append([this] { m_state.clear(); });
    }
    const qint64 budgetNs = qint64(m_tuning.sliceMilliseconds) * 1000000;
    // The slice's save comes out of the same budget: before one more is
    // applied, what saving it would cost (as saves went lately) is counted.
    const auto fits = [&] { return clock.nsecsElapsed() + qint64(applied + 1) * m_saveNsPerItem < budgetNs; };
    // At least one per slice, however short the slice.
    while (!m_pass->incoming.empty() && (applied == 0 || fits()) && applied < std::max(1, m_tuning.sliceItems)) {
        const Incoming in = std::move(m_pass->incoming.front());
        m_pass->incoming.pop_front();
        if (in.removed)
            applyRemoval(in.href, ops);
        else
            applyOne(in, ops);
        ++applied;
    }
    const bool pullDone = m_pass->incoming.empty() && !m_pass->fetching && m_pass->toFetch.isEmpty();
    if (pullDone) {
        // Everything the token covers is in this save or an earlier one.
        const QString url = m_pass->collection;
        const QString token = m_pass->newToken;
        ops.append([this, url, token] { m_state.setCollection(url, token); });
    }
    m_savingServerChanges = true;
    QElapsedTimer saving;
    saving.start();
    const auto failed = ops.isEmpty() ? std::nullopt : trySave(ops, true);
    if (applied > 0 && !failed)
        m_saveNsPerItem = (3 * m_saveNsPerItem + saving.nsecsElapsed() / applied) / 4;
    m_savingServerChanges = false;
    const QList<Task *> made = std::exchange(m_pass->madeInSlice, {});
    if (failed) {
        // The slice's notes of which task holds which to-do are not saved,
        // so the next pass meets other clients' to-dos for the first time
        // again: the tasks made for them now would be doubles once the store
        // takes saves again. Edits to tasks already held stay; the next pass
        // sees them as this machine's changes and sends them back.
        for (Task *task : made)
            if (task->isInserted())
                m_context.deleteObject(task);
        fail(*failed);
        return;
    }
    if (applied > 0)
        Q_EMIT sliceSaved(applied);
    m_pass->sinceCheckpoint += applied;
    if (!ops.isEmpty() && (pullDone || m_pass->sinceCheckpoint >= std::max(1, m_tuning.checkpointItems)))
        askCheckpoint();
    if (pullDone) {
        finishPull();
        return;
    }
    continuePull();
}

void SyncEngine::continuePull()
{
    m_pass->sliceScheduled = false;
    if (!m_pass->incoming.empty())
        kick();
    // Else the fetch under way calls again when it answers.
}

void SyncEngine::askCheckpoint()
{
    m_pass->sinceCheckpoint = 0;
    m_pass->checkpoints.request();
}

LogCheckpointer *SyncEngine::checkpointer()
{
    if (!m_checkpointer) {
        const QString file = m_context.database().databaseName();
        if (file.isEmpty() || file == QLatin1String(":memory:"))
            return nullptr;
        m_checkpointer = std::make_unique<LogCheckpointer>(file);
    }
    const LogCheckpointer::Report report = m_checkpointer->takeReport();
    if (!report.error.isEmpty())
        qCWarning(lcServices).noquote()
            << QStringLiteral("Sync: the store's log was not copied into the file: %1").arg(report.error);
    return m_checkpointer.get();
}

void SyncEngine::applyOne(const Incoming &in, QList<StateOp> &ops)
{
    const auto read = VTodoMapping::read(in.data);
    if (!read) {
        qCInfo(lcServices).noquote() << QStringLiteral("Sync: %1 holds no to-do; left alone").arg(in.href);
        return;
    }
    const TodoFields remote = normalized(*read);
    const QString href = in.href;
    const QString etag = in.etag;
    const QByteArray data = in.data;

    if (m_pass->tombstones.remove(href) > 0) {
        // Deleted here, changed there since: the other side's edit is kept.
        ops.append([this, href] { m_state.removeTombstone(href); });
    }

    std::optional<SyncStateRepository::Item> item = m_state.itemAt(href);
    Task *task = item ? m_context.existingObject<Task>(item->taskId) : nullptr;
    if (item && !task) {
        ops.append([this, href] { m_state.removeItem(href); });
        item.reset();
    }
    if (!task) {
        // A task met for the first time may still be ours: written by a
        // pass that stopped before it could note the write.
        const QUuid uid = QUuid::fromString(remote.uid);
        Task *same = uid.isNull() ? nullptr : m_context.existingObject<Task>(uid);
        if (same && !m_state.item(uid)) {
            mergeInto(same, std::nullopt, href, etag, data, remote, ops);
            return;
        }
        task = new Task;
        // Tarnwell's own to-dos keep their id from store to store, which
        // finds them again should this slice fail to save; any other is
        // known only by the notes the slice saves.
        if (!uid.isNull() && !same && !m_context.holds(uid))
            task->assignId(uid);
        else
            m_pass->madeInSlice.append(task);
        m_context.insertObject(task);
        const QDateTime now = m_clock();
        task->setCreatedAt(now);
        applyFields(task, remote, true);
        const QUuid id = task->id();
        // A day or a place in it filled in here goes back to the server, so
        // that every machine puts the to-do on the same day in the same place.
        const bool filledIn = !remote.day.isValid() || !remote.order;
        ops.append([this, id, href, etag, data, filledIn] {
            m_state.putItem({id, href, etag, data});
            if (filledIn)
                m_state.setFingerprint(id, QString());
        });
        m_pass->knownEtags.insert(href, etag);
        ++m_pass->outcome.pulled;
        return;
    }
    mergeInto(task, item, href, etag, data, remote, ops);
}

void SyncEngine::mergeInto(Task *task, const std::optional<SyncStateRepository::Item> &item, const QString &href,
                           const QString &etag, const QByteArray &data, const TodoFields &remote, QList<StateOp> &ops)
{
    std::optional<TodoFields> base;
    if (item)
        if (const auto b = VTodoMapping::read(item->base))
            base = normalized(*b);
    const TodoFields local = localFields(*task, base);
    const QUuid id = task->id();
    m_pass->knownEtags.insert(href, etag);

    if (base && sameContent(*base, remote)) {
        // Only the etag moved (our own write coming back, or another
        // client's edit of what we do not hold).
        ops.append([this, id, href, etag, data] {
            const QString kept = m_state.fingerprint(id);
            m_state.putItem({id, href, etag, data});
            m_state.setFingerprint(id, kept);
        });
        return;
    }
    const bool localChanged = !base || !sameContent(local, *base);
    const TodoFields merged = localChanged ? mergeTodo(base, local, task->updatedAt(), remote) : remote;
    if (!sameContent(merged, local)) {
        applyFields(task, merged, false);
        ++m_pass->outcome.pulled;
    }
    const bool agreed = sameContent(merged, remote);
    ops.append([this, id, href, etag, data, agreed] {
        m_state.putItem({id, href, etag, data});
        if (!agreed)
            m_state.setFingerprint(id, QString()); // the merge goes back to the server
    });
}

void SyncEngine::applyRemoval(const QString &href, QList<StateOp> &ops)
{
    m_pass->knownEtags.remove(href);
    if (m_pass->tombstones.remove(href) > 0) {
        ops.append([this, href] { m_state.removeTombstone(href); });
        return;
    }
    const auto item = m_state.itemAt(href);
    if (!item)
        return;
    Task *task = m_context.existingObject<Task>(item->taskId);
    if (!task) {
        ops.append([this, href] { m_state.removeItem(href); });
        return;
    }
    std::optional<TodoFields> base;
    if (const auto b = VTodoMapping::read(item->base))
        base = normalized(*b);
    if (base && sameContent(localFields(*task, base), *base)) {
        m_context.deleteObject(task);
        // The delete trigger made a tombstone: the server has nothing to delete.
        ops.append([this, href] { m_state.removeTombstone(href); });
        ++m_pass->outcome.removed;
    } else {
        // Changed here since: never lose a local edit; it goes back to the server.
        ops.append([this, href] { m_state.setEtag(href, QString()); });
    }
}

void SyncEngine::finishPull()
{
    startPush();
}

// ---------------------------------------------------------------- push

void SyncEngine::startPush()
{
    m_pass->scanning = true;
    m_pass->scannedRow = 0;
    later(&SyncEngine::scanWrites);
}

void SyncEngine::scanWrites()
{
    try {
        const auto page = m_state.pendingWrites(m_pass->scannedRow, std::max(1, m_tuning.scanRows));
        for (const QUuid &id : page.unsynced)
            m_pass->writes.push_back({Write::Kind::create, id, {}});
        for (const QUuid &id : page.changed)
            m_pass->writes.push_back({Write::Kind::update, id, {}});
        m_pass->scannedRow = page.lastRow;
        if (page.atEnd) {
            m_pass->scanning = false;
            for (const auto &t : m_state.tombstones()) {
                m_pass->tombstones.insert(t.href, t.etag);
                m_pass->writes.push_back({Write::Kind::remove, {}, t.href});
            }
        } else {
            later(&SyncEngine::scanWrites);
        }
    } catch (const StoreError &error) {
        fail(CalDavStatus{CalDavError::server, 0,
                          QStringLiteral("reading the sync state: %1").arg(error.description())});
        return;
    }
    pumpWrites();
}

void SyncEngine::pumpWrites()
{
    while (m_pass && m_pass->inFlight < m_tuning.parallelWrites && !m_pass->writes.empty()) {
        const Write write = m_pass->writes.front();
        m_pass->writes.pop_front();
        startWrite(write);
    }
    if (m_pass && m_pass->inFlight == 0 && m_pass->writes.empty() && !m_pass->scanning)
        finish();
}

void SyncEngine::startWrite(const Write &write)
{
    const quint64 generation = m_generation;
    try {
        if (write.kind == Write::Kind::remove) {
            const QString etag = m_pass->tombstones.value(write.href);
            ++m_pass->inFlight;
            m_client->remove(QUrl(write.href), etag, [this, generation, write](const CalDavStatus &status, bool) {
                if (isCurrent(generation))
                    writeAnswered(write, status, {}, {}, {});
            });
            return;
        }
        Task *task = m_context.existingObject<Task>(write.taskId);
        if (!task)
            return; // deleted since the list was made: its tombstone comes next pass
        const auto item = m_state.item(write.taskId);
        std::optional<TodoFields> base;
        if (item)
            if (const auto b = VTodoMapping::read(item->base))
                base = normalized(*b);
        const TodoFields local = localFields(*task, base);
        const QString fingerprint = m_state.currentFingerprint(write.taskId);
        if (item && base && !item->etag.isEmpty() && sameContent(local, *base)) {
            // Changed and changed back, or only in what does not travel.
            const QUuid id = write.taskId;
            m_pass->pendingOps.append([this, id, fingerprint] { m_state.setFingerprint(id, fingerprint); });
            scheduleFlush();
            return;
        }
        Write w = write;
        w.href = item ? item->href
                      : hrefOf(m_pass->account.collection.resolved(
                            QUrl(write.taskId.toString(QUuid::WithoutBraces) + QStringLiteral(".ics"))));
        TodoFields out = local;
        if (item)
            if (const auto raw = VTodoMapping::read(item->base); raw && normalized(*raw).title == out.title)
                out.title = raw->title; // shortened on the way in, not edited here: goes back whole
        const QByteArray text = VTodoMapping::write(out, m_clock(), item ? item->base : QByteArray());
        ++m_pass->inFlight;
        m_client->put(QUrl(w.href), text, item ? item->etag : QString(),
                      [this, generation, w, text, fingerprint](const CalDavStatus &status, const QString &etag) {
                          if (isCurrent(generation))
                              writeAnswered(w, status, etag, text, fingerprint);
                      });
    } catch (const StoreError &error) {
        fail(CalDavStatus{CalDavError::server, 0,
                          QStringLiteral("reading the sync state: %1").arg(error.description())});
    }
}

void SyncEngine::writeAnswered(const Write &write, const CalDavStatus &status, const QString &etag,
                               const QByteArray &text, const QString &fingerprint)
{
    --m_pass->inFlight;
    if (isFatal(status.error)) {
        fail(status);
        return;
    }
    const QString href = write.href;
    const QUuid id = write.taskId;
    if (write.kind == Write::Kind::remove) {
        // Done, or changed there since (the next pull brings that copy back).
        if (status.ok() || status.error == CalDavError::conflict) {
            m_pass->pendingOps.append([this, href] { m_state.removeTombstone(href); });
            if (status.ok())
                ++m_pass->outcome.removed;
        } else if (m_pass->firstFailure.ok()) {
            m_pass->firstFailure = status;
        }
    } else if (status.ok()) {
        ++m_pass->outcome.pushed;
        m_pass->pendingOps.append([this, id, href, etag, text, fingerprint] {
            m_state.putItem({id, href, etag, text});
            m_state.setFingerprint(id, fingerprint);
        });
    } else if (status.error == CalDavError::conflict || status.error == CalDavError::notFound) {
        // Someone else wrote it first: take their copy in now, merged; it
        // goes back in the next pass.
        ++m_pass->inFlight;
        const quint64 generation = m_generation;
        m_client->fetch(m_pass->account.collection, {QUrl(href)},
                        [this, generation, write](const CalDavStatus &fetched, const QList<CalDavResource> &found) {
                            if (isCurrent(generation))
                                conflictFetched(write, fetched, found);
                        });
    } else {
        qCWarning(lcServices).noquote() << QStringLiteral("Sync: writing %1 refused: %2").arg(href, status.detail);
        if (m_pass->firstFailure.ok())
            m_pass->firstFailure = status;
    }
    scheduleFlush();
    pumpWrites();
}

void SyncEngine::conflictFetched(const Write &write, const CalDavStatus &status, const QList<CalDavResource> &found)
{
    --m_pass->inFlight;
    if (isFatal(status.error)) {
        fail(status);
        return;
    }
    Task *task = m_context.existingObject<Task>(write.taskId);
    const QString href = write.href;
    if (task && status.ok() && !found.isEmpty()) {
        const auto remote = VTodoMapping::read(found.first().calendarData);
        if (remote) {
            QList<StateOp> ops;
            mergeInto(task, m_state.item(write.taskId), href, found.first().etag, found.first().calendarData,
                      normalized(*remote), ops);
            m_pass->pendingOps.append(ops);
        }
    } else if (task && (status.ok() || status.error == CalDavError::notFound)) {
        // Gone from the server: written again from here next time.
        const auto item = m_state.item(write.taskId);
        if (item)
            m_pass->pendingOps.append([this, href] { m_state.setEtag(href, QString()); });
    } else if (!status.ok() && m_pass->firstFailure.ok()) {
        m_pass->firstFailure = status;
    }
    scheduleFlush();
    pumpWrites();
}

void SyncEngine::scheduleFlush()
{
    if (!m_pass || m_pass->flushScheduled || m_pass->pendingOps.isEmpty())
        return;
    m_pass->flushScheduled = true;
    // Answers that arrive together are noted in one save.
    later(&SyncEngine::flushOps);
}

void SyncEngine::flushOps()
{
    m_pass->flushScheduled = false;
    if (m_pass->pendingOps.isEmpty())
        return;
    const qsizetype written = m_pass->pendingOps.size();
    if (!save(std::exchange(m_pass->pendingOps, {}), !m_context.hasChanges()))
        return;
    // The answers to a slice's worth of writes between two checkpoints:
    // answers come in a few at a time.
    m_pass->sinceCheckpoint += int(written);
    if (m_pass->sinceCheckpoint >= std::max(1, m_tuning.checkpointItems))
        askCheckpoint();
}

// ---------------------------------------------------------------- mapping

TodoFields SyncEngine::localFields(const Task &task, const std::optional<TodoFields> &base) const
{
    TodoFields f;
    f.uid = base ? base->uid : task.id().toString(QUuid::WithoutBraces);
    f.title = task.title();
    f.notes = task.notes().value_or(QString());
    if (const Day *day = task.day())
        f.day = m_days.calendar().date(day->date());
    f.urgent = task.urgent();
    f.plannedMinutes = task.durationMinutes();
    f.completed = task.completed();
    if (const auto at = task.completedAt())
        f.completedAt = QDateTime::fromSecsSinceEpoch(at->toSecsSinceEpoch(), Qt::UTC);
    f.cancelled = task.archived();
    f.order = task.orderIndex();
    // Banked time only: a running timer's current stretch stays here.
    f.focusedSeconds = std::max(0, task.actualSecondsFocused().value_or(0));
    f.discardedSeconds = std::max(0, task.awaySecondsDiscarded().value_or(0));
    f.lastModified = task.updatedAt();
    return normalized(f);
}

void SyncEngine::applyFields(Task *task, const TodoFields &f, bool isNew)
{
    const QString title = taskTitle(f.title, f.notes);
    if (title != task->title())
        task->setTitle(title);
    const std::optional<QString> notes = f.notes.isEmpty() ? std::nullopt : std::optional(f.notes);
    if (notes != task->notes())
        task->setNotes(notes);
    if (f.urgent != task->urgent() || isNew)
        task->setUrgent(f.urgent);
    if (f.plannedMinutes != task->durationMinutes())
        task->setDurationMinutes(f.plannedMinutes);
    if (f.completed != task->completed() || isNew)
        task->setCompleted(f.completed);
    if (f.completedAt != task->completedAt())
        task->setCompletedAt(f.completedAt);
    if (f.cancelled != task->archived() || isNew)
        task->setArchived(f.cancelled);
    // A to-do without a date is planned for today.
    Day *day = dayFor(f.day.isValid() ? f.day : m_days.calendar().date(m_clock()));
    const bool moved = task->day() != day;
    if (moved)
        task->setDay(day);
    if (f.order) {
        if (*f.order != task->orderIndex() || isNew)
            task->setOrderIndex(*f.order);
    } else if (moved || isNew) {
        qint64 last = -1;
        for (const Task *other : day->tasks())
            if (other != task)
                last = std::max<qint64>(last, other->orderIndex());
        task->setOrderIndex(int(std::min<qint64>(last + 1, std::numeric_limits<int>::max())));
    }
    const auto seconds = [](int value, std::optional<qint32> current) {
        return value == 0 && !current ? std::nullopt : std::optional<qint32>(value);
    };
    if (const auto focused = seconds(f.focusedSeconds, task->actualSecondsFocused());
        focused != task->actualSecondsFocused())
        task->setActualSecondsFocused(focused);
    if (const auto discarded = seconds(f.discardedSeconds, task->awaySecondsDiscarded());
        discarded != task->awaySecondsDiscarded())
        task->setAwaySecondsDiscarded(discarded);
    task->setUpdatedAt(m_clock());
}

Day *SyncEngine::dayFor(const QDate &date)
{
    Day *&day = m_pass->days[date];
    if (!day || day->isDeleted())
        day = m_days.fetchOrCreateDay(m_days.calendar().startOfDay(date));
    return day;
}

} // namespace tarnwell::sync
