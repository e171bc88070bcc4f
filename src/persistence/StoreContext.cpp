#include "StoreContext.h"

#include <QSqlError>
#include <QSqlRecord>

#include <algorithm>

namespace tarnwell {

namespace {

QString sqlColumns(const EntityDescription &entity)
{
    QStringList columns;
    for (const auto &attribute : entity.attributes)
        columns << QString::fromLatin1(attribute.column);
    return columns.join(QLatin1String(", "));
}

StoreError errorFrom(const QSqlError &error)
{
    bool ok = false;
    const qint64 code = error.nativeErrorCode().toLongLong(&ok);
    QString text = error.text().trimmed();
    if (text.isEmpty())
        text = QStringLiteral("unknown SQLite error");
    return StoreError(QStringLiteral("SQLite"), ok ? code : -1, text);
}

} // namespace

StoreContext::StoreContext(const QString &connectionName, QObject *parent)
    : QObject(parent)
    , m_connectionName(connectionName)
{
}

StoreContext::~StoreContext()
{
    m_statements.clear();
    qDeleteAll(m_objects);
}

QSqlDatabase StoreContext::database() const
{
    return QSqlDatabase::database(m_connectionName, false);
}

QSqlQuery &StoreContext::statement(const QString &sql)
{
    auto it = m_statements.find(sql);
    if (it == m_statements.end()) {
        QSqlQuery query(database());
        query.setForwardOnly(true);
        if (!query.prepare(sql))
            throw errorFrom(query.lastError());
        it = m_statements.insert(sql, query);
    }
    return it.value();
}

const QString &StoreContext::selectSql(const EntityDescription &entity)
{
    auto it = m_selectSql.find(&entity);
    if (it == m_selectSql.end())
        it = m_selectSql.insert(
            &entity, QStringLiteral("SELECT %1 FROM %2").arg(sqlColumns(entity), QString::fromLatin1(entity.table)));
    return it.value();
}

void StoreContext::bindValue(QSqlQuery &query, const AttributeDescription &attribute, const QVariant &value) const
{
    if (value.isNull()) {
        query.addBindValue(attribute.type == AttributeType::String && !attribute.optional ? QVariant(QStringLiteral(""))
                                                                                          : QVariant());
        return;
    }
    switch (attribute.type) {
    case AttributeType::Uuid:
    case AttributeType::Reference:
        query.addBindValue(value.toUuid().toString(QUuid::WithoutBraces));
        break;
    case AttributeType::String:
        query.addBindValue(value.toString().isNull() ? QStringLiteral("") : value.toString());
        break;
    case AttributeType::Int16:
    case AttributeType::Int32:
        query.addBindValue(value.toInt());
        break;
    case AttributeType::Bool:
        query.addBindValue(value.toBool() ? 1 : 0);
        break;
    case AttributeType::Date:
        query.addBindValue(value.toDateTime().toMSecsSinceEpoch());
        break;
    }
}

void StoreContext::readRow(ManagedObject *object, const QSqlQuery &row, bool onlyClean)
{
    const auto &attributes = object->entity().attributes;
    for (int i = 1; i < int(attributes.size()); ++i) {
        if (onlyClean && object->isDirty(i))
            continue;
        const auto &attribute = attributes[size_t(i)];
        const QVariant raw = row.value(i);
        QVariant value;
        if (!raw.isNull()) {
            switch (attribute.type) {
            case AttributeType::Uuid:
            case AttributeType::Reference:
                value = QUuid::fromString(raw.toString());
                break;
            case AttributeType::String:
                value = raw.toString();
                break;
            case AttributeType::Int16:
            case AttributeType::Int32:
                value = raw.toInt();
                break;
            case AttributeType::Bool:
                value = raw.toLongLong() != 0;
                break;
            case AttributeType::Date:
                value = QDateTime::fromMSecsSinceEpoch(raw.toLongLong(), Qt::UTC);
                break;
            }
        } else if (!attribute.optional && attribute.type == AttributeType::String) {
            value = QString();
        }
        QVariant &slot = object->m_values[size_t(i)];
        if (slot == value && slot.isNull() == value.isNull())
            continue;
        const QVariant old = slot;
        slot = value;
        if (attribute.type == AttributeType::Reference)
            referenceChanged(object, i, old.toUuid(), value.toUuid());
    }
}

ManagedObject *StoreContext::materialize(const EntityDescription &entity, const QSqlQuery &row)
{
    const QUuid id = QUuid::fromString(row.value(0).toString());
    if (ManagedObject *existing = registered(id)) {
        // A row we already hold: the in-memory object stays the one object
        // for it; only properties it has not changed follow the row.
        if (existing->m_state == ManagedObject::State::Saved)
            readRow(existing, row, true);
        return existing;
    }
    ManagedObject *object = entity.make();
    object->m_context = this;
    object->m_state = ManagedObject::State::Saved;
    object->m_values[0] = id;
    m_objects.insert(id, object);
    readRow(object, row, false);
    return object;
}

void StoreContext::insertObject(ManagedObject *object)
{
    Q_ASSERT(object && !object->m_context);
    if (object->value(0).isNull())
        object->m_values[0] = QUuid::createUuid();
    object->m_context = this;
    object->m_state = ManagedObject::State::Inserted;
    object->m_insertOrder = ++m_insertCount;
    m_objects.insert(object->id(), object);
    m_inserted.insert(object);
    // Any reference set before insertion joins the owner's loaded list now.
    for (int i = 0; i < object->entity().attributeCount(); ++i) {
        if (object->entity().attributes[size_t(i)].type == AttributeType::Reference && !object->value(i).isNull())
            referenceChanged(object, i, QUuid(), object->value(i).toUuid());
    }
    noteChange(object, ChangeKind::Inserted);
}

void StoreContext::deleteObject(ManagedObject *object)
{
    if (!object || object->isDeleted())
        return;
    const auto &entity = object->entity();
    for (int i = 0; i < int(entity.toMany.size()); ++i) {
        if (!entity.toMany[size_t(i)].cascadeDelete)
            continue;
        const auto members = relatedObjects(object, i);
        for (ManagedObject *member : members)
            deleteObject(member);
    }
    detachFromOwners(object);
    m_updated.remove(object);
    if (object->m_state == ManagedObject::State::Inserted) {
        m_inserted.remove(object);
        object->m_state = ManagedObject::State::Gone;
    } else {
        object->m_state = ManagedObject::State::Deleted;
        m_deleted.insert(object);
    }
    noteChange(object, ChangeKind::Deleted);
}

ManagedObject *StoreContext::existingObject(const EntityDescription &entity, const QUuid &id)
{
    if (id.isNull())
        return nullptr;
    if (ManagedObject *object = registered(id))
        return object->isDeleted() ? nullptr : object;
    QSqlQuery &query = statement(selectSql(entity) + QStringLiteral(" WHERE id = ? LIMIT 1"));
    query.addBindValue(id.toString(QUuid::WithoutBraces));
    if (!query.exec())
        throw errorFrom(query.lastError());
    ManagedObject *object = query.next() ? materialize(entity, query) : nullptr;
    query.finish();
    return object;
}

QList<ManagedObject *> StoreContext::fetch(const FetchRequest &request)
{
    Q_ASSERT(request.entity);
    const EntityDescription &entity = *request.entity;

    // Unsaved objects of this entity may match differently in memory than
    // their rows do; collect them to correct the stored answer.
    QList<ManagedObject *> changed;
    const auto collect = [&](const QSet<ManagedObject *> &set) {
        for (ManagedObject *o : set)
            if (&o->entity() == &entity)
                changed.append(o);
    };
    collect(m_inserted);
    collect(m_updated);
    collect(m_deleted);

    QString sql = selectSql(entity);
    if (!request.where.isEmpty())
        sql += QStringLiteral(" WHERE ") + request.where;
    if (!request.orderBy.isEmpty())
        sql += QStringLiteral(" ORDER BY ") + request.orderBy;
    if (request.limit > 0)
        sql += QStringLiteral(" LIMIT %1").arg(request.limit + changed.size());

    QSqlQuery &query = statement(sql);
    for (const QVariant &binding : request.bindings)
        query.addBindValue(binding);
    if (!query.exec())
        throw errorFrom(query.lastError());

    QList<ManagedObject *> result;
    QSet<ManagedObject *> seen;
    bool needsSort = false;
    while (query.next()) {
        ManagedObject *object = materialize(entity, query);
        if (object->isDeleted())
            continue;
        if (object->hasChanges()) {
            needsSort = true;
            if (request.matches && !request.matches(*object))
                continue;
        }
        result.append(object);
        seen.insert(object);
    }
    query.finish();

    for (ManagedObject *object : std::as_const(changed)) {
        if (seen.contains(object) || object->isDeleted())
            continue;
        if (request.matches && !request.matches(*object))
            continue;
        result.append(object);
        needsSort = true;
    }
    if (needsSort && request.lessThan)
        std::stable_sort(result.begin(), result.end(), request.lessThan);
    if (request.limit > 0 && result.size() > request.limit)
        result.resize(request.limit);
    return result;
}

bool StoreContext::hasChanges() const
{
    return !m_inserted.isEmpty() || !m_updated.isEmpty() || !m_deleted.isEmpty();
}

void StoreContext::insertRow(ManagedObject *object)
{
    const auto &entity = object->entity();
    QString placeholders = QStringLiteral("?");
    for (int i = 1; i < entity.attributeCount(); ++i)
        placeholders += QStringLiteral(", ?");
    QSqlQuery &query = statement(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                                     .arg(QString::fromLatin1(entity.table), sqlColumns(entity), placeholders));
    for (int i = 0; i < entity.attributeCount(); ++i)
        bindValue(query, entity.attributes[size_t(i)], object->value(i));
    if (!query.exec())
        throw errorFrom(query.lastError());
}

void StoreContext::updateRow(ManagedObject *object)
{
    const auto &entity = object->entity();
    QStringList sets;
    for (int i = 1; i < entity.attributeCount(); ++i)
        if (object->isDirty(i))
            sets << QStringLiteral("%1 = ?").arg(QString::fromLatin1(entity.attributes[size_t(i)].column));
    if (sets.isEmpty())
        return;
    QSqlQuery &query = statement(QStringLiteral("UPDATE %1 SET %2 WHERE id = ?")
                                     .arg(QString::fromLatin1(entity.table), sets.join(QLatin1String(", "))));
    for (int i = 1; i < entity.attributeCount(); ++i)
        if (object->isDirty(i))
            bindValue(query, entity.attributes[size_t(i)], object->value(i));
    query.addBindValue(object->id().toString(QUuid::WithoutBraces));
    if (!query.exec())
        throw errorFrom(query.lastError());
}

void StoreContext::deleteRow(ManagedObject *object)
{
    QSqlQuery &query =
        statement(QStringLiteral("DELETE FROM %1 WHERE id = ?").arg(QString::fromLatin1(object->entity().table)));
    query.addBindValue(object->id().toString(QUuid::WithoutBraces));
    if (!query.exec())
        throw errorFrom(query.lastError());
}

void StoreContext::save()
{
    save(std::function<void()>());
}

void StoreContext::save(const std::function<void()> &alsoWrite)
{
    processPendingChanges();
    if (!hasChanges() && !alsoWrite)
        return;

    QSqlDatabase db = database();
    QSqlQuery control(db);
    if (!control.exec(QStringLiteral("BEGIN IMMEDIATE"))) {
        const StoreError error = errorFrom(control.lastError());
        Q_EMIT saveFailed(error);
        throw error;
    }
    try {
        // New rows go in in the order they were made, so that what was made
        // together (a day's tasks, a routine's items) shares pages on disk and
        // today's queue is a few page reads however long the history is.
        std::vector<ManagedObject *> inserted(m_inserted.cbegin(), m_inserted.cend());
        std::sort(inserted.begin(), inserted.end(),
                  [](const ManagedObject *a, const ManagedObject *b) { return a->m_insertOrder < b->m_insertOrder; });
        for (ManagedObject *object : inserted)
            insertRow(object);
        for (ManagedObject *object : std::as_const(m_updated))
            updateRow(object);
        for (ManagedObject *object : std::as_const(m_deleted))
            deleteRow(object);
        if (alsoWrite)
            alsoWrite();
        if (!control.exec(QStringLiteral("COMMIT")))
            throw errorFrom(control.lastError());
    } catch (const StoreError &error) {
        // Leave every change pending in memory; the next save tries again.
        QSqlQuery rollback(db);
        rollback.exec(QStringLiteral("ROLLBACK"));
        Q_EMIT saveFailed(error);
        throw;
    } catch (...) {
        QSqlQuery rollback(db);
        rollback.exec(QStringLiteral("ROLLBACK"));
        throw;
    }

    for (ManagedObject *object : std::as_const(m_inserted)) {
        object->m_state = ManagedObject::State::Saved;
        object->m_dirty = 0;
    }
    for (ManagedObject *object : std::as_const(m_updated))
        object->m_dirty = 0;
    for (ManagedObject *object : std::as_const(m_deleted))
        object->m_state = ManagedObject::State::Gone;
    m_inserted.clear();
    m_updated.clear();
    m_deleted.clear();
    Q_EMIT didSave();
}

void StoreContext::willChange(ManagedObject *object, int attribute, const QVariant &oldValue)
{
    const auto &description = object->entity().attributes[size_t(attribute)];
    if (description.type == AttributeType::Reference)
        referenceChanged(object, attribute, oldValue.toUuid(), object->value(attribute).toUuid());
    if (object->m_state == ManagedObject::State::Saved) {
        m_updated.insert(object);
        noteChange(object, ChangeKind::Updated);
    } else if (object->m_state == ManagedObject::State::Inserted) {
        noteChange(object, ChangeKind::Inserted);
    }
}

void StoreContext::noteChange(ManagedObject *object, ChangeKind kind)
{
    auto it = m_unprocessed.find(object);
    if (it == m_unprocessed.end()) {
        m_unprocessed.insert(object, kind);
        m_unprocessedOrder.append(object);
    } else if (kind == ChangeKind::Deleted) {
        if (it.value() == ChangeKind::Inserted && object->m_state == ManagedObject::State::Gone) {
            // Inserted and deleted again before anyone heard of it: nothing happened.
            m_unprocessed.erase(it);
            m_unprocessedOrder.removeOne(object);
        } else {
            it.value() = kind;
        }
    }
    if (!m_notifyScheduled) {
        m_notifyScheduled = true;
        QMetaObject::invokeMethod(this, &StoreContext::processPendingChanges, Qt::QueuedConnection);
    }
}

void StoreContext::processPendingChanges()
{
    m_notifyScheduled = false;
    if (m_unprocessedOrder.isEmpty())
        return;
    ChangeSet changes;
    for (ManagedObject *object : std::as_const(m_unprocessedOrder)) {
        switch (m_unprocessed.value(object)) {
        case ChangeKind::Inserted:
            changes.inserted.append(object);
            break;
        case ChangeKind::Updated:
            changes.updated.append(object);
            break;
        case ChangeKind::Deleted:
            changes.deleted.append(object);
            break;
        }
    }
    m_unprocessed.clear();
    m_unprocessedOrder.clear();
    if (!changes.isEmpty())
        Q_EMIT objectsDidChange(changes);
}

void StoreContext::becomeGone(ManagedObject *object)
{
    detachFromOwners(object);
    m_inserted.remove(object);
    m_updated.remove(object);
    m_deleted.remove(object);
    object->m_state = ManagedObject::State::Gone;
    object->m_dirty = 0;
    noteChange(object, ChangeKind::Deleted);
}

void StoreContext::refreshObject(ManagedObject *object)
{
    if (!object || object->m_state == ManagedObject::State::Inserted || object->m_state == ManagedObject::State::Gone)
        return;
    QSqlQuery &query = statement(selectSql(object->entity()) + QStringLiteral(" WHERE id = ? LIMIT 1"));
    query.addBindValue(object->id().toString(QUuid::WithoutBraces));
    if (!query.exec())
        throw errorFrom(query.lastError());
    if (!query.next()) {
        query.finish();
        becomeGone(object);
        return;
    }
    readRow(object, query, true);
    query.finish();
}

void StoreContext::detachFromOwners(ManagedObject *object)
{
    const auto &attributes = object->entity().attributes;
    for (int i = 0; i < int(attributes.size()); ++i) {
        if (attributes[size_t(i)].type == AttributeType::Reference && !object->value(i).isNull())
            referenceChanged(object, i, object->value(i).toUuid(), QUuid());
    }
}

void StoreContext::referenceChanged(ManagedObject *object, int attribute, const QUuid &from, const QUuid &to)
{
    const EntityDescription &target = object->entity().attributes[size_t(attribute)].target();
    int toManyIndex = -1;
    for (int i = 0; i < int(target.toMany.size()); ++i) {
        const auto &relation = target.toMany[size_t(i)];
        if (&relation.target() == &object->entity() && relation.inverseAttribute == attribute)
            toManyIndex = i;
    }
    if (toManyIndex < 0)
        return;
    if (ManagedObject *oldOwner = registered(from)) {
        auto &members = oldOwner->m_related[size_t(toManyIndex)];
        if (members)
            members->removeOne(object);
    }
    if (ManagedObject *newOwner = registered(to)) {
        auto &members = newOwner->m_related[size_t(toManyIndex)];
        if (members && !members->contains(object) && !object->isDeleted())
            members->append(object);
    }
}

ManagedObject *StoreContext::resolveReference(const ManagedObject *object, int attribute)
{
    const QUuid id = object->value(attribute).toUuid();
    const EntityDescription &target = object->entity().attributes[size_t(attribute)].target();
    ManagedObject *found = existingObject(target, id);
    if (!found && object->m_state == ManagedObject::State::Saved) {
        // The target's row has vanished underneath us; with it, most likely,
        // our own row. An object whose row is gone reads as deleted.
        refreshObject(const_cast<ManagedObject *>(object));
    }
    return found;
}

QList<ManagedObject *> StoreContext::relatedObjects(const ManagedObject *owner, int toManyIndex)
{
    auto &slot = const_cast<ManagedObject *>(owner)->m_related[size_t(toManyIndex)];
    if (slot)
        return *slot;

    const ToManyDescription &relation = owner->entity().toMany[size_t(toManyIndex)];
    const EntityDescription &target = relation.target();
    const QUuid ownerId = owner->id();
    QList<ManagedObject *> members;
    if (owner->m_state == ManagedObject::State::Saved || owner->m_state == ManagedObject::State::Deleted) {
        const QString column = QString::fromLatin1(target.attributes[size_t(relation.inverseAttribute)].column);
        QSqlQuery &query = statement(selectSql(target) + QStringLiteral(" WHERE %1 = ?").arg(column));
        query.addBindValue(ownerId.toString(QUuid::WithoutBraces));
        if (!query.exec())
            throw errorFrom(query.lastError());
        while (query.next()) {
            ManagedObject *member = materialize(target, query);
            if (!member->isDeleted() && member->value(relation.inverseAttribute).toUuid() == ownerId)
                members.append(member);
        }
        query.finish();
    }
    const auto addChanged = [&](const QSet<ManagedObject *> &set) {
        for (ManagedObject *member : set) {
            if (&member->entity() == &target && !member->isDeleted() &&
                member->value(relation.inverseAttribute).toUuid() == ownerId && !members.contains(member))
                members.append(member);
        }
    };
    addChanged(m_inserted);
    addChanged(m_updated);
    slot = members;
    return members;
}

} // namespace tarnwell
