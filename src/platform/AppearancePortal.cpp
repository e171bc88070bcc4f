#include "AppearancePortal.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>

#include <utility>

namespace tarnwell::platform {

namespace {
const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString gnomeGroup = QStringLiteral("org.gnome.desktop.interface");
const QString kdeGroup = QStringLiteral("org.kde.kdeglobals.KDE");
const QString kdeGeneralGroup = QStringLiteral("org.kde.kdeglobals.General");
const QString colorScheme = QStringLiteral("color-scheme");

// Values come as variants, in some answers wrapped once more; a structure
// (the accent's three doubles) is read out at once into a list, as a
// QDBusArgument can be read only once.
QVariant plain(QVariant v)
{
    while (v.userType() == qMetaTypeId<QDBusVariant>())
        v = v.value<QDBusVariant>().variant();
    if (v.userType() != qMetaTypeId<QDBusArgument>())
        return v;
    const auto argument = v.value<QDBusArgument>();
    if (argument.currentType() != QDBusArgument::StructureType)
        return {};
    QVariantList fields;
    argument.beginStructure();
    while (!argument.atEnd()) {
        double d = 0;
        argument >> d;
        fields << d;
    }
    argument.endStructure();
    return fields;
}

} // namespace

QStringList AppearancePortal::groups()
{
    return {appearanceGroup, gnomeGroup, kdeGroup, kdeGeneralGroup};
}

AppearancePortal::AppearancePortal(QObject *parent)
    : AppearancePortal(QDBusConnection::sessionBus(), parent)
{
}

AppearancePortal::AppearancePortal(QDBusConnection bus, QObject *parent)
    : QObject(parent)
    , m_bus(std::move(bus))
{
    bind();
}

void AppearancePortal::rebind(QDBusConnection bus)
{
    m_bus.disconnect(portalService, portalPath, settingsInterface, QStringLiteral("SettingChanged"), this,
                     SLOT(onSettingChanged(QDBusMessage)));
    const QHash<QString, QVariantMap> before = std::exchange(m_settings, {});
    const Scheme scheme = std::exchange(m_scheme, Scheme::noPreference);
    m_bus = std::move(bus);
    bind();
    if (m_scheme != scheme)
        Q_EMIT schemeChanged(m_scheme);
    if (before != m_settings)
        Q_EMIT appearanceChanged();
}

void AppearancePortal::bind()
{
    QDBusConnection &bus = m_bus;
    if (!bus.isConnected())
        return;
    bus.connect(portalService, portalPath, settingsInterface, QStringLiteral("SettingChanged"), this,
                SLOT(onSettingChanged(QDBusMessage)));
    QDBusMessage read =
        QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface, QStringLiteral("ReadAll"));
    read << groups();
    const QDBusMessage reply = bus.call(read, QDBus::Block, 500);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return;
    // a{sa{sv}}
    const auto outer = reply.arguments().first().value<QDBusArgument>();
    outer.beginMap();
    while (!outer.atEnd()) {
        QString group;
        QVariantMap keys;
        outer.beginMapEntry();
        outer >> group >> keys;
        outer.endMapEntry();
        for (auto it = keys.begin(); it != keys.end(); ++it)
            it.value() = plain(it.value());
        m_settings.insert(group, keys);
    }
    outer.endMap();
    m_scheme = fromValue(value(appearanceGroup, colorScheme));
}

QVariant AppearancePortal::value(const QString &group, const QString &key) const
{
    return m_settings.value(group).value(key);
}

AppearancePortal::Scheme AppearancePortal::fromValue(const QVariant &value)
{
    switch (value.toUInt()) {
    case 1:
        return Scheme::dark;
    case 2:
        return Scheme::light;
    default:
        return Scheme::noPreference;
    }
}

std::optional<QColor> AppearancePortal::accent() const
{
    const QVariantList rgb = value(appearanceGroup, QStringLiteral("accent-color")).toList();
    if (rgb.size() != 3)
        return std::nullopt;
    for (const QVariant &c : rgb)
        if (!(c.toDouble() >= 0 && c.toDouble() <= 1))
            return std::nullopt;
    return QColor::fromRgbF(rgb[0].toFloat(), rgb[1].toFloat(), rgb[2].toFloat());
}

bool AppearancePortal::reducedMotion() const
{
    const QVariant freedesktop = value(appearanceGroup, QStringLiteral("reduced-motion"));
    if (freedesktop.isValid())
        return freedesktop.toUInt() == 1;
    const QVariant gnome = value(gnomeGroup, QStringLiteral("enable-animations"));
    if (gnome.isValid())
        return !gnome.toBool();
    const QVariant kde = value(kdeGroup, QStringLiteral("AnimationDurationFactor"));
    return kde.isValid() && kde.toDouble() <= 0;
}

std::optional<QFont> AppearancePortal::font() const
{
    // GNOME: "Family Name 11" (a Pango description; the size comes last).
    const QString gnome = value(gnomeGroup, QStringLiteral("font-name")).toString().trimmed();
    if (!gnome.isEmpty()) {
        const qsizetype space = gnome.lastIndexOf(u' ');
        bool ok = false;
        const double points = space > 0 ? gnome.mid(space + 1).toDouble(&ok) : 0;
        QFont f(ok ? gnome.left(space).trimmed() : gnome);
        if (ok && points > 0)
            f.setPointSizeF(points);
        return f;
    }
    const QString kde = value(kdeGeneralGroup, QStringLiteral("font")).toString();
    QFont f;
    if (!kde.isEmpty() && f.fromString(kde))
        return f;
    return std::nullopt;
}

void AppearancePortal::onSettingChanged(const QDBusMessage &message)
{
    // (ssv): group, key, value.
    const QVariantList args = message.arguments();
    if (args.size() < 3)
        return;
    const QString group = args.at(0).toString();
    const QString key = args.at(1).toString();
    if (!groups().contains(group))
        return;
    m_settings[group].insert(key, plain(args.at(2)));
    if (group == appearanceGroup && key == colorScheme) {
        const Scheme next = fromValue(m_settings[group].value(key));
        if (next != m_scheme) {
            m_scheme = next;
            Q_EMIT schemeChanged(next);
        }
        return;
    }
    Q_EMIT appearanceChanged();
}

} // namespace tarnwell::platform
