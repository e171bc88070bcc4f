// Planning costs: parsing a quick-add line (the window parses on every edit),
// building the weekday name table, and the rollover search and the repeating
// routines against a store with about 100,000 tasks of history versus an
// empty one. Both stores hold the same last week (open and finished tasks,
// some from routines) and the same routines; the full one adds the history
// before that week. Ratios are full / empty.
#include "BenchSupport.h"

#include "persistence/DayRepository.h"
#include "persistence/PersistenceController.h"
#include "persistence/RoutineRepository.h"
#include "persistence/TaskRepository.h"
#include "services/QuickAddDayVocabulary.h"
#include "services/QuickAddSyntaxParser.h"
#include "services/RolloverService.h"
#include "services/RoutineService.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <memory>

using namespace tarnwell;

namespace {

void BM_QuickAddParse(benchmark::State &state)
{
    const Calendar calendar;
    const QDateTime now = QDateTime::currentDateTimeUtc();
    const QString line = QStringLiteral("Write report · 45m tomorrow !");
    QuickAddSyntaxParser::parse(line, now, calendar); // first use builds the tables
    for (auto _ : state)
        benchmark::DoNotOptimize(QuickAddSyntaxParser::parse(line, now, calendar));
}
BENCHMARK(BM_QuickAddParse)->Repetitions(15);

struct Store
{
    explicit Store(const QString &path)
        : controller(path)
    {
    }
    Calendar calendar;
    PersistenceController controller;
    StoreContext &context = controller.viewContext();
    DayRepository days{context, calendar, systemClock()};
    TaskRepository tasks{context, calendar, systemClock(), days};
    RoutineRepository routines{context, systemClock()};
    RoutineService routineService{context, calendar, systemClock(), routines, tasks, days};
};

Task *newTask(StoreContext &context, Day *day, const QString &title, int order, bool completed)
{
    Task *task = context.insertNew<Task>();
    task->setTitle(title);
    task->setDurationMinutes(order % 90 + 5);
    task->setOrderIndex(order);
    task->setCompleted(completed);
    task->setCreatedAt(day->date());
    task->setUpdatedAt(day->date());
    task->setDay(day);
    return task;
}

void fill(const QString &path, int historyTasks)
{
    Store store(path);
    auto &context = store.context;
    const QDateTime now = QDateTime::currentDateTimeUtc();

    // Five routines of four items: every day, weekdays, and single weekdays.
    QList<RoutineItem *> items;
    const qint16 masks[] = {127, 62, 1, 8, 64};
    for (int r = 0; r < 5; ++r) {
        QList<RoutineRepository::ItemDraft> drafts;
        for (int i = 0; i < 4; ++i)
            drafts.append({QStringLiteral("Routine %1 item %2").arg(r).arg(i), 15, std::nullopt});
        Routine *routine = store.routines.createRoutine(QStringLiteral("Routine %1").arg(r), drafts);
        store.routines.setRepeatWeekdays(routine, masks[r]);
        items += RoutineRepository::items(routine);
    }

    // History before the last week: 3,650 days.
    const int historyDays = 3650;
    long made = 0;
    for (int d = historyDays + 8; d >= 9; --d) {
        Day *day = context.insertNew<Day>();
        day->setDate(store.calendar.startOfDayAdding(now, -d));
        const long target = long(historyDays + 8 - d + 1) * historyTasks / historyDays;
        for (int order = 0; made < target; ++made, ++order)
            newTask(context, day, QStringLiteral("History task %1").arg(made), order, made % 10 != 0);
    }
    // The last week, the same in both stores: eight tasks a day, half open,
    // every fourth from a routine item.
    for (int d = 8; d >= 1; --d) {
        Day *day = context.insertNew<Day>();
        day->setDate(store.calendar.startOfDayAdding(now, -d));
        for (int order = 0; order < 8; ++order) {
            Task *task = newTask(context, day, QStringLiteral("Week task %1.%2").arg(d).arg(order), order, order % 2);
            if (order % 4 == 0)
                task->setRoutineItemID(items[(d + order) % items.size()]->id());
        }
    }
    context.save();
    std::fprintf(stderr, "%s: %ld history tasks\n", qPrintable(path), made);
}

struct Figures
{
    double candidate = 0, candidateCold = 0, applyDue = 0;
};

Figures measure(const QString &path)
{
    Figures f;
    QSettings defaults(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("tarnwell"), QStringLiteral("bench"));

    std::vector<double> cold;
    for (int i = 0; i < 31; ++i) {
        Store store(path);
        RolloverService rollover(store.context, store.calendar, systemClock(), store.days, store.tasks, store.routines,
                                 defaults);
        cold.push_back(bench::timeUs([&] { benchmark::DoNotOptimize(rollover.candidate()); }));
    }
    f.candidateCold = bench::median(cold);

    Store store(path);
    RolloverService rollover(store.context, store.calendar, systemClock(), store.days, store.tasks, store.routines,
                             defaults);
    f.candidate = bench::medianUs(301, [&] { benchmark::DoNotOptimize(rollover.candidate()); });

    // Each sample is a fresh calendar day for the routines: their last
    // application is set back to yesterday first (not timed).
    const QDateTime yesterday = store.calendar.startOfDayAdding(QDateTime::currentDateTimeUtc(), -1);
    std::vector<double> apply;
    for (int i = 0; i < 101; ++i) {
        for (Routine *routine : store.routines.routines())
            routine->setLastAppliedDate(yesterday);
        store.context.save();
        apply.push_back(bench::timeUs([&] { benchmark::DoNotOptimize(store.routineService.applyDueRoutines()); }));
    }
    apply.erase(apply.begin()); // the first one also loads the routines into today
    f.applyDue = bench::median(apply);
    return f;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);

