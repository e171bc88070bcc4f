// Two-way sync through a real server: two Tarnwell stores (two files, one
// engine each) and a third client (python3-caldav) share one collection on
// Radicale, started by the test.
#include "persistence/Day.h"
#include "persistence/DayRepository.h"
#include "persistence/PersistenceController.h"
#include "persistence/Task.h"
#include "persistence/TaskRepository.h"
#include "support/ManualClock.h"
#include "support/Radicale.h"
#include "sync/SyncEngine.h"

#include <QSqlQuery>

#include <memory>

using namespace tarnwell;
using namespace tarnwell::sync;

namespace {

// One Tarnwell: its store file, repositories and engine.
struct Side
{
    Side(const QString &file, QNetworkAccessManager &network, ManualClock &clock)
        : store(file)
        , days(store.viewContext(), Calendar(), clock.clock())
        , tasks(store.viewContext(), Calendar(), clock.clock(), days)
        , engine(store.viewContext(), days, network, clock.clock())
    {
    }
    PersistenceController store;
    DayRepository days;
    TaskRepository tasks;
    SyncEngine engine;

    Task *add(const QString &title, const QDate &date)
    {
        Day *day = days.fetchOrCreateDay(days.calendar().startOfDay(date));
        return tasks.createTask(title, 25, false, day);
    }
    QList<Task *> all()
    {
        QList<Task *> out = store.viewContext().fetch<Task>(FetchRequest{});
        std::sort(out.begin(), out.end(), [](Task *a, Task *b) { return a->title() < b->title(); });
        return out;
    }
    Task *named(const QString &title)
    {
        for (Task *t : all())
            if (t->title() == title)
                return t;
        return nullptr;
    }
    int count(const QString &table)
    {
        QSqlQuery q(store.viewContext().database());
        q.exec(QStringLiteral("SELECT count(*) FROM ") + table);
        return q.next() ? q.value(0).toInt() : -1;
    }
};

} // namespace

class SyncEngineTest : public QObject
{
    Q_OBJECT

    test::Radicale m_radicale;
    QNetworkAccessManager m_network;
    QTemporaryDir m_dir;
    ManualClock m_clock{QDateTime(QDate(2026, 11, 24), QTime(9, 0), Qt::UTC)};
    SyncAccount m_account;
    int m_collections = 0;
    const QDate m_today{2026, 11, 24};

    // A fresh collection for each case, and two stores on it.
    std::pair<std::unique_ptr<Side>, std::unique_ptr<Side>> freshPair()
    {
        const QString path = QStringLiteral("/alice/tasks%1/").arg(++m_collections);
        if (m_radicale.makeCalendar(m_network, path, QStringLiteral("Tasks"), QStringLiteral("VTODO")) != 201)
            qFatal("MKCALENDAR failed");
        m_account = {m_radicale.base(), m_radicale.user, m_radicale.url(path)};
        const auto side = [this](const char *name) {
            return std::make_unique<Side>(
                m_dir.filePath(QStringLiteral("%1-%2.sqlite").arg(QLatin1String(name)).arg(m_collections)), m_network,
                m_clock);
        };
        return {side("a"), side("b")};
    }

    SyncOutcome pass(Side &side, const QString &password = {})
    {
        std::optional<SyncOutcome> out;
        side.engine.run(m_account, password.isEmpty() ? m_radicale.password : password,
                        [&out](const SyncOutcome &o) { out = o; });
        if (!QTest::qWaitFor([&out] { return out.has_value(); }, 90000))
            qFatal("a sync pass did not answer");
        m_clock.advance(60000); // edits after a pass are later than it
        return *out;
    }

    // Runs python3-caldav as another client would: `script` gets `cal`, the collection.
    QByteArray python(const QString &script)
    {
        QProcess p;
        const QString prelude = QStringLiteral("import caldav, sys\n"
                                               "client = caldav.DAVClient(url=sys.argv[1], username=sys.argv[2], "
                                               "password=sys.argv[3])\n"
                                               "cal = client.calendar(url=sys.argv[1])\n");
        p.start(QStringLiteral("/usr/bin/python3"),
                {QStringLiteral("-c"), prelude + script, m_account.collection.toString(), m_radicale.user,
                 m_radicale.password});
        if (!p.waitForFinished(60000) || p.exitCode() != 0)
            qWarning().noquote() << "python3-caldav:" << p.readAllStandardError();
        return p.readAllStandardOutput();
    }

private Q_SLOTS:
    void initTestCase()
    {
        QString why;
        QVERIFY2(m_radicale.start(&why), qPrintable(why));
    }

