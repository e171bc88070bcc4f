// A time-zone change while the program runs: the one calendar the services
// share moves to the new zone, so "today", the day's queue and the next
// midnight all follow it, in both directions across midnight.
#include "persistence/DayRepository.h"
#include "persistence/PersistenceController.h"
#include "persistence/TaskRepository.h"
#include "platform/DayChangeObserver.h"
#include "support/ManualClock.h"

#include <QSignalSpy>
#include <QTest>

using namespace tarnwell;

class TimeZoneTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theWholeProgramFollowsAZoneChange()
    {
        qputenv("TZ", "America/New_York");
        Calendar calendar; // the composition root's; everyone below holds a copy
        QCOMPARE(calendar.timeZone().id(), QByteArray("America/New_York"));
        // Wednesday 10 June 2026, 23:30 in New York = Thursday 05:30 in Berlin.
        ManualClock time(QDateTime(QDate(2026, 6, 11), QTime(3, 30), Qt::UTC));
        PersistenceController store(true);
        DayRepository days(store.viewContext(), calendar, time.clock());
        TaskRepository tasks(store.viewContext(), calendar, time.clock(), days);
        platform::DayChangeObserver observer(calendar, time.clock());
        QSignalSpy dayChanged(&observer, &platform::DayChangeObserver::dayChanged);
        QSignalSpy zoneChanged(&observer, &platform::DayChangeObserver::timeZoneChanged);
        observer.start();

        tasks.createTask(QStringLiteral("Send the invoice"), 30, false, days.fetchOrCreateDay(days.today()));
        QCOMPARE(days.calendar().date(days.today()), QDate(2026, 6, 10));
        QCOMPARE(observer.nextFire(), QDateTime(QDate(2026, 6, 11), QTime(4, 0), Qt::UTC));

        // Flying east: in Berlin it is already Thursday.
        qputenv("TZ", "Europe/Berlin");
        observer.systemTimeZoneChanged();
        QCOMPARE(zoneChanged.size(), 1);
        QCOMPARE(dayChanged.size(), 1);
        QCOMPARE(calendar.timeZone().id(), QByteArray("Europe/Berlin"));
        QCOMPARE(days.calendar().date(days.today()), QDate(2026, 6, 11));
        QCOMPARE(tasks.openTasks(days.day(days.today())).size(), 0);
        QCOMPARE(observer.nextFire(), QDateTime(QDate(2026, 6, 11), QTime(22, 0), Qt::UTC));

        // Nothing changed on disk or in the zone: no news.
        observer.systemTimeZoneChanged();
        QCOMPARE(zoneChanged.size(), 1);
        QCOMPARE(dayChanged.size(), 1);

        // And back west: Wednesday again, the task is today's once more.
        qputenv("TZ", "America/New_York");
        observer.systemTimeZoneChanged();
        QCOMPARE(zoneChanged.size(), 2);
        QCOMPARE(dayChanged.size(), 2);
        QCOMPARE(days.calendar().date(days.today()), QDate(2026, 6, 10));
        QCOMPARE(tasks.openTasks(days.day(days.today())).size(), 1);
    }
};

QTEST_GUILESS_MAIN(TimeZoneTest)
#include "tst_time_zone.moc"
