// The widget program: the countdown carried forward between snapshots, the
// status-bar lines, and `tarnwell-widget --waybar` read through a pipe while
// the real application starts and pauses the timer.
#include "BarOutput.h"
#include "LiveTiming.h"
#include "kit/Translations.h"
#include "support/AppProcess.h"
#include "widget/TarnwellAppGroup.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace tarnwell;
using namespace tarnwell::widgetapp;

namespace {

const QDateTime T(QDate(2026, 3, 4), QTime(10, 0), Qt::UTC);

// 20 minutes planned, 300 s banked, running since T; written at T + 60.
WidgetSnapshot running()
{
    WidgetSnapshot s;
    s.anchor = WidgetSnapshot::Item{QUuid::createUuid(), QStringLiteral("Write <b>report</b> & more"), 20, false};
    s.upNext = {{QUuid::createUuid(), QStringLiteral("Review"), 30, true}};
    s.totalQueued = 2;
    s.totalSeconds = 1200;
    s.elapsedSeconds = 360;
    s.timerStart = T;
    s.deadline = T.addSecs(900);
    s.isRunning = true;
    s.dayLabel = QStringLiteral("Today, Wed 4 Mar");
    s.completedCount = 1;
    s.totalCount = 3;
    s.summaryLine = QStringLiteral("1 done \u00B7 25m");
    s.plannedLabel = QStringLiteral("44m");
    s.minutesUnit = QStringLiteral("min");
    s.languageCode = QStringLiteral("en");
    s.appearance = QStringLiteral("auto");
    s.appRunning = true;
    s.validUntil = QDateTime(QDate(2026, 3, 5), QTime(0, 0), Qt::UTC);
    s.updatedAt = T.addSecs(60);
    return s;
}

} // namespace

class WidgetProgramTest : public QObject
{
    Q_OBJECT

    Translations m_translations;
    QTemporaryDir m_root;

private Q_SLOTS:
    void initTestCase() { m_translations.install(QStringLiteral("en")); }

    void countdownIsCarriedForward()
    {
        const WidgetSnapshot s = running();
        LiveTiming t = LiveTiming::at(s, T.addSecs(600).addMSecs(300));
        QCOMPARE(t.elapsedSeconds, 900);
        QCOMPARE(t.remainingSeconds, 300);
        QCOMPARE(t.state, LiveTiming::State::running);
        QCOMPARE(t.percentage, 75);
        QCOMPARE(BarOutput::timeText(s, t, false), QStringLiteral("5 min"));
        QCOMPARE(BarOutput::timeText(s, t, true), QStringLiteral("05:00"));
        // One second before the deadline a minute is still shown...
        t = LiveTiming::at(s, T.addSecs(899));
        QCOMPARE(BarOutput::timeText(s, t, false), QStringLiteral("1 min"));
        // ...and at it the countdown turns overdue by itself.
        t = LiveTiming::at(s, T.addSecs(900));
        QVERIFY(t.overdue);
        QCOMPARE(t.state, LiveTiming::State::overdue);
        QCOMPARE(t.percentage, 100);
        t = LiveTiming::at(s, T.addSecs(965));
        QCOMPARE(BarOutput::timeText(s, t, false), QStringLiteral("+1 min"));
        QCOMPARE(BarOutput::timeText(s, t, true), QStringLiteral("+01:05"));

        // The next change lands where the elapsed seconds reach the next step.
        QCOMPARE(LiveTiming::nextChange(s, T.addSecs(600).addMSecs(300), 60), T.addSecs(660));
        QCOMPARE(LiveTiming::nextChange(s, T.addSecs(600).addMSecs(300), 1), T.addSecs(601));

        // Stopped: nothing moves, and what it shows depends on the banked time.
        WidgetSnapshot paused = running();
        paused.isRunning = false;
        paused.timerStart.reset();
        paused.deadline.reset();
        QVERIFY(!LiveTiming::nextChange(paused, T, 60));
        QCOMPARE(LiveTiming::at(paused, T.addSecs(9999)).state, LiveTiming::State::paused);
        paused.elapsedSeconds = 0;
        QCOMPARE(LiveTiming::at(paused, T).state, LiveTiming::State::idle);
        QCOMPARE(BarOutput::timeText(paused, LiveTiming::at(paused, T), false), QStringLiteral("20 min"));

        // No plan: the focused time counts up.
        WidgetSnapshot open = running();
        open.totalSeconds.reset();
        open.deadline.reset();
        t = LiveTiming::at(open, T.addSecs(200));
        QCOMPARE(t.elapsedSeconds, 500);
        QVERIFY(!t.remainingSeconds && !t.overdue);
        QCOMPARE(BarOutput::timeText(open, t, false), QStringLiteral("8 min"));
    }

