#include "AppDelegate.h"

#include "hotkeys/HotkeyManager.h"
#include "integration/AppURLRouter.h"
#include "integration/TaskAutomation.h"
#include "ical/IcsWriter.h"
#include "kit/LoginItemService.h"
#include "kit/Logging.h"
#include "kit/NamedNotifications.h"
#include "kit/Translations.h"
#include "kit/UserDefaults.h"
#include "menubar/MenuBarController.h"
#include "persistence/DayRepository.h"
#include "persistence/AgentPresence.h"
#include "persistence/PersistenceController.h"
#include "persistence/RoutineRepository.h"
#include "persistence/Task.h"
#include "persistence/TaskRepository.h"
#include "platform/AppearancePortal.h"
#include "platform/DayChangeObserver.h"
#include "platform/FreedesktopNotifications.h"
#include "platform/IdleTimeSources.h"
#include "platform/LinuxSessionEvents.h"
#include "platform/HotkeyBackendChooser.h"
#include "platform/SecretServiceStore.h"
#include "platform/SecretStoreChooser.h"
#include "platform/LazyChimeLibrary.h"
#include "platform/SessionBus.h"
#include "persistence/StoreBackup.h"
#include "services/SaveFailureService.h"
#include "services/ActiveTaskService.h"
#include "services/CountdownService.h"
#include "services/DurationCompletionNotifier.h"
#include "services/IdleMonitor.h"
#include "services/NotificationActionRouter.h"
#include "services/NotificationService.h"
#include "services/SoundService.h"
#include "services/RolloverService.h"
#include "services/ReviewStatistics.h"
#include "services/WrapUp.h"
#include "services/TaskHistory.h"
#include "services/RoutineService.h"
#include "services/SyncService.h"
#include "services/TaskCompletionFlow.h"
#include "persistence/AppSettings.h"
#include "settings/AppSettingsStore.h"
#include "settings/SyncAccountStore.h"
#include "sync/CalDavClient.h"
#include "sync/SyncEngine.h"
#include "views/AwayBanner.h"
#include "views/OnboardingCoordinator.h"
#include "views/PopoverKeyMonitor.h"
#include "views/PopoverManager.h"
#include "views/PopoverModel.h"
#include "views/QuickAddDraft.h"
#include "views/QuickAddWindowController.h"
#include "views/ReviewModel.h"
#include "views/WrapUpModel.h"
#include "views/HistoryModel.h"
#include "views/SettingsWindowController.h"
#include "views/ThemeController.h"
#include "views/UiEngine.h"
#include "widget/WidgetSurface.h"

#include <QCoreApplication>
#include <algorithm>
#include <QGuiApplication>
#include <QHash>
#include <QNetworkAccessManager>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QFileInfo>
#include <QSettings>
#include <QTimer>

