#pragma once

#include "MenuBarChipRenderer.h"
#include "MenuBarPresentation.h"
#include "kit/Clock.h"

#include <QDBusConnection>
#include <QObject>
#include <QPoint>
#include <QTimer>
#include <functional>
#include <memory>

class QMenu;
class QSystemTrayIcon;

namespace tarnwell {

class ActiveTaskService;
class AppSettingsStore;
class CountdownService;
class Task;

namespace platform {
class DBusMenu;
struct DBusMenuItem;
class StatusNotifierItem;
} // namespace platform

// Owns the status item: rebuilds the presentation when the task in hand, its
// countdown or the label settings change, and pushes label, icon and tooltip
// to the panel only when what they show changed (the countdown text moves
// once a minute, the icon once per progress step).
class MenuBarController : public QObject
{
    Q_OBJECT
public:
    // What the status item's clicks and menu entries do; the delegate wires them.
    struct Actions
    {
        std::function<void(const QPoint &anchor)> togglePopover;
        std::function<void()> openToday;
        std::function<void()> showQuickAdd;
        std::function<void()> completeActive;
        std::function<void()> openSettings;
        std::function<void()> openReview;
        std::function<void()> openWrapUp;
        std::function<void()> quit;
    };

    struct Constants
    {
        // How long the day-done text stays after the last task of the day.
        static constexpr int dayDoneMinutes = 10;
    };

    MenuBarController(ActiveTaskService &activeTasks, CountdownService &countdown, AppSettingsStore &settings,
                      std::function<bool()> panelIsDark, Actions actions, QObject *parent = nullptr);
    ~MenuBarController() override;

    // Creates the status item on `bus` and registers it with the panel.
    void install(const QDBusConnection &bus);
    // The item again on another connection (the session bus came back after a loss).
    void reinstall(const QDBusConnection &bus);
    // Takes the status item off the panel.
    void remove();
    bool isInstalled() const { return bool(m_item); }
    platform::StatusNotifierItem *statusItem() const { return m_item.get(); }
    // True once the item is on the session bus, so that taking it down means something.
    bool statusItemExported() const;

    const MenuBarPresentation &presentation() const { return m_presentation; }
    bool showingDayDone() const { return m_showingDayDone; }
    // The panel's light/dark preference changed.
    void panelThemeChanged();
    // A line the tooltip shows above everything else while it is not empty
    // (saving fails and no notification could say so).
    void setStoreWarning(const QString &warning);
    // The workday has ended and the wrap-up waits (no notification could
    // offer it): the menu's entry is marked and the tooltip says so.
    void setWrapUpPending(bool pending);
    bool wrapUpPending() const { return m_wrapUpPending; }
    // The label text as the panel shows it: title, then the countdown.
    static QString labelText(const MenuBarPresentation &presentation);

Q_SIGNALS:
    void presentationChanged(const tarnwell::MenuBarPresentation &presentation);

public:
    // The entries of the status item's menu.
    enum MenuId { openId = 1, quickAddId, timerId, completeId, separatorId, settingsId, quitId, reviewId, wrapUpId };

private:
    void rebuild();
    void push();
    void updateMenu();
    platform::DBusMenuItem wrapUpEntry() const;
    void onActiveTaskChanged(Task *task);
    void endDayDone();
    void triggerMenuEntry(int id);
    // Panels without a StatusNotifierWatcher (XEmbed trays) get a plain tray icon.
    void updateFallback();
    void pushFallback();

    ActiveTaskService &m_activeTasks;
    CountdownService &m_countdown;
    AppSettingsStore &m_settings;
    std::function<bool()> m_panelIsDark;
    Actions m_actions;

    std::unique_ptr<platform::StatusNotifierItem> m_item;
    std::unique_ptr<platform::DBusMenu> m_menu;
    std::unique_ptr<QSystemTrayIcon> m_fallback;
    std::unique_ptr<QMenu> m_fallbackMenu;
    MenuBarPresentation m_presentation;
    QString m_pushedLabel;
    std::optional<MenuBarChipRenderer::Key> m_pushedIcon;
    QString m_pushedToolTip;
    QString m_storeWarning;
    bool m_wrapUpPending = false;

    // The day-done display: after the last open task of today is completed.
    Task *m_lastActive = nullptr;
    bool m_showingDayDone = false;
    QTimer m_dayDoneTimer;
};

} // namespace tarnwell
