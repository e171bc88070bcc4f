// Process start to "Interface installed" against a minimal QGuiApplication
// that exits at once, both on the offscreen platform and the same session
// bus. The app runs against an existing store (a normal, not first, start).
#include "BenchSupport.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

namespace {

double appStartUs(const QString &home)
{
    QProcess app;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("XDG_DATA_HOME"), home + QStringLiteral("/data"));
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), home + QStringLiteral("/config"));
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    env.insert(QStringLiteral("TARNWELL_EXIT_AFTER_INSTALL"), QStringLiteral("1"));
    app.setProcessEnvironment(env);
    app.setProcessChannelMode(QProcess::MergedChannels);
    QElapsedTimer timer;
    timer.start();
    app.start(QStringLiteral(TARNWELL_BINARY), {QStringLiteral("--ui-test")});
    QByteArray log;
    double installedAt = -1;
    while (app.state() != QProcess::NotRunning || app.bytesAvailable() > 0) {
        app.waitForReadyRead(20);
        log += app.readAll();
        if (installedAt < 0 && log.contains("Interface installed"))
            installedAt = double(timer.nsecsElapsed()) / 1000.0;
    }
    app.waitForFinished();
    if (installedAt < 0) {
        std::fprintf(stderr, "the app never installed its interface:\n%s\n", log.constData());
        std::exit(1);
    }
    return installedAt;
}

double minimalUs()
{
    QProcess app;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    app.setProcessEnvironment(env);
    QElapsedTimer timer;
    timer.start();
    app.start(QStringLiteral(MIN_QT_APP), {});
    app.waitForFinished();
    return double(timer.nsecsElapsed()) / 1000.0;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication core(argc, argv);
    QTemporaryDir home;
    appStartUs(home.path()); // the first start creates the store
    std::vector<double> app, minimal;
    for (int i = 0; i < 15; ++i) {
        minimal.push_back(minimalUs());
        app.push_back(appStartUs(home.path()));
    }
    const double a = bench::median(app);
    const double m = bench::median(minimal);
    bench::figure("startup.min_qt_app.ms", m / 1000, "ms");
    bench::figure("startup.interface_installed.ms", a / 1000, "ms");
    bench::figure("startup.interface_installed.ratio_min_qt", a / m, "x");
    return 0;
}
