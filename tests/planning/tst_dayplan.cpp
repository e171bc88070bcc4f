// Day plan: the time left against the workday end, what overflows, and the
// footer lines made from it.
#include "services/DayPlanCalculator.h"
#include "services/DayPlanFooterText.h"

#include <QCoreApplication>
#include <QTest>
#include <QTranslator>

#include <memory>

using namespace tarnwell;

namespace {

const Calendar calendar;
const QDateTime tenAm = QDate(2026, 6, 10).startOfDay(calendar.timeZone()).addSecs(10 * 3600);

// Planned minutes per task, -1 for an untimed task.
struct Queue
{
    std::vector<std::unique_ptr<Task>> owned;
    QList<Task *> tasks;
    explicit Queue(const QList<int> &minutes)
    {
        for (int m : minutes) {
            owned.push_back(std::make_unique<Task>());
            if (m >= 0)
                owned.back()->setDurationMinutes(m);
            tasks.append(owned.back().get());
        }
    }
};

// Answers every key with the key and both kinds of argument, so that a test
// sees which key a line uses and what it was given.
class KeyTranslator : public QTranslator
{
public:
    QString translate(const char *, const char *key, const char *, int) const override
    {
        return QString::fromLatin1(key) + QStringLiteral("(%n|%1)");
    }
    bool isEmpty() const override { return false; }
};

} // namespace

class DayPlanTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void plan_data()
    {
        QTest::addColumn<QList<int>>("minutes");
        QTest::addColumn<qint64>("remaining"); // -1: no countdown value
        QTest::addColumn<bool>("today");
        QTest::addColumn<int>("endMinutes"); // workday end setting
        QTest::addColumn<qint64>("total");
        QTest::addColumn<int>("untimed");
        QTest::addColumn<QList<int>>("overflow");
        QTest::addColumn<bool>("past");
        using L = QList<int>;
        // Now is 10:00; an end at 12:00 leaves 7200 seconds.
        QTest::newRow("untimed only") << L{-1, -1, -1} << qint64(-1) << true << 720 << qint64(0) << 3 << L{} << false;
        QTest::newRow("fits") << L{30, 60, -1} << qint64(600) << true << 720 << qint64(4200) << 1 << L{} << false;
        QTest::newRow("in hand in overtime")
            << L{30, 60} << qint64(-300) << true << 720 << qint64(3600) << 0 << L{} << false;
        QTest::newRow("in hand without countdown")
            << L{30, 60} << qint64(-1) << true << 720 << qint64(3600) << 0 << L{} << false;
        QTest::newRow("finish exactly at the end")
            << L{60, 60} << qint64(3600) << true << 720 << qint64(7200) << 0 << L{} << false;
        QTest::newRow("one second over") << L{60, 60, -1, 5} << qint64(3601) << true << 720 << qint64(7501) << 1
                                         << L{1, 2, 3} << true;
        QTest::newRow("in hand alone runs past")
            << L{300, -1} << qint64(9000) << true << 720 << qint64(9000) << 1 << L{1} << true;
        QTest::newRow("end already passed")
            << L{30, -1, 20} << qint64(0) << true << 540 << qint64(1200) << 1 << L{1, 2} << true;
        QTest::newRow("workday end off") << L{600, 600} << qint64(36000) << true << -1 << qint64(72000) << 0 << L{}
                                         << false;
        QTest::newRow("end 1440 is off") << L{600, 600} << qint64(36000) << true << 1440 << qint64(72000) << 0 << L{}
                                         << false;
        QTest::newRow("another day") << L{600, -1, 600} << qint64(5) << false << 720 << qint64(72000) << 1 << L{}
                                     << false;
    }
    void plan()
    {
        QFETCH(QList<int>, minutes);
        QFETCH(qint64, remaining);
        QFETCH(bool, today);
        QFETCH(int, endMinutes);
        QFETCH(qint64, total);
        QFETCH(int, untimed);
        QFETCH(QList<int>, overflow);
        QFETCH(bool, past);
        const Queue queue(minutes);
        const auto end = DayPlanCalculator::workdayEnd(endMinutes, tenAm, calendar);
        QCOMPARE(end.has_value(), endMinutes >= 0 && endMinutes < 1440);
        const DayPlan plan = DayPlanCalculator::plan(
            queue.tasks, remaining >= 0 ? std::optional(remaining) : std::nullopt, today, tenAm, end);
        QCOMPARE(plan.totalSeconds, total);
        QCOMPARE(plan.untimedCount, untimed);
        QList<Task *> expected;
        for (int p : overflow)
            expected.append(queue.tasks[p]);
        QCOMPARE(plan.overflow, expected);
        QCOMPARE(plan.runsPastWorkday, past);
        QCOMPARE(plan.finishDate, today && total > 0 ? std::optional(tenAm.addSecs(total)) : std::nullopt);
    }

    void emptyQueueAndWorkdayEnd()
    {
        QCOMPARE(DayPlanCalculator::plan({}, 600, true, tenAm, tenAm), DayPlan::empty());
        QCOMPARE(DayPlanCalculator::workdayEnd(18 * 60, tenAm, calendar)->toTimeZone(calendar.timeZone()).time(),
                 QTime(18, 0));
        QCOMPARE(DayPlanCalculator::workdayEnd(std::nullopt, tenAm, calendar), std::nullopt);
    }

    void footerLines()
    {
        QCOMPARE(DayPlanFooterText::formatDuration(101 * 60), QStringLiteral("1h 41m"));
        QCOMPARE(DayPlanFooterText::formatDuration(2 * 3600), QStringLiteral("2h"));
        QCOMPARE(DayPlanFooterText::formatDuration(61), QStringLiteral("2m"));
        const Queue queue({30, -1});
        const auto end = DayPlanCalculator::workdayEnd(9 * 60, tenAm, calendar);
        const DayPlan plan = DayPlanCalculator::plan(queue.tasks, 1800, true, tenAm, end);
        KeyTranslator keys;
        QCoreApplication::installTranslator(&keys);
        const auto lines = DayPlanFooterText::lines(plan, true, end, tenAm, calendar, QLocale::c());
        QCOMPARE(lines.planned, QStringLiteral("dayPlan.planned(%n|30m)"));
        QCOMPARE(lines.finish, QStringLiteral("dayPlan.finishPrefix(%n|%1) 10:30"));
        QCOMPARE(lines.workdayEnd, QStringLiteral("dayPlan.workdayEnded(%n|09:00)"));
        QCOMPARE(lines.untimed, QStringLiteral("dayPlan.untimed(1|%1)"));
        // Only the untimed task after the task in hand overflows.
        QCOMPARE(lines.overflow, QStringLiteral("dayPlan.overflowCount(1|%1)"));
        const auto ahead = DayPlanFooterText::lines(plan, true, end, tenAm.addSecs(-7200), calendar, QLocale::c());
        QCOMPARE(ahead.workdayEnd, QStringLiteral("dayPlan.workdayEnds(%n|09:00)"));
        const auto otherDay = DayPlanFooterText::lines(DayPlanCalculator::plan(queue.tasks, {}, false, tenAm, end),
                                                       false, end, tenAm, calendar);
        QVERIFY(otherDay.finish.isEmpty() && otherDay.workdayEnd.isEmpty());
        QCOMPARE(otherDay.planned, QStringLiteral("dayPlan.planned(%n|30m)"));
        QCoreApplication::removeTranslator(&keys);
    }
};

QTEST_GUILESS_MAIN(DayPlanTest)
#include "tst_dayplan.moc"
