#include "StatusNotifierItem.h"

#include "DBusMenu.h"
#include "kit/Logging.h"

#include <QCoreApplication>
#include <QDBusAbstractAdaptor>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QTimer>
#include <QtEndian>

namespace tarnwell::platform {

// --- wire records -----------------------------------------------------------

StatusNotifierPixmap StatusNotifierPixmap::fromImage(const QImage &image)
{
    StatusNotifierPixmap pixmap;
    if (image.isNull())
        return pixmap;
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    pixmap.width = argb.width();
    pixmap.height = argb.height();
    pixmap.pixels.resize(qsizetype(argb.width()) * argb.height() * 4);
    uchar *out = reinterpret_cast<uchar *>(pixmap.pixels.data());
    for (int y = 0; y < argb.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(argb.constScanLine(y));
        for (int x = 0; x < argb.width(); ++x) {
            qToBigEndian<quint32>(line[x], out);
            out += 4;
        }
    }
    return pixmap;
}

QDBusArgument &operator<<(QDBusArgument &argument, const StatusNotifierPixmap &pixmap)
{
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.pixels;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, StatusNotifierPixmap &pixmap)
{
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.pixels;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const StatusNotifierToolTip &toolTip)
{
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.pixmaps << toolTip.title << toolTip.description;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, StatusNotifierToolTip &toolTip)
{
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.pixmaps >> toolTip.title >> toolTip.description;
    argument.endStructure();
    return argument;
}

void registerStatusNotifierTypes()
{
    static const bool done = [] {
        qDBusRegisterMetaType<StatusNotifierPixmap>();
        qDBusRegisterMetaType<StatusNotifierPixmaps>();
        qDBusRegisterMetaType<StatusNotifierToolTip>();
        return true;
    }();
    Q_UNUSED(done)
}

// --- the exported interface -------------------------------------------------

class StatusNotifierItemAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category)
    Q_PROPERTY(QString Id READ id)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(int WindowId READ windowId)
    Q_PROPERTY(QString IconThemePath READ none)
    Q_PROPERTY(QString IconName READ iconName)
    Q_PROPERTY(QList<tarnwell::platform::StatusNotifierPixmap> IconPixmap READ iconPixmap)
    Q_PROPERTY(QString OverlayIconName READ none)
    Q_PROPERTY(QList<tarnwell::platform::StatusNotifierPixmap> OverlayIconPixmap READ noPixmaps)
    Q_PROPERTY(QString AttentionIconName READ none)
    Q_PROPERTY(QList<tarnwell::platform::StatusNotifierPixmap> AttentionIconPixmap READ noPixmaps)
    Q_PROPERTY(QString AttentionMovieName READ none)
    Q_PROPERTY(tarnwell::platform::StatusNotifierToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu)
    Q_PROPERTY(QDBusObjectPath Menu READ menu)
    Q_PROPERTY(QString XAyatanaLabel READ label)
    Q_PROPERTY(QString XAyatanaLabelGuide READ labelGuide)
public:
    explicit StatusNotifierItemAdaptor(StatusNotifierItem *item)
        : QDBusAbstractAdaptor(item)
        , m_item(item)
    {
    }

    QString category() const { return QString::fromLatin1(StatusNotifierItem::Constants::category); }
    QString id() const { return QString::fromLatin1(StatusNotifierItem::Constants::itemId); }
    QString title() const { return m_item->title(); }
    QString status() const { return m_item->statusText(); }
    int windowId() const { return 0; }
    QString none() const { return {}; }
    QString iconName() const { return m_item->iconName(); }
    StatusNotifierPixmaps iconPixmap() const { return m_item->iconPixmaps(); }
    StatusNotifierPixmaps noPixmaps() const { return {}; }
    StatusNotifierToolTip toolTip() const { return m_item->toolTip(); }
    bool itemIsMenu() const { return false; }
    QDBusObjectPath menu() const { return QDBusObjectPath(m_item->menuPath()); }
    QString label() const { return m_item->label(); }
    QString labelGuide() const { return m_item->labelGuide(); }

public Q_SLOTS:
    // The signals reach the owner after the panel has had its answer.
    void Activate(int x, int y)
    {
        QTimer::singleShot(0, m_item, [item = m_item, x, y] { Q_EMIT item->activated(QPoint(x, y)); });
    }
    void SecondaryActivate(int x, int y)
    {
        QTimer::singleShot(0, m_item, [item = m_item, x, y] { Q_EMIT item->secondaryActivated(QPoint(x, y)); });
    }
    void ContextMenu(int x, int y)
    {
        QTimer::singleShot(0, m_item, [item = m_item, x, y] { Q_EMIT item->contextMenuRequested(QPoint(x, y)); });
    }
    void Scroll(int delta, const QString &orientation)
    {
        const Qt::Orientation direction =
            orientation.compare(QLatin1String("horizontal"), Qt::CaseInsensitive) == 0 ? Qt::Horizontal : Qt::Vertical;
        QTimer::singleShot(0, m_item, [item = m_item, delta, direction] { Q_EMIT item->scrolled(delta, direction); });
    }
    // Arrives before the Activate it belongs to, so it is passed on at once.
    void ProvideXdgActivationToken(const QString &token) { Q_EMIT m_item->activationTokenProvided(token); }

