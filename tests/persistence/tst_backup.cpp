// The daily copies of the store: one per day, the newest seven kept, taken
// in slices while the program goes on writing, and restorable.
#include "persistence/DayRepository.h"
#include "persistence/PersistenceController.h"
#include "persistence/StoreBackup.h"
#include "persistence/TaskRepository.h"
#include "support/ManualClock.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace tarnwell;

namespace {

// Titles of the tasks of each day, "yyyy-MM-dd: a, b".
QStringList contents(const QString &path)
{
    PersistenceController store(path);
    QStringList lines;
    FetchRequest byDate;
    byDate.orderBy = QStringLiteral("date");
    byDate.lessThan = [](const ManagedObject *a, const ManagedObject *b) {
        return static_cast<const Day *>(a)->date() < static_cast<const Day *>(b)->date();
    };
    for (Day *day : store.viewContext().fetch<Day>(byDate)) {
        QStringList titles;
        for (Task *task : day->tasks())
            titles << task->title();
        titles.sort();
        lines << day->date().toLocalTime().toString(QStringLiteral("yyyy-MM-dd: ")) + titles.join(QStringLiteral(", "));
    }
    return lines;
}

} // namespace

class BackupTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void copiesOncePerQuietDayKeepsSevenAndRestores()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("Tarnwell.sqlite"));
        ManualClock time(QDateTime(QDate(2026, 3, 4), QTime(10, 0)));
        QString firstCopy;
        {
            PersistenceController store(path);
            Calendar calendar;
            DayRepository days(store.viewContext(), calendar, time.clock());
            TaskRepository tasks(store.viewContext(), calendar, time.clock(), days);
            tasks.createTask(QStringLiteral("write the report"), 30, false, days.fetchOrCreateDay(time.now));

            StoreBackupService backups(store.viewContext(), path, calendar, time.clock(), 50);
            QSignalSpy finished(&backups, &StoreBackupService::finished);
            backups.start();
            // Each change puts the copy off; it comes once the store is quiet.
            for (int i = 0; i < 4; ++i) {
                QTest::qWait(25);
                tasks.createTask(QStringLiteral("note %1").arg(i), 5, false, days.fetchOrCreateDay(time.now));
            }
            QVERIFY(finished.isEmpty());
            QVERIFY(finished.wait(2000));
            firstCopy = finished.first().first().toString();
            QVERIFY(firstCopy.endsWith(QStringLiteral("/backups/Tarnwell-2026-03-04.sqlite")));
            QVERIFY(!backups.isDue());
            QVERIFY(!QFile::exists(firstCopy + QStringLiteral(".partial")));
            QVERIFY(QFile::copy(firstCopy, dir.filePath(QStringLiteral("kept.sqlite")))); // before it is pruned

            // Work goes on after the copy, and across the next days.
            tasks.createTask(QStringLiteral("after the copy"), 10, false, days.fetchOrCreateDay(time.now));
            for (int day = 1; day <= 8; ++day) {
                time.advance(24LL * 3600 * 1000);
                QVERIFY(backups.isDue());
                tasks.createTask(QStringLiteral("day %1").arg(day), 10, false, days.fetchOrCreateDay(time.now));
                backups.backUpNow();
                QVERIFY(finished.wait(2000));
            }
            const auto kept = StoreBackupService::list(path);
            QCOMPARE(kept.size(), 7);
            QCOMPARE(kept.first().day, QDate(2026, 3, 12));
            QCOMPARE(kept.last().day, QDate(2026, 3, 6));
            QVERIFY(!QFile::exists(firstCopy));
        }

        // The copy holds the day as it was when it was taken, nothing later.
        const QString copy = dir.filePath(QStringLiteral("kept.sqlite"));
        const QStringList wanted{QStringLiteral("2026-03-04: note 0, note 1, note 2, note 3, write the report")};
        QCOMPARE(contents(copy), wanted);
        const QStringList before = contents(path);
        QCOMPARE(before.size(), 9);
        const QString aside = StoreBackupService::restore(path, copy, time.now);
        QCOMPARE(contents(path), wanted);
        QCOMPARE(contents(aside), before); // the store as it was, copied aside first
        QVERIFY_THROWS_EXCEPTION(StoreError,
                                 StoreBackupService::restore(path, dir.filePath(QStringLiteral("none")), time.now));
    }

    void changesMadeDuringTheCopyAreInIt()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("Tarnwell.sqlite"));
        ManualClock time(QDateTime(QDate(2026, 10, 25), QTime(9, 0)));
        PersistenceController store(path);
        Calendar calendar;
        DayRepository days(store.viewContext(), calendar, time.clock());
        TaskRepository tasks(store.viewContext(), calendar, time.clock(), days);
        Day *today = days.fetchOrCreateDay(time.now);
        for (int i = 0; i < 400; ++i) {
            Task *task = store.viewContext().insertNew<Task>();
            task->setTitle(QStringLiteral("history %1 with a long enough title to take room").arg(i));
            task->setDay(days.fetchOrCreateDay(time.now.addDays(-1 - i)));
            task->setCreatedAt(time.now);
            task->setUpdatedAt(time.now);
        }
        store.viewContext().save();

        StoreBackupService backups(store.viewContext(), path, calendar, time.clock());
        QSignalSpy finished(&backups, &StoreBackupService::finished);
        backups.backUpNow();
        QVERIFY(backups.isRunning()); // in slices, not in one go
        tasks.createTask(QStringLiteral("written mid-copy"), 15, false, today);
        QVERIFY(finished.wait(5000));
        const QString copy = finished.first().first().toString();
        QVERIFY(!copy.isEmpty());
        QVERIFY(contents(copy).contains(QStringLiteral("2026-10-25: written mid-copy")));
        QCOMPARE(contents(copy).size(), 401);
    }
};

QTEST_GUILESS_MAIN(BackupTest)
#include "tst_backup.moc"
