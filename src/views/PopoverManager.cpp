#include "PopoverManager.h"

#include <malloc.h>
#include <QTimer>

#include "PopoverModel.h"
#include "UiEngine.h"
#include "hotkeys/HotkeyManager.h"
#include "kit/Logging.h"
#include "kit/NamedNotifications.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QScreen>

#include <algorithm>

namespace tarnwell {

PopoverManager::PopoverManager(PopoverModel &model, UiEngine &ui, QObject *parent)
    : QObject(parent)
    , m_model(model)
    , m_ui(ui)
{
}

PopoverManager::~PopoverManager()
{
    // A window being destroyed still reports itself hidden; nobody may hear it.
    if (m_window)
        QObject::disconnect(m_window.data(), nullptr, nullptr, nullptr);
    delete m_window.data();
}

bool PopoverManager::ensureWindow()
{
    if (m_window)
        return true;
    QVariantMap properties{{QStringLiteral("popover"), QVariant::fromValue<QObject *>(&m_model)},
                           {QStringLiteral("manager"), QVariant::fromValue<QObject *>(this)}};
    if (m_awayBanner)
        properties.insert(QStringLiteral("awayBanner"), QVariant::fromValue<QObject *>(m_awayBanner.data()));
    if (m_history)
        properties.insert(QStringLiteral("history"), QVariant::fromValue<QObject *>(m_history.data()));
    m_window = m_ui.createWindow(QStringLiteral("Popover.qml"), properties);
    if (!m_window)
        return false;
    settle(*m_window, QGuiApplication::platformName());
    connect(m_window, &QWindow::activeChanged, this, [this] {
        if (!m_window)
            return;
        if (m_window->isActive()) {
            m_wasActive = true;
        } else if (m_wasActive && m_window->isVisible()) {
            // Clicking elsewhere closes the popover, as a menu would.
            hide();
        }
    });
    connect(m_window, &QWindow::visibleChanged, this, [this](bool visible) {
        if (!visible) {
            m_wasActive = false;
            qCInfo(lcMenuBar).noquote() << QStringLiteral("Popover hidden");
            // Idle in the tray is the usual state: drop the window's render
            // caches and give freed heap back to the system.
            m_window->releaseResources();
            QTimer::singleShot(0, m_window, [window = m_window] {
                if (!window->isVisible())
                    window->destroy(); // the native window and its backing store
            });
            QTimer::singleShot(1000, this, [] { malloc_trim(0); });
            Q_EMIT hidden();
        }
    });
    return true;
}

Qt::WindowFlags PopoverManager::windowFlags(const QString &platformName)
{
    if (platformName.startsWith(QLatin1String("wayland")))
        return Qt::Window;
    return Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;
}

void PopoverManager::settle(QWindow &window, const QString &platformName)
{
    window.setFlags(windowFlags(platformName));
    if (!platformName.startsWith(QLatin1String("wayland")))
        return;
    window.setMinimumWidth(window.width());
    window.setMaximumWidth(window.width());
    window.setMinimumHeight(std::max(window.minimumHeight(), 1));
}

QPoint PopoverManager::placement(const QPoint &anchor, const QSize &size, const QRect &available)
{
    QPoint at;
    if (anchor.isNull())
        at = QPoint(available.right() + 1 - size.width() - Constants::margin, available.top() + Constants::margin);
    else
        at = QPoint(anchor.x() - size.width() / 2, anchor.y() + Constants::margin);
    // Keep the whole window on the free part of the screen.
    const int maxX = std::max(available.left(), available.right() + 1 - size.width());
    const int maxY = std::max(available.top(), available.bottom() + 1 - size.height());
    return QPoint(std::clamp(at.x(), available.left(), maxX), std::clamp(at.y(), available.top(), maxY));
}

void PopoverManager::show(const QPoint &anchor)
{
    if (!ensureWindow())
        return;
    QScreen *screen = anchor.isNull() ? nullptr : QGuiApplication::screenAt(anchor);
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (screen) {
        m_window->setScreen(screen);
        m_window->setPosition(placement(anchor, m_window->size(), screen->availableGeometry()));
    }
    const bool wasVisible = m_window->isVisible();
    // Opening lands on today, whatever day the popover was left on.
    if (!wasVisible)
        m_model.today();
    m_model.refresh();
    m_window->show();
    m_window->raise();
    m_window->requestActivate();
    QMetaObject::invokeMethod(m_window, "focusAddField");
    if (!wasVisible) {
        qCInfo(lcMenuBar).noquote() << QStringLiteral("Popover shown");
        // The moment the user sees it: its first frame on screen.
        connect(
            m_window, &QQuickWindow::frameSwapped, this,
            [] { qCInfo(lcMenuBar).noquote() << QStringLiteral("Popover drawn"); }, Qt::SingleShotConnection);
        Q_EMIT shown();
    }
}

void PopoverManager::observeHotkeys(NamedNotifications &center)
{
    center.observe(QString::fromLatin1(HotkeyManager::Constants::firedNotification), this,
                   [this](const QVariantMap &info) {
                       onHotkey(info.value(QString::fromLatin1(HotkeyManager::Constants::actionKey)).toString());
                   });
}

void PopoverManager::onHotkey(const QString &name)
{
    const auto action = hotkeyActionFromRaw(name);
    if (!action)
        return;
    if (*action == HotkeyAction::togglePopover) {
        toggle();
        return;
    }
    if (!isVisible())
        return;
    switch (*action) {
    case HotkeyAction::completeActive:
        m_model.completeTaskInHand();
        break;
    case HotkeyAction::addTask:
        QMetaObject::invokeMethod(m_window, "focusAddField");
        break;
    case HotkeyAction::dayPrev:
        m_model.previousDay();
        break;
    case HotkeyAction::dayNext:
        m_model.nextDay();
        break;
    case HotkeyAction::jumpToToday:
        m_model.today();
        break;
    case HotkeyAction::openReview:
        requestReview();
        break;
    default:
        break;
    }
}

void PopoverManager::toggle(const QPoint &anchor)
{
    if (isVisible())
        hide();
    else
        show(anchor);
}

void PopoverManager::hide()
{
    if (m_window && m_window->isVisible())
        m_window->hide();
}

void PopoverManager::requestSettings()
{
    hide();
    Q_EMIT settingsRequested();
}

void PopoverManager::requestReview()
{
    hide();
    Q_EMIT reviewRequested();
}

void PopoverManager::requestWrapUp()
{
    hide();
    Q_EMIT wrapUpRequested();
}

bool PopoverManager::isVisible() const
{
    return m_window && m_window->isVisible();
}

QQuickWindow *PopoverManager::window() const
{
    return m_window.data();
}

} // namespace tarnwell
