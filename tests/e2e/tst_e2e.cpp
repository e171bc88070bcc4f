// The whole program as a person meets it, on a private bus, once under Xvfb
// and once (tst_e2e.wayland) in a headless Wayland session: a stand-in panel
// registers the status item; a click opens the popover; three tasks are typed
// into the add field; the timer is started and the task in hand completed from
// the status item's menu; a tarnwell://quickadd link opens quick add, where a
// fourth task is typed. The store and the label are checked at each step. The
// popover is captured in light and dark, English and German (saved as test
// artefacts, "wayland-" before the name in the Wayland run): each capture
// shows its palette's colours, and the German one reads German to a screen
// reader. On Wayland, where the compositor places windows, the popover and
// quick add must come up as small windows, not tiled over the whole screen.
//
// Like a person, the test waits for what it sees rather than for a fixed time
// (it reads the windows as a screen reader does): the field focused and empty
// before typing, the typed line in the field before Return, the row listed and
// the field empty again after it.
#include "kit/Translations.h"
#include "platform/DBusMenu.h"
#include "platform/StatusNotifierItem.h"
#include "support/AppProcess.h"
#include "support/AtSpiTree.h"
#include "support/Desktop.h"
#include "support/Screen.h"
#include "views/ThemeController.h"

#include <QDir>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace tarnwell;
using namespace tarnwell::platform;

namespace {

// Long enough for a sanitizer build on a busy two-core machine.
constexpr int patience = 30000;

// The program's visible window as the screen shows it.
QImage captureWindow(qint64 pid)
{
    const QRect window = screen::windowOf(pid);
    return window.isValid() ? screen::grab(window) : QImage();
}

// On Wayland the compositor places the windows: they must still come up at
// their own small size, not stretched over the screen as tiled windows are.
QString notSmall(const QRect &window)
{
    const QSize whole = screen::size();
    if (!window.isValid())
        return QStringLiteral("no window on screen");
    if (window.width() > 2 * whole.width() / 5 || window.height() >= whole.height())
        return QStringLiteral("the window fills %1x%2 of a %3x%4 screen")
            .arg(window.width())
            .arg(window.height())
            .arg(whole.width())
            .arg(whole.height());
    return {};
}

QString artifactsDir()
{
    QString dir = qEnvironmentVariable("TARNWELL_ARTIFACTS", QDir::currentPath() + QStringLiteral("/test-artifacts"));
    QDir().mkpath(dir);
    return dir;
}

// The name a picture is saved under: the Wayland run's pictures beside the
// X11 run's.
QString artifact(const QString &name)
{
    return artifactsDir() + QLatin1Char('/') + (screen::isWayland() ? QStringLiteral("wayland-") : QString()) + name;
}

bool near(QRgb pixel, const QColor &color, int tolerance = 2)
{
    return qAbs(qRed(pixel) - color.red()) <= tolerance && qAbs(qGreen(pixel) - color.green()) <= tolerance &&
        qAbs(qBlue(pixel) - color.blue()) <= tolerance;
}

// Empty when the capture is drawn in the palette: its most common colour is
// the palette's window colour, and text is drawn in the palette's text colour;
// otherwise what differs.
QString paletteMismatch(const QImage &image, bool dark)
{
    if (image.isNull())
        return QStringLiteral("no popover on screen");
    ThemeController theme;
    theme.setForced(dark ? ThemeController::Forced::dark : ThemeController::Forced::light);
    QHash<QRgb, int> histogram;
    int textPixels = 0;
    for (int y = 0; y < image.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            ++histogram[line[x] | 0xff000000u];
            textPixels += near(line[x], theme.text()) ? 1 : 0;
        }
    }
    QRgb background = 0;
    for (auto it = histogram.cbegin(); it != histogram.cend(); ++it)
        if (it.value() > histogram.value(background))
            background = it.key();
    QString why;
    if (!near(background, theme.window()))
        why += QStringLiteral("background %1, the palette's window is %2; ")
                   .arg(QColor(background).name(), theme.window().name());
    if (textPixels < 40)
        why += QStringLiteral("%1 pixels in the palette's text colour %2").arg(textPixels).arg(theme.text().name());
    return why;
}

