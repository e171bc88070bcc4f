// The checks of outside arguments, export/import and the calendar file.
#include "focus/FocusFixture.h"
#include "ical/IcsWriter.h"
#include "integration/AutomationArguments.h"
#include "integration/TaskAutomation.h"
#include "integration/TaskExchange.h"
#include "kit/Translations.h"
#include "persistence/Day.h"
#include "persistence/RoutineRepository.h"
#include "persistence/Task.h"

#include <QTest>

#include <libical/ical.h>

class AutomationTest : public QObject
{
    Q_OBJECT

    static QStringList titles(const QList<Task *> &tasks)
    {
        QStringList out;
        for (const Task *t : tasks)
            out << t->title();
        return out;
    }

private Q_SLOTS:
    void initTestCase()
    {
        static Translations translations;
        translations.install(QStringLiteral("en"));
    }

    void argumentChecks_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("title at the limit") << "text" << QString(2000, u'x') << true;
        QTest::newRow("title over the limit") << "text" << QString(2001, u'x') << false;
        QTest::newRow("NUL") << "text" << QStringLiteral("a") + QChar(u'\0') << false;
        QTest::newRow("minutes 9999") << "minutes"
                                      << "9999" << true;
        QTest::newRow("minutes 10000") << "minutes"
                                       << "10000" << false;
        QTest::newRow("minutes negative is unplanned") << "minutes"
                                                       << "-5" << true;
        QTest::newRow("date") << "day"
                              << "2026-02-28" << true;
        QTest::newRow("no such date") << "day"
                                      << "2026-02-30" << false;
        QTest::newRow("date with time") << "day"
                                        << "2026-02-28T10:00" << false;
        QTest::newRow("short date") << "day"
                                    << "2026-2-8" << false;
        QTest::newRow("uuid") << "id"
                              << "0f8fad5b-d9cb-469f-a165-70867728950e" << true;
        QTest::newRow("braced uuid") << "id"
                                     << "{0f8fad5b-d9cb-469f-a165-70867728950e}" << true;
        QTest::newRow("half braced") << "id"
                                     << "{0f8fad5b-d9cb-469f-a165-70867728950e" << false;
        QTest::newRow("not hex") << "id"
                                 << "0f8fad5b-d9cb-469f-a165-70867728950g" << false;
        QTest::newRow("nil uuid") << "id"
                                  << "00000000-0000-0000-0000-000000000000" << false;
        QTest::newRow("format") << "format"
                                << "ics" << true;
        QTest::newRow("bad format") << "format"
                                    << "xml" << false;
    }
    void argumentChecks()
    {
        QFETCH(QString, kind);
        QFETCH(QString, value);
        QFETCH(bool, accepted);
        bool ok = true;
        try {
            if (kind == QLatin1String("text"))
                AutomationArguments::text(value, QStringLiteral("title"));
            else if (kind == QLatin1String("minutes"))
                AutomationArguments::plannedMinutes(value.toLongLong());
            else if (kind == QLatin1String("day"))
                AutomationArguments::day(value);
            else if (kind == QLatin1String("id"))
                AutomationArguments::taskId(value);
            else
                AutomationArguments::exportFormat(value);
        } catch (const ArgumentError &error) {
            ok = false;
            QVERIFY(!error.message().isEmpty() && !error.message().startsWith(QLatin1String("error.")));
        }
        QCOMPARE(ok, accepted);
    }

    void exportThenImportIntoAnEmptyStoreReproducesEverything()
    {
        FocusFixture source;
        Task *done = source.add(QStringLiteral("Write, \"report\""), 45);
        source.service.taskRepository().complete(done, source.time.now, 50 * 60 + 40);
        source.add(QStringLiteral("Plan"));
        Day *tomorrow = source.service.dayRepository().fetchOrCreateDay(source.time.now.addDays(1));
        source.service.taskRepository().createTask(QStringLiteral("Later"), 10, true, tomorrow);
        RoutineRepository routines(source.store->viewContext(), source.time.clock());
        routines.createRoutine(QStringLiteral("Morning"), {{QStringLiteral("Stretch"), 5, QStringLiteral("slow")}});
        const QByteArray json =
            TaskExchange::exportJson(source.store->viewContext(), source.service.dayRepository(), {}, source.time.now);

        FocusFixture target;
        const auto summary =
            TaskExchange::apply(TaskExchange::read(json), target.store->viewContext(), target.service.dayRepository());
        QCOMPARE(summary.days, 2);
        QCOMPARE(summary.tasks, 3);
        QCOMPARE(summary.routines, 1);
        const QByteArray again =
            TaskExchange::exportJson(target.store->viewContext(), target.service.dayRepository(), {}, source.time.now);
        QCOMPARE(QString::fromUtf8(again).split(u'\n'), QString::fromUtf8(json).split(u'\n'));

        // A second import of the same file adds nothing.
        const auto repeat =
            TaskExchange::apply(TaskExchange::read(json), target.store->viewContext(), target.service.dayRepository());
        QCOMPARE(repeat.tasks + repeat.days + repeat.routines, 0);
        QCOMPARE(repeat.skipped, 4);

        // CSV: the finished task, planned against actual minutes, quoted.
        const QByteArray csv = TaskExchange::exportCsv(source.service.dayRepository(), {});
        QVERIFY2(csv.contains("\"Write, \"\"report\"\"\",45,51,6,0,"), csv.constData());
        QCOMPARE(csv.count('\n'), 2);
    }

    void malformedImportNamesLineAndFieldAndChangesNothing_data()
    {
        QTest::addColumn<QByteArray>("edit");
        QTest::addColumn<QString>("message");
        QTest::newRow("not json") << QByteArray("{") << QStringLiteral("this is not valid JSON");
        QTest::newRow("minutes as text") << QByteArray("\"durationMinutes\": \"45\"")
                                         << QStringLiteral("days[0].tasks[1].durationMinutes");
        QTest::newRow("blank title") << QByteArray("\"title\": \"  \"") << QStringLiteral("days[0].tasks[1].title");
        QTest::newRow("bad id") << QByteArray("\"id\": \"nope\"") << QStringLiteral("days[0].tasks[1].id");
        QTest::newRow("minutes past any integer")
            << QByteArray("\"durationMinutes\": 4e112") << QStringLiteral("days[0].tasks[1].durationMinutes");
    }
    void malformedImportNamesLineAndFieldAndChangesNothing()
    {
        QFETCH(QByteArray, edit);
        QFETCH(QString, message);
        FocusFixture source;
        source.add(QStringLiteral("first"));
        source.add(QStringLiteral("second"), 30);
        QByteArray json =
            TaskExchange::exportJson(source.store->viewContext(), source.service.dayRepository(), {}, source.time.now);
        // Spoil the second task's record only.
        const qsizetype second = json.indexOf("\"second\"");
        const QByteArray key = edit.left(edit.indexOf(':') + 1);
        qsizetype from = json.lastIndexOf('{', second);
        if (edit == "{") {
            json.insert(from, edit);
        } else {
            from = json.indexOf(key, from);
            const qsizetype end = json.indexOf('\n', from);
            json.replace(from, end - from - (json.at(end - 1) == ',' ? 1 : 0), edit);
        }

        FocusFixture target;
        target.add(QStringLiteral("kept"));
        try {
            TaskExchange::apply(TaskExchange::read(json), target.store->viewContext(), target.service.dayRepository());
            QFAIL("the import was accepted");
        } catch (const ImportError &error) {
            QVERIFY2(error.message().contains(message), qPrintable(error.message()));
            QVERIFY2(error.message().startsWith(QLatin1String("Line ")), qPrintable(error.message()));
        }
        const Day *today = target.service.dayRepository().day(target.time.now);
        QCOMPARE(titles(today->tasks()), QStringList{QStringLiteral("kept")});
    }

    void icsIsReadBackByLibical()
    {
        FocusFixture f;
        Task *done = f.add(QStringLiteral("Long title, with; commas and a line\nbreak ") + QString(80, u'é'), 45);
        f.service.taskRepository().complete(done, f.time.now, 600);
        f.add(QStringLiteral("open"));
        const QByteArray ics =
            IcsWriter::write(TaskExchange::daysIn(f.service.dayRepository(), {}), Calendar(), f.time.now);
        icalcomponent *root = icalparser_parse_string(ics.constData());
        QVERIFY(root);
        int todos = 0, completed = 0;
        for (icalcomponent *c = icalcomponent_get_first_component(root, ICAL_VTODO_COMPONENT); c;
             c = icalcomponent_get_next_component(root, ICAL_VTODO_COMPONENT)) {
            ++todos;
            if (icalcomponent_get_status(c) == ICAL_STATUS_COMPLETED) {
                ++completed;
                QCOMPARE(QString::fromUtf8(icalcomponent_get_summary(c)), done->title());
                QCOMPARE(QString::fromUtf8(icalcomponent_get_uid(c)), done->id().toString(QUuid::WithoutBraces));
            }
        }
        icalcomponent_free(root);
        QCOMPARE(todos, 2);
        QCOMPARE(completed, 1);
        // libical folds the long summary; no line grows past the fold width.
        bool folded = false;
        for (const QByteArray &line : ics.split('\n')) {
            QVERIFY2(line.size() <= 78, line.constData());
            folded = folded || line.startsWith(' ');
        }
        QVERIFY(folded);
    }
};

QTEST_GUILESS_MAIN(AutomationTest)
#include "tst_automation.moc"
