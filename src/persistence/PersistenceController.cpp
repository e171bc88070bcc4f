#include "PersistenceController.h"

#include "StoreMigrator.h"
#include "kit/Logging.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QStandardPaths>
#include <QUrl>
#include <QUuid>

namespace tarnwell {

namespace {

[[noreturn]] void failToLoad(const QString &path, const QString &description)
{
    const QString url = path.isEmpty()
        ? QStringLiteral("<unknown>")
        : (path == QLatin1String(":memory:") ? path : QUrl::fromLocalFile(path).toString());
    qCCritical(lcPersistence).noquote() << QStringLiteral("Failed to load store %1: %2").arg(url, description);
    qFatal("Failed to load persistent store: %s", qPrintable(description));
}

void pragma(QSqlDatabase &db, const QString &path, const QString &statement)
{
    QSqlQuery query(db);
    if (!query.exec(statement))
        failToLoad(path, query.lastError().text().trimmed());
}

} // namespace

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
    }

    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connectionName);
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
