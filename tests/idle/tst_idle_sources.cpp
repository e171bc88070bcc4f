// The desktop's idle time read for real: the XScreenSaver extension of an
// X server (Xvfb), and ext-idle-notify-v1 of a stand-in Wayland compositor
// that the test tells when the seat goes quiet and when input comes back.
#include "platform/IdleTimeSources.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTest>

using namespace tarnwell;
using namespace tarnwell::platform;

namespace {

bool xdotoolMove(int x, int y)
{
    return QProcess::execute(QStringLiteral("xdotool"),
                             {QStringLiteral("mousemove"), QString::number(x), QString::number(y)}) == 0;
}

// The stand-in compositor; its socket becomes $WAYLAND_DISPLAY.
struct Compositor
{
    explicit Compositor(const QStringList &arguments = {})
    {
        process.start(QStringLiteral(STAND_IN_COMPOSITOR), arguments);
        if (process.waitForReadyRead(5000))
            qputenv("WAYLAND_DISPLAY", process.readLine().trimmed().split(' ').value(1));
    }
    ~Compositor()
    {
        process.kill();
        process.waitForFinished();
        qunsetenv("WAYLAND_DISPLAY");
    }
    void tell(const char *command) { process.write(QByteArray(command) + '\n'); }
    bool said(const QByteArray &line)
    {
        output += process.readAll();
        return output.contains(line);
    }
    QProcess process;
    QByteArray output;
};

} // namespace

class IdleSourcesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void xScreenSaverFollowsTheInput()
    {
        QVERIFY(qEnvironmentVariableIsSet("DISPLAY"));
        const auto idle = IdleTimeSources::xScreenSaver();
        QVERIFY2(idle, "the X server has no XScreenSaver extension");
        QVERIFY(xdotoolMove(10, 10));
        const qint64 first = idle().value_or(-1);
        QVERIFY(first >= 0 && first <= 1);
        QTest::qWait(2100);
        const qint64 later = idle().value_or(-1);
        QVERIFY2(later >= first + 2, qPrintable(QString::number(later)));
        QVERIFY(xdotoolMove(200, 120));
        QTRY_VERIFY(idle().value_or(-1) < later);
    }

    // Under Wayland the X server (Xwayland) is never asked, even when it
    // answers: it sees only its own clients' input.
    void aWaylandSessionAsksTheCompositor()
    {
        const Clock clock = systemClock();
        {
            Compositor without({QStringLiteral("--no-idle-notifier")});
            QVERIFY(qEnvironmentVariableIsSet("WAYLAND_DISPLAY"));
            QVERIFY(!IdleTimeSources::extIdleNotify(clock));
            QTest::ignoreMessage(QtInfoMsg, "No idle-time source answers");
            QVERIFY(!IdleTimeSources::find(clock));
        }
        Compositor with;
        QTest::ignoreMessage(QtInfoMsg, "Idle time from the compositor's ext-idle-notify-v1");
        QVERIFY(IdleTimeSources::find(clock));
        // No compositor at that name any more: unavailable, and quickly so.
        qputenv("WAYLAND_DISPLAY", "wayland-gone");
        QVERIFY(!IdleTimeSources::extIdleNotify(clock));
    }

    void extIdleNotifyFollowsTheSeatUntilTheCompositorGoes()
    {
        Compositor compositor;
        QDateTime now = QDateTime::currentDateTimeUtc();
        const auto idle = IdleTimeSources::extIdleNotify([&now] { return now; }, std::chrono::seconds(20));
        QVERIFY(idle);
        QTRY_VERIFY2(compositor.said("notification 20000"), compositor.output.constData());
        QCOMPARE(idle(), std::optional<qint64>(0));

        for (int round = 0; round < 2; ++round) {
            compositor.tell("idle");
            QTRY_COMPARE(idle(), std::optional<qint64>(20)); // quiet for the timeout
            now = now.addSecs(95);
            QCOMPARE(idle(), std::optional<qint64>(115));
            compositor.tell("resume");
            QTRY_COMPARE(idle(), std::optional<qint64>(0));
        }

        compositor.tell("idle");
        QTRY_VERIFY(idle() > 0);
        const QRegularExpression gone(QStringLiteral("^The Wayland compositor closed the connection"));
        QTest::ignoreMessage(QtWarningMsg, gone);
        QTest::failOnWarning(gone); // said once only
        compositor.process.kill();
        QTRY_COMPARE(idle(), std::nullopt);
        QTest::qWait(100);
        QCOMPARE(idle(), std::nullopt);
    }
};

QTEST_GUILESS_MAIN(IdleSourcesTest)
#include "tst_idle_sources.moc"
