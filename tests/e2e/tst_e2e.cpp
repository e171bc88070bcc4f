// The whole program as a person meets it, under Xvfb on a private bus: a
// stand-in panel registers the status item; a click opens the popover; three
// tasks are typed into the add field; the timer is started and the task in
// hand completed from the status item's menu. The store and the label are
// checked at each step, and screenshots of the popover (light and dark,
// English and German) are saved as test artefacts.
#include "platform/DBusMenu.h"
#include "platform/StatusNotifierItem.h"
#include "support/AppProcess.h"
#include "support/FakeStatusNotifierWatcher.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDir>
#include <QGuiApplication>
#include <QProcess>
#include <QScreen>
#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

using namespace tarnwell::platform;

namespace {

// The panel's side of the status item.
class Panel
{
public:
    Panel()
    {
        m_bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), &m_object, QDBusConnection::ExportAdaptors);
        m_bus.registerService(QStringLiteral("org.kde.StatusNotifierWatcher"));
    }
    ~Panel() { m_bus.unregisterService(QStringLiteral("org.kde.StatusNotifierWatcher")); }

    QString item() const { return m_watcher->services.value(m_watcher->services.size() - 1); }
    int registrations() const { return int(m_watcher->services.size()); }

    QDBusMessage call(const QDBusMessage &message)
    {
        QDBusPendingCallWatcher pending(m_bus.asyncCall(message, 5000));
        if (!pending.isFinished())
            QSignalSpy(&pending, &QDBusPendingCallWatcher::finished).wait(6000);
        return pending.reply();
    }
    QVariant property(const QString &name)
    {
        QDBusMessage get = QDBusMessage::createMethodCall(item(), QStringLiteral("/StatusNotifierItem"),
                                                          QStringLiteral("org.freedesktop.DBus.Properties"),
                                                          QStringLiteral("Get"));
        get << QStringLiteral("org.kde.StatusNotifierItem") << name;
        return call(get).arguments().value(0).value<QDBusVariant>().variant();
    }
    QString label() { return property(QStringLiteral("XAyatanaLabel")).toString(); }
    void activate(int x, int y)
    {
        QDBusMessage m = QDBusMessage::createMethodCall(item(), QStringLiteral("/StatusNotifierItem"),
                                                        QStringLiteral("org.kde.StatusNotifierItem"),
                                                        QStringLiteral("Activate"));
        m << x << y;
        call(m);
    }
    // A click on an entry of the status item's menu.
    void clickMenu(int id)
    {
        const QString path = property(QStringLiteral("Menu")).value<QDBusObjectPath>().path();
        QDBusMessage m = QDBusMessage::createMethodCall(item(), path, QStringLiteral("com.canonical.dbusmenu"),
                                                        QStringLiteral("Event"));
        m << id << QStringLiteral("clicked") << QVariant::fromValue(QDBusVariant(QString())) << 0u;
        call(m);
    }

private:
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("panel"));
    WatcherObject m_object;
    FakeWatcher *m_watcher = new FakeWatcher(&m_object);
};

// What a person's keyboard does: xdotool into the focused window.
bool type(const QString &text)
{
    return QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("type"), QStringLiteral("--delay"),
                                                         QStringLiteral("15"), text}) == 0;
}
bool key(const QString &name)
{
    return QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("key"), name}) == 0;
}

// The store as another reader sees it.
struct StoreReader
{
    explicit StoreReader(const QString &path)
    {
        auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("reader"));
        db.setDatabaseName(path);
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        db.open();
    }
    ~StoreReader() { QSqlDatabase::removeDatabase(QStringLiteral("reader")); }
    // Today's tasks as "title|minutes|urgent|completed|running", in queue order.
    QStringList tasks()
    {
        QSqlQuery q(QSqlDatabase::database(QStringLiteral("reader")));
        q.exec(QStringLiteral("SELECT title, duration_minutes, urgent, completed, active_started_at IS NOT NULL "
                              "FROM tasks ORDER BY completed, order_index"));
        QStringList out;
        while (q.next())
            out << QStringLiteral("%1|%2|%3|%4|%5")
                       .arg(q.value(0).toString(), q.value(1).isNull() ? QStringLiteral("-") : q.value(1).toString())
                       .arg(q.value(2).toInt())
                       .arg(q.value(3).toInt())
                       .arg(q.value(4).toInt());
        return out;
    }
};

