// The popover's search over past tasks' titles in a store of ten years and
// about 100,000 tasks: through the title index (target: under 10 ms, so the
// results follow the typing), and, for comparison, what reading every title
// with LIKE costs.
#include "BenchSupport.h"
#include "HistoryStore.h"
#include "services/TaskHistory.h"

#include <QCoreApplication>
#include <QSqlQuery>
#include <QTemporaryDir>

using namespace tarnwell;

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("full.sqlite"));
    bench::fill(path, 3650, 2740); // 27.4 a day = 100,010 tasks
    bench::Store store(path);
    TaskHistory history(store.controller.viewContext(), store.calendar);

    // A common word (every title has it), a rare one (a single title) and none.
    const QStringList needles{QStringLiteral("history task"), QStringLiteral("task 99999"), QStringLiteral("zebra")};
    double worst = 0;
    for (const QString &needle : needles) {
        qsizetype found = 0;
        const double us = bench::medianUs(51, [&] { found = history.search(needle).size(); });
        std::fprintf(stderr, "\"%s\": %lld found, %.1f us\n", qPrintable(needle), qlonglong(found), us);
        worst = std::max(worst, us);
    }
    bench::figure("history.search_100k.ms", worst / 1000.0, "ms");

    // The same search by reading every title, newest day first.
    QSqlQuery like(store.controller.viewContext().database());
    like.prepare(QStringLiteral("SELECT t.id FROM tasks t JOIN days d ON d.id = t.day_id WHERE t.title LIKE ? "
                                "ORDER BY d.date DESC LIMIT 50"));
    double likeWorst = 0;
    for (const QString &needle : needles) {
        const double us = bench::medianUs(11, [&] {
            like.addBindValue(QString(QStringLiteral("%") + needle + QStringLiteral("%")));
            like.exec();
            while (like.next()) { }
        });
        likeWorst = std::max(likeWorst, us);
    }
    bench::figure("history.search_like_100k.ms", likeWorst / 1000.0, "ms");
    return 0;
}
