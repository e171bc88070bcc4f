// The status item as a panel sees it, driven by the real focus engine: its
// label, tooltip and icon follow the task in hand and its countdown, change
// only when what they show changes, and clicks reach the popover.
#include "focus/FocusFixture.h"
#include "menubar/MenuBarController.h"
#include "platform/DBusMenu.h"
#include "platform/StatusNotifierItem.h"
#include "support/FakeStatusNotifierWatcher.h"

#include <QDBusConnection>
#include <QSignalSpy>
#include <QTest>

using namespace tarnwell;
using namespace tarnwell::platform;

class PanelRecorder : public QObject
{
    Q_OBJECT
public:
    QStringList members;
public Q_SLOTS:
    void record(const QDBusMessage &message) { members << message.member(); }
};

class MenuBarControllerTest : public QObject
{
    Q_OBJECT

private:
    Panel m_panel;

    template<typename T>
    T property(const QString &name)
    {
        T value;
        m_panel.property(name).value<QDBusArgument>() >> value;
        return value;
    }

private Q_SLOTS:
    void initTestCase()
    {
        registerStatusNotifierTypes();
        registerDBusMenuTypes();
        QVERIFY(m_panel.isStarted());
    }

    void labelIconAndClicksFollowTheTaskInHand()
    {
        FocusFixture f;
        QList<QPoint> popoverClicks;
        int completions = 0;
        MenuBarController::Actions actions;
        actions.togglePopover = [&](const QPoint &at) { popoverClicks << at; };
        actions.completeActive = [&] { ++completions; };
        MenuBarController controller(
            f.service, f.countdown, f.settings, [] { return false; }, actions);
        controller.install(QDBusConnection::sessionBus());
        const QString service = controller.statusItem()->serviceName();
        QTRY_COMPARE(m_panel.item(), service);
        QCOMPARE(m_panel.label(), QStringLiteral("What's next?"));

        PanelRecorder recorder;
        for (const char *member : {"XAyatanaNewLabel", "NewIcon", "NewToolTip"})
            QVERIFY(m_panel.bus().connect(service, QStringLiteral("/StatusNotifierItem"),
                                          QStringLiteral("org.kde.StatusNotifierItem"), QString::fromLatin1(member),
                                          &recorder, SLOT(record(QDBusMessage))));

        Task *task = f.add(QStringLiteral("Write the quarterly report"), 25);
        QCOMPARE(m_panel.label(), QStringLiteral("Write the quart\u2026  25m"));
        QCOMPARE(property<StatusNotifierToolTip>(QStringLiteral("ToolTip")).title,
                 QStringLiteral("Write the quarterly report"));
        const auto before = property<StatusNotifierPixmaps>(QStringLiteral("IconPixmap"));
        QTRY_COMPARE(recorder.members.count(QStringLiteral("XAyatanaNewLabel")), 1);
        recorder.members.clear();

        f.service.startTimer(task);
        f.tick(1);
        QCOMPARE(m_panel.label(), QStringLiteral("Write the quart\u2026  24m")); // whole minutes, rounded down
        QTRY_COMPARE(recorder.members.count(QStringLiteral("XAyatanaNewLabel")), 1);
        recorder.members.clear();
        f.tick(59);
        QCOMPARE(m_panel.label(), QStringLiteral("Write the quart\u2026  24m"));
        f.tick(1);
        QCOMPARE(m_panel.label(), QStringLiteral("Write the quart\u2026  23m"));
        QTRY_COMPARE(recorder.members.count(QStringLiteral("XAyatanaNewLabel")), 1);
        // 60 s of a 25-minute plan is two steps of the ring at most.
        QVERIFY(recorder.members.count(QStringLiteral("NewIcon")) <= 2);
        QVERIFY(!(property<StatusNotifierPixmaps>(QStringLiteral("IconPixmap")) == before));

        // A click on the item opens the popover where the panel says.
        m_panel.activate(300, 4);
        QTRY_COMPARE(popoverClicks, QList<QPoint>{QPoint(300, 4)});

        // The menu's timer entry pauses the task in hand.
        controller.statusItem()->menu()->triggered(3);
        QVERIFY(!task->activeStartedAt());

        // Overtime shows a minus; then completing the last task shows the day as done.
        f.service.startTimer(task);
        f.tick(25 * 60);
        QCOMPARE(controller.presentation().state, MenuBarPresentation::State::overdue);
        QCOMPARE(m_panel.label(), QStringLiteral("Write the quart\u2026  -1m"));
        TaskCompletionFlow::complete(task->id(), f.service, f.sound, f.rec, false);
        QCOMPARE(m_panel.label(), QStringLiteral("Done for today. That's plenty."));
        QCOMPARE(controller.presentation().state, MenuBarPresentation::State::dayDone);
        f.add(QStringLiteral("One more thing"));
        QCOMPARE(m_panel.label(), QStringLiteral("One more thing"));
        QVERIFY(!controller.showingDayDone());
    }

    void openTodayOpensAndRemovalLeavesThePanel()
    {
        FocusFixture f;
        int toggles = 0;
        int opens = 0;
        MenuBarController::Actions actions;
        actions.togglePopover = [&](const QPoint &) { ++toggles; };
        actions.openToday = [&] { ++opens; };
        auto controller = std::make_unique<MenuBarController>(
            f.service, f.countdown, f.settings, [] { return false; }, actions);
        controller->install(QDBusConnection::sessionBus());
        const QString service = controller->statusItem()->serviceName();
        QTRY_COMPARE(m_panel.item(), service);

        // "Open Today" opens, twice in a row too: it never closes the popover.
        controller->statusItem()->menu()->triggered(MenuBarController::openId);
        controller->statusItem()->menu()->triggered(MenuBarController::openId);
        QCOMPARE(opens, 2);
        QCOMPARE(toggles, 0);

        // Removing the status item takes its name and object off the bus.
        controller.reset();
        QDBusMessage owner = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameHasOwner"));
        owner << service;
        QTRY_VERIFY(!m_panel.call(owner).arguments().value(0).toBool());
    }
};

QTEST_MAIN(MenuBarControllerTest)
#include "tst_menubar_controller.moc"
