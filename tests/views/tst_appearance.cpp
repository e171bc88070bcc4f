// Following the desktop: the settings portal's answers (a stand-in portal on
// the test's private bus) reach the theme as the light/dark choice, the
// accent colour, reduced motion and the interface font, and follow
// SettingChanged. Whatever accent the desktop names, the palette made from
// it keeps text at 4.5:1 and the focus ring at 3:1.
#include "platform/AppearancePortal.h"
#include "views/ThemeController.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

using namespace tarnwell;
using platform::AppearancePortal;
using Settings = QMap<QString, QVariantMap>;
Q_DECLARE_METATYPE(Settings)

namespace {

QVariant rgb(double r, double g, double b)
{
    QDBusArgument argument;
    argument.beginStructure();
    argument << r << g << b;
    argument.endStructure();
    return QVariant::fromValue(argument);
}

} // namespace

// org.freedesktop.portal.Settings with fixed answers. It lives on its own
// thread and connection, so that the blocking read of the code under test is
// answered.
class FakePortal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")
public:
    Settings settings;

public Q_SLOTS:
    Settings ReadAll(const QStringList &groups)
    {
        Settings out;
        for (const QString &group : groups)
            if (settings.contains(group))
                out.insert(group, settings.value(group));
        return out;
    }
    void change(const QString &group, const QString &key, const QVariant &value)
    {
        QDBusMessage signal = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/portal/desktop"),
                                                         QStringLiteral("org.freedesktop.portal.Settings"),
                                                         QStringLiteral("SettingChanged"));
        signal << group << key << QVariant::fromValue(QDBusVariant(value));
        QDBusConnection(QStringLiteral("portal")).send(signal);
    }
};

class AppearanceTest : public QObject
{
    Q_OBJECT

    QThread m_thread;
    FakePortal *m_portal = nullptr;
    // The program's side (the default session connection holds its signals
    // back until an event loop runs, which a test has not).
    QDBusConnection m_app = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("app"));

    void serve(const Settings &settings)
    {
        m_portal = new FakePortal;
        m_portal->settings = settings;
        m_portal->moveToThread(&m_thread);
        QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("portal"));
        QVERIFY(bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), m_portal,
                                   QDBusConnection::ExportAllSlots));
        QVERIFY(bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
    }
    void stop()
    {
        QDBusConnection bus(QStringLiteral("portal"));
        bus.unregisterService(QStringLiteral("org.freedesktop.portal.Desktop"));
        bus.unregisterObject(QStringLiteral("/org/freedesktop/portal/desktop"));
        QMetaObject::invokeMethod(m_portal, &QObject::deleteLater);
        m_portal = nullptr;
        QDBusConnection::disconnectFromBus(QStringLiteral("portal"));
    }
    void change(const QString &group, const QString &key, const QVariant &value)
    {
        QVERIFY(QMetaObject::invokeMethod(m_portal, "change", Q_ARG(QString, group), Q_ARG(QString, key),
                                          Q_ARG(QVariant, value)));
    }