    void cleanupTestCase() { m_radicale.stop(); }

    // Adds, edits, reorders, completions and deletions on either side reach
    // the other; a pass with nothing to do writes nothing; a running timer's
    // current stretch stays local.
    void changesOnEitherSideReachTheOther()
    {
        auto [a, b] = freshPair();
        // The smallest steps there are: every slice, page and listing part ends after one.
        SyncEngine::Tuning tiny;
        tiny.sliceItems = 1;
        tiny.scanRows = 1;
        tiny.sliceMilliseconds = 0;
        a->engine.setTuning(tiny);
        b->engine.setTuning(tiny);
        Task *write = a->add(QStringLiteral("Write the report"), m_today);
        Task *call = a->add(QStringLiteral("Call the bank"), m_today.addDays(1));
        a->tasks.updateTask(write, write->title(), QStringLiteral("Section 3 first"), 50, std::nullopt);
        write->setActualSecondsFocused(600);
        write->setActiveStartedAt(m_clock.now.addSecs(-300)); // running: 300 s not banked yet
        a->store.viewContext().save();
        QCOMPARE(pass(*a).pushed, 2);
        // What B's store announces while the pass saves A's tasks is the
        // pass's own (no pass is due for it); B's own edits are changes.
        int own = 0;
        int local = 0;
        const SyncEngine &bEngine = b->engine;
        const auto watch =
            connect(&b->store.viewContext(), &StoreContext::objectsDidChange, this,
                    [&own, &local, &bEngine](const ChangeSet &) { ++(bEngine.isSavingServerChanges() ? own : local); });
        QCOMPARE(pass(*b).pulled, 2);
        QVERIFY(own > 0);
        QCOMPARE(local, 0);
        // The pass's relaxed commits leave the store's own saves as durable as before.
        QSqlQuery level(b->store.viewContext().database());
        QVERIFY(level.exec(QStringLiteral("PRAGMA synchronous")) && level.next());
        QCOMPARE(level.value(0).toInt(), 2);
        // So do its own checkpoints: SQLite's automatic ones are back.
        QVERIFY(level.exec(QStringLiteral("PRAGMA wal_autocheckpoint")) && level.next());
        QCOMPARE(level.value(0).toInt(), 1000);

        Task *bWrite = b->named(QStringLiteral("Write the report"));
        QVERIFY(bWrite);
        QCOMPARE(bWrite->id(), write->id());
        QCOMPARE(bWrite->notes(), std::optional<QString>(QStringLiteral("Section 3 first")));
        QCOMPARE(bWrite->durationMinutes(), std::optional<qint32>(50));
        QCOMPARE(bWrite->actualSecondsFocused(), std::optional<qint32>(600));
        QVERIFY(!bWrite->activeStartedAt());
        QCOMPARE(b->days.calendar().date(b->named(QStringLiteral("Call the bank"))->day()->date()), m_today.addDays(1));

        const SyncOutcome idle = pass(*b);
        QVERIFY(idle.status.ok());
        QCOMPARE(idle.pushed + idle.pulled + idle.removed, 0);

        // B: rename, complete, and a new task put first; A: deletes one.
        b->tasks.updateTask(bWrite, QStringLiteral("Write the final report"), bWrite->notes(), 50, std::nullopt);
        Task *bFirst = b->add(QStringLiteral("Book the train"), m_today);
        b->tasks.reorderTasks(bWrite->day(), {bFirst->id(), bWrite->id()});
        b->tasks.complete(bWrite, m_clock.now, 900);
        QVERIFY(local > 0);
        disconnect(watch);
        QCOMPARE(pass(*b).pushed, 2);
        a->tasks.moveToNextDay(call);
        QVERIFY(pass(*a).status.ok());
        QCOMPARE(write->title(), QStringLiteral("Write the final report"));
        QVERIFY(write->completed());
        QCOMPARE(write->actualSecondsFocused(), std::optional<qint32>(900));
        Task *aFirst = a->named(QStringLiteral("Book the train"));
        QVERIFY(aFirst);
        QVERIFY(aFirst->orderIndex() < write->orderIndex());

        a->store.viewContext().deleteObject(a->named(QStringLiteral("Call the bank")));
        a->store.viewContext().save();
        QCOMPARE(a->count(QStringLiteral("sync_tombstones")), 1);
        QCOMPARE(pass(*a).removed, 1);
        QCOMPARE(a->count(QStringLiteral("sync_tombstones")), 0);
        QCOMPARE(pass(*b).removed, 1);
        QCOMPARE(b->all().size(), 2);
        QVERIFY(!b->named(QStringLiteral("Call the bank")));

        // A token the server no longer knows: every etag compared instead,
        // the change found, nothing doubled or lost.
        QSqlQuery(b->store.viewContext().database())
            .exec(QStringLiteral("UPDATE sync_collections SET sync_token = 'http://radicale.org/ns/sync/forgotten'"));
        a->tasks.updateTask(aFirst, QStringLiteral("Book the night train"), std::nullopt, 25, std::nullopt);
        QCOMPARE(pass(*a).pushed, 1);
        const SyncOutcome relisted = pass(*b);
        QVERIFY(relisted.status.ok());
        QCOMPARE(relisted.pulled, 1);
        QCOMPARE(b->all().size(), 2);
        QVERIFY(b->named(QStringLiteral("Book the night train")));
        QVERIFY(b->count(QStringLiteral("sync_collections WHERE sync_token LIKE '%forgotten'")) == 0);
    }

