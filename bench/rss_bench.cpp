// Memory over a long session: the real program under Xvfb opens and closes
// the popover and shows quick add a thousand times each through D-Bus while
// a timer runs; the growth of its resident memory from after the first
// hundred rounds (the caches warmed) to the end. Target: under 3 MB.
#include "BenchSupport.h"
#include "RunningDay.h"

#include "support/AppProcess.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QTemporaryDir>

using namespace tarnwell;

namespace {

bool action(const QString &name)
{
    QDBusMessage m = QDBusMessage::createMethodCall(
        QStringLiteral("org.tarnwell.Tarnwell"), QStringLiteral("/org/tarnwell/Tarnwell"),
        QStringLiteral("org.freedesktop.Application"), QStringLiteral("ActivateAction"));
    m << name << QVariantList() << QVariantMap();
    return QDBusConnection::sessionBus().call(m, QDBus::Block, 10000).type() == QDBusMessage::ReplyMessage;
}

[[noreturn]] void fail(const char *what, AppProcess &app)
{
    std::fprintf(stderr, "%s\n%s\n", what, qPrintable(app.log().right(4000)));
    std::exit(1);
}

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication qt(argc, argv);
    QTemporaryDir home;
    bench::writeRunningDay(home.path(), 600);
    AppProcess app(home.path());
    if (!app.waitFor(QStringLiteral("Interface installed"), 20000))
        fail("the program did not start", app);

    const int rounds = 1000;
    double warm = 0;
    QElapsedTimer elapsed;
    elapsed.start();
    for (int round = 1; round <= rounds; ++round) {
        if (!action(QStringLiteral("toggle-popover")) || !app.waitFor(QStringLiteral("Popover shown"), 10000, round))
            fail("the popover did not open", app);
        if (!action(QStringLiteral("toggle-popover")) || !app.waitFor(QStringLiteral("Popover hidden"), 10000, round))
            fail("the popover did not close", app);
        if (!action(QStringLiteral("quick-add")) || !app.waitFor(QStringLiteral("Quick add requested"), 10000, round))
            fail("quick add was not asked for", app);
        // Escape closes quick add, as the user does. Under Xvfb without a
        // window manager the key now and then goes elsewhere; the window then
        // stays and the next request finds it open (counted below).
        QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("key"), QStringLiteral("Escape")});
        if (round == 100)
            warm = bench::residentMb(app.pid());
    }
    const double end = bench::residentMb(app.pid());
    std::fprintf(
        stderr,
        "%d rounds in %.0f s (quick add shown afresh %lld times); resident %.1f MB after 100, %.1f MB at the end\n",
        rounds, double(elapsed.elapsed()) / 1000, qlonglong(app.log().count(QStringLiteral("Quick add shown"))), warm,
        end);
    app.terminate();
    app.finish();
    bench::figure("app.rss_growth_mb_1000_opens", end - warm, "MB");
    return 0;
}
