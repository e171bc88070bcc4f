#include "SyncAccountStore.h"

#include "kit/Logging.h"
#include "persistence/StoreContext.h"

#include <QSqlError>
#include <QSqlQuery>

namespace tarnwell {

SyncAccountStore::SyncAccountStore(StoreContext &context, QObject *parent)
    : QObject(parent)
    , m_context(context)
{
}

SyncAccountStore::Row SyncAccountStore::read() const
{
    Row row;
    QSqlQuery query(m_context.database());
    if (!query.exec(QStringLiteral("SELECT server_url, user_name, collection_url, enabled, last_sync_at, last_error "
                                   "FROM sync_account WHERE id = 1"))) {
        qCWarning(lcPersistence).noquote()
            << QStringLiteral("Could not read the sync account: %1").arg(query.lastError().text());
        return row;
    }
    if (!query.next())
        return row;
    row.account.server = QUrl(query.value(0).toString());
    row.account.user = query.value(1).toString();
    row.account.collection = QUrl(query.value(2).toString());
    row.enabled = query.value(3).toBool();
    if (!query.value(4).isNull())
        row.lastSyncAt = QDateTime::fromMSecsSinceEpoch(query.value(4).toLongLong(), Qt::UTC);
    row.lastError = query.value(5).toString();
    return row;
}

sync::SyncAccount SyncAccountStore::account() const
{
    return read().account;
}

bool SyncAccountStore::enabled() const
{
    return read().enabled;
}

QDateTime SyncAccountStore::lastSyncAt() const
{
    return read().lastSyncAt;
}

QString SyncAccountStore::lastError() const
{
    return read().lastError;
}

bool SyncAccountStore::exec(const QString &sql, const QVariantList &bindings)
{
    QSqlQuery query(m_context.database());
    query.prepare(sql);
    for (const QVariant &value : bindings)
        query.addBindValue(value);
    if (!query.exec()) {
        qCWarning(lcPersistence).noquote()
            << QStringLiteral("Could not write the sync account: %1").arg(query.lastError().text());
        return false;
    }
    Q_EMIT changed();
    return true;
}

bool SyncAccountStore::setAccount(const sync::SyncAccount &account, bool enabled)
{
    const Row old = read();
    const bool same = old.account.server == account.server && old.account.user == account.user &&
        old.account.collection == account.collection;
    const QVariant lastSync = same && old.lastSyncAt.isValid() ? QVariant(old.lastSyncAt.toMSecsSinceEpoch())
                                                               : QVariant(QMetaType(QMetaType::LongLong));
    const QVariant lastError = same ? QVariant(old.lastError) : QVariant(QMetaType(QMetaType::QString));
    return exec(QStringLiteral("INSERT OR REPLACE INTO sync_account "
                               "(id, server_url, user_name, collection_url, enabled, last_sync_at, last_error) "
                               "VALUES (1, ?, ?, ?, ?, ?, ?)"),
                {account.server.toString(), account.user, account.collection.toString(), enabled, lastSync, lastError});
}

bool SyncAccountStore::setEnabled(bool on)
{
    return exec(QStringLiteral("UPDATE sync_account SET enabled = ? WHERE id = 1"), {on});
}

bool SyncAccountStore::recordPass(const QDateTime &finishedAt, const QString &error)
{
    return exec(QStringLiteral("UPDATE sync_account SET last_sync_at = ?, last_error = ? WHERE id = 1"),
                {finishedAt.toMSecsSinceEpoch(), error.isEmpty() ? QVariant(QMetaType(QMetaType::QString)) : error});
}

bool SyncAccountStore::recordError(const QString &error)
{
    return exec(QStringLiteral("UPDATE sync_account SET last_error = ? WHERE id = 1"),
                {error.isEmpty() ? QVariant(QMetaType(QMetaType::QString)) : error});
}

} // namespace tarnwell
