#include "SyncStateRepository.h"

#include "StoreContext.h"

#include <QSqlError>
#include <QSqlQuery>

namespace tarnwell {

namespace {

// The synced columns of a task row `t`, as one text: the fingerprint that
// tells a pass which tasks changed here since both sides agreed. The
// running timer's start is not among them; only banked seconds travel.
const QString fingerprintSql = QStringLiteral(
    "quote(t.title)||','||quote(t.notes)||','||quote(t.duration_minutes)||','||t.urgent||','||t.order_index||','||"
    "t.completed||','||quote(t.completed_at)||','||t.archived||','||quote(t.actual_seconds_focused)||','||"
    "quote(t.away_seconds_discarded)||','||quote(t.day_id)");

QString idText(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces);
}

[[noreturn]] void refused(const QSqlQuery &query, const QString &sql)
{
    const QSqlError error = query.lastError();
    bool numeric = false;
    const qint64 code = error.nativeErrorCode().toLongLong(&numeric);
    throw StoreError(QStringLiteral("SQLite"), numeric ? code : -1,
                     QStringLiteral("%1: %2").arg(sql.left(60), error.text().trimmed()));
}

QSqlQuery run(StoreContext &context, const QString &sql, const QVariantList &bindings = {})
{
    QSqlQuery query(context.database());
    query.setForwardOnly(true);
    if (!query.prepare(sql))
        refused(query, sql);
    for (const QVariant &value : bindings)
        query.addBindValue(value);
    if (!query.exec())
        refused(query, sql);
    return query;
}

QList<QUuid> ids(QSqlQuery query)
{
    QList<QUuid> out;
    while (query.next())
        out.append(QUuid::fromString(query.value(0).toString()));
    return out;
}

std::optional<SyncStateRepository::Item> oneItem(QSqlQuery &query)
{
    std::optional<SyncStateRepository::Item> item;
    if (query.next())
        item = SyncStateRepository::Item{QUuid::fromString(query.value(0).toString()), query.value(1).toString(),
                                         query.value(2).toString(), query.value(3).toByteArray()};
    query.finish();
    return item;
}

QString oneText(QSqlQuery &query)
{
    QString text = query.next() ? query.value(0).toString() : QString();
    query.finish();
    return text;
}

} // namespace

SyncStateRepository::SyncStateRepository(StoreContext &context)
    : m_context(context)
{
}

QSqlQuery &SyncStateRepository::prepared(const QString &sql, const QVariantList &bindings) const
{
    auto it = m_statements.find(sql);
    if (it == m_statements.end()) {
        QSqlQuery query(m_context.database());
        query.setForwardOnly(true);
        if (!query.prepare(sql))
            refused(query, sql);
        it = m_statements.insert(sql, query);
    }
    QSqlQuery &query = it.value();
    for (int i = 0; i < bindings.size(); ++i)
        query.bindValue(i, bindings.at(i));
    if (!query.exec())
        refused(query, sql);
    return query;
}

std::optional<QString> SyncStateRepository::collection() const
{
    QSqlQuery q = run(m_context, QStringLiteral("SELECT url FROM sync_collections LIMIT 1"));
    return q.next() ? std::optional(q.value(0).toString()) : std::nullopt;
}

QString SyncStateRepository::syncToken() const
{
    QSqlQuery q = run(m_context, QStringLiteral("SELECT sync_token FROM sync_collections LIMIT 1"));
    return q.next() ? q.value(0).toString() : QString();
}

void SyncStateRepository::setCollection(const QString &url, const QString &syncToken)
{
    const auto current = collection();
    if (current && *current != url)
        clear();
    run(m_context,
        QStringLiteral("INSERT INTO sync_collections(url, sync_token) VALUES (?, ?) "
                       "ON CONFLICT(url) DO UPDATE SET sync_token = excluded.sync_token"),
        {url, syncToken.isEmpty() ? QVariant() : QVariant(syncToken)});
}

std::optional<SyncStateRepository::Item> SyncStateRepository::item(const QUuid &taskId) const
{
    return oneItem(prepared(QStringLiteral("SELECT task_id, href, etag, base FROM sync_items WHERE task_id = ?"),
                            {idText(taskId)}));
}

std::optional<SyncStateRepository::Item> SyncStateRepository::itemAt(const QString &href) const
{
    return oneItem(prepared(QStringLiteral("SELECT task_id, href, etag, base FROM sync_items WHERE href = ?"), {href}));
}

