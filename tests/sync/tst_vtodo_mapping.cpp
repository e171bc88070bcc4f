// Tasks as VTODO resources: what Tarnwell writes it reads back the same, and
// what other clients wrote into a to-do survives Tarnwell writing it again.
#include "ical/VTodoMapping.h"

#include <QTest>

using namespace tarnwell;

namespace {

const QDateTime now = QDateTime(QDate(2026, 11, 24), QTime(9, 30), Qt::UTC);

// As a desktop client writes a to-do: a due date in a time zone, a medium
// priority, an alarm, categories and its own X- property.
const QByteArray foreign = "BEGIN:VCALENDAR\r\n"
                           "VERSION:2.0\r\n"
                           "PRODID:-//Other//Client//EN\r\n"
                           "BEGIN:VTODO\r\n"
                           "UID:other-1@example.com\r\n"
                           "DTSTAMP:20261120T080000Z\r\n"
                           "SUMMARY:Renew the passport\r\n"
                           "DUE;TZID=Europe/Berlin:20261126T170000\r\n"
                           "PRIORITY:5\r\n"
                           "STATUS:IN-PROCESS\r\n"
                           "CATEGORIES:Errands\r\n"
                           "X-OTHER-COLOR:#ff8800\r\n"
                           "BEGIN:VALARM\r\n"
                           "ACTION:DISPLAY\r\n"
                           "DESCRIPTION:Passport\r\n"
                           "TRIGGER:-PT30M\r\n"
                           "END:VALARM\r\n"
                           "END:VTODO\r\n"
                           "END:VCALENDAR\r\n";

} // namespace

class VTodoMappingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void oursComesBackTheSame()
    {
        TodoFields f;
        f.uid = QStringLiteral("5E0C1F3A-2B44-4C1D-9A51-0F4E2C8B7D10");
        f.title = QStringLiteral("Write the report, part 2; with \"quotes\"");
        f.notes = QStringLiteral("Line one\nLine two");
        f.day = QDate(2026, 11, 24);
        f.urgent = true;
        f.plannedMinutes = 45;
        f.completed = true;
        f.completedAt = now.addSecs(-60);
        f.order = 3;
        f.focusedSeconds = 2712;
        f.discardedSeconds = 300;
        f.lastModified = now.addSecs(-30);
        const auto back = VTodoMapping::read(VTodoMapping::write(f, now));
        QVERIFY(back);
        QCOMPARE(*back, f);

        // Reopened: the completion goes, the rest stays.
        f.completed = false;
        f.completedAt.reset();
        const QByteArray reopened = VTodoMapping::write(f, now, VTodoMapping::write(*back, now));
        QVERIFY(!reopened.contains("COMPLETED:"));
        QVERIFY(!reopened.contains("PERCENT-COMPLETE"));
        QCOMPARE(*VTodoMapping::read(reopened), f);
    }

    void anotherClientsToDoSurvivesOurWrite()
    {
        const auto read = VTodoMapping::read(foreign);
        QVERIFY(read);
        QCOMPARE(read->title, QStringLiteral("Renew the passport"));
        QCOMPARE(read->day, QDate(2026, 11, 26));
        QVERIFY(!read->urgent); // 5 is medium
        QVERIFY(!read->completed);
        QVERIFY(!read->plannedMinutes);

        TodoFields changed = *read;
        changed.title = QStringLiteral("Renew both passports");
        changed.day = QDate(2026, 11, 27);
        changed.focusedSeconds = 600;
        changed.lastModified = now;
        const QByteArray written = VTodoMapping::write(changed, now, foreign);
        for (const char *kept : {"PRIORITY:5", "STATUS:IN-PROCESS", "CATEGORIES:Errands", "X-OTHER-COLOR:#ff8800",
                                 "BEGIN:VALARM", "TRIGGER:-PT30M", "UID:other-1@example.com"})
            QVERIFY2(written.contains(kept), kept);
        QVERIFY(!written.contains("Renew the passport"));
        QVERIFY(written.contains("DUE;VALUE=DATE:20261127"));
        QVERIFY(!written.contains("DTSTART")); // it kept its date as a due date
        QCOMPARE(*VTodoMapping::read(written), changed);

        // Completed here: the standard fields every client shows.
        changed.completed = true;
        const QByteArray done = VTodoMapping::write(changed, now, written);
        QVERIFY(done.contains("STATUS:COMPLETED") && done.contains("COMPLETED:20261124T093000Z"));
        QVERIFY(done.contains("PERCENT-COMPLETE:100"));

        // Planned for a day here, an undated to-do stays undated for other
        // clients; the day travels to the other Tarnwells all the same.
        const QByteArray undated = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nBEGIN:VTODO\r\nUID:u\r\n"
                                   "SUMMARY:Someday\r\nEND:VTODO\r\nEND:VCALENDAR\r\n";
        TodoFields planned = *VTodoMapping::read(undated);
        planned.day = QDate(2026, 11, 24);
        const QByteArray plannedText = VTodoMapping::write(planned, now, undated);
        QVERIFY(!plannedText.contains("DTSTART") && !plannedText.contains("DUE"));
        QCOMPARE(VTodoMapping::read(plannedText)->day, planned.day);
    }

    void whatCannotBeTrustedIsLeftOut()
    {
        QVERIFY(!VTodoMapping::read("not a calendar"));
        QVERIFY(!VTodoMapping::read("BEGIN:VCALENDAR\r\nBEGIN:VEVENT\r\nUID:e\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n"));
        QVERIFY(
            !VTodoMapping::read("BEGIN:VCALENDAR\r\nBEGIN:VTODO\r\nSUMMARY:No id\r\nEND:VTODO\r\nEND:VCALENDAR\r\n"));
        const auto odd = VTodoMapping::read("BEGIN:VCALENDAR\r\nBEGIN:VTODO\r\nUID:x\r\n"
                                            "X-TARNWELL-FOCUSED-SECONDS:-5\r\nX-TARNWELL-PLANNED-MINUTES:99999999\r\n"
                                            "X-TARNWELL-ORDER:abc\r\nEND:VTODO\r\nEND:VCALENDAR\r\n");
        QVERIFY(odd);
        QCOMPARE(odd->focusedSeconds, 0);
        QVERIFY(!odd->plannedMinutes);
        QVERIFY(!odd->order);
        QVERIFY(!odd->day.isValid());
    }

    // Found by fuzzing: each of these made a to-do come back different from
    // what was written, so two machines would rewrite it on every sync, or
    // wrote it out as nothing at all.
    void mangledToDosStillComeBackTheSame()
    {
        const auto roundTrip = [](const QByteArray &ics) {
            const auto read = VTodoMapping::read(ics);
            QVERIFY(read);
            const QByteArray written = VTodoMapping::write(*read, now, ics);
            QVERIFY(written.startsWith("BEGIN:VCALENDAR"));
            const auto again = VTodoMapping::read(written);
            QVERIFY(again);
            QCOMPARE(again->title, read->title);
            QCOMPARE(again->uid, read->uid);
            QCOMPARE(again->completedAt, read->completedAt);
        };
        // A to-do inside something that is not a calendar.
        roundTrip("BEGIN:VCA0\r\nBEGIN:VTODO\r\nUID:a\r\nSUMMARY:Wrapped\r\nEND:VTODO\r\nEND:VCA0\r\n");
        // A carriage return, a tab, a form feed and blanks around the text.
        roundTrip("BEGIN:VTODO\r\nUID: b \r\nSUMMARY:Ba\te\rto-do\x0c \r\nEND:VTODO\r\n");
        QCOMPARE(VTodoMapping::read("BEGIN:VTODO\r\nUID:b\r\nSUMMARY:Ba\te\rdo\x0c \r\nEND:VTODO\r\n")->title,
                 QStringLiteral("Ba e\ndo"));
        // A completion in the 78th month.
        roundTrip("BEGIN:VTODO\r\nUID:c\r\nSTATUS:CANCELLED\r\nCOMPLETED:26397803T000000Z\r\nEND:VTODO\r\n");
    }
};

QTEST_GUILESS_MAIN(VTodoMappingTest)
#include "tst_vtodo_mapping.moc"
