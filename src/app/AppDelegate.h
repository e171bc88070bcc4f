#pragma once

#include "kit/Calendar.h"
#include "kit/Clock.h"
#include "persistence/AgentPresence.h"
#include "views/SettingsModels.h"

#include <QFont>
#include <QObject>
#include <QPoint>
#include <QStringList>
#include <memory>
#include <optional>

class QDBusConnection;
class QNetworkAccessManager;
class QSettings;

namespace tarnwell {

class ActiveTaskService;
class AppSettingsStore;
class AppURLRouter;
class ChimeLibrary;
class CountdownService;
class AwayBanner;
class DurationCompletionNotifier;
class IdleMonitor;
class NotificationActionRouter;
class GlobalHotkeyBackend;
class HotkeyManager;
class NamedNotifications;
class PopoverKeyMonitor;
class SoundService;
class TaskAutomation;
class DayRepository;
class LoginItemService;
class MenuBarController;
class RoutineRepository;
class RoutineService;
class OnboardingCoordinator;
class PersistenceController;
class PopoverManager;
class PopoverModel;
class QuickAddDraft;
class QuickAddWindowController;
class RolloverService;
class SaveFailureService;
class StoreBackupService;
class ReviewModel;
class ReviewStatistics;
class ReviewWindowController;
class SecretStore;
class WrapUpModel;
class HistoryModel;
class TaskHistory;
class WrapUpOffer;
class WrapUpWindowController;
class SettingsWindowController;
class StoreContext;
class SyncAccountStore;
class SyncService;
class TaskRepository;
class ThemeController;
class Translations;
class UiEngine;
class WidgetSurface;

namespace sync {
class SyncPass;
}

// What the sync engine is made from.
struct SyncPassParts
{
    StoreContext &store;
    DayRepository &days;
    QNetworkAccessManager &network;
    Clock clock;
};
// The one place the sync engine is made.
std::unique_ptr<sync::SyncPass> makeSyncPass(const SyncPassParts &parts);

namespace platform {
class AppearancePortal;
class SessionBus;
class DayChangeObserver;
class FreedesktopNotifications;
class LinuxSessionEvents;
} // namespace platform

// The composition root: builds the long-lived objects in a fixed order when
// launching finishes, installs the tray interface once, and takes it down
// in order when the process ends. It owns every process-wide instance;
// views hold references and never own services.
class AppDelegate : public QObject
{
    Q_OBJECT
public:
    struct Constants
    {
        static constexpr const char *wrapUpNotification = "tarnwell.wrapup";
        static constexpr const char *wrapUpAction = "WRAP_UP";
    };

    struct Options
    {
        bool uiTest = false; // --ui-test: skip onboarding
        bool unitTestHost = false; // TARNWELL_UNIT_TEST: stop after the first step
        bool exitAfterInstall = false; // TARNWELL_EXIT_AFTER_INSTALL: quit once installed (start-up measurement)
        QString executable; // what launch at login runs
    };

    // Everything that talks to the session bus takes its connection from
    // `sessionBus` and follows it when the bus comes back after a loss.
    AppDelegate(Options options, platform::SessionBus &sessionBus, QObject *parent = nullptr);
    ~AppDelegate() override;

    // Before launching finishes: the link router, so no link is lost.
    void applicationWillFinishLaunching();
    void applicationDidFinishLaunching();
    void applicationWillTerminate();

    AppURLRouter *urlRouter() const { return m_urlRouter.get(); }
    bool appUIInstalled() const { return m_appUIInstalled; }

    // Requests from outside (D-Bus Activate, links, hot keys).
    void revealPopover();
    void showQuickAdd();
    void showRoutines();
    // The settings window on a tab ("general", "hotkeys", ...; empty: the last shown).
    void showSettings(const QString &tab = {});
    void showReview();
    // The end-of-day wrap-up, on demand or from its offer.
    void showWrapUp();
    // org.freedesktop.Application.ActivateAction: "quick-add", "open-today",
    // "toggle-popover".
    bool activateAction(const QString &action);

    PopoverManager *popoverManager() const { return m_popover.get(); }
    QuickAddWindowController *quickAddController() const { return m_quickAdd.get(); }
    SettingsWindowController *settingsController() const { return m_settingsWindow.get(); }
    ReviewWindowController *reviewController() const { return m_reviewWindow.get(); }
    WrapUpWindowController *wrapUpController() const { return m_wrapUpWindow.get(); }
    HotkeyManager *hotkeyManager() const { return m_hotkeys.get(); }
    // What the bus interface org.tarnwell.Tarnwell1 drives; none before launch.
    TaskAutomation *automation() const { return m_automation.get(); }
    // What `tarnwell sync` drives over the bus; none before launch.
    SyncService *syncService() const { return m_sync.get(); }

Q_SIGNALS:
    void interfaceInstalled();

private:
    void installMainInterface();
    // The session bus came back: the status item, notifications, hot keys,
    // idle time, the screen saver and the appearance portal move to it.
    void followSessionBus(const QDBusConnection &bus);
    void applyAppearance();
    void applyLanguage();
    void onDayChanged();
    void onPopoverOpenRequested(const QString &reason, const QByteArray &activationToken);
    void completeActiveTask();
    // A click on the status item: the popover opens at the click, or closes.
    void togglePopover(const QPoint &anchor);
    void applyDueRoutines();
    // The workday has ended: a notification with a button where the desktop
    // shows them, else the tray's menu and tooltip.
    void offerWrapUp();
    // What works on this desktop now, for the settings' Permissions tab.
    DesktopFacts probeDesktop() const;

