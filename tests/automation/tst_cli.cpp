// `tarnwell` as scripts use it: against no agent (the store file), against
// a running agent (its bus), and where there is no display at all.
#include "persistence/PersistenceController.h"
#include "persistence/StoreBackup.h"
#include "support/AppProcess.h"

#include <QJsonArray>
#include <QRegularExpression>

#include <functional>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

struct Result
{
    int code = -1;
    QString out;
    QString err;
};

QProcessEnvironment environmentFor(const QString &home, const QStringList &extra = {})
{
    return AppProcess::environment(home, QStringList{QStringLiteral("LANGUAGE=en")} + extra);
}

Result run(const QString &home, const QStringList &arguments, const QStringList &extra = {})
{
    QProcess p;
    p.setProcessEnvironment(environmentFor(home, extra));
    p.start(QStringLiteral(TARNWELL_BINARY), arguments);
    p.waitForFinished(20000);
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1, QString::fromUtf8(p.readAllStandardOutput()),
            QString::fromUtf8(p.readAllStandardError())};
}

QJsonArray listJson(const QString &home)
{
    return QJsonDocument::fromJson(run(home, {QStringLiteral("list"), QStringLiteral("--json")}).out.toUtf8()).array();
}

} // namespace

class CliTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_root;
    int m_homes = 0;
    QString freshHome() { return m_root.filePath(QStringLiteral("home%1").arg(++m_homes)); }

