#include "DBusMenu.h"

#include "kit/Logging.h"

#include <QDBusAbstractAdaptor>
#include <QGuiApplication>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QSet>
#include <QTimer>

namespace tarnwell::platform {

// --- wire records -----------------------------------------------------------

QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuLayoutItem &item)
{
    argument.beginStructure();
    argument << item.id << item.properties;
    argument.beginArray(qMetaTypeId<QDBusVariant>());
    for (const DBusMenuLayoutItem &child : item.children)
        argument << QDBusVariant(QVariant::fromValue(child));
    argument.endArray();
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuLayoutItem &item)
{
    item = {};
    argument.beginStructure();
    argument >> item.id >> item.properties;
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant wrapped;
        argument >> wrapped;
        DBusMenuLayoutItem child;
        const QVariant value = wrapped.variant();
        if (value.userType() == qMetaTypeId<DBusMenuLayoutItem>())
            child = value.value<DBusMenuLayoutItem>();
        else
            value.value<QDBusArgument>() >> child;
        item.children.append(child);
    }
    argument.endArray();
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuItemProperties &item)
{
    argument.beginStructure();
    argument << item.id << item.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuItemProperties &item)
{
    argument.beginStructure();
    argument >> item.id >> item.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuItemKeys &item)
{
    argument.beginStructure();
    argument << item.id << item.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuItemKeys &item)
{
    argument.beginStructure();
    argument >> item.id >> item.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuEvent &event)
{
    argument.beginStructure();
    argument << event.id << event.eventId << event.data << event.timestamp;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuEvent &event)
{
    argument.beginStructure();
    argument >> event.id >> event.eventId >> event.data >> event.timestamp;
    argument.endStructure();
    return argument;
}

void registerDBusMenuTypes()
{
    static const bool done = [] {
        qDBusRegisterMetaType<DBusMenuLayoutItem>();
        qDBusRegisterMetaType<DBusMenuItemProperties>();
        qDBusRegisterMetaType<DBusMenuItemPropertiesList>();
        qDBusRegisterMetaType<DBusMenuItemKeys>();
        qDBusRegisterMetaType<DBusMenuItemKeysList>();
        qDBusRegisterMetaType<DBusMenuEvent>();
        qDBusRegisterMetaType<DBusMenuEventList>();
        return true;
    }();
    Q_UNUSED(done)
}

// --- the exported interface -------------------------------------------------

namespace {
const QString unknownIdError = QStringLiteral("com.canonical.dbusmenu.Error.UnknownId");
} // namespace

// QtDBus finds the wire types by name: parameters spell them out in full.
class DBusMenuAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath)
public:
    explicit DBusMenuAdaptor(DBusMenu *menu)
        : QDBusAbstractAdaptor(menu)
        , m_menu(menu)
    {
    }

    uint version() const { return DBusMenu::Constants::version; }
    QString textDirection() const
    {
        const auto *gui = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
        return gui && gui->isRightToLeft() ? QStringLiteral("rtl") : QStringLiteral("ltr");
    }
    QString status() const { return QStringLiteral("normal"); }
    QStringList iconThemePath() const { return {}; }

public Q_SLOTS:
    uint GetLayout(int parentId, int recursionDepth, const QStringList &propertyNames,
                   tarnwell::platform::DBusMenuLayoutItem &layout)
    {
        if (!m_menu->contains(parentId)) {
            refuse(parentId);
            return 0;
        }
        layout = m_menu->layout(parentId, recursionDepth, propertyNames);
        return m_menu->revision();
    }

    QList<tarnwell::platform::DBusMenuItemProperties> GetGroupProperties(const QList<int> &ids,
                                                                         const QStringList &propertyNames)
    {
        DBusMenuItemPropertiesList result;
        for (int id : ids) {
            if (m_menu->contains(id))
                result.append({id, m_menu->propertiesOf(id, propertyNames)});
        }
        return result;
    }

    QDBusVariant GetProperty(int id, const QString &name)
    {
        if (!m_menu->contains(id)) {
            refuse(id);
            return {};
        }
        return QDBusVariant(m_menu->propertiesOf(id, {name}).value(name));
    }

    void Event(int id, const QString &eventId, const QDBusVariant &data, uint timestamp)
    {
        Q_UNUSED(data)
        Q_UNUSED(timestamp)
        if (!m_menu->handleEvent(id, eventId))
            refuse(id);
    }

    QList<int> EventGroup(const QList<tarnwell::platform::DBusMenuEvent> &events)
    {
        QList<int> idErrors;
        for (const DBusMenuEvent &event : events) {
            if (!m_menu->handleEvent(event.id, event.eventId))
                idErrors.append(event.id);
        }
        if (!events.isEmpty() && idErrors.size() == events.size() && m_menu->calledFromDBus())
            m_menu->sendErrorReply(unknownIdError, QStringLiteral("None of the entries exists"));
        return idErrors;
    }

    bool AboutToShow(int id)
    {
        if (!m_menu->contains(id)) {
            refuse(id);
            return false;
        }
        // Only the root has children.
        return id == 0 && m_menu->prepareToShow();
    }

    QList<int> AboutToShowGroup(const QList<int> &ids, QList<int> &idErrors)
    {
        QList<int> updatesNeeded;
        idErrors.clear();
        for (int id : ids) {
            if (!m_menu->contains(id))
                idErrors.append(id);
            else if (id == 0 && m_menu->prepareToShow())
                updatesNeeded.append(id);
        }
        return updatesNeeded;
    }

Q_SIGNALS:
    void ItemsPropertiesUpdated(const QList<tarnwell::platform::DBusMenuItemProperties> &updatedProps,
                                const QList<tarnwell::platform::DBusMenuItemKeys> &removedProps);
    void LayoutUpdated(uint revision, int parent);
    void ItemActivationRequested(int id, uint timestamp);

