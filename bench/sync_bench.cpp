// Sync passes against a local Radicale (tests/support/Radicale.h):
//   sync.noop.median_ms          a pass with nothing to do, 200 tasks synced (target < 50 ms)
//   sync.radicale_warmup_10k.ms  Radicale's first etag listing and sync-collection of 10,000 new items
//   sync.initial_10k.ms          first pass of an empty store over 10,000 to-dos
//   sync.initial_10k.cpu_ms      the CPU time of this process during it (the rest is the server)
//   sync.initial_10k.stall_ms    the longest the main loop waited during it (slices, answers)
//   sync.initial_10k.stall_cpu_ms  the same wait counted in the main thread's CPU time: what is
//                                ours in it, without the time other programs had the processor
//   sync.push_1000.ms            a pass that writes 1,000 tasks changed here (10,000 in the collection)
//   sync.push_1000.stall_ms      the longest the main loop waited during it (and stall_cpu_ms)
//   sync.push_1000.cpu_ms        the CPU time of this process during it, the stall watch's own
//                                wake-ups (1,000 a second of a pass that lasts minutes) included
//   sync.noop_10k.median_ms      a pass with nothing to do, 10,000 tasks synced
//   sync.noop_10k.server_ms      of which the bare sync-collection REPORT (Radicale's time)
//
// To find what holds the main loop up: TARNWELL_BENCH_SLOW_EVENTS_MS=3 prints every event
// that took longer (wall and thread CPU, receiver and its parent, event type, and the
// resources of the last slice saved since the previous line) to stderr, and
// TARNWELL_BENCH_ONLY_INITIAL=1 stops after the first pass of 10,000.
#include "BenchSupport.h"

#include "persistence/Day.h"
#include "persistence/DayRepository.h"
#include "persistence/PersistenceController.h"
#include "persistence/Task.h"
#include "persistence/TaskRepository.h"
#include "support/Radicale.h"
#include "sync/SyncEngine.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTimer>

#include <cstdio>
#include <ctime>
#include <sys/resource.h>

using namespace tarnwell;
using namespace tarnwell::sync;

namespace {

QByteArray todo(int i)
{
    const QString uid = QUuid::createUuid().toString(QUuid::WithoutBraces);
    const QDate day = QDate(2026, 1, 1).addDays(i % 365);
    return QStringLiteral("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Tarnwell//Bench//EN\r\nBEGIN:VTODO\r\n"
                          "UID:%1\r\nDTSTAMP:20261124T090000Z\r\nLAST-MODIFIED:20261124T090000Z\r\n"
                          "SUMMARY:Bench task %2\r\nDESCRIPTION:Some notes for task %2\r\n"
                          "DTSTART;VALUE=DATE:%3\r\nSTATUS:NEEDS-ACTION\r\nX-TARNWELL-PLANNED-MINUTES:25\r\n"
                          "X-TARNWELL-ORDER:%4\r\nEND:VTODO\r\nEND:VCALENDAR\r\n")
        .arg(uid)
        .arg(i)
        .arg(day.toString(QStringLiteral("yyyyMMdd")))
        .arg(i / 365)
        .toUtf8();
}

struct Store
{
    explicit Store(const QString &file, QNetworkAccessManager &network)
        : store(file)
        , days(store.viewContext(), Calendar(), systemClock())
        , tasks(store.viewContext(), Calendar(), systemClock(), days)
        , engine(store.viewContext(), days, network, systemClock())
    {
    }
    PersistenceController store;
    DayRepository days;
    TaskRepository tasks;
    SyncEngine engine;
};

double cpuMs()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return (double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1e3) +
        (double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e3);
}

// Milliseconds of one client request, waited for on the main loop.
template<typename Ask>
double requestMs(Ask ask)
{
    bool answered = false;
    QElapsedTimer clock;
    clock.start();
    ask([&answered] { answered = true; });
    while (!answered)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return double(clock.nsecsElapsed()) / 1e6;
}

double threadCpuMs()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return (double(now.tv_sec) * 1e3) + (double(now.tv_nsec) / 1e6);
}

bool failed = false;
int lastSlice = 0; // resources in the last saved slice, for the slow-event lines