    Options m_options;
    platform::SessionBus &m_sessionBus;
    Calendar m_calendar;
    Clock m_clock;
    std::unique_ptr<Translations> m_translations;
    std::unique_ptr<PersistenceController> m_store;
    AgentPresence m_presence;
    std::unique_ptr<StoreBackupService> m_backups;
    std::unique_ptr<AppSettingsStore> m_settings;
    std::unique_ptr<DayRepository> m_days;
    std::unique_ptr<TaskRepository> m_tasks;
    std::unique_ptr<ChimeLibrary> m_chimes;
    std::unique_ptr<SoundService> m_sounds;
    std::unique_ptr<DurationCompletionNotifier> m_notifier;
    std::unique_ptr<ActiveTaskService> m_activeTasks;
    std::unique_ptr<CountdownService> m_countdown;
    std::unique_ptr<ThemeController> m_theme;
    std::unique_ptr<platform::AppearancePortal> m_appearance;
    std::optional<QFont> m_applicationFont; // the platform's, while the desktop's replaces it
    std::unique_ptr<UiEngine> m_ui;
    std::unique_ptr<QSettings> m_defaults;
    std::unique_ptr<RoutineRepository> m_routineRepository;
    std::unique_ptr<RoutineService> m_routines;
    std::unique_ptr<RolloverService> m_rollover;
    std::unique_ptr<PopoverModel> m_popoverModel;
    std::unique_ptr<PopoverManager> m_popover;
    std::unique_ptr<TaskHistory> m_taskHistory;
    std::unique_ptr<HistoryModel> m_historyModel;
    std::unique_ptr<QuickAddDraft> m_quickAddDraft;
    std::unique_ptr<QuickAddWindowController> m_quickAdd;
    std::unique_ptr<ReviewStatistics> m_reviewStatistics;
    std::unique_ptr<ReviewModel> m_reviewModel;
    std::unique_ptr<ReviewWindowController> m_reviewWindow;
    std::unique_ptr<QNetworkAccessManager> m_network;
    std::unique_ptr<SecretStore> m_secrets;
    std::unique_ptr<SyncAccountStore> m_syncAccounts;
    std::unique_ptr<sync::SyncPass> m_syncPass;
    std::unique_ptr<SyncService> m_sync;
    std::unique_ptr<WrapUpOffer> m_wrapUpOffer;
    std::unique_ptr<WrapUpModel> m_wrapUpModel;
    std::unique_ptr<WrapUpWindowController> m_wrapUpWindow;
    std::unique_ptr<SettingsWindowController> m_settingsWindow;
    std::unique_ptr<TaskAutomation> m_automation;
    std::unique_ptr<LoginItemService> m_loginItems;
    std::unique_ptr<OnboardingCoordinator> m_onboarding;
    std::unique_ptr<AppURLRouter> m_urlRouter;
    std::unique_ptr<platform::DayChangeObserver> m_dayChange;
    std::unique_ptr<MenuBarController> m_menuBarController;
    // Declared last, so they go first; the countdown that calls the
    // notification centre is taken down on termination before them.
    std::unique_ptr<platform::FreedesktopNotifications> m_notificationCenter;
    std::unique_ptr<SaveFailureService> m_saveFailures;
    std::unique_ptr<NotificationActionRouter> m_notificationRouter;
    std::unique_ptr<platform::LinuxSessionEvents> m_sessionEvents;
    std::unique_ptr<IdleMonitor> m_idleMonitor;
    std::unique_ptr<AwayBanner> m_awayBanner;
    std::unique_ptr<WidgetSurface> m_widgetSurface;
    std::unique_ptr<NamedNotifications> m_notifications;
    std::unique_ptr<GlobalHotkeyBackend> m_hotkeyBackend;
    std::unique_ptr<PopoverKeyMonitor> m_popoverKeys;
    std::unique_ptr<HotkeyManager> m_hotkeys;

    bool m_idleSourceFound = false;
    bool m_launched = false;
    bool m_appUIInstalled = false;
    bool m_pendingPopoverReveal = false;
    bool m_terminated = false;
};

} // namespace tarnwell
