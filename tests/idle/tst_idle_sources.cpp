// Where the idle time comes from: the XScreenSaver extension of a real X
// server (Xvfb), read as it grows and reset by a pointer move, and the
// choice among sources, with a stand-in GNOME idle monitor on the private
// session bus answering from its own thread (the reading blocks).
#include "platform/IdleTimeSources.h"

#include <QDBusConnection>
#include <QProcess>
#include <QTest>
#include <QThread>

namespace {

class FakeMutterIdleMonitor : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.gnome.Mutter.IdleMonitor")
public:
    std::atomic<quint64> idleMs{0};
public Q_SLOTS:
    quint64 GetIdletime() { return idleMs; }
};

} // namespace

using namespace tarnwell::platform;

class IdleSourcesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void xScreenSaverFollowsTheInput()
    {
        QVERIFY(qEnvironmentVariableIsSet("DISPLAY"));
        const auto idle = IdleTimeSources::xScreenSaver();
        QVERIFY2(idle, "the X server has no XScreenSaver extension");
        QVERIFY(QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("mousemove"), QStringLiteral("10"),
                                                              QStringLiteral("10")}) == 0);
        const qint64 first = idle().value_or(-1);
        QVERIFY(first >= 0 && first <= 1);
        QTest::qWait(2100);
        const qint64 later = idle().value_or(-1);
        QVERIFY2(later >= first + 2, qPrintable(QString::number(later)));
        QVERIFY(QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("mousemove"), QStringLiteral("200"),
                                                              QStringLiteral("120")}) == 0);
        QTRY_VERIFY(idle().value_or(-1) < later);
    }

    void theFirstSourceThatAnswersWins()
    {
        // Nothing on the bus answers: X it is.
        QVERIFY(!IdleTimeSources::mutter(QDBusConnection::sessionBus()));
        QVERIFY(!IdleTimeSources::screenSaver(QDBusConnection::sessionBus()));
        QVERIFY(IdleTimeSources::find());

        QThread thread;
        thread.start();
        FakeMutterIdleMonitor mutter;
        mutter.moveToThread(&thread);
        mutter.idleMs = 61500;
        QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("mutter"));
        QVERIFY(bus.registerObject(QStringLiteral("/org/gnome/Mutter/IdleMonitor/Core"), &mutter,
                                   QDBusConnection::ExportAllSlots));
        QVERIFY(bus.registerService(QStringLiteral("org.gnome.Mutter.IdleMonitor")));
        QTest::ignoreMessage(QtInfoMsg, "Idle time from org.gnome.Mutter.IdleMonitor");
        const auto idle = IdleTimeSources::find();
        QVERIFY(idle);
        QCOMPARE(idle(), std::optional<qint64>(61));
        mutter.idleMs = 1000;
        QCOMPARE(idle(), std::optional<qint64>(1));
        // The desktop's monitor goes away: the reading says so instead of a stale figure.
        bus.unregisterService(QStringLiteral("org.gnome.Mutter.IdleMonitor"));
        QVERIFY(!idle());
        bus.unregisterObject(QStringLiteral("/org/gnome/Mutter/IdleMonitor/Core"));
        thread.quit();
        thread.wait();
    }
};

QTEST_GUILESS_MAIN(IdleSourcesTest)
#include "tst_idle_sources.moc"