namespace tarnwell {

std::unique_ptr<sync::SyncPass> makeSyncPass(const SyncPassParts &parts)
{
    return std::make_unique<sync::SyncEngine>(parts.store, parts.days, parts.network, parts.clock);
}

AppDelegate::AppDelegate(Options options, platform::SessionBus &sessionBus, QObject *parent)
    : QObject(parent)
    , m_options(std::move(options))
    , m_sessionBus(sessionBus)
    , m_clock(systemClock())
    , m_translations(std::make_unique<Translations>())
{
}

AppDelegate::~AppDelegate()
{
    applicationWillTerminate();
}

void AppDelegate::applicationWillFinishLaunching()
{
    m_urlRouter = std::make_unique<AppURLRouter>([this] { revealPopover(); }, [this] { showQuickAdd(); });
    m_urlRouter->setOpenWindow([this](AppURLRoute route, const QString &section) {
        if (route == AppURLRoute::review)
            showReview();
        else if (route == AppURLRoute::wrapUp)
            showWrapUp();
        else
            showSettings(section);
    });
}

void AppDelegate::applicationDidFinishLaunching()
{
    if (m_launched)
        return;
    m_launched = true;

    // 1. An agent: nothing to do here. There is no main window, the windows
    // are tool windows without a taskbar entry, and closing one never quits
    // (main sets quitOnLastWindowClosed to false).

    // 2. Under the unit-test host nothing else happens.
    if (m_options.unitTestHost) {
        qCInfo(lcServices).noquote() << QStringLiteral("Running under the unit-test host; nothing else starts");
        return;
    }

    // 3. The store and the settings row, before anything reads a setting.
    m_store = std::make_unique<PersistenceController>();
    // `tarnwell` sees from this lock that the store has an agent and goes
    // through the bus; without it, it works on the file itself.
    if (!m_store->storePath().isEmpty() && !m_presence.hold(m_store->storePath()))
        qCWarning(lcPersistence).noquote()
            << QStringLiteral("Could not take %1").arg(AgentPresence::lockPath(m_store->storePath()));
    m_settings = std::make_unique<AppSettingsStore>(*m_store);
    m_days = std::make_unique<DayRepository>(m_store->viewContext(), m_calendar, m_clock);
    m_tasks = std::make_unique<TaskRepository>(m_store->viewContext(), m_calendar, m_clock, *m_days);
    // A copy a day, taken once the store has been quiet for a while.
    m_backups = std::make_unique<StoreBackupService>(m_store->viewContext(), m_store->storePath(), m_calendar, m_clock);
    m_backups->start();
    applyLanguage();
    m_theme = std::make_unique<ThemeController>();
    m_appearance = std::make_unique<platform::AppearancePortal>(m_sessionBus.connection());
    connect(m_appearance.get(), &platform::AppearancePortal::schemeChanged, this, [this] { applyAppearance(); });
    connect(m_appearance.get(), &platform::AppearancePortal::appearanceChanged, this, [this] { applyAppearance(); });
    applyAppearance();
    connect(m_settings.get(), &AppSettingsStore::settingChanged, this, [this](const QString &setting) {
        if (setting == QLatin1String("theme"))
            applyAppearance();
        else if (setting == QLatin1String("language"))
            applyLanguage();
    });
    m_ui = std::make_unique<UiEngine>(*m_theme);
    // The popover is opened many times a day: its types stay compiled while
    // the windows themselves are let go.
    m_ui->setKeepEngineWhenIdle(true);

    // 4. The focus engine: the task in hand and its countdown; the popover's
    // owner, the quick-add window and the routines window.
    m_chimes = std::make_unique<platform::LazyChimeLibrary>();
    m_sounds = std::make_unique<SoundService>(*m_settings, *m_chimes);
    m_notificationCenter = std::make_unique<platform::FreedesktopNotifications>(m_sessionBus.connection());
    connect(&m_sessionBus, &platform::SessionBus::connectionChanged, this, &AppDelegate::followSessionBus);
    m_notifier = std::make_unique<NotificationService>(*m_notificationCenter, *m_settings);
    // A save that fails (a full disk) is told once and retried until it goes through.
    m_saveFailures = std::make_unique<SaveFailureService>(m_store->viewContext(), *m_notificationCenter,
                                                          [this] { return m_notificationCenter->isReachable(); });
    m_activeTasks =
        std::make_unique<ActiveTaskService>(m_store->viewContext(), *m_settings, m_clock, m_days.get(), m_tasks.get());
    m_countdown = std::make_unique<CountdownService>(*m_activeTasks, *m_notifier, *m_sounds, *m_settings, m_clock);
    m_defaults = UserDefaults::open();
    m_routineRepository = std::make_unique<RoutineRepository>(m_store->viewContext(), m_clock);
    m_routines = std::make_unique<RoutineService>(m_store->viewContext(), m_calendar, m_clock, *m_routineRepository,
                                                  *m_tasks, *m_days);
    m_rollover = std::make_unique<RolloverService>(m_store->viewContext(), m_calendar, m_clock, *m_days, *m_tasks,
                                                   *m_routineRepository, *m_defaults);
    m_popoverModel = std::make_unique<PopoverModel>(
        PopoverModel::Services{*m_activeTasks, *m_countdown, *m_sounds, *m_settings, *m_routineRepository, *m_routines,
                               *m_rollover, m_calendar, m_clock});
    m_popover = std::make_unique<PopoverManager>(*m_popoverModel, *m_ui);
    m_taskHistory = std::make_unique<TaskHistory>(m_store->viewContext(), m_calendar);
    m_historyModel = std::make_unique<HistoryModel>(*m_popoverModel, *m_activeTasks, *m_settings, *m_taskHistory,
                                                    m_calendar, m_clock);
    m_popover->setHistory(m_historyModel.get());
    m_quickAddDraft = std::make_unique<QuickAddDraft>(*m_tasks, *m_days, m_calendar, m_clock);
    m_quickAdd = std::make_unique<QuickAddWindowController>(*m_quickAddDraft, *m_ui);
    m_reviewStatistics = std::make_unique<ReviewStatistics>(m_store->viewContext(), m_calendar);
    m_reviewModel = std::make_unique<ReviewModel>(*m_reviewStatistics, m_calendar, m_clock);
    m_reviewWindow = std::make_unique<ReviewWindowController>(*m_reviewModel, *m_ui);
    // Sync: the account row, the keyring for its password, the engine (when
    // this build has one), and the service that decides when passes run.
    m_network = std::make_unique<QNetworkAccessManager>();
    m_secrets = platform::chooseSecretStore(m_sessionBus.connection());
    m_syncAccounts = std::make_unique<SyncAccountStore>(m_store->viewContext());
    m_syncPass = makeSyncPass({m_store->viewContext(), *m_days, *m_network, m_clock});
    m_sync = std::make_unique<SyncService>(
        SyncService::Services{*m_syncAccounts, m_secrets.get(), m_syncPass.get(), m_clock});
    connect(&m_store->viewContext(), &StoreContext::objectsDidChange, m_sync.get(), [this](const ChangeSet &changes) {
        // The settings row is this computer's own; everything else is synced.
        const auto synced = [](const QList<ManagedObject *> &objects) {
            return std::any_of(objects.begin(), objects.end(), [](const ManagedObject *object) {
                return &object->entity() != &AppSettings::description();
            });
        };
        if (synced(changes.inserted) || synced(changes.updated) || synced(changes.deleted))
            m_sync->noteLocalChange();
    });
    m_wrapUpOffer = std::make_unique<WrapUpOffer>(*m_settings, *m_defaults, m_calendar, m_clock);
    m_wrapUpModel = std::make_unique<WrapUpModel>(*m_activeTasks, m_wrapUpOffer.get(), m_calendar, m_clock);
    m_wrapUpWindow = std::make_unique<WrapUpWindowController>(*m_wrapUpModel, *m_ui);
    m_settingsWindow = std::make_unique<SettingsWindowController>(SettingsWindowController::Services{
        *m_settings, *m_sounds, *m_routineRepository, *m_ui,
        [this] { return m_hotkeyBackend ? m_hotkeyBackend->name() : QString(); },
        [this]() -> std::optional<HotkeyConflict> { return m_hotkeys ? m_hotkeys->reload() : std::nullopt; },
        [this] { return probeDesktop(); }, QStringLiteral(TARNWELL_VERSION),
        QFileInfo(PersistenceController::defaultStorePath()).absolutePath(), m_sync.get(),
        [this](const QUrl &server, const QString &user, const QString &password,
               const SyncSettingsModel::Discovered &done) {
            auto *client = new sync::CalDavClient(*m_network, this);
            client->setCredentials(user, password);
            client->discover(
                server, [client, done](const sync::CalDavStatus &status, const QList<sync::CalDavCollection> &found) {
                    client->deleteLater();
                    done(status, found);
                });
        }});
    // The routines live in the settings now; the popover's "Manage routines…" opens that tab.
    connect(m_popoverModel.get(), &PopoverModel::manageRoutinesRequested, this, &AppDelegate::showRoutines);
    connect(m_popover.get(), &PopoverManager::settingsRequested, this, [this] { showSettings(); });
    connect(m_popover.get(), &PopoverManager::reviewRequested, this, &AppDelegate::showReview);
    connect(m_popover.get(), &PopoverManager::wrapUpRequested, this, &AppDelegate::showWrapUp);
    m_automation = std::make_unique<TaskAutomation>(*m_activeTasks, *m_sounds, *m_popoverModel, m_calendar,
                                                    [this](const QList<Day *> &days, const Calendar &calendar) {
                                                        return IcsWriter::write(days, calendar, m_clock());
                                                    });

    // 5. Launch at login follows its setting.
    m_loginItems = std::make_unique<LoginItemService>(*m_settings, m_options.executable);
    m_loginItems->start();

    // 6. Onboarding first, unless done or skipped; then the interface.
    if (!m_settings->onboardingCompleted() && !m_options.uiTest) {
        m_onboarding = std::make_unique<OnboardingCoordinator>(*m_settings, *m_ui);
        connect(m_onboarding.get(), &OnboardingCoordinator::finished, this, &AppDelegate::installMainInterface);
        qCInfo(lcServices).noquote() << QStringLiteral("Showing onboarding");
        m_onboarding->show();
        return;
    }
    installMainInterface();
}

void AppDelegate::installMainInterface()
{
    if (m_appUIInstalled)
        return;
    m_appUIInstalled = true;

    // 1. The status item.
    MenuBarController::Actions actions;
    actions.togglePopover = [this](const QPoint &anchor) { togglePopover(anchor); };
    actions.openToday = [this] { revealPopover(); };
    actions.showQuickAdd = [this] { showQuickAdd(); };
    actions.completeActive = [this] { completeActiveTask(); };
    actions.openSettings = [this] { showSettings(); };
    actions.openReview = [this] { showReview(); };
    actions.openWrapUp = [this] { showWrapUp(); };
    actions.quit = [] { QCoreApplication::quit(); };
    m_menuBarController = std::make_unique<MenuBarController>(
        *m_activeTasks, *m_countdown, *m_settings, [this] { return m_appearance->prefersDark(); }, actions);
    connect(m_appearance.get(), &platform::AppearancePortal::schemeChanged, m_menuBarController.get(),
            &MenuBarController::panelThemeChanged);
    m_menuBarController->install(m_sessionBus.connection());
    m_menuBarController->setStoreWarning(m_saveFailures->warning());
    connect(m_saveFailures.get(), &SaveFailureService::warningChanged, m_menuBarController.get(),
            &MenuBarController::setStoreWarning);

    // 2. Global hot keys through whatever this desktop offers; the popover
    // and the quick-add window answer "Tarnwell.hotkey.fired".
    m_notifications = std::make_unique<NamedNotifications>();
    m_popover->observeHotkeys(*m_notifications);
    m_quickAdd->observeHotkeys(*m_notifications);
    m_hotkeyBackend = platform::chooseHotkeyBackend(m_sessionBus.connection());
    m_popoverKeys = std::make_unique<PopoverKeyMonitor>(*m_popover, *m_notifications);
    m_hotkeys =
        std::make_unique<HotkeyManager>(*m_settings, *m_notifications, m_hotkeyBackend.get(), m_popoverKeys.get());
    connect(m_hotkeys.get(), &HotkeyManager::takenBySystem, this,
            [this](HotkeyAction action, const RecordedHotkey &hotkey) {
                // Told in the popover, now or the next time it opens.
                const QString message = HotkeyManager::takenMessage(action, hotkey);
                if (m_settingsWindow->hotkeys())
                    m_settingsWindow->hotkeys()->noteTaken(action, message);
                if (m_popover->isVisible())
                    m_popoverModel->showToast(message);
                else
                    connect(
                        m_popover.get(), &PopoverManager::shown, m_popoverModel.get(),
                        [model = m_popoverModel.get(), message] { model->showToast(message); },
                        Qt::SingleShotConnection);
            });
    m_hotkeys->reload();

    // 6. The rating prompt joins here.

    // 3. The notification action router: done, extend, or the popover.
    m_notificationRouter =
        std::make_unique<NotificationActionRouter>(*m_notificationCenter, *m_activeTasks, *m_sounds, *m_popoverModel);
    connect(m_notificationRouter.get(), &NotificationActionRouter::popoverOpenRequested, this,
            &AppDelegate::onPopoverOpenRequested);

    // 4. The idle monitor, over the desktop's idle time and session events.
    m_sessionEvents =
        std::make_unique<platform::LinuxSessionEvents>(QDBusConnection::systemBus(), m_sessionBus.connection());
    IdleSecondsProvider idleSeconds = platform::IdleTimeSources::find(m_clock, m_sessionBus.connection());
    m_idleSourceFound = bool(idleSeconds);
    m_idleMonitor = std::make_unique<IdleMonitor>(*m_activeTasks, *m_settings, std::move(idleSeconds),
                                                  m_sessionEvents.get(), m_clock);
    m_idleMonitor->start();
    m_awayBanner = std::make_unique<AwayBanner>(*m_idleMonitor, *m_activeTasks);
    m_popover->setAwayBanner(m_awayBanner.get());

    // 5. The widget surface: the snapshot the widget program reads, and the
    // command files it leaves.
    m_widgetSurface = std::make_unique<WidgetSurface>(
        WidgetSurface::Services{m_store->viewContext(), *m_settings, *m_activeTasks, *m_sounds, *m_popoverModel,
                                m_calendar, m_clock, m_rollover.get(), m_sessionEvents.get()});
    m_widgetSurface->start();

    // 7. The day's repeating routines, then a fresh queue.
    applyDueRoutines();
    // 8. A new calendar day repeats step 7.
    m_dayChange = std::make_unique<platform::DayChangeObserver>(m_calendar, m_clock);
    connect(m_dayChange.get(), &platform::DayChangeObserver::dayChanged, this, &AppDelegate::onDayChanged);
    // Same day, other zone: the times shown (finish time, workday end) move.
    connect(m_dayChange.get(), &platform::DayChangeObserver::timeZoneChanged, this, [this] {
        m_activeTasks->refresh();
        m_popoverModel->refresh();
    });
    m_dayChange->start();

    // 9. The wrap-up, offered once a day at the workday end.
    connect(m_wrapUpOffer.get(), &WrapUpOffer::offered, this, &AppDelegate::offerWrapUp);
    connect(m_wrapUpOffer.get(), &WrapUpOffer::pendingChanged, this, [this](bool pending) {
        if (!pending && m_menuBarController)
            m_menuBarController->setWrapUpPending(false);
    });
    connect(m_notificationCenter.get(), &NotificationCenter::responded, this,
            [this](const NotificationResponse &response) {
                if (response.requestIdentifier != QLatin1String(Constants::wrapUpNotification))
                    return;
                if (!response.activationToken.isEmpty())
                    qputenv("XDG_ACTIVATION_TOKEN", response.activationToken);
                showWrapUp();
            });
    m_wrapUpOffer->check();
    // 10. Sync: the pass at start, then after changes and every few minutes.
    m_sync->start();

    qCInfo(lcServices).noquote() << QStringLiteral("Interface installed");
    Q_EMIT interfaceInstalled();
    m_urlRouter->setInterfaceReady();
    if (std::exchange(m_pendingPopoverReveal, false))
        revealPopover();
    if (m_options.exitAfterInstall)
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
}

void AppDelegate::followSessionBus(const QDBusConnection &bus)
{
    // The store, the timer and the windows never left; what lives on the
    // session bus starts again there.
    if (m_appearance)
        m_appearance->rebind(bus);
    if (m_notificationCenter)
        m_notificationCenter->rebind(bus);
    // The keyring's session belonged to the old connection; it is opened anew.
    if (auto *secrets = dynamic_cast<platform::SecretServiceStore *>(m_secrets.get()))
        secrets->rebind(bus);
    if (!m_appUIInstalled || m_terminated)
        return;
    m_menuBarController->reinstall(bus);
    m_sessionEvents->rebindSessionBus(bus);
    IdleSecondsProvider idleSeconds = platform::IdleTimeSources::find(m_clock, bus);
    m_idleSourceFound = bool(idleSeconds);
    m_idleMonitor->setIdleSource(std::move(idleSeconds));
    // The old back end's registrations go with it; the new one registers anew.
    m_hotkeys->setBackend(nullptr);
    m_hotkeyBackend = platform::chooseHotkeyBackend(bus);
    m_hotkeys->setBackend(m_hotkeyBackend.get());
    m_hotkeys->reload();
    qCInfo(lcServices).noquote() << QStringLiteral(
        "Status item, notifications, hot keys and idle time follow the new session bus");
}

void AppDelegate::onPopoverOpenRequested(const QString &reason, const QByteArray &activationToken)
{
    qCInfo(lcMenuBar).noquote() << QStringLiteral("%1: %2").arg(
        QLatin1String(NotificationActionRouter::Constants::popoverOpenRequested), reason);
    // Wayland compositors give the focus to a window that shows the token.
    if (!activationToken.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", activationToken);
    revealPopover();
}

void AppDelegate::offerWrapUp()
{
    const bool notify = m_settings->notificationsEnabled() && m_notificationCenter->isReachable() &&
        m_notificationCenter->supportsActions();
    if (!notify) {
        qCInfo(lcServices).noquote() << QStringLiteral("Wrap-up offered in the tray's menu");
        if (m_menuBarController)
            m_menuBarController->setWrapUpPending(true);
        return;
    }
    NotificationContent content;
    content.identifier = QLatin1String(Constants::wrapUpNotification);
    //: Notification at the workday end: its title
    //% "Your workday has ended"
    content.title = qtTrId("wrapUp.notification.title");
    //: Notification at the workday end: its text
    //% "See what you got done and decide what happens to the rest."
    content.body = qtTrId("wrapUp.notification.body");
    //: Notification at the workday end: the button that opens the wrap-up
    //% "Wrap up"
    content.actions = {{QLatin1String(Constants::wrapUpAction), qtTrId("wrapUp.notification.action")}};
    m_notificationCenter->deliver(content);
    qCInfo(lcServices).noquote() << QStringLiteral("Wrap-up offered in a notification");
}

void AppDelegate::showWrapUp()
{
    qCInfo(lcServices).noquote() << QStringLiteral("Wrap-up requested");
    if (!m_wrapUpWindow)
        return;
    m_wrapUpWindow->show();
    if (m_wrapUpOffer)
        m_wrapUpOffer->opened();
    if (m_notificationCenter)
        m_notificationCenter->remove(QLatin1String(Constants::wrapUpNotification));
}

void AppDelegate::onDayChanged()
{
    applyDueRoutines();
    if (m_wrapUpOffer)
        m_wrapUpOffer->check();
    // A popover left on a date now past follows the new day.
    m_popoverModel->refresh();
}

void AppDelegate::applyDueRoutines()
{
    const int added = m_routines->applyDueRoutines();
    if (added > 0)
        qCInfo(lcServices).noquote() << QStringLiteral("Repeating routines added %1 tasks to today").arg(added);
    m_activeTasks->refresh();
}

void AppDelegate::completeActiveTask()
{
    Task *task = m_activeTasks->activeTask();
    if (!task)
        return;
    // The next-up screen only where the popover is open to show it.
    TaskCompletionFlow::complete(task->id(), *m_activeTasks, *m_sounds, *m_popoverModel, m_popover->isVisible());
}

void AppDelegate::revealPopover()
{
    if (!m_appUIInstalled) {
        m_pendingPopoverReveal = true;
        return;
    }
    qCInfo(lcMenuBar).noquote() << QStringLiteral("Popover requested");
    m_popover->show();
}

void AppDelegate::togglePopover(const QPoint &anchor)
{
    if (!m_appUIInstalled)
        return;
    qCInfo(lcMenuBar).noquote() << QStringLiteral("Popover requested");
    m_popover->toggle(anchor);
}

bool AppDelegate::activateAction(const QString &action)
{
    // The actions a desktop entry or a desktop shortcut names; each but the
    // toggle goes the way its link goes, so it also waits for the interface.
    static const QHash<QString, QString> links{
        {QStringLiteral("quick-add"), QStringLiteral("tarnwell://quickadd")},
        {QStringLiteral("open-today"), QStringLiteral("tarnwell://today")},
    };
    if (action == QLatin1String("toggle-popover")) {
        qCInfo(lcServices).noquote() << QStringLiteral("Activating action %1").arg(action);
        if (m_appUIInstalled)
            togglePopover(QPoint());
        else
            revealPopover(); // waits for the interface
        return true;
    }
    const auto link = links.constFind(action);
    if (link == links.constEnd()) {
        qCWarning(lcServices).noquote() << QStringLiteral("Unknown action %1").arg(action);
        return false;
    }
    qCInfo(lcServices).noquote() << QStringLiteral("Activating action %1").arg(action);
    m_urlRouter->handleURL(*link);
    return true;
}

void AppDelegate::showQuickAdd()
{
    qCInfo(lcServices).noquote() << QStringLiteral("Quick add requested");
    if (m_quickAdd)
        m_quickAdd->show();
}

void AppDelegate::showRoutines()
{
    showSettings(QStringLiteral("routines"));
}

void AppDelegate::showSettings(const QString &tab)
{
    qCInfo(lcServices).noquote() << QStringLiteral("Settings requested");
    if (m_settingsWindow)
        m_settingsWindow->show(tab);
}

void AppDelegate::showReview()
{
    qCInfo(lcServices).noquote() << QStringLiteral("Review requested");
    if (m_reviewWindow)
        m_reviewWindow->show();
}

DesktopFacts AppDelegate::probeDesktop() const
{
    DesktopFacts facts;
    QDBusConnectionInterface *session = m_sessionBus.connection().interface();
    QDBusConnectionInterface *system = QDBusConnection::systemBus().interface();
    facts.statusItem = m_menuBarController && m_menuBarController->statusItemExported();
    facts.notificationServer = session && session->isServiceRegistered(QStringLiteral("org.freedesktop.Notifications"));
    facts.notificationActions = m_notificationCenter && m_notificationCenter->supportsActions();
    facts.idleSource = m_idleSourceFound;
    facts.sessionEvents = system && system->isServiceRegistered(QStringLiteral("org.freedesktop.login1"));
    facts.hotkeyBackend = m_hotkeyBackend ? m_hotkeyBackend->name() : QString();
    facts.loginItemEnabled = m_settings->loginItemEnabled();
    facts.loginItemRegistered = m_loginItems && m_loginItems->isRegistered();
    facts.autostartPath = LoginItemService::autostartPath();
    return facts;
}

void AppDelegate::applyAppearance()
{
    switch (m_settings->theme()) {
    case TarnwellAppearance::light:
        m_theme->setForced(ThemeController::Forced::light);
        break;
    case TarnwellAppearance::dark:
        m_theme->setForced(ThemeController::Forced::dark);
        break;
    case TarnwellAppearance::system:
        m_theme->setForced(ThemeController::Forced::none);
        break;
    }
    m_theme->setDesktopPrefersDark(m_appearance->prefersDark());
    m_theme->setDesktopAccent(m_appearance->accent());
    m_theme->setReducedMotion(m_appearance->reducedMotion());
    // The desktop's interface font, for our components and Qt's own alike;
    // without one, what the platform theme gave the application.
    if (const auto font = m_appearance->font()) {
        if (!m_applicationFont)
            m_applicationFont = QGuiApplication::font();
        QGuiApplication::setFont(*font);
        m_theme->setFont(*font);
    } else {
        if (m_applicationFont)
            QGuiApplication::setFont(*std::exchange(m_applicationFont, std::nullopt));
        m_theme->setFont(QGuiApplication::font());
    }
}

void AppDelegate::applyLanguage()
{
    const QString code = Translations::resolve(storedText(m_settings->language()));
    if (code == m_translations->installedLanguage())
        return;
    m_translations->install(code);
    if (m_ui)
        m_ui->retranslate();
    if (m_popoverModel)
        m_popoverModel->retranslate();
    if (m_settingsWindow)
        m_settingsWindow->retranslate();
    if (m_reviewModel)
        m_reviewModel->refresh();
    if (m_wrapUpModel)
        m_wrapUpModel->refresh();
}

void AppDelegate::applicationWillTerminate()
{
    if (m_terminated || !m_launched)
        return;
    m_terminated = true;
    // A running sync pass is abandoned first: it must not write while the
    // rest is taken down.
    if (m_sync)
        m_sync->shutdown();
    // The reverse of installing. Each line is logged only for what existed.
    if (m_hotkeys) {
        m_hotkeys->unregisterAll();
        qCInfo(lcHotkeys).noquote() << QStringLiteral("Unregistered all global hotkeys");
    }
    m_hotkeys.reset();
    m_popoverKeys.reset();
    m_hotkeyBackend.reset();
    if (m_menuBarController) {
        const bool exported = m_menuBarController->statusItemExported();
        m_menuBarController.reset();
        if (exported)
            qCInfo(lcMenuBar).noquote() << QStringLiteral("Removed the status item");
    }
    if (m_widgetSurface) {
        m_widgetSurface->stop();
        m_widgetSurface.reset();
        qCInfo(lcWidget).noquote() << QStringLiteral("Stopped the widget surface");
    }
    m_dayChange.reset();
    // Away time and notification actions, then the windows and their models,
    // all before the services they read.
    m_idleMonitor.reset();
    m_sessionEvents.reset();
    m_notificationRouter.reset();
    m_settingsWindow.reset();
    m_sync.reset();
    m_syncPass.reset();
    m_syncAccounts.reset();
    m_secrets.reset();
    m_network.reset();
    m_reviewWindow.reset();
    m_wrapUpWindow.reset();
    m_wrapUpModel.reset();
    m_wrapUpOffer.reset();
    m_reviewModel.reset();
    m_reviewStatistics.reset();
    m_automation.reset();
    m_quickAdd.reset();
    m_quickAddDraft.reset();
    m_popover.reset();
    m_historyModel.reset();
    m_taskHistory.reset();
    m_popoverModel.reset();
    m_awayBanner.reset();
    m_onboarding.reset();
    m_countdown.reset();
    m_notifier.reset();
    m_saveFailures.reset();
    m_notificationCenter.reset();
    if (m_store) {
        m_store->save();
        // Everything that reads the store goes before it, newest first; an
        // unfinished copy is dropped (the next run takes it again).
        m_backups.reset();
        m_loginItems.reset();
        m_rollover.reset();
        m_routines.reset();
        m_routineRepository.reset();
        m_activeTasks.reset();
        m_sounds.reset();
        m_tasks.reset();
        m_days.reset();
        m_settings.reset();
        m_store.reset();
        qCInfo(lcPersistence).noquote() << QStringLiteral("Closed the store");
    }
    qCInfo(lcServices).noquote() << QStringLiteral("Terminated");
}

} // namespace tarnwell