private Q_SLOTS:
    void initTestCase()
    {
        qDBusRegisterMetaType<Settings>();
        QVERIFY(m_app.isConnected());
        m_thread.start();
    }
    void cleanup()
    {
        if (m_portal)
            stop();
    }
    void cleanupTestCase()
    {
        m_thread.quit();
        m_thread.wait();
    }

    void withoutAPortalNothingIsImposed()
    {
        AppearancePortal portal(m_app);
        QCOMPARE(portal.scheme(), AppearancePortal::Scheme::noPreference);
        QVERIFY(!portal.accent());
        QVERIFY(!portal.reducedMotion());
        QVERIFY(!portal.font());
    }

    void gnomeAnswersReachTheTheme()
    {
        serve({{QStringLiteral("org.freedesktop.appearance"),
                {{QStringLiteral("color-scheme"), 1u}, {QStringLiteral("accent-color"), rgb(0.96, 0.76, 0.07)}}},
               {QStringLiteral("org.gnome.desktop.interface"),
                {{QStringLiteral("enable-animations"), false},
                 {QStringLiteral("font-name"), QStringLiteral("DejaVu Serif Condensed 13")}}}});
        AppearancePortal portal(m_app);
        QVERIFY(portal.prefersDark());
        QCOMPARE(portal.accent()->name(), QStringLiteral("#f5c212"));
        QVERIFY(portal.reducedMotion());
        QCOMPARE(portal.font()->family(), QStringLiteral("DejaVu Serif Condensed"));
        QCOMPARE(portal.font()->pointSizeF(), 13.0);

        ThemeController theme;
        theme.setDesktopPrefersDark(portal.prefersDark());
        theme.setDesktopAccent(portal.accent());
        theme.setReducedMotion(portal.reducedMotion());
        theme.setFont(*portal.font());
        QVERIFY(theme.dark());
        QCOMPARE(theme.motionMedium(), 0);
        QCOMPARE(theme.bodySize(), 17);
        QVERIFY(theme.titleSize() > theme.bodySize() && theme.captionSize() < theme.bodySize());
        QCOMPARE(theme.fontFamily(), QStringLiteral("DejaVu Serif Condensed"));

        // The standard key wins over GNOME's; an accent out of range is none.
        QSignalSpy changed(&portal, &AppearancePortal::appearanceChanged);
        QSignalSpy scheme(&portal, &AppearancePortal::schemeChanged);
        change(QStringLiteral("org.freedesktop.appearance"), QStringLiteral("reduced-motion"), 0u);
        QTRY_COMPARE(changed.size(), 1);
        QVERIFY(!portal.reducedMotion());
        change(QStringLiteral("org.freedesktop.appearance"), QStringLiteral("accent-color"), rgb(2, 0, 0));
        QTRY_COMPARE(changed.size(), 2);
        QVERIFY(!portal.accent());
        change(QStringLiteral("org.freedesktop.appearance"), QStringLiteral("color-scheme"), 2u);
        QTRY_COMPARE(scheme.size(), 1);
        QCOMPARE(portal.scheme(), AppearancePortal::Scheme::light);
        QCOMPARE(changed.size(), 2);
        stop();
    }

    void kdeAnswersReachTheTheme()
    {
        serve({{QStringLiteral("org.kde.kdeglobals.KDE"), {{QStringLiteral("AnimationDurationFactor"), 0.0}}},
               {QStringLiteral("org.kde.kdeglobals.General"),
                {{QStringLiteral("font"), QStringLiteral("Noto Sans,10,-1,5,50,0,0,0,0,0")}}}});
        AppearancePortal portal(m_app);
        QVERIFY(portal.reducedMotion());
        QCOMPARE(portal.font()->family(), QStringLiteral("Noto Sans"));
        QCOMPARE(portal.font()->pointSize(), 10);
        QVERIFY(!portal.accent());
        stop();
    }

    void everyAccentKeepsItsContrast_data()
    {
        QTest::addColumn<QColor>("accent");
        for (const char *c : {"#f5c211", "#ffffff", "#000000", "#3584e4", "#e01b24", "#99c1f1", "#26a269", "#9141ac"})
            QTest::newRow(c) << QColor(QLatin1String(c));
        QTest::newRow("our own") << QColor();
    }
    void everyAccentKeepsItsContrast()
    {
        QFETCH(QColor, accent);
        for (bool dark : {false, true}) {
            ThemeController t;
            t.setForced(dark ? ThemeController::Forced::dark : ThemeController::Forced::light);
            t.setDesktopAccent(accent.isValid() ? std::optional(accent) : std::nullopt);
            const QList<QColor> backgrounds{t.window(), t.surface(), t.hover(), t.pressed(), t.accentSoft()};
            const auto check = [&](const QColor &fg, const QColor &bg, double need, const char *what) {
                const double c = ThemeController::contrast(fg, bg);
                QVERIFY2(c >= need,
                         qPrintable(QStringLiteral("%1 %2: %3 on %4 is %5:1")
                                        .arg(dark ? QStringLiteral("dark") : QStringLiteral("light"),
                                             QLatin1String(what), fg.name(), bg.name())
                                        .arg(c, 0, 'f', 2)));
            };
            for (const QColor &fill : {t.accent(), t.accentHover(), t.accentPressed()})
                check(t.onAccent(), fill, 4.5, "text on the accent");
            for (const QColor &bg : backgrounds) {
                check(t.accentText(), bg, 4.5, "accent text");
                check(t.text(), bg, 4.5, "text");
                check(t.focusRing(), bg, 3, "focus ring");
            }
            for (const QColor &bg : {t.window(), t.surface(), t.hover(), t.pressed(), t.accentSoft()})
                check(t.secondaryText(), bg, 4.5, "secondary text");
            for (const QColor &bg : {t.window(), t.surface(), t.hover(), t.accentSoft(), t.dangerSoft()})
                check(t.dangerText(), bg, 4.5, "danger text");
            check(t.onDanger(), t.danger(), 4.5, "text on danger");
            check(t.onToast(), t.toast(), 4.5, "toast text");
        }
    }
};

QTEST_MAIN(AppearanceTest)
#include "tst_appearance.moc"
