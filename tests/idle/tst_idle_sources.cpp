// The idle time from the XScreenSaver extension of a real X server (Xvfb):
// it grows while nothing happens and a pointer move resets it.
#include "platform/IdleTimeSources.h"

#include <QProcess>
#include <QTest>

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
        QVERIFY(QProcess::execute(QStringLiteral("xdotool"),
                                  {QStringLiteral("mousemove"), QStringLiteral("10"), QStringLiteral("10")}) == 0);
        const qint64 first = idle().value_or(-1);
        QVERIFY(first >= 0 && first <= 1);
        QTest::qWait(2100);
        const qint64 later = idle().value_or(-1);
        QVERIFY2(later >= first + 2, qPrintable(QString::number(later)));
        QVERIFY(QProcess::execute(QStringLiteral("xdotool"),
                                  {QStringLiteral("mousemove"), QStringLiteral("200"), QStringLiteral("120")}) == 0);
        QTRY_VERIFY(idle().value_or(-1) < later);
    }
};

QTEST_GUILESS_MAIN(IdleSourcesTest)
#include "tst_idle_sources.moc"
