// When sync passes run: on a pinned clock with a pass that answers when the
// test says so, and passwords in memory.
#include "kit/Translations.h"
#include "persistence/PersistenceController.h"
#include "persistence/StoreMigrator.h"
#include "services/SyncService.h"
#include "settings/SyncAccountStore.h"
#include "support/FakeSync.h"
#include "support/ManualClock.h"

#include <QFile>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

using namespace tarnwell;
using sync::CalDavError;

namespace {

sync::SyncAccount account(const QString &user = QStringLiteral("ada"))
{
    return {QUrl(QStringLiteral("https://dav.example/")), user, QUrl(QStringLiteral("https://dav.example/ada/tasks/"))};
}

struct Rig
{
    ManualClock time;
    PersistenceController store{true};
    SyncAccountStore accounts{store.viewContext()};
    FakePass pass;
    FakeSecrets secrets;
    SyncService service{{accounts, &secrets, &pass, time.clock()}};

    explicit Rig(bool setUp = true)
    {
        if (setUp) {
            service.setAccount(account(), QStringLiteral("s3cret"), {});
            service.start();
        }
    }
    // Moves the clock and lets the service look at it.
    void wait(qint64 ms)
    {
        time.advance(ms);
        service.tick();
    }
};

} // namespace

class SyncServiceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        static Translations translations;
        translations.install(QStringLiteral("en"));
    }

    void passesRunAtStartAfterChangesAndPeriodically()
    {
        Rig r;
        // At start, with the password from the secret store.
        QCOMPARE(r.pass.runs.size(), 1);
        QCOMPARE(r.pass.runs[0].password, QStringLiteral("s3cret"));
        QCOMPARE(r.service.state(), SyncService::State::syncing);
        r.pass.answer();
        QCOMPARE(r.service.state(), SyncService::State::idle);
        QCOMPARE(r.service.lastSyncAt(), r.time.now);

        // Changes close together share one pass, a few seconds after the last.
        r.wait(10000);
        r.service.noteLocalChange();
        r.wait(2000);
        r.service.noteLocalChange();
        r.wait(2500);
        QCOMPARE(r.pass.runs.size(), 1);
        r.wait(600);
        QCOMPARE(r.pass.runs.size(), 2);
        r.pass.answer();

        // A steady stream of changes still syncs within the cap.
        const QDateTime firstChange = r.time.now;
        for (int i = 0; i < 30 && r.pass.runs.size() == 2; ++i) {
            r.service.noteLocalChange();
            r.wait(1000);
        }
        QCOMPARE(r.pass.runs.size(), 3);
        QVERIFY(r.time.now <= firstChange.addSecs(21));
        r.pass.answer();

        // Then every five minutes without any change.
        r.wait(5 * 60 * 1000 - 1000);
        QCOMPARE(r.pass.runs.size(), 3);
        r.wait(1000);
        QCOMPARE(r.pass.runs.size(), 4);
    }

    void neverTwoPassesAtOnce()
    {
        Rig r;
        QVERIFY(r.pass.running());
        int heard = 0;
        SyncReport report;
        r.service.syncNow([&](const SyncReport &rep) { ++heard, report = rep; });
        r.service.noteLocalChange();
        r.wait(60000);
        QCOMPARE(r.pass.runs.size(), 1);
        // The request was made during the first pass, so it is answered by the next.
        r.pass.answer(CalDavError::none, 2);
        QCOMPARE(heard, 0);
        // Started from the event loop, not from inside the engine's answer.
        QCOMPARE(r.pass.runs.size(), 1);
        QTRY_COMPARE(r.pass.runs.size(), 2);
        r.pass.answer(CalDavError::none, 0, 3);
        QCOMPARE(heard, 1);
        QVERIFY(report.ok());
        QCOMPARE(report.pushed, 3);
        // The change seen during the first pass was taken by the second.
        r.wait(10000);
        QCOMPARE(r.pass.runs.size(), 2);
    }

    void serverDownBacksOffAndRefusalStopsUntilTheAccountChanges()
    {
        Rig r;
        r.pass.answer(CalDavError::network);
        QCOMPARE(r.service.state(), SyncService::State::error);
        QCOMPARE(r.service.lastProblem(), SyncProblem::network);
        // 30 s, then 60 s, then 120 s; changes do not bring a retry forward.
        for (const qint64 wait : {30000, 60000, 120000}) {
            const int runs = int(r.pass.runs.size());
            r.service.noteLocalChange();
            r.wait(wait - 1000);
            QCOMPARE(r.pass.runs.size(), runs);
            r.wait(1000);
            QCOMPARE(r.pass.runs.size(), runs + 1);
            r.pass.answer(CalDavError::network);
        }
        // The back-off ends with the first pass that goes through.
        r.service.syncNow();
        r.pass.answer();
        QCOMPARE(r.service.state(), SyncService::State::idle);
        r.service.noteLocalChange();
        r.wait(3000);
        QCOMPARE(r.pass.runs.size(), 6);
        // A wrong password: no automatic pass any more, not even after hours.
        r.pass.answer(CalDavError::unauthorized);
        QCOMPARE(r.service.lastProblem(), SyncProblem::unauthorized);
        QCOMPARE(r.service.nextAutomaticRun(), QDateTime());
        r.service.noteLocalChange();
        r.wait(3 * 3600 * 1000);
        QCOMPARE(r.pass.runs.size(), 6);
        // The user may still ask, and a new password starts over.
        r.service.syncNow();
        QCOMPARE(r.pass.runs.size(), 7);
        r.pass.answer(CalDavError::unauthorized);
        r.service.setAccount(account(), QStringLiteral("right"), {});
        QCOMPARE(r.pass.runs.size(), 8);
        QCOMPARE(r.pass.runs.last().password, QStringLiteral("right"));
        QCOMPARE(r.secrets.passwords.size(), 1);
    }

    void quittingCancelsTheRunningPass()
    {
        Rig r;
        SyncReport heard;
        r.service.syncNow([&](const SyncReport &rep) { heard = rep; });
        FakePass::Done late = r.pass.pending; // what the engine would still call
        r.service.shutdown();
        QCOMPARE(r.pass.cancels, 1);
        QCOMPARE(heard.problem, SyncProblem::cancelled);
        QCOMPARE(r.service.state(), SyncService::State::idle);
        late(FakePass::outcome(CalDavError::network));
        QCOMPARE(r.service.lastProblem(), SyncProblem::none);
        r.wait(3600 * 1000);
        QCOMPARE(r.pass.runs.size(), 1);
    }

    void whatStopsSyncIsToldAtOnce()
    {
        // Without an engine, without a keyring, without an account.
        ManualClock time;
        PersistenceController store(true);
        SyncAccountStore accounts(store.viewContext());
        FakePass pass;
        FakeSecrets secrets;
        SyncService noEngine({accounts, &secrets, nullptr, time.clock()});
        SyncService noKeyring({accounts, nullptr, &pass, time.clock()});
        SyncService notSetUp({accounts, &secrets, &pass, time.clock()});
        QList<SyncProblem> heard;
        for (SyncService *service : {&noEngine, &noKeyring, &notSetUp}) {
            service->start();
            service->syncNow([&](const SyncReport &rep) { heard << rep.problem; });
        }
        QCOMPARE(heard,
                 (QList<SyncProblem>{SyncProblem::notAvailable, SyncProblem::noSecretService, SyncProblem::off}));
        QCOMPARE(noEngine.state(), SyncService::State::unavailable);
        QCOMPARE(noKeyring.state(), SyncService::State::off);
        QVERIFY(!problemText(SyncProblem::noSecretService).isEmpty());
        QVERIFY(pass.runs.isEmpty());

        // A keyring that refuses the password leaves sync off.
        secrets.failWith = SecretStore::Result::Status::denied;
        SyncReport refused;
        notSetUp.setAccount(account(), QStringLiteral("pw"), [&](const SyncReport &rep) { refused = rep; });
        QCOMPARE(refused.problem, SyncProblem::secretDenied);
        QVERIFY(!notSetUp.enabled());
        secrets.failWith = SecretStore::Result::Status::ok;
        notSetUp.setAccount(account(), QStringLiteral("pw"), {});
        QVERIFY(notSetUp.enabled());
        QCOMPARE(pass.runs.size(), 1);

        // Turning off abandons the pass, lets the engine forget and removes the password.
        notSetUp.turnOff(true);
        QCOMPARE(pass.cancels, 1);
        QCOMPARE(pass.forgotten, QList<bool>{true});
        QVERIFY(secrets.passwords.isEmpty());
        QCOMPARE(notSetUp.state(), SyncService::State::off);
        QCOMPARE(accounts.account().user, QStringLiteral("ada"));
        time.advance(3600 * 1000);
        notSetUp.tick();
        QCOMPARE(pass.runs.size(), 1);
    }

    void accountRowFollowsTheAccount()
    {
        // A store made before sync existed gains the table and keeps its rows.
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("Tarnwell.sqlite"));
        QStringList before;
        for (const char *name : {"001_initial.sql", "002_review_index.sql"}) {
            QFile file(QStringLiteral(":/persistence/schema/") + QLatin1String(name));
            QVERIFY(file.open(QIODevice::ReadOnly));
            before << QString::fromUtf8(file.readAll());
        }
        {
            PersistenceController old(path, StoreMigrator(before));
            QSqlQuery insert(old.viewContext().database());
            QVERIFY(insert.exec(QStringLiteral("INSERT INTO days (id, date) VALUES ('d1', 0)")));
        }
        ManualClock time;
        PersistenceController store(path);
        QSqlQuery check(store.viewContext().database());
        QVERIFY(check.exec(QStringLiteral("SELECT count(*) FROM days")) && check.next());
        QCOMPARE(check.value(0).toInt(), 1);
        SyncAccountStore accounts(store.viewContext());
        QVERIFY(!accounts.account().isComplete());
        QVERIFY(accounts.setAccount(account(), true));
        QVERIFY(accounts.recordPass(time.now, QString()));
        QVERIFY(accounts.recordError(QStringLiteral("network")));
        // Same account again: its history stays; another user: it goes.
        QVERIFY(accounts.setAccount(account(), false));
        QCOMPARE(accounts.lastSyncAt(), time.now);
        QCOMPARE(accounts.lastError(), QStringLiteral("network"));
        QVERIFY(!accounts.enabled());
        QVERIFY(accounts.setAccount(account(QStringLiteral("bob")), true));
        QCOMPARE(accounts.lastSyncAt(), QDateTime());
        QCOMPARE(accounts.lastError(), QString());
        QCOMPARE(accounts.account().collection, account().collection);
    }
};

QTEST_GUILESS_MAIN(SyncServiceTest)
#include "tst_sync_service.moc"
