#include "MenuBarController.h"

#include "MenuBarLabelBuilder.h"
#include "kit/Logging.h"
#include "persistence/Task.h"
#include "platform/DBusMenu.h"
#include "platform/StatusNotifierItem.h"
#include "services/ActiveTaskService.h"
#include "services/CountdownService.h"
#include "services/FocusTexts.h"
#include "services/FocusTime.h"
#include "settings/AppSettingsStore.h"

#include <QCoreApplication>
#include <QCursor>
#include <QMenu>
#include <QSystemTrayIcon>

namespace tarnwell {

MenuBarController::MenuBarController(ActiveTaskService &activeTasks, CountdownService &countdown,
                                     AppSettingsStore &settings, std::function<bool()> panelIsDark, Actions actions,
                                     QObject *parent)
    : QObject(parent)
    , m_activeTasks(activeTasks)
    , m_countdown(countdown)
    , m_settings(settings)
    , m_panelIsDark(std::move(panelIsDark))
    , m_actions(std::move(actions))
{
    m_dayDoneTimer.setSingleShot(true);
    m_dayDoneTimer.setInterval(Constants::dayDoneMinutes * 60 * 1000);
    connect(&m_dayDoneTimer, &QTimer::timeout, this, &MenuBarController::endDayDone);
    m_lastActive = m_activeTasks.activeTask();
}

MenuBarController::~MenuBarController()
{
    remove();
}

bool MenuBarController::statusItemExported() const
{
    return m_item && m_item->isExported();
}

void MenuBarController::reinstall(const QDBusConnection &bus)
{
    remove();
    install(bus);
}

void MenuBarController::install(const QDBusConnection &bus)
{
    if (m_item)
        return;
    m_item = std::make_unique<platform::StatusNotifierItem>(bus);
    m_menu = std::make_unique<platform::DBusMenu>();
    m_item->setTitle(QStringLiteral("Tarnwell"));
    m_item->setMenu(m_menu.get());
    connect(m_item.get(), &platform::StatusNotifierItem::activated, this, [this](const QPoint &at) {
        if (m_actions.togglePopover)
            m_actions.togglePopover(at);
    });
    connect(m_item.get(), &platform::StatusNotifierItem::secondaryActivated, this, [this] {
        if (m_actions.showQuickAdd)
            m_actions.showQuickAdd();
    });
    connect(m_menu.get(), &platform::DBusMenu::triggered, this, &MenuBarController::triggerMenuEntry);
    connect(m_item.get(), &platform::StatusNotifierItem::availableChanged, this, &MenuBarController::updateFallback);

    connect(&m_activeTasks, &ActiveTaskService::activeTaskChanged, this, &MenuBarController::onActiveTaskChanged);
    connect(&m_countdown, &CountdownService::remainingSecondsChanged, this, &MenuBarController::rebuild);
    connect(&m_settings, &AppSettingsStore::settingChanged, this, [this](const QString &setting) {
        if (setting == QLatin1String("menuBarMaxChars") || setting == QLatin1String("minimalIdleMode") ||
            setting == QLatin1String("language"))
            rebuild();
    });
    m_pushedLabel.clear();
    m_pushedIcon.reset();
    m_pushedToolTip.clear();
    rebuild();
    push();
    updateFallback();
    if (m_item->isExported())
        qCInfo(lcMenuBar).noquote() << QStringLiteral("Status item installed as %1").arg(m_item->serviceName());
}

void MenuBarController::triggerMenuEntry(int id)
{
    switch (id) {
    case openId:
        if (m_actions.openToday)
            m_actions.openToday();
        break;
    case quickAddId:
        if (m_actions.showQuickAdd)
            m_actions.showQuickAdd();
        break;
    case timerId:
        if (Task *task = m_activeTasks.activeTask())
            m_activeTasks.toggleTimer(task);
        break;
    case completeId:
        if (m_actions.completeActive)
            m_actions.completeActive();
        break;
    case settingsId:
        if (m_actions.openSettings)
            m_actions.openSettings();
        break;
    case reviewId:
        if (m_actions.openReview)
            m_actions.openReview();
        break;
    case wrapUpId:
        if (m_actions.openWrapUp)
            m_actions.openWrapUp();
        break;
    case quitId:
        if (m_actions.quit)
            m_actions.quit();
        break;
    default:
        break;
    }
}

void MenuBarController::updateFallback()
{
    const bool wanted = m_item && !m_item->available() && QSystemTrayIcon::isSystemTrayAvailable();
    if (wanted == bool(m_fallback))
        return;
    if (!wanted) {
        m_fallback.reset();
        m_fallbackMenu.reset();
        return;
    }
    // Only while no watcher takes our own item: Qt's icon would otherwise
    // publish a second item at the same path.
    m_fallbackMenu = std::make_unique<QMenu>();
    m_fallback = std::make_unique<QSystemTrayIcon>();
    m_fallback->setContextMenu(m_fallbackMenu.get());
    connect(m_fallback.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger && m_actions.togglePopover)
            m_actions.togglePopover(QCursor::pos());
    });
    pushFallback();
    m_fallback->show();
    qCInfo(lcMenuBar).noquote() << QStringLiteral("No StatusNotifierWatcher on the bus; showing a plain tray icon");
}

