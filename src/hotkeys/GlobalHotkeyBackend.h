#pragma once

#include "HotkeyAction.h"
#include "HotkeyCombo.h"

#include <QList>
#include <QObject>

namespace tarnwell {

struct HotkeyBinding
{
    HotkeyAction action = HotkeyAction::togglePopover;
    HotkeyCombo combo;
    QString raw; // the stored text, for messages
};

// A way to reach the desktop's global key combinations (the shortcuts
// portal, KDE's kglobalaccel, an X11 key grab). Lives on the main thread.
class GlobalHotkeyBackend : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    // For the log: "x11", "portal", "kglobalaccel".
    virtual QString name() const = 0;
    // Replaces every registration with `bindings`; an empty list releases all.
    virtual void setBindings(const QList<HotkeyBinding> &bindings) = 0;
    // True when the desktop answers after setBindings returns (the portal).
    virtual bool answersLater() const { return false; }

Q_SIGNALS:
    // A registered combination was pressed.
    void pressed(tarnwell::HotkeyAction action);
    // The desktop or another program already holds the combination, so it
    // is not ours (may arrive later than setBindings).
    void refused(tarnwell::HotkeyAction action);
};

// Serves the fixed shortcuts while the popover has the focus.
class LocalKeyMonitor
{
public:
    virtual ~LocalKeyMonitor() = default;
    virtual void install() = 0;
    virtual void remove() = 0;
};

} // namespace tarnwell