// Prints events that kept the main thread longer than a threshold.
class ProbedApplication : public QCoreApplication
{
public:
    ProbedApplication(int &argc, char **argv)
        : QCoreApplication(argc, argv)
        , m_thresholdMs(qEnvironmentVariableIntValue("TARNWELL_BENCH_SLOW_EVENTS_MS"))
    {
    }
    bool notify(QObject *receiver, QEvent *event) override
    {
        if (m_thresholdMs <= 0 || m_depth > 0)
            return QCoreApplication::notify(receiver, event);
        // Read before: the event may delete the receiver.
        const int type = event->type();
        const char *receiverClass = receiver->metaObject()->className();
        const char *parentClass = receiver->parent() ? receiver->parent()->metaObject()->className() : "-";
        ++m_depth;
        QElapsedTimer wall;
        wall.start();
        const double cpu = threadCpuMs();
        const bool result = QCoreApplication::notify(receiver, event);
        const double cpuSpent = threadCpuMs() - cpu;
        const double wallSpent = double(wall.nsecsElapsed()) / 1e6;
        --m_depth;
        if (wallSpent >= m_thresholdMs)
            std::fprintf(stderr, "slow event: %.1f ms (cpu %.1f) %s (of %s) event type %d; last slice %d\n", wallSpent,
                         cpuSpent, receiverClass, parentClass, type, std::exchange(lastSlice, 0));
        return result;
    }

private:
    int m_thresholdMs = 0;
    int m_depth = 0;
};

struct Timed
{
    double ms = 0;
    double stall = 0; // the longest gap between turns of the main loop
    double stallCpu = 0; // the most main-thread CPU time spent in one such gap
};

// One pass: its milliseconds, and how long the main loop was held up at
// most while it ran.
Timed timedPass(SyncEngine &engine, const SyncAccount &account, const QString &password, bool watchStalls = false)
{
    std::optional<SyncOutcome> out;
    Timed timed;
    QElapsedTimer sinceTurn;
    double cpuAtTurn = threadCpuMs();
    QTimer ticker;
    ticker.setInterval(1);
    QObject::connect(&ticker, &QTimer::timeout, [&] {
        const double cpu = threadCpuMs();
        timed.stall = std::max(timed.stall, double(sinceTurn.nsecsElapsed()) / 1e6);
        timed.stallCpu = std::max(timed.stallCpu, cpu - cpuAtTurn);
        sinceTurn.restart();
        cpuAtTurn = cpu;
    });
    QElapsedTimer clock;
    clock.start();
    sinceTurn.start();
    if (watchStalls) // a 1 ms timer costs CPU of its own: only where the stall is the figure
        ticker.start();
    engine.run(account, password, [&out](const SyncOutcome &o) { out = o; });
    while (!out)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    timed.ms = double(clock.nsecsElapsed()) / 1e6;
    if (!out->status.ok()) {
        std::fprintf(stderr, "pass failed: %s\n", qPrintable(out->status.detail));
        failed = true;
    }
    std::fprintf(stderr, "pass: %.1f ms, pulled %d, pushed %d, removed %d\n", timed.ms, out->pulled, out->pushed,
                 out->removed);
    return timed;
}

} // namespace

