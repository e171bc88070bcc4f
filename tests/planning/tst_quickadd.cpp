// Quick-add grammar: separators, tails, day words in five languages on every
// weekday, durations. Runs once per time zone (see CMakeLists).
#include "services/DurationParser.h"
#include "services/QuickAddDayVocabulary.h"
#include "services/QuickAddSyntaxParser.h"

#include <QTest>

using namespace tarnwell;

namespace {
const Calendar calendar;
// Wednesday 4 March 2026, 10:00 local time.
const QDateTime wednesday = QDate(2026, 3, 4).startOfDay(calendar.timeZone()).addSecs(10 * 3600);
} // namespace

class QuickAddTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void line_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("title"); // empty: nothing to add
        QTest::addColumn<int>("minutes"); // 0: none
        QTest::addColumn<bool>("urgent");
        QTest::addColumn<int>("day"); // -1: none
        const auto row = [](const char *name, const QString &text, const QString &title, int minutes = 0,
                            bool urgent = false,
                            int day = -1) { QTest::newRow(name) << text << title << minutes << urgent << day; };
        const QString plan = QStringLiteral("Plan");
        row("empty", QString(), QString());
        row("blanks", QStringLiteral(" \n\t "), QString());
        row("urgent alone", QStringLiteral(" ! "), QString());
        row("leading urgent", QStringLiteral("! Buy milk"), QStringLiteral("Buy milk"), 0, true);
        row("one leading mark only", QStringLiteral("!! Buy milk"), QStringLiteral("! Buy milk"), 0, true);
        row("trailing mark without tail", QStringLiteral("Buy milk !"), QStringLiteral("Buy milk !"));
        row("mark alone is no tail", QStringLiteral("Buy milk · !"), QStringLiteral("Buy milk · !"));
        row("full tail", QStringLiteral("Write report · 45m tomorrow !"), QStringLiteral("Write report"), 45, true, 1);
        row("no inline scanning", QStringLiteral("Write report 45m"), QStringLiteral("Write report 45m"));
        row("failing tail", QStringLiteral("Call Bob ~ soon"), QStringLiteral("Call Bob ~ soon"));
        row("tilde separator", QStringLiteral("Call Bob ~ 10m"), QStringLiteral("Call Bob"), 10);
        row("glued tilde", QStringLiteral("Plan ~30m"), QStringLiteral("Plan ~30m"));
        row("glued dot", QStringLiteral("Plan·30m"), QStringLiteral("Plan·30m"));
        row("separator last", QStringLiteral("Plan · 30m ·"), QStringLiteral("Plan · 30m ·"));
        row("separator first", QStringLiteral("· 30m"), QStringLiteral("· 30m"));
        row("separator first after mark", QStringLiteral("! · 30m"), QStringLiteral("· 30m"), 0, true);
        row("last separator wins", QStringLiteral("a · b · 30m"), QStringLiteral("a · b"), 30);
        row("earlier separator in title", QStringLiteral("Plan ~ soon · 10m"), QStringLiteral("Plan ~ soon"), 10);
        row("tabs and newlines as blanks", QStringLiteral("Plan\t·\n20m"), plan, 20);
        row("tilde inside tail", QStringLiteral("Plan ~ ~30m"), plan, 30);
        row("glued marks", QStringLiteral("Plan · 30m!!"), plan, 30, true);
        row("mark word", QStringLiteral("Plan · !! 30m"), plan, 30, true);
        row("hours and minutes", QStringLiteral("Plan · 1h30"), plan, 90);
        row("decimal hours", QStringLiteral("Plan · 1.5h"), plan, 90);
        row("turkish minutes", QStringLiteral("Plan · 90dk"), plan, 90);
        row("turkish hours", QStringLiteral("Plan · 2 saat"), plan, 120);
        row("short hours, not Saturday", QStringLiteral("Plan · 2 sa"), plan, 120);
        row("bare number", QStringLiteral("Plan · 45"), plan, 45);
        row("hours then minutes word", QStringLiteral("Plan · 1h 30"), plan, 90);
        row("zero", QStringLiteral("Plan · 0m"), QStringLiteral("Plan · 0m"));
        row("too long", QStringLiteral("Plan · 10000m"), QStringLiteral("Plan · 10000m"));
        row("longest", QStringLiteral("Plan · 9999m"), plan, 9999);
        row("digit after digit", QStringLiteral("Plan · 1 30"), QStringLiteral("Plan · 1 30"));
        row("conflicting days", QStringLiteral("Plan · tomorrow today"), QStringLiteral("Plan · tomorrow today"));
        row("same day twice", QStringLiteral("Plan · today hoy"), plan, 0, false, 0);
        row("duration then day", QStringLiteral("Plan · 30m morgen"), plan, 30, false, 1);
        row("day then duration", QStringLiteral("Plan · morgen 30m"), plan, 30, false, 1);
        row("day then two words", QStringLiteral("Plan · tomorrow 1h 30m"), plan, 90, false, 1);
        row("duration on both sides", QStringLiteral("Plan · 30m tomorrow 10m"),
            QStringLiteral("Plan · 30m tomorrow 10m"));
        row("weekday", QStringLiteral("Plan · friday"), plan, 0, false, 2);
        row("today's weekday", QStringLiteral("Plan · Mittwoch"), plan, 0, false, 0);
        row("mar is no day", QStringLiteral("Plan · mar"), QStringLiteral("Plan · mar"));
        row("car is no day", QStringLiteral("Plan · Çar"), QStringLiteral("Plan · Çar"));
    }
    void line()
    {
        QFETCH(QString, text);
        QFETCH(QString, title);
        QFETCH(int, minutes);
        QFETCH(bool, urgent);
        QFETCH(int, day);
        const auto result = QuickAddSyntaxParser::parse(text, wednesday, calendar);
        if (title.isEmpty()) {
            QVERIFY(!result);
            return;
        }
        QVERIFY(result);
        const QuickAddResult expected{title, minutes ? std::optional<int>(minutes) : std::nullopt, urgent,
                                      day >= 0 ? std::optional<int>(day) : std::nullopt};
        QCOMPARE(*result, expected);
    }

    void duration_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("minutes"); // 0: not a duration
        const QList<std::pair<const char *, int>> rows{
            {"45", 45},
            {"~30m", 30},
            {" 1 h 30 m ", 90},
            {"1h30min", 90},
            {"1hr30", 90},
            {"2hrs", 120},
            {"1H30M", 90},
            {"1.5h", 90},
            {".5h", 30},
            {"1sa30dk", 90},
            {"1saat15", 75},
            {"3std", 180},
            {"90dak", 90},
            {"0.5", 1},
            {"2.5m", 3},
            {"0.4", 0},
            {"1,5h", 0},
            {"1e3", 0},
            {"-5", 0},
            {"0", 0},
            {"9999", 9999},
            {"10000", 0},
            {"166.65h", 9999},
            {"166.7h", 0},
            {"h", 0},
            {"m", 0},
            {"", 0},
            {"1h1h", 0},
            {"1h30s", 0},
            {"1.2.3", 0},
            {"1h99999999999999999999", 0},
            {"99999999999999999999999h", 0},
        };
        for (const auto &[text, minutes] : rows)
            QTest::newRow(text[0] ? text : "(empty)") << QString::fromUtf8(text) << minutes;
    }
    void duration()
    {
        QFETCH(QString, text);
        QFETCH(int, minutes);
        QCOMPARE(DurationParser::parse(text), minutes ? std::optional<int>(minutes) : std::nullopt);
    }

    void dayWords_data()
    {
        QTest::addColumn<QString>("word");
        QTest::addColumn<int>("offset"); // from Wednesday; -1: no day word
        const QStringList today{QStringLiteral("Bugün"), QStringLiteral("BUGUN"),       QStringLiteral("heute"),
                                QStringLiteral("HOY"),   QStringLiteral("aujourd’hui"), QStringLiteral("Aujourd'hui.")};
        const QStringList tomorrow{QStringLiteral("tmrw"),      QStringLiteral("Yarın"),  QStringLiteral("YARIN"),
                                   QStringLiteral("yarin"),     QStringLiteral("MAÑANA"), QStringLiteral("manana"),
                                   QStringLiteral("mañana..."), QStringLiteral("demain")};
        const QStringList none{QStringLiteral("mar"),    QStringLiteral("car"),  QStringLiteral("Mi."),
                               QStringLiteral("sa"),     QStringLiteral("soon"), QStringLiteral("..."),
                               QStringLiteral("aujourd")};
        for (const QString &w : today)
            QTest::newRow(qPrintable(w)) << w << 0;
        for (const QString &w : tomorrow)
            QTest::newRow(qPrintable(w)) << w << 1;
        for (const QString &w : none)
            QTest::newRow(qPrintable(w)) << w << -1;
    }
    void dayWords()
    {
        QFETCH(QString, word);
        QFETCH(int, offset);
        QCOMPARE(QuickAddDayVocabulary::dayOffset(word, wednesday, calendar),
                 offset >= 0 ? std::optional<int>(offset) : std::nullopt);
    }

    // Every weekday name, as users type it, on each day of a week (which in
    // New York holds the daylight-saving change), early, midday and late.
    void weekdaysOverAWeek_data()
    {
        QTest::addColumn<QStringList>("names"); // index 0 = Sunday ... 6 = Saturday
        const auto split = [](const char *text) { return QString::fromUtf8(text).split(u' '); };
        QTest::newRow("en_US") << split("Sunday monday Tue WEDNESDAY thu. Fri saturday");
        QTest::newRow("tr_TR") << split("pazar Pazartesi salı çarşamba PERŞEMBE cuma cumartesi");
        QTest::newRow("tr_TR plain") << split("Paz Pzt SALI carsamba persembe Cum Cmt");
        QTest::newRow("de_DE") << split("Sonntag Montag Dienstag Mittwoch Donnerstag Freitag Samstag");
        QTest::newRow("es_ES") << split("domingo lunes martes miércoles jueves viernes sábado");
        QTest::newRow("es_ES short") << split("dom lun martes mié. jue vie sab");
        QTest::newRow("fr_FR") << split("dimanche lundi mardi mercredi jeudi vendredi samedi");
        QTest::newRow("fr_FR short") << split("dim. lun. mardi mer. jeu. ven. sam.");
    }
    void weekdaysOverAWeek()
    {
        QFETCH(QStringList, names);
        for (int day = 0; day < 7; ++day) {
            // 1 March 2026 is a Sunday.
            const QDateTime start = QDate(2026, 3, 1 + day).startOfDay(calendar.timeZone());
            for (qint64 secs : {30 * 60, 12 * 3600, 23 * 3600 + 30 * 60}) {
                const QDateTime now = start.addSecs(secs);
                for (int t = 0; t < 7; ++t) {
                    const auto offset = QuickAddDayVocabulary::dayOffset(names[t], now, calendar);
                    QVERIFY2(offset == (t - day + 7) % 7,
                             qPrintable(QStringLiteral("%1 on day %2 at %3").arg(names[t]).arg(day).arg(secs)));
                }
            }
        }
        // Turkish capital dotted İ folds to i as well.
        QCOMPARE(QuickAddDayVocabulary::dayOffset(QStringLiteral("PAZARTESİ"), wednesday, calendar), 5);
    }

    // Folding never depends on the user's locale (under Turkish rules "I"
    // would lower-case to a dotless ı).
    void normalisationIgnoresTheUserLocale()
    {
        const QLocale saved;
        QLocale::setDefault(QLocale(QStringLiteral("tr_TR")));
        QCOMPARE(QuickAddDayVocabulary::normalize(QStringLiteral(" YARIN. ")), QStringLiteral("yarin"));
        QCOMPARE(QuickAddDayVocabulary::buildWeekdayTable().indexByName,
                 QuickAddDayVocabulary::weekdayTable().indexByName);
        QLocale::setDefault(saved);
    }
};

QTEST_GUILESS_MAIN(QuickAddTest)
#include "tst_quickadd.moc"
