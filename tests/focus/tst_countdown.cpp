// The countdown of the task in hand: remaining time, the ending-soon warning
// and the completion once per plan, withdrawal, and the chime rules.
#include "FocusFixture.h"

#include <QSqlDatabase>
#include <QTest>

namespace {

struct CountdownFixture : FocusFixture
{
    FakeNotifier notifier;
    CountdownService countdown{service, notifier, sound, settings, time.clock(), std::chrono::milliseconds(0)};

    // One tick a second for `seconds` seconds.
    void tick(int seconds)
    {
        for (int i = 0; i < seconds; ++i) {
            advanceSeconds(1);
            countdown.evaluate();
        }
    }
    QString endingSoon(int minutes = 5) const { return QStringLiteral("endingSoon T %1").arg(minutes); }
};

} // namespace

class CountdownTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void warnsOnceThenCompletesOnce()
    {
        CountdownFixture f;
        f.settings.setPreEndWarningMinutes(5);
        Task *t = f.add(QStringLiteral("T"), 25);
        QCOMPARE(f.countdown.remainingSeconds(), 1500);
        f.service.startTimer(t);
        f.tick(4 * 60); // seen at 21 minutes left: armed
        QVERIFY(f.notifier.events.isEmpty());
        f.tick(16 * 60 - 1);
        QVERIFY(f.notifier.events.isEmpty());
        f.tick(1); // the first tick at 5 minutes left
        QCOMPARE(f.countdown.remainingSeconds(), 300);
        QCOMPARE(f.notifier.events, QStringList{f.endingSoon()});
        QCOMPARE(f.chimes.log.mid(1), (QStringList{QStringLiteral("Glass volume 0.4"), QStringLiteral("Glass play")}));
        QCOMPARE(f.countdown.shownWarning()->taskID, t->id());

        f.tick(300);
        QCOMPARE(f.countdown.remainingSeconds(), 0);
        QVERIFY(f.countdown.isOverdue());
        QCOMPARE(f.notifier.events, (QStringList{f.endingSoon(), QStringLiteral("complete T")}));
        QCOMPARE(f.chimes.log.mid(3),
                 (QStringList{QStringLiteral("Glass stop"), QStringLiteral("Glass volume 1"), QStringLiteral("Glass play")}));
        f.tick(120);
        QCOMPARE(f.countdown.remainingSeconds(), -120);
        QCOMPARE(f.notifier.events.size(), 2);

        // Paused while overdue: still overdue, paused, and silent.
        f.service.pauseTimer(t);
        QVERIFY(f.countdown.isOverdue());
        QVERIFY(f.countdown.isPaused());
        f.tick(60);
        QCOMPARE(f.notifier.events.size(), 2);
    }

    void plansThatNeverWarn_data()
    {
        QTest::addColumn<int>("warningMinutes");
        QTest::addColumn<int>("plannedMinutes");
        QTest::addColumn<int>("bankedMinutes");
        QTest::newRow("started inside the span") << 5 << 25 << 21;
        QTest::newRow("plan as long as the span") << 5 << 5 << 0;
        QTest::newRow("warnings off") << 0 << 25 << 0;
    }
    void plansThatNeverWarn()
    {
        QFETCH(int, warningMinutes);
        QFETCH(int, plannedMinutes);
        QFETCH(int, bankedMinutes);
        CountdownFixture f;
        f.settings.setPreEndWarningMinutes(warningMinutes);
        Task *t = f.add(QStringLiteral("T"), plannedMinutes);
        t->setActualSecondsFocused(bankedMinutes * 60);
        f.service.startTimer(t);
        f.tick((plannedMinutes - bankedMinutes) * 60 + 5);
        QCOMPARE(f.notifier.events, QStringList{QStringLiteral("complete T")});
    }

    void extendingMakesANewPlan()
    {
        CountdownFixture f;
        f.settings.setPreEndWarningMinutes(5);
        Task *t = f.add(QStringLiteral("T"), 10);
        f.service.startTimer(t);
        f.tick(10 * 60 + 30);
        t->setDurationMinutes(20);
        f.countdown.evaluate();
        QCOMPARE(f.countdown.remainingSeconds(), 570);
        QVERIFY(!f.countdown.isOverdue());
        // The first plan's warning is taken back; the new plan warns and completes.
        QCOMPARE(f.notifier.events, (QStringList{f.endingSoon(), QStringLiteral("complete T"),
                                                 QStringLiteral("withdraw ") + t->id().toString()}));
        f.tick(570);
        QCOMPARE(f.notifier.events.mid(3), (QStringList{f.endingSoon(), QStringLiteral("complete T")}));
    }

    void warningIsWithdrawnWhenTheTaskInHandChanges_data()
    {
        QTest::addColumn<bool>("complete");
        QTest::newRow("completed") << true;
        QTest::newRow("handed over") << false;
    }
    void warningIsWithdrawnWhenTheTaskInHandChanges()
    {
        QFETCH(bool, complete);
        CountdownFixture f;
        f.settings.setPreEndWarningMinutes(5);
        Task *t = f.add(QStringLiteral("T"), 10);
        Task *other = f.add(QStringLiteral("Other"), 10);
        f.service.startTimer(t);
        f.tick(5 * 60);
        QVERIFY(f.countdown.shownWarning());
        if (complete) {
            FakePresenter popover;
            TaskCompletionFlow::complete(t->id(), f.service, f.sound, popover);
        } else {
            // Brought to the head and handed over to: the warned task leaves the hand.
            other->setOrderIndex(-1);
            f.service.activate(other);
        }
        QCOMPARE(f.notifier.events.mid(1), QStringList{QStringLiteral("withdraw ") + t->id().toString()});
        QVERIFY(!f.countdown.shownWarning());
        QCOMPARE(f.countdown.remainingSeconds(), 600);
    }

    void noPlanPublishesNothing()
    {
        CountdownFixture f;
        Task *t = f.add(QStringLiteral("T"));
        t->setActualSecondsFocused(60);
        f.service.startTimer(t);
        f.tick(5);
        QVERIFY(!f.countdown.remainingSeconds());
        QVERIFY(!f.countdown.isOverdue());
        QVERIFY(!f.countdown.isPaused());
    }

    void ticksNeverQueryTheStore()
    {
        CountdownFixture f;
        f.settings.setPreEndWarningMinutes(1);
        Task *t = f.add(QStringLiteral("T"), 2);
        f.service.startTimer(t);
        f.store.viewContext().database().close(); // any query from here on would throw
        f.tick(125);
        QCOMPARE(f.notifier.events, (QStringList{f.endingSoon(1), QStringLiteral("complete T")}));
    }

    void chimeRules()
    {
        FocusFixture f;
        f.settings.setChimeSoundName(QStringLiteral("Tink"));
        f.sound.play(SoundService::Cue::warning);
        f.sound.play(SoundService::Cue::end);
        QCOMPARE(f.chimes.log, (QStringList{QStringLiteral("Tink load"), QStringLiteral("Tink volume 0.4"),
                                            QStringLiteral("Tink play"), QStringLiteral("Tink stop"),
                                            QStringLiteral("Tink volume 1"), QStringLiteral("Tink play")}));
        f.chimes.log.clear();
        f.settings.setSoundEnabled(false);
        f.sound.play(SoundService::Cue::end);
        QVERIFY(f.chimes.log.isEmpty());
        f.sound.preview(QStringLiteral("Basso")); // unknown names fall back to the default
        f.sound.preview(std::nullopt);
        QCOMPARE(f.chimes.log, (QStringList{QStringLiteral("Glass load"), QStringLiteral("Glass volume 1"),
                                            QStringLiteral("Glass play"), QStringLiteral("Glass stop"),
                                            QStringLiteral("Glass volume 1"), QStringLiteral("Glass play")}));
        QCOMPARE(SoundService::soundNames().size(), 7);
        for (const QString &name : SoundService::soundNames())
            QCOMPARE(SoundService::resolve(name), name);
    }
};

QTEST_GUILESS_MAIN(CountdownTest)
#include "tst_countdown.moc"
