// Pictures of the windows a person meets (the popover with a running task, an
// urgent one, the rollover bar, the day plan and a toast; first run; quick
// add with a day chosen; routines), in both palettes, in English and German,
// at the scale of the run (the suite runs at QT_SCALE_FACTOR 1 and 2), saved
// as test artefacts to be looked at. Each picture is checked for what must
// hold whatever the look: the window's own background colour fills its
// corner, and the texts are in the language asked for.
#include "ViewsFixture.h"
#include "services/PlanningTexts.h"
#include "views/OnboardingCoordinator.h"
#include "views/PopoverManager.h"
#include "views/QuickAddWindowController.h"
#include "services/ReviewStatistics.h"
#include "views/ReviewModel.h"
#include "views/SettingsWindowController.h"
#include "views/ThemeController.h"
#include "views/UiEngine.h"

#include <QGuiApplication>
#include <QtQml/QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(Tarnwell_ViewsPlugin)

class WindowPicturesTest : public QObject
{
    Q_OBJECT

    void save(QQuickWindow *window, const QString &name, bool dark, const QString &language,
              const ThemeController &theme)
    {
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QImage picture;
        QTRY_VERIFY((picture = window->grabWindow(), !picture.isNull()));
        const QColor corner = picture.pixelColor(2, 2);
        const QColor expected = theme.window();
        QVERIFY2(std::abs(corner.red() - expected.red()) <= 2 && std::abs(corner.green() - expected.green()) <= 2 &&
                     std::abs(corner.blue() - expected.blue()) <= 2,
                 qPrintable(corner.name() + QStringLiteral(" for ") + expected.name()));
        saveArtifact(picture,
                     QStringLiteral("%1-%2-%3-%4x.png")
                         .arg(name, dark ? QStringLiteral("dark") : QStringLiteral("light"), language)
                         .arg(window->effectiveDevicePixelRatio()));
    }

private Q_SLOTS:
    void windowsInBothPalettesAndLanguages_data()
    {
        QTest::addColumn<bool>("dark");
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("title"); // the first-run window's, in that language
        for (bool dark : {false, true}) {
            QTest::addRow("%s en", dark ? "dark" : "light")
                << dark << QStringLiteral("en") << QStringLiteral("Welcome to Tarnwell");
            QTest::addRow("%s de", dark ? "dark" : "light")
                << dark << QStringLiteral("de") << QStringLiteral("Willkommen bei Tarnwell");
        }
    }

