// The widget: a button press (a command file renamed into the folder) to the
// new snapshot on disk, the cost of a snapshot build against ten years of
// history versus an empty store, and the resident memory of the desktop
// window and of the status-bar mode once they idle.
#include "BenchSupport.h"
#include "HistoryStore.h"

#include "persistence/RoutineRepository.h"
#include "services/ActiveTaskService.h"
#include "services/RolloverService.h"
#include "services/SoundService.h"
#include "services/TaskCompletionFlow.h"
#include "settings/AppSettingsStore.h"
#include "widget/WidgetCommandDrainService.h"
#include "widget/WidgetCommandStore.h"
#include "widget/WidgetSnapshotWriter.h"
#include "widget/WidgetSurface.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>

using namespace tarnwell;

namespace {

struct Silent : ChimeLibrary, CompletionPresenter
{
    std::unique_ptr<ChimePlayer> load(const QString &) override { return nullptr; }
    void presentNextUp(const NextUpModalContext &) override { }
    void updatePresentation() override { }
};

// The application's side over a store file: writer and drain as installed.
struct Application
{
    explicit Application(const QString &path)
        : controller(path)
    {
    }
    PersistenceController controller;
    StoreContext &context = controller.viewContext();
    Calendar calendar;
    AppSettingsStore settings{controller};
    DayRepository days{context, calendar, systemClock()};
    TaskRepository tasks{context, calendar, systemClock(), days};
    RoutineRepository routines{context, systemClock()};
    QSettings defaults{QSettings::IniFormat, QSettings::UserScope, QStringLiteral("tarnwell"),
                       QStringLiteral("tarnwell")};
    RolloverService rollover{context, calendar, systemClock(), days, tasks, routines, defaults};
    ActiveTaskService service{context, settings, systemClock(), &days, &tasks};
    Silent silent;
    SoundService sound{settings, silent};
};

double pressToSnapshotMs(const QString &dir)
{
    bench::fill(dir + QStringLiteral("/press.sqlite"), 30, 500, 10);
    Application app(dir + QStringLiteral("/press.sqlite"));
    WidgetSurface surface({app.context, app.settings, app.service, app.sound, app.silent, app.calendar, systemClock(),
                           &app.rollover, nullptr});
    surface.start();
    std::vector<double> samples;
    for (int i = 0; i < 15; ++i) {
        QEventLoop loop;
        QObject::connect(surface.writer(), &WidgetSnapshotWriter::written, &loop, &QEventLoop::quit);
        QTimer::singleShot(5000, &loop, &QEventLoop::quit);
        QElapsedTimer timer;
        timer.start();
        // What `tarnwell-widget --toggle` does: a temporary file, then a rename.
        WidgetCommandStore().write(WidgetCommand::make(
            WidgetCommand::Action::toggleTimer, app.service.activeTask()->id(), QDateTime::currentDateTimeUtc()));
        loop.exec();
        samples.push_back(double(timer.nsecsElapsed()) / 1e6);
        // Let the drain's own deletion settle before the next press.
        QEventLoop settle;
        QTimer::singleShot(300, &settle, &QEventLoop::quit);
        settle.exec();
    }
    surface.stop();
    return bench::median(samples);
}

double buildMedianUs(const QString &path)
{
    Application app(path);
    WidgetSnapshotBuilder builder(app.context, app.settings, app.calendar, systemClock(), &app.rollover);
    builder.build(true); // the first build loads today's day
    return bench::medianUs(201, [&] { benchmark::DoNotOptimize(builder.build(true)); });
}

// Starts `tarnwell-widget` with `arguments`, lets it idle, and reads its
// resident memory.
double idleRss(const QStringList &arguments, const QString &dataHome)
{
    QProcess widget;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("XDG_DATA_HOME"), dataHome);
    widget.setProcessEnvironment(env);
    widget.start(QStringLiteral(TARNWELL_WIDGET_BINARY), arguments);
    if (!widget.waitForStarted())
        return -1;
    QEventLoop wait;
    QTimer::singleShot(4000, &wait, &QEventLoop::quit);
    wait.exec();
    widget.readAllStandardOutput();
    const double rss = bench::residentMb(widget.processId());
    widget.terminate();
    widget.waitForFinished();
    return rss;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;

    bench::figure("widget.press_to_snapshot.median_ms", pressToSnapshotMs(dir.path()), "ms");

    // About 100,000 tasks over ten years, against a store without history.
    // Both hold the same today and the same last week (which the snapshot
    // shows as rollover candidates), so the ratio is what history costs.
    const QString full = dir.filePath(QStringLiteral("full.sqlite"));
    const QString week = dir.filePath(QStringLiteral("week.sqlite"));
    const QString empty = dir.filePath(QStringLiteral("empty.sqlite"));
    bench::fill(full, 3650, 2740, 10);
    bench::fill(week, 7, 2740, 10);
    bench::fill(empty, 0, 0, 10);
    const double fullUs = buildMedianUs(full);
    const double weekUs = buildMedianUs(week);
    const double emptyUs = buildMedianUs(empty);
    std::fprintf(stderr,
                 "snapshot build: %.1f us with ten years, %.1f us with the last week, %.1f us with today only\n",
                 fullUs, weekUs, emptyUs);
    bench::figure("widget.snapshot_build.ratio_100k", fullUs / weekUs, "x");

    // Both modes read a current snapshot with a running timer.
    {
        Application store(empty);
        store.service.startTimer(store.service.activeTask());
        WidgetSnapshotWriter writer(
            store.service, store.settings,
            std::make_unique<WidgetSnapshotBuilder>(store.context, store.settings, store.calendar, systemClock()));
        writer.refresh();
    }
    const QString dataHome = qEnvironmentVariable("XDG_DATA_HOME");
    bench::figure("widget.idle_rss_mb", idleRss({}, dataHome), "MB");
    bench::figure("widget.waybar_rss_mb", idleRss({QStringLiteral("--waybar")}, dataHome), "MB");
    return 0;
}
