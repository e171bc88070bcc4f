// Whole `tarnwell` processes, as a script pays for them: `add` and `status`
// against stores of 0, 10 000 and 100 000 tasks with no agent running, and
// `add` through a running agent. Median of several runs each.
#include "BenchSupport.h"
#include "persistence/Day.h"
#include "persistence/PersistenceController.h"
#include "persistence/Task.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimeZone>

using namespace tarnwell;

namespace {

QProcessEnvironment environmentFor(const QString &home)
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("XDG_DATA_HOME"), home + QStringLiteral("/data"));
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), home + QStringLiteral("/config"));
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    return env;
}

// Past days of ten tasks each, nine of them completed, written in large saves.
void fill(const QString &home, int tasks)
{
    PersistenceController store(home + QStringLiteral("/data/tarnwell/Tarnwell.sqlite"));
    StoreContext &context = store.viewContext();
    const QDateTime today = QDate::currentDate().startOfDay(QTimeZone::systemTimeZone());
    for (int i = 0; i < tasks; i += 10) {
        auto *day = context.insertNew<Day>();
        day->setDate(today.addDays(-(i / 10) - 1));
        for (int j = 0; j < 10 && i + j < tasks; ++j) {
            auto *task = context.insertNew<Task>();
            task->setTitle(QStringLiteral("Task %1").arg(i + j));
            task->setDurationMinutes(25);
            task->setOrderIndex(j);
            task->setCompleted(j < 9);
            task->setCreatedAt(day->date());
            task->setUpdatedAt(day->date());
            task->setDay(day);
        }
        if (i % 5000 == 0)
            context.save();
    }
    context.save();
}

double runMs(const QString &home, const QStringList &arguments)
{
    QProcess p;
    p.setProcessEnvironment(environmentFor(home));
    QElapsedTimer timer;
    timer.start();
    p.start(QStringLiteral(TARNWELL_BINARY), arguments);
    p.waitForFinished(60000);
    const double ms = double(timer.nsecsElapsed()) / 1e6;
    if (p.exitCode() != 0) {
        std::fprintf(stderr, "tarnwell %s failed: %s\n", qPrintable(arguments.join(u' ')),
                     p.readAllStandardError().constData());
        std::exit(1);
    }
    return ms;
}

double medianMs(const QString &home, const QStringList &arguments, int runs = 21)
{
    runMs(home, arguments); // warm the page cache
    std::vector<double> times;
    for (int i = 0; i < runs; ++i)
        times.push_back(runMs(home, arguments));
    return bench::median(times);
}

const QStringList add{QStringLiteral("add"), QStringLiteral("Bench task · 25m")};

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication core(argc, argv);
    QTemporaryDir root;
    double figures[3] = {};
    const int sizes[3] = {0, 10000, 100000};
    const char *names[3] = {"cli.add.ms_empty", "cli.add.ms_10k", "cli.add.ms_100k"};
    for (int i = 0; i < 3; ++i) {
        const QString home = root.filePath(QStringLiteral("store%1").arg(sizes[i]));
        fill(home, sizes[i]);
        figures[i] = medianMs(home, add);
        bench::figure(names[i], figures[i], "ms");
        if (sizes[i] == 10000)
            bench::figure("cli.status.ms_10k", medianMs(home, {QStringLiteral("status"), QStringLiteral("--json")}),
                          "ms");
    }
    bench::figure("cli.add.ratio_100k", figures[2] / figures[0], "x");

    // Through a running agent on the 10 000-task store.
    const QString home = root.filePath(QStringLiteral("store10000"));
    QProcess agent;
    agent.setProcessEnvironment(environmentFor(home));
    agent.setProcessChannelMode(QProcess::MergedChannels);
    agent.start(QStringLiteral(TARNWELL_BINARY), {QStringLiteral("--ui-test")});
    QByteArray log;
    QElapsedTimer waited;
    waited.start();
    while (!log.contains("Interface installed") && waited.elapsed() < 30000) {
        agent.waitForReadyRead(50);
        log += agent.readAll();
    }
    if (!log.contains("Interface installed")) {
        std::fprintf(stderr, "the agent did not start:\n%s\n", log.constData());
        return 1;
    }
    bench::figure("cli.add_via_agent.ms_10k", medianMs(home, add), "ms");
    agent.terminate();
    agent.waitForFinished();
    return 0;
}