Q_SIGNALS:
    void NewTitle();
    void NewIcon();
    void NewAttentionIcon();
    void NewOverlayIcon();
    void NewToolTip();
    void NewStatus(const QString &status);
    void XAyatanaNewLabel(const QString &label, const QString &guide);

private:
    StatusNotifierItem *m_item;
};

// --- the item ---------------------------------------------------------------

namespace {
int nextItemNumber()
{
    static int number = 0;
    return ++number;
}
} // namespace

StatusNotifierItem::StatusNotifierItem(QObject *parent)
    : StatusNotifierItem(QDBusConnection::sessionBus(), parent)
{
}

StatusNotifierItem::StatusNotifierItem(const QDBusConnection &connection, QObject *parent)
    : QObject(parent)
    , m_connection(connection)
{
    registerStatusNotifierTypes();
    m_adaptor = new StatusNotifierItemAdaptor(this);
    exportItem();
    if (!m_exported)
        return;

    const QString watcher = QString::fromLatin1(Constants::watcherService);
    m_watcherWatch = new QDBusServiceWatcher(watcher, m_connection, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(m_watcherWatch, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &newOwner) { onWatcherOwnerChanged(newOwner); });
    const QString path = QString::fromLatin1(Constants::watcherPath);
    const QString interface = QString::fromLatin1(Constants::watcherInterface);
    m_connection.connect(watcher, path, interface, QStringLiteral("StatusNotifierHostRegistered"), this,
                         SLOT(onHostRegistered()));
    m_connection.connect(watcher, path, interface, QStringLiteral("StatusNotifierHostUnregistered"), this,
                         SLOT(onHostUnregistered()));

    m_watcherPresent = m_connection.interface()->isServiceRegistered(watcher).value();
    if (m_watcherPresent) {
        m_available = true;
        registerWithWatcher();
    } else {
        qCInfo(lcMenuBar) << "No status item watcher on the session bus yet";
    }
}

StatusNotifierItem::~StatusNotifierItem()
{
    if (!m_exported)
        return;
    m_connection.unregisterObject(QString::fromLatin1(Constants::objectPath));
    if (m_serviceName != m_connection.baseService())
        m_connection.unregisterService(m_serviceName);
}

void StatusNotifierItem::exportItem()
{
    if (!m_connection.isConnected()) {
        qCWarning(lcMenuBar).noquote()
            << QStringLiteral("No D-Bus session bus (%1); no status item").arg(m_connection.lastError().message());
        return;
    }
    if (!m_connection.registerObject(QString::fromLatin1(Constants::objectPath), this,
                                     QDBusConnection::ExportAdaptors)) {
        qCWarning(lcMenuBar).noquote()
            << QStringLiteral("Could not export the status item: %1").arg(m_connection.lastError().message());
        return;
    }
    m_exported = true;
    const QString wanted = QStringLiteral("org.kde.StatusNotifierItem-%1-%2")
                               .arg(QCoreApplication::applicationPid())
                               .arg(nextItemNumber());
    if (m_connection.registerService(wanted)) {
        m_serviceName = wanted;
    } else {
        // The watcher also accepts the connection's own name.
        m_serviceName = m_connection.baseService();
        qCInfo(lcMenuBar).noquote() << QStringLiteral("Could not own %1 (%2); the status item uses %3")
                                           .arg(wanted, m_connection.lastError().message(), m_serviceName);
    }
}

void StatusNotifierItem::registerWithWatcher()
{
    const quint64 attempt = ++m_registration;
    QDBusMessage call = QDBusMessage::createMethodCall(
        QString::fromLatin1(Constants::watcherService), QString::fromLatin1(Constants::watcherPath),
        QString::fromLatin1(Constants::watcherInterface), QStringLiteral("RegisterStatusNotifierItem"));
    call << m_serviceName;
    auto *pending = new QDBusPendingCallWatcher(m_connection.asyncCall(call), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, attempt](QDBusPendingCallWatcher *done) {
        done->deleteLater();
        if (attempt != m_registration)
            return;
        const QDBusPendingReply<> reply = *done;
        if (reply.isError()) {
            qCWarning(lcMenuBar).noquote()
                << QStringLiteral("The status item watcher refused the item: %1").arg(reply.error().message());
            m_registered = false;
            setAvailable(false);
            return;
        }
        m_registered = true;
        Q_EMIT registered();
        readHostPresence();
    });
}

