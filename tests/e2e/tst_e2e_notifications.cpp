// The real program with a stand-in notification server and panel on a
// private bus, under Xvfb: a running task raises its ending-soon warning;
// after a relaunch past its plan it raises the completion; "Done" on that
// notification completes it in the store, opens the popover on the next-up
// screen and the tray label shows the next task. Past the workday end the
// wrap-up is offered once: by a notification with a button, or, with no
// notification server, in the tray's menu.
#include "persistence/DayRepository.h"
#include "persistence/PersistenceController.h"
#include "persistence/TaskRepository.h"
#include "settings/AppSettingsStore.h"
#include "support/AppProcess.h"
#include "support/Desktop.h"
#include "support/FakeNotificationServer.h"

#include <QSettings>
#include <QTemporaryDir>

using namespace tarnwell;

class EndToEndNotificationsTest : public QObject
{
    Q_OBJECT
    QTemporaryDir m_home;
    QString storePath() const { return m_home.path() + QStringLiteral("/data/tarnwell/Tarnwell.sqlite"); }

private Q_SLOTS:
    void warningThenCompletionThenDone()
    {
        QUuid taskID;
        {
            // A 2-minute task started 58 s ago, warning 1 minute before the end.
            PersistenceController store(storePath());
            Calendar calendar;
            DayRepository days(store.viewContext(), calendar, systemClock());
            TaskRepository tasks(store.viewContext(), calendar, systemClock(), days);
            Day *today = days.fetchOrCreateDay(QDateTime::currentDateTimeUtc());
            Task *task = tasks.createTask(QStringLiteral("Write the brief"), 2, false, today);
            tasks.createTask(QStringLiteral("Call Alex"), 15, false, today);
            task->setActiveStartedAt(QDateTime::currentDateTimeUtc().addSecs(-58));
            taskID = task->id();
            AppSettingsStore settings(store);
            settings.setPreEndWarningMinutes(1);
            settings.setOnboardingCompleted(true);
            store.viewContext().save();
        }
        FakeNotificationServer server;
        QVERIFY(server.start());
        Panel panel;
        {
            AppProcess app(m_home.path());
            QVERIFY2(app.waitFor(QStringLiteral("Interface installed")), qPrintable(app.log()));
            QTRY_VERIFY_WITH_TIMEOUT(!server.notifications.isEmpty(), 10000);
            QCOMPARE(server.notifications.at(0).summary, QStringLiteral("Write the brief"));
            QCOMPARE(server.notifications.at(0).body, QStringLiteral("1 minute left"));
            app.terminate();
            QVERIFY(app.finish());
        }
        {
            // The plan ran out while the program was away.
            PersistenceController store(storePath());
            Task *task = store.viewContext().existingObject<Task>(taskID);
            QVERIFY(task);
            task->setActiveStartedAt(QDateTime::currentDateTimeUtc().addSecs(-180));
            store.viewContext().save();
        }
        AppProcess app(m_home.path());
        QVERIFY2(app.waitFor(QStringLiteral("Interface installed")), qPrintable(app.log()));
        QTRY_VERIFY_WITH_TIMEOUT(server.notifications.size() >= 2, 10000);
        const auto done = server.notifications.last();
        QCOMPARE(done.body, QStringLiteral("2 minutes done"));
        QVERIFY(done.actions.contains(QStringLiteral("DONE")));
        QTRY_VERIFY_WITH_TIMEOUT(panel.label().startsWith(QStringLiteral("Write the brief")), 10000);

        server.click(done.id, QStringLiteral("DONE"));
        QVERIFY2(app.waitFor(QStringLiteral("Tarnwell.popover.openRequested: nextUp")), qPrintable(app.log()));
        QVERIFY2(app.waitFor(QStringLiteral("Popover shown")), qPrintable(app.log()));
        QTRY_VERIFY_WITH_TIMEOUT(panel.label().startsWith(QStringLiteral("Call Alex")), 10000);
        app.terminate();
        QVERIFY(app.finish());

        PersistenceController store(storePath());
        Task *task = store.viewContext().existingObject<Task>(taskID);
        QVERIFY(task && task->completed());
        QVERIFY(task->actualSecondsFocused().value_or(0) >= 180);
        QVERIFY(!app.log().contains(QStringLiteral("missing task lookup")));
    }

    void wrapUpOfferedOnceAtTheWorkdayEnd()
    {
        const QTime local = QTime::currentTime();
        if (local < QTime(0, 5))
            QSKIP("too close to midnight for a workday end already past today");
        {
            PersistenceController store(storePath());
            AppSettingsStore settings(store);
            settings.setWorkdayEndMinutes(local.hour() * 60 + local.minute() - 2);
            settings.setOnboardingCompleted(true);
        }
        const QString offered = QStringLiteral("Offering the day's wrap-up");
        {
            FakeNotificationServer server;
            QVERIFY(server.start());
            Panel panel;
            AppProcess app(m_home.path());
            QVERIFY2(app.waitFor(QStringLiteral("Interface installed")), qPrintable(app.log()));
            QTRY_VERIFY_WITH_TIMEOUT(!server.notifications.isEmpty() &&
                                         server.notifications.last().actions.contains(QStringLiteral("WRAP_UP")),
                                     10000);
            server.click(server.notifications.last().id, QStringLiteral("WRAP_UP"));
            QVERIFY2(app.waitFor(QStringLiteral("Wrap-up shown")), qPrintable(app.log()));
            app.terminate();
            QVERIFY(app.finish());

            // A restart the same day does not offer it again.
            AppProcess again(m_home.path());
            QVERIFY2(again.waitFor(QStringLiteral("Interface installed")), qPrintable(again.log()));
            QTest::qWait(1000);
            QVERIFY(!again.log().contains(offered));
            again.terminate();
            QVERIFY(again.finish());
        }
        // With no notification server (and the day's marker gone): the tray's menu.
        QSettings(m_home.path() + QStringLiteral("/config/tarnwell/tarnwell.conf"), QSettings::IniFormat)
            .remove(QStringLiteral("Tarnwell.wrapUp.offeredDay"));
        Panel panel;
        AppProcess app(m_home.path());
        QVERIFY2(app.waitFor(QStringLiteral("Wrap-up offered in the tray's menu")), qPrintable(app.log()));
        QTRY_VERIFY_WITH_TIMEOUT(panel.registrations() > 0, 10000);
        panel.clickMenu(9); // the wrap-up's entry
        QVERIFY2(app.waitFor(QStringLiteral("Wrap-up shown")), qPrintable(app.log()));
        app.terminate();
        QVERIFY(app.finish());
    }
};

QTEST_MAIN(EndToEndNotificationsTest)
#include "tst_e2e_notifications.moc"
