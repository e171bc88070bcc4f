// Test helper. "write <store> <prefix>": creates tasks forever, completing
// every third one, and prints a line after each save has returned:
// "created <title>" or "completed <title>". "open <store>": opens the store
// and exits.
#include "persistence/DayRepository.h"
#include "persistence/PersistenceController.h"
#include "persistence/TaskRepository.h"

#include <QCoreApplication>
#include <cstdio>

using namespace tarnwell;

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() >= 3 && args[1] == QLatin1String("open")) {
        PersistenceController store(args[2]);
        return 0;
    }
    if (args.size() < 4 || args[1] != QLatin1String("write"))
        return 2;

    PersistenceController store(args[2]);
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
