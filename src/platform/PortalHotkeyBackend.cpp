#include "PortalHotkeyBackend.h"

#include "kit/Logging.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCall>
#include <QDBusVariant>

namespace {

// One entry of the portal's a(sa{sv}) shortcut lists.
struct PortalShortcut
{
    QString id;
    QVariantMap properties;
};

QDBusArgument &operator<<(QDBusArgument &argument, const PortalShortcut &shortcut)
{
    argument.beginStructure();
    argument << shortcut.id << shortcut.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, PortalShortcut &shortcut)
{
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.properties;
    argument.endStructure();
    return argument;
}

} // namespace

Q_DECLARE_METATYPE(PortalShortcut)

namespace tarnwell::platform {

namespace {
const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString shortcutsInterface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
const QString requestInterface = QStringLiteral("org.freedesktop.portal.Request");
const QString sessionInterface = QStringLiteral("org.freedesktop.portal.Session");

QString keyName(HotkeyKey key)
{
    if (key >= HotkeyKey::a && key <= HotkeyKey::z)
        return QString(QChar(u'a' + (int(key) - int(HotkeyKey::a))));
    if (key >= HotkeyKey::digit0 && key <= HotkeyKey::digit9)
        return QString(QChar(u'0' + (int(key) - int(HotkeyKey::digit0))));
    switch (key) {
    case HotkeyKey::returnKey:
        return QStringLiteral("Return");
    case HotkeyKey::escape:
        return QStringLiteral("Escape");
    case HotkeyKey::tab:
        return QStringLiteral("Tab");
    case HotkeyKey::space:
        return QStringLiteral("space");
    case HotkeyKey::deleteKey:
        return QStringLiteral("Delete");
    case HotkeyKey::up:
        return QStringLiteral("Up");
    case HotkeyKey::down:
        return QStringLiteral("Down");
    case HotkeyKey::left:
        return QStringLiteral("Left");
    case HotkeyKey::right:
        return QStringLiteral("Right");
    default:
        return {};
    }
}
} // namespace

uint PortalHotkeyBackend::version(const QDBusConnection &bus)
{
    if (!bus.isConnected())
        return 0;
    QDBusMessage get = QDBusMessage::createMethodCall(
        portalService, portalPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    get << shortcutsInterface << QStringLiteral("version");
    const QDBusMessage reply = bus.call(get, QDBus::Block, 1000);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return 0;
    return reply.arguments().first().value<QDBusVariant>().variant().toUInt();
}

PortalHotkeyBackend::PortalHotkeyBackend(const QDBusConnection &bus, QObject *parent)
    : GlobalHotkeyBackend(parent)
    , m_bus(bus)
{
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();
    m_bus.connect(portalService, portalPath, shortcutsInterface, QStringLiteral("Activated"), this,
                  SLOT(onActivated(QDBusMessage)));
}

PortalHotkeyBackend::~PortalHotkeyBackend()
{
    closeSession();
}

QString PortalHotkeyBackend::preferredTrigger(const HotkeyCombo &combo)
{
    QStringList parts;
    if (combo.modifiers & HotkeyModifier::control)
        parts << QStringLiteral("CTRL");
    if (combo.modifiers & HotkeyModifier::option)
        parts << QStringLiteral("ALT");
    if (combo.modifiers & HotkeyModifier::shift)
        parts << QStringLiteral("SHIFT");
    if (combo.modifiers & HotkeyModifier::command)
        parts << QStringLiteral("LOGO");
    parts << keyName(combo.key);
    return parts.join(u'+');
}

QString PortalHotkeyBackend::nextRequestPath(QString *token)
{
    *token = QStringLiteral("tarnwell%1").arg(++m_requests);
    QString sender = m_bus.baseService().mid(1);
    sender.replace(u'.', u'_');
    return portalPath + QStringLiteral("/request/") + sender + u'/' + *token;
}

void PortalHotkeyBackend::setBindings(const QList<HotkeyBinding> &bindings)
{
    if (!m_pendingRequest.isEmpty()) {
        // An answer to an earlier request no longer matters.
        m_bus.disconnect(portalService, m_pendingRequest, requestInterface, QStringLiteral("Response"), this,
                         SLOT(onSessionCreated(uint, QVariantMap)));
        m_bus.disconnect(portalService, m_pendingRequest, requestInterface, QStringLiteral("Response"), this,
                         SLOT(onBound(uint, QVariantMap)));
        m_pendingRequest.clear();
    }
    closeSession();
    m_bindings = bindings;
    ++m_generation;
    if (bindings.isEmpty())
        return;
    QString token;
    m_pendingRequest = nextRequestPath(&token);
    // Listen before asking, so a quick answer is not missed.
    m_bus.connect(portalService, m_pendingRequest, requestInterface, QStringLiteral("Response"), this,
                  SLOT(onSessionCreated(uint, QVariantMap)));
    QDBusMessage create =
        QDBusMessage::createMethodCall(portalService, portalPath, shortcutsInterface, QStringLiteral("CreateSession"));
    create << QVariantMap{
        {QStringLiteral("handle_token"), token},
        {QStringLiteral("session_handle_token"), QStringLiteral("tarnwell_session%1").arg(m_generation)}};
    m_bus.asyncCall(create);
}

void PortalHotkeyBackend::onSessionCreated(uint response, const QVariantMap &results)
{
    m_bus.disconnect(portalService, m_pendingRequest, requestInterface, QStringLiteral("Response"), this,
                     SLOT(onSessionCreated(uint, QVariantMap)));
    if (response != 0) {
        qCWarning(lcHotkeys).noquote() << QStringLiteral("The shortcuts portal refused a session (%1)").arg(response);
        refuseAll();
        return;
    }
    const QVariant handle = results.value(QStringLiteral("session_handle"));
    m_session = handle.canConvert<QDBusObjectPath>() && handle.userType() == qMetaTypeId<QDBusObjectPath>()
        ? handle.value<QDBusObjectPath>().path()
        : handle.toString();
    bind();
}

void PortalHotkeyBackend::bind()
{
    QList<PortalShortcut> shortcuts;
    for (const HotkeyBinding &binding : std::as_const(m_bindings))
        shortcuts.append({rawValue(binding.action),
                          {{QStringLiteral("description"), actionTitle(binding.action)},
                           {QStringLiteral("preferred_trigger"), preferredTrigger(binding.combo)}}});
    QString token;
    m_pendingRequest = nextRequestPath(&token);
    m_bus.connect(portalService, m_pendingRequest, requestInterface, QStringLiteral("Response"), this,
                  SLOT(onBound(uint, QVariantMap)));
    QDBusMessage call =
        QDBusMessage::createMethodCall(portalService, portalPath, shortcutsInterface, QStringLiteral("BindShortcuts"));
    call << QVariant::fromValue(QDBusObjectPath(m_session)) << QVariant::fromValue(shortcuts) << QString()
         << QVariantMap{{QStringLiteral("handle_token"), token}};
    m_bus.asyncCall(call);
}

void PortalHotkeyBackend::onBound(uint response, const QVariantMap &results)
{
    m_bus.disconnect(portalService, m_pendingRequest, requestInterface, QStringLiteral("Response"), this,
                     SLOT(onBound(uint, QVariantMap)));
    if (response != 0) {
        qCWarning(lcHotkeys).noquote()
            << QStringLiteral("The shortcuts portal did not bind our shortcuts (%1)").arg(response);
        refuseAll();
        return;
    }
    QList<PortalShortcut> bound;
    const QVariant list = results.value(QStringLiteral("shortcuts"));
    if (list.userType() == qMetaTypeId<QDBusArgument>())
        list.value<QDBusArgument>() >> bound;
    for (const HotkeyBinding &binding : std::as_const(m_bindings)) {
        const auto found = std::find_if(bound.cbegin(), bound.cend(),
                                        [&](const PortalShortcut &s) { return s.id == rawValue(binding.action); });
        const QString trigger = found == bound.cend()
            ? QString()
            : found->properties.value(QStringLiteral("trigger_description")).toString();
        if (trigger.isEmpty()) {
            // The desktop kept the shortcut without a key: ours is taken there.
            Q_EMIT refused(binding.action);
            continue;
        }
        qCInfo(lcHotkeys).noquote()
            << QStringLiteral("The shortcuts portal bound %1 to %2").arg(rawValue(binding.action), trigger);
    }
}

void PortalHotkeyBackend::onActivated(const QDBusMessage &message)
{
    const QVariantList arguments = message.arguments();
    if (arguments.size() < 2 || arguments[0].value<QDBusObjectPath>().path() != m_session)
        return;
    if (const auto action = hotkeyActionFromRaw(arguments[1].toString()))
        Q_EMIT pressed(*action);
}

void PortalHotkeyBackend::refuseAll()
{
    for (const HotkeyBinding &binding : std::as_const(m_bindings))
        Q_EMIT refused(binding.action);
}

void PortalHotkeyBackend::closeSession()
{
    if (m_session.isEmpty())
        return;
    m_bus.call(QDBusMessage::createMethodCall(portalService, m_session, sessionInterface, QStringLiteral("Close")),
               QDBus::Block, 1000);
    m_session.clear();
}

} // namespace tarnwell::platform
