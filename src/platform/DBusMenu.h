#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusVariant>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

namespace tarnwell::platform {

// One entry of the status item's menu. Ids are chosen by the owner of the
// menu and must be unique and above 0 (0 is the invisible root).
struct DBusMenuItem
{
    enum class Type { standard, separator };
    enum class Toggle { none, checkmark, radio };

    int id = 0;
    QString label; // shown literally: no mnemonics
    bool enabled = true;
    bool visible = true;
    Type type = Type::standard;
    Toggle toggle = Toggle::none;
    bool checked = false;
    QString iconName;

    bool operator==(const DBusMenuItem &) const = default;

    static DBusMenuItem entry(int id, const QString &label, bool enabled = true)
    {
        DBusMenuItem item;
        item.id = id;
        item.label = label;
        item.enabled = enabled;
        return item;
    }
    static DBusMenuItem separator(int id)
    {
        DBusMenuItem item;
        item.id = id;
        item.type = Type::separator;
        return item;
    }
};

// The wire records of com.canonical.dbusmenu.
struct DBusMenuLayoutItem // (ia{sv}av), children carried as variants
{
    int id = 0;
    QVariantMap properties;
    QList<DBusMenuLayoutItem> children;
};

struct DBusMenuItemProperties // (ia{sv})
{
    int id = 0;
    QVariantMap properties;
};
using DBusMenuItemPropertiesList = QList<DBusMenuItemProperties>;

struct DBusMenuItemKeys // (ias)
{
    int id = 0;
    QStringList properties;
};
using DBusMenuItemKeysList = QList<DBusMenuItemKeys>;

struct DBusMenuEvent // (isvu)
{
    int id = 0;
    QString eventId;
    QDBusVariant data;
    uint timestamp = 0;
};
using DBusMenuEventList = QList<DBusMenuEvent>;

QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuLayoutItem &item);
const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuLayoutItem &item);
QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuItemProperties &item);
const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuItemProperties &item);
QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuItemKeys &item);
const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuItemKeys &item);
QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuEvent &event);
const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuEvent &event);

// Registers the records above with QtDBus; safe to call more than once.
void registerDBusMenuTypes();

class DBusMenuAdaptor;

// A flat menu exported as com.canonical.dbusmenu (version 3), the menu a
// StatusNotifierItem hands to the panel. The owner sets the entries; a click
// in the panel comes back as triggered(id).
class DBusMenu : public QObject, protected QDBusContext
{
    Q_OBJECT
public:
    struct Constants
    {
        static constexpr const char *interfaceName = "com.canonical.dbusmenu";
        static constexpr const char *defaultPath = "/MenuBar";
        static constexpr uint version = 3;
    };

    explicit DBusMenu(QObject *parent = nullptr);
    ~DBusMenu() override;

    // Makes the menu reachable at path on connection. The status item calls
    // this when the menu is handed to it.
    bool exportOn(const QDBusConnection &connection, const QString &path = QString::fromLatin1(Constants::defaultPath));
    QString objectPath() const { return m_path; }
    bool isExported() const { return m_connection.has_value(); }

    // Replaces every entry. When anything differs the layout revision goes up
    // and the panel is told to fetch the layout again.
    void setItems(const QList<DBusMenuItem> &items);
    // Changes the properties of one existing entry in place (for example a
    // label that flips while the menu is open). Returns false for an unknown id.
    bool updateItem(const DBusMenuItem &item);
    QList<DBusMenuItem> items() const { return m_items; }
    uint revision() const { return m_revision; }

    // The menu's wire form, as GetLayout and GetGroupProperties report it.
    QVariantMap propertiesOf(int id, const QStringList &names = {}) const;
    bool contains(int id) const;

Q_SIGNALS:
    // An enabled entry was clicked in the panel.
    void triggered(int id);
    // The panel is about to open the menu: the last moment to refresh entries.
    void aboutToShow();

private:
    friend class DBusMenuAdaptor;
    const DBusMenuItem *find(int id) const;
    DBusMenuLayoutItem layout(int parentId, int depth, const QStringList &names) const;
    bool handleEvent(int id, const QString &eventId);
    // Emits aboutToShow and says whether the owner changed the menu meanwhile.
    bool prepareToShow();

    QList<DBusMenuItem> m_items;
    uint m_revision = 1;
    QString m_path;
    std::optional<QDBusConnection> m_connection;
    DBusMenuAdaptor *m_adaptor = nullptr;
};

} // namespace tarnwell::platform

Q_DECLARE_METATYPE(tarnwell::platform::DBusMenuLayoutItem)
Q_DECLARE_METATYPE(tarnwell::platform::DBusMenuItemProperties)
Q_DECLARE_METATYPE(tarnwell::platform::DBusMenuItemKeys)
Q_DECLARE_METATYPE(tarnwell::platform::DBusMenuEvent)
