// The real program on a display and a private bus with a stand-in panel: the
// first-run window closed from its title bar still leaves the user with a
// status item, exactly one, and a popover that opens.
#include "support/AppProcess.h"
#include "support/FakeStatusNotifierWatcher.h"
#include "support/X11Windows.h"

#include <QDBusConnection>
#include <QTemporaryDir>
#include <QTest>

class AppDesktopTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void closingTheFirstRunWindowStillInstallsTheInterface()
    {
        Panel panel;
        QVERIFY(panel.isStarted());

        QTemporaryDir home;
        AppProcess app(home.path(), {});
        QVERIFY2(app.waitFor(QStringLiteral("Showing onboarding")), qPrintable(app.log()));
        X11Windows x11;
        xcb_window_t window = 0;
        QTRY_VERIFY_WITH_TIMEOUT((window = x11.find(QStringLiteral("Welcome to Tarnwell"))) != 0, 10000);
        QCOMPARE(panel.registrations(), 0);

        x11.requestClose(window);
        QVERIFY2(app.waitFor(QStringLiteral("Interface installed")), qPrintable(app.log()));
        QTRY_COMPARE(panel.registrations(), 1);
        QTRY_COMPARE_WITH_TIMEOUT(x11.find(QStringLiteral("Welcome to Tarnwell")), xcb_window_t(0), 5000);

        // A second start reaches a popover that really opens.
        AppProcess second(home.path(), {});
        QVERIFY(second.finish(5000));
        QVERIFY2(app.waitFor(QStringLiteral("Popover shown")), qPrintable(app.log()));
        QCOMPARE(panel.registrations(), 1);
        app.terminate();
        QVERIFY(app.finish());
    }
};

QTEST_GUILESS_MAIN(AppDesktopTest)
#include "tst_app_desktop.moc"
