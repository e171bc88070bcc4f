// Store cost with ten years of history against an empty store. Both stores
// hold the same today (ten open tasks); the full one adds about 100,000 tasks
// over 3,650 past days. Each figure is a median over many samples; ratios are
// full / empty.
#include "BenchSupport.h"
#include "HistoryStore.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <memory>

using namespace tarnwell;
using bench::fill;
using bench::Store;

namespace {

struct Figures
{
    double open = 0, todayQueueCold = 0, todayQueue = 0, createSave = 0, complete = 0, moveNextDay = 0;
};

Figures measure(const QString &path)
{
    Figures f;
    const int coldSamples = 31;
    const int warmSamples = 301;

    std::vector<double> opens, queues;
    for (int i = 0; i < coldSamples; ++i) {
        std::unique_ptr<Store> store;
        opens.push_back(bench::timeUs([&] { store = std::make_unique<Store>(path); }));
        // Today's day and its open tasks, from a store that holds nothing in memory yet.
        queues.push_back(bench::timeUs([&] {
            Day *today = store->days.day(QDateTime::currentDateTimeUtc());
            benchmark::DoNotOptimize(store->tasks.openTasks(today));
        }));
    }
    f.open = bench::median(opens);
    f.todayQueueCold = bench::median(queues);

    Store store(path);
    // What every refresh of the task in hand does on a running app.
    f.todayQueue = bench::medianUs(warmSamples, [&] {
        Day *today = store.days.day(QDateTime::currentDateTimeUtc());
        benchmark::DoNotOptimize(store.tasks.openTasks(today));
    });
    Day *today = store.days.fetchOrCreateDay(QDateTime::currentDateTimeUtc());
    QList<Task *> created;
    int n = 0;
    f.createSave = bench::medianUs(warmSamples, [&] {
        created.append(store.tasks.createTask(QStringLiteral("Bench task %1").arg(n++), 25, false, today));
    });
    int next = 0;
    f.complete = bench::medianUs(warmSamples / 2,
                                 [&] { store.tasks.complete(created[next++], QDateTime::currentDateTimeUtc(), 600); });
    f.moveNextDay = bench::medianUs(warmSamples / 2, [&] { store.tasks.moveToNextDay(created[next++]); });
    return f;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    const QString empty = dir.filePath(QStringLiteral("empty.sqlite"));
    const QString full = dir.filePath(QStringLiteral("full.sqlite"));
    fill(empty, 0, 0);
    const double fillUs = bench::timeUs([&] { fill(full, 3650, 2740); }); // 27.4 a day = 100,010 tasks
    std::fprintf(stderr, "filled the 100k store in %.1f s\n", fillUs / 1e6);

    // Interleave the two stores so that disk and cache noise hits both alike.
    const Figures e = measure(empty);
    const Figures h = measure(full);
    const Figures e2 = measure(empty);
    const Figures h2 = measure(full);
    // Best of two rounds per figure, so one noisy round does not decide.
    const auto best = [](const Figures &a, const Figures &b, double Figures::*field) {
        return std::min(a.*field, b.*field);
    };
    const auto report = [&](const std::string &name, double Figures::*field, bool absolutes) {
        const double emptyUs = best(e, e2, field);
        const double fullUs = best(h, h2, field);
        if (absolutes) {
            bench::figure("store." + name + ".empty_us", emptyUs, "us");
            bench::figure("store." + name + ".100k_us", fullUs, "us");
        }
        bench::figure("store." + name + ".ratio_100k", fullUs / emptyUs, "x");
        return fullUs;
    };
    report("open", &Figures::open, true);
    report("today_queue", &Figures::todayQueue, true);
    report("today_queue_cold", &Figures::todayQueueCold, true);
    bench::figure("store.create_save.median_us", report("create_save", &Figures::createSave, false), "us");
    report("complete", &Figures::complete, false);
    report("move_next_day", &Figures::moveNextDay, false);
    return 0;
}
