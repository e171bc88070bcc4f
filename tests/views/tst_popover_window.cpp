// The popover and quick-add windows on a real display: they load without a
// single QML warning, take the keyboard in their field, add what is typed,
// run the card's buttons and close on Escape and on losing the focus.
#include "ViewsFixture.h"
#include "views/PopoverManager.h"
#include "views/QuickAddWindowController.h"
#include "views/RoutinesModel.h"
#include "views/SettingsWindowController.h"
#include "views/ThemeController.h"
#include "views/UiEngine.h"

#include <QGuiApplication>
#include <QScreen>
#include <QtQml/QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(Tarnwell_ViewsPlugin)

namespace {

QStringList g_log;
QtMessageHandler g_previous = nullptr;

void record(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    g_log << message;
    if (g_previous)
        g_previous(type, context, message);
}

int count(const QString &line)
{
    return int(std::count(g_log.cbegin(), g_log.cend(), line));
}

} // namespace

class PopoverWindowTest : public QObject
{
    Q_OBJECT

    struct Windows
    {
        ViewsFixture f;
        ThemeController theme;
        UiEngine ui{theme};
        PopoverManager popover{f.model, ui};
        QuickAddDraft quickAddDraft{f.tasks, f.days, f.calendar, f.time.clock()};
        QuickAddWindowController quickAdd{quickAddDraft, ui};
        // The routines are a tab of the settings.
        SettingsWindowController settings{{f.settings,
                                           f.sound,
                                           f.routines,
                                           ui,
                                           [] { return QString(); },
                                           {},
                                           [] { return DesktopFacts{}; },
                                           QStringLiteral("0.1.0"),
                                           QString()}};
        QmlWarnings warnings{ui};

        Windows()
        {
            QObject::connect(&f.model, &PopoverModel::manageRoutinesRequested, &settings,
                             [this] { settings.show(QStringLiteral("routines")); });
        }
    };

private Q_SLOTS:
    void initTestCase() { g_previous = qInstallMessageHandler(record); }

    void placementStaysOnTheScreen()
    {
        const QRect area(0, 30, 1600, 970);
        const QSize size(380, 560);
        QCOMPARE(PopoverManager::placement(QPoint(800, 30), size, area), QPoint(610, 38));
        QCOMPARE(PopoverManager::placement(QPoint(1590, 10), size, area), QPoint(1220, 30));
        QCOMPARE(PopoverManager::placement(QPoint(800, 990), size, area), QPoint(610, 440));
        QCOMPARE(PopoverManager::placement(QPoint(), size, area), QPoint(1212, 38));
    }

    void popoverAddsWhatIsTypedAndClosesOnEscape()
    {
        Windows w;
        w.f.add(QStringLiteral("First"), 25);
        w.popover.show(QPoint());
        QQuickWindow *window = w.popover.window();
        QVERIFY2(window, qPrintable(w.warnings.text()));
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QCOMPARE(count(QStringLiteral("Popover shown")), 1);
        QVERIFY(window->flags() & Qt::Tool);
        const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
        QVERIFY(area.contains(window->geometry()));

        QTRY_VERIFY(window->isActive());
        QTRY_COMPARE(focusName(window), QStringLiteral("addField"));
        typeText(window, QStringLiteral("Write report ~ 45m tomorrow !"));
        QVERIFY(namedItem(window, "addError"));
        QVERIFY(namedItem(window, "addError")->property("text").toString().isEmpty());
        QTest::keyClick(window, Qt::Key_Return);
        QCOMPARE(w.f.titles(1), QStringList{QStringLiteral("Write report")});
        QCOMPARE(w.f.tasks.openTasks(w.f.day(1)).first()->durationMinutes(), 45);
        QVERIFY(namedItem(window, "addField")->property("text").toString().isEmpty());

        // A line with nothing to add says so in place.
        typeText(window, QStringLiteral("!"));
        QTest::keyClick(window, Qt::Key_Return);
        QVERIFY(!namedItem(window, "addError")->property("text").toString().isEmpty());

        // Left on tomorrow and closed, it opens on today again.
        w.f.model.nextDay();
        QVERIFY(!w.f.model.isToday());
        QTest::keyClick(window, Qt::Key_Escape);
        QTRY_VERIFY(!window->isVisible());
        QVERIFY(!w.popover.isVisible());
        w.popover.toggle(QPoint(200, 0));
        QVERIFY(w.popover.isVisible());
        QVERIFY(w.f.model.isToday());
        QCOMPARE(count(QStringLiteral("Popover shown")), 2);
        w.popover.toggle();
        QVERIFY(!w.popover.isVisible());
        QVERIFY2(w.warnings.isEmpty(), qPrintable(w.warnings.text()));
    }

