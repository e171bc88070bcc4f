// A program's windows as a screen reader meets them: the accessible tree read
// over AT-SPI from the accessibility bus (tests registered with A11Y).
#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QList>
#include <QRect>
#include <QStringList>

#include <functional>

struct AtSpiNode
{
    QString role; // AT-SPI role name: "push button", "check box", "list item", ...
    QString name;
    QString description;
    bool showing = false; // on screen: the item and all its ancestors visible (else no children read)
    bool focused = false; // holds the keyboard focus
    QString text; // what a text field holds
    QRect extents; // where a push button is on screen
    QList<AtSpiNode> children;

    // Depth first: every node below and including this one for which `pick` holds.
    QList<const AtSpiNode *> find(const std::function<bool(const AtSpiNode &)> &pick) const
    {
        QList<const AtSpiNode *> out;
        if (pick(*this))
            out << this;
        for (const AtSpiNode &child : children)
            out << child.find(pick);
        return out;
    }
    bool isField() const { return role == QLatin1String("text") || role == QLatin1String("entry"); }
    // The first node on screen for which `pick` holds, or nullptr.
    const AtSpiNode *shown(const std::function<bool(const AtSpiNode &)> &pick) const
    {
        const auto all = find([&](const AtSpiNode &n) { return n.showing && pick(n); });
        return all.isEmpty() ? nullptr : all.first();
    }
    // One line a node on screen, indented by depth: role, name, description,
    // focus, text; for failure messages.
    QString dump(int depth = 0) const
    {
        if (!showing)
            return {};
        QString out = QString(depth * 2, QLatin1Char(' ')) +
            QStringLiteral("[%1] \"%2\"%3%4%5\n")
                .arg(role, name)
                .arg(description.isEmpty() ? QString() : QStringLiteral(" (") + description + QLatin1Char(')'))
                .arg(focused ? QStringLiteral(" focused") : QString())
                .arg(isField() ? QStringLiteral(" text=\"") + text + QLatin1Char('"') : QString());
        for (const AtSpiNode &child : children)
            out += child.dump(depth + 1);
        return out;
    }
    // The names of the nodes on screen.
    QStringList shownNames() const
    {
        QStringList names;
        for (const AtSpiNode *node : find([](const AtSpiNode &n) { return n.showing && !n.name.isEmpty(); }))
            names << node->name;
        return names;
    }
};

class AtSpiTree
{
public:
    AtSpiTree()
    {
        const QDBusMessage reply = QDBusConnection::sessionBus().call(
            QDBusMessage::createMethodCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                           QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress")));
        m_address = reply.arguments().value(0).toString();
        if (!m_address.isEmpty())
            m_bus = QDBusConnection::connectToBus(m_address, QStringLiteral("atspi-reader"));
    }
    ~AtSpiTree() { QDBusConnection::disconnectFromBus(QStringLiteral("atspi-reader")); }
    AtSpiTree(const AtSpiTree &) = delete;
    AtSpiTree &operator=(const AtSpiTree &) = delete;

    bool isConnected() const { return m_bus.isConnected(); }

    // The windows of the program with process id `pid`, once it has
    // registered with the accessibility registry; an empty node before.
    AtSpiNode application(qint64 pid)
    {
        const Ref registry{QStringLiteral("org.a11y.atspi.Registry"),
                           QStringLiteral("/org/a11y/atspi/accessible/root")};
        for (const Ref &app : children(registry)) {
            const QDBusMessage owner =
                m_bus.call(QDBusMessage::createMethodCall(
                               QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                               QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetConnectionUnixProcessID"))
                           << app.service);
            if (owner.arguments().value(0).toLongLong() == pid)
                return node(app, 0, true, true);
        }
        return {};
    }

private:
    struct Ref
    {
        QString service;
        QString path;
    };

    QDBusMessage call(const Ref &ref, const QString &interface, const QString &method, const QVariantList &args = {})
    {
        QDBusMessage m = QDBusMessage::createMethodCall(ref.service, ref.path, interface, method);
        m.setArguments(args);
        return m_bus.call(m, QDBus::Block, 20000);
    }
    QList<Ref> children(const Ref &ref)
    {
        const QDBusMessage reply =
            call(ref, QStringLiteral("org.a11y.atspi.Accessible"), QStringLiteral("GetChildren"));
        QList<Ref> out;
        if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
            return out;
        const QDBusArgument arg = reply.arguments().first().value<QDBusArgument>();
        arg.beginArray();
        while (!arg.atEnd()) {
            QString service;
            QDBusObjectPath path;
            arg.beginStructure();
            arg >> service >> path;
            arg.endStructure();
            out.append({service, path.path()});
        }
        arg.endArray();
        return out;
    }
    AtSpiNode node(const Ref &ref, int depth, bool parentShowing, bool isApplication = false)
    {
        AtSpiNode n;
        // One property at a time: Qt 6.4 answers Properties.GetAll on an
        // accessible by crashing.
        const auto property = [&](const QString &name) {
            return call(ref, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                        {QStringLiteral("org.a11y.atspi.Accessible"), name})
                .arguments()
                .value(0)
                .value<QDBusVariant>()
                .variant()
                .toString();
        };
        n.name = property(QStringLiteral("Name"));
        n.description = property(QStringLiteral("Description"));
        n.role = call(ref, QStringLiteral("org.a11y.atspi.Accessible"), QStringLiteral("GetRoleName"))
                     .arguments()
                     .value(0)
                     .toString();
        const QList<uint> state = qdbus_cast<QList<uint>>(
            call(ref, QStringLiteral("org.a11y.atspi.Accessible"), QStringLiteral("GetState")).arguments().value(0));
        constexpr uint focusedBit = 12; // ATSPI_STATE_FOCUSED
        constexpr uint showingBit = 25; // ATSPI_STATE_SHOWING
        n.focused = !state.isEmpty() && (state.first() & (1u << focusedBit));
        if (n.isField())
            n.text = call(ref, QStringLiteral("org.a11y.atspi.Text"), QStringLiteral("GetText"), {0, -1})
                         .arguments()
                         .value(0)
                         .toString();
        if (n.role == QLatin1String("push button")) {
            const QDBusArgument box =
                call(ref, QStringLiteral("org.a11y.atspi.Component"), QStringLiteral("GetExtents"), {0u})
                    .arguments()
                    .value(0)
                    .value<QDBusArgument>();
            int x = 0, y = 0, w = 0, h = 0;
            box.beginStructure();
            box >> x >> y >> w >> h;
            box.endStructure();
            n.extents = QRect(x, y, w, h);
        }
        // An item of a hidden window is not on screen either.
        n.showing = parentShowing && (isApplication || (!state.isEmpty() && (state.first() & (1u << showingBit))));
        if (n.showing && depth < 64) {
            for (const Ref &child : children(ref))
                n.children << node(child, depth + 1, n.showing);
        }
        return n;
    }

    QString m_address;
    QDBusConnection m_bus{QString()};
};
