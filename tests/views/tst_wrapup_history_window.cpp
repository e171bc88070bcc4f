// The end-of-day wrap-up and the popover's history under Xvfb: the wrap-up
// moves the rest of the day to tomorrow and takes it back, checked in the
// store; "done for today" ends the day's offer; the popover shows a past day
// with its summary and finds a task by its title. Pictures of both in both
// palettes, English and German, and Turkish once, saved as test artefacts.
#include "ViewsFixture.h"
#include "services/TaskHistory.h"
#include "services/WrapUp.h"
#include "views/HistoryModel.h"
#include "views/PopoverManager.h"
#include "views/ThemeController.h"
#include "views/UiEngine.h"
#include "views/WrapUpModel.h"

#include <QtQml/QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(Tarnwell_ViewsPlugin)

namespace {

void save(QQuickWindow *window, const QString &name, bool dark, const QString &language)
{
    QVERIFY(QTest::qWaitForWindowExposed(window));
    // No row under the pointer: its hover colour would read as a selection.
    QTest::mouseMove(window, QPoint(window->width() - 2, window->height() - 2));
    QTest::qWait(50);
    QImage picture;
    QTRY_VERIFY((picture = window->grabWindow(), !picture.isNull()));
    saveArtifact(
        picture,
        QStringLiteral("%1-%2-%3.png").arg(name, dark ? QStringLiteral("dark") : QStringLiteral("light"), language));
}

} // namespace

class WrapUpHistoryWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wrapUpAndHistory_data()
    {
        QTest::addColumn<bool>("dark");
        QTest::addColumn<QString>("language");
        for (bool dark : {false, true})
            for (const char *language : {"en", "de"})
                QTest::addRow("%s %s", dark ? "dark" : "light", language) << dark << QString::fromLatin1(language);
        QTest::addRow("light tr") << false << QStringLiteral("tr");
    }

    void wrapUpAndHistory()
    {
        QFETCH(bool, dark);
        QFETCH(QString, language);
        ViewsFixture f;
        QVERIFY(f.translations.install(language));
        ThemeController theme;
        theme.setForced(dark ? ThemeController::Forced::dark : ThemeController::Forced::light);
        UiEngine ui(theme);

        // A day: three done (over, under and without a plan), three left.
        const auto finish = [&](const QString &title, std::optional<qint64> minutes, qint64 seconds) {
            f.tasks.complete(f.add(title, minutes), f.time.now, seconds);
        };
        finish(QStringLiteral("Write the quarterly report"), 45, 58 * 60);
        finish(QStringLiteral("Answer the budget questions"), 30, 26 * 60);
        finish(QStringLiteral("Call the bank"), std::nullopt, 9 * 60);
        Task *first = f.add(QStringLiteral("Plan the sprint"), 30);
        Task *second = f.add(QStringLiteral("Book the train"), std::nullopt);
        Task *third = f.add(QStringLiteral("Review the budget draft"), 60);
        Task *waiting = f.add(QStringLiteral("Already tomorrow"), 15, 1);
        const QList<Task *> left{first, second, third};

        WrapUpOffer offer(f.settings, f.defaults, f.calendar, f.time.clock());
        WrapUpModel wrapUp(f.service, &offer, f.calendar, f.time.clock());
        WrapUpWindowController controller(wrapUp, ui);
        controller.show();
        QQuickWindow *window = controller.window();
        QVERIFY(window);
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QCOMPARE(namedItem(window, "wrapUpHeading")->property("text").toString(), wrapUp.doneLine());
        QVERIFY(namedItem(window, "accuracyLine")->isVisible());
        QVERIFY(wrapUp.accuracyLine().contains(QLatin1String("12")));
        save(window, QStringLiteral("wrapup"), dark, language);

        // Move the rest: first on tomorrow, in order, ahead of what was there.
        click(window, namedItem(window, "moveRest"));
        QVERIFY(f.tasks.openTasks(f.day(0)).isEmpty());
        QCOMPARE(f.tasks.openTasks(f.day(1)), (QList<Task *>{first, second, third, waiting}));
        QTRY_VERIFY(namedItem(window, "wrapUpToast")->isVisible());
        QTest::qWait(theme.motionMedium() + 100);
        save(window, QStringLiteral("wrapup-moved"), dark, language);
        // Undo, from the toast: back on today in their order, tomorrow as it was.
        click(window, namedItem(window, "wrapUpToast")->findChild<QQuickItem *>(QStringLiteral("toastAction")));
        QCOMPARE(f.tasks.openTasks(f.day(0)), left);
        QCOMPARE(f.tasks.openTasks(f.day(1)), QList<Task *>{waiting});
        QVERIFY(!wrapUp.toastVisible());

        // Done for today: the offer is spent for the day and the window closes.
        click(window, namedItem(window, "doneForToday"));
        QVERIFY(offer.isFinishedToday());
        QTRY_VERIFY(!controller.isVisible());

        // History: yesterday's done tasks and their focus, read-only.
        Task *old = f.add(QStringLiteral("Budget review with Ana"), 25, -1);
        f.tasks.complete(old, f.time.now.addDays(-1), 31 * 60);
        Task *oldOpen = f.add(QStringLiteral("Sort the receipts"), 15, -1);
        TaskHistory history(f.context, f.calendar);
        HistoryModel historyModel(f.model, f.service, f.settings, history, f.calendar, f.time.clock());
        PopoverManager popover(f.model, ui);
        popover.setHistory(&historyModel);
        popover.show(QPoint());
        QQuickWindow *pop = popover.window();
        QVERIFY(QTest::qWaitForWindowExposed(pop));
        click(pop, namedItem(pop, "previousDay"));
        QCOMPARE(f.model.dayOffset(), -1);
        QTRY_VERIFY(namedItem(pop, "historySummary")->isVisible());
        QVERIFY(!historyModel.canEdit());
        f.model.completeTask(ViewsFixture::idOf(oldOpen)); // refused while history is read-only
        QVERIFY(!oldOpen->completed());
        QTest::qWait(theme.motionMedium() + 100);
        save(pop, QStringLiteral("history-day"), dark, language);

        // The search finds today's and yesterday's "budget" tasks; a result opens its day.
        f.model.today();
        click(pop, namedItem(pop, "searchButton"));
        QTRY_VERIFY(namedItem(pop, "historySearchField")->hasActiveFocus());
        typeText(pop, QStringLiteral("budget"));
        QCOMPARE(historyModel.results().size(), 3);
        QTest::qWait(theme.motionMedium() + 100);
        save(pop, QStringLiteral("history-search"), dark, language);
        QQuickItem *results = namedItem(pop, "historyResults");
        QTRY_VERIFY(results->property("count").toInt() == 3);
        results->forceActiveFocus();
        results->setProperty("currentIndex", 2);
        QTest::keyClick(pop, Qt::Key_Return);
        QCOMPARE(f.model.dayOffset(), -1);
        QVERIFY(!namedItem(pop, "historySearch")->isVisible());
        popover.hide();
        QVERIFY(f.translations.install(QStringLiteral("en")));
    }
};

QTEST_MAIN(WrapUpHistoryWindowTest)
#include "tst_wrapup_history_window.moc"
