#include "TarnwellSharedJSON.h"

#include <QJsonDocument>
#include <QTimeZone>

#include <cmath>
#include <iterator>

namespace tarnwell::TarnwellSharedJSON {

QByteArray string(const QString &value)
{
    const QByteArray utf8 = value.toUtf8();
    QByteArray out;
    out.reserve(utf8.size() + 2);
    out += '"';
    for (const char c : utf8) {
        const auto u = static_cast<unsigned char>(c);
        switch (c) {
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        default:
            if (u < 0x20)
                out += QByteArray("\\u00") + QByteArray::number(u, 16).rightJustified(2, '0');
            else
                out += c;
        }
    }
    out += '"';
    return out;
}

QString date(const QDateTime &value)
{
    // Truncated to the second: the reader refuses fractions.
    const QDateTime utc = QDateTime::fromSecsSinceEpoch(value.toSecsSinceEpoch(), QTimeZone::utc());
    return utc.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss")) + QLatin1Char('Z');
}

QString uuid(const QUuid &value)
{
    return value.toString(QUuid::WithoutBraces).toUpper();
}

void ObjectWriter::key(const char *key)
{
    if (m_out.size() > 1)
        m_out += ',';
    m_out += '"';
    m_out += key;
    m_out += "\":";
}

ObjectWriter &ObjectWriter::add(const char *k, const QString &value)
{
    key(k);
    m_out += string(value);
    return *this;
}

ObjectWriter &ObjectWriter::add(const char *k, qint64 value)
{
    key(k);
    m_out += QByteArray::number(value);
    return *this;
}

ObjectWriter &ObjectWriter::add(const char *k, bool value)
{
    key(k);
    m_out += value ? "true" : "false";
    return *this;
}

ObjectWriter &ObjectWriter::add(const char *k, const QDateTime &value)
{
    return add(k, date(value));
}

ObjectWriter &ObjectWriter::add(const char *k, const QUuid &value)
{
    return add(k, uuid(value));
}

ObjectWriter &ObjectWriter::addEncoded(const char *k, const QByteArray &json)
{
    key(k);
    m_out += json;
    return *this;
}

QByteArray array(const QList<QByteArray> &encoded)
{
    QByteArray out = "[";
    for (qsizetype i = 0; i < encoded.size(); ++i) {
        if (i > 0)
            out += ',';
        out += encoded.at(i);
    }
    return out + ']';
}

std::optional<QJsonObject> object(const QByteArray &json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return std::nullopt;
    return document.object();
}

std::optional<QString> string(const QJsonValue &value)
{
    if (!value.isString())
        return std::nullopt;
    return value.toString();
}

std::optional<qint64> integer(const QJsonValue &value)
{
    if (!value.isDouble())
        return std::nullopt;
    const double d = value.toDouble();
    // Whole numbers that a double holds exactly.
    if (d != std::trunc(d) || std::fabs(d) > 9007199254740992.0)
        return std::nullopt;
    return qint64(d);
}

std::optional<bool> boolean(const QJsonValue &value)
{
    if (!value.isBool())
        return std::nullopt;
    return value.toBool();
}

namespace {

// "2026-11-25T08:30:00Z" or with an offset ("+01:00"): whole seconds, nothing
// else. Checked by hand: a regular expression would bring its compiler into
// the widget program, which runs all day.
bool isWholeSecondTimestamp(QStringView text)
{
    static constexpr char16_t form[] = u"dddd-dd-ddTdd:dd:dd";
    constexpr qsizetype stem = std::size(form) - 1;
    const auto matches = [](QStringView part, QStringView pattern) {
        for (qsizetype i = 0; i < pattern.size(); ++i) {
            const bool digit = part[i] >= u'0' && part[i] <= u'9';
            if (pattern[i] == u'd' ? !digit : part[i] != pattern[i])
                return false;
        }
        return true;
    };
    if (text.size() == stem + 1)
        return matches(text, form) && text.back() == u'Z';
    return text.size() == stem + 6 && matches(text, form) && (text[stem] == u'+' || text[stem] == u'-') &&
        matches(text.sliced(stem + 1), u"dd:dd");
}

} // namespace

std::optional<QDateTime> date(const QJsonValue &value)
{
    if (!value.isString() || !isWholeSecondTimestamp(value.toString()))
        return std::nullopt;
    const QDateTime parsed = QDateTime::fromString(value.toString(), Qt::ISODate);
    if (!parsed.isValid())
        return std::nullopt;
    return parsed.toUTC();
}

std::optional<QUuid> uuid(const QJsonValue &value)
{
    if (!value.isString() || value.toString().size() != 36)
        return std::nullopt;
    const QUuid id = QUuid::fromString(value.toString());
    if (id.isNull())
        return std::nullopt;
    return id;
}

} // namespace tarnwell::TarnwellSharedJSON
