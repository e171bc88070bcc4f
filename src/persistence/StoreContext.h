#pragma once

#include "ManagedObject.h"
#include "StoreError.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QSqlDatabase>
#include <QSqlQuery>

#include <functional>
#include <memory>

namespace tarnwell {

// What changed since the previous objects-did-change notice.
struct ChangeSet
{
    QList<ManagedObject *> inserted;
    QList<ManagedObject *> updated;
    QList<ManagedObject *> deleted;
    bool isEmpty() const { return inserted.isEmpty() && updated.isEmpty() && deleted.isEmpty(); }
};

// A query for objects of one entity. The condition and the order are given
// twice: as SQL for the stored rows, and as functions for objects whose
// unsaved in-memory values may differ from their rows.
struct FetchRequest
{
    const EntityDescription *entity = nullptr;
    QString where; // SQL condition, empty for all rows
    QVariantList bindings; // values for the `?` in `where`
    std::function<bool(const ManagedObject &)> matches; // the same condition in memory
    QString orderBy; // SQL ORDER BY, may be empty
    std::function<bool(const ManagedObject *, const ManagedObject *)> lessThan; // the same order
    int limit = 0; // 0 = no limit
};

// The main (and only) context: a unit of work over the SQLite file.
// - One in-memory object per row: fetching a row twice yields the same object.
// - Changes are visible at once in memory and written by save() in one
//   transaction; a failed save leaves them pending and throws StoreError.
// - Only changed properties are written, so in-memory values win over stored
//   ones property by property.
// - Objects are never freed before the context: a pointer to a deleted object
//   stays valid and reads as deleted.
// Main thread only.
class StoreContext : public QObject
{
    Q_OBJECT
public:
    explicit StoreContext(const QString &connectionName, QObject *parent = nullptr);
    ~StoreContext() override;

    QSqlDatabase database() const;

    template<typename T>
    T *insertNew()
    {
        auto *object = new T;
        insertObject(object);
        return object;
    }
    // Takes ownership; gives the object a fresh id when it has none.
    void insertObject(ManagedObject *object);
    // Marks the object deleted, and the members of its cascading to-many
    // relationships with it.
    void deleteObject(ManagedObject *object);

    // The object with this id: from memory, else its row; none when neither
    // exists or it was deleted.
    ManagedObject *existingObject(const EntityDescription &entity, const QUuid &id);
    template<typename T>
    T *existingObject(const QUuid &id)
    {
        return static_cast<T *>(existingObject(T::description(), id));
    }

    // Whether an object with this id lives in memory, deleted or not: an id
    // given to a new object must not be.
    bool holds(const QUuid &id) const { return m_objects.contains(id); }

    QList<ManagedObject *> fetch(const FetchRequest &request);
    template<typename T>
    QList<T *> fetch(FetchRequest request)
    {
        request.entity = &T::description();
        QList<T *> out;
        const auto objects = fetch(request);
        out.reserve(objects.size());
        for (ManagedObject *o : objects)
            out.append(static_cast<T *>(o));
        return out;
    }

    bool hasChanges() const;
    void save();
    // As save(), with `alsoWrite` run inside the same transaction after the
    // objects' rows are written: SQL of the caller's own on database() that
    // must stand or fall with them. It throws StoreError to roll back
    // everything. Runs even when no object has changes.
    void save(const std::function<void()> &alsoWrite);
    // Sends objectsDidChange for the changes made since the last notice.
    // Runs by itself from the event loop after a change, and before a save.
    void processPendingChanges();
    // Rereads the object's row: unchanged properties take the stored values;
    // an object whose row has vanished becomes deleted.
    void refreshObject(ManagedObject *object);

Q_SIGNALS:
    void objectsDidChange(const tarnwell::ChangeSet &changes);
    void didSave();
    // A save failed and rolled back; its changes are still pending.
    void saveFailed(const tarnwell::StoreError &error);

private:
    friend class ManagedObject;

    enum class ChangeKind { Inserted, Updated, Deleted };

    QSqlQuery &statement(const QString &sql);
    const QString &selectSql(const EntityDescription &entity);
    ManagedObject *materialize(const EntityDescription &entity, const QSqlQuery &row);
    void readRow(ManagedObject *object, const QSqlQuery &row, bool onlyClean);
    void bindValue(QSqlQuery &query, const AttributeDescription &attribute, const QVariant &value) const;

    void willChange(ManagedObject *object, int attribute, const QVariant &oldValue);
    void noteChange(ManagedObject *object, ChangeKind kind);
    void becomeGone(ManagedObject *object);
    void detachFromOwners(ManagedObject *object);
    void referenceChanged(ManagedObject *object, int attribute, const QUuid &from, const QUuid &to);
    ManagedObject *resolveReference(const ManagedObject *object, int attribute);
    QList<ManagedObject *> relatedObjects(const ManagedObject *owner, int toManyIndex);
    ManagedObject *registered(const QUuid &id) const { return m_objects.value(id); }

    void insertRow(ManagedObject *object);
    void updateRow(ManagedObject *object);
    void deleteRow(ManagedObject *object);

    QString m_connectionName;
    QHash<QUuid, ManagedObject *> m_objects; // owns every object
    QSet<ManagedObject *> m_inserted;
    quint64 m_insertCount = 0;
    QSet<ManagedObject *> m_updated;
    QSet<ManagedObject *> m_deleted;
    QHash<ManagedObject *, ChangeKind> m_unprocessed;
    QList<ManagedObject *> m_unprocessedOrder;
    bool m_notifyScheduled = false;
    QHash<QString, QSqlQuery> m_statements;
    QHash<const EntityDescription *, QString> m_selectSql;
};

} // namespace tarnwell
