// The snapshot the widget reads: the builder's output byte for byte over the
// cases that matter, the shared coder's rules, and when the writer writes.
#include "WidgetFixture.h"
#include "kit/Translations.h"
#include "widget/TarnwellSharedJSON.h"

#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTest>

namespace json = TarnwellSharedJSON;

class WidgetSnapshotTest : public QObject
{
    Q_OBJECT

    Translations m_translations;

    static QByteArray onDisk()
    {
        QFile file(*TarnwellAppGroup::snapshotPath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static QString label(WidgetFixture &f)
    {
        return WidgetSnapshotBuilder::dayLabel(f.time.now, f.calendar, QStringLiteral("en"));
    }

private Q_SLOTS:
    void initTestCase() { m_translations.install(QStringLiteral("en")); }

    void emptyDayGolden()
    {
        WidgetFixture f;
        const QByteArray expected = "{\"upNext\":[],\"totalQueued\":0,\"elapsedSeconds\":0,\"isRunning\":false,"
                                    "\"isOverdue\":false,\"dayLabel\":\"" +
            label(f).toUtf8() +
            "\",\"completedCount\":0,\"totalCount\":0,\"summaryLine\":\"No tasks completed yet\","
            "\"rolledOverCount\":0,\"minutesUnit\":\"min\",\"languageCode\":\"en\",\"appearance\":\"auto\","
            "\"appRunning\":true,\"validUntil\":\"2026-03-05T00:00:00Z\",\"updatedAt\":\"2026-03-04T10:00:00Z\"}";
        QCOMPARE(f.builder()->build(true).encode(), expected);
        QVERIFY(label(f).startsWith(QStringLiteral("Today, ")));
    }

    void runningAnchorGolden()
    {
        WidgetFixture f;
        Task *done = f.add(QStringLiteral("Inbox"), 30);
        f.tasks.complete(done, f.time.now, 1500);
        Task *anchor = f.add(QStringLiteral("Write"), 20);
        anchor->setTitle(QStringLiteral("Write \"report\"\n"));
        anchor->setActualSecondsFocused(300);
        const QDateTime started = f.time.now;
        anchor->setActiveStartedAt(started);
        Task *rolled = f.add(QStringLiteral("Review"), 30);
        rolled->setRolledFromDate(f.calendar.startOfDayAdding(f.time.now, -1));
        f.add(QStringLiteral("Yesterday's loose end"), std::nullopt, -1);
        f.time.advance(60500);

        // 300 banked + 60 running of 1200: deadline T + 900; the plan has
        // 840 + 1800 s left; one rollover candidate from yesterday.
        const QByteArray expected = "{\"anchor\":{\"id\":\"" + WidgetFixture::id(anchor).toUtf8() +
            "\",\"title\":\"Write \\\"report\\\"\\n\",\"durationMinutes\":20,\"rolledOver\":false},"
            "\"upNext\":[{\"id\":\"" +
            WidgetFixture::id(rolled).toUtf8() +
            "\",\"title\":\"Review\",\"durationMinutes\":30,\"rolledOver\":true}],"
            "\"totalQueued\":2,\"totalSeconds\":1200,\"elapsedSeconds\":360,"
            "\"timerStart\":\"2026-03-04T10:00:00Z\",\"deadline\":\"2026-03-04T10:15:00Z\","
            "\"isRunning\":true,\"isOverdue\":false,\"dayLabel\":\"" +
            label(f).toUtf8() +
            "\",\"completedCount\":1,\"totalCount\":3,\"summaryLine\":\"1 done \xC2\xB7 25m\","
            "\"plannedLabel\":\"44m\",\"rolledOverCount\":1,\"minutesUnit\":\"min\",\"languageCode\":\"en\","
            "\"appearance\":\"auto\",\"appRunning\":true,\"validUntil\":\"2026-03-05T00:00:00Z\","
            "\"updatedAt\":\"2026-03-04T10:01:00Z\"}";
        const WidgetSnapshot built = f.builder()->build(true);
        QCOMPARE(built.encode(), expected);
        // What the widget decodes is what was built (to the second).
        QCOMPARE(WidgetSnapshot::decode(expected), built);
    }

    void anchorTimingCases()
    {
        WidgetFixture f;
        // Eight open tasks: the first is the anchor, the next six follow.
        QList<Task *> queue;
        for (int i = 0; i < 8; ++i)
            queue << f.add(QStringLiteral("Task %1").arg(i + 1), i == 0 ? std::optional<qint64>(25) : std::nullopt);
        WidgetSnapshot s = f.builder()->build(true);
        QCOMPARE(s.anchor->id, queue.first()->id());
        QCOMPARE(s.upNext.size(), 6);
        QCOMPARE(s.upNext.first().title, QStringLiteral("Task 2"));
        QCOMPARE(s.upNext.last().title, QStringLiteral("Task 7"));
        QCOMPARE(s.totalQueued, 8);
        QCOMPARE(s.totalCount, 8);

        // 25 minutes planned, 1500 s banked, stopped: overdue, no deadline.
        queue.first()->setActualSecondsFocused(1500);
        s = f.builder()->build(true);
        QCOMPARE(s.totalSeconds, 1500);
        QCOMPARE(s.elapsedSeconds, 1500);
        QVERIFY(s.isOverdue);
        QVERIFY(!s.isRunning);
        QVERIFY(!s.deadline && !s.timerStart);
        QVERIFY(!s.encode().contains("\"deadline\""));

        // No plan, 600 s banked: no total, never overdue.
        queue.first()->setDurationMinutes(std::nullopt);
        queue.first()->setActualSecondsFocused(600);
        s = f.builder()->build(true);
        QVERIFY(!s.totalSeconds);
        QVERIFY(!s.encode().contains("\"totalSeconds\""));
        QCOMPARE(s.elapsedSeconds, 600);
        QVERIFY(!s.isOverdue);
    }

    void timingEdges()
    {
        WidgetFixture f;
        Task *task = f.add(QStringLiteral("A"), 20);
        using Timing = WidgetSnapshotBuilder::Timing;
        QCOMPARE(WidgetSnapshotBuilder::timing(nullptr, f.time.now), Timing());
        // Planned, never started: elapsed 0 is not overdue even with a 0 plan.
        task->setDurationMinutes(0);
        QVERIFY(!WidgetSnapshotBuilder::timing(task, f.time.now).isOverdue);
        // A start in the future (clock set back) counts nothing.
        task->setDurationMinutes(20);
        task->setActiveStartedAt(f.time.now.addSecs(30));
        const Timing t = WidgetSnapshotBuilder::timing(task, f.time.now);
        QCOMPARE(t.elapsedSeconds, 0);
        QCOMPARE(t.deadline, f.time.now.addSecs(30 + 1200));
    }

    void languageAndDayLabel()
    {
        WidgetFixture f;
        f.settings.setLanguage(TarnwellLanguageOption::german);
        m_translations.install(QStringLiteral("de"));
        const WidgetSnapshot s = f.builder()->build(true);
        m_translations.install(QStringLiteral("en"));
        QCOMPARE(s.languageCode, QStringLiteral("de"));
        QVERIFY2(s.dayLabel.startsWith(QStringLiteral("Heute, ")), qPrintable(s.dayLabel));
        QVERIFY2(s.dayLabel.contains(QStringLiteral("4. M")), qPrintable(s.dayLabel));
        QCOMPARE(s.minutesUnit, QStringLiteral("Min."));
    }

    void sharedCoderRules()
    {
        // Whole seconds in UTC with "Z", whatever zone or fraction the value has.
        const QDateTime berlin(QDate(2026, 3, 4), QTime(11, 15, 7, 900), QTimeZone("Europe/Berlin"));
        QCOMPARE(json::date(berlin), QStringLiteral("2026-03-04T10:15:07Z"));
        QCOMPARE(json::date(QJsonValue(QStringLiteral("2026-03-04T10:15:07Z"))),
                 QDateTime(QDate(2026, 3, 4), QTime(10, 15, 7), Qt::UTC));
        QCOMPARE(json::date(QJsonValue(QStringLiteral("2026-03-04T11:15:07+01:00")))->toSecsSinceEpoch(),
                 QDateTime(QDate(2026, 3, 4), QTime(10, 15, 7), Qt::UTC).toSecsSinceEpoch());
        for (const char *refused :
             {"2026-03-04T10:15:07.250Z", "2026-03-04 10:15:07Z", "2026-03-04T10:15:07", "", "2026-03-04T10:15:0aZ",
              "2026-03-04T10:15:07*01:00", "2026-03-04T10:15:07+01:00Z", "2026-03-04T10:15:07+0100"})
            QVERIFY2(!json::date(QJsonValue(QString::fromLatin1(refused))), refused);
        const QUuid id = QUuid::createUuid();
        QCOMPARE(json::uuid(id), id.toString(QUuid::WithoutBraces).toUpper());
        QVERIFY(!json::uuid(QJsonValue(id.toString()))); // braces
        QVERIFY(!json::integer(QJsonValue(1.5)));

        // A snapshot with a present optional of the wrong type, or a missing
        // required key, does not decode.
        WidgetFixture f;
        const QByteArray good = f.builder()->build(true).encode();
        QVERIFY(WidgetSnapshot::decode(good));
        QByteArray nullPlan = good;
        nullPlan.replace("\"rolledOverCount\"", "\"plannedLabel\":null,\"rolledOverCount\"");
        QVERIFY(!WidgetSnapshot::decode(nullPlan));
        QByteArray noDay = good;
        noDay.replace("\"dayLabel\"", "\"dayLabelX\"");
        QVERIFY(!WidgetSnapshot::decode(noDay));
    }

    void writerWritesOnlyChanges()
    {
        WidgetFixture f;
        Task *task = f.add(QStringLiteral("A"), 25);
        WidgetSnapshotWriter writer(f.service, f.settings, f.builder());
        QSignalSpy written(&writer, &WidgetSnapshotWriter::written);
        writer.refresh();
        QCOMPARE(written.size(), 1);
        const QByteArray first = onDisk();
        QVERIFY(first.contains("\"title\":\"A\""));

        // A second later nothing shown has changed: no write.
        f.time.advance(1000);
        writer.refresh();
        QCOMPARE(written.size(), 1);
        QCOMPARE(onDisk(), first);

        // A running timer moves elapsedSeconds with every build; that alone
        // is not a change either.
        f.service.startTimer(task);
        QTRY_COMPARE(written.size(), 2);
        QVERIFY(onDisk().contains("\"isRunning\":true"));
        f.time.advance(7000);
        writer.refresh();
        QCOMPARE(written.size(), 2);

        // A pause is (the trigger: the queue republished after the save).
        f.service.pauseTimer(task);
        QTRY_COMPARE(written.size(), 3);
        QVERIFY(onDisk().contains("\"elapsedSeconds\":7,"));

        // Settings: appearance and language.
        f.settings.setTheme(TarnwellAppearance::dark);
        QTRY_COMPARE(written.size(), 4);
        QVERIFY(onDisk().contains("\"appearance\":\"dark\""));
        f.settings.setLanguage(TarnwellLanguageOption::french);
        QTRY_COMPARE(written.size(), 5);
        QVERIFY(onDisk().contains("\"languageCode\":\"fr\""));

        // A new day: the rebuild after midnight has another label and
        // validUntil even with the same queue.
        f.time.advance(24 * 3600 * 1000);
        f.service.refresh();
        QTRY_COMPARE(written.size(), 6);
        QVERIFY(onDisk().contains("\"validUntil\":\"2026-03-06T00:00:00Z\""));
    }

    void writeFailureIsLoggedAndRetried()
    {
        WidgetFixture f;
        f.add(QStringLiteral("A"));
        // A plain file where the snapshot should be renamed to: the save fails.
        const QString path = *TarnwellAppGroup::snapshotPath();
        QVERIFY(QDir().mkpath(path));
        WidgetSnapshotWriter writer(f.service, f.settings, f.builder());
        QSignalSpy written(&writer, &WidgetSnapshotWriter::written);
        QTest::ignoreMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("^Failed to write widget snapshot: .+")));
        writer.refresh();
        QCOMPARE(written.size(), 0);
        QVERIFY(!writer.lastWritten());
        // The next trigger tries again.
        QVERIFY(QDir(path).removeRecursively());
        writer.refresh();
        QCOMPARE(written.size(), 1);
        QVERIFY(QFileInfo(path).isFile());
    }
};

QTEST_GUILESS_MAIN(WidgetSnapshotTest)
#include "tst_widget_snapshot.moc"
