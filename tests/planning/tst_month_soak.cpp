// A month of use in fast motion: the real services over a store on disk,
// driven by an injected clock through 31 days that cross a daylight-saving
// change, with adds, reorders, timers started, paused and completed, a
// suspend across midnight, a timer left running overnight, the clock set
// back and a time-zone change. After every step the promises a user relies
// on are checked against a model the test keeps itself.
#include "focus/FocusFixture.h"
#include "persistence/RoutineRepository.h"
#include "platform/DayChangeObserver.h"
#include "services/FocusTime.h"
#include "services/RolloverService.h"
#include "services/RoutineService.h"

#include <QRandomGenerator>
#include <QSettings>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

// A failed promise ends the month at once: what follows would only repeat it.
#define CHECK(step)                                                                                                    \
    do {                                                                                                               \
        checkInvariants(step);                                                                                         \
        if (QTest::currentTestFailed())                                                                                \
            return;                                                                                                    \
    } while (false)

namespace {

struct Month
{
    explicit Month(const QString &dir)
        : defaults(dir + QStringLiteral("/defaults.ini"), QSettings::IniFormat)
        , store(dir + QStringLiteral("/Tarnwell.sqlite"))
        , settings(store)
        , dayRepository(context(), calendar, time.clock())
        , taskRepository(context(), calendar, time.clock(), dayRepository)
        , service(context(), settings, time.clock(), &dayRepository, &taskRepository)
        , sound(settings, recorder)
        , countdown(service, recorder, sound, settings, time.clock(), std::chrono::milliseconds(0))
        , routineRepository(context(), time.clock())
        , routines(context(), calendar, time.clock(), routineRepository, taskRepository, dayRepository)
        , rollover(context(), calendar, time.clock(), dayRepository, taskRepository, routineRepository, defaults)
        , midnight(calendar, time.clock())
    {
    }
    StoreContext &context() { return store.viewContext(); }
    DayRepository &days() { return dayRepository; }
    TaskRepository &tasks() { return taskRepository; }

    Calendar calendar; // shared with the services: a zone change reaches all
    ManualClock time{QDateTime(QDate(2026, 10, 12), QTime(8, 0))};
    QSettings defaults;
    PersistenceController store;
    AppSettingsStore settings;
    DayRepository dayRepository;
    TaskRepository taskRepository;
    ActiveTaskService service;
    Recorder recorder;
    SoundService sound;
    CountdownService countdown;
    RoutineRepository routineRepository;
    RoutineService routines;
    RolloverService rollover;
    platform::DayChangeObserver midnight;
};

} // namespace

class MonthSoakTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<Month> m;
    QTemporaryDir m_dir;
    QRandomGenerator m_random{20261025};
    QHash<QUuid, qint64> m_banked; // focused seconds the model expects, per task
    QHash<QUuid, QDateTime> m_running; // start of the running segment, per task
    QSet<QDate> m_routineDays; // days the routine was applied on
    QList<QTimeZone> m_zones;
    int m_steps = 0;
    QDate m_rolloverHandledOn; // the day whose morning offer was answered

    QDateTime now() const { return m->time.now; }

    // Every promise, after every step.
    void checkInvariants(const char *step)
    {
        ++m_steps;
        const QString where = QStringLiteral("%1 at %2").arg(QLatin1String(step), now().toString(Qt::ISODate));
        StoreContext &context = m->context();
        QVERIFY2(!context.hasChanges(), qPrintable(where + QStringLiteral(": changes left unsaved")));

        QSqlQuery sql(context.database());
        QVERIFY(sql.exec(QStringLiteral("PRAGMA quick_check")) && sql.next());
        QVERIFY2(sql.value(0).toString() == QLatin1String("ok"), qPrintable(where));
        // Every task lies on a day that exists.
        QVERIFY(sql.exec(QStringLiteral("SELECT count(*) FROM tasks WHERE day_id IS NULL OR day_id NOT IN "
                                        "(SELECT id FROM days)")) &&
                sql.next());
        QVERIFY2(sql.value(0).toInt() == 0, qPrintable(where + QStringLiteral(": a task without its day")));

        // One Day per date: a day's date is a local midnight, and never twice.
        QSet<qint64> dates;
        for (Day *day : context.fetch<Day>(FetchRequest())) {
            QVERIFY2(!dates.contains(day->date().toMSecsSinceEpoch()),
                     qPrintable(where + QStringLiteral(": two days")));
            dates.insert(day->date().toMSecsSinceEpoch());
            const bool midnightSomewhere = std::any_of(m_zones.cbegin(), m_zones.cend(), [&](const QTimeZone &zone) {
                return Calendar(zone).startOfDay(day->date()) == day->date();
            });
            QVERIFY2(midnightSomewhere,
                     qPrintable(where + QStringLiteral(": a day that starts at ") + day->date().toString(Qt::ISODate)));
        }

        QHash<QPair<QUuid, QUuid>, int> routineTasks; // (day, item) -> tasks
        for (Task *task : context.fetch<Task>(FetchRequest())) {
            const QString name = where + QStringLiteral(": ") + task->title();
            // Reachable: an open task is in its day's queue.
            if (!task->completed() && !task->archived())
                QVERIFY2(m->tasks().openTasks(task->day()).contains(task), qPrintable(name + QStringLiteral(" lost")));
            // Focused seconds: never negative, never counted twice.
            const qint64 focused = FocusTime::focusedSeconds(*task, now());
            QVERIFY2(focused >= 0 && task->actualSecondsFocused().value_or(0) >= 0, qPrintable(name));
            qint64 expected = m_banked.value(task->id());
            if (m_running.contains(task->id()))
                expected += std::max<qint64>(0, m_running.value(task->id()).secsTo(now()));
            QVERIFY2(focused == expected,
                     qPrintable(name + QStringLiteral(": %1 s focused, %2 expected").arg(focused).arg(expected)));
            QCOMPARE(FocusTime::isRunning(*task), m_running.contains(task->id()));
            if (task->routineItemID() && !task->rolledFromDate()) // carried-over work may repeat an item
                ++routineTasks[{task->day()->id(), *task->routineItemID()}];
        }
        // A routine places each item at most once a day.
        for (auto it = routineTasks.cbegin(); it != routineTasks.cend(); ++it)
            QVERIFY2(it.value() == 1, qPrintable(where + QStringLiteral(": a routine applied twice")));

        // The countdown agrees with the task in hand.
        Task *active = m->service.activeTask();
        m->countdown.evaluate();
        if (active && active->durationMinutes() && FocusTime::isRunning(*active)) {
            QCOMPARE(m->countdown.remainingSeconds().value_or(-1),
                     *active->durationMinutes() * 60 - FocusTime::focusedSeconds(*active, now()));
        }
        // Rollover: once handled, not offered again that day.
        QVERIFY2(m_rolloverHandledOn != m->calendar.date(now()) || m->rollover.isDismissedToday() ||
                     !m->rollover.candidate(),
                 qPrintable(where + QStringLiteral(": rollover offered again")));
        // The midnight timer points at the next local midnight.
        m->midnight.rearm();
        const QDateTime next = m->midnight.nextFire();
        QVERIFY2(next > now() && next <= now().addSecs(25 * 3600) && m->calendar.startOfDay(next) == next,
                 qPrintable(where + QStringLiteral(": next midnight ") + next.toString(Qt::ISODate)));
    }

    void start(Task *task)
    {
        m->service.startTimer(task);
        if (!m_running.contains(task->id()))
            m_running.insert(task->id(), now());
    }
    void pause(Task *task)
    {
        m->service.pauseTimer(task);
        if (m_running.contains(task->id()))
            m_banked[task->id()] += std::max<qint64>(0, m_running.take(task->id()).secsTo(now()));
    }
    void complete(Task *task)
    {
        const qint64 focused = FocusTime::focusedSeconds(*task, now());
        m->tasks().complete(task, now(), focused);
        m_running.remove(task->id());
        m_banked[task->id()] = focused;
    }
    // Minutes pass with the countdown ticking (once a minute is enough here).
    void work(int minutes)
    {
        for (int i = 0; i < minutes; ++i) {
            m->time.advance(60 * 1000);
            m->countdown.evaluate();
        }
    }
    QDateTime at(int day, int hour, int minute = 0) const
    {
        const QDateTime start = m->calendar.startOfDayAdding(m->calendar.startOfDay(first()), day);
        return start.addSecs(hour * 3600 + minute * 60);
    }
    static QDateTime first() { return QDateTime(QDate(2026, 10, 12), QTime(8, 0)); }

    // What the program does when a new day starts (and at launch).
    void newDay()
    {
        const int added = m->routines.applyDueRoutines();
        QCOMPARE(m->routines.applyDueRoutines(), 0); // once a day, however often asked
        const QDate today = m->calendar.date(now());
        if (added > 0) {
            QVERIFY2(!m_routineDays.contains(today),
                     qPrintable(QStringLiteral("routine applied again on ") + today.toString(Qt::ISODate) +
                                QStringLiteral(" at ") + now().toString(Qt::ISODate)));
            m_routineDays.insert(today);
        }
        m->service.refresh();
        CHECK("routines");
        if (const auto offer = m->rollover.candidate(); offer && !m->rollover.isDismissedToday()) {
            if (today.day() % 3 == 0) {
                m->rollover.dismissForToday();
            } else {
                m->rollover.rollForward(offer->tasks);
                for (Task *task : offer->tasks) {
                    m_banked.insert(task->id(), 0); // carried over: focus starts afresh
                    m_running.remove(task->id());
                }
                m->rollover.dismissForToday();
            }
        }
        m_rolloverHandledOn = m->calendar.date(now());
        CHECK("rollover");
    }

