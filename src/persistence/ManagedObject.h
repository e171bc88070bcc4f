#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>
#include <QVariant>

#include <optional>
#include <vector>

namespace tarnwell {

class StoreContext;
class ManagedObject;
struct EntityDescription;

enum class AttributeType { Uuid, String, Int16, Int32, Bool, Date, Reference };

// One stored attribute (one column). A Reference is a to-one relationship,
// stored as the target's id.
struct AttributeDescription
{
    const char *name;
    const char *column;
    AttributeType type;
    bool optional;
    const EntityDescription &(*target)() = nullptr; // for references
};

// A to-many relationship: the inverse of a reference held by the target.
struct ToManyDescription
{
    const char *name;
    const EntityDescription &(*target)();
    int inverseAttribute;
    bool cascadeDelete;
};

struct EntityDescription
{
    const char *name;
    const char *table;
    std::vector<AttributeDescription> attributes; // attribute 0 is always `id`
    std::vector<ToManyDescription> toMany;
    ManagedObject *(*make)();

    int attributeCount() const { return int(attributes.size()); }
};

// Base of the five entity classes: one in-memory object per stored row.
// Values live in memory; the context writes the changed ones on save.
class ManagedObject
{
public:
    virtual ~ManagedObject();
    ManagedObject(const ManagedObject &) = delete;
    ManagedObject &operator=(const ManagedObject &) = delete;

    const EntityDescription &entity() const { return *m_entity; }
    StoreContext *managedObjectContext() const { return m_context; }

    QUuid id() const { return m_values[0].toUuid(); }
    // Gives an object its id before it is inserted (imports keep their ids).
    void assignId(const QUuid &id)
    {
        Q_ASSERT(!m_context);
        m_values[0] = id;
    }

    // Inserted: not yet saved. Deleted: deleted in memory, or its row is gone.
    bool isInserted() const { return m_state == State::Inserted; }
    bool isDeleted() const { return m_state == State::Deleted || m_state == State::Gone; }
    bool isUpdated() const { return m_state == State::Saved && m_dirty != 0; }
    bool hasChanges() const { return m_state == State::Inserted || m_state == State::Deleted || m_dirty != 0; }

    const QVariant &value(int attribute) const { return m_values[size_t(attribute)]; }
    bool isDirty(int attribute) const { return (m_dirty >> attribute) & 1u; }

protected:
    explicit ManagedObject(const EntityDescription &entity);

    void setValue(int attribute, const QVariant &value);

    QString string(int attribute) const { return value(attribute).toString(); }
    std::optional<QString> optString(int attribute) const;
    qint32 int32(int attribute) const { return value(attribute).toInt(); }
    std::optional<qint32> optInt32(int attribute) const;
    bool boolean(int attribute) const { return value(attribute).toBool(); }
    QDateTime date(int attribute) const { return value(attribute).toDateTime(); }
    std::optional<QDateTime> optDate(int attribute) const;
    std::optional<QUuid> optUuid(int attribute) const;

    template<typename T>
    static QVariant fromOptional(const std::optional<T> &v)
    {
        return v ? QVariant::fromValue(*v) : QVariant();
    }
    static QVariant fromOptional(const std::optional<QDateTime> &v)
    {
        return v && v->isValid() ? QVariant(v->toUTC()) : QVariant();
    }
    static QVariant fromDate(const QDateTime &v) { return v.isValid() ? QVariant(v.toUTC()) : QVariant(); }

    // The object a reference points to (none when unset or gone).
    ManagedObject *referenced(int attribute) const;
    void setReferenced(int attribute, ManagedObject *target);
    // The live members of a to-many relationship.
    QList<ManagedObject *> related(int toManyIndex) const;

private:
    friend class StoreContext;
    enum class State { Inserted, Saved, Deleted, Gone };

    const EntityDescription *m_entity;
    StoreContext *m_context = nullptr;
    std::vector<QVariant> m_values;
    quint64 m_dirty = 0;
    // When the object was handed to its context: rows are written in that order.
    quint64 m_insertOrder = 0;
    State m_state = State::Inserted;
    // Loaded members of each to-many relationship; absent until first read.
    std::vector<std::optional<QList<ManagedObject *>>> m_related;
};

} // namespace tarnwell
