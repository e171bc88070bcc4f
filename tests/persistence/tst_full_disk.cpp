// A disk that fills up while the program saves. The file-size limit of the
// process (RLIMIT_FSIZE) stands in for the full disk: SQLite's writes beyond
// it fail the way they fail on a full file system, and no privilege is
// needed to set or lift it.
#include "persistence/DayRepository.h"
#include "persistence/PersistenceController.h"
#include "persistence/TaskRepository.h"
#include "services/ActiveTaskService.h"
#include "services/SaveFailureService.h"
#include "settings/AppSettingsStore.h"

#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/resource.h>

using namespace tarnwell;

namespace {

struct RecordingCenter : NotificationCenter
{
    bool supportsActions() const override { return true; }
    void deliver(const NotificationContent &content) override { delivered << content; }
    void remove(const QString &identifier) override { removed << identifier; }
    QList<NotificationContent> delivered;
    QStringList removed;
};

// Writes past `bytes` into any file fail until the guard is gone.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes)
    {
        ::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_saved);
        rlimit limit = m_saved;
        limit.rlim_cur = bytes;
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { lift(); }
    void lift() { ::setrlimit(RLIMIT_FSIZE, &m_saved); }

private:
    rlimit m_saved{};
};

struct Store
{
    explicit Store(const QString &path)
        : controller(path)
        , settings(controller)
        , days(controller.viewContext(), calendar, systemClock())
        , tasks(controller.viewContext(), calendar, systemClock(), days)
    {
    }
    Day *today() { return days.fetchOrCreateDay(QDateTime::currentDateTimeUtc()); }
    PersistenceController controller;
    AppSettingsStore settings;
    Calendar calendar;
    DayRepository days;
    TaskRepository tasks;
};

QStringList storedTitles(const QString &path)
{
    PersistenceController reopened(path);
    QSqlQuery check(reopened.viewContext().database());
    if (!check.exec(QStringLiteral("PRAGMA integrity_check")) || !check.next() ||
        check.value(0).toString() != QLatin1String("ok"))
        return {QStringLiteral("integrity_check failed")};
    QStringList titles;
    for (Task *task : reopened.viewContext().fetch<Task>(FetchRequest()))
        titles << task->title() + (task->actualSecondsFocused() ? QStringLiteral("+focus") : QString());
    titles.sort();
    return titles;
}

} // namespace

class FullDiskTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void failedSavesAreToldOnceKeptAndWrittenWhenSpaceReturns()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("Tarnwell.sqlite"));
        RecordingCenter center;
        {
            Store store(path);
            SaveFailureService guard(
                store.controller.viewContext(), center, [] { return true; }, 3600 * 1000);
            ActiveTaskService engine(store.controller.viewContext(), store.settings, systemClock(), &store.days,
                                     &store.tasks);
            Task *before = store.tasks.createTask(QStringLiteral("before"), 25, false, store.today());

            FullDisk full(1);
            QTest::ignoreMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("^Save failed: ")));
            QVERIFY_THROWS_EXCEPTION(std::exception,
                                     store.tasks.createTask(QStringLiteral("during"), 10, false, store.today()));
            QVERIFY(guard.isFailing());
            // The focus engine swallows its failures; they still count.
            QTest::ignoreMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("startTimer save failed")));
            engine.startTimer(before);
            QTest::ignoreMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("pauseTimer save failed")));
            engine.pauseTimer(before);
            guard.retry();
            QCOMPARE(center.delivered.size(), 1);
            QCOMPARE(center.delivered.first().identifier, QStringLiteral("tarnwell.store.saveFailed"));
            QVERIFY(!center.delivered.first().body.isEmpty());
            QVERIFY(guard.warning().isEmpty()); // told by the notification, not the tooltip
            QVERIFY(center.removed.isEmpty());
            // Nothing half-written reached the file in the meantime.
            full.lift();
            QCOMPARE(storedTitles(path), QStringList{QStringLiteral("before")});

            guard.retry();
            QVERIFY(!guard.isFailing());
            QVERIFY(!store.controller.viewContext().hasChanges());
            QCOMPARE(center.removed, QStringList{QStringLiteral("tarnwell.store.saveFailed")});
        }
        QCOMPARE(storedTitles(path), (QStringList{QStringLiteral("before+focus"), QStringLiteral("during")}));
    }

    void withoutNotificationsTheTooltipSaysItAndTheTimerRetries()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("Tarnwell.sqlite"));
        RecordingCenter center;
        Store store(path);
        SaveFailureService guard(
            store.controller.viewContext(), center, [] { return false; }, 20);
        QStringList warnings;
        connect(&guard, &SaveFailureService::warningChanged, this, [&](const QString &w) { warnings << w; });
        store.tasks.createTask(QStringLiteral("first"), 5, false, store.today());
        {
            FullDisk full(1);
            QTest::ignoreMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("^Save failed: ")));
            QVERIFY_THROWS_EXCEPTION(std::exception,
                                     store.tasks.createTask(QStringLiteral("second"), 5, false, store.today()));
            QTest::qWait(100); // a few retries against the full disk
            QVERIFY(guard.isFailing());
            QCOMPARE(warnings, QStringList{SaveFailureService::noticeBody()});
        }
        QTRY_VERIFY(!guard.isFailing());
        QCOMPARE(warnings, (QStringList{SaveFailureService::noticeBody(), QString()}));
        QVERIFY(center.delivered.isEmpty());
        QCOMPARE(storedTitles(path), (QStringList{QStringLiteral("first"), QStringLiteral("second")}));
    }
};

QTEST_GUILESS_MAIN(FullDiskTest)
#include "tst_full_disk.moc"