    // Edits on both sides between passes: per field the later edit, focused
    // seconds never back, a completion never undone by a stale copy; an edit
    // here outlives a deletion there and the other way round.
    void editsOnBothSidesMergeByTheRule()
    {
        auto [a, b] = freshPair();
        Task *ta = a->add(QStringLiteral("Plan the week"), m_today);
        Task *keep = a->add(QStringLiteral("Water the plants"), m_today);
        Task *gone = a->add(QStringLiteral("Old errand"), m_today);
        pass(*a);
        pass(*b);
        Task *tb = b->named(QStringLiteral("Plan the week"));

        // Offline: A completes and renames first; B renames later and banks more time.
        a->tasks.complete(ta, m_clock.now, 120);
        a->tasks.updateTask(ta, QStringLiteral("Plan the week (A)"), QStringLiteral("from A"), 25, std::nullopt);
        m_clock.advance(60000);
        b->tasks.updateTask(tb, QStringLiteral("Plan the week (B)"), tb->notes(), 40, std::nullopt);
        b->tasks.setActualFocus(tb, 300);
        // A edits what B deletes; B edits what A deletes.
        a->tasks.updateTask(keep, QStringLiteral("Water the plants twice"), keep->notes(), 25, std::nullopt);
        b->store.viewContext().deleteObject(b->named(QStringLiteral("Water the plants")));
        b->tasks.updateTask(b->named(QStringLiteral("Old errand")), QStringLiteral("Errand, still needed"),
                            std::nullopt, 25, std::nullopt);
        a->store.viewContext().deleteObject(gone);
        a->store.viewContext().save();
        b->store.viewContext().save();

        QVERIFY(pass(*a).status.ok());
        QVERIFY(pass(*b).status.ok());
        QVERIFY(pass(*a).status.ok());
        QVERIFY(pass(*b).status.ok());
        for (Side *side : {a.get(), b.get()}) {
            Task *t = side->named(QStringLiteral("Plan the week (B)"));
            QVERIFY2(t, "the later title wins on both sides");
            QCOMPARE(t->notes(), std::optional<QString>(QStringLiteral("from A")));
            QCOMPARE(t->durationMinutes(), std::optional<qint32>(40));
            QVERIFY(t->completed());
            QCOMPARE(t->actualSecondsFocused(), std::optional<qint32>(300));
            QVERIFY(side->named(QStringLiteral("Water the plants twice")));
            QVERIFY(side->named(QStringLiteral("Errand, still needed")));
            QCOMPARE(side->all().size(), 3);
        }
        const SyncOutcome settled = pass(*a);
        QCOMPARE(settled.pushed + settled.pulled, 0);
    }

