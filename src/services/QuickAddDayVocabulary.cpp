#include "QuickAddDayVocabulary.h"

#include <QLocale>

namespace tarnwell {

namespace {

QSet<QString> normalisedSet(const QStringList &words)
{
    QSet<QString> set;
    for (const QString &word : words)
        set.insert(QuickAddDayVocabulary::normalize(word));
    return set;
}

const QSet<QString> &todaySet()
{
    static const QSet<QString> set = normalisedSet(QuickAddDayVocabulary::Constants::todayWords());
    return set;
}

const QSet<QString> &tomorrowSet()
{
    static const QSet<QString> set = normalisedSet(QuickAddDayVocabulary::Constants::tomorrowWords());
    return set;
}

bool isAscii(const QString &text)
{
    for (QChar c : text) {
        if (c.unicode() >= 0x80)
            return false;
    }
    return true;
}

} // namespace

const QStringList &QuickAddDayVocabulary::Constants::weekdayLocales()
{
    static const QStringList locales{QStringLiteral("en_US"), QStringLiteral("tr_TR"), QStringLiteral("de_DE"),
                                     QStringLiteral("es_ES"), QStringLiteral("fr_FR")};
    return locales;
}

const QStringList &QuickAddDayVocabulary::Constants::todayWords()
{
    static const QStringList words{QStringLiteral("today"),       QStringLiteral("bugün"),
                                   QStringLiteral("heute"),       QStringLiteral("hoy"),
                                   QStringLiteral("aujourd’hui"), QStringLiteral("aujourd'hui")};
    return words;
}

const QStringList &QuickAddDayVocabulary::Constants::tomorrowWords()
{
    static const QStringList words{QStringLiteral("tomorrow"), QStringLiteral("tmrw"),   QStringLiteral("yarın"),
                                   QStringLiteral("morgen"),   QStringLiteral("mañana"), QStringLiteral("demain")};
    return words;
}

const QStringList &QuickAddDayVocabulary::Constants::excludedShortWeekdays()
{
    static const QStringList words{QStringLiteral("mar"), QStringLiteral("car")};
    return words;
}

QString QuickAddDayVocabulary::normalize(const QString &word)
{
    QString text = word.trimmed();
    qsizetype end = text.size();
    while (end > 0 && text.at(end - 1) == u'.')
        --end;
    text.truncate(end);

    if (isAscii(text))
        return text.toLower(); // nothing to decompose; "I" lower-cases to "i"

    text.replace(QChar(0x0131), u'i'); // dotless ı
    text.replace(u'I', u'i');
    // Compatibility decomposition splits letters from their accents; the
    // accents (non-spacing marks) are then dropped. QString's case mapping
    // does not depend on the user's locale.
    const QString decomposed = text.normalized(QString::NormalizationForm_KD);
    QString folded;
    folded.reserve(decomposed.size());
    for (QChar c : decomposed) {
        if (c.category() != QChar::Mark_NonSpacing)
            folded.append(c);
    }
    return folded.toLower();
}

QuickAddDayVocabulary::WeekdayTable QuickAddDayVocabulary::buildWeekdayTable()
{
    WeekdayTable table;
    const QStringList &excluded = Constants::excludedShortWeekdays();
    for (const QString &name : Constants::weekdayLocales()) {
        const QLocale locale(name);
        for (int index = 0; index < 7; ++index) {
            const int qtDay = index == 0 ? Qt::Sunday : index; // Qt counts Monday = 1 ... Sunday = 7
            const QString full = normalize(locale.dayName(qtDay, QLocale::LongFormat));
            if (!full.isEmpty() && !table.indexByName.contains(full))
                table.indexByName.insert(full, index);
            const QString shortName = normalize(locale.dayName(qtDay, QLocale::ShortFormat));
            if (shortName.size() >= 3 && !excluded.contains(shortName) && !table.indexByName.contains(shortName))
                table.indexByName.insert(shortName, index);
        }
    }
    return table;
}

const QuickAddDayVocabulary::WeekdayTable &QuickAddDayVocabulary::weekdayTable()
{
    static const WeekdayTable table = buildWeekdayTable();
    return table;
}

std::optional<int> QuickAddDayVocabulary::dayOffset(const QString &word, const QDateTime &now, const Calendar &calendar)
{
    const QString key = normalize(word);
    if (key.isEmpty())
        return std::nullopt;
    if (todaySet().contains(key))
        return 0;
    if (tomorrowSet().contains(key))
        return 1;
    const auto &names = weekdayTable().indexByName;
    const auto found = names.constFind(key);
    if (found == names.cend())
        return std::nullopt;
    const int today = calendar.weekday(now) - 1;
    return ((found.value() - today) + 7) % 7;
}

} // namespace tarnwell