    void windowsInBothPalettesAndLanguages()
    {
        QFETCH(bool, dark);
        QFETCH(QString, language);
        QFETCH(QString, title);
        ViewsFixture f;
        QVERIFY(f.translations.install(language));
        ThemeController theme;
        theme.setForced(dark ? ThemeController::Forced::dark : ThemeController::Forced::light);
        UiEngine ui(theme);

        // The popover on a working day: the task in hand running, an urgent
        // task, one done, unfinished work from yesterday, the day plan, and
        // the toast of a task moved to tomorrow.
        Task *running = f.tasks.createTask(QStringLiteral("Write the quarterly report"), 45, false, f.day(0));
        f.tasks.createTask(QStringLiteral("Call the bank"), 15, true, f.day(0));
        f.tasks.createTask(QStringLiteral("Plan the sprint"), 30, false, f.day(0));
        Task *later = f.add(QStringLiteral("Book the train"), 10);
        Task *done = f.add(QStringLiteral("Answer Alex"), 10);
        f.add(QStringLiteral("Review the budget"), 60, -1);
        QVERIFY(f.model.startNow(ViewsFixture::idOf(running)));
        f.tick(12 * 60 + 5);
        f.model.completeTask(ViewsFixture::idOf(done));
        f.model.moveToTomorrow(ViewsFixture::idOf(later));
        f.model.refresh();
        PopoverManager popover(f.model, ui);
        popover.show(QPoint());
        QVERIFY(popover.window());
        QVERIFY(running->activeStartedAt());
        QVERIFY(f.model.rolloverVisible() && f.model.toastVisible());
        QTest::qWait(theme.motionMedium() + 100); // the toast has slid in
        save(popover.window(), QStringLiteral("popover"), dark, language, theme);
        popover.hide();

        OnboardingCoordinator onboarding(f.settings, ui);
        onboarding.show();
        QQuickWindow *first = nullptr;
        for (QWindow *w : QGuiApplication::topLevelWindows())
            if (w->isVisible())
                first = qobject_cast<QQuickWindow *>(w);
        if (!first)
            QFAIL("the first-run window is not shown");
        QCOMPARE(first->title(), title);
        QTest::qWait(theme.motionMedium() + 100);
        save(first, QStringLiteral("onboarding"), dark, language, theme);
        onboarding.finish();

        QuickAddDraft draft(f.tasks, f.days, f.calendar, f.time.clock());
        QuickAddWindowController quickAdd(draft, ui);
        quickAdd.show();
        draft.setText(QStringLiteral("Write report · 45m !"));
        save(quickAdd.window(), QStringLiteral("quickadd"), dark, language, theme);

        f.routines.createRoutine(QStringLiteral("Morning"), {{QStringLiteral("Inbox zero"), 15, std::nullopt}});

        // Every settings tab, on a desktop with some facilities missing.
        SettingsWindowController settings({f.settings,
                                           f.sound,
                                           f.routines,
                                           ui,
                                           [] { return QString(); },
                                           {},
                                           [] {
                                               DesktopFacts facts;
                                               facts.statusItem = true;
                                               facts.notificationServer = true;
                                               facts.idleSource = true;
                                               return facts;
                                           },
                                           QStringLiteral("0.1.0"),
                                           QStringLiteral("/home/you/.local/share/tarnwell")});
        for (const QString &tab : SettingsWindowController::tabNames()) {
            settings.show(tab);
            QVERIFY(settings.window());
            QQuickItem *page = settings.window()->findChild<QQuickItem *>(QStringLiteral("page-") + tab);
            QVERIFY(page);
            QTRY_VERIFY(page->isVisible());
            if (tab == QLatin1String("routines")) {
                // The chosen routine's repeat rule shows as soon as the tab does.
                auto *repeat = settings.window()->findChild<QQuickItem *>(QStringLiteral("repeatMenu"));
                QVERIFY(repeat);
                QTRY_COMPARE(repeat->property("displayText").toString(),
                             PlanningTexts::repeatOption(RoutineSchedule::Kind::never));
            }
            QVERIFY(settings.window()->title().contains(language == QLatin1String("de") ? QLatin1String("Einstellungen")
                                                                                        : QLatin1String("Settings")));
            QTest::qWait(theme.motionMedium() + 50);
            save(settings.window(), QStringLiteral("settings-") + tab, dark, language, theme);
        }
        settings.hide();

        // The review of a month of history, planned against measured.
        const int plans[] = {10, 15, 15, 25, 30, 20, 40, 45, 35, 60, 90, 50};
        const double overrun[] = {1.1, 1.6, 1.3, 1.5, 1.4, 1.2, 1.0, 0.8, 1.1, 1.3, 1.7, 1.2};
        for (int i = 0; i < 36; ++i) {
            Task *task = f.add(QStringLiteral("Past task %1").arg(i + 1), plans[i % 12], -(i % 9));
            f.tasks.complete(task, f.calendar.startOfDayAdding(f.time.now, -(i % 9)).addSecs(9 * 3600),
                             qint64(plans[i % 12] * 60 * overrun[(i + i / 12) % 12]));
        }
        f.add(QStringLiteral("Unplanned"), std::nullopt, -1);
        f.tasks.complete(f.tasks.openTasks(f.day(-1)).first(), f.time.now.addDays(-1), 300);
        ReviewStatistics statistics(f.context, f.calendar);
        ReviewModel reviewModel(statistics, f.calendar, f.time.clock());
        ReviewWindowController review(reviewModel, ui);
        review.show();
        reviewModel.setMonthly(true);
        QVERIFY(review.window());
        QVERIFY(reviewModel.sampleCount() > 0);
        QTest::qWait(theme.motionMedium() + 50);
        save(review.window(), QStringLiteral("review"), dark, language, theme);
        QVERIFY(f.translations.install(QStringLiteral("en")));
    }
};

QTEST_MAIN(WindowPicturesTest)
#include "tst_window_pictures.moc"