void MenuBarController::setStoreWarning(const QString &warning)
{
    if (warning == m_storeWarning)
        return;
    m_storeWarning = warning;
    push();
}

void MenuBarController::setWrapUpPending(bool pending)
{
    if (pending == m_wrapUpPending)
        return;
    m_wrapUpPending = pending;
    m_pushedToolTip.clear();
    push();
}

void MenuBarController::pushFallback()
{
    if (!m_fallback)
        return;
    QIcon icon;
    for (const QImage &image : MenuBarChipRenderer::renderAllSizes(*m_pushedIcon))
        icon.addPixmap(QPixmap::fromImage(image));
    m_fallback->setIcon(icon);
    // Plain tray icons have no label: the tooltip carries the label's text.
    const QString label = labelText(m_presentation);
    m_fallback->setToolTip(m_storeWarning.isEmpty() ? label : m_storeWarning + QLatin1Char('\n') + label);
    m_fallbackMenu->clear();
    for (const auto &entry : m_menu->items()) {
        if (entry.type == platform::DBusMenuItem::Type::separator) {
            m_fallbackMenu->addSeparator();
            continue;
        }
        QAction *action = m_fallbackMenu->addAction(entry.label);
        action->setEnabled(entry.enabled);
        const int id = entry.id;
        connect(action, &QAction::triggered, this, [this, id] { triggerMenuEntry(id); });
    }
}

void MenuBarController::remove()
{
    if (!m_item)
        return;
    disconnect(&m_activeTasks, nullptr, this, nullptr);
    disconnect(&m_countdown, nullptr, this, nullptr);
    disconnect(&m_settings, nullptr, this, nullptr);
    m_fallback.reset();
    m_fallbackMenu.reset();
    m_item.reset();
    m_menu.reset();
}

void MenuBarController::onActiveTaskChanged(Task *task)
{
    // The last open task of today was just completed: the day is done.
    if (!task && m_lastActive && !m_lastActive->isDeleted() && m_lastActive->completed() &&
        m_activeTasks.queue().isEmpty()) {
        m_showingDayDone = true;
        m_dayDoneTimer.start();
    } else if (task) {
        endDayDone();
    }
    m_lastActive = task;
    rebuild();
}

void MenuBarController::endDayDone()
{
    m_dayDoneTimer.stop();
    if (!m_showingDayDone)
        return;
    m_showingDayDone = false;
    rebuild();
}

void MenuBarController::panelThemeChanged()
{
    push();
}

QString MenuBarController::labelText(const MenuBarPresentation &p)
{
    if (!p.countdown)
        return p.title;
    if (p.title.isEmpty())
        return *p.countdown;
    return p.title + QStringLiteral("  ") + *p.countdown;
}

void MenuBarController::rebuild()
{
    MenuBarLabelBuilder::Inputs in;
    in.task = m_activeTasks.activeTask();
    in.remainingSeconds = m_countdown.remainingSeconds();
    in.maxChars = m_settings.menuBarMaxChars();
    in.minimalIdleMode = m_settings.minimalIdleMode();
    in.showingDayDone = m_showingDayDone;
    MenuBarPresentation next = MenuBarLabelBuilder::build(in);
    if (m_showingDayDone && next.state == MenuBarPresentation::State::idle)
        next.state = MenuBarPresentation::State::dayDone;
    const bool changed = !(next == m_presentation);
    m_presentation = next;
    if (changed) {
        push();
        Q_EMIT presentationChanged(m_presentation);
    }
}