private:
    // Calls reach the menu object's context, not the adaptor's.
    void refuse(int id)
    {
        if (m_menu->calledFromDBus())
            m_menu->sendErrorReply(unknownIdError, QStringLiteral("No menu entry with id %1").arg(id));
    }

    DBusMenu *m_menu;
};

// --- the menu ---------------------------------------------------------------

DBusMenu::DBusMenu(QObject *parent)
    : QObject(parent)
{
    registerDBusMenuTypes();
    m_adaptor = new DBusMenuAdaptor(this);
}

DBusMenu::~DBusMenu()
{
    if (m_connection)
        m_connection->unregisterObject(m_path);
}

bool DBusMenu::exportOn(const QDBusConnection &connection, const QString &path)
{
    if (m_connection) {
        if (m_connection->name() == connection.name() && m_path == path)
            return true;
        m_connection->unregisterObject(m_path);
        m_connection.reset();
    }
    QDBusConnection bus = connection;
    if (!bus.registerObject(path, this, QDBusConnection::ExportAdaptors)) {
        qCWarning(lcMenuBar).noquote()
            << QStringLiteral("Could not export the status menu at %1: %2").arg(path, bus.lastError().message());
        m_path.clear();
        return false;
    }
    m_connection = bus;
    m_path = path;
    return true;
}

void DBusMenu::setItems(const QList<DBusMenuItem> &items)
{
    QList<DBusMenuItem> accepted;
    QSet<int> ids;
    for (const DBusMenuItem &item : items) {
        if (item.id <= 0 || ids.contains(item.id)) {
            qCWarning(lcMenuBar) << "Status menu entry skipped: its id is not unique or not above 0:" << item.id;
            continue;
        }
        ids.insert(item.id);
        accepted.append(item);
    }
    if (accepted == m_items)
        return;
    m_items = accepted;
    ++m_revision;
    Q_EMIT m_adaptor->LayoutUpdated(m_revision, 0);
}

bool DBusMenu::updateItem(const DBusMenuItem &item)
{
    for (DBusMenuItem &existing : m_items) {
        if (existing.id != item.id)
            continue;
        if (existing == item)
            return true;
        const QVariantMap before = propertiesOf(item.id);
        existing = item;
        const QVariantMap after = propertiesOf(item.id);
        QStringList removed;
        for (auto it = before.cbegin(); it != before.cend(); ++it) {
            if (!after.contains(it.key()))
                removed.append(it.key());
        }
        DBusMenuItemKeysList removedList;
        if (!removed.isEmpty())
            removedList.append({item.id, removed});
        Q_EMIT m_adaptor->ItemsPropertiesUpdated({{item.id, after}}, removedList);
        return true;
    }
    return false;
}

const DBusMenuItem *DBusMenu::find(int id) const
{
    for (const DBusMenuItem &item : m_items) {
        if (item.id == id)
            return &item;
    }
    return nullptr;
}

bool DBusMenu::contains(int id) const
{
    return id == 0 || find(id) != nullptr;
}

QVariantMap DBusMenu::propertiesOf(int id, const QStringList &names) const
{
    QVariantMap properties;
    if (id == 0) {
        properties.insert(QStringLiteral("children-display"), QStringLiteral("submenu"));
    } else if (const DBusMenuItem *item = find(id)) {
        if (item->type == DBusMenuItem::Type::separator) {
            properties.insert(QStringLiteral("type"), QStringLiteral("separator"));
        } else {
            // An underscore marks a mnemonic in this protocol; ours are plain text.
            QString label = item->label;
            label.replace(QLatin1Char('_'), QLatin1String("__"));
            properties.insert(QStringLiteral("label"), label);
            if (!item->iconName.isEmpty())
                properties.insert(QStringLiteral("icon-name"), item->iconName);
            if (item->toggle != DBusMenuItem::Toggle::none) {
                properties.insert(QStringLiteral("toggle-type"),
                                  item->toggle == DBusMenuItem::Toggle::radio ? QStringLiteral("radio")
                                                                              : QStringLiteral("checkmark"));
                properties.insert(QStringLiteral("toggle-state"), item->checked ? 1 : 0);
            }
        }
        properties.insert(QStringLiteral("enabled"), item->enabled);
        properties.insert(QStringLiteral("visible"), item->visible);
    }
    if (!names.isEmpty()) {
        for (auto it = properties.begin(); it != properties.end();) {
            if (names.contains(it.key()))
                ++it;
            else
                it = properties.erase(it);
        }
    }
    return properties;
}

DBusMenuLayoutItem DBusMenu::layout(int parentId, int depth, const QStringList &names) const
{
    DBusMenuLayoutItem node;
    node.id = parentId;
    node.properties = propertiesOf(parentId, names);
    if (parentId == 0 && depth != 0) {
        for (const DBusMenuItem &item : m_items)
            node.children.append({item.id, propertiesOf(item.id, names), {}});
    }
    return node;
}

bool DBusMenu::handleEvent(int id, const QString &eventId)
{
    if (!contains(id))
        return false;
    if (eventId != QLatin1String("clicked") || id == 0)
        return true;
    const DBusMenuItem *item = find(id);
    if (!item->enabled || !item->visible || item->type == DBusMenuItem::Type::separator)
        return true;
    // Answer the panel first; the owner may open a window in response.
    QTimer::singleShot(0, this, [this, id] {
        if (contains(id))
            Q_EMIT triggered(id);
    });
    return true;
}

bool DBusMenu::prepareToShow()
{
    const uint before = m_revision;
    Q_EMIT aboutToShow();
    return m_revision != before;
}

} // namespace tarnwell::platform

#include "DBusMenu.moc"
