#include "ManagedObject.h"

#include "StoreContext.h"

namespace tarnwell {

namespace {
QVariant defaultValue(const AttributeDescription &attribute)
{
    if (attribute.optional)
        return {};
    switch (attribute.type) {
    case AttributeType::String:
        return QString();
    case AttributeType::Int16:
    case AttributeType::Int32:
        return 0;
    case AttributeType::Bool:
        return false;
    case AttributeType::Date:
        return QDateTime::fromMSecsSinceEpoch(0, Qt::UTC);
    case AttributeType::Uuid:
    case AttributeType::Reference:
        return {};
    }
    return {};
}
} // namespace

ManagedObject::ManagedObject(const EntityDescription &entity)
    : m_entity(&entity)
    , m_related(entity.toMany.size())
{
    m_values.reserve(entity.attributes.size());
    for (const auto &attribute : entity.attributes)
        m_values.push_back(defaultValue(attribute));
}

ManagedObject::~ManagedObject() = default;

void ManagedObject::setValue(int attribute, const QVariant &newValue)
{
    QVariant &slot = m_values[size_t(attribute)];
    if (slot == newValue && slot.isNull() == newValue.isNull())
        return;
    if (m_state == State::Gone)
        return; // the row is gone for good; nothing to change
    const QVariant old = slot;
    slot = newValue;
    if (m_state != State::Inserted)
        m_dirty |= (quint64(1) << attribute);
    if (m_context)
        m_context->willChange(this, attribute, old);
}

std::optional<QString> ManagedObject::optString(int attribute) const
{
    const QVariant &v = value(attribute);
    if (v.isNull())
        return std::nullopt;
    return v.toString();
}

std::optional<qint32> ManagedObject::optInt32(int attribute) const
{
    const QVariant &v = value(attribute);
    if (v.isNull())
        return std::nullopt;
    return v.toInt();
}

std::optional<QDateTime> ManagedObject::optDate(int attribute) const
{
    const QVariant &v = value(attribute);
    if (v.isNull())
        return std::nullopt;
    return v.toDateTime();
}

std::optional<QUuid> ManagedObject::optUuid(int attribute) const
{
    const QVariant &v = value(attribute);
    if (v.isNull())
        return std::nullopt;
    return v.toUuid();
}

ManagedObject *ManagedObject::referenced(int attribute) const
{
    if (!m_context || value(attribute).isNull())
        return nullptr;
    return m_context->resolveReference(this, attribute);
}

void ManagedObject::setReferenced(int attribute, ManagedObject *target)
{
    setValue(attribute, target ? QVariant(target->id()) : QVariant());
}

QList<ManagedObject *> ManagedObject::related(int toManyIndex) const
{
    if (!m_context)
        return {};
    return m_context->relatedObjects(this, toManyIndex);
}

} // namespace tarnwell
