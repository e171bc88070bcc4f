#include "StoreBackup.h"

#include "StoreError.h"
#include "kit/Logging.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSqlDriver>

#include <sqlite3.h>

namespace tarnwell {

namespace {

const QString backupPrefix = QStringLiteral("Tarnwell-");
const QString backupSuffix = QStringLiteral(".sqlite");

sqlite3 *handleOf(const QSqlDatabase &db)
{
    const QVariant handle = db.driver()->handle();
    if (!handle.isValid() || qstrcmp(handle.typeName(), "sqlite3*") != 0)
        return nullptr;
    return *static_cast<sqlite3 *const *>(handle.constData());
}

StoreError sqliteError(sqlite3 *db, int code, const QString &what)
{
    const QString message = db ? QString::fromUtf8(sqlite3_errmsg(db)) : QString::fromUtf8(sqlite3_errstr(code));
    return StoreError(QStringLiteral("SQLite"), code, QStringLiteral("%1: %2").arg(what, message));
}

sqlite3 *openFile(const QString &path, int flags)
{
    sqlite3 *db = nullptr;
    const int rc = sqlite3_open_v2(QFile::encodeName(path).constData(), &db, flags, nullptr);
    if (rc != SQLITE_OK) {
        const StoreError error = sqliteError(db, rc, QStringLiteral("opening %1").arg(path));
        sqlite3_close(db);
        throw error;
    }
    sqlite3_busy_timeout(db, 5000);
    return db;
}

// Copies all of `from` into `to` in one go.
void copyWhole(sqlite3 *from, sqlite3 *to, const QString &what)
{
    sqlite3_backup *backup = sqlite3_backup_init(to, "main", from, "main");
    if (!backup)
        throw sqliteError(to, sqlite3_errcode(to), what);
    const int rc = sqlite3_backup_step(backup, -1);
    sqlite3_backup_finish(backup);
    if (rc != SQLITE_DONE)
        throw sqliteError(to, rc, what);
}

QString checkIntegrity(sqlite3 *db)
{
    sqlite3_stmt *statement = nullptr;
    QString result = QStringLiteral("unreadable");
    if (sqlite3_prepare_v2(db, "PRAGMA quick_check", -1, &statement, nullptr) == SQLITE_OK &&
        sqlite3_step(statement) == SQLITE_ROW)
        result = QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(statement, 0)));
    sqlite3_finalize(statement);
    return result;
}

} // namespace

StoreBackupService::StoreBackupService(StoreContext &context, QString storePath, Calendar calendar, Clock clock,
                                       int quietMilliseconds, QObject *parent)
    : QObject(parent)
    , m_context(context)
    , m_storePath(std::move(storePath))
    , m_calendar(std::move(calendar))
    , m_clock(std::move(clock))
{
    m_quiet.setSingleShot(true);
    m_quiet.setInterval(quietMilliseconds);
    connect(&m_quiet, &QTimer::timeout, this, [this] {
        if (isDue())
            backUpNow();
    });
    m_check.setInterval(Constants::checkMilliseconds);
    connect(&m_check, &QTimer::timeout, this, [this] { m_quiet.start(); });
    m_stepper.setInterval(0);
    connect(&m_stepper, &QTimer::timeout, this, &StoreBackupService::step);
}

StoreBackupService::~StoreBackupService()
{
    if (m_backup)
        finish(false);
}

void StoreBackupService::start()
{
    // Every change puts the copy off until the store has been quiet again.
    connect(&m_context, &StoreContext::objectsDidChange, &m_quiet, [this] { m_quiet.start(); });
    m_quiet.start();
    m_check.start();
}

QString StoreBackupService::folderFor(const QString &storePath)
{
    return QFileInfo(storePath).absolutePath() + QStringLiteral("/backups");
}

QList<StoreBackupService::Backup> StoreBackupService::list(const QString &storePath)
{
    static const QRegularExpression name(QStringLiteral("^Tarnwell-(\\d{4}-\\d{2}-\\d{2})\\.sqlite$"));
    QList<Backup> backups;
    const QDir folder(folderFor(storePath));
    const auto entries = folder.entryInfoList(QDir::Files, QDir::Name | QDir::Reversed);
    for (const QFileInfo &entry : entries) {
        const auto match = name.match(entry.fileName());
        const QDate day = match.hasMatch() ? QDate::fromString(match.captured(1), Qt::ISODate) : QDate();
        if (day.isValid())
            backups.append({day, entry.absoluteFilePath(), entry.size()});
    }
    return backups;
}

bool StoreBackupService::isDue() const
{
    const QList<Backup> backups = list(m_storePath);
    return backups.isEmpty() || backups.first().day < m_calendar.date(m_clock());
}

