// Kill -9 during saves: of 100 trials (single saves and focus-engine bursts,
// killed at a random moment), how many left every acknowledged save on disk
// with an intact file. Target: 100.
#include "BenchSupport.h"
#include "persistence/CrashTrials.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTemporaryDir>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    CrashTrials trials(QStringLiteral(STORE_WRITER), dir.filePath(QStringLiteral("crash.sqlite")));
    QElapsedTimer elapsed;
    elapsed.start();
    int passed = 0;
    for (int trial = 0; trial < 100; ++trial) {
        const CrashTrials::Outcome outcome = trials.run(trial, int(QRandomGenerator::global()->bounded(0, 120)));
        if (outcome.ok())
            ++passed;
        else
            std::fprintf(stderr, "trial %d: %s\n", trial, qPrintable(outcome.failure));
    }
    std::fprintf(stderr, "100 trials in %.1f s, %lld tasks promised\n", double(elapsed.elapsed()) / 1000.0,
                 qlonglong(trials.promised()));
    bench::figure("store.crash_trials_ok", passed, "trials");
    return passed == 100 ? 0 : 1;
}