    // Another client's to-dos become tasks (sanely titled); what that client
    // wrote survives Tarnwell's writes; its later edits come in.
    void otherClientsTodosComeInAndKeepTheirProperties()
    {
        auto [a, b] = freshPair();
        const QString longTitle = QString(QStringLiteral("Long ")).repeated(60);
        python(QStringLiteral("cal.save_todo('BEGIN:VCALENDAR\\r\\nVERSION:2.0\\r\\nPRODID:-//Other//EN\\r\\n"
                              "BEGIN:VTODO\\r\\nUID:other-1@example.com\\r\\nDTSTAMP:20261124T080000Z\\r\\n"
                              "SUMMARY:Renew passport\\r\\nDUE;VALUE=DATE:20261126\\r\\nX-OTHER-COLOR:teal\\r\\n"
                              "CATEGORIES:errands\\r\\nEND:VTODO\\r\\nEND:VCALENDAR\\r\\n')\n"
                              "cal.save_todo('BEGIN:VCALENDAR\\r\\nVERSION:2.0\\r\\nPRODID:-//Other//EN\\r\\n"
                              "BEGIN:VTODO\\r\\nUID:other-2\\r\\nDTSTAMP:20261124T080000Z\\r\\nSUMMARY:%1\\r\\n"
                              "END:VTODO\\r\\nEND:VCALENDAR\\r\\n')\n"
                              "cal.save_todo('BEGIN:VCALENDAR\\r\\nVERSION:2.0\\r\\nPRODID:-//Other//EN\\r\\n"
                              "BEGIN:VTODO\\r\\nUID:other-3\\r\\nDTSTAMP:20261124T080000Z\\r\\n"
                              "END:VTODO\\r\\nEND:VCALENDAR\\r\\n')\n")
                   .arg(longTitle));
        QCOMPARE(pass(*a).pulled, 3);
        // The day and place A gave them travel: B, a day later, files them alike.
        m_clock.advance(24 * 3600 * 1000);
        QCOMPARE(pass(*b).pulled, 3);
        for (Task *t : a->all()) {
            Task *there = b->named(t->title());
            QVERIFY(there);
            QCOMPARE(there->day()->date(), t->day()->date());
            QCOMPARE(there->orderIndex(), t->orderIndex());
        }
        Task *passport = a->named(QStringLiteral("Renew passport"));
        QVERIFY(passport);
        QCOMPARE(a->days.calendar().date(passport->day()->date()), QDate(2026, 11, 26));
        QCOMPARE(a->all().size(), 3);
        for (Task *t : a->all()) {
            QVERIFY(!t->title().isEmpty());
            QVERIFY(TaskRepository::characterCount(t->title()) <= TaskRepository::Limits::titleCharacters);
            QCOMPARE(t->day() != nullptr, true);
        }

        a->tasks.updateTask(passport, QStringLiteral("Renew passport and ID"), passport->notes(), 30, std::nullopt);
        Task *cut = nullptr;
        for (Task *t : a->all())
            if (t->title().startsWith(QStringLiteral("Long ")))
                cut = t;
        QVERIFY(cut);
        a->tasks.updateTask(cut, cut->title(), QStringLiteral("shortened here"), 15, std::nullopt);
        QCOMPARE(pass(*a).pushed, 2);
        const QByteArray seen = python(QStringLiteral(
            "print(cal.todo_by_uid('other-1@example.com').data)\nprint(cal.todo_by_uid('other-2').data)\n"));
        QVERIFY2(seen.contains("X-OTHER-COLOR:teal"), seen.constData());
        QVERIFY(seen.contains("CATEGORIES:errands"));
        QVERIFY(seen.contains("SUMMARY:Renew passport and ID"));
        QVERIFY(seen.contains("shortened here"));
        QVERIFY2(seen.simplified().replace(' ', "").count("LongLong") > 50, "the long title is not cut on the server");

        python(
            QStringLiteral("t = cal.todo_by_uid('other-1@example.com')\n"
                           "t.data = t.data.replace('SUMMARY:Renew passport and ID', 'SUMMARY:Passport: book slot')\n"
                           "t.save()\n"));
        QCOMPARE(pass(*a).pulled, 1);
        QCOMPARE(passport->title(), QStringLiteral("Passport: book slot"));
        QCOMPARE(passport->durationMinutes(), std::optional<qint32>(30));
    }

