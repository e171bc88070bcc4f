// The countdown's one-second tick on a store with ten years of history
// (about 100,000 tasks) and a queue of 50 open tasks today, the first one
// running with a plan. A tick reads the task in hand from memory and never
// queries the store; the figure is the median time of one evaluation.
#include "BenchSupport.h"
#include "HistoryStore.h"

#include "services/ActiveTaskService.h"
#include "services/CountdownService.h"
#include "services/DurationCompletionNotifier.h"
#include "services/SoundService.h"
#include "settings/AppSettingsStore.h"

#include <QCoreApplication>
#include <QTemporaryDir>

using namespace tarnwell;

namespace {

struct Silent : ChimeLibrary
{
    std::unique_ptr<ChimePlayer> load(const QString &) override { return nullptr; }
};

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("Tarnwell.sqlite"));
    bench::fill(path, 3650, 2740, 50);

    bench::Store store(path);
    AppSettingsStore settings(store.controller);
    settings.setPreEndWarningMinutes(5);
    ActiveTaskService service(store.controller.viewContext(), settings, systemClock(), &store.days, &store.tasks);
    if (service.queue().size() != 50) {
        std::fprintf(stderr, "expected 50 open tasks today, found %lld\n",
                     static_cast<long long>(service.queue().size()));
        return 1;
    }
    Task *inHand = service.activeTask();
    inHand->setDurationMinutes(600); // stays counting, armed for the warning, for the whole run
    service.startTimer(inHand);

    Silent chimes;
    SoundService sound(settings, chimes);
    LoggingDurationCompletionNotifier notifier;
    CountdownService countdown(service, notifier, sound, settings, systemClock(), std::chrono::milliseconds(0));

    int saves = 0;
    QObject::connect(&store.controller.viewContext(), &StoreContext::didSave, [&] { ++saves; });
    // Batches of 100 ticks, so that the timer's own cost stays out of the figure.
    const int batch = 100;
    const double perBatch = bench::medianUs(2001, [&] {
        for (int i = 0; i < batch; ++i)
            countdown.evaluate();
    });
    if (saves != 0 || !countdown.remainingSeconds()) {
        std::fprintf(stderr, "the tick wrote to the store or lost the countdown\n");
        return 1;
    }
    bench::figure("countdown.tick.median_us", perBatch / batch, "us");
    return 0;
}
