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
#include "support/AtSpiTree.h"
#include "views/ThemeController.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>

using namespace tarnwell;

namespace {

constexpr int patience = 30000;

// What a screen reader finds of the widget: the names on screen, and where a
// button is.
QStringList names(qint64 pid)
{
    return AtSpiTree().application(pid).shownNames();
}

QRect button(qint64 pid, const QString &name)
{
    const AtSpiNode widget = AtSpiTree().application(pid);
    const AtSpiNode *found =
        widget.shown([&](const AtSpiNode &n) { return n.role == QLatin1String("push button") && n.name == name; });
    return found ? found->extents : QRect();
}

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
        widget.setProcessEnvironment(AppProcess::environment(home));
        widget.setProcessChannelMode(QProcess::ForwardedChannels);
        widget.start(QStringLiteral(TARNWELL_WIDGET_BINARY), {QStringLiteral("--position"), QStringLiteral("40,40")});
        QTRY_VERIFY_WITH_TIMEOUT(names(widget.processId()).contains(QStringLiteral("Draft the offer")), patience);
        QVERIFY(names(widget.processId()).contains(QStringLiteral("Call the printer")));
        const QImage light = capture(false);
        QVERIFY2(!light.isNull(), "the widget is not drawn in the light palette");
        save(light, QStringLiteral("widget-light-en.png"));

        // A click on the button, where it is on screen.
        QRect done;
        QTRY_VERIFY_WITH_TIMEOUT((done = button(widget.processId(), QStringLiteral("Done"))).isValid(), patience);
        QCOMPARE(QProcess::execute(QStringLiteral("xdotool"),
                                   {QStringLiteral("mousemove"), QString::number(done.center().x()),
                                    QString::number(done.center().y()), QStringLiteral("click"), QStringLiteral("1")}),
                 0);
        QVERIFY2(app->waitFor(QStringLiteral("Applied complete from the widget"), patience), qPrintable(app->log()));
        QTRY_VERIFY_WITH_TIMEOUT(!names(widget.processId()).contains(QStringLiteral("Draft the offer")), patience);
        QVERIFY(names(widget.processId()).contains(QStringLiteral("Call the printer")));

        // The application goes: the widget shows its empty state.
        app->terminate();
        QVERIFY(app->finish());
        QTRY_VERIFY_WITH_TIMEOUT(names(widget.processId()).contains(QStringLiteral("Tarnwell is not running")),
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
        QTRY_VERIFY_WITH_TIMEOUT(names(widget.processId()).contains(QStringLiteral("Erledigt")), patience);
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
