// The review window with a year of history (about 10,000 completed tasks):
// from the request to the first frame on screen, under Xvfb. Each sample
// starts from nothing made (a fresh QML engine, as after the idle release),
// so it is the open a person waits for. Target: median under 300 ms.
#include "BenchSupport.h"
#include "HistoryStore.h"

#include "kit/Translations.h"
#include "services/ReviewStatistics.h"
#include "views/ReviewModel.h"
#include "views/ThemeController.h"
#include "views/UiEngine.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTimer>
#include <QtQml/QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(Tarnwell_ViewsPlugin)

using namespace tarnwell;

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("year.sqlite"));
    bench::fill(path, 365, 2740);
    Translations translations;
    translations.install(QStringLiteral("en"));
    bench::Store store(path);
    ThemeController theme;
    ReviewStatistics statistics(store.controller.viewContext(), store.calendar);
    ReviewModel model(statistics, store.calendar, systemClock());

    std::vector<double> samples;
    for (int i = 0; i < 15; ++i) {
        UiEngine ui(theme);
        ReviewWindowController review(model, ui);
        QElapsedTimer clock;
        clock.start();
        review.show();
        if (!review.window()) {
            std::fprintf(stderr, "the review window could not be made\n");
            return 1;
        }
        QEventLoop loop;
        QObject::connect(review.window(), &QQuickWindow::frameSwapped, &loop, &QEventLoop::quit);
        QTimer::singleShot(5000, &loop, &QEventLoop::quit);
        loop.exec();
        samples.push_back(double(clock.nsecsElapsed()) / 1e6);
        if (i == 0)
            model.setMonthly(true); // the month: more rows, the larger figure
        review.hide();
        QCoreApplication::processEvents();
    }
    std::fprintf(stderr, "first open %.1f ms; %d samples in the month\n", samples.front(), model.sampleCount());
    bench::figure("review.open.median_ms", bench::median(samples), "ms");
    return 0;
}
