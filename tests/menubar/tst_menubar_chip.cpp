// The status icon: it changes with the state, the running flag and the
// progress step, and only with them.
#include "menubar/MenuBarChipRenderer.h"

#include <QDir>
#include <QGuiApplication>
#include <QTest>

using namespace tarnwell;
using State = MenuBarPresentation::State;

class MenuBarChipTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void progressIsQuantisedSoTheIconRarelyChanges()
    {
        MenuBarPresentation p;
        p.state = State::tracking;
        p.progress = 0.100;
        const auto a = MenuBarChipRenderer::keyFor(p, false);
        p.progress = 0.101; // one more second of a 25-minute plan
        QCOMPARE(MenuBarChipRenderer::keyFor(p, false), a);
        p.progress = 0.125;
        QVERIFY(!(MenuBarChipRenderer::keyFor(p, false) == a));
        p.progress.reset();
        QCOMPARE(MenuBarChipRenderer::keyFor(p, false).progressStep, -1);
    }

    void iconsDifferByStateRunningAndTheme()
    {
        QList<QImage> seen;
        const QString out = qEnvironmentVariable("TARNWELL_TEST_ROOT") + QStringLiteral("/artifacts");
        for (bool dark : {false, true}) {
            for (State state : {State::idle, State::dayDone, State::noDuration, State::tracking, State::overdue}) {
                for (bool running : {false, true}) {
                    MenuBarChipRenderer::Key key{state, state == State::tracking ? 20 : -1, running, dark};
                    const auto images = MenuBarChipRenderer::renderAllSizes(key);
                    QCOMPARE(images.size(), 2);
                    QCOMPARE(images[0].size(), QSize(22, 22));
                    QCOMPARE(images[1].size(), QSize(44, 44));
                    QCOMPARE(images[0].format(), QImage::Format_ARGB32);
                    if (state == State::idle && running)
                        continue; // nothing in hand never runs
                    QVERIFY2(!seen.contains(images[0]),
                             qPrintable(QStringLiteral("state %1 running %2 dark %3 looks like another")
                                            .arg(int(state))
                                            .arg(running)
                                            .arg(dark)));
                    seen << images[0];
                    images[1].save(
                        QDir(out).filePath(QStringLiteral("chip-%1-%2-%3.png").arg(int(state)).arg(running).arg(dark)));
                }
            }
        }
    }

    void overdueRingIsTheOverdueColourAllAround()
    {
        const auto palette = MenuBarChipPalette::light();
        const QImage image = MenuBarChipRenderer::render({State::overdue, 48, true, false}, 44);
        // Top, right, bottom and left of the ring.
        for (const QPoint &at : {QPoint(22, 5), QPoint(38, 22), QPoint(22, 38), QPoint(5, 22)}) {
            const QColor c = image.pixelColor(at);
            QVERIFY2(qAbs(c.red() - palette.overdue.red()) < 40 && c.alpha() > 150,
                     qPrintable(QStringLiteral("%1,%2 is %3").arg(at.x()).arg(at.y()).arg(c.name(QColor::HexArgb))));
        }
    }
};

QTEST_MAIN(MenuBarChipTest)
#include "tst_menubar_chip.moc"
