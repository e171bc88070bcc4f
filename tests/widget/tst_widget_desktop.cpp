// The desktop widget beside the real application under Xvfb, on a private
// bus with its own folders: a click on the widget's done button completes the
// task in the store and the widget moves on to the next task; it follows the
// appearance and language of the application and shows its empty state when
// the application is gone. Pictures of both palettes go to the artefacts.
#include "persistence/DayRepository.h"
#include "persistence/PersistenceController.h"
#include "persistence/TaskRepository.h"
#include "settings/AppSettingsStore.h"
#include "support/AppProcess.h"
#include "views/ThemeController.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>

using namespace tarnwell;

namespace {

constexpr int patience = 30000;

// The widget's window as a screen reader reads it: the names on screen, and
// where a button is, over the accessibility bus.
class ScreenReader
{
public:
    ScreenReader()
    {
        const QDBusMessage reply = QDBusConnection::sessionBus().call(
            QDBusMessage::createMethodCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                           QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress")));
        m_bus = QDBusConnection::connectToBus(reply.arguments().value(0).toString(), QStringLiteral("reader"));
    }
    ~ScreenReader() { QDBusConnection::disconnectFromBus(QStringLiteral("reader")); }

    struct Node
    {
        QString service, path, role, name;
    };

    // Every node of the program with process id `pid`.
    QList<Node> nodes(qint64 pid)
    {
        QList<Node> out;
        for (const Node &app : children({QStringLiteral("org.a11y.atspi.Registry"),
                                         QStringLiteral("/org/a11y/atspi/accessible/root"),
                                         {},
                                         {}})) {
            const QDBusMessage owner =
                m_bus.call(QDBusMessage::createMethodCall(
                               QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                               QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetConnectionUnixProcessID"))
                           << app.service);
            if (owner.arguments().value(0).toLongLong() == pid)
                walk(app, 0, out);
        }
        return out;
    }
    QStringList names(qint64 pid)
    {
        QStringList out;
        for (const Node &n : nodes(pid))
            out << n.name;
        return out;
    }
    // The button's rectangle on screen, or an empty one.
    QRect button(qint64 pid, const QString &name)
    {
        for (const Node &n : nodes(pid)) {
            if (n.role != QLatin1String("push button") || n.name != name)
                continue;
            const QDBusMessage reply =
                call(n, QStringLiteral("org.a11y.atspi.Component"), QStringLiteral("GetExtents"), {0u});
            const QDBusArgument arg = reply.arguments().value(0).value<QDBusArgument>();
            int x = 0, y = 0, w = 0, h = 0;
            arg.beginStructure();
            arg >> x >> y >> w >> h;
            arg.endStructure();
            return QRect(x, y, w, h);
        }
        return {};
    }

private:
    QDBusMessage call(const Node &n, const QString &interface, const QString &method, const QVariantList &args = {})
    {
        QDBusMessage m = QDBusMessage::createMethodCall(n.service, n.path, interface, method);
        m.setArguments(args);
        return m_bus.call(m, QDBus::Block, 10000);
    }
    QList<Node> children(const Node &n)
    {
        QList<Node> out;
        const QDBusMessage reply = call(n, QStringLiteral("org.a11y.atspi.Accessible"), QStringLiteral("GetChildren"));
        if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
            return out;
        const QDBusArgument arg = reply.arguments().first().value<QDBusArgument>();
        arg.beginArray();
        while (!arg.atEnd()) {
            QString service;
            QDBusObjectPath path;
            arg.beginStructure();
            arg >> service >> path;
            arg.endStructure();
            out.append({service, path.path(), {}, {}});
        }
        arg.endArray();
        return out;
    }
    void walk(Node n, int depth, QList<Node> &out)
    {
        n.role = call(n, QStringLiteral("org.a11y.atspi.Accessible"), QStringLiteral("GetRoleName"))
                     .arguments()
                     .value(0)
                     .toString();
        n.name = call(n, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                      {QStringLiteral("org.a11y.atspi.Accessible"), QStringLiteral("Name")})
                     .arguments()
                     .value(0)
                     .value<QDBusVariant>()
                     .variant()
                     .toString();
        out << n;
        if (depth < 40) {
            for (const Node &child : children(n))
                walk(child, depth + 1, out);
        }
    }
    QDBusConnection m_bus{QString()};
};

QRect windowGeometry()
{
    QProcess search;
    search.start(QStringLiteral("xdotool"),
                 {QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--classname"),
                  QStringLiteral("tarnwell-widget")});
    search.waitForFinished();
    const auto ids = QString::fromUtf8(search.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    if (ids.isEmpty())
        return {};
    QProcess geometry;
    geometry.start(QStringLiteral("xdotool"),
                   {QStringLiteral("getwindowgeometry"), QStringLiteral("--shell"), ids.last()});
    geometry.waitForFinished();
    QHash<QString, int> v;
    for (const QString &line : QString::fromUtf8(geometry.readAllStandardOutput()).split(u'\n'))
        v.insert(line.section(u'=', 0, 0), line.section(u'=', 1).toInt());
    return QRect(v.value(QStringLiteral("X")), v.value(QStringLiteral("Y")), v.value(QStringLiteral("WIDTH")),
                 v.value(QStringLiteral("HEIGHT")));
}

// The widget's picture, once its background is the palette's window colour.
QImage capture(bool dark)
{
    ThemeController theme;
    theme.setForced(dark ? ThemeController::Forced::dark : ThemeController::Forced::light);
    QImage image;
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < patience) {
        const QRect window = windowGeometry();
        if (window.isValid()) {
            image = QGuiApplication::primaryScreen()->grabWindow(0).copy(window).toImage();
            if (!image.isNull() && QColor(image.pixel(4, image.height() - 4)) == theme.window())
                return image;
        }
        QTest::qWait(100);
    }
    return {};
}

void save(const QImage &image, const QString &name)
{
    const QString dir =
        qEnvironmentVariable("TARNWELL_ARTIFACTS", QDir::currentPath() + QStringLiteral("/test-artifacts"));
    QDir().mkpath(dir);
    QVERIFY(image.save(dir + u'/' + name));
}

} // namespace

class WidgetDesktopTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_root;