    void cardButtonsRunTheTimerAndShowWhatIsNext()
    {
        Windows w;
        Task *first = w.f.add(QStringLiteral("First"), 25);
        w.f.add(QStringLiteral("Second"), 10);
        w.popover.show();
        QQuickWindow *window = w.popover.window();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QVERIFY(namedItem(window, "taskInHandCard")->isVisible());

        click(window, namedItem(window, "timerButton"));
        QVERIFY(first->activeStartedAt());
        click(window, namedItem(window, "doneButton"));
        QVERIFY(first->completed());
        QTRY_VERIFY(namedItem(window, "nextUpStart")->isVisible());
        click(window, namedItem(window, "nextUpStart"));
        QVERIFY(!namedItem(window, "nextUpStart")->isVisible());
        QCOMPARE(w.f.service.activeTask()->title(), QStringLiteral("Second"));
        QVERIFY(w.f.service.activeTask()->activeStartedAt());
        QVERIFY2(w.warnings.isEmpty(), qPrintable(w.warnings.text()));
    }

    void rowsWorkFromTheKeyboardAndByDragging()
    {
        Windows w;
        w.f.add(QStringLiteral("A"));
        Task *b = w.f.add(QStringLiteral("B"));
        w.f.add(QStringLiteral("C"));
        w.popover.show();
        QQuickWindow *window = w.popover.window();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QQuickItem *list = namedItem(window, "taskList");
        list->forceActiveFocus();
        list->setProperty("currentIndex", 1);
        QTest::keyClick(window, Qt::Key_Down, Qt::AltModifier);
        QCOMPARE(w.f.titles(0), (QStringList{QStringLiteral("A"), QStringLiteral("C"), QStringLiteral("B")}));
        QTRY_COMPARE(list->property("currentIndex").toInt(), 2);

        // Dragging a row's handle onto another row puts it there.
        const QList<QQuickItem *> handles = visibleItems(window->contentItem(), QStringLiteral("dragHandle"));
        QCOMPARE(handles.size(), 3);
        const auto centre = [](QQuickItem *i) {
            return i->mapToScene(QPointF(i->width() / 2, i->height() / 2)).toPoint();
        };
        QTest::mousePress(window, Qt::LeftButton, {}, centre(handles[0]));
        QTest::mouseMove(window, centre(handles[1]));
        QTest::mouseMove(window, centre(handles[2]));
        QTest::mouseRelease(window, Qt::LeftButton, {}, centre(handles[2]));
        QCOMPARE(w.f.titles(0), (QStringList{QStringLiteral("C"), QStringLiteral("B"), QStringLiteral("A")}));

        list->forceActiveFocus();
        list->setProperty("currentIndex", 1);
        QTest::keyClick(window, Qt::Key_Space);
        QVERIFY(b->completed());

        // Enter opens the editor in place; a blank title is refused there.
        list->setProperty("currentIndex", 0);
        QTest::keyClick(window, Qt::Key_Return);
        QTRY_COMPARE(focusName(window), QStringLiteral("editTitle"));
        QTest::keyClick(window, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(window, Qt::Key_Backspace);
        QTest::keyClick(window, Qt::Key_Return);
        const QList<QQuickItem *> errors = visibleItems(window->contentItem(), QStringLiteral("editError"));
        QCOMPARE(errors.size(), 1);
        QCOMPARE(errors.first()->property("text").toString(), RepositoryError::titleEmpty().localizedDescription());
        QTest::keyClick(window, Qt::Key_Escape); // closes the editor, not the popover
        QVERIFY(w.popover.isVisible());
        QCOMPARE(w.f.titles(0).first(), QStringLiteral("C"));
        QVERIFY2(w.warnings.isEmpty(), qPrintable(w.warnings.text()));
    }

    void losingTheFocusClosesThePopover()
    {
        Windows w;
        w.popover.show();
        QQuickWindow *window = w.popover.window();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QTRY_VERIFY(window->isActive());
        QWindow other;
        other.resize(200, 200);
        other.show();
        QVERIFY(QTest::qWaitForWindowExposed(&other));
        other.requestActivate();
        QTRY_VERIFY(!w.popover.isVisible());
    }

    void quickAddWindowAddsAndCloses()
    {
        Windows w;
        w.quickAdd.show();
        QQuickWindow *window = w.quickAdd.window();
        QVERIFY2(window, qPrintable(w.warnings.text()));
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QCOMPARE(count(QStringLiteral("Quick add shown")), 1);
        QTRY_COMPARE(focusName(window), QStringLiteral("quickAddField"));
        typeText(window, QStringLiteral("Plan ~ 30m"));
        QCOMPARE(w.quickAddDraft.durationText(), QStringLiteral("30m"));
        QTest::keyClick(window, Qt::Key_Return);
        QCOMPARE(w.f.titles(0), QStringList{QStringLiteral("Plan")});
        QTRY_VERIFY(!window->isVisible());

        w.quickAdd.show();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QTest::keyClick(window, Qt::Key_Escape);
        QTRY_VERIFY(!w.quickAdd.isVisible());
        QVERIFY2(w.warnings.isEmpty(), qPrintable(w.warnings.text()));
    }

    void routinesTabOpensFromThePopoverAndWorksFromTheKeyboard()
    {
        Windows w;
        w.popover.show();
        QQuickWindow *popover = w.popover.window();
        QVERIFY(QTest::qWaitForWindowExposed(popover));
        click(popover, namedItem(popover, "routineButton"));
        QQuickItem *manage = namedItem(popover, "manageRoutines");
        QTRY_VERIFY(manage && manage->isVisible());
        // Clicked once the menu has opened and laid out all its items.
        auto *menu = manage->property("menu").value<QObject *>();
        QVERIFY(menu);
        QTRY_VERIFY(menu->property("opened").toBool());
        click(popover, manage);
        QQuickWindow *window = w.settings.window();
        QVERIFY2(window, qPrintable(w.warnings.text()));
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QCOMPARE(count(QStringLiteral("Settings shown")), 1);
        QTRY_VERIFY(namedItem(window, "page-routines")->isVisible());
        QVERIFY(namedItem(window, "routinesEmpty")->isVisible());

        // A new routine takes the name field; a blank name is refused there.
        click(window, namedItem(window, "newRoutine"));
        QCOMPARE(w.f.routines.routines().size(), 1);
        QTRY_COMPARE(focusName(window), QStringLiteral("routineName"));
        QTest::keyClick(window, Qt::Key_Backspace);
        QTest::keyClick(window, Qt::Key_Return);
        QVERIFY(namedItem(window, "nameError")->isVisible());
        typeText(window, QStringLiteral("Morning"));
        QTest::keyClick(window, Qt::Key_Return);
        QCOMPARE(w.f.routines.routines().first()->name(), QStringLiteral("Morning"));
        QVERIFY(!namedItem(window, "nameError")->isVisible());

        // Tasks are added from their fields.
        namedItem(window, "newItemTitle")->forceActiveFocus();
        typeText(window, QStringLiteral("Stretch"));
        QTest::keyClick(window, Qt::Key_Tab);
        typeText(window, QStringLiteral("10m"));
        QTest::keyClick(window, Qt::Key_Return);
        QCOMPARE(w.settings.routines()->items().count(), 1);
        QTest::keyClick(window, Qt::Key_Return);
        QVERIFY(namedItem(window, "addItemError")->isVisible());

        // From the list: Enter edits in place (Escape leaves the editor, not
        // the window), Alt+Up moves a task, Delete removes it.
        typeText(window, QStringLiteral("Read"));
        QTest::keyClick(window, Qt::Key_Return);
        QQuickItem *list = namedItem(window, "itemList");
        list->forceActiveFocus();
        list->setProperty("currentIndex", 1);
        QTest::keyClick(window, Qt::Key_Return);
        QTRY_COMPARE(focusName(window), QStringLiteral("editItemTitle"));
        QTest::keyClick(window, Qt::Key_Escape);
        QTRY_COMPARE(focusName(window), QStringLiteral("itemList"));
        QVERIFY(w.settings.isVisible());
        QTest::keyClick(window, Qt::Key_Up, Qt::AltModifier);
        RoutineItemsModel &items = w.settings.routines()->items();
        QCOMPARE(items.index(0).data(RoutineItemsModel::TitleRole).toString(), QStringLiteral("Read"));
        QTest::keyClick(window, Qt::Key_Return);
        QTRY_COMPARE(focusName(window), QStringLiteral("editItemTitle"));
        typeText(window, QStringLiteral(" more"));
        QTest::keyClick(window, Qt::Key_Return);
        QCOMPARE(items.index(0).data(RoutineItemsModel::TitleRole).toString(), QStringLiteral("Read more"));
        QTRY_COMPARE(focusName(window), QStringLiteral("itemList"));
        QTest::keyClick(window, Qt::Key_Delete);
        QCOMPARE(items.count(), 1);

        // Weekday toggles show for a custom rule.
        QVERIFY(!namedItem(window, "weekdayToggles")->isVisible());
        w.settings.routines()->setRepeatChoice(int(RoutineSchedule::Kind::custom));
        QVERIFY(namedItem(window, "weekdayToggles")->isVisible());

        // Delete asks first; Escape closes the question, then the window.
        click(window, namedItem(window, "deleteRoutine"));
        QQuickItem *dialog = namedItem(window, "confirmDelete");
        QTRY_VERIFY(dialog && dialog->isVisible());
        QTest::keyClick(window, Qt::Key_Escape);
        QTRY_VERIFY(!dialog->isVisible());
        QVERIFY(w.settings.isVisible());
        QCOMPARE(w.f.routines.routines().size(), 1);
        click(window, namedItem(window, "deleteRoutine"));
        QTRY_VERIFY(dialog->isVisible());
        click(window, dialog);
        QTRY_VERIFY(namedItem(window, "routinesEmpty")->isVisible());
        QVERIFY(w.f.routines.routines().isEmpty());
        QTRY_VERIFY(!dialog->isVisible()); // the question has faded out
        QTest::keyClick(window, Qt::Key_Escape);
        QTRY_VERIFY(!w.settings.isVisible());
        QVERIFY2(w.warnings.isEmpty(), qPrintable(w.warnings.text()));
    }

    void idleWindowsAreLetGoAndComeBack()
    {
        Windows w;
        w.ui.setIdleRelease(std::chrono::milliseconds(50));
        w.ui.setKeepEngineWhenIdle(true); // as the application does
        w.f.add(QStringLiteral("First"), 25);
        w.popover.show(QPoint());
        QVERIFY(QTest::qWaitForWindowExposed(w.popover.window()));
        // (Runs last: the other cases count the windows' log lines.)
        w.quickAdd.show();
        w.popover.hide();
        QTest::qWait(150);
        QVERIFY(w.popover.window()); // the quick-add window is still open
        w.quickAdd.hide();
        QTRY_VERIFY(!w.popover.window());
        QVERIFY(w.ui.hasEngine()); // kept, with its compiled types

        const qsizetype logged = g_log.size();
        w.popover.show(QPoint());
        QQuickWindow *window = w.popover.window();
        QVERIFY(window && w.ui.hasEngine());
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QTRY_COMPARE(focusName(window), QStringLiteral("addField"));
        typeText(window, QStringLiteral("Second"));
        QTest::keyClick(window, Qt::Key_Return);
        QCOMPARE(w.f.titles(0), (QStringList{QStringLiteral("First"), QStringLiteral("Second")}));
        const QStringList since = g_log.mid(logged);
        QVERIFY2(!since.join(u'\n').contains(QStringLiteral("qrc:/")), qPrintable(since.join(u'\n')));
    }
};

QTEST_MAIN(PopoverWindowTest)
#include "tst_popover_window.moc"