private Q_SLOTS:
    void withoutAnAgentWorksOnTheStore()
    {
        const QString home = freshHome();
        Result r = run(home, {QStringLiteral("add"), QStringLiteral("Write report · 45m")});
        QCOMPARE(r.code, 0);
        QCOMPARE(r.out, QStringLiteral("Added “Write report” to Tarnwell.\n"));
        r = run(home,
                {QStringLiteral("add"), QStringLiteral("--title"), QStringLiteral(" Call Bob "),
                 QStringLiteral("--minutes"), QStringLiteral("15"), QStringLiteral("--urgent")});
        QCOMPARE(r.code, 0);

        r = run(home, {QStringLiteral("status"), QStringLiteral("--json")});
        QCOMPARE(r.code, 0);
        const QJsonObject status = QJsonDocument::fromJson(r.out.toUtf8()).object();
        QCOMPARE(status.value(QStringLiteral("active")).toObject().value(QStringLiteral("title")).toString(),
                 QStringLiteral("Call Bob"));
        QCOMPARE(status.value(QStringLiteral("queue")).toArray().size(), 2);
        QCOMPARE(status.value(QStringLiteral("plannedMinutes")).toInt(), 60);
        r = run(home, {QStringLiteral("status")});
        QVERIFY2(r.out.startsWith(QStringLiteral("Up now: “Call Bob”\n0:15:00 left of 0:15:00\nNext: “Write report”")),
                 qPrintable(r.out));

        // Exit codes: usage, invalid input, agent needed.
        QCOMPARE(run(home, {QStringLiteral("add")}).code, 2);
        QCOMPARE(
            run(home, {QStringLiteral("add"), QStringLiteral("x"), QStringLiteral("--minutes"), QStringLiteral("5")})
                .code,
            2);
        QCOMPARE(run(home, {QStringLiteral("list"), QStringLiteral("--bogus")}).code, 2);
        r = run(home, {QStringLiteral("add"), QStringLiteral("--title"), QString(201, u'x')});
        QCOMPARE(r.code, 3);
        QCOMPARE(r.err, QStringLiteral("tarnwell: A title can have at most 200 characters.\n"));
        QCOMPARE(run(home, {QStringLiteral("list"), QStringLiteral("--day"), QStringLiteral("2026-13-01")}).code, 3);
        QCOMPARE(run(home, {QStringLiteral("done")}).code, 5);
        QCOMPARE(run(home, {QStringLiteral("status"), QStringLiteral("--follow")}).code, 5);
        QCOMPARE(listJson(home).size(), 2);

        // Errors speak the user's language.
        const Result german = run(home, {QStringLiteral("add"), QStringLiteral("--title"), QStringLiteral(" ")},
                                  {QStringLiteral("LANGUAGE=de")});
        const Result english = run(home, {QStringLiteral("add"), QStringLiteral("--title"), QStringLiteral(" ")});
        QCOMPARE(german.code, 3);
        QVERIFY(!german.err.contains(QLatin1String("error.")));
        QVERIFY2(german.err != english.err, qPrintable(german.err));
    }

    void backupsListAndRestore()
    {
        const QString home = freshHome();
        QCOMPARE(run(home, {QStringLiteral("backups")}).out,
                 QStringLiteral("No copies yet: Tarnwell makes one a day while it runs.\n"));
        QCOMPARE(run(home, {QStringLiteral("add"), QStringLiteral("Kept · 20m")}).code, 0);
        const QString file = home + QStringLiteral("/data/tarnwell/Tarnwell.sqlite");
        {
            // The agent's daily copy, taken here without an agent.
            tarnwell::PersistenceController store(file);
            tarnwell::StoreBackupService backups(store.viewContext(), file, tarnwell::Calendar(),
                                                 tarnwell::systemClock());
            QSignalSpy finished(&backups, &tarnwell::StoreBackupService::finished);
            backups.backUpNow();
            QVERIFY(finished.wait(5000));
        }
        QCOMPARE(run(home, {QStringLiteral("add"), QStringLiteral("Later · 5m")}).code, 0);
        QCOMPARE(listJson(home).size(), 2);

        const QString today = QDate::currentDate().toString(Qt::ISODate);
        Result r = run(home, {QStringLiteral("backups")});
        QCOMPARE(r.code, 0);
        QVERIFY2(r.out.startsWith(today + u'\t') && r.out.count(u'\n') == 1, qPrintable(r.out));
        QCOMPARE(run(home, {QStringLiteral("restore"), QStringLiteral("1999-01-01")}).code, 1);
        QCOMPARE(run(home, {QStringLiteral("restore")}).code, 2);
        r = run(home, {QStringLiteral("restore"), today});
        QCOMPARE(r.code, 0);
        QVERIFY2(r.out.startsWith(QStringLiteral("Restored ")) && r.out.contains(QStringLiteral(".before-restore-")),
                 qPrintable(r.out));
        const QJsonArray tasks = listJson(home);
        QCOMPARE(tasks.size(), 1);
        QCOMPARE(tasks.first().toObject().value(QStringLiteral("title")).toString(), QStringLiteral("Kept"));
    }

    void exportImportRoundTripAndRefusal()
    {
        const QString home = freshHome();
        run(home, {QStringLiteral("add"), QStringLiteral("One · 10m")});
        run(home, {QStringLiteral("add"), QStringLiteral("Two · tomorrow")});
        const QString file = home + QStringLiteral("/export.json");
        QCOMPARE(run(home, {QStringLiteral("export"), QStringLiteral("--output"), file}).code, 0);

        const QString other = freshHome();
        Result r = run(other, {QStringLiteral("import"), file});
        QCOMPARE(r.code, 0);
        QCOMPARE(r.out, QStringLiteral("Imported 2 days, 2 tasks and 0 routines (0 already there).\n"));
        const auto withoutStamp = [](QString text) {
            return text.remove(QRegularExpression(QStringLiteral("\"exportedAt\"[^\n]*\n")));
        };
        QCOMPARE(withoutStamp(run(other, {QStringLiteral("export")}).out),
                 withoutStamp(run(home, {QStringLiteral("export")}).out));

        QFile spoilt(home + QStringLiteral("/bad.json"));
        QVERIFY(spoilt.open(QIODevice::WriteOnly));
        QFile good(file);
        QVERIFY(good.open(QIODevice::ReadOnly));
        spoilt.write(good.readAll().replace("\"orderIndex\": 0", "\"orderIndex\": \"first\""));
        spoilt.close();
        const QString fresh = freshHome();
        run(fresh, {QStringLiteral("add"), QStringLiteral("Mine")});
        r = run(fresh, {QStringLiteral("import"), spoilt.fileName()});
        QCOMPARE(r.code, 3);
        QVERIFY2(r.err.contains(QLatin1String("orderIndex")) && r.err.contains(QLatin1String("Line ")),
                 qPrintable(r.err));
        QCOMPARE(listJson(fresh).size(), 1);

        r = run(home, {QStringLiteral("export"), QStringLiteral("--format"), QStringLiteral("ics")});
        QCOMPARE(r.code, 0);
        QVERIFY(r.out.startsWith(QLatin1String("BEGIN:VCALENDAR")));
        QCOMPARE(r.out.count(QStringLiteral("BEGIN:VTODO")), 2);
    }

    void headlessHelpAndAgentRefusal()
    {
        const QString home = freshHome();
        const QStringList headless{QStringLiteral("DISPLAY"), QStringLiteral("WAYLAND_DISPLAY"),
                                   QStringLiteral("QT_QPA_PLATFORM")};
        Result r = run(home, {QStringLiteral("--help")}, headless);
        QCOMPARE(r.code, 0);
        QVERIFY(r.out.contains(QLatin1String("toggle")));
        QCOMPARE(run(home, {QStringLiteral("--version")}, headless).code, 0);
        for (const QString &command : {QStringLiteral("add"), QStringLiteral("status"), QStringLiteral("export"),
                                       QStringLiteral("import"), QStringLiteral("done")}) {
            r = run(home, {command, QStringLiteral("--help")}, headless);
            QCOMPARE(r.code, 0);
            QVERIFY2(r.out.contains(QStringLiteral("tarnwell")) && r.out.contains(command), qPrintable(r.out));
        }
        // The agent itself: one clear line and a non-zero exit, no abort.
        r = run(home, {}, headless);
        QCOMPARE(r.code, 1);
        QCOMPARE(r.err.count(u'\n'), 1);
        QVERIFY2(r.err.contains(QLatin1String("no graphical display")), qPrintable(r.err));
        QVERIFY(!QFile::exists(home + QStringLiteral("/data/tarnwell/Tarnwell.sqlite")));
    }

    // The agent's lock routes the store commands to its bus, and goes with its
    // process: a lock file left by a killed agent sends nothing to the bus.
    void agentLockFollowsTheAgentProcess()
    {
        const QString home = freshHome();
        AppProcess agent(home, {QStringLiteral("--ui-test")}, {QStringLiteral("LANGUAGE=en")});
        QVERIFY2(agent.waitFor(QStringLiteral("Interface installed")), qPrintable(agent.log()));
        const QStringList verbose{QStringLiteral("QT_LOGGING_RULES=tarnwell.services.info=true")};
        const QString direct = QStringLiteral("No agent holds the store");
        Result r = run(home, {QStringLiteral("list")}, verbose);
        QCOMPARE(r.code, 0);
        QVERIFY2(!r.err.contains(direct), qPrintable(r.err));
        ::kill(pid_t(agent.pid()), SIGKILL);
        agent.finish();
        QVERIFY(QFile::exists(home + QStringLiteral("/data/tarnwell/agent.lock")));
        r = run(home, {QStringLiteral("add"), QStringLiteral("After the agent")}, verbose);
        QCOMPARE(r.code, 0);
        QVERIFY2(r.err.contains(direct), qPrintable(r.err));
        QCOMPARE(listJson(home).last().toObject().value(QStringLiteral("title")).toString(),
                 QStringLiteral("After the agent"));
    }

    void throughARunningAgent()
    {
        const QString home = freshHome();
        AppProcess agent(home, {QStringLiteral("--ui-test")}, {QStringLiteral("LANGUAGE=en")});
        QVERIFY2(agent.waitFor(QStringLiteral("Interface installed")), qPrintable(agent.log()));
        for (const char *title : {"a", "b", "c"})
            QCOMPARE(run(home, {QStringLiteral("add"), QString::fromLatin1(title)}).code, 0);
        QCOMPARE(
            run(home,
                {QStringLiteral("add"), QStringLiteral("--title"), QStringLiteral("First"), QStringLiteral("--urgent")})
                .code,
            0);
        QVERIFY(agent.waitFor(QStringLiteral("Added a task from outside: First")));

        QProcess follow;
        follow.setProcessEnvironment(environmentFor(home));
        follow.start(QStringLiteral(TARNWELL_BINARY),
                     {QStringLiteral("status"), QStringLiteral("--follow"), QStringLiteral("--json")});
        // One line per change: wait for the line that shows the change asked for
        // (a change may also bring lines whose only news is the time focused).
        const auto lineWhere = [&follow](const std::function<bool(const QJsonObject &)> &wanted) {
            QElapsedTimer timer;
            timer.start();
            while (timer.elapsed() < 10000) {
                if (!follow.canReadLine()) {
                    follow.waitForReadyRead(100);
                    continue;
                }
                const QJsonObject active =
                    QJsonDocument::fromJson(follow.readLine()).object().value(QStringLiteral("active")).toObject();
                if (wanted(active))
                    return true;
            }
            return false;
        };
        const auto title = [](const QJsonObject &a) { return a.value(QStringLiteral("title")).toString(); };
        const auto running = [](const QJsonObject &a) { return a.value(QStringLiteral("running")).toBool(); };
        QVERIFY(lineWhere([&](const QJsonObject &a) { return title(a) == QLatin1String("First") && !running(a); }));

        Result r = run(home, {QStringLiteral("start")});
        QCOMPARE(r.code, 0);
        QCOMPARE(r.out, QStringLiteral("Focusing on “First”.\n"));
        QVERIFY(lineWhere([&](const QJsonObject &a) { return title(a) == QLatin1String("First") && running(a); }));
        QCOMPARE(run(home, {QStringLiteral("done")}).code, 0);
        QVERIFY(lineWhere([&](const QJsonObject &a) { return title(a) == QLatin1String("a"); }));
        QCOMPARE(run(home, {QStringLiteral("toggle")}).out, QStringLiteral("Focusing on “a”.\n"));
        QCOMPARE(run(home, {QStringLiteral("pause")}).out, QStringLiteral("Paused “a”.\n"));
        QCOMPARE(run(home, {QStringLiteral("done"), QStringLiteral("not-an-id")}).code, 3);
        follow.kill();
        follow.waitForFinished();

        // Four writers at once lose nothing: the agent serialises them.
        QList<QProcess *> writers;
        for (int i = 0; i < 4; ++i) {
            auto *p = new QProcess(this);
            p->setProcessEnvironment(environmentFor(home));
            p->start(QStringLiteral("/bin/sh"),
                     {QStringLiteral("-c"),
                      QStringLiteral("for n in 1 2 3 4 5; do \"$0\" add \"w%1-$n\" || exit 1; done").arg(i),
                      QStringLiteral(TARNWELL_BINARY)});
            writers << p;
        }
        for (QProcess *p : writers) {
            QVERIFY(p->waitForFinished(30000));
            QCOMPARE(p->exitCode(), 0);
        }
        qDeleteAll(writers);
        QCOMPARE(listJson(home).size(), 4 + 20);
        agent.terminate();
        QVERIFY(agent.finish());
    }
};

QTEST_GUILESS_MAIN(CliTest)
#include "tst_cli.moc"
