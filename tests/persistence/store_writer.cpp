// Test helper, killed at random by the crash test.
// "write <store> <prefix>": creates tasks forever, completing every third
// one, and prints a line after each save has returned: "created <title>" or
// "completed <title>".
// "burst <store> <prefix>": drives the focus engine through a burst per task
// (create, start, pause, move to tomorrow, complete) and prints
// "<stage> <title>" (stage 0 to 4) after each of those saves has returned.
// "open <store>": opens the store and exits.
#include "persistence/DayRepository.h"
#include "persistence/PersistenceController.h"
#include "persistence/TaskRepository.h"
#include "services/ActiveTaskService.h"
#include "settings/AppSettingsStore.h"

#include <QCoreApplication>
#include <cstdio>

using namespace tarnwell;

namespace {

// Says a change is on disk only when nothing is left pending.
void acknowledge(StoreContext &context, int stage, const QString &title)
{
    if (context.hasChanges())
        return;
    std::printf("%d %s\n", stage, qPrintable(title));
    std::fflush(stdout);
}

int burst(PersistenceController &store, const QString &prefix)
{
    AppSettingsStore settings(store);
    Calendar calendar;
    DayRepository days(store.viewContext(), calendar, systemClock());
    TaskRepository tasks(store.viewContext(), calendar, systemClock(), days);
    ActiveTaskService engine(store.viewContext(), settings, systemClock(), &days, &tasks);
    StoreContext &context = store.viewContext();
    for (int i = 0;; ++i) {
        const QString title = QStringLiteral("%1-%2").arg(prefix).arg(i);
        Task *task = tasks.createTask(title, i % 9 + 1, false, days.fetchOrCreateDay(QDateTime::currentDateTimeUtc()));
        acknowledge(context, 0, title);
        engine.startTimer(task);
        acknowledge(context, 1, title);
        engine.pauseTimer(task);
        acknowledge(context, 2, title);
        tasks.moveToNextDay(task);
        acknowledge(context, 3, title);
        tasks.complete(task, QDateTime::currentDateTimeUtc(), i % 60);
        acknowledge(context, 4, title);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() >= 3 && args[1] == QLatin1String("open")) {
        PersistenceController store(args[2]);
        return 0;
    }
    if (args.size() < 4 || (args[1] != QLatin1String("write") && args[1] != QLatin1String("burst")))
        return 2;

    PersistenceController store(args[2]);
    if (args[1] == QLatin1String("burst"))
        return burst(store, args[3]);
    Calendar calendar;
    DayRepository days(store.viewContext(), calendar, systemClock());
    TaskRepository tasks(store.viewContext(), calendar, systemClock(), days);
    QList<Task *> created;
    for (int i = 0;; ++i) {
        Day *day = days.fetchOrCreateDay(QDateTime::currentDateTimeUtc().addDays(i % 5));
        const QString title = QStringLiteral("%1-%2").arg(args[3]).arg(i);
        Task *task = tasks.createTask(title, i % 7 + 1, i % 4 == 0, day);
        std::printf("created %s\n", qPrintable(title));
        std::fflush(stdout);
        created.append(task);
        if (i % 3 == 2) {
            Task *older = created.at(i - 1);
            tasks.complete(older, QDateTime::currentDateTimeUtc(), i);
            std::printf("completed %s\n", qPrintable(older->title()));
            std::fflush(stdout);
        }
    }
}
