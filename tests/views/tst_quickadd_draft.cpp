// The quick-add line as the windows read it while typing, and what adding it
// creates.
#include "ViewsFixture.h"
#include "services/PlanningTexts.h"
#include "views/ViewTexts.h"

#include <QSignalSpy>
#include <QTest>

class QuickAddDraftTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void chipsFollowTheLine()
    {
        ViewsFixture f;
        QuickAddDraft &d = f.model.draft();
        d.setText(QStringLiteral("Write report · 45m tomorrow !"));
        QCOMPARE(d.title(), QStringLiteral("Write report"));
        QCOMPARE(d.durationText(), QStringLiteral("45m"));
        QCOMPARE(d.dayOffset(), 1);
        QCOMPARE(d.dayLabel(), ViewTexts::tomorrow());
        QVERIFY(d.urgent());
        QVERIFY(d.error().isEmpty());
        QVERIFY(d.canCommit());

        d.setText(QStringLiteral("Plan · 90"));
        QCOMPARE(d.durationText(), QStringLiteral("1h 30m"));
        QCOMPARE(d.dayOffset(), -1);
        QVERIFY(d.dayLabel().isEmpty());
        QVERIFY(!d.urgent());

        // A picked day wins over the line's own and names the weekday.
        d.overrideDayOffset(3);
        QCOMPARE(d.dayOffset(), 3);
        QCOMPARE(d.dayLabel(), QLocale().dayName(QDate(2026, 6, 13).dayOfWeek()));
        d.overrideDayOffset(-1);
        QCOMPARE(d.dayOffset(), -1);
    }

    void linesThatCannotBeAddedSayWhy()
    {
        ViewsFixture f;
        QuickAddDraft &d = f.model.draft();
        d.setText(QStringLiteral("   "));
        QVERIFY(d.error().isEmpty()); // blank: nothing to say yet
        QVERIFY(!d.canCommit());

        d.setText(QStringLiteral("!"));
        QCOMPARE(d.error(), PlanningTexts::quickAddTitleRequired());
        QVERIFY(!d.commit());

        d.setText(QString(201, u'x'));
        QCOMPARE(d.error(), RepositoryError::titleTooLong(200).localizedDescription());
        QVERIFY(!d.commit());
        QVERIFY(f.tasks.openTasks(f.day(0)).isEmpty());

        d.setText(QString(200, u'x'));
        QVERIFY(d.error().isEmpty());
        QVERIFY(d.commit());
    }

    void commitCreatesTheTaskOnItsDay()
    {
        ViewsFixture f;
        QuickAddDraft &d = f.model.draft();
        f.add(QStringLiteral("Existing"), std::nullopt, 1);
        QSignalSpy committed(&d, &QuickAddDraft::committed);

        d.setText(QStringLiteral("Write report · 45m tomorrow !"));
        QVERIFY(d.commit());
        QCOMPARE(f.titles(1), (QStringList{QStringLiteral("Write report"), QStringLiteral("Existing")}));
        Task *added = f.tasks.openTasks(f.day(1)).first();
        QCOMPARE(added->durationMinutes(), 45);
        QVERIFY(added->urgent());
        QVERIFY(d.text().isEmpty());
        QVERIFY(d.title().isEmpty());
        QCOMPARE(committed.size(), 1);
        QCOMPARE(committed.first().at(0).toUuid(), added->id());

        // A plain line goes to the end of today; a picked day overrides.
        d.setText(QStringLiteral("Buy milk"));
        QVERIFY(d.commit());
        d.setText(QStringLiteral("Call Bob"));
        d.overrideDayOffset(2);
        QVERIFY(d.commit());
        QCOMPARE(d.dayOffset(), -1); // the pick ends with the line
        QCOMPARE(f.titles(0), QStringList{QStringLiteral("Buy milk")});
        QCOMPARE(f.titles(2), QStringList{QStringLiteral("Call Bob")});

        // Browsing another day makes it where lines without a day go.
        f.model.nextDay();
        f.model.nextDay();
        f.model.nextDay();
        d.setText(QStringLiteral("Later"));
        QVERIFY(d.commit());
        QCOMPARE(f.titles(3), QStringList{QStringLiteral("Later")});
        QCOMPARE(f.shownTitles(), QStringList{QStringLiteral("Later")});
    }
};

QTEST_GUILESS_MAIN(QuickAddDraftTest)
#include "tst_quickadd_draft.moc"