int main(int argc, char **argv)
{
    ProbedApplication app(argc, argv);
    test::Radicale radicale;
    QString why;
    if (!radicale.start(&why)) {
        std::fprintf(stderr, "%s\n", qPrintable(why));
        return 1;
    }
    QNetworkAccessManager network;
    QTemporaryDir dir;
    const auto collection = [&](const QString &name) {
        const QString path = QStringLiteral("/alice/%1/").arg(name);
        if (radicale.makeCalendar(network, path, QStringLiteral("Tasks"), QStringLiteral("VTODO")) != 201)
            qFatal("MKCALENDAR failed");
        return SyncAccount{radicale.base(), radicale.user, radicale.url(path)};
    };

    const bool onlyInitial = qEnvironmentVariableIntValue("TARNWELL_BENCH_ONLY_INITIAL") > 0;
    // A planner's everyday size: 200 tasks, pushed once, then passes with nothing to do.
    if (!onlyInitial) {
        const SyncAccount account = collection(QStringLiteral("small"));
        Store store(dir.filePath(QStringLiteral("small.sqlite")), network);
        for (int i = 0; i < 200; ++i)
            store.tasks.createTask(QStringLiteral("Task %1").arg(i), 25, false,
                                   store.days.fetchOrCreateDay(store.days.today().addDays(i % 14)));
        timedPass(store.engine, account, radicale.password);
        timedPass(store.engine, account, radicale.password); // our own writes come back once
        std::vector<double> idle;
        for (int i = 0; i < 21; ++i)
            idle.push_back(timedPass(store.engine, account, radicale.password).ms);
        bench::figure("sync.noop.median_ms", bench::median(idle), "ms");
    }

    // 10,000 to-dos written by "another client": straight into Radicale's
    // folder, which it reads on every request.
    const SyncAccount account = collection(QStringLiteral("large"));
    const QString folder = radicale.storageFolder() + QStringLiteral("/collection-root/alice/large/");
    for (int i = 0; i < 10000; ++i) {
        QFile file(folder + QStringLiteral("bench-%1.ics").arg(i));
        if (!file.open(QIODevice::WriteOnly))
            return 1;
        file.write(todo(i));
    }
    CalDavClient client(network);
    client.setCredentials(radicale.user, radicale.password);
    // Radicale reads and caches every new file at its first listing and
    // builds its sync state at the first sync-collection: cold, each nears the
    // client's 30 s request time-out. Measured apart, not counted in the pass.
    const double warmup = requestMs([&](auto answered) {
        client.listEtags(
            account.collection, [&client, &account, answered](const CalDavStatus &, const QList<CalDavResource> &) {
                client.changesSince(account.collection, QString(),
                                    [answered](const CalDavStatus &, const CalDavChanges &) { answered(); });
            });
    });
    bench::figure("sync.radicale_warmup_10k.ms", warmup, "ms");

    Store store(dir.filePath(QStringLiteral("large.sqlite")), network);
    QObject::connect(&store.engine, &SyncEngine::sliceSaved, [](int applied) { lastSlice = applied; });
    const double cpuBefore = cpuMs();
    const Timed initial = timedPass(store.engine, account, radicale.password, true);
    const double cpu = cpuMs() - cpuBefore;
    const QList<Task *> all = store.store.viewContext().fetch<Task>(FetchRequest{});
    if (all.size() != 10000) {
        std::fprintf(stderr, "the store holds %lld tasks, not 10000\n", qlonglong(all.size()));
        return 1;
    }
    bench::figure("sync.initial_10k.ms", initial.ms, "ms");
    bench::figure("sync.initial_10k.cpu_ms", cpu, "ms");
    bench::figure("sync.initial_10k.stall_ms", initial.stall, "ms");
    bench::figure("sync.initial_10k.stall_cpu_ms", initial.stallCpu, "ms");
    if (onlyInitial) {
        radicale.stop();
        return failed ? 1 : 0;
    }

    // 1,000 tasks edited here.
    for (int i = 0; i < 1000; ++i)
        all[i]->setTitle(all[i]->title() + QStringLiteral(" (edited)"));
    store.store.viewContext().save();
    const double pushCpuBefore = cpuMs();
    const Timed push = timedPass(store.engine, account, radicale.password, true);
    bench::figure("sync.push_1000.ms", push.ms, "ms");
    bench::figure("sync.push_1000.stall_ms", push.stall, "ms");
    bench::figure("sync.push_1000.stall_cpu_ms", push.stallCpu, "ms");
    bench::figure("sync.push_1000.cpu_ms", cpuMs() - pushCpuBefore, "ms");

    timedPass(store.engine, account, radicale.password); // our own writes come back once
    std::vector<double> idle;
    std::vector<double> server;
    for (int i = 0; i < 5; ++i) {
        idle.push_back(timedPass(store.engine, account, radicale.password).ms);
        const QString token = SyncStateRepository(store.store.viewContext()).syncToken();
        server.push_back(requestMs([&](auto answered) {
            client.changesSince(account.collection, token,
                                [answered](const CalDavStatus &, const CalDavChanges &) { answered(); });
        }));
    }
    bench::figure("sync.noop_10k.median_ms", bench::median(idle), "ms");
    bench::figure("sync.noop_10k.server_ms", bench::median(server), "ms");
    radicale.stop();
    return failed ? 1 : 0;
}
