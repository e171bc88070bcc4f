#include "PopoverKeyMonitor.h"

#include "PopoverManager.h"
#include "hotkeys/HotkeyManager.h"
#include "kit/NamedNotifications.h"

#include <QKeyEvent>
#include <QKeySequence>
#include <QQuickWindow>

namespace tarnwell {

PopoverKeyMonitor::PopoverKeyMonitor(PopoverManager &popover, NamedNotifications &center, QObject *parent)
    : QObject(parent)
    , m_popover(popover)
    , m_center(center)
{
    // The window is made again after it was let go while idle.
    connect(&m_popover, &PopoverManager::shown, this, [this] {
        if (m_installed)
            attach();
    });
}

PopoverKeyMonitor::~PopoverKeyMonitor()
{
    remove();
}

void PopoverKeyMonitor::install()
{
    m_installed = true;
    attach();
}

void PopoverKeyMonitor::remove()
{
    m_installed = false;
    if (m_window)
        m_window->removeEventFilter(this);
    m_window = nullptr;
}

void PopoverKeyMonitor::attach()
{
    QWindow *window = m_popover.window();
    if (!window || window == m_window)
        return;
    if (m_window)
        m_window->removeEventFilter(this);
    m_window = window;
    m_window->installEventFilter(this);
}

std::optional<HotkeyAction> PopoverKeyMonitor::actionFor(const QKeyEvent &event)
{
    const QKeyCombination pressed(event.modifiers() & ~Qt::KeypadModifier, Qt::Key(event.key()));
    for (const BuiltInShortcut &shortcut : builtInShortcuts()) {
        const QKeySequence keys(QString::fromLatin1(shortcut.keys), QKeySequence::PortableText);
        if (keys.count() == 1 && keys[0] == pressed)
            return shortcut.action;
    }
    return std::nullopt;
}

bool PopoverKeyMonitor::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_window || event->type() != QEvent::KeyPress)
        return false;
    const auto action = actionFor(*static_cast<QKeyEvent *>(event));
    if (!action)
        return false;
    m_center.post(QString::fromLatin1(HotkeyManager::Constants::firedNotification),
                  {{QString::fromLatin1(HotkeyManager::Constants::actionKey), rawValue(*action)}});
    return true;
}

} // namespace tarnwell
