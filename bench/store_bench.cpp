// Store cost with ten years of history against an empty store. Both stores
// hold the same today (ten open tasks); the full one adds about 100,000 tasks
// over 3,650 past days. Each figure is a median over many samples; ratios are
// full / empty.
#include "BenchSupport.h"
#include "HistoryStore.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <array>
#include <memory>

using namespace tarnwell;
using bench::fill;
using bench::Store;

namespace {

struct Figures
{
    std::vector<double> open, todayQueueCold, todayQueue, createSave, complete, moveNextDay;
};

// Both stores are measured in turns, sample by sample, so that what the rest
// of a shared machine does to the disk and the caches hits both alike.
template<typename F>
void inTurns(int samples, Figures &empty, Figures &full, F &&sample)
{
    for (int i = 0; i < samples; ++i) {
        sample(empty, 0, i);
        sample(full, 1, i);
    }
}

void measure(const std::array<QString, 2> &paths, Figures &empty, Figures &full)
{
    const auto readToday = [](Store &store) {
        Day *today = store.days.day(QDateTime::currentDateTimeUtc());
        benchmark::DoNotOptimize(store.tasks.openTasks(today));
    };
    // Opening, and today's open tasks from a store that holds nothing in memory yet.
    inTurns(101, empty, full, [&](Figures &f, int side, int) {
        std::unique_ptr<Store> store;
        f.open.push_back(bench::timeUs([&] { store = std::make_unique<Store>(paths[size_t(side)]); }));
        f.todayQueueCold.push_back(bench::timeUs([&] { readToday(*store); }));
    });

    std::array<std::unique_ptr<Store>, 2> stores{std::make_unique<Store>(paths[0]), std::make_unique<Store>(paths[1])};
    // What every refresh of the task in hand does on a running app.
    inTurns(301, empty, full, [&](Figures &f, int side, int) {
        f.todayQueue.push_back(bench::timeUs([&] { readToday(*stores[size_t(side)]); }));
    });

    // Saves, which wait for the disk.
    std::array<Day *, 2> today{};
    std::array<QList<Task *>, 2> created;
    for (int side : {0, 1})
        today[size_t(side)] = stores[size_t(side)]->days.fetchOrCreateDay(QDateTime::currentDateTimeUtc());
    inTurns(301, empty, full, [&](Figures &f, int side, int i) {
        f.createSave.push_back(bench::timeUs([&] {
            created[size_t(side)].append(stores[size_t(side)]->tasks.createTask(QStringLiteral("Bench task %1").arg(i),
                                                                                25, false, today[size_t(side)]));
        }));
    });
    inTurns(150, empty, full, [&](Figures &f, int side, int i) {
        f.complete.push_back(bench::timeUs([&] {
            stores[size_t(side)]->tasks.complete(created[size_t(side)][i], QDateTime::currentDateTimeUtc(), 600);
        }));
    });
    inTurns(150, empty, full, [&](Figures &f, int side, int i) {
        f.moveNextDay.push_back(
            bench::timeUs([&] { stores[size_t(side)]->tasks.moveToNextDay(created[size_t(side)][150 + i]); }));
    });
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

    Figures e, h;
    measure({empty, full}, e, h);
    const auto report = [&](const std::string &name, std::vector<double> Figures::*field, bool absolutes) {
        const double emptyUs = bench::median(e.*field);
        const double fullUs = bench::median(h.*field);
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
