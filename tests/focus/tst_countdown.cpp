// The countdown of the task in hand: remaining time, the ending-soon warning
// and the completion once per plan, withdrawal, the chime rules, and a store
// file that ticking leaves alone.
#include "FocusFixture.h"
#include "services/FocusTime.h"

#include <QFileInfo>
#include <QSqlDatabase>
#include <QTemporaryDir>
#include <QTest>

namespace {
const QString endingSoon5 = QStringLiteral("endingSoon T 5");
const QStringList warningChime{QStringLiteral("Glass volume 0.4"), QStringLiteral("Glass play")};
const QStringList endChime{QStringLiteral("Glass stop"), QStringLiteral("Glass volume 1"),
                           QStringLiteral("Glass play")};
} // namespace

class CountdownTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void warnsOnceThenCompletesOnce()
    {
        FocusFixture f;
        f.settings.setPreEndWarningMinutes(5);
        Task *t = f.add(QStringLiteral("T"), 25);
        QCOMPARE(f.countdown.remainingSeconds(), 1500);
        f.countdown.evaluate(f.add(QStringLiteral("Zero"), 0)); // nothing planned, nothing focused: not overdue
        QVERIFY(f.countdown.remainingSeconds() == 0 && !f.countdown.isOverdue());
        f.service.startTimer(t);
        f.tick(20 * 60 - 1); // seen at 21 minutes left on the way: armed
        QVERIFY(f.rec.log.isEmpty());
        f.tick(1);
        QCOMPARE(f.countdown.remainingSeconds(), 300);
        QCOMPARE(f.rec.take(), QStringList{endingSoon5} + QStringList{QStringLiteral("Glass load")} + warningChime);
        f.tick(300);
        QVERIFY(f.countdown.isOverdue());
        QCOMPARE(f.rec.take(), QStringList{QStringLiteral("complete T")} + endChime);
        f.tick(120);
        QCOMPARE(f.countdown.remainingSeconds(), -120);
        // Paused while overdue: still overdue, now paused, and silent.
        f.service.pauseTimer(t);
        f.tick(60);
        QVERIFY(f.countdown.isOverdue());
        QVERIFY(f.countdown.isPaused());
        QVERIFY(f.rec.log.isEmpty());
    }

    void plansThatNeverWarn()
    {
        struct Row
        {
            int warningMinutes, plannedMinutes, bankedMinutes;
        };
        // Started inside the span, a plan as long as the span, warnings off.
        for (const Row r : {Row{5, 25, 21}, Row{5, 5, 0}, Row{0, 25, 0}}) {
            FocusFixture f;
            f.settings.setPreEndWarningMinutes(r.warningMinutes);
            Task *t = f.add(QStringLiteral("T"), r.plannedMinutes);
            t->setActualSecondsFocused(r.bankedMinutes * 60);
            f.service.startTimer(t);
            f.tick((r.plannedMinutes - r.bankedMinutes) * 60 + 5);
            QCOMPARE(f.rec.log.filter(QStringLiteral("T")), QStringList{QStringLiteral("complete T")});
        }
    }

    void extendingMakesANewPlan()
    {
        FocusFixture f;
        f.settings.setPreEndWarningMinutes(5);
        Task *t = f.add(QStringLiteral("T"), 10);
        f.service.startTimer(t);
        f.tick(10 * 60 + 30);
        f.rec.take();
        t->setDurationMinutes(20);
        f.countdown.evaluate();
        QCOMPARE(f.countdown.remainingSeconds(), 570);
        QVERIFY(!f.countdown.isOverdue());
        QCOMPARE(f.rec.take(), QStringList{QStringLiteral("withdraw ") + t->id().toString()}); // the old plan's warning
        f.tick(570);
        QCOMPARE(f.rec.take().filter(QStringLiteral(" T")), (QStringList{endingSoon5, QStringLiteral("complete T")}));
    }

    void warningIsWithdrawnWhenTheTaskInHandChanges()
    {
        for (const bool complete : {true, false}) {
            FocusFixture f;
            f.settings.setPreEndWarningMinutes(5);
            Task *t = f.add(QStringLiteral("T"), 10);
            Task *unplanned = f.add(QStringLiteral("Unplanned"));
            f.service.startTimer(t);
            f.tick(5 * 60);
            QVERIFY(f.countdown.shownWarning());
            f.rec.take();
            if (complete) {
                TaskCompletionFlow::complete(t->id(), f.service, f.sound, f.rec);
            } else { // brought to the head, then handed over to
                unplanned->setOrderIndex(-1);
                f.service.activate(unplanned);
            }
            QCOMPARE(f.rec.take().first(), QStringLiteral("withdraw ") + t->id().toString());
            QVERIFY(!f.countdown.shownWarning());
            // A task without a plan has no countdown, running or not.
            f.service.startTimer(unplanned);
            f.tick(5);
            QVERIFY(!f.countdown.remainingSeconds() && !f.countdown.isOverdue() && !f.countdown.isPaused());
        }
    }

    void ticksNeverQueryTheStore()
    {
        FocusFixture f;
        f.settings.setPreEndWarningMinutes(1);
        f.service.startTimer(f.add(QStringLiteral("T"), 2));
        f.store->viewContext().database().close(); // any query from here on would throw
        f.tick(125);
        QCOMPARE(f.rec.log.filter(QStringLiteral(" T")),
                 (QStringList{QStringLiteral("endingSoon T 1"), QStringLiteral("complete T")}));
    }

    void runningTimerOutlivesTheProcessAndTicksWriteNothing()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("Tarnwell.sqlite"));
        QDateTime started;
        {
            FocusFixture first(path);
            first.time.advance(-3000 * 1000); // started 50 minutes before the relaunch
            started = first.time.now;
            Task *t = first.add(QStringLiteral("Deep work"), 90);
            t->setActualSecondsFocused(600);
            first.service.startTimer(t);
        }
        FocusFixture second(path);
        second.settings.setPreEndWarningMinutes(60);
        Task *t = second.service.activeTask();
        QVERIFY(t && t->activeStartedAt() == started);
        QCOMPARE(FocusTime::focusedSeconds(*t, second.time.now), 600 + 3000);

        QCoreApplication::processEvents();
        second.saves = 0;
        const auto fileState = [&] {
            return std::tuple(QFileInfo(path).size(), QFileInfo(path).lastModified(),
                              QFileInfo(path + QStringLiteral("-wal")).size());
        };
        const auto before = fileState();
        QTest::qWait(20); // so that a write would show in the modification time
        for (int i = 0; i < 100; ++i) {
            second.tick(20);
            QCoreApplication::processEvents();
        }
        // Inside the warning span since the relaunch, so never armed: no warning.
        QCOMPARE(second.rec.log.filter(QStringLiteral(" Deep")), QStringList{QStringLiteral("complete Deep work")});
        QCOMPARE(second.saves, 0);
        QVERIFY(fileState() == before);
    }

    void chimeRules()
    {
        FocusFixture f;
        f.settings.setChimeSoundName(QStringLiteral("Tink"));
        f.sound.play(SoundService::Cue::warning);
        f.sound.play(SoundService::Cue::end);
        QCOMPARE(
            f.rec.take(),
            (QStringList{QStringLiteral("Tink load"), QStringLiteral("Tink volume 0.4"), QStringLiteral("Tink play"),
                         QStringLiteral("Tink stop"), QStringLiteral("Tink volume 1"), QStringLiteral("Tink play")}));
        f.settings.setSoundEnabled(false);
        f.sound.play(SoundService::Cue::end);
        QVERIFY(f.rec.log.isEmpty());
        f.sound.preview(QStringLiteral("Basso")); // unknown names fall back to the default
        QCOMPARE(f.rec.take(),
                 (QStringList{QStringLiteral("Glass load"), QStringLiteral("Glass volume 1"),
                              QStringLiteral("Glass play")}));

        // A chime per event, at the chosen volume; an unknown or no own chime plays the time-up one.
        f.settings.setSoundEnabled(true);
        f.settings.setWarningChimeName(QStringLiteral("Ping"));
        f.settings.setCompletionChimeName(QStringLiteral("Trombone"));
        f.settings.setChimeVolumePercent(150);
        QCOMPARE(f.settings.chimeVolumePercent(), 100);
        f.settings.setChimeVolumePercent(50);
        f.sound.play(SoundService::Cue::warning);
        f.sound.play(SoundService::Cue::completion);
        f.sound.preview(QStringLiteral("Hero"), SoundService::Cue::warning);
        QCOMPARE(
            f.rec.take(),
            (QStringList{QStringLiteral("Ping load"), QStringLiteral("Ping volume 0.2"), QStringLiteral("Ping play"),
                         QStringLiteral("Tink stop"), QStringLiteral("Tink volume 0.5"), QStringLiteral("Tink play"),
                         QStringLiteral("Hero load"), QStringLiteral("Hero volume 0.2"), QStringLiteral("Hero play")}));
    }
};

QTEST_GUILESS_MAIN(CountdownTest)
#include "tst_countdown.moc"
