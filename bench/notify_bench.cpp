// From the countdown's completion event to the notification server's Notify
// call: the countdown fires on a running task that has just used up its plan,
// the notification service builds the notice and the D-Bus back end sends it
// through the bus daemon to a stand-in server that runs in its own thread (as
// the desktop's server runs in its own process). The figure is the median of
// 40 completions.
#include "BenchSupport.h"

#include "persistence/PersistenceController.h"
#include "platform/FreedesktopNotifications.h"
#include "services/ActiveTaskService.h"
#include "services/CountdownService.h"
#include "services/NotificationService.h"
#include "services/SoundService.h"
#include "settings/AppSettingsStore.h"
#include "support/FakeNotificationServer.h"
#include "support/ManualClock.h"

#include <QCoreApplication>
#include <QThread>

#include <atomic>

using namespace tarnwell;

namespace {

struct Silent : ChimeLibrary
{
    std::unique_ptr<ChimePlayer> load(const QString &) override { return nullptr; }
};

using Steady = std::chrono::steady_clock;

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);

    // The server, on its own connection and thread.
    std::atomic<qint64> shownAt{0};
    std::atomic<int> shown{0};
    QThread serverThread;
    serverThread.start();
    QObject inThread;
    inThread.moveToThread(&serverThread);
    FakeNotificationServer *server = nullptr;
    QMetaObject::invokeMethod(
        &inThread,
        [&] {
            server = new FakeNotificationServer;
            QObject::connect(
                server, &FakeNotificationServer::notified, server,
                [&] {
                    shownAt = Steady::now().time_since_epoch().count();
                    ++shown;
                },
                Qt::DirectConnection);
            if (!server->start())
                std::fprintf(stderr, "the stand-in server could not start\n");
        },
        Qt::BlockingQueuedConnection);

    ManualClock time;
    PersistenceController store(true);
    AppSettingsStore settings(store);
    ActiveTaskService service(store.viewContext(), settings, time.clock());
    Silent chimes;
    SoundService sound(settings, chimes);
    platform::FreedesktopNotifications center{QDBusConnection::sessionBus()};
    NotificationService notifications(center, settings);
    CountdownService countdown(service, notifications, sound, settings, time.clock(), std::chrono::milliseconds(0));
    Day *today = service.dayRepository().fetchOrCreateDay(time.now);

    std::vector<double> samples;
    for (int i = 0; i < 41; ++i) {
        Task *task = service.taskRepository().createTask(QStringLiteral("Task %1").arg(i), 1, false, today);
        service.startTimer(task);
        time.advance(60 * 1000);
        const int before = shown;
        const auto start = Steady::now();
        countdown.evaluate();
        const auto deadline = start + std::chrono::seconds(5);
        while (shown == before && Steady::now() < deadline)
            app.processEvents(QEventLoop::AllEvents, 1);
        if (shown == before) {
            std::fprintf(stderr, "no Notify arrived within 5 s\n");
            return 1;
        }
        if (i > 0) // the first one also sets up the connection
            samples.push_back(double(shownAt - start.time_since_epoch().count()) / 1e6);
        service.taskRepository().complete(task, time.now, 60);
        service.refresh();
    }
    bench::figure("notify.complete_to_shown.median_ms", bench::median(samples), "ms");

    QMetaObject::invokeMethod(
        &inThread, [&] { delete server; }, Qt::BlockingQueuedConnection);
    serverThread.quit();
    serverThread.wait();
    return 0;
}
