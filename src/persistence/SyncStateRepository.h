#pragma once

#include <QHash>
#include <QList>
#include <QSqlQuery>
#include <QString>
#include <QUuid>

#include <optional>

namespace tarnwell {

class StoreContext;

// What two-way sync remembers between passes (tables sync_collections,
// sync_items, sync_tombstones). Reads run at once; every write throws
// StoreError and is meant to run inside StoreContext::save(alsoWrite), so
// that it stands or falls with the task changes it belongs to.
class SyncStateRepository
{
public:
    struct Item
    {
        QUuid taskId;
        QString href;
        QString etag; // empty: not on the server any more, to be written again
        QByteArray base;
    };
    struct Tombstone
    {
        QString href;
        QString etag;
    };
    // A page of the scan for what a pass writes.
    struct WritesPage
    {
        QList<QUuid> unsynced; // never written to the server
        QList<QUuid> changed; // changed here since both sides agreed, or lost by the server
        qint64 lastRow = 0; // where the next page starts
        bool atEnd = true;
    };

    explicit SyncStateRepository(StoreContext &context);

    // The collection the state belongs to; none before the first pass.
    std::optional<QString> collection() const;
    QString syncToken() const;
    // Makes `url` the collection (dropping every item and tombstone when it
    // was another one) and stores its token.
    void setCollection(const QString &url, const QString &syncToken);

    std::optional<Item> item(const QUuid &taskId) const;
    std::optional<Item> itemAt(const QString &href) const;
    // href → etag ("" for a lost resource) of every item.
    QHash<QString, QString> etags() const;
    // The etag of the item at `href` (empty: to be written again); none when there is no item.
    std::optional<QString> etagAt(const QString &href) const;
    QList<Tombstone> tombstones() const;
    // Of the next `rows` tasks after row `afterRow` (0: from the first), in
    // the order they were stored: those that have no item, and those whose
    // synced columns differ from the fingerprint taken when both sides last
    // agreed. A large store is scanned a page at a time.
    WritesPage pendingWrites(qint64 afterRow, int rows) const;

    // Records the agreement on a task: its item, and its columns as they are
    // now (call after the task's own rows are written).
    void putItem(const Item &item);
    void setEtag(const QString &href, const QString &etag);
    // The fingerprint noted for the task, and its columns' as they are now.
    QString fingerprint(const QUuid &taskId) const;
    QString currentFingerprint(const QUuid &taskId) const;
    // Empty: the task counts as changed here until its next write.
    void setFingerprint(const QUuid &taskId, const QString &fingerprint);
    void removeItem(const QString &href);
    void removeTombstone(const QString &href);
    // Drops everything: collection, token, items, tombstones.
    void clear();
    QList<QUuid> syncedTasks() const;

private:
    // A statement run for every resource of a pass, prepared once; the
    // caller reads what it needs and lets it go (finish()).
    QSqlQuery &prepared(const QString &sql, const QVariantList &bindings) const;

    StoreContext &m_context;
    mutable QHash<QString, QSqlQuery> m_statements;
};

} // namespace tarnwell
