#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace tarnwell {

// Reads a typed duration ("45", "45m", "1h30", "1.5h", "2 saat", "90dk",
// "~30m") into whole minutes. Used for the tail of a quick-add line and for the
// duration field of the quick-add window.
class DurationParser
{
public:
    struct Limits
    {
        static constexpr int minMinutes = 1;
        static constexpr int maxMinutes = 9999;
    };

    // Longer suffixes come before their own tails ("min" before "m").
    static const QStringList &minuteSuffixes(); // min, dak, dk, m
    static const QStringList &hourSuffixes(); // saat, std, hrs, hr, sa, h

    // Minutes in 1...9999, or none when the text is not a duration.
    static std::optional<int> parse(const QString &text);
};

} // namespace tarnwell
