#include "app/AppDelegate.h"
#include "app/StoreFailureNotice.h"
#include "integration/AppURLRouter.h"
#include "kit/Logging.h"
#include "kit/UserDefaults.h"
#include "kit/Translations.h"
#include "persistence/PersistenceController.h"
#include "platform/AutomationBus.h"
#include "platform/JournalLog.h"
#include "platform/SessionBus.h"
#include "platform/UnixSignals.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QApplication>
#include <QTimer>
#include <QtQml/QQmlExtensionPlugin>

#include <cstdio>

Q_IMPORT_QML_PLUGIN(Tarnwell_ViewsPlugin)

using namespace tarnwell;

namespace {

// Without a display the platform plugin would abort; say so in one line.
bool hasDisplay()
{
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    if (!platform.isEmpty() && !platform.startsWith("xcb") && !platform.startsWith("wayland"))
        return true; // offscreen, vnc, ...: no display server needed
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

int refuseWithoutDisplay(int argc, char *argv[])
{
    QCoreApplication core(argc, argv);
    Translations translations;
    translations.install(Translations::resolve(QString()));
    //: The tray agent was started where there is no graphical display (ssh, cron, a text console)
    //% "tarnwell: no graphical display (DISPLAY and WAYLAND_DISPLAY are unset), so the tray agent cannot start. Commands such as “tarnwell status” work without one."
    fprintf(stderr, "%s\n", qPrintable(qtTrId("agent.error.noDisplay")));
    return 1;
}

// What a login item or a desktop entry should run: the `tarnwell` command the
// user knows (beside the agent in a build tree, in bin/ when installed, the
// agent living in lib/tarnwell/), or the agent itself when neither is there.
QString userCommand()
{
    const QString here = QCoreApplication::applicationDirPath();
    const QStringList candidates{here + QStringLiteral("/tarnwell"), here + QStringLiteral("/../../bin/tarnwell")};
    for (const QString &candidate : candidates) {
        const QFileInfo info(candidate);
        if (info.isFile() && info.isExecutable())
            return QDir::cleanPath(info.absoluteFilePath());
    }
    return QCoreApplication::applicationFilePath();
}

} // namespace

int main(int argc, char *argv[])
{
    if (!hasDisplay())
        return refuseWithoutDisplay(argc, argv);
    // QApplication rather than QGuiApplication: the plain tray icon for XEmbed
    // panels is a widget.
    QApplication app(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("tarnwell"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Tarnwell"));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.tarnwell.Tarnwell"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    platform::installLogHandler();

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Tarnwell: your day and its task in hand, in the tray."));
    parser.addHelpOption();
    parser.addOption({QStringLiteral("ui-test"), QStringLiteral("Start without onboarding (automated tests).")});
    parser.addPositionalArgument(QStringLiteral("link"), QStringLiteral("tarnwell: links to open"),
                                 QStringLiteral("[link...]"));
    parser.process(app);
    const QStringList links = parser.positionalArguments();

    AppDelegate::Options options;
    options.uiTest = parser.isSet(QStringLiteral("ui-test"));
    options.unitTestHost = qEnvironmentVariableIsSet("TARNWELL_UNIT_TEST");
    options.exitAfterInstall = qEnvironmentVariableIsSet("TARNWELL_EXIT_AFTER_INSTALL");
    options.executable = userCommand();
    // The one connection to the session bus, renewed when the bus comes back after a loss.
    platform::SessionBus sessionBus;
    AppDelegate delegate(options, sessionBus);
    delegate.applicationWillFinishLaunching();

    // One instance per user: the first owns the name, later ones hand over.
    platform::AutomationBus bus(sessionBus.connection());
    QObject::connect(&bus, &platform::ApplicationBus::openRequested, &delegate, [&](const QStringList &uris) {
        for (const QString &uri : uris)
            delegate.urlRouter()->handleURL(uri);
    });
    QObject::connect(&bus, &platform::ApplicationBus::activateRequested, &delegate, &AppDelegate::revealPopover);
    QObject::connect(&bus, &platform::ApplicationBus::actionRequested, &delegate,
                     [&](const QString &action) { delegate.activateAction(action); });
    if (bus.claim() == platform::ApplicationBus::Role::secondary) {
        qCInfo(lcServices).noquote() << QStringLiteral("Tarnwell is already running; handing over");
        return bus.handOver(links) ? 0 : 1;
    }
    // A new session bus: the name again, or, when another Tarnwell took it
    // meanwhile, that one stays and this one leaves (one writer per store).
    QObject::connect(
        &sessionBus, &platform::SessionBus::connectionChanged, &bus, [&bus](const QDBusConnection &connection) {
            const QString name = QLatin1String(platform::ApplicationBus::Constants::serviceName);
            switch (bus.claim(connection)) {
            case platform::ApplicationBus::Role::primary:
                qCInfo(lcServices).noquote() << QStringLiteral("Claimed %1 on the new session bus").arg(name);
                break;
            case platform::ApplicationBus::Role::secondary:
                qCWarning(lcServices).noquote()
                    << QStringLiteral("Another Tarnwell owns %1 on the new session bus; quitting").arg(name);
                QCoreApplication::quit();
                break;
            case platform::ApplicationBus::Role::alone:
                break; // claim() said why
            }
        });
    // Only the instance that stays touches the disk: defaults written under
    // the former name are carried over once.
    UserDefaults::migrateLegacyDefaults(*UserDefaults::open());
    for (const QString &link : links)
        delegate.urlRouter()->handleURL(link);

    platform::UnixSignals signals_;
    QObject::connect(&signals_, &platform::UnixSignals::terminationRequested, &app, [](int number) {
        qCInfo(lcServices).noquote() << QStringLiteral("Received signal %1; quitting").arg(number);
        QCoreApplication::quit();
    });
    QObject::connect(&app, &QCoreApplication::aboutToQuit, &delegate, &AppDelegate::applicationWillTerminate);

    // A store that cannot be opened stops the agent; a user who started it
    // from a menu sees why before it goes.
    PersistenceController::setLoadFailureNotice(&showStoreFailure);
    QTimer::singleShot(0, &delegate, [&] {
        delegate.applicationDidFinishLaunching();
        bus.setAutomation(delegate.automation());
        bus.setSync(delegate.syncService());
    });
    return app.exec();
}