void StatusNotifierItem::readHostPresence()
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        QString::fromLatin1(Constants::watcherService), QString::fromLatin1(Constants::watcherPath),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call << QString::fromLatin1(Constants::watcherInterface) << QStringLiteral("IsStatusNotifierHostRegistered");
    const quint64 attempt = m_registration;
    auto *pending = new QDBusPendingCallWatcher(m_connection.asyncCall(call), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, attempt](QDBusPendingCallWatcher *done) {
        done->deleteLater();
        if (attempt != m_registration || !m_registered)
            return;
        const QDBusPendingReply<QDBusVariant> reply = *done;
        // A watcher that cannot tell is taken at its word that items are shown.
        m_hostPresent = reply.isError() || reply.value().variant().toBool();
        if (!m_hostPresent)
            qCInfo(lcMenuBar) << "The status item watcher reports no panel that shows items";
        setAvailable(m_hostPresent);
    });
}

void StatusNotifierItem::onHostRegistered()
{
    m_hostPresent = true;
    if (m_registered)
        setAvailable(true);
}

void StatusNotifierItem::onHostUnregistered()
{
    // Another panel may still be there: ask.
    if (m_registered)
        readHostPresence();
}

void StatusNotifierItem::onWatcherOwnerChanged(const QString &newOwner)
{
    m_registered = false;
    m_hostPresent = true;
    m_watcherPresent = !newOwner.isEmpty();
    if (!m_watcherPresent) {
        ++m_registration; // forget answers still under way
        qCInfo(lcMenuBar) << "The status item watcher left the session bus";
        setAvailable(false);
        return;
    }
    qCInfo(lcMenuBar) << "A status item watcher appeared; registering the item";
    setAvailable(true);
    registerWithWatcher();
}

void StatusNotifierItem::setAvailable(bool available)
{
    if (m_available == available)
        return;
    m_available = available;
    Q_EMIT availableChanged(available);
}

void StatusNotifierItem::setTitle(const QString &title)
{
    if (m_title == title)
        return;
    m_title = title;
    Q_EMIT m_adaptor->NewTitle();
}

void StatusNotifierItem::setLabel(const QString &text, const QString &guide)
{
    if (m_label == text && m_labelGuide == guide)
        return;
    m_label = text;
    m_labelGuide = guide;
    Q_EMIT m_adaptor->XAyatanaNewLabel(m_label, m_labelGuide);
}

void StatusNotifierItem::setIcon(const QImage &image)
{
    if (image.isNull()) {
        setPixmaps({}, m_iconName);
        return;
    }
    StatusNotifierPixmaps pixmaps;
    for (int height : {Constants::smallIconHeight, Constants::largeIconHeight}) {
        const QImage sized = image.height() == height ? image : image.scaledToHeight(height, Qt::SmoothTransformation);
        pixmaps.append(StatusNotifierPixmap::fromImage(sized));
    }
    setPixmaps(pixmaps, {});
}

void StatusNotifierItem::setIcon(const QList<QImage> &images)
{
    StatusNotifierPixmaps pixmaps;
    for (const QImage &image : images) {
        if (!image.isNull())
            pixmaps.append(StatusNotifierPixmap::fromImage(image));
    }
    setPixmaps(pixmaps, pixmaps.isEmpty() ? m_iconName : QString());
}

void StatusNotifierItem::setIconName(const QString &name)
{
    setPixmaps(name.isEmpty() ? m_iconPixmaps : StatusNotifierPixmaps(), name);
}

void StatusNotifierItem::setPixmaps(const StatusNotifierPixmaps &pixmaps, const QString &iconName)
{
    if (m_iconPixmaps == pixmaps && m_iconName == iconName)
        return;
    m_iconPixmaps = pixmaps;
    m_iconName = iconName;
    Q_EMIT m_adaptor->NewIcon();
}

void StatusNotifierItem::setToolTip(const QString &title, const QString &description)
{
    StatusNotifierToolTip toolTip;
    toolTip.title = title;
    toolTip.description = description;
    if (m_toolTip == toolTip)
        return;
    m_toolTip = toolTip;
    Q_EMIT m_adaptor->NewToolTip();
}

void StatusNotifierItem::setStatus(Status status)
{
    if (m_status == status)
        return;
    m_status = status;
    Q_EMIT m_adaptor->NewStatus(statusText());
}

QString StatusNotifierItem::statusText() const
{
    switch (m_status) {
    case Status::passive:
        return QStringLiteral("Passive");
    case Status::needsAttention:
        return QStringLiteral("NeedsAttention");
    case Status::active:
        break;
    }
    return QStringLiteral("Active");
}

void StatusNotifierItem::setMenu(DBusMenu *menu)
{
    m_menu = menu;
    if (menu && m_connection.isConnected()) {
        const QString path =
            menu->objectPath().isEmpty() ? QString::fromLatin1(DBusMenu::Constants::defaultPath) : menu->objectPath();
        menu->exportOn(m_connection, path);
    }
}

QString StatusNotifierItem::menuPath() const
{
    if (m_menu && m_menu->isExported())
        return m_menu->objectPath();
    return QString::fromLatin1(Constants::noMenuPath);
}

} // namespace tarnwell::platform

#include "StatusNotifierItem.moc"
