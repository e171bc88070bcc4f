#pragma once

#include "hotkeys/GlobalHotkeyBackend.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QVariantMap>

namespace tarnwell::platform {

// Global hot keys through the desktop portal's GlobalShortcuts interface:
// a session, BindShortcuts with our combinations as preferred triggers (the
// desktop may let the user change them), and Activated for presses. Changing
// the bindings closes the session and opens a new one.
class PortalHotkeyBackend : public GlobalHotkeyBackend
{
    Q_OBJECT
public:
    // The interface's version, or 0 when the portal does not offer it.
    static uint version(const QDBusConnection &bus);
    explicit PortalHotkeyBackend(const QDBusConnection &bus, QObject *parent = nullptr);
    ~PortalHotkeyBackend() override;

    QString name() const override { return QStringLiteral("portal"); }
    void setBindings(const QList<HotkeyBinding> &bindings) override;
    bool answersLater() const override { return true; }

    // The trigger in the shortcuts notation the portal reads: "LOGO+SHIFT+j".
    static QString preferredTrigger(const HotkeyCombo &combo);

private Q_SLOTS:
    void onSessionCreated(uint response, const QVariantMap &results);
    void onBound(uint response, const QVariantMap &results);
    // Activated(o session_handle, s shortcut_id, t timestamp, a{sv} options)
    void onActivated(const QDBusMessage &message);

private:
    QString nextRequestPath(QString *token);
    void closeSession();
    void bind();
    void refuseAll();

    QDBusConnection m_bus;
    QList<HotkeyBinding> m_bindings;
    QString m_session;
    QString m_pendingRequest;
    quint64 m_generation = 0;
    quint64 m_requests = 0;
};

} // namespace tarnwell::platform
