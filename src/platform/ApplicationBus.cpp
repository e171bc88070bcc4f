#include "ApplicationBus.h"

#include "kit/Logging.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>

#include <utility>

namespace tarnwell::platform {

namespace {

class ApplicationAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
public:
    explicit ApplicationAdaptor(ApplicationBus *bus)
        : QDBusAbstractAdaptor(bus)
        , m_bus(bus)
    {
    }

public Q_SLOTS:
    void Activate(const QVariantMap &platformData)
    {
        Q_UNUSED(platformData)
        Q_EMIT m_bus->activateRequested();
    }
    void Open(const QStringList &uris, const QVariantMap &platformData)
    {
        Q_UNUSED(platformData)
        Q_EMIT m_bus->openRequested(uris);
    }
    void ActivateAction(const QString &actionName, const QVariantList &parameter, const QVariantMap &platformData)
    {
        Q_UNUSED(platformData)
        Q_EMIT m_bus->actionRequested(actionName, parameter);
    }

private:
    ApplicationBus *m_bus;
};

} // namespace

ApplicationBus::ApplicationBus(QDBusConnection connection, QObject *parent)
    : QObject(parent)
    , m_connection(std::move(connection))
{
}

ApplicationBus::~ApplicationBus()
{
    if (m_role == Role::primary) {
        m_connection.unregisterObject(QString::fromLatin1(Constants::objectPath));
        m_connection.unregisterService(QString::fromLatin1(Constants::serviceName));
    }
}

ApplicationBus::Role ApplicationBus::claim(const QDBusConnection &connection)
{
    m_connection = connection;
    m_role = Role::alone;
    return claim();
}

ApplicationBus::Role ApplicationBus::claim()
{
    QDBusConnection &bus = m_connection;
    if (!bus.isConnected()) {
        qCWarning(lcServices).noquote()
            << QStringLiteral("No D-Bus session bus (%1); running alone without single-instance hand-over")
                   .arg(bus.lastError().message());
        return m_role = Role::alone;
    }
    if (!std::exchange(m_adaptorMade, true))
        new ApplicationAdaptor(this);
    bus.registerObject(QString::fromLatin1(Constants::objectPath), this);
    const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply = bus.interface()->registerService(
        QString::fromLatin1(Constants::serviceName), QDBusConnectionInterface::DontQueueService,
        QDBusConnectionInterface::DontAllowReplacement);
    if (!reply.isValid()) {
        qCWarning(lcServices).noquote() << QStringLiteral("Could not ask for the name %1 (%2); running alone")
                                               .arg(QString::fromLatin1(Constants::serviceName),
                                                    reply.error().message());
        return m_role = Role::alone;
    }
    if (reply.value() == QDBusConnectionInterface::ServiceRegistered)
        return m_role = Role::primary;
    bus.unregisterObject(QString::fromLatin1(Constants::objectPath));
    return m_role = Role::secondary;
}

bool ApplicationBus::handOver(const QStringList &links)
{
    QDBusMessage call;
    if (links.isEmpty()) {
        call = QDBusMessage::createMethodCall(
            QString::fromLatin1(Constants::serviceName), QString::fromLatin1(Constants::objectPath),
            QString::fromLatin1(Constants::interfaceName), QStringLiteral("Activate"));
        call << QVariantMap();
    } else {
        call = QDBusMessage::createMethodCall(QString::fromLatin1(Constants::serviceName),
                                              QString::fromLatin1(Constants::objectPath),
                                              QString::fromLatin1(Constants::interfaceName), QStringLiteral("Open"));
        call << links << QVariantMap();
    }
    const QDBusMessage answer = m_connection.call(call, QDBus::Block, 2000);
    if (answer.type() == QDBusMessage::ErrorMessage) {
        qCWarning(lcServices).noquote()
            << QStringLiteral("The running Tarnwell did not answer: %1").arg(answer.errorMessage());
        return false;
    }
    return true;
}

} // namespace tarnwell::platform

#include "ApplicationBus.moc"
