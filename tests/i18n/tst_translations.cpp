// The string tables: every id is translated into Turkish, German, Spanish and
// French (not copied from English), keeps its placeholders, and the compiled
// tables load with English underneath as the fallback.
#include "kit/Translations.h"
#include "persistence/RepositoryError.h"

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>
#include <QTest>
#include <QXmlStreamReader>

using namespace tarnwell;

namespace {

struct Message
{
    QString id;
    QString source;
    QStringList translations; // one, or one per plural form
    bool unfinished = false;
};

QList<Message> readTable(const QString &language)
{
    QFile file(QStringLiteral(TARNWELL_I18N_DIR "/tarnwell_%1.ts").arg(language));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QList<Message> messages;
    QXmlStreamReader xml(&file);
    Message current;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            if (xml.name() == QLatin1String("message")) {
                current = Message{};
                current.id = xml.attributes().value(QLatin1String("id")).toString();
            } else if (xml.name() == QLatin1String("source")) {
                current.source = xml.readElementText();
            } else if (xml.name() == QLatin1String("translation")) {
                const auto type = xml.attributes().value(QLatin1String("type"));
                current.unfinished = type == QLatin1String("unfinished");
                if (type == QLatin1String("vanished") || type == QLatin1String("obsolete"))
                    current.id.clear();
                const QString text = xml.readElementText(QXmlStreamReader::IncludeChildElements);
                if (!text.trimmed().isEmpty())
                    current.translations << text;
            } else if (xml.name() == QLatin1String("numerusform")) {
                current.translations << xml.readElementText();
            }
        } else if (xml.isEndElement() && xml.name() == QLatin1String("message") && !current.id.isEmpty()) {
            messages << current;
        }
    }
    return messages;
}

QStringList placeholders(const QString &text)
{
    QStringList found;
    static const QRegularExpression pattern(QStringLiteral("%(n|L?\\d)"));
    auto it = pattern.globalMatch(text);
    while (it.hasNext())
        found << it.next().captured(0);
    found.sort();
    found.removeDuplicates();
    return found;
}

} // namespace

class TranslationsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyIdIsReallyTranslated_data()
    {
        QTest::addColumn<QString>("language");
        for (const char *language : {"tr", "de", "es", "fr"})
            QTest::newRow(language) << QString::fromLatin1(language);
    }
    void everyIdIsReallyTranslated()
    {
        QFETCH(QString, language);
        const QList<Message> english = readTable(QStringLiteral("en"));
        const QList<Message> table = readTable(language);
        QVERIFY(!english.isEmpty());
        QHash<QString, Message> byId;
        for (const Message &m : table)
            byId.insert(m.id, m);
        int copies = 0;
        for (const Message &source : english) {
            QVERIFY2(byId.contains(source.id), qPrintable(language + QStringLiteral(": missing ") + source.id));
            const Message &m = byId[source.id];
            QVERIFY2(!m.unfinished && !m.translations.isEmpty(),
                     qPrintable(language + QStringLiteral(": untranslated ") + m.id));
            for (const QString &text : m.translations) {
                QVERIFY2(!text.trimmed().isEmpty(), qPrintable(language + QStringLiteral(": empty form of ") + m.id));
                QCOMPARE(placeholders(text), placeholders(source.source));
            }
            if (m.translations.first() == source.source)
                ++copies;
        }
        // A few words are the same in two languages; a table of English copies is not a translation.
        QVERIFY2(copies * 10 <= english.size(),
                 qPrintable(QStringLiteral("%1 of %2 %3 texts equal the English ones")
                                .arg(copies)
                                .arg(english.size())
                                .arg(language)));
    }

    void compiledTablesLoadWithEnglishUnderneath()
    {
        Translations translations;
        QVERIFY(translations.install(QStringLiteral("en")));
        const QString englishEmpty = RepositoryError::titleEmpty().localizedDescription();
        QVERIFY(!englishEmpty.startsWith(QStringLiteral("error.")));
        QVERIFY(RepositoryError::titleTooLong(200).localizedDescription().contains(QStringLiteral("200")));
        for (const char *language : {"tr", "de", "es", "fr"}) {
            QVERIFY(translations.install(QString::fromLatin1(language)));
            QCOMPARE(translations.installedLanguage(), QString::fromLatin1(language));
            const QString text = RepositoryError::titleEmpty().localizedDescription();
            QVERIFY2(text != englishEmpty && !text.startsWith(QStringLiteral("error.")), language);
            QVERIFY(RepositoryError::titleTooLong(200).localizedDescription().contains(QStringLiteral("200")));
        }
        QVERIFY(!translations.install(QStringLiteral("xx")));
        QCOMPARE(translations.installedLanguage(), QStringLiteral("en"));
    }

    void systemLanguageResolvesToAShippedOne()
    {
        QCOMPARE(Translations::resolve(QStringLiteral("system"), {QStringLiteral("de-CH"), QStringLiteral("en-US")}),
                 QStringLiteral("de"));
        QCOMPARE(Translations::resolve(QStringLiteral("system"), {QStringLiteral("pt-BR"), QStringLiteral("tr_TR")}),
                 QStringLiteral("tr"));
        QCOMPARE(Translations::resolve(QStringLiteral("system"), {QStringLiteral("ja")}), QStringLiteral("en"));
        QCOMPARE(Translations::resolve(QStringLiteral("fr"), {QStringLiteral("de")}), QStringLiteral("fr"));
    }
};

QTEST_GUILESS_MAIN(TranslationsTest)
#include "tst_translations.moc"
