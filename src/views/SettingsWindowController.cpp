#include "SettingsWindowController.h"

#include "RoutinesModel.h"
#include "UiEngine.h"
#include "kit/Logging.h"

#include <QQuickWindow>

namespace tarnwell {

const QStringList &SettingsWindowController::tabNames()
{
    static const QStringList names{
        QStringLiteral("general"), QStringLiteral("reminders"),   QStringLiteral("hotkeys"), QStringLiteral("routines"),
        QStringLiteral("sync"),    QStringLiteral("permissions"), QStringLiteral("about")};
    return names;
}

SettingsWindowController::SettingsWindowController(Services services, QObject *parent)
    : WindowController(services.ui, QStringLiteral("SettingsWindow.qml"), QStringLiteral("Settings shown"), parent)
    , m_services(std::move(services))
{
}

void SettingsWindowController::makeModels()
{
    if (m_general)
        return;
    m_general = new GeneralSettingsModel(m_services.settings, this);
    m_reminders = new ReminderSettingsModel(m_services.settings, m_services.sounds, this);
    m_hotkeys =
        new HotkeySettingsModel(m_services.settings, m_services.hotkeyBackend ? m_services.hotkeyBackend() : QString(),
                                m_services.reloadHotkeys, this);
    m_permissions = new PermissionsModel(m_services.probePermissions, this);
    m_about = new AboutModel(m_services.version, m_services.dataFolder, this);
    m_routines = new RoutinesModel(m_services.routines, this);
    m_sync = new SyncSettingsModel(m_services.sync, m_services.discoverCalendars, this);
}

void SettingsWindowController::show(const QString &tab)
{
    makeModels();
    const bool made = makeWindow([this] {
        return QVariantMap{{QStringLiteral("general"), QVariant::fromValue<QObject *>(m_general)},
                           {QStringLiteral("reminders"), QVariant::fromValue<QObject *>(m_reminders)},
                           {QStringLiteral("hotkeys"), QVariant::fromValue<QObject *>(m_hotkeys)},
                           {QStringLiteral("routines"), QVariant::fromValue<QObject *>(m_routines)},
                           {QStringLiteral("sync"), QVariant::fromValue<QObject *>(m_sync)},
                           {QStringLiteral("permissions"), QVariant::fromValue<QObject *>(m_permissions)},
                           {QStringLiteral("about"), QVariant::fromValue<QObject *>(m_about)}};
    });
    if (!made)
        return;
    m_routines->refresh();
    m_permissions->refresh();
    const int index = tabNames().indexOf(tab);
    if (index >= 0)
        window()->setProperty("currentTab", index);
    bringForward([this] { QMetaObject::invokeMethod(window(), "focusTabs"); });
}

void SettingsWindowController::retranslate()
{
    if (m_routines)
        m_routines->retranslate();
    if (m_general)
        m_general->retranslate();
    if (m_hotkeys)
        m_hotkeys->retranslate();
    if (m_permissions)
        m_permissions->refresh();
    if (m_sync)
        m_sync->retranslate();
}

} // namespace tarnwell
