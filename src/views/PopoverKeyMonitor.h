#pragma once

#include "hotkeys/GlobalHotkeyBackend.h"

#include <QObject>
#include <QPointer>

class QKeyEvent;
class QWindow;

namespace tarnwell {

class NamedNotifications;
class PopoverManager;

// Serves the popover's fixed shortcuts (the table in hotkeys/HotkeyAction.h)
// while it has the focus: a key filter on the popover window that posts
// "Tarnwell.hotkey.fired" with the shortcut's action. The keys are ones a text
// field leaves alone, so typing in the add field is not disturbed.
class PopoverKeyMonitor : public QObject, public LocalKeyMonitor
{
    Q_OBJECT
public:
    PopoverKeyMonitor(PopoverManager &popover, NamedNotifications &center, QObject *parent = nullptr);
    ~PopoverKeyMonitor() override;

    void install() override;
    void remove() override;
    bool isInstalled() const { return m_installed; }

    // The fixed shortcut's action for a key press, if it is one.
    static std::optional<HotkeyAction> actionFor(const QKeyEvent &event);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void attach();

    PopoverManager &m_popover;
    NamedNotifications &m_center;
    QPointer<QWindow> m_window;
    bool m_installed = false;
};

} // namespace tarnwell
