// The real `tarnwell` process on a private session bus: one instance per
// user, links handed over and kept until the interface exists, the unit-test
// switch, onboarding first, orderly teardown on SIGTERM.
#include "support/AppProcess.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using App = AppProcess;

class AppProcessTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_root;
    int m_homes = 0;
    QString freshHome() { return m_root.filePath(QStringLiteral("home%1").arg(++m_homes)); }

private Q_SLOTS:
    void secondInstanceHandsItsLinkOverAndLeaves()
    {
        const QString home = freshHome();
        App first(home);
        QVERIFY2(first.waitFor(QStringLiteral("Interface installed")), qPrintable(first.log()));

        QElapsedTimer timer;
        timer.start();
        App second(home, {QStringLiteral("tarnwell://quickadd")});
        QVERIFY(second.finish(5000));
        QCOMPARE(second.process().exitStatus(), QProcess::NormalExit);
        QCOMPARE(second.process().exitCode(), 0);
        QVERIFY2(timer.elapsed() < 1000, qPrintable(QStringLiteral("took %1 ms").arg(timer.elapsed())));
        QVERIFY(second.log().contains(QStringLiteral("already running")));

        QVERIFY(first.waitFor(QStringLiteral("Opening link tarnwell://quickadd")));
        QVERIFY(first.waitFor(QStringLiteral("Quick add requested")));
        QVERIFY(first.waitFor(QStringLiteral("Quick add shown")));

        // A plain second start asks the first to show itself.
        App third(home, {});
        QVERIFY(third.finish(5000));
        QCOMPARE(third.process().exitCode(), 0);
        QVERIFY(first.waitFor(QStringLiteral("Popover requested")));
        first.terminate();
        QVERIFY(first.finish());
    }

    void linkAtLaunchWaitsForTheInterface()
    {
        App app(freshHome(), {QStringLiteral("--ui-test"), QStringLiteral("tarnwell://today")});
        QVERIFY2(app.waitFor(QStringLiteral("Popover requested")), qPrintable(app.log()));
        QVERIFY2(app.waitFor(QStringLiteral("Popover shown")), qPrintable(app.log()));
        const QStringList lines = app.lines();
        const auto indexOf = [&](const QString &text) {
            for (int i = 0; i < lines.size(); ++i)
                if (lines[i].contains(text))
                    return i;
            return -1;
        };
        QVERIFY(indexOf(QStringLiteral("Opening link tarnwell://today")) >= 0);
        QVERIFY(indexOf(QStringLiteral("Interface installed")) < indexOf(QStringLiteral("Popover requested")));
        app.terminate();
        QVERIFY(app.finish());
    }

    void unitTestSwitchStopsAfterTheFirstStep()
    {
        const QString home = freshHome();
        App app(home, {QStringLiteral("--ui-test")}, {QStringLiteral("TARNWELL_UNIT_TEST=1")});
        QVERIFY2(app.waitFor(QStringLiteral("Running under the unit-test host; nothing else starts")), qPrintable(app.log()));
        app.terminate();
        QVERIFY(app.finish());
        QCOMPARE(app.process().exitCode(), 0);
        QVERIFY(!app.log().contains(QStringLiteral("Interface installed")));
        QVERIFY(!QFile::exists(home + QStringLiteral("/data/tarnwell/Tarnwell.sqlite")));
    }

    void sigtermTearsDownInOrder()
    {
        const QString home = freshHome();
        App app(home);
        QVERIFY(app.waitFor(QStringLiteral("Interface installed")));
        app.terminate();
        QVERIFY(app.finish());
        QCOMPARE(app.process().exitStatus(), QProcess::NormalExit);
        QCOMPARE(app.process().exitCode(), 0);
        const QString log = app.log();
        const qsizetype hotkeys = log.indexOf(QStringLiteral("Unregistered all global hotkeys"));
        const qsizetype statusItem = log.indexOf(QStringLiteral("Removed the status item"));
        const qsizetype widget = log.indexOf(QStringLiteral("Stopped the widget surface"));
        const qsizetype done = log.indexOf(QStringLiteral("Terminated"));
        QVERIFY2(hotkeys >= 0 && hotkeys < statusItem && statusItem < widget && widget < done, qPrintable(log));
        QVERIFY(QFile::exists(home + QStringLiteral("/data/tarnwell/Tarnwell.sqlite")));
    }

    void onboardingComesBeforeTheInterface()
    {
        App app(freshHome(), {});
        QVERIFY2(app.waitFor(QStringLiteral("Showing onboarding")), qPrintable(app.log()));
        app.terminate();
        QVERIFY(app.finish());
        QVERIFY(!app.log().contains(QStringLiteral("Interface installed")));
    }

    void runsAloneWithoutASessionBus()
    {
        App app(freshHome(), {QStringLiteral("--ui-test")},
                {QStringLiteral("DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent/bus")});
        QVERIFY2(app.waitFor(QStringLiteral("Interface installed")), qPrintable(app.log()));
        QVERIFY(app.log().contains(QStringLiteral("No D-Bus session bus")));
        app.terminate();
        QVERIFY(app.finish());
    }
};

QTEST_GUILESS_MAIN(AppProcessTest)
#include "tst_app_process.moc"
