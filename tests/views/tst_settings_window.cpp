// The settings and review windows on a real display: every tab loads
// without a QML warning, a change made with the mouse or the keyboard lands
// in the store and reaches an observer (the autostart entry, the popover's
// footer, the language of the open window); hot keys are recorded from key
// presses and a conflict is refused with its message. Pictures of every tab
// in Turkish, whose words run longest, go with the other window pictures.
#include "ViewsFixture.h"
#include "kit/LoginItemService.h"
#include "services/ReviewStatistics.h"
#include "views/ReviewModel.h"
#include "views/RoutinesModel.h"
#include "views/SettingsWindowController.h"
#include "views/ThemeController.h"
#include "views/UiEngine.h"

#include <QFile>
#include <QQuickItem>
#include <QQuickWindow>
#include <QRegularExpression>
#include <QTest>
#include <QtQml/QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(Tarnwell_ViewsPlugin)

namespace {

QQuickItem *item(QQuickWindow *window, const QString &name)
{
    return findItem(window->contentItem(), name);
}

struct Settings
{
    ViewsFixture f;
    ThemeController theme;
    UiEngine ui{theme};
    QTemporaryDir data;
    int reloads = 0;
    LoginItemService loginItems{f.settings, QStringLiteral("/usr/bin/tarnwell")};
    SettingsWindowController controller{{f.settings, f.sound, f.routines, ui, [] { return QString(); },
                                         [this]() -> std::optional<HotkeyConflict> {
                                             ++reloads;
                                             return std::nullopt;
                                         },
                                         [] { return DesktopFacts{}; }, QStringLiteral("1.2.3"), data.path()}};
    QmlWarnings warnings{ui};

    Settings()
    {
        loginItems.start();
        // What the composition root does when the language changes.
        QObject::connect(&f.settings, &AppSettingsStore::settingChanged, &ui, [this](const QString &setting) {
            if (setting != QLatin1String("language"))
                return;
            f.translations.install(Translations::resolve(storedText(f.settings.language())));
            ui.retranslate();
            controller.retranslate();
        });
    }
    QQuickWindow *window() const { return controller.window(); }
    void showTab(const QString &tab)
    {
        controller.show(tab);
        QVERIFY2(window(), qPrintable(warnings.text()));
        QQuickItem *page = item(window(), QStringLiteral("page-") + tab);
        QVERIFY(page);
        QTRY_VERIFY(page->isVisible());
    }
};

} // namespace

class SettingsWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void generalTabWritesTheStoreAndItsObserversAct()
    {
        Settings s;
        s.controller.show(QStringLiteral("general"));
        QQuickWindow *window = s.window();
        QVERIFY2(window, qPrintable(s.warnings.text()));
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QVERIFY(window->title().contains(QLatin1String("Settings")));

        // Launch at login: the switch, the setting, the autostart entry.
        QVERIFY(!QFile::exists(LoginItemService::autostartPath()));
        click(window, item(window, QStringLiteral("launchAtLogin")));
        QVERIFY(s.f.settings.loginItemEnabled());
        QVERIFY(QFile::exists(LoginItemService::autostartPath()));

        // The workday end: on at 17:00, then typed; the popover's footer follows.
        s.f.add(QStringLiteral("Long task"), 600);
        click(window, item(window, QStringLiteral("workdayEnd")));
        QCOMPARE(s.f.settings.workdayEndMinutes(), std::optional<int>(17 * 60));
        QQuickItem *time = item(window, QStringLiteral("workdayEndTime"));
        QTRY_VERIFY(time->isVisible());
        time->forceActiveFocus();
        time->setProperty("text", QStringLiteral("18.15"));
        QTest::keyClick(window, Qt::Key_Return);
        QCOMPARE(s.f.settings.workdayEndMinutes(), std::optional<int>(18 * 60 + 15));
        QTRY_VERIFY2(s.f.model.footerWorkdayEnd().contains(QRegularExpression(QStringLiteral("\\b(18|6):15"))),
                     qPrintable(s.f.model.footerWorkdayEnd()));
        time->setProperty("text", QStringLiteral("25:00"));
        QTest::keyClick(window, Qt::Key_Return);
        QVERIFY(item(window, QStringLiteral("workdayEndError"))->isVisible());
        QCOMPARE(s.f.settings.workdayEndMinutes(), std::optional<int>(18 * 60 + 15));

        // The idle threshold from the keyboard: Down moves to the next option.
        QQuickItem *idle = item(window, QStringLiteral("idleBox"));
        idle->forceActiveFocus();
        QTest::keyClick(window, Qt::Key_Down);
        QCOMPARE(s.f.settings.idleThresholdMinutes(), 15);

        // The language, chosen from the keyboard, retranslates the open window.
        QQuickItem *tab = item(window, QStringLiteral("tab-general"));
        QVERIFY(tab);
        QQuickItem *language = item(window, QStringLiteral("languageBox"));
        language->forceActiveFocus();
        for (int i = 0; i < 3; ++i) // system, English, Türkçe, Deutsch
            QTest::keyClick(window, Qt::Key_Down);
        QCOMPARE(storedText(s.f.settings.language()), QStringLiteral("de"));
        QTRY_COMPARE(window->title(), QStringLiteral("Tarnwell-Einstellungen"));
        QCOMPARE(item(window, QStringLiteral("page-general"))->property("heading").toString(),
                 QStringLiteral("Allgemein"));
        QVERIFY2(s.warnings.isEmpty(), qPrintable(s.warnings.text()));
        s.f.translations.install(QStringLiteral("en"));
    }

    void remindersAndRoutinesFromTheKeyboard()
    {
        Settings s;
        s.controller.show(QStringLiteral("general"));
        QQuickWindow *window = s.window();
        QVERIFY2(window, qPrintable(s.warnings.text()));
        QVERIFY(QTest::qWaitForWindowExposed(window));
        // The tab list has the keyboard: Down goes to Reminders.
        QTRY_VERIFY(item(window, QStringLiteral("settingsTabs"))->hasActiveFocus());
        item(window, QStringLiteral("editHistory"))->forceActiveFocus();
        QTest::keyClick(window, Qt::Key_Space);
        QVERIFY(s.f.settings.editHistoryEnabled());
        item(window, QStringLiteral("settingsTabs"))->forceActiveFocus();
        QTest::keyClick(window, Qt::Key_Down);
        QTRY_VERIFY(item(window, QStringLiteral("page-reminders"))->isVisible());
        QTest::keyClick(window, Qt::Key_Tab);
        QVERIFY(item(window, QStringLiteral("notifications"))->hasActiveFocus());
        QTest::keyClick(window, Qt::Key_Space);
        QVERIFY(!s.f.settings.notificationsEnabled());
        // The warning's own chime and the volume, from their menus, reach the sound service.
        item(window, QStringLiteral("warningChimeBox"))->forceActiveFocus();
        QTest::keyClick(window, Qt::Key_Down);
        QCOMPARE(s.f.settings.warningChimeName(), std::optional<QString>(QStringLiteral("Tink")));
        QCOMPARE(s.f.sound.chimeFor(SoundService::Cue::warning), QStringLiteral("Tink"));
        QCOMPARE(s.f.sound.chimeFor(SoundService::Cue::end), QStringLiteral("Glass"));
        item(window, QStringLiteral("volumeBox"))->forceActiveFocus();
        QTest::keyClick(window, Qt::Key_Up);
        QCOMPARE(s.f.settings.chimeVolumePercent(), 75);
        item(window, QStringLiteral("sound"))->forceActiveFocus();
        QTest::keyClick(window, Qt::Key_Space);
        QVERIFY(!s.f.settings.soundEnabled());
        QVERIFY(!item(window, QStringLiteral("chimeBox"))->isEnabled());

        // Ctrl+Page Down twice: Routines (worked from the keyboard in
        // tst_popover_window); Escape closes the window.
        QTest::keyClick(window, Qt::Key_PageDown, Qt::ControlModifier);
        QTest::keyClick(window, Qt::Key_PageDown, Qt::ControlModifier);
        QTRY_VERIFY(item(window, QStringLiteral("page-routines"))->isVisible());
        QTest::keyClick(window, Qt::Key_Escape);
        QTRY_VERIFY(!s.controller.isVisible());
        QVERIFY2(s.warnings.isEmpty(), qPrintable(s.warnings.text()));
    }

    void hotkeysAreRecordedAndConflictsRefused()
    {
        QCOMPARE(HotkeySettingsModel::recordedText(Qt::Key_K, Qt::MetaModifier | Qt::ShiftModifier),
                 QStringLiteral("cmd+shift+k"));
        QCOMPARE(HotkeySettingsModel::recordedText(Qt::Key_Exclam, Qt::ControlModifier | Qt::ShiftModifier, 10),
                 QStringLiteral("ctrl+shift+1"));
        QCOMPARE(HotkeySettingsModel::recordedText(Qt::Key_K, Qt::NoModifier), QString());
        QCOMPARE(HotkeySettingsModel::recordedText(Qt::Key_F5, Qt::ControlModifier), QString());

        Settings s;
        s.showTab(QStringLiteral("hotkeys"));
        QQuickWindow *window = s.window();
        QVERIFY2(window, qPrintable(s.warnings.text()));
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QQuickItem *toggle = item(window, QStringLiteral("recorder-togglePopover"));
        toggle->forceActiveFocus();
        QTest::keyClick(window, Qt::Key_Space); // starts recording
        QVERIFY(toggle->property("recording").toBool());
        QTest::keyClick(window, Qt::Key_K, Qt::ControlModifier | Qt::AltModifier);
        QCOMPARE(s.f.settings.hotkeyTogglePopover(), QStringLiteral("ctrl+alt+k"));
        QCOMPARE(s.reloads, 1);
        QCOMPARE(toggle->property("keysText").toString(), HotkeySettingsModel::display(QStringLiteral("ctrl+alt+k")));

        // The same keys for quick add: refused, said so, nothing stored.
        QQuickItem *quick = item(window, QStringLiteral("recorder-quickAdd"));
        click(window, quick);
        QVERIFY(quick->property("recording").toBool());
        QTest::keyClick(window, Qt::Key_K, Qt::ControlModifier | Qt::AltModifier);
        QCOMPARE(s.f.settings.hotkeyQuickAdd(), QStringLiteral("cmd+shift+a"));
        QCOMPARE(s.reloads, 1);
        QQuickItem *message = item(window, QStringLiteral("hotkeyMessage-quickAdd"));
        QTRY_VERIFY(message->isVisible());
        QVERIFY(message->property("text").toString().startsWith(QLatin1String("Both hot keys")));
        // A key without a modifier is explained, not stored; Escape gives up.
        click(window, quick);
        QTest::keyClick(window, Qt::Key_J);
        QVERIFY(message->property("text").toString().startsWith(QLatin1String("Hold Super")));
        click(window, quick);
        QTest::keyClick(window, Qt::Key_Escape);
        QVERIFY(!quick->property("recording").toBool());
        QVERIFY(s.controller.isVisible());
        QCOMPARE(s.f.settings.hotkeyQuickAdd(), QStringLiteral("cmd+shift+a"));
        // No back end: the commands to bind are shown.
        QVERIFY(item(window, QStringLiteral("hotkeyBackend"))->isVisible());
        s.showTab(QStringLiteral("permissions"));
        QVERIFY(item(window, QStringLiteral("facility-hotkeys"))->isVisible());
        QVERIFY2(s.warnings.isEmpty(), qPrintable(s.warnings.text()));

        // What the Permissions tab makes of the desktop's facts.
        DesktopFacts facts;
        facts.notificationServer = true;
        facts.hotkeyBackend = QStringLiteral("x11");
        facts.loginItemEnabled = true;
        QStringList states;
        for (const PermissionsModel::Facility &facility : PermissionsModel::describe(facts))
            states << facility.id + QLatin1Char('=') + QString::number(int(facility.state));
        QCOMPARE(
            states,
            (QStringList{QStringLiteral("statusItem=1"), QStringLiteral("notifications=1"), QStringLiteral("idle=2"),
                         QStringLiteral("session=2"), QStringLiteral("hotkeys=0"), QStringLiteral("autostart=2")}));
    }

    // Turkish runs longest: every tab as a picture, beside the English and
    // German ones of the window pictures test.
    void everyTabInTurkish()
    {
        Settings s;
        QVERIFY(s.f.translations.install(QStringLiteral("tr")));
        s.f.routines.createRoutine(QStringLiteral("Sabah"), {{QStringLiteral("Gelen kutusu"), 15, std::nullopt}});
        for (const QString &tab : SettingsWindowController::tabNames()) {
            s.showTab(tab);
            QVERIFY(QTest::qWaitForWindowExposed(s.window()));
            QCOMPARE(s.window()->title(), QStringLiteral("Tarnwell Ayarları"));
            QTest::qWait(s.theme.motionMedium() + 50);
            saveArtifact(
                s.window()->grabWindow(),
                QStringLiteral("settings-%1-light-tr-%2x.png").arg(tab).arg(s.window()->effectiveDevicePixelRatio()));
        }
        QVERIFY2(s.warnings.isEmpty(), qPrintable(s.warnings.text()));
        s.f.translations.install(QStringLiteral("en"));
    }

    void reviewWindowNavigates()
    {
        ViewsFixture f;
        ThemeController theme;
        UiEngine ui{theme};
        ReviewStatistics statistics(f.context, f.calendar);
        ReviewModel model(statistics, f.calendar, f.time.clock());
        ReviewWindowController review(model, ui);
        Task *task = f.add(QStringLiteral("Overran"), 20);
        f.tasks.complete(task, f.time.now, 35 * 60);
        review.show();
        QVERIFY(review.window());
        QVERIFY(QTest::qWaitForWindowExposed(review.window()));
        QVERIFY(review.window()->title().contains(QLatin1String("Review")));
        QCOMPARE(model.sampleCount(), 1);
        QCOMPARE(model.offenders().size(), 1);
        QVERIFY(!item(review.window(), QStringLiteral("nextPeriod"))->isEnabled());
        QTest::keyClick(review.window(), Qt::Key_Left, Qt::AltModifier);
        QCOMPARE(model.sampleCount(), 0);
        QVERIFY(item(review.window(), QStringLiteral("nextPeriod"))->isEnabled());
        click(review.window(), item(review.window(), QStringLiteral("monthly")));
        QVERIFY(model.monthly());
        QTest::keyClick(review.window(), Qt::Key_Escape);
        QTRY_VERIFY(!review.isVisible());
    }
};

QTEST_MAIN(SettingsWindowTest)
#include "tst_settings_window.moc"
