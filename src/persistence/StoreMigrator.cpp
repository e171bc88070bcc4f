#include "StoreMigrator.h"

#include "StoreError.h"
#include "kit/Logging.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>

namespace tarnwell {

namespace {

StoreError sqlError(const QSqlQuery &query, const QString &what)
{
    bool ok = false;
    const qint64 code = query.lastError().nativeErrorCode().toLongLong(&ok);
    return StoreError(QStringLiteral("SQLite"), ok ? code : -1,
                      QStringLiteral("%1: %2").arg(what, query.lastError().text().trimmed()));
}

void exec(QSqlDatabase &db, const QString &sql)
{
    QSqlQuery query(db);
    if (!query.exec(sql))
        throw sqlError(query, sql.left(80));
}

} // namespace

StoreMigrator::StoreMigrator(QStringList steps)
    : m_steps(std::move(steps))
{
}

StoreMigrator StoreMigrator::standard()
{
    // The build names the step files, so that a start with an up-to-date
    // store neither lists nor reads the resources.
    QStringList files;
    for (const QString &name : QStringLiteral(TARNWELL_SCHEMA_STEPS).split(u',', Qt::SkipEmptyParts))
        files << QStringLiteral(":/") + name;
    if (files.isEmpty())
        qFatal("The schema resources are missing from the build");
    StoreMigrator migrator(files);
    migrator.m_stepsAreFiles = true;
    return migrator;
}

QString StoreMigrator::step(int version) const
{
    if (!m_stepsAreFiles)
        return m_steps[version];
    QFile file(m_steps[version]);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("Missing schema resource %s", qPrintable(m_steps[version]));
    return QString::fromUtf8(file.readAll());
}

int StoreMigrator::userVersion(QSqlDatabase &db)
{
    QSqlQuery query(db);
    if (!query.exec(QStringLiteral("PRAGMA user_version")) || !query.next())
        throw sqlError(query, QStringLiteral("reading the schema version"));
    return query.value(0).toInt();
}

QStringList StoreMigrator::splitStatements(const QString &script)
{
    // Statements end with a semicolon at the end of a line; comment lines are dropped.
    QStringList statements;
    QString current;
    const auto lines = script.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        const QString trimmed = line.trimmed();
        if (trimmed.isEmpty() || trimmed.startsWith(QLatin1String("--")))
            continue;
        current += line + QLatin1Char('\n');
        if (trimmed.endsWith(QLatin1Char(';'))) {
            statements << current.trimmed();
            current.clear();
        }
    }
    if (!current.trimmed().isEmpty())
        statements << current.trimmed();
    return statements;
}

void StoreMigrator::migrate(QSqlDatabase &db, const QString &filePath) const
{
    const int from = userVersion(db);
    const int to = latestVersion();
    if (from == to)
        return;
    if (from > to) {
        // Written by a newer Tarnwell: what it added would be left stale by
        // this build's writes, so the store is left alone.
        throw StoreError(
            QStringLiteral("Tarnwell"), from,
            QStringLiteral("the store is at schema version %1, newer than this build's %2").arg(from).arg(to));
    }

    if (from > 0 && !filePath.isEmpty()) {
        QString backup = QStringLiteral("%1.v%2.bak").arg(filePath).arg(from);
        if (QFileInfo::exists(backup))
            backup = QStringLiteral("%1.v%2-%3.bak")
                         .arg(filePath)
                         .arg(from)
                         .arg(QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMddHHmmss")));
        QString quoted = backup;
        quoted.replace(QLatin1Char('\''), QLatin1String("''"));
        exec(db, QStringLiteral("VACUUM INTO '%1'").arg(quoted));
        qCInfo(lcPersistence).noquote() << QStringLiteral("Copied the store aside to %1 before migrating").arg(backup);
    }

    if (from == 0)
        qCInfo(lcPersistence).noquote() << QStringLiteral("Creating a new store at schema version %1").arg(to);
    else
        qCInfo(lcPersistence).noquote()
            << QStringLiteral("Migrating the store from version %1 to %2").arg(from).arg(to);
    exec(db, QStringLiteral("BEGIN IMMEDIATE"));
    try {
        for (int version = from; version < to; ++version) {
            const auto statements = splitStatements(step(version));
            for (const QString &statement : statements)
                exec(db, statement);
        }
        exec(db, QStringLiteral("PRAGMA user_version = %1").arg(to));
        exec(db, QStringLiteral("COMMIT"));
    } catch (...) {
        QSqlQuery rollback(db);
        rollback.exec(QStringLiteral("ROLLBACK"));
        throw;
    }
}

} // namespace tarnwell