void MenuBarController::push()
{
    if (!m_item)
        return;
    const QString label = labelText(m_presentation);
    if (label != m_pushedLabel) {
        m_item->setLabel(label);
        m_pushedLabel = label;
    }
    const auto key = MenuBarChipRenderer::keyFor(m_presentation, m_panelIsDark && m_panelIsDark());
    if (!m_pushedIcon || !(*m_pushedIcon == key)) {
        m_item->setIcon(MenuBarChipRenderer::renderAllSizes(key));
        m_pushedIcon = key;
    }
    Task *task = m_activeTasks.activeTask();
    const QString title = task ? task->title() : MenuBarLabelBuilder::idleText(m_showingDayDone);
    QString description;
    if (task) {
        description = FocusTexts::status(FocusTime::timerState(*task));
        if (m_presentation.countdown) {
            const bool over = m_presentation.state == MenuBarPresentation::State::overdue;
            description += QStringLiteral(" · ") + *m_presentation.countdown + QLatin1Char(' ') +
                (over ? FocusTexts::countdownOver() : FocusTexts::countdownLeft());
        }
    }
    if (m_wrapUpPending) {
        //: Status item tooltip: the workday has ended and the wrap-up waits in the menu
        //% "Your workday has ended: wrap up the day from the menu."
        const QString line = qtTrId("menubar.tooltip.wrapUpPending");
        description = description.isEmpty() ? line : line + QLatin1Char('\n') + description;
    }
    if (!m_storeWarning.isEmpty())
        description = description.isEmpty() ? m_storeWarning : m_storeWarning + QLatin1Char('\n') + description;
    const QString toolTipKey = title + QLatin1Char('\n') + description;
    if (toolTipKey != m_pushedToolTip) {
        m_item->setToolTip(title.toHtmlEscaped(), description.toHtmlEscaped());
        m_pushedToolTip = toolTipKey;
    }
    updateMenu();
    pushFallback();
}

platform::DBusMenuItem MenuBarController::wrapUpEntry() const
{
    using platform::DBusMenuItem;
    if (!m_wrapUpPending)
        //: Status item menu: open the end-of-day wrap-up
        //% "Wrap Up the Day…"
        return DBusMenuItem::entry(wrapUpId, qtTrId("menubar.menu.wrapUp"));
    //: Status item menu: the wrap-up while it waits after the workday end
    //% "Workday Ended: Wrap Up…"
    DBusMenuItem item = DBusMenuItem::entry(wrapUpId, qtTrId("menubar.menu.wrapUpPending"));
    item.iconName = QStringLiteral("appointment-soon");
    return item;
}

void MenuBarController::updateMenu()
{
    using platform::DBusMenuItem;
    Task *task = m_activeTasks.activeTask();
    const FocusTime::TimerState state = task ? FocusTime::timerState(*task) : FocusTime::TimerState::ready;
    m_menu->setItems({
        //: Status item menu: open the day's queue
        //% "Open Today"
        DBusMenuItem::entry(openId, qtTrId("menubar.menu.open")),
        //: Status item menu: open the quick-add window
        //% "Quick Add…"
        DBusMenuItem::entry(quickAddId, qtTrId("menubar.menu.quickAdd")),
        DBusMenuItem::entry(timerId, FocusTexts::timerAction(state), task != nullptr),
        //: Status item menu: mark the task in hand done
        //% "Complete Task"
        DBusMenuItem::entry(completeId, qtTrId("menubar.menu.complete"), task != nullptr),
        DBusMenuItem::separator(separatorId),
        //: Status item menu: open the review of estimates
        //% "Review…"
        DBusMenuItem::entry(reviewId, qtTrId("menubar.menu.review")),
        wrapUpEntry(),
        //: Status item menu: open the settings window
        //% "Settings…"
        DBusMenuItem::entry(settingsId, qtTrId("menubar.menu.settings")),
        //: Status item menu: quit the program
        //% "Quit Tarnwell"
        DBusMenuItem::entry(quitId, qtTrId("menubar.menu.quit")),
    });
}

} // namespace tarnwell
