#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QImage>
#include <QList>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QString>

class QDBusServiceWatcher;

namespace tarnwell::platform {

class DBusMenu;
class StatusNotifierItemAdaptor;

// One image of an icon as the tray protocol carries it: (iiay), width, height
// and ARGB32 pixels with every pixel in network byte order.
struct StatusNotifierPixmap
{
    int width = 0;
    int height = 0;
    QByteArray pixels;

    static StatusNotifierPixmap fromImage(const QImage &image);
    bool operator==(const StatusNotifierPixmap &) const = default;
};
using StatusNotifierPixmaps = QList<StatusNotifierPixmap>;

// (sa(iiay)ss): icon name, icon images, title, description.
struct StatusNotifierToolTip
{
    QString iconName;
    StatusNotifierPixmaps pixmaps;
    QString title;
    QString description;

    bool operator==(const StatusNotifierToolTip &) const = default;
};

QDBusArgument &operator<<(QDBusArgument &argument, const StatusNotifierPixmap &pixmap);
const QDBusArgument &operator>>(const QDBusArgument &argument, StatusNotifierPixmap &pixmap);
QDBusArgument &operator<<(QDBusArgument &argument, const StatusNotifierToolTip &toolTip);
const QDBusArgument &operator>>(const QDBusArgument &argument, StatusNotifierToolTip &toolTip);

// Registers the records above with QtDBus; safe to call more than once.
void registerStatusNotifierTypes();

// The application's entry in the panel: an org.kde.StatusNotifierItem on the
// session bus with an icon, a text label (shown by panels that read the
// XAyatanaLabel extension), a tooltip and a com.canonical.dbusmenu menu.
//
// The item exports itself on construction and registers with
// org.kde.StatusNotifierWatcher whenever one is on the bus, also when the
// panel starts after us. available() says whether a panel can show the item;
// when it is false the caller shows a fallback tray icon instead.
//
// The item holds no product logic: its owner decides texts, image and menu.
class StatusNotifierItem : public QObject
{
    Q_OBJECT
public:
    enum class Status { passive, active, needsAttention };

    struct Constants
    {
        static constexpr const char *watcherService = "org.kde.StatusNotifierWatcher";
        static constexpr const char *watcherPath = "/StatusNotifierWatcher";
        static constexpr const char *watcherInterface = "org.kde.StatusNotifierWatcher";
        static constexpr const char *interfaceName = "org.kde.StatusNotifierItem";
        static constexpr const char *objectPath = "/StatusNotifierItem";
        static constexpr const char *itemId = "org.tarnwell.Tarnwell";
        static constexpr const char *category = "ApplicationStatus";
        static constexpr const char *noMenuPath = "/NO_DBUSMENU";
        // Heights of the images exported for one source image.
        static constexpr int smallIconHeight = 22;
        static constexpr int largeIconHeight = 44;
    };

    explicit StatusNotifierItem(QObject *parent = nullptr);
    explicit StatusNotifierItem(const QDBusConnection &connection, QObject *parent = nullptr);
    ~StatusNotifierItem() override;

    // True while a watcher is on the bus, has accepted (or is about to accept)
    // the item and reports a panel that shows items.
    bool available() const { return m_available; }
    bool isRegistered() const { return m_registered; }
    // True once the item's object is on the session bus.
    bool isExported() const { return m_exported; }
    // The bus name the watcher knows us by.
    QString serviceName() const { return m_serviceName; }

    QString title() const { return m_title; }
    void setTitle(const QString &title);

    // The text beside the icon. guide is the longest text expected, so that
    // the panel can reserve a steady width; it may be empty.
    QString label() const { return m_label; }
    QString labelGuide() const { return m_labelGuide; }
    void setLabel(const QString &text, const QString &guide = {});

    // One image: exported at the small and the large height, aspect kept.
    void setIcon(const QImage &image);
    // Several images: exported exactly as given (the panel picks a size).
    void setIcon(const QList<QImage> &images);
    // An icon from the icon theme instead of images.
    void setIconName(const QString &name);
    QString iconName() const { return m_iconName; }
    StatusNotifierPixmaps iconPixmaps() const { return m_iconPixmaps; }

    // Some panels (KDE's) read the description as rich text: escape plain
    // text that may hold '<' or '&' (QString::toHtmlEscaped) before passing it.
    void setToolTip(const QString &title, const QString &description = {});
    StatusNotifierToolTip toolTip() const { return m_toolTip; }

    void setStatus(Status status);
    Status status() const { return m_status; }

    // The menu shown on right click. It is exported on our connection; set it
    // before the panel reads the item, as the protocol has no change signal.
    void setMenu(DBusMenu *menu);
    DBusMenu *menu() const { return m_menu; }

Q_SIGNALS:
    // Primary click; pos is in screen coordinates as the panel reports them
    // (some panels send 0, 0).
    void activated(const QPoint &pos);
    void secondaryActivated(const QPoint &pos);
    // The panel asks for a menu at pos (only for panels that do not show the
    // exported menu themselves).
    void contextMenuRequested(const QPoint &pos);
    void scrolled(int delta, Qt::Orientation orientation);
    // Wayland panels hand over an xdg-activation token just before a click,
    // so that the window the click opens may take the focus.
    void activationTokenProvided(const QString &token);
    // The watcher accepted the item.
    void registered();
    void availableChanged(bool available);

private Q_SLOTS:
    void onHostRegistered();
    void onHostUnregistered();

private:
    friend class StatusNotifierItemAdaptor;
    void exportItem();
    void registerWithWatcher();
    void readHostPresence();
    void onWatcherOwnerChanged(const QString &newOwner);
    void setAvailable(bool available);
    void setPixmaps(const StatusNotifierPixmaps &pixmaps, const QString &iconName);
    QString statusText() const;
    QString menuPath() const;

    QDBusConnection m_connection;
    QString m_serviceName;
    bool m_exported = false;
    bool m_registered = false;
    bool m_available = false;
    bool m_watcherPresent = false;
    bool m_hostPresent = true;
    quint64 m_registration = 0; // counts attempts; late answers to old ones are ignored
    QDBusServiceWatcher *m_watcherWatch = nullptr;
    StatusNotifierItemAdaptor *m_adaptor = nullptr;

    QString m_title;
    QString m_label;
    QString m_labelGuide;
    QString m_iconName;
    StatusNotifierPixmaps m_iconPixmaps;
    StatusNotifierToolTip m_toolTip;
    Status m_status = Status::active;
    QPointer<DBusMenu> m_menu;
};

} // namespace tarnwell::platform

Q_DECLARE_METATYPE(tarnwell::platform::StatusNotifierPixmap)
Q_DECLARE_METATYPE(tarnwell::platform::StatusNotifierToolTip)
