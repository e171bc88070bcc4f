// The daily backup of a store with ten years of history (about 100,000
// tasks): how long the whole copy takes from the event loop, and the longest
// single slice it held the loop for. Targets: under 3000 ms in all, a few ms
// a slice.
#include "BenchSupport.h"
#include "HistoryStore.h"
#include "persistence/StoreBackup.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileInfo>
#include <QTemporaryDir>

using namespace tarnwell;

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("Tarnwell.sqlite"));
    bench::fill(path, 3650, 2740);
    bench::Store store(path);
    std::vector<double> totals, slices;
    for (int round = 0; round < 3; ++round) {
        // Each round is another day, so that a copy is due.
        int day = round;
        StoreBackupService backups(store.controller.viewContext(), path, store.calendar,
                                   [day] { return QDateTime::currentDateTimeUtc().addDays(day); });
        QEventLoop loop;
        QString written;
        QObject::connect(&backups, &StoreBackupService::finished, &loop, [&](const QString &file) {
            written = file;
            loop.quit();
        });
        QElapsedTimer elapsed;
        elapsed.start();
        backups.backUpNow();
        loop.exec();
        if (written.isEmpty()) {
            std::fprintf(stderr, "the backup failed\n");
            return 1;
        }
        totals.push_back(double(elapsed.nsecsElapsed()) / 1e6);
        slices.push_back(backups.longestSliceMs());
        std::fprintf(stderr, "copy of %lld bytes in %.0f ms, longest slice %.2f ms\n",
                     qlonglong(QFileInfo(written).size()), totals.back(), slices.back());
    }
    bench::figure("store.backup.ms_100k", bench::median(totals), "ms");
    bench::figure("store.backup.longest_slice_ms", *std::max_element(slices.begin(), slices.end()), "ms");
    return 0;
}
