// The running program, as the user's machine carries it: resident memory
// when idle with the popover closed after it was opened once, CPU over 60 s
// with a running timer, and the time from a click on the status item to the
// popover's first frame on screen (the median of three opens after the
// windows were let go). Runs under Xvfb with a stand-in panel on a private bus.
#include "BenchSupport.h"
#include "RunningDay.h"

#include "support/AppProcess.h"
#include "support/FakeStatusNotifierWatcher.h"

#include <QDBusConnection>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QThread>

#include <unistd.h>

using namespace tarnwell;

namespace {

double cpuSeconds(qint64 pid)
{
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!stat.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray text = stat.readAll();
    // Fields after the command name, which may hold spaces: utime is 14th, stime 15th.
    const auto fields = text.mid(text.lastIndexOf(')') + 2).split(' ');
    return (fields.value(11).toDouble() + fields.value(12).toDouble()) / double(sysconf(_SC_CLK_TCK));
}

void activate(QDBusConnection &bus, const QString &item)
{
    QDBusMessage m =
        QDBusMessage::createMethodCall(item, QStringLiteral("/StatusNotifierItem"),
                                       QStringLiteral("org.kde.StatusNotifierItem"), QStringLiteral("Activate"));
    m << 1500 << 0;
    bus.call(m, QDBus::NoBlock);
}

void fail(const char *what, AppProcess &app)
{
    std::fprintf(stderr, "%s\n%s\n", what, qPrintable(app.log()));
    std::exit(1);
}

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication qt(argc, argv);
    QTemporaryDir home;
    bench::writeRunningDay(home.path(), 90);

    QDBusConnection panel = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("panel"));
    WatcherObject watcherObject;
    auto *watcher = new FakeWatcher(&watcherObject);
    panel.registerObject(QStringLiteral("/StatusNotifierWatcher"), &watcherObject, QDBusConnection::ExportAdaptors);
    panel.registerService(QStringLiteral("org.kde.StatusNotifierWatcher"));

    AppProcess app(home.path());
    if (!app.waitFor(QStringLiteral("Interface installed"), 20000))
        fail("the program did not start", app);
    QElapsedTimer wait;
    wait.start();
    while (watcher->services.isEmpty() && wait.elapsed() < 5000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    if (watcher->services.isEmpty())
        fail("the status item never registered", app);
    const QString item = watcher->services.last();

    // Open and close the popover; the click-to-shown time is the median of the rounds.
    std::vector<double> opens;
    for (int round = 1; round <= 11; ++round) {
        QElapsedTimer timer;
        timer.start();
        activate(panel, item);
        if (!app.waitFor(QStringLiteral("Popover drawn"), 10000, round))
            fail("the popover did not open", app);
        opens.push_back(double(timer.nsecsElapsed()) / 1e6);
        activate(panel, item); // the second click closes it
        if (!app.waitFor(QStringLiteral("Popover hidden"), 10000, round))
            fail("the popover did not close", app);
    }

    // Idle: the program lets its windows go once they have been hidden a
    // while; then read its resident memory.
    if (!app.waitFor(QStringLiteral("Let the idle windows go"), 60000))
        fail("the windows were never let go", app);
    QThread::sleep(1);
    const double rss = bench::residentMb(app.pid());

    // A running timer for 60 s: only the once-a-second countdown should wake it.
    const double cpuBefore = cpuSeconds(app.pid());
    QElapsedTimer minute;
    minute.start();
    while (minute.elapsed() < 60000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 200);
    const double cpuAfter = cpuSeconds(app.pid());
    const double cpuPct = (cpuAfter - cpuBefore) / (double(minute.elapsed()) / 1000.0) * 100.0;

    // The first open after the windows were let go builds them again: once
    // after the idle minute, then twice more after they were let go again.
    std::vector<double> reopens;
    for (int round = 1; round <= 3; ++round) {
        const int drawn = int(opens.size() + reopens.size()) + 1;
        if (round > 1) {
            activate(panel, item); // closes it
            if (!app.waitFor(QStringLiteral("Popover hidden"), 10000, drawn - 1))
                fail("the popover did not close", app);
            if (!app.waitFor(QStringLiteral("Let the idle windows go"), 60000, round))
                fail("the windows were not let go again", app);
            QThread::sleep(1);
        }
        QElapsedTimer reopen;
        reopen.start();
        activate(panel, item);
        if (!app.waitFor(QStringLiteral("Popover drawn"), 10000, drawn))
            fail("the popover did not open again", app);
        reopens.push_back(double(reopen.nsecsElapsed()) / 1e6);
    }

    app.terminate();
    app.finish();
    bench::figure("popover.open.median_ms", bench::median(opens), "ms");
    bench::figure("popover.open_after_idle_ms", bench::median(reopens), "ms");
    bench::figure("app.idle_rss_mb", rss, "MB");
    bench::figure("app.running_timer_cpu_pct", cpuPct, "%");
    return 0;
}
