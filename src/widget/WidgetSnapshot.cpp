#include "WidgetSnapshot.h"

#include "TarnwellSharedJSON.h"

#include <QJsonArray>

namespace tarnwell {

namespace json = TarnwellSharedJSON;

namespace {

QByteArray encodeItem(const WidgetSnapshot::Item &item)
{
    return json::ObjectWriter()
        .add("id", item.id)
        .add("title", item.title)
        .addOptional("durationMinutes",
                     item.durationMinutes ? std::optional<qint64>(*item.durationMinutes) : std::optional<qint64>())
        .add("rolledOver", item.rolledOver)
        .finish();
}

std::optional<WidgetSnapshot::Item> decodeItem(const QJsonValue &value)
{
    if (!value.isObject())
        return std::nullopt;
    const QJsonObject o = value.toObject();
    const auto id = json::uuid(o.value(QLatin1String("id")));
    const auto title = json::string(o.value(QLatin1String("title")));
    const auto rolledOver = json::boolean(o.value(QLatin1String("rolledOver")));
    if (!id || !title || !rolledOver)
        return std::nullopt;
    WidgetSnapshot::Item item{*id, *title, std::nullopt, *rolledOver};
    if (o.contains(QLatin1String("durationMinutes"))) {
        const auto minutes = json::integer(o.value(QLatin1String("durationMinutes")));
        if (!minutes || *minutes < INT32_MIN || *minutes > INT32_MAX)
            return std::nullopt;
        item.durationMinutes = qint32(*minutes);
    }
    return item;
}

qint64 seconds(const std::optional<QDateTime> &date)
{
    return date ? date->toSecsSinceEpoch() : -1;
}

} // namespace

QByteArray WidgetSnapshot::encode() const
{
    QList<QByteArray> items;
    items.reserve(upNext.size());
    for (const Item &item : upNext)
        items << encodeItem(item);
    json::ObjectWriter out;
    if (anchor)
        out.addEncoded("anchor", encodeItem(*anchor));
    return out.addEncoded("upNext", json::array(items))
        .add("totalQueued", totalQueued)
        .addOptional("totalSeconds", totalSeconds)
        .add("elapsedSeconds", elapsedSeconds)
        .addOptional("timerStart", timerStart)
        .addOptional("deadline", deadline)
        .add("isRunning", isRunning)
        .add("isOverdue", isOverdue)
        .add("dayLabel", dayLabel)
        .add("completedCount", completedCount)
        .add("totalCount", totalCount)
        .add("summaryLine", summaryLine)
        .addOptional("plannedLabel", plannedLabel)
        .add("rolledOverCount", rolledOverCount)
        .add("minutesUnit", minutesUnit)
        .add("languageCode", languageCode)
        .add("appearance", appearance)
        .add("appRunning", appRunning)
        .add("validUntil", validUntil)
        .add("updatedAt", updatedAt)
        .finish();
}

std::optional<WidgetSnapshot> WidgetSnapshot::decode(const QByteArray &bytes)
{
    const auto object = json::object(bytes);
    if (!object)
        return std::nullopt;
    const QJsonObject &o = *object;
    const auto has = [&](const char *key) { return o.contains(QLatin1String(key)); };
    const auto value = [&](const char *key) { return o.value(QLatin1String(key)); };
    bool ok = true;
    const auto need = [&ok](auto parsed) {
        if (!parsed)
            ok = false;
        return parsed.value_or(typename decltype(parsed)::value_type());
    };
    // An optional key that is present must have the right type.
    const auto maybe = [&](const char *key, auto parse) {
        using Result = decltype(parse(QJsonValue()));
        if (!has(key))
            return Result();
        Result parsed = parse(value(key));
        if (!parsed)
            ok = false;
        return parsed;
    };

    WidgetSnapshot s;
    if (has("anchor")) {
        s.anchor = decodeItem(value("anchor"));
        ok = ok && s.anchor.has_value();
    }
    if (!value("upNext").isArray())
        return std::nullopt;
    for (const QJsonValue &entry : value("upNext").toArray()) {
        const auto item = decodeItem(entry);
        if (!item)
            return std::nullopt;
        s.upNext << *item;
    }
    s.totalQueued = need(json::integer(value("totalQueued")));
    s.totalSeconds = maybe("totalSeconds", [](const QJsonValue &v) { return json::integer(v); });
    s.elapsedSeconds = need(json::integer(value("elapsedSeconds")));
    s.timerStart = maybe("timerStart", [](const QJsonValue &v) { return json::date(v); });
    s.deadline = maybe("deadline", [](const QJsonValue &v) { return json::date(v); });
    s.isRunning = need(json::boolean(value("isRunning")));
    s.isOverdue = need(json::boolean(value("isOverdue")));
    s.dayLabel = need(json::string(value("dayLabel")));
    s.completedCount = need(json::integer(value("completedCount")));
    s.totalCount = need(json::integer(value("totalCount")));
    s.summaryLine = need(json::string(value("summaryLine")));
    s.plannedLabel = maybe("plannedLabel", [](const QJsonValue &v) { return json::string(v); });
    s.rolledOverCount = need(json::integer(value("rolledOverCount")));
    s.minutesUnit = need(json::string(value("minutesUnit")));
    s.languageCode = need(json::string(value("languageCode")));
    s.appearance = need(json::string(value("appearance")));
    s.appRunning = need(json::boolean(value("appRunning")));
    s.validUntil = need(json::date(value("validUntil")));
    s.updatedAt = need(json::date(value("updatedAt")));
    if (!ok)
        return std::nullopt;
    return s;
}

qint64 WidgetSnapshot::bankedSeconds() const
{
    if (!isRunning || !timerStart)
        return elapsedSeconds;
    return elapsedSeconds - timerStart->msecsTo(updatedAt) / 1000;
}

bool WidgetSnapshot::sameContent(const WidgetSnapshot &o) const
{
    return anchor == o.anchor && upNext == o.upNext && totalQueued == o.totalQueued && totalSeconds == o.totalSeconds &&
        bankedSeconds() == o.bankedSeconds() && seconds(timerStart) == seconds(o.timerStart) &&
        seconds(deadline) == seconds(o.deadline) && isRunning == o.isRunning && isOverdue == o.isOverdue &&
        dayLabel == o.dayLabel && completedCount == o.completedCount && totalCount == o.totalCount &&
        summaryLine == o.summaryLine && plannedLabel == o.plannedLabel && rolledOverCount == o.rolledOverCount &&
        minutesUnit == o.minutesUnit && languageCode == o.languageCode && appearance == o.appearance &&
        appRunning == o.appRunning;
}

bool operator==(const WidgetSnapshot &a, const WidgetSnapshot &b)
{
    return a.sameContent(b) && a.validUntil.toSecsSinceEpoch() == b.validUntil.toSecsSinceEpoch() &&
        a.updatedAt.toSecsSinceEpoch() == b.updatedAt.toSecsSinceEpoch();
}

} // namespace tarnwell
