#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace tarnwell {

// Everything the widget shows, as written to widget-snapshot.json. Keys are
// written in the order of the fields below.
struct WidgetSnapshot
{
    struct Item
    {
        QUuid id;
        QString title;
        std::optional<qint32> durationMinutes;
        bool rolledOver = false;

        friend bool operator==(const Item &, const Item &) = default;
    };

    struct Limits
    {
        static constexpr int upNext = 6;
    };

    std::optional<Item> anchor; // the task in hand
    QList<Item> upNext; // the open tasks after it, at most six
    qint64 totalQueued = 0;
    std::optional<qint64> totalSeconds;
    qint64 elapsedSeconds = 0;
    std::optional<QDateTime> timerStart;
    std::optional<QDateTime> deadline;
    bool isRunning = false;
    bool isOverdue = false;
    QString dayLabel;
    qint64 completedCount = 0;
    qint64 totalCount = 0;
    QString summaryLine;
    std::optional<QString> plannedLabel;
    qint64 rolledOverCount = 0;
    QString minutesUnit;
    QString languageCode;
    QString appearance; // "auto", "light" or "dark"
    bool appRunning = false;
    QDateTime validUntil;
    QDateTime updatedAt;

    QByteArray encode() const;
    // None when a key is missing or has the wrong type.
    static std::optional<WidgetSnapshot> decode(const QByteArray &json);

    // Whether the two show the same: every field but updatedAt and validUntil.
    // A running timer's elapsed seconds grow with the build time, so only the
    // seconds banked before its start are compared.
    bool sameContent(const WidgetSnapshot &other) const;

    qint64 bankedSeconds() const;

    // Dates compare by the whole second, as they are stored.
    friend bool operator==(const WidgetSnapshot &, const WidgetSnapshot &);
};

} // namespace tarnwell