    // A slice that cannot be saved (a full disk) leaves no tasks behind for
    // another client's to-dos: the next pass brings each in once.
    void failedSaveDoublesNoForeignToDo()
    {
        auto [a, b] = freshPair();
        Q_UNUSED(b)
        python(QStringLiteral("cal.save_todo('BEGIN:VCALENDAR\\r\\nVERSION:2.0\\r\\nPRODID:-//Other//EN\\r\\n"
                              "BEGIN:VTODO\\r\\nUID:plants@example.com\\r\\nDTSTAMP:20261124T080000Z\\r\\n"
                              "SUMMARY:Water the plants\\r\\nEND:VTODO\\r\\nEND:VCALENDAR\\r\\n')\n"));
        QSqlQuery(a->store.viewContext().database()).exec(QStringLiteral("PRAGMA query_only = ON"));
        QVERIFY(!pass(*a).status.ok());
        QSqlQuery(a->store.viewContext().database()).exec(QStringLiteral("PRAGMA query_only = OFF"));
        QVERIFY(pass(*a).status.ok());
        a->store.viewContext().save();
        QCOMPARE(a->all().size(), 1);
    }

    // The server killed in the middle of a pass, once while A pushes and
    // once while B pulls: the pass reports the network, the store stays
    // consistent, the next pass completes, nothing is lost or doubled.
    void serverGoneMidPassLosesNothing()
    {
        auto [a, b] = freshPair();
        for (int i = 0; i < 300; ++i)
            a->add(QStringLiteral("Task %1").arg(i, 3, 10, QLatin1Char('0')), m_today.addDays(i % 7));
        a->engine.setTuning({100, 4, 50, 1}); // one write at a time: the kill lands mid-push
        std::optional<SyncOutcome> cut;
        a->engine.run(m_account, m_radicale.password, [&cut](const SyncOutcome &o) { cut = o; });
        QTRY_VERIFY_WITH_TIMEOUT(a->count(QStringLiteral("sync_items")) > 20, 60000);
        m_radicale.kill();
        QTRY_VERIFY_WITH_TIMEOUT(cut.has_value(), 60000);
        QCOMPARE(cut->status.error, CalDavError::network);
        QVERIFY(a->count(QStringLiteral("sync_items")) < 300);
        QString why;
        QVERIFY2(m_radicale.start(&why), qPrintable(why));
        QVERIFY(pass(*a).status.ok());
        QCOMPARE(a->count(QStringLiteral("sync_items")), 300);

        b->engine.setTuning({20, 4, 50, 4}); // many small fetches: the kill lands mid-pull
        cut.reset();
        connect(
            &b->engine, &SyncEngine::sliceSaved, this, [this] { m_radicale.kill(); }, Qt::SingleShotConnection);
        b->engine.run(m_account, m_radicale.password, [&cut](const SyncOutcome &o) { cut = o; });
        QTRY_VERIFY_WITH_TIMEOUT(cut.has_value(), 60000);
        QCOMPARE(cut->status.error, CalDavError::network);
        QVERIFY(b->all().size() < 300);
        QCOMPARE(b->count(QStringLiteral("sync_collections")), 0); // no token for a pull cut short
        QVERIFY2(m_radicale.start(&why), qPrintable(why));
        QVERIFY(pass(*b).status.ok());
        QCOMPARE(b->all().size(), 300);
        QCOMPARE(a->all().size(), 300);
        CalDavClient client(m_network);
        client.setCredentials(m_radicale.user, m_radicale.password);
        std::optional<int> onServer;
        client.listEtags(m_account.collection,
                         [&onServer](const CalDavStatus &, const QList<CalDavResource> &r) { onServer = r.size(); });
        QTRY_VERIFY_WITH_TIMEOUT(onServer.has_value(), 30000);
        QCOMPARE(*onServer, 300);
    }

