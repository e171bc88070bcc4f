// The settings row, launch at login, carried-over defaults and link routing.
#include "integration/AppURLRouter.h"
#include "kit/LoginItemService.h"
#include "kit/UserDefaults.h"
#include "persistence/PersistenceController.h"
#include "settings/AppSettingsStore.h"

#include <QFile>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

using namespace tarnwell;

class SettingsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void freshRowHoldsTheDefaultsAndStaysSingle()
    {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("settings.sqlite"));
        {
            PersistenceController store(file);
            AppSettingsStore settings(store);
            QVERIFY(!settings.row()->id().isNull());
            // The defaults no other suite acts on (the chime, hot keys,
            // switches and workday end are met in theirs).
            QCOMPARE(settings.idleThresholdMinutes(), 10);
            QCOMPARE(settings.minimalIdleMode(), false);
            QCOMPARE(settings.preEndWarningMinutes(), 0);
            QCOMPARE(settings.overtimePresetMinutes(), 10);
            QCOMPARE(settings.skipBreakPresetMinutes(), 5);
            QCOMPARE(settings.menuBarMaxChars(), 16);
            QCOMPARE(settings.sortMode(), QStringLiteral("manual"));
            QCOMPARE(settings.row()->theme(), std::optional<QString>(QStringLiteral("auto")));
            QCOMPARE(settings.language(), TarnwellLanguageOption::system);
            QVERIFY(!store.viewContext().hasChanges());
            settings.setMenuBarMaxChars(20);
        }
        for (int start = 0; start < 2; ++start) {
            PersistenceController store(file);
            AppSettingsStore settings(store);
            QCOMPARE(settings.menuBarMaxChars(), 20);
            QSqlQuery count(store.viewContext().database());
            QVERIFY(count.exec(QStringLiteral("SELECT count(*) FROM app_settings")) && count.next());
            QCOMPARE(count.value(0).toInt(), 1);
        }
    }

    void workdayEndIsClampedAndOffIsMinusOne_data()
    {
        QTest::addColumn<qint64>("written"); // -100 stands for "none"
        QTest::addColumn<int>("stored");
        QTest::addColumn<int>("read"); // -1 = none
        QTest::newRow("none") << qint64(-100) << -1 << -1;
        QTest::newRow("18:00") << qint64(1080) << 1080 << 1080;
        QTest::newRow("midnight") << qint64(0) << 0 << 0;
        QTest::newRow("past the day") << qint64(1500) << 1439 << 1439;
        QTest::newRow("negative") << qint64(-5) << 0 << 0;
    }
    void workdayEndIsClampedAndOffIsMinusOne()
    {
        QFETCH(qint64, written);
        QFETCH(int, stored);
        QFETCH(int, read);
        PersistenceController store(true);
        AppSettingsStore settings(store);
        settings.setWorkdayEndMinutes(written == -100 ? std::nullopt : std::optional<qint64>(written));
        QCOMPARE(settings.row()->workdayEndMinutes(), stored);
        QCOMPARE(settings.workdayEndMinutes(), read < 0 ? std::nullopt : std::optional<int>(read));
        // Values stored by anyone outside 0...1439 read as no workday end.
        settings.row()->setWorkdayEndMinutes(1440);
        QCOMPARE(settings.workdayEndMinutes(), std::nullopt);
    }

    void enumeratedSettingsKeepTheirStoredTexts()
    {
        PersistenceController store(true);
        AppSettingsStore settings(store);
        settings.row()->setTheme(QStringLiteral("system"));
        QCOMPARE(settings.theme(), TarnwellAppearance::system);
        settings.row()->setTheme(std::nullopt);
        QCOMPARE(settings.theme(), TarnwellAppearance::system);
        settings.setTheme(TarnwellAppearance::system);
        QCOMPARE(settings.row()->theme(), std::optional<QString>(QStringLiteral("auto")));
        settings.setTheme(TarnwellAppearance::dark);
        QCOMPARE(settings.row()->theme(), std::optional<QString>(QStringLiteral("dark")));
        settings.setLanguage(TarnwellLanguageOption::french);
        QCOMPARE(settings.row()->language(), QStringLiteral("fr"));
        settings.row()->setLanguage(QStringLiteral("tr"));
        QCOMPARE(settings.language(), TarnwellLanguageOption::turkish);
        settings.row()->setLanguage(QStringLiteral("pt"));
        QCOMPARE(settings.language(), TarnwellLanguageOption::system);
    }

    void observersHearBeforeTheChangeAndTheValueIsSaved()
    {
        QTemporaryDir dir;
        PersistenceController store(dir.filePath(QStringLiteral("observe.sqlite")));
        AppSettingsStore settings(store);
        QList<int> seenBefore;
        const auto connection =
            connect(&settings, &AppSettingsStore::settingWillChange, this, [&](const QString &name) {
                QCOMPARE(name, QStringLiteral("preEndWarningMinutes"));
                seenBefore << settings.preEndWarningMinutes();
            });
        settings.setPreEndWarningMinutes(5);
        settings.setPreEndWarningMinutes(3);
        QCOMPARE(seenBefore, (QList<int>{0, 5}));
        QVERIFY(!store.viewContext().hasChanges());
        disconnect(connection);
    }

    void autostartEntryFollowsTheSetting()
    {
        PersistenceController store(true);
        AppSettingsStore settings(store);
        settings.setLoginItemEnabled(true);
        LoginItemService service(settings, QStringLiteral("/opt/my apps/tarnwell"));
        QFile::remove(LoginItemService::autostartPath());
        service.start();
        QVERIFY(service.isRegistered());
        QFile entry(LoginItemService::autostartPath());
        QVERIFY(entry.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(entry.readAll());
        QVERIFY(text.startsWith(QStringLiteral("[Desktop Entry]\n")));
        QVERIFY(text.contains(QStringLiteral("Exec=\"/opt/my apps/tarnwell\"\n")));
        settings.setLoginItemEnabled(false);
        QVERIFY(!service.isRegistered());
        settings.setLoginItemEnabled(true);
        QVERIFY(service.isRegistered());
        settings.setLoginItemEnabled(false);
    }

    void legacyDefaultsAreCarriedOverOnce()
    {
        {
            QSettings legacy(UserDefaults::legacyPath(), QSettings::IniFormat);
            legacy.setValue(QStringLiteral("Tarnwell.rollover.dismissedDay"), QStringLiteral("20250"));
            legacy.setValue(QStringLiteral("kept"), QStringLiteral("legacy"));
        }
        auto current = UserDefaults::open();
        current->setValue(QStringLiteral("kept"), QStringLiteral("current"));
        QCOMPARE(UserDefaults::migrateLegacyDefaults(*current), 1);
        QCOMPARE(current->value(QStringLiteral("Tarnwell.rollover.dismissedDay")).toString(), QStringLiteral("20250"));
        QCOMPARE(current->value(QStringLiteral("kept")).toString(), QStringLiteral("current"));
        {
            QSettings legacy(UserDefaults::legacyPath(), QSettings::IniFormat);
            legacy.setValue(QStringLiteral("later"), 1);
        }
        QCOMPARE(UserDefaults::migrateLegacyDefaults(*current), 0);
        QVERIFY(!current->contains(QStringLiteral("later")));
    }

    void linksRouteByHostAndWaitForTheInterface_data()
    {
        QTest::addColumn<QString>("link");
        QTest::addColumn<int>("route"); // -1 none, 0 popover, 1 quick add
        QTest::newRow("quick add") << QStringLiteral("tarnwell://quickadd") << 1;
        QTest::newRow("upper case") << QStringLiteral("TARNWELL://QUICKADD") << 1;
        QTest::newRow("quick add with path and query") << QStringLiteral("tarnwell://quickadd/x?title=y#z") << 1;
        QTest::newRow("no host, quickadd as path") << QStringLiteral("tarnwell:quickadd") << 0;
        QTest::newRow("other host") << QStringLiteral("tarnwell://today") << 0;
        QTest::newRow("no host") << QStringLiteral("tarnwell:") << 0;
        QTest::newRow("other scheme") << QStringLiteral("https://quickadd") << -1;
        QTest::newRow("no scheme") << QStringLiteral("quickadd") << -1;
    }
    void linksRouteByHostAndWaitForTheInterface()
    {
        QFETCH(QString, link);
        QFETCH(int, route);
        int popovers = 0, quickAdds = 0;
        AppURLRouter router([&] { ++popovers; }, [&] { ++quickAdds; });
        if (route < 0)
            QTest::ignoreMessage(QtCriticalMsg,
                                 qPrintable(QStringLiteral("Ignored a link Tarnwell does not own: ") + link));
        router.handleURL(link);
        QCOMPARE(popovers + quickAdds, 0); // waits for the interface
        router.setInterfaceReady();
        QCOMPARE(popovers, route == 0 ? 1 : 0);
        QCOMPARE(quickAdds, route == 1 ? 1 : 0);
        router.handleURL(link);
        QCOMPARE(popovers + quickAdds, route < 0 ? 0 : 2);
    }

    void settingsAndReviewLinksNameTheirWindowAndTab()
    {
        int popovers = 0;
        QStringList opened;
        AppURLRouter router([&] { ++popovers; }, [] {});
        router.setOpenWindow([&](AppURLRoute route, const QString &section) {
            opened << (route == AppURLRoute::review ? QStringLiteral("review") : QStringLiteral("settings:") + section);
        });
        router.handleURL(QStringLiteral("tarnwell://settings/Hotkeys/more"));
        router.handleURL(QStringLiteral("tarnwell://review"));
        QVERIFY(opened.isEmpty()); // waits for the interface, section and all
        router.setInterfaceReady();
        router.handleURL(QStringLiteral("tarnwell://settings"));
        QCOMPARE(
            opened,
            (QStringList{QStringLiteral("settings:hotkeys"), QStringLiteral("review"), QStringLiteral("settings:")}));
        QCOMPARE(popovers, 0);
    }
};

QTEST_GUILESS_MAIN(SettingsTest)
#include "tst_settings.moc"
