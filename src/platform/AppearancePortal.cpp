#include "AppearancePortal.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>

namespace tarnwell::platform {

namespace {
const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");
} // namespace

AppearancePortal::AppearancePortal(QObject *parent)
    : QObject(parent)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    bus.connect(portalService, portalPath, settingsInterface, QStringLiteral("SettingChanged"), this,
                SLOT(onSettingChanged(QString, QString, QDBusVariant)));
    QDBusMessage read =
        QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface, QStringLiteral("Read"));
    read << appearanceGroup << colorScheme;
    const QDBusMessage reply = bus.call(read, QDBus::Block, 500);
    if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty())
        m_scheme = fromValue(reply.arguments().first());
}

AppearancePortal::Scheme AppearancePortal::fromValue(const QVariant &value)
{
    // Read answers a variant inside a variant; SettingChanged a plain one.
    QVariant v = value;
    while (v.canConvert<QDBusVariant>() && v.userType() == qMetaTypeId<QDBusVariant>())
        v = v.value<QDBusVariant>().variant();
    switch (v.toUInt()) {
    case 1:
        return Scheme::dark;
    case 2:
        return Scheme::light;
    default:
        return Scheme::noPreference;
    }
}

void AppearancePortal::onSettingChanged(const QString &group, const QString &key, const QDBusVariant &value)
{
    if (group != appearanceGroup || key != colorScheme)
        return;
    const Scheme next = fromValue(value.variant());
    if (next == m_scheme)
        return;
    m_scheme = next;
    Q_EMIT schemeChanged(next);
}

} // namespace tarnwell::platform