    void barLines()
    {
        const WidgetSnapshot s = running();
        const QByteArray line = BarOutput::waybar(s, T.addSecs(600), false);
        QCOMPARE(
            line,
            QByteArray("{\"text\":\"Write &lt;b&gt;report&lt;/b&gt; &amp; more \xC2\xB7 5 min\",\"alt\":\"running\","
                       "\"tooltip\":\"Today, Wed 4 Mar\\nWrite &lt;b&gt;report&lt;/b&gt; &amp; more \xC2\xB7 05:00\\n"
                       "Up next\\n  \xE2\x80\xA2 Review (30 min)\\n1 done \xC2\xB7 25m\\n44m planned\","
                       "\"class\":\"running\",\"percentage\":75}"));
        QCOMPARE(
            BarOutput::waybar(std::nullopt, T, false),
            QByteArray("{\"text\":\"\",\"alt\":\"idle\",\"tooltip\":\"Tarnwell is not running\",\"class\":\"idle\","
                       "\"percentage\":0}"));
        WidgetSnapshot empty = running();
        empty.anchor.reset();
        empty.upNext.clear();
        QVERIFY(BarOutput::waybar(empty, T, false).startsWith("{\"text\":\"Nothing left for today\""));

        const QString pattern = QStringLiteral("{title} {time} [{state} {percentage}%] {done}/{total} {nope}");
        WidgetSnapshot multiLine = running();
        multiLine.anchor->title = QStringLiteral("Two\nlines");
        QCOMPARE(BarOutput::format(pattern, multiLine, T.addSecs(600), true),
                 QStringLiteral("Two lines 05:00 [running 75%] 1/3 {nope}"));
        QCOMPARE(BarOutput::format(pattern, std::nullopt, T, true), QString());
    }

    void waybarThroughAPipe()
    {
        const QString home = m_root.filePath(QStringLiteral("pipe"));
        AppProcess app(home);
        QVERIFY2(app.waitFor(QStringLiteral("Interface installed")), qPrintable(app.log()));
        const QProcessEnvironment e = AppProcess::environment(home);
        const auto cli = [&](const QString &program, const QStringList &arguments) {
            QProcess p;
            p.setProcessEnvironment(e);
            p.start(program, arguments);
            p.waitForFinished(20000);
            return p.exitCode();
        };

        QProcess bar;
        bar.setProcessEnvironment(e);
        bar.start(QStringLiteral(TARNWELL_WIDGET_BINARY), {QStringLiteral("--waybar")});
        QStringList lines;
        const auto waitForLine = [&](const QByteArray &needle) {
            QElapsedTimer timer;
            timer.start();
            while (timer.elapsed() < 20000) {
                while (bar.canReadLine())
                    lines << QString::fromUtf8(bar.readLine()).trimmed();
                if (!lines.isEmpty() && lines.last().contains(QString::fromUtf8(needle)))
                    return true;
                bar.waitForReadyRead(50);
            }
            return false;
        };
        QVERIFY2(waitForLine("\"class\":\"idle\""), qPrintable(lines.join(u'\n')));
        QCOMPARE(cli(QStringLiteral(TARNWELL_BINARY),
                     {QStringLiteral("add"), QStringLiteral("--title"), QStringLiteral("Write report"),
                      QStringLiteral("--minutes"), QStringLiteral("25")}),
                 0);
        QVERIFY2(waitForLine("Write report \xC2\xB7 25 min"), qPrintable(lines.join(u'\n')));
        QCOMPARE(cli(QStringLiteral(TARNWELL_BINARY), {QStringLiteral("start")}), 0);
        QVERIFY2(waitForLine("\"class\":\"running\""), qPrintable(lines.join(u'\n')));
        QTest::qWait(1100); // a second banked, so the pause shows as paused
        QCOMPARE(cli(QStringLiteral(TARNWELL_BINARY), {QStringLiteral("pause")}), 0);
        QVERIFY2(waitForLine("\"class\":\"paused\""), qPrintable(lines.join(u'\n')));
        // The bar's click binding: a command file the application carries out.
        QCOMPARE(cli(QStringLiteral(TARNWELL_WIDGET_BINARY), {QStringLiteral("--toggle")}), 0);
        QVERIFY2(waitForLine("\"class\":\"running\""), qPrintable(lines.join(u'\n')));
        QVERIFY(app.waitFor(QStringLiteral("Applied toggleTimer from the widget")));
        // Every line is one JSON object of its own.
        for (const QString &line : std::as_const(lines))
            QVERIFY2(line.startsWith(u'{') && line.endsWith(u'}'), qPrintable(line));

        bar.kill();
        bar.waitForFinished();

        // A bar that goes away: the next line meets a closed pipe (here `head`
        // has read its one line and left) and the program ends cleanly.
        QProcess head;
        QProcess piped;
        piped.setProcessEnvironment(e);
        piped.setStandardOutputProcess(&head);
        head.start(QStringLiteral("head"), {QStringLiteral("-n"), QStringLiteral("1")});
        piped.start(QStringLiteral(TARNWELL_WIDGET_BINARY), {QStringLiteral("--waybar")});
        QVERIFY(head.waitForFinished(20000));
        QVERIFY(head.readAll().contains("\"class\":\"running\""));
        QCOMPARE(cli(QStringLiteral(TARNWELL_BINARY), {QStringLiteral("pause")}), 0);
        QVERIFY(piped.waitForFinished(20000));
        QCOMPARE(piped.exitStatus(), QProcess::NormalExit);
        QCOMPARE(piped.exitCode(), 0);

        app.terminate();
        QVERIFY(app.finish());
        QVERIFY(app.log().contains(QStringLiteral("Stopped the widget surface")));
        QVERIFY(!QFile::exists(home + QStringLiteral("/data/") + TarnwellAppGroup::identifier() +
                               QStringLiteral("/widget-snapshot.json")));
        // With nothing to act on, the buttons say so and fail.
        QCOMPARE(cli(QStringLiteral(TARNWELL_WIDGET_BINARY), {QStringLiteral("--done")}), 1);
    }
};

QTEST_GUILESS_MAIN(WidgetProgramTest)
#include "tst_widget_program.moc"