    // Settings and today's queue, written while the application is not running.
    void seed(const QString &home, TarnwellAppearance theme, TarnwellLanguageOption language, bool withTasks)
    {
        QDir().mkpath(home + QStringLiteral("/data/tarnwell"));
        PersistenceController store(home + QStringLiteral("/data/tarnwell/Tarnwell.sqlite"));
        AppSettingsStore settings(store);
        settings.setTheme(theme);
        settings.setLanguage(language);
        settings.setOnboardingCompleted(true);
        if (!withTasks)
            return;
        Calendar calendar;
        DayRepository days(store.viewContext(), calendar, systemClock());
        TaskRepository tasks(store.viewContext(), calendar, systemClock(), days);
        Day *today = days.fetchOrCreateDay(QDateTime::currentDateTimeUtc());
        tasks.createTask(QStringLiteral("Draft the offer"), 25, false, today);
        tasks.createTask(QStringLiteral("Call the printer"), 15, false, today);
        tasks.createTask(QStringLiteral("Water the plants"), std::nullopt, false, today);
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("version")}) == 0, "xdotool is missing");
    }

    void doneOnTheWidgetCompletesInTheStore()
    {
        const QString home = m_root.filePath(QStringLiteral("desk"));
        seed(home, TarnwellAppearance::light, TarnwellLanguageOption::english, true);
        auto app = std::make_unique<AppProcess>(home);
        QVERIFY2(app->waitFor(QStringLiteral("Interface installed"), patience), qPrintable(app->log()));

        QProcess widget;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("XDG_DATA_HOME"), home + QStringLiteral("/data"));
        widget.setProcessEnvironment(env);
        widget.setProcessChannelMode(QProcess::ForwardedChannels);
        widget.start(QStringLiteral(TARNWELL_WIDGET_BINARY), {QStringLiteral("--position"), QStringLiteral("40,40")});
        ScreenReader reader;
        QTRY_VERIFY_WITH_TIMEOUT(reader.names(widget.processId()).contains(QStringLiteral("Draft the offer")),
                                 patience);
        QVERIFY(reader.names(widget.processId()).contains(QStringLiteral("Call the printer")));
        const QImage light = capture(false);
        QVERIFY2(!light.isNull(), "the widget is not drawn in the light palette");
        save(light, QStringLiteral("widget-light-en.png"));

        // A click on the button, where it is on screen.
        QRect done;
        QTRY_VERIFY_WITH_TIMEOUT((done = reader.button(widget.processId(), QStringLiteral("Done"))).isValid(),
                                 patience);
        QCOMPARE(QProcess::execute(QStringLiteral("xdotool"),
                                   {QStringLiteral("mousemove"), QString::number(done.center().x()),
                                    QString::number(done.center().y()), QStringLiteral("click"), QStringLiteral("1")}),
                 0);
        QVERIFY2(app->waitFor(QStringLiteral("Applied complete from the widget"), patience), qPrintable(app->log()));
        QTRY_VERIFY_WITH_TIMEOUT(!reader.names(widget.processId()).contains(QStringLiteral("Draft the offer")),
                                 patience);
        QVERIFY(reader.names(widget.processId()).contains(QStringLiteral("Call the printer")));

        // The application goes: the widget shows its empty state.
        app->terminate();
        QVERIFY(app->finish());
        QTRY_VERIFY_WITH_TIMEOUT(reader.names(widget.processId()).contains(QStringLiteral("Tarnwell is not running")),
                                 patience);
        {
            PersistenceController store(home + QStringLiteral("/data/tarnwell/Tarnwell.sqlite"));
            Calendar calendar;
            DayRepository days(store.viewContext(), calendar, systemClock());
            TaskRepository tasks(store.viewContext(), calendar, systemClock(), days);
            const auto open = tasks.openTasks(days.day(QDateTime::currentDateTimeUtc()));
            QCOMPARE(open.size(), 2);
            QCOMPARE(open.first()->title(), QStringLiteral("Call the printer"));
        }

        // Back in the dark palette and in German: the widget follows.
        seed(home, TarnwellAppearance::dark, TarnwellLanguageOption::german, false);
        app = std::make_unique<AppProcess>(home);
        QVERIFY2(app->waitFor(QStringLiteral("Interface installed"), patience), qPrintable(app->log()));
        QTRY_VERIFY_WITH_TIMEOUT(reader.names(widget.processId()).contains(QStringLiteral("Erledigt")), patience);
        const QImage dark = capture(true);
        QVERIFY2(!dark.isNull(), "the widget is not drawn in the dark palette");
        save(dark, QStringLiteral("widget-dark-de.png"));

        widget.terminate();
        QVERIFY(widget.waitForFinished(patience));
        app->terminate();
        QVERIFY(app->finish());
    }
};

QTEST_MAIN(WidgetDesktopTest)
#include "tst_widget_desktop.moc"