    for (const auto &[name, us] : bench::runMicroBenchmarks(argc, argv)) {
        if (name == "BM_QuickAddParse")
            bench::figure("quickadd.parse.median_us", us, "us");
    }
    const double firstTable =
        bench::timeUs([] { benchmark::DoNotOptimize(QuickAddDayVocabulary::buildWeekdayTable()); });
    std::fprintf(stderr, "first weekday table build: %.1f us\n", firstTable);
    bench::figure("quickadd.weekday_table.us",
                  bench::medianUs(51, [] { benchmark::DoNotOptimize(QuickAddDayVocabulary::buildWeekdayTable()); }),
                  "us");

    QTemporaryDir dir;
    const QString empty = dir.filePath(QStringLiteral("empty.sqlite"));
    const QString full = dir.filePath(QStringLiteral("full.sqlite"));
    fill(empty, 0);
    fill(full, 100000);

    // Interleave the stores so that disk and cache noise hits both alike;
    // keep the better of two rounds.
    const Figures e = measure(empty);
    const Figures h = measure(full);
    const Figures e2 = measure(empty);
    const Figures h2 = measure(full);
    const auto best = [](double a, double b) { return std::min(a, b); };
    const Figures fe{best(e.candidate, e2.candidate), best(e.candidateCold, e2.candidateCold),
                     best(e.applyDue, e2.applyDue)};
    const Figures fh{best(h.candidate, h2.candidate), best(h.candidateCold, h2.candidateCold),
                     best(h.applyDue, h2.applyDue)};

    bench::figure("rollover.candidate.empty_us", fe.candidate, "us");
    bench::figure("rollover.candidate.100k_us", fh.candidate, "us");
    bench::figure("rollover.candidate.ratio_100k", fh.candidate / fe.candidate, "x");
    bench::figure("rollover.candidate_cold.ratio_100k", fh.candidateCold / fe.candidateCold, "x");
    bench::figure("routines.apply_due.empty_us", fe.applyDue, "us");
    bench::figure("routines.apply_due.100k_us", fh.applyDue, "us");
    bench::figure("routines.apply_due.ratio_100k", fh.applyDue / fe.applyDue, "x");
    return 0;
}