void StoreBackupService::backUpNow()
{
    if (m_backup || m_storePath.isEmpty())
        return;
    sqlite3 *source = handleOf(m_context.database());
    if (!source) {
        qCWarning(lcPersistence).noquote() << QStringLiteral("No SQLite handle for the store; no backup taken");
        return;
    }
    const QString folder = folderFor(m_storePath);
    if (!QDir().mkpath(folder)) {
        qCWarning(lcPersistence).noquote() << QStringLiteral("Cannot create %1; no backup taken").arg(folder);
        return;
    }
    const QDate today = m_calendar.date(m_clock());
    m_finalPath = folder + QLatin1Char('/') + backupPrefix + today.toString(Qt::ISODate) + backupSuffix;
    m_partialPath = m_finalPath + QStringLiteral(".partial");
    QFile::remove(m_partialPath);
    try {
        m_destination = openFile(m_partialPath, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    } catch (const StoreError &error) {
        qCWarning(lcPersistence).noquote() << QStringLiteral("Backup not taken: %1").arg(error.description());
        return;
    }
    // The copy is only renamed into place once complete, and checked before
    // a restore: it needs neither a journal nor a wait for the disk per step,
    // which would hold the interface up.
    sqlite3_exec(m_destination, "PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF", nullptr, nullptr, nullptr);
    m_backup = sqlite3_backup_init(m_destination, "main", source, "main");
    if (!m_backup) {
        qCWarning(lcPersistence).noquote()
            << QStringLiteral("Backup not taken: %1").arg(QString::fromUtf8(sqlite3_errmsg(m_destination)));
        finish(false);
        return;
    }
    m_longestSliceMs = 0;
    m_stepper.start();
}

void StoreBackupService::step()
{
    QElapsedTimer slice;
    slice.start();
    int rc = SQLITE_OK;
    while (rc == SQLITE_OK && slice.elapsed() < Constants::sliceMilliseconds)
        rc = sqlite3_backup_step(m_backup, Constants::pagesPerStep);
    m_longestSliceMs = std::max(m_longestSliceMs, double(slice.nsecsElapsed()) / 1e6);
    if (rc == SQLITE_OK || rc == SQLITE_BUSY || rc == SQLITE_LOCKED)
        return; // more next turn
    if (rc != SQLITE_DONE)
        qCWarning(lcPersistence).noquote()
            << QStringLiteral("Backup failed: %1").arg(QString::fromUtf8(sqlite3_errstr(rc)));
    finish(rc == SQLITE_DONE);
}

void StoreBackupService::finish(bool ok)
{
    m_stepper.stop();
    if (m_backup) {
        const int rc = sqlite3_backup_finish(m_backup);
        m_backup = nullptr;
        ok = ok && rc == SQLITE_OK;
    }
    if (m_destination) {
        sqlite3_close(m_destination);
        m_destination = nullptr;
    }
    if (ok) {
        QFile::remove(m_finalPath);
        ok = QFile::rename(m_partialPath, m_finalPath);
    }
    if (!ok) {
        QFile::remove(m_partialPath);
        Q_EMIT finished(QString());
        return;
    }
    qCInfo(lcPersistence).noquote() << QStringLiteral("Backed up the store to %1 (longest pause %2 ms)")
                                           .arg(m_finalPath)
                                           .arg(m_longestSliceMs, 0, 'f', 1);
    prune();
    Q_EMIT finished(m_finalPath);
}

void StoreBackupService::prune()
{
    const QList<Backup> backups = list(m_storePath);
    for (qsizetype i = Constants::keep; i < backups.size(); ++i) {
        if (QFile::remove(backups.at(i).path))
            qCInfo(lcPersistence).noquote() << QStringLiteral("Removed the old backup %1").arg(backups.at(i).path);
    }
}

QString StoreBackupService::restore(const QString &storePath, const QString &backupPath, const QDateTime &now)
{
    if (!QFileInfo(backupPath).isFile())
        throw StoreError(QStringLiteral("Tarnwell"), 1, QStringLiteral("no backup at %1").arg(backupPath));
    sqlite3 *backup = openFile(backupPath, SQLITE_OPEN_READONLY);
    const QString integrity = checkIntegrity(backup);
    if (integrity != QLatin1String("ok")) {
        sqlite3_close(backup);
        throw StoreError(QStringLiteral("Tarnwell"), 2,
                         QStringLiteral("the backup %1 is damaged (%2)").arg(backupPath, integrity));
    }
    const QString aside =
        storePath + QStringLiteral(".before-restore-") + now.toUTC().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    sqlite3 *store = nullptr;
    sqlite3 *asideCopy = nullptr;
    QDir().mkpath(QFileInfo(storePath).absolutePath());
    try {
        store = openFile(storePath, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
        if (QFileInfo(storePath).size() > 0) {
            asideCopy = openFile(aside, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
            copyWhole(store, asideCopy, QStringLiteral("copying the store aside to %1").arg(aside));
            sqlite3_close(asideCopy);
            asideCopy = nullptr;
        }
        copyWhole(backup, store, QStringLiteral("restoring %1").arg(backupPath));
    } catch (...) {
        sqlite3_close(asideCopy);
        sqlite3_close(store);
        sqlite3_close(backup);
        throw;
    }
    sqlite3_close(store);
    sqlite3_close(backup);
    qCInfo(lcPersistence).noquote()
        << QStringLiteral("Restored the store from %1; the store as it was is in %2").arg(backupPath, aside);
    return aside;
}

} // namespace tarnwell