QHash<QString, QString> SyncStateRepository::etags() const
{
    QSqlQuery q = run(m_context, QStringLiteral("SELECT href, ifnull(etag, '') FROM sync_items"));
    QHash<QString, QString> out;
    while (q.next())
        out.insert(q.value(0).toString(), q.value(1).toString());
    return out;
}

std::optional<QString> SyncStateRepository::etagAt(const QString &href) const
{
    QSqlQuery &q = prepared(QStringLiteral("SELECT ifnull(etag, '') FROM sync_items WHERE href = ?"), {href});
    std::optional<QString> etag;
    if (q.next())
        etag = q.value(0).toString();
    q.finish();
    return etag;
}

QList<SyncStateRepository::Tombstone> SyncStateRepository::tombstones() const
{
    QSqlQuery q = run(m_context, QStringLiteral("SELECT href, etag FROM sync_tombstones"));
    QList<Tombstone> out;
    while (q.next())
        out.append({q.value(0).toString(), q.value(1).toString()});
    return out;
}

SyncStateRepository::WritesPage SyncStateRepository::pendingWrites(qint64 afterRow, int rows) const
{
    QSqlQuery q =
        run(m_context,
            QStringLiteral("SELECT t.rowid, t.id, s.task_id IS NULL, s.fingerprint IS NOT (%1) OR s.etag IS NULL "
                           "FROM tasks t LEFT JOIN sync_items s ON s.task_id = t.id "
                           "WHERE t.rowid > ? ORDER BY t.rowid LIMIT ?")
                .arg(fingerprintSql),
            {afterRow, rows});
    WritesPage page;
    page.lastRow = afterRow;
    int seen = 0;
    while (q.next()) {
        ++seen;
        page.lastRow = q.value(0).toLongLong();
        if (q.value(2).toBool())
            page.unsynced.append(QUuid::fromString(q.value(1).toString()));
        else if (q.value(3).toBool())
            page.changed.append(QUuid::fromString(q.value(1).toString()));
    }
    page.atEnd = seen < rows;
    return page;
}

QList<QUuid> SyncStateRepository::syncedTasks() const
{
    return ids(run(m_context, QStringLiteral("SELECT task_id FROM sync_items")));
}

void SyncStateRepository::putItem(const Item &item)
{
    prepared(QStringLiteral("INSERT INTO sync_items(task_id, href, etag, base, fingerprint) "
                            "SELECT ?, ?, ?, ?, (%1) FROM tasks t WHERE t.id = ? "
                            "ON CONFLICT(task_id) DO UPDATE SET href = excluded.href, etag = excluded.etag, "
                            "base = excluded.base, fingerprint = excluded.fingerprint")
                 .arg(fingerprintSql),
             {idText(item.taskId), item.href, item.etag.isEmpty() ? QVariant() : QVariant(item.etag),
              QString::fromUtf8(item.base), idText(item.taskId)});
}

void SyncStateRepository::setEtag(const QString &href, const QString &etag)
{
    prepared(QStringLiteral("UPDATE sync_items SET etag = ? WHERE href = ?"),
             {etag.isEmpty() ? QVariant() : QVariant(etag), href});
}

QString SyncStateRepository::fingerprint(const QUuid &taskId) const
{
    return oneText(prepared(QStringLiteral("SELECT fingerprint FROM sync_items WHERE task_id = ?"), {idText(taskId)}));
}

QString SyncStateRepository::currentFingerprint(const QUuid &taskId) const
{
    return oneText(
        prepared(QStringLiteral("SELECT %1 FROM tasks t WHERE t.id = ?").arg(fingerprintSql), {idText(taskId)}));
}

void SyncStateRepository::setFingerprint(const QUuid &taskId, const QString &fingerprint)
{
    prepared(QStringLiteral("UPDATE sync_items SET fingerprint = ? WHERE task_id = ?"),
             {fingerprint.isEmpty() ? QVariant() : QVariant(fingerprint), idText(taskId)});
}

void SyncStateRepository::removeItem(const QString &href)
{
    prepared(QStringLiteral("DELETE FROM sync_items WHERE href = ?"), {href});
}

void SyncStateRepository::removeTombstone(const QString &href)
{
    prepared(QStringLiteral("DELETE FROM sync_tombstones WHERE href = ?"), {href});
}

void SyncStateRepository::clear()
{
    run(m_context, QStringLiteral("DELETE FROM sync_items"));
    run(m_context, QStringLiteral("DELETE FROM sync_tombstones"));
    run(m_context, QStringLiteral("DELETE FROM sync_collections"));
}

} // namespace tarnwell
