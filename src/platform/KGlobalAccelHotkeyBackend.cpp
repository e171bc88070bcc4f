#include "KGlobalAccelHotkeyBackend.h"

#include "kit/Logging.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusReply>

namespace tarnwell::platform {

namespace {
const QString service = QStringLiteral("org.kde.kglobalaccel");
const QString daemonPath = QStringLiteral("/kglobalaccel");
const QString daemonInterface = QStringLiteral("org.kde.KGlobalAccel");
const QString componentInterface = QStringLiteral("org.kde.kglobalaccel.Component");
constexpr uint setPresent = 0x2;
constexpr uint noAutoloading = 0x4;

} // namespace

bool KGlobalAccelHotkeyBackend::available(const QDBusConnection &bus)
{
    return bus.isConnected() && bus.interface() && bus.interface()->isServiceRegistered(service).value();
}

KGlobalAccelHotkeyBackend::KGlobalAccelHotkeyBackend(const QDBusConnection &bus, QObject *parent)
    : GlobalHotkeyBackend(parent)
    , m_bus(bus)
{
    qDBusRegisterMetaType<QList<int>>();
}

KGlobalAccelHotkeyBackend::~KGlobalAccelHotkeyBackend()
{
    setBindings({});
}

int KGlobalAccelHotkeyBackend::qtKeyCode(const HotkeyCombo &combo)
{
    int code = 0;
    const HotkeyKey key = combo.key;
    if (key >= HotkeyKey::a && key <= HotkeyKey::z)
        code = Qt::Key_A + (int(key) - int(HotkeyKey::a));
    else if (key >= HotkeyKey::digit0 && key <= HotkeyKey::digit9)
        code = Qt::Key_0 + (int(key) - int(HotkeyKey::digit0));
    else {
        switch (key) {
        case HotkeyKey::returnKey:
            code = Qt::Key_Return;
            break;
        case HotkeyKey::escape:
            code = Qt::Key_Escape;
            break;
        case HotkeyKey::tab:
            code = Qt::Key_Tab;
            break;
        case HotkeyKey::space:
            code = Qt::Key_Space;
            break;
        case HotkeyKey::deleteKey:
            code = Qt::Key_Delete;
            break;
        case HotkeyKey::up:
            code = Qt::Key_Up;
            break;
        case HotkeyKey::down:
            code = Qt::Key_Down;
            break;
        case HotkeyKey::left:
            code = Qt::Key_Left;
            break;
        case HotkeyKey::right:
            code = Qt::Key_Right;
            break;
        default:
            break;
        }
    }
    if (combo.modifiers & HotkeyModifier::command)
        code |= Qt::META;
    if (combo.modifiers & HotkeyModifier::shift)
        code |= Qt::SHIFT;
    if (combo.modifiers & HotkeyModifier::option)
        code |= Qt::ALT;
    if (combo.modifiers & HotkeyModifier::control)
        code |= Qt::CTRL;
    return code;
}

QStringList KGlobalAccelHotkeyBackend::actionId(HotkeyAction action) const
{
    //: Name of the program's group in KDE's shortcut settings
    //% "Tarnwell"
    return {QString::fromLatin1(Constants::component), rawValue(action), qtTrId("hotkey.kde.component"),
            actionTitle(action)};
}

void KGlobalAccelHotkeyBackend::setBindings(const QList<HotkeyBinding> &bindings)
{
    for (const HotkeyAction action : std::as_const(m_registered)) {
        QDBusMessage call =
            QDBusMessage::createMethodCall(service, daemonPath, daemonInterface, QStringLiteral("unregister"));
        call << QString::fromLatin1(Constants::component) << rawValue(action);
        m_bus.call(call, QDBus::Block, 2000);
    }
    m_registered.clear();

    QList<HotkeyAction> refusedActions;
    for (const HotkeyBinding &binding : bindings) {
        QDBusMessage doRegister =
            QDBusMessage::createMethodCall(service, daemonPath, daemonInterface, QStringLiteral("doRegister"));
        doRegister << actionId(binding.action);
        m_bus.call(doRegister, QDBus::Block, 2000);
        const int key = qtKeyCode(binding.combo);
        QDBusMessage set =
            QDBusMessage::createMethodCall(service, daemonPath, daemonInterface, QStringLiteral("setShortcut"));
        set << actionId(binding.action) << QVariant::fromValue(QList<int>{key}) << (setPresent | noAutoloading);
        const QDBusReply<QList<int>> given = m_bus.call(set, QDBus::Block, 2000);
        if (!given.isValid()) {
            qCWarning(lcHotkeys).noquote()
                << QStringLiteral("kglobalaccel did not set %1: %2").arg(binding.raw, given.error().message());
            refusedActions.append(binding.action);
            continue;
        }
        m_registered.append(binding.action);
        if (!given.value().contains(key))
            refusedActions.append(binding.action);
    }
    if (!m_registered.isEmpty())
        listen();
    for (const HotkeyAction action : std::as_const(refusedActions))
        Q_EMIT refused(action);
}

void KGlobalAccelHotkeyBackend::listen()
{
    if (!m_componentPath.isEmpty())
        return;
    QDBusMessage get =
        QDBusMessage::createMethodCall(service, daemonPath, daemonInterface, QStringLiteral("getComponent"));
    get << QString::fromLatin1(Constants::component);
    const QDBusReply<QDBusObjectPath> path = m_bus.call(get, QDBus::Block, 2000);
    if (!path.isValid()) {
        qCWarning(lcHotkeys).noquote()
            << QStringLiteral("kglobalaccel has no component for us: %1").arg(path.error().message());
        return;
    }
    m_componentPath = path.value().path();
    m_bus.connect(service, m_componentPath, componentInterface, QStringLiteral("globalShortcutPressed"), this,
                  SLOT(onPressed(QString, QString, qlonglong)));
}

void KGlobalAccelHotkeyBackend::onPressed(const QString &component, const QString &shortcut, qlonglong)
{
    if (component != QLatin1String(Constants::component))
        return;
    if (const auto action = hotkeyActionFromRaw(shortcut); action && m_registered.contains(*action))
        Q_EMIT pressed(*action);
}

} // namespace tarnwell::platform
