#pragma once

#include "hotkeys/GlobalHotkeyBackend.h"

#include <QDBusConnection>

namespace tarnwell::platform {

// Global hot keys through KDE's kglobalaccel daemon: our component with one
// action per bound hot key, its key set with setShortcut (the daemon answers
// with the keys it really gave us; a key used elsewhere is left out), and the
// component's globalShortcutPressed signal for presses.
class KGlobalAccelHotkeyBackend : public GlobalHotkeyBackend
{
    Q_OBJECT
public:
    struct Constants
    {
        static constexpr const char *component = "org.tarnwell.Tarnwell";
    };

    static bool available(const QDBusConnection &bus);
    explicit KGlobalAccelHotkeyBackend(const QDBusConnection &bus, QObject *parent = nullptr);
    ~KGlobalAccelHotkeyBackend() override;

    QString name() const override { return QStringLiteral("kglobalaccel"); }
    void setBindings(const QList<HotkeyBinding> &bindings) override;

    // The key as Qt's key code with modifier bits, as kglobalaccel stores it.
    static int qtKeyCode(const HotkeyCombo &combo);

private Q_SLOTS:
    void onPressed(const QString &component, const QString &shortcut, qlonglong timestamp);

private:
    QStringList actionId(HotkeyAction action) const;
    void listen();

    QDBusConnection m_bus;
    QList<HotkeyAction> m_registered;
    QString m_componentPath;
};

} // namespace tarnwell::platform
