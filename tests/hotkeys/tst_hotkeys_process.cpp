// The real program under Xvfb: the default hot keys are grabbed at start,
// Super+Shift+A opens quick add ready to type, Super+Shift+J opens and
// closes the popover, and the grabs go at termination. Without any way to
// reach global hot keys the program still runs and says so.
#include "support/AppProcess.h"

#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

namespace {

void xdotool(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral("xdotool"), arguments);
    QVERIFY(process.waitForFinished(5000));
    QCOMPARE(process.exitCode(), 0);
}

QStringList taskTitles(const QString &home)
{
    QStringList titles;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("check"));
        db.setDatabaseName(home + QStringLiteral("/data/tarnwell/Tarnwell.sqlite"));
        if (db.open()) {
            QSqlQuery query(QStringLiteral("SELECT title FROM tasks"), db);
            while (query.next())
                titles << query.value(0).toString();
        }
    }
    QSqlDatabase::removeDatabase(QStringLiteral("check"));
    return titles;
}

} // namespace

class HotkeysProcessTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_root;

private Q_SLOTS:
    void defaultHotkeysDriveTheWindows()
    {
        const QString home = m_root.filePath(QStringLiteral("x11"));
        AppProcess app(home);
        QVERIFY2(app.waitFor(QStringLiteral("Interface installed")), qPrintable(app.log()));
        QVERIFY(app.log().contains(QStringLiteral("Global hotkeys through X11 key grabs")));
        QVERIFY(app.log().contains(
            QStringLiteral("Registered global hotkey cmd+shift+j for action togglePopover through x11")));
        QVERIFY(
            app.log().contains(QStringLiteral("Registered global hotkey cmd+shift+a for action quickAdd through x11")));

        xdotool({QStringLiteral("key"), QStringLiteral("super+shift+a")});
        QVERIFY2(app.waitFor(QStringLiteral("Quick add shown")), qPrintable(app.log()));
        // Focused and ready to type: the typed line becomes a task.
        QTest::qWait(200);
        xdotool({QStringLiteral("type"), QStringLiteral("Call the plumber")});
        xdotool({QStringLiteral("key"), QStringLiteral("Return")});

        xdotool({QStringLiteral("key"), QStringLiteral("super+shift+j")});
        QVERIFY2(app.waitFor(QStringLiteral("Popover shown")), qPrintable(app.log()));
        xdotool({QStringLiteral("key"), QStringLiteral("super+shift+j")});
        QVERIFY2(app.waitFor(QStringLiteral("Popover hidden")), qPrintable(app.log()));

        app.terminate();
        QVERIFY(app.finish());
        QVERIFY(app.log().contains(QStringLiteral("Released 8 X11 key grabs")));
        QVERIFY(app.log().contains(QStringLiteral("Unregistered all global hotkeys")));
        QCOMPARE(taskTitles(home), QStringList{QStringLiteral("Call the plumber")});
    }

    void withoutAnyBackEndTheProgramRunsOn()
    {
        AppProcess app(m_root.filePath(QStringLiteral("none")), {QStringLiteral("--ui-test")},
                       {QStringLiteral("QT_QPA_PLATFORM=offscreen")});
        QVERIFY2(app.waitFor(QStringLiteral("Interface installed")), qPrintable(app.log()));
        QVERIFY(app.log().contains(QStringLiteral("No global hotkey service on platform offscreen")));
        QVERIFY(app.log().contains(QStringLiteral("bind desktop shortcuts to \"tarnwell tarnwell://quickadd\"")));
        app.terminate();
        QVERIFY(app.finish());
        QCOMPARE(app.process().exitCode(), 0);
    }
};

QTEST_GUILESS_MAIN(HotkeysProcessTest)
#include "tst_hotkeys_process.moc"