    // A server without the sync-collection report (it refuses it as such
    // servers do, and does not advertise it): every pass compares etags,
    // and adds, edits, completions and deletions still reach either side.
    void withoutSyncCollectionEtagsAreCompared()
    {
        auto [a, b] = freshPair();
        QProcess proxy;
        proxy.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        proxy.start(QStringLiteral("/usr/bin/python3"),
                    {QStringLiteral(TARNWELL_DAV_PROXY), m_radicale.base().toString()});
        QVERIFY(proxy.waitForReadyRead(10000));
        const int port = proxy.readLine().trimmed().toInt();
        QVERIFY(port > 0);
        const auto through = [port](QUrl url) {
            url.setPort(port);
            return url;
        };
        m_account = {through(m_account.server), m_account.user, through(m_account.collection)};

        a->add(QStringLiteral("Pay the rent"), m_today);
        Task *aMail = a->add(QStringLiteral("Answer mail"), m_today);
        QCOMPARE(pass(*a).pushed, 2);
        QCOMPARE(pass(*b).pulled, 2);
        const SyncOutcome idle = pass(*b);
        QVERIFY(idle.status.ok());
        QCOMPARE(idle.pushed + idle.pulled + idle.removed, 0);

        Task *bRent = b->named(QStringLiteral("Pay the rent"));
        b->tasks.updateTask(bRent, QStringLiteral("Pay the rent today"), QStringLiteral("by card"), 10, std::nullopt);
        b->tasks.complete(b->named(QStringLiteral("Answer mail")), m_clock.now, 300);
        b->add(QStringLiteral("Buy stamps"), m_today);
        QCOMPARE(pass(*b).pushed, 3);
        QCOMPARE(pass(*a).pulled, 3);
        Task *aRent = a->named(QStringLiteral("Pay the rent today"));
        QVERIFY(aRent);
        QCOMPARE(aRent->notes(), std::optional<QString>(QStringLiteral("by card")));
        QVERIFY(aMail->completed());
        QCOMPARE(aMail->actualSecondsFocused(), std::optional<qint32>(300));

        a->store.viewContext().deleteObject(a->named(QStringLiteral("Buy stamps")));
        a->store.viewContext().save();
        QCOMPARE(pass(*a).removed, 1);
        b->store.viewContext().deleteObject(b->named(QStringLiteral("Pay the rent today")));
        b->store.viewContext().save();
        QCOMPARE(pass(*b).removed, 2); // A's deletion in, its own out
        QCOMPARE(pass(*a).removed, 1);
        QCOMPARE(a->all().size(), 1);
        QCOMPARE(b->all().size(), 1);
        QCOMPARE(a->count(QStringLiteral("sync_collections WHERE sync_token <> ''")), 0);

        // Every pass asked for the report and was refused, in each of the ways.
        proxy.terminate();
        proxy.waitForFinished();
        const QByteArray refusals = proxy.readAllStandardOutput();
        QCOMPARE(refusals.count("refused"), 8);
        for (const char *status : {"refused 403", "refused 501", "refused 405"})
            QVERIFY(refusals.contains(status));
    }

    // A wrong password is told as such and leaves the store as it was; so
    // does forgetting, apart from the state (and, when asked, the copies).
    void wrongPasswordChangesNothingAndForgetForgets()
    {
        auto [a, b] = freshPair();
        a->add(QStringLiteral("Only here"), m_today);
        const SyncOutcome refused = pass(*a, QStringLiteral("wrong"));
        QCOMPARE(refused.status.error, CalDavError::unauthorized);
        QCOMPARE(a->count(QStringLiteral("sync_collections")), 0);
        QCOMPARE(a->count(QStringLiteral("sync_items")), 0);
        QVERIFY(!a->store.viewContext().hasChanges());

        QVERIFY(pass(*a).status.ok());
        QVERIFY(pass(*b).status.ok());
        b->add(QStringLiteral("Made on B"), m_today);
        b->engine.forget(false);
        QCOMPARE(b->count(QStringLiteral("sync_items")) + b->count(QStringLiteral("sync_collections")), 0);
        QCOMPARE(b->all().size(), 2);
        a->engine.forget(true);
        QCOMPARE(a->all().size(), 0);
        QCOMPARE(a->count(QStringLiteral("sync_tombstones")), 0);
        QVERIFY(pass(*a).status.ok()); // a fresh start: the server's copy comes back
        QCOMPARE(a->all().size(), 1);
    }
};

QTEST_GUILESS_MAIN(SyncEngineTest)
#include "tst_sync_engine.moc"
