#include "HotkeyManager.h"

#include "HotkeyParser.h"
#include "kit/Logging.h"
#include "kit/NamedNotifications.h"
#include "settings/AppSettingsStore.h"

namespace tarnwell {

HotkeyManager::HotkeyManager(AppSettingsStore &settings, NamedNotifications &center, GlobalHotkeyBackend *backend,
                             LocalKeyMonitor *localMonitor, QObject *parent)
    : QObject(parent)
    , m_settings(settings)
    , m_center(center)
    , m_backend(nullptr)
    , m_localMonitor(localMonitor)
{
    setBackend(backend);
}

void HotkeyManager::setBackend(GlobalHotkeyBackend *backend)
{
    unregisterAll();
    if (m_backend)
        disconnect(m_backend, nullptr, this, nullptr);
    m_backend = backend;
    if (m_backend) {
        connect(m_backend, &GlobalHotkeyBackend::pressed, this, &HotkeyManager::onPressed);
        connect(m_backend, &GlobalHotkeyBackend::refused, this, &HotkeyManager::onRefused);
    }
}

HotkeyManager::~HotkeyManager() = default;

std::optional<HotkeyConflict> HotkeyManager::reload()
{
    // 1. Both texts must parse and differ; otherwise nothing changes.
    if (auto conflict = HotkeyConflict::check(m_settings.hotkeyTogglePopover(), m_settings.hotkeyQuickAdd())) {
        qCWarning(lcHotkeys).noquote() << QStringLiteral("Hotkey conflict detected: %1").arg(conflict->description());
        return conflict;
    }
    // 2. Let go of everything.
    unregisterAll();
    // 3. Register both, the popover first.
    QList<HotkeyBinding> bindings;
    registerAction(Action::togglePopover, m_settings.hotkeyTogglePopover(), bindings);
    registerAction(Action::quickAdd, m_settings.hotkeyQuickAdd(), bindings);
    if (m_backend) {
        m_backend->setBindings(bindings);
        for (const HotkeyBinding &binding : std::as_const(bindings)) {
            if (!m_globalHotkeys.contains(binding.action))
                continue; // refused at once, and logged as such
            const QString line = m_backend->answersLater()
                ? QStringLiteral("Asked for global hotkey %1 for action %2 through %3")
                : QStringLiteral("Registered global hotkey %1 for action %2 through %3");
            qCInfo(lcHotkeys).noquote() << line.arg(binding.raw, rawValue(binding.action), m_backend->name());
        }
    } else {
        m_globalHotkeys.clear();
        qCWarning(lcHotkeys).noquote()
            << QStringLiteral("No global hotkey service on this desktop; bind desktop shortcuts to \"%1\" and \"%2\"")
                   .arg(desktopShortcutCommand(Action::quickAdd), desktopShortcutCommand(Action::togglePopover));
    }
    // 4. The fixed shortcuts inside the popover.
    if (m_localMonitor) {
        m_localMonitor->install();
        m_localMonitorInstalled = true;
    }
    return std::nullopt;
}

void HotkeyManager::registerAction(Action action, const QString &text, QList<HotkeyBinding> &bindings)
{
    const auto combo = HotkeyParser::parse(text);
    if (!combo) {
        qCCritical(lcHotkeys).noquote()
            << QStringLiteral("Could not parse global hotkey %1 for action %2").arg(text, rawValue(action));
        return;
    }
    bindings.append({action, *combo, text});
    m_globalHotkeys.insert(action, *combo);
    m_texts.insert(action, text);
}

void HotkeyManager::unregisterAll()
{
    if (m_backend && !m_globalHotkeys.isEmpty())
        m_backend->setBindings({});
    m_globalHotkeys.clear();
    m_texts.clear();
    if (m_localMonitor && m_localMonitorInstalled)
        m_localMonitor->remove();
    m_localMonitorInstalled = false;
}

void HotkeyManager::onPressed(Action action)
{
    if (!m_globalHotkeys.contains(action))
        return;
    qCInfo(lcHotkeys).noquote() << QStringLiteral("Global hotkey fired: %1").arg(rawValue(action));
    m_center.post(QString::fromLatin1(Constants::firedNotification),
                  {{QString::fromLatin1(Constants::actionKey), rawValue(action)}});
}

void HotkeyManager::onRefused(Action action)
{
    if (!m_globalHotkeys.contains(action))
        return;
    const QString text = m_texts.value(action);
    qCWarning(lcHotkeys).noquote()
        << QStringLiteral("Global hotkey %1 for action %2 is already taken by the desktop or another program")
               .arg(text, rawValue(action));
    m_globalHotkeys.remove(action);
    m_texts.remove(action);
    Q_EMIT takenBySystem(action, RecordedHotkey::fromRaw(text));
}

QString HotkeyManager::takenMessage(Action action, const RecordedHotkey &hotkey)
{
    //: Shown when the desktop or another program already uses the key combination of a global hot key. %1 is the combination ("Super+Shift+J"), %2 what it was meant to do ("Quick add a task")
    //% "%1 is already used by the desktop or another program, so it cannot be the hot key for “%2”. Choose another combination, or free it in the desktop's keyboard settings."
    return qtTrId("error.hotkey.takenBySystem").arg(hotkey.display, actionTitle(action));
}

QString HotkeyManager::desktopShortcutCommand(Action action)
{
    switch (action) {
    case Action::quickAdd:
        return QStringLiteral("tarnwell tarnwell://quickadd");
    case Action::togglePopover:
        return QStringLiteral("tarnwell --action toggle-popover");
    default:
        return {};
    }
}

} // namespace tarnwell
