#pragma once

#include "kit/Calendar.h"

#include <QDateTime>
#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

namespace tarnwell {

// The day words of a quick-add tail: "today" and "tomorrow" in the five
// shipped languages, and weekday names as the five locales write them.
// Every comparison is between normalised forms.
class QuickAddDayVocabulary
{
public:
    struct Constants
    {
        // Locales whose weekday names are day words, in lookup order.
        static const QStringList &weekdayLocales(); // en_US, tr_TR, de_DE, es_ES, fr_FR
        static const QStringList &todayWords();
        static const QStringList &tomorrowWords();
        // Short weekday forms that are too ambiguous to be day words.
        static const QStringList &excludedShortWeekdays(); // mar, car
    };

    // Normalised weekday name -> weekday index (0 = Sunday ... 6 = Saturday).
    // When two weekdays share a name, the first in locale order wins.
    struct WeekdayTable
    {
        QHash<QString, int> indexByName;
    };

    // Offset 0...6 from the day of `now` (0 = today, 1 = tomorrow), or none
    // when the word is no day word.
    static std::optional<int> dayOffset(const QString &word, const QDateTime &now, const Calendar &calendar);

    // The form used for every comparison: trimmed, trailing dots removed,
    // Turkish dotless and capital I read as "i", diacritics dropped and lower
    // case, the same whatever the user's locale.
    static QString normalize(const QString &word);

    // The shared table, built on first use.
    static const WeekdayTable &weekdayTable();
    // A fresh table, read from the locales again (the shared one is built by
    // this once).
    static WeekdayTable buildWeekdayTable();
};

} // namespace tarnwell
