#pragma once

#include "kit/Calendar.h"

#include <QDateTime>
#include <QString>

#include <optional>

namespace tarnwell {

// What one quick-add line asks for.
struct QuickAddResult
{
    QString title; // trimmed, never empty
    std::optional<int> durationMinutes; // 1...9999
    bool urgent = false;
    std::optional<int> dayOffset; // 0...6; the window may overwrite it

    friend bool operator==(const QuickAddResult &, const QuickAddResult &) = default;
};

// The quick-add line grammar. Everything typed is the title unless the line
// holds a separator ("·" or "~" between blanks) followed by a tail that reads
// completely as a duration, day words and urgent marks:
//   "Write report · 45m tomorrow !"  -> "Write report", 45 min, tomorrow, urgent
//   "Write report 45m"               -> the whole line is the title
//   "Call Bob ~ soon"                -> the whole line is the title
// A leading "!" marks the task urgent as well.
class QuickAddSyntaxParser
{
public:
    struct Constants
    {
        static constexpr char16_t urgentMarker = u'!';
        static constexpr char16_t middleDot = u'\u00B7';
        static constexpr char16_t tilde = u'~';
    };

    // What a tail after a separator says.
    struct Tail
    {
        std::optional<int> duration;
        std::optional<int> dayOffset;
        bool urgent = false;

        friend bool operator==(const Tail &, const Tail &) = default;
    };

    // None when there is nothing to add: a blank line, a lone "!", or an empty
    // title once the tail is taken off.
    static std::optional<QuickAddResult> parse(const QString &input, const QDateTime &now, const Calendar &calendar);

    // The tail read all or nothing; none when any word does not fit.
    static std::optional<Tail> parseTail(QStringView tail, const QDateTime &now, const Calendar &calendar);

    // Position of the last separator with blanks on both sides, or -1.
    static qsizetype separatorPosition(QStringView text);
};

} // namespace tarnwell
