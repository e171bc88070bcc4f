// The real program with a stand-in notification server and panel on a
// private bus, under Xvfb: a running task raises its ending-soon warning;
// after a relaunch past its plan it raises the completion; "Done" on that
// notification completes it in the store, opens the popover on the next-up
// screen and the tray label shows the next task.
#include "persistence/DayRepository.h"
#include "persistence/PersistenceController.h"
#include "persistence/TaskRepository.h"
#include "settings/AppSettingsStore.h"
#include "support/AppProcess.h"
#include "support/Desktop.h"
#include "support/FakeNotificationServer.h"

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
};

QTEST_MAIN(EndToEndNotificationsTest)
#include "tst_e2e_notifications.moc"