private Q_SLOTS:
    void initTestCase()
    {
        m = std::make_unique<Month>(m_dir.path());
        m_zones = {QTimeZone::systemTimeZone(), QTimeZone("Asia/Kolkata")};
        m->calendar.setTimeZone(QTimeZone::systemTimeZone());
        m->midnight.start();
        m->routineRepository.createRoutine(QStringLiteral("Morning"),
                                           {{QStringLiteral("Inbox"), 15, {}}, {QStringLiteral("Plan"), 10, {}}});
        m->routineRepository.setRepeatWeekdays(m->routineRepository.routines().first(),
                                               RoutineSchedule::weekdays().mask);
    }

    void thirtyOneDays()
    {
        QElapsedTimer elapsed;
        elapsed.start();
        for (int day = 0; day < 31; ++day) {
            if (day == 18)
                m->calendar.setTimeZone(m_zones.at(1)); // a trip
            if (day == 22)
                m->calendar.setTimeZone(m_zones.at(0));
            if (now() < at(day, 8))
                m->time.now = at(day, 8);
            newDay();
            if (QTest::currentTestFailed())
                return;

            // The morning's adds and a reorder.
            Day *today = m->days().fetchOrCreateDay(now());
            for (int i = 0; i < 3; ++i) {
                const qint64 minutes = 5 + m_random.bounded(40);
                m->tasks().createTask(QStringLiteral("d%1 task %2").arg(day).arg(i), minutes, i == 2, today);
                CHECK("add");
            }
            const QList<Task *> open = m->tasks().openTasks(today);
            m->tasks().moveTask(open.at(qsizetype(m_random.bounded(int(open.size())))),
                                m_random.bounded(2) ? TaskRepository::Direction::up : TaskRepository::Direction::down);
            CHECK("reorder");

            // Four sessions on the task in hand: start, work, pause, resume, maybe complete.
            for (int session = 0; session < 4; ++session) {
                Task *task = m->service.activeTask();
                if (!task)
                    break;
                start(task);
                work(5 + int(m_random.bounded(30)));
                CHECK("working");
                if (day % 7 == 3 && session == 1) {
                    m->time.advance(-2 * 3600 * 1000); // the clock is set back
                    CHECK("clock set back");
                    work(3);
                }
                pause(task);
                CHECK("pause");
                m->time.advance(qint64(m_random.bounded(20)) * 60 * 1000);
                start(task);
                work(5);
                if (session % 2 == 0)
                    complete(task);
                else
                    pause(task);
                CHECK("session end");
            }

            // Evenings: on some days the laptop sleeps over midnight with a
            // timer going (paused on the way down), on others the sleep is
            // missed and the timer runs on until the morning.
            Task *late = m->service.activeTask();
            if (late && day % 7 == 5) {
                m->time.now = at(day, 23, 30);
                start(late);
                work(10);
                pause(late); // PrepareForSleep
                CHECK("suspend");
                m->time.now = at(day + 1, 7, 50);
            } else if (late && day % 7 == 6) {
                m->time.now = at(day, 23, 40);
                start(late);
                m->time.now = at(day + 1, 7, 55);
                CHECK("running overnight");
                pause(late);
                CHECK("paused next morning");
            }
        }
        qInfo("31 days, %d checked steps, %.1f s", m_steps, double(elapsed.elapsed()) / 1000);
        QVERIFY(m_routineDays.size() >= 20); // the weekdays of the month
        QVERIFY(m_steps > 500);
    }
};

QTEST_GUILESS_MAIN(MonthSoakTest)
#include "tst_month_soak.moc"