// Waits until the popover of the program `pid` shows the palette, then saves it.
void capture(const QString &name, bool dark, qint64 pid)
{
    QImage image;
    QTRY_VERIFY2_WITH_TIMEOUT(paletteMismatch(image = captureWindow(pid), dark).isEmpty(),
                              qPrintable(name + QStringLiteral(": ") + paletteMismatch(image, dark)), patience);
    QVERIFY(image.save(artifact(name)));
}

} // namespace

class EndToEndTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_home;
    AtSpiTree m_reader;
    QString storePath() const { return m_home.path() + QStringLiteral("/data/tarnwell/Tarnwell.sqlite"); }

private Q_SLOTS:
    void initTestCase()
    {
        const QStringList tools = screen::isWayland() ? QStringList{QStringLiteral("swaymsg"), QStringLiteral("grim")}
                                                      : QStringList{QStringLiteral("xdotool")};
        for (const QString &tool : tools)
            QVERIFY2(!QStandardPaths::findExecutable(tool).isEmpty(), qPrintable(tool + QStringLiteral(" is missing")));
        if (screen::isWayland())
            QVERIFY2(keyboard::waylandKeyboardProcess()->state() == QProcess::Running, "no Wayland keyboard");
        QVERIFY2(m_reader.isConnected(), "no accessibility bus (run under isolate.sh --a11y)");
        registerStatusNotifierTypes();
        registerDBusMenuTypes();
    }

    void addStartAndCompleteLikeAPerson()
    {
        Panel panel;
        AppProcess app(m_home.path());
        QVERIFY2(app.waitFor(QStringLiteral("Interface installed"), patience), qPrintable(app.log()));
        QTRY_VERIFY_WITH_TIMEOUT(panel.registrations() > 0, patience);
        QCOMPARE(panel.label(), QStringLiteral("What's next?"));

        panel.activate(1500, 0);
        QVERIFY2(app.waitFor(QStringLiteral("Popover shown"), patience), qPrintable(app.log()));
        if (screen::isWayland()) {
            QRect popover;
            QTRY_VERIFY2_WITH_TIMEOUT(notSmall(popover = screen::windowOf(app.pid())).isEmpty(),
                                      qPrintable(notSmall(popover)), patience);
            QVERIFY(screen::grab().save(artifact(QStringLiteral("desktop-popover.png"))));
        }

        StoreReader store(storePath());
        const QList<std::pair<QString, QString>> lines{
            {QStringLiteral("Plan the sprint"), QStringLiteral("Plan the sprint")},
            {QStringLiteral("Call Alex ~ 15m"), QStringLiteral("Call Alex")},
            {QStringLiteral("Write report ~ 45m !"), QStringLiteral("Write report")}};
        for (const auto &[line, title] : lines) {
            const QString missed = keyboard::enterLine(m_reader, app.pid(), line, title, patience);
            if (!missed.isEmpty())
                qWarning().noquote() << missed << "\nstore:" << store.tasks().join(u',');
            QVERIFY(missed.isEmpty());
        }
        QCOMPARE(store.tasks(),
                 (QStringList{QStringLiteral("Write report|45|1|0|0"), QStringLiteral("Plan the sprint|-|0|0|0"),
                              QStringLiteral("Call Alex|15|0|0|0")}));
        QTRY_COMPARE_WITH_TIMEOUT(panel.label(), QStringLiteral("Write report  45m"), patience);

        panel.clickMenu(Panel::menuTimer);
        QTRY_COMPARE_WITH_TIMEOUT(store.tasks().first(), QStringLiteral("Write report|45|1|0|1"), patience);
        capture(QStringLiteral("popover-light-en.png"), false, app.pid());

        panel.clickMenu(Panel::menuComplete);
        QTRY_COMPARE_WITH_TIMEOUT(store.tasks().last(), QStringLiteral("Write report|45|1|1|0"), patience);
        QTRY_COMPARE_WITH_TIMEOUT(panel.label(), QStringLiteral("Plan the sprint"), patience);
        capture(QStringLiteral("next-up-light-en.png"), false, app.pid());

        // A link from anywhere: a second `tarnwell` hands it to this one.
        AppProcess link(m_home.path(), {QStringLiteral("tarnwell://quickadd")});
        QVERIFY2(link.finish(patience) && link.process().exitCode() == 0, qPrintable(link.log()));
        QVERIFY2(app.waitFor(QStringLiteral("Quick add shown"), patience), qPrintable(app.log()));
        QRect quickAdd;
        QTRY_VERIFY2_WITH_TIMEOUT((quickAdd = screen::windowOf(app.pid())).isValid(), "quick add is not on screen",
                                  patience);
        if (screen::isWayland())
            QTRY_VERIFY2_WITH_TIMEOUT(notSmall(quickAdd = screen::windowOf(app.pid())).isEmpty(),
                                      qPrintable(notSmall(quickAdd)), patience);
        const QString line = QStringLiteral("Book the train ~ 10m");
        QVERIFY2(
            keyboard::waitUntil([&] { return keyboard::focusedFieldHolds(m_reader, app.pid(), QString()); }, patience),
            qPrintable(m_reader.application(app.pid()).dump()));
        QVERIFY(keyboard::type(line));
        QVERIFY2(keyboard::waitUntil([&] { return keyboard::focusedFieldHolds(m_reader, app.pid(), line); }, patience),
                 qPrintable(m_reader.application(app.pid()).dump()));
        QVERIFY(
            screen::grab(screen::windowOf(app.pid())).save(artifact(QStringLiteral("quick-add-typed-light-en.png"))));
        QVERIFY(keyboard::key(QStringLiteral("Return")));
        QTRY_VERIFY_WITH_TIMEOUT(store.tasks().contains(QStringLiteral("Book the train|10|0|0|0")), patience);
        // Adding closes the window.
        QTRY_VERIFY_WITH_TIMEOUT(!screen::windowOf(app.pid()).isValid(), patience);

        app.terminate();
        QVERIFY(app.finish(patience));
        if (app.process().exitCode() != 0)
            qWarning().noquote() << app.log();
        QCOMPARE(app.process().exitCode(), 0);
    }

    void popoverInEveryThemeAndLanguage_data()
    {
        QTest::addColumn<QString>("theme");
        QTest::addColumn<QString>("language");
        QTest::newRow("dark, English") << QStringLiteral("dark") << QStringLiteral("en");
        QTest::newRow("light, German") << QStringLiteral("light") << QStringLiteral("de");
        QTest::newRow("dark, German") << QStringLiteral("dark") << QStringLiteral("de");
    }
    void popoverInEveryThemeAndLanguage()
    {
        QFETCH(QString, theme);
        QFETCH(QString, language);
        QVERIFY(setSettings(storePath(), {{QStringLiteral("theme"), theme}, {QStringLiteral("language"), language}}));
        Panel panel;
        AppProcess app(m_home.path());
        QVERIFY2(app.waitFor(QStringLiteral("Interface installed"), patience), qPrintable(app.log()));
        QTRY_VERIFY_WITH_TIMEOUT(panel.registrations() > 0, patience);
        panel.activate(1500, 0);
        QVERIFY2(app.waitFor(QStringLiteral("Popover shown"), patience), qPrintable(app.log()));
        QVERIFY(
            keyboard::waitUntil([&] { return keyboard::focusedFieldHolds(m_reader, app.pid(), QString()); }, patience));
        panel.clickMenu(Panel::menuTimer);
        capture(QStringLiteral("popover-%1-%2.png").arg(theme, language), theme == QLatin1String("dark"), app.pid());

        // The texts a screen reader reads out are those of the chosen language.
        Translations tables;
        QVERIFY(tables.install(QStringLiteral("en")));
        const QStringList ids{QStringLiteral("popover.window.title"), QStringLiteral("popover.day.previous"),
                              QStringLiteral("popover.card.done"), QStringLiteral("popover.add.placeholder")};
        QStringList english;
        for (const QString &id : ids)
            english << qtTrId(id.toLatin1().constData());
        QVERIFY(tables.install(language));
        const QStringList names = m_reader.application(app.pid()).shownNames();
        for (qsizetype i = 0; i < ids.size(); ++i) {
            const QString expected = qtTrId(ids[i].toLatin1().constData());
            QVERIFY2(names.contains(expected), qPrintable(expected + QStringLiteral(" not among ") + names.join(u'|')));
            if (language != QLatin1String("en"))
                QVERIFY2(!names.contains(english[i]), qPrintable(english[i]));
        }
        app.terminate();
        QVERIFY(app.finish(patience));
    }
};

QTEST_MAIN(EndToEndTest)
#include "tst_e2e.moc"
