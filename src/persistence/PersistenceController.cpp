#include "PersistenceController.h"

#include "StoreMigrator.h"
#include "kit/Logging.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QPluginLoader>
#include <QSqlDriver>
#include <QSqlDriverPlugin>
#include <QSqlError>
#include <QSqlQuery>
#include <QStandardPaths>
#include <QUrl>
#include <QUuid>

#include <sys/stat.h>
#include <unistd.h>

namespace tarnwell {

namespace {

// Qt's own lookup scans the driver folder and reads every plugin's metadata
// before it picks one, which costs a short command more than opening the
// store; the SQLite driver is loaded from its file instead, and the lookup
// is left for when the file is not where Qt's paths say.
QSqlDatabase addSqliteDatabase(const QString &connectionName)
{
    static QSqlDriverPlugin *const plugin = [] {
        QPluginLoader loader(QLibraryInfo::path(QLibraryInfo::PluginsPath) +
                             QStringLiteral("/sqldrivers/libqsqlite.so"));
        return qobject_cast<QSqlDriverPlugin *>(loader.instance());
    }();
    if (plugin) {
        if (QSqlDriver *driver = plugin->create(QStringLiteral("QSQLITE")))
            return QSqlDatabase::addDatabase(driver, connectionName);
    }
    return QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connectionName);
}

PersistenceController::LoadFailureNotice &loadFailureNotice()
{
    static PersistenceController::LoadFailureNotice notice;
    return notice;
}

[[noreturn]] void failToLoad(const QString &path, const QString &description)
{
    const QString url = path.isEmpty()
        ? QStringLiteral("<unknown>")
        : (path == QLatin1String(":memory:") ? path : QUrl::fromLocalFile(path).toString());
    qCCritical(lcPersistence).noquote() << QStringLiteral("Failed to load store %1: %2").arg(url, description);
    if (loadFailureNotice() && !path.isEmpty() && path != QLatin1String(":memory:"))
        loadFailureNotice()(path, description);
    qFatal("Failed to load persistent store: %s", qPrintable(description));
}

void pragma(QSqlDatabase &db, const QString &path, const QString &statement)
{
    QSqlQuery query(db);
    if (!query.exec(statement))
        failToLoad(path, query.lastError().text().trimmed());
}

} // namespace

void PersistenceController::setLoadFailureNotice(LoadFailureNotice notice)
{
    loadFailureNotice() = std::move(notice);
}

QString PersistenceController::refusalReason(const QString &path)
{
    const QFileInfo file(path);
    const QString folder = file.absolutePath();
    struct stat status
    {
    };
    if (::stat(QFile::encodeName(folder).constData(), &status) == 0) {
        if (status.st_uid != ::geteuid())
            return QStringLiteral("the folder %1 belongs to another user").arg(folder);
        if (!(status.st_mode & S_IWUSR) || ::access(QFile::encodeName(folder).constData(), W_OK) != 0)
            return QStringLiteral("the folder %1 is read-only").arg(folder);
    }
    if (::lstat(QFile::encodeName(path).constData(), &status) != 0)
        return {}; // a new store
    if (S_ISDIR(status.st_mode))
        return QStringLiteral("%1 is a directory, not a store file").arg(path);
    if (!S_ISREG(status.st_mode))
        return QStringLiteral("%1 is not a regular file").arg(path);
    if (!(status.st_mode & S_IWUSR) || ::access(QFile::encodeName(path).constData(), W_OK) != 0)
        return QStringLiteral("%1 is read-only").arg(path);

    // The header records the size of the database in pages, valid when the
    // change counter at 24 equals the one at 92. A write-ahead log left by a
    // crash may still hold pages a checkpoint was copying, so the file may
    // then be shorter for good reason.
    if (QFileInfo(path + QStringLiteral("-wal")).size() > 0)
        return {};
    QFile store(path);
    if (status.st_size < 100 || !store.open(QIODevice::ReadOnly))
        return {};
    const QByteArray header = store.read(100);
    if (header.size() < 100 || !header.startsWith(QByteArrayLiteral("SQLite format 3\0")))
        return {};
    const auto be = [&header](int at, int bytes) {
        quint32 value = 0;
        for (int i = 0; i < bytes; ++i)
            value = (value << 8) | quint8(header.at(at + i));
        return value;
    };
    const quint32 rawPageSize = be(16, 2);
    const qint64 pageSize = rawPageSize == 1 ? 65536 : rawPageSize;
    const qint64 pages = be(28, 4);
    if (pageSize < 512 || pages == 0 || be(24, 4) != be(92, 4))
        return {};
    if (qint64(status.st_size) < pages * pageSize)
        return QStringLiteral("%1 is cut off: %2 of its %3 bytes are there")
            .arg(path)
            .arg(status.st_size)
            .arg(pages * pageSize);
    return {};
}