// The visible popover: the one mapped top-level window of the program.
QRect popoverGeometry()
{
    QProcess search;
    search.start(QStringLiteral("xdotool"), {QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                             QStringLiteral("--classname"), QStringLiteral("tarnwell")});
    search.waitForFinished();
    const auto ids = QString::fromUtf8(search.readAllStandardOutput()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    if (ids.isEmpty())
        return {};
    QProcess geometry;
    geometry.start(QStringLiteral("xdotool"), {QStringLiteral("getwindowgeometry"), QStringLiteral("--shell"), ids.last()});
    geometry.waitForFinished();
    QHash<QString, int> values;
    for (const QString &line : QString::fromUtf8(geometry.readAllStandardOutput()).split(QLatin1Char('\n')))
        values.insert(line.section(QLatin1Char('='), 0, 0), line.section(QLatin1Char('='), 1).toInt());
    return QRect(values.value(QStringLiteral("X")), values.value(QStringLiteral("Y")), values.value(QStringLiteral("WIDTH")),
                 values.value(QStringLiteral("HEIGHT")));
}

void screenshot(const QString &name)
{
    const QString dir = qEnvironmentVariable("TARNWELL_ARTIFACTS", QDir::currentPath() + QStringLiteral("/test-artifacts"));
    QDir().mkpath(dir);
    QTest::qWait(300); // let the window finish painting before the grab
    QPixmap screen = QGuiApplication::primaryScreen()->grabWindow(0);
    const QRect popover = popoverGeometry();
    if (popover.isValid())
        screen = screen.copy(popover.adjusted(-8, -8, 8, 8));
    QVERIFY(screen.save(dir + QLatin1Char('/') + name));
}

enum MenuEntry { menuTimer = 3, menuComplete = 4 };

} // namespace

class EndToEndTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_home;
    QString storePath() const { return m_home.path() + QStringLiteral("/data/tarnwell/Tarnwell.sqlite"); }

    void setAppearance(const QString &theme, const QString &language)
    {
        auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("settings"));
        db.setDatabaseName(storePath());
        QVERIFY(db.open());
        QSqlQuery q(db);
        QVERIFY(q.exec(QStringLiteral("UPDATE app_settings SET theme = '%1', language = '%2'").arg(theme, language)));
        db.close();
        db = {};
        QSqlDatabase::removeDatabase(QStringLiteral("settings"));
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("version")}) == 0, "xdotool is missing");
        registerStatusNotifierTypes();
        registerDBusMenuTypes();
    }

    void addStartAndCompleteLikeAPerson()
    {
        Panel panel;
        AppProcess app(m_home.path());
        QVERIFY2(app.waitFor(QStringLiteral("Interface installed")), qPrintable(app.log()));
        QTRY_VERIFY(panel.registrations() > 0);
        QCOMPARE(panel.label(), QStringLiteral("What's next?"));

        panel.activate(1500, 0);
        QVERIFY2(app.waitFor(QStringLiteral("Popover shown")), qPrintable(app.log()));

        StoreReader store(storePath());
        QVERIFY(type(QStringLiteral("Plan the sprint")));
        QVERIFY(key(QStringLiteral("Return")));
        QTRY_COMPARE(store.tasks().size(), 1);
        QVERIFY(type(QStringLiteral("Call Alex ~ 15m")));
        QVERIFY(key(QStringLiteral("Return")));
        QTRY_COMPARE(store.tasks().size(), 2);
        QVERIFY(type(QStringLiteral("Write report · 45m !")));
        QVERIFY(key(QStringLiteral("Return")));
        QTRY_COMPARE(store.tasks(), (QStringList{QStringLiteral("Write report|45|1|0|0"), QStringLiteral("Plan the sprint|-|0|0|0"),
                                                 QStringLiteral("Call Alex|15|0|0|0")}));
        QTRY_COMPARE(panel.label(), QStringLiteral("Write report  45m"));

        panel.clickMenu(menuTimer);
        QTRY_COMPARE(store.tasks().first(), QStringLiteral("Write report|45|1|0|1"));
        screenshot(QStringLiteral("popover-light-en.png"));

        panel.clickMenu(menuComplete);
        QTRY_COMPARE(store.tasks().last(), QStringLiteral("Write report|45|1|1|0"));
        QTRY_COMPARE(panel.label(), QStringLiteral("Plan the sprint"));
        screenshot(QStringLiteral("next-up-light-en.png"));

        app.terminate();
        QVERIFY(app.finish());
        QVERIFY2(app.process().exitCode() == 0, qPrintable(app.log()));
    }

    void popoverInEveryThemeAndLanguage_data()
    {
        QTest::addColumn<QString>("theme");
        QTest::addColumn<QString>("language");
        QTest::newRow("dark, English") << QStringLiteral("dark") << QStringLiteral("en");
        QTest::newRow("light, German") << QStringLiteral("light") << QStringLiteral("de");
        QTest::newRow("dark, German") << QStringLiteral("dark") << QStringLiteral("de");
    }
    void popoverInEveryThemeAndLanguage()
    {
        QFETCH(QString, theme);
        QFETCH(QString, language);
        setAppearance(theme, language);
        Panel panel;
        AppProcess app(m_home.path());
        QVERIFY2(app.waitFor(QStringLiteral("Interface installed")), qPrintable(app.log()));
        QTRY_VERIFY(panel.registrations() > 0);
        panel.activate(1500, 0);
        QVERIFY2(app.waitFor(QStringLiteral("Popover shown")), qPrintable(app.log()));
        panel.clickMenu(menuTimer);
        screenshot(QStringLiteral("popover-%1-%2.png").arg(theme, language));
        app.terminate();
        QVERIFY(app.finish());
    }
};

QTEST_MAIN(EndToEndTest)
#include "tst_e2e.moc"
