#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QJsonObject>
#include <QString>
#include <QUuid>

#include <optional>

namespace tarnwell {

// The one coder of the files shared with the widget. Output is compact and
// keeps keys in the order they are written (readers must not depend on it);
// dates are ISO 8601 in UTC with whole seconds and "Z"; identifiers are the
// upper-case 36-character form; an absent optional is left out, never null.
namespace TarnwellSharedJSON {

class ObjectWriter
{
public:
    ObjectWriter &add(const char *key, const QString &value);
    ObjectWriter &add(const char *key, qint64 value);
    ObjectWriter &add(const char *key, bool value);
    ObjectWriter &add(const char *key, const QDateTime &value);
    ObjectWriter &add(const char *key, const QUuid &value);
    // A value already encoded (an object or an array).
    ObjectWriter &addEncoded(const char *key, const QByteArray &json);
    template<typename T>
    ObjectWriter &addOptional(const char *key, const std::optional<T> &value)
    {
        if (value)
            add(key, *value);
        return *this;
    }
    QByteArray finish() const { return m_out + '}'; }

private:
    void key(const char *key);
    QByteArray m_out = "{";
};

// A JSON array of already encoded values.
QByteArray array(const QList<QByteArray> &encoded);
QByteArray string(const QString &value);
QString date(const QDateTime &value);
QString uuid(const QUuid &value);

// Reading: each answers none when the value is missing or malformed.
std::optional<QJsonObject> object(const QByteArray &json);
std::optional<QString> string(const QJsonValue &value);
std::optional<qint64> integer(const QJsonValue &value);
std::optional<bool> boolean(const QJsonValue &value);
// Whole seconds only: a value with a fraction is refused.
std::optional<QDateTime> date(const QJsonValue &value);
std::optional<QUuid> uuid(const QJsonValue &value);

} // namespace TarnwellSharedJSON
} // namespace tarnwell