QString PersistenceController::defaultStorePath()
{
    const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return base + QStringLiteral("/tarnwell/") + QString::fromLatin1(Constants::fileName);
}

PersistenceController::PersistenceController(bool inMemory)
    : m_connectionName(QStringLiteral("tarnwell-store-") + QUuid::createUuid().toString(QUuid::WithoutBraces))
{
    load(inMemory ? QString() : defaultStorePath(), StoreMigrator::standard());
}

PersistenceController::PersistenceController(const QString &storePath)
    : PersistenceController(storePath, StoreMigrator::standard())
{
}

PersistenceController::PersistenceController(const QString &storePath, const StoreMigrator &migrator)
    : m_connectionName(QStringLiteral("tarnwell-store-") + QUuid::createUuid().toString(QUuid::WithoutBraces))
{
    load(storePath, migrator);
}

PersistenceController::~PersistenceController()
{
    m_context.reset();
    {
        QSqlDatabase db = QSqlDatabase::database(m_connectionName, false);
        if (db.isOpen())
            db.close();
    }
    QSqlDatabase::removeDatabase(m_connectionName);
}

void PersistenceController::load(const QString &path, const StoreMigrator &migrator)
{
    m_path = path;
    const QString target = path.isEmpty() ? QStringLiteral(":memory:") : path;
    if (!path.isEmpty()) {
        const QFileInfo info(path);
        if (!QDir().mkpath(info.absolutePath()))
            failToLoad(path, QStringLiteral("cannot create the folder %1").arg(info.absolutePath()));
        const QString refusal = refusalReason(path);
        if (!refusal.isEmpty())
            failToLoad(path, refusal);
    }

    QSqlDatabase db = addSqliteDatabase(m_connectionName);
    if (!db.isValid())
        failToLoad(target, QStringLiteral("the Qt SQLite driver (QSQLITE) is not installed"));
    db.setDatabaseName(target);
    if (!db.open())
        failToLoad(target, db.lastError().text().trimmed());

    // journal_mode is the first statement that reads the file, so a file that
    // is not a database fails here, before anything could write to it.
    if (!path.isEmpty())
        pragma(db, target, QStringLiteral("PRAGMA journal_mode = WAL"));
    pragma(db, target, QStringLiteral("PRAGMA synchronous = FULL"));
    pragma(db, target, QStringLiteral("PRAGMA foreign_keys = ON"));
    pragma(db, target, QStringLiteral("PRAGMA busy_timeout = 5000"));

    try {
        migrator.migrate(db, path);
    } catch (const StoreError &error) {
        failToLoad(target, error.description());
    }
    m_context = std::make_unique<StoreContext>(m_connectionName);
}

void PersistenceController::save()
{
    if (!m_context->hasChanges())
        return;
    try {
        m_context->save();
    } catch (const StoreError &error) {
        qCCritical(lcPersistence).noquote() << QStringLiteral("Core Data save failed: %1 (%2) - %3")
                                                   .arg(error.domain())
                                                   .arg(error.code())
                                                   .arg(error.description());
    }
}

} // namespace tarnwell
