// The focus engine over a store file: a running timer outlives the process,
// and a ticking countdown leaves the file alone.
#include "persistence/PersistenceController.h"
#include "services/ActiveTaskService.h"
#include "services/CountdownService.h"
#include "services/DurationCompletionNotifier.h"
#include "services/FocusTime.h"
#include "services/SoundService.h"
#include "settings/AppSettingsStore.h"
#include "support/ManualClock.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

using namespace tarnwell;

namespace {

struct NoChimes : ChimeLibrary
{
    std::unique_ptr<ChimePlayer> load(const QString &) override { return nullptr; }
};

// One run of the program against the store file.
struct Session
{
    Session(const QString &path, ManualClock &time)
        : store(path)
        , settings(store)
        , service(store.viewContext(), settings, time.clock())
    {
    }
    PersistenceController store;
    AppSettingsStore settings;
    ActiveTaskService service;
};

struct FileState
{
    qint64 size, walSize;
    QDateTime modified;
    friend bool operator==(const FileState &, const FileState &) = default;
};

FileState fileState(const QString &path)
{
    QFileInfo file(path), wal(path + QStringLiteral("-wal"));
    return {file.size(), wal.exists() ? wal.size() : -1, file.lastModified()};
}

} // namespace

class FocusStoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void runningTimerOutlivesTheProcess()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("Tarnwell.sqlite"));
        ManualClock time(QDate(2026, 6, 10).startOfDay(QTimeZone::systemTimeZone()).addSecs(9 * 3600));
        const QDateTime started = time.now;
        {
            Session first(path, time);
            Day *today = first.service.dayRepository().fetchOrCreateDay(time.now);
            Task *t = first.service.taskRepository().createTask(QStringLiteral("Deep work"), 90, false, today);
            t->setActualSecondsFocused(600);
            first.service.startTimer(t);
        }
        time.advance(2 * 3600 * 1000); // quit, sleep, relaunch
        Session second(path, time);
        Task *t = second.service.activeTask();
        QVERIFY(t);
        QCOMPARE(t->title(), QStringLiteral("Deep work"));
        QCOMPARE(t->activeStartedAt(), started);
        QCOMPARE(FocusTime::focusedSeconds(*t, time.now), 600 + 7200);
        second.service.pauseTimer(t);
        QCOMPARE(t->actualSecondsFocused(), 600 + 7200);
    }

    void tickingWritesNothing()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("Tarnwell.sqlite"));
        ManualClock time(QDate(2026, 6, 10).startOfDay(QTimeZone::systemTimeZone()).addSecs(9 * 3600));
        Session session(path, time);
        session.settings.setPreEndWarningMinutes(1);
        Day *today = session.service.dayRepository().fetchOrCreateDay(time.now);
        Task *t = session.service.taskRepository().createTask(QStringLiteral("Short"), 2, false, today);
        session.service.startTimer(t);
        QCoreApplication::processEvents();
        time.advance(40 * 1000); // 80 seconds left: the warning is armed

        NoChimes chimes;
        SoundService sound(session.settings, chimes);
        LoggingDurationCompletionNotifier notifier;
        CountdownService countdown(session.service, notifier, sound, session.settings, time.clock(),
                                   std::chrono::milliseconds(0));
        int saves = 0;
        connect(&session.store.viewContext(), &StoreContext::didSave, [&] { ++saves; });
        const FileState before = fileState(path);
        QTest::qWait(20); // let a write show in the modification time
        for (int i = 0; i < 90; ++i) { // through the warning and into overtime
            time.advance(1000);
            countdown.evaluate();
            QCoreApplication::processEvents();
        }
        QVERIFY(countdown.isOverdue());
        QCOMPARE(saves, 0);
        QVERIFY(!session.store.viewContext().hasChanges());
        QVERIFY(fileState(path) == before);
    }
};

QTEST_GUILESS_MAIN(FocusStoreTest)
#include "tst_focus_store.moc"
