// The status item's label: limits, truncation by user-perceived character,
// countdown texts, progress and the states.
#include "menubar/MenuBarLabelBuilder.h"
#include "persistence/PersistenceController.h"
#include "persistence/Task.h"

#include <QTest>

using namespace tarnwell;
using State = MenuBarPresentation::State;

Q_DECLARE_METATYPE(std::optional<qint64>)

class MenuBarLabelTest : public QObject
{
    Q_OBJECT

private:
    PersistenceController m_store{true};
    Task *task(const QString &title, std::optional<qint32> minutes)
    {
        Task *t = m_store.viewContext().insertNew<Task>();
        t->setTitle(title);
        t->setDurationMinutes(minutes);
        return t;
    }

private Q_SLOTS:
    void truncation_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<int>("maxChars");
        QTest::addColumn<QString>("shown");
        const QString e = QStringLiteral("\u2026");
        const QString family = QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467");
        QTest::newRow("fits exactly") << QStringLiteral("12345678") << 8 << QStringLiteral("12345678");
        QTest::newRow("ten into eight") << QStringLiteral("1234567890") << 8 << (QStringLiteral("1234567") + e);
        QTest::newRow("limit 5 acts as 8") << QStringLiteral("1234567890") << 5 << (QStringLiteral("1234567") + e);
        QTest::newRow("limit 40 acts as 32")
            << QString(40, QLatin1Char('x')) << 40 << (QString(31, QLatin1Char('x')) + e);
        QTest::newRow("emoji are one character each")
            << (QStringLiteral("Plan ") + family + family + QStringLiteral("!")) << 8
            << (QStringLiteral("Plan ") + family + family + QStringLiteral("!"));
        QTest::newRow("emoji cut whole") << (QStringLiteral("Call ") + family + family + family + family +
                                             QStringLiteral("s"))
                                         << 8 << (QStringLiteral("Call ") + family + family + e);
        QTest::newRow("combining marks stay with their letter")
            << QStringLiteral("Cafe\u0301 re\u0301sume\u0301 du jour") << 8
            << (QStringLiteral("Cafe\u0301 re\u0301") + e);
    }
    void truncation()
    {
        QFETCH(QString, title);
        QFETCH(int, maxChars);
        QFETCH(QString, shown);
        MenuBarLabelBuilder::Inputs in;
        in.task = task(title, std::nullopt);
        in.maxChars = maxChars;
        const auto p = MenuBarLabelBuilder::build(in);
        QCOMPARE(p.title, shown);
        QCOMPARE(p.state, State::noDuration);
        QVERIFY(!p.countdown && !p.progress);
    }

    void truncationAtTinyLimits()
    {
        QCOMPARE(MenuBarLabelBuilder::truncated(QStringLiteral("abc"), 0), QString());
        QCOMPARE(MenuBarLabelBuilder::truncated(QStringLiteral("abc"), 1), QStringLiteral("\u2026"));
        QCOMPARE(MenuBarLabelBuilder::truncated(QStringLiteral("abc"), -4), QString());
        QCOMPARE(MenuBarLabelBuilder::truncated(QStringLiteral("abc"), 3), QStringLiteral("abc"));
    }

    void countdownAndProgress_data()
    {
        QTest::addColumn<int>("minutes");
        QTest::addColumn<std::optional<qint64>>("remaining");
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("progress");
        QTest::addColumn<int>("state");
        QTest::newRow("fresh 25 minutes")
            << 25 << std::optional<qint64>(1500) << QStringLiteral("25m") << 0.0 << int(State::tracking);
        QTest::newRow("no countdown yet")
            << 25 << std::optional<qint64>() << QStringLiteral("25m") << 0.0 << int(State::tracking);
        QTest::newRow("59 seconds left") << 25 << std::optional<qint64>(59) << QStringLiteral("0m") << 1441.0 / 1500
                                         << int(State::tracking);
        QTest::newRow("nothing left") << 25 << std::optional<qint64>(0) << QStringLiteral("0m") << 1.0
                                      << int(State::overdue);
        QTest::newRow("61 seconds over") << 25 << std::optional<qint64>(-61) << QStringLiteral("-1m") << 1.0
                                         << int(State::overdue);
        QTest::newRow("an hour and five")
            << 120 << std::optional<qint64>(3900) << QStringLiteral("1h 5m") << 0.4583333 << int(State::tracking);
        QTest::newRow("two hours") << 180 << std::optional<qint64>(7200) << QStringLiteral("2h") << 1.0 / 3
                                   << int(State::tracking);
        QTest::newRow("more left than planned")
            << 10 << std::optional<qint64>(900) << QStringLiteral("15m") << 0.0 << int(State::tracking);
        QTest::newRow("two hours over") << 30 << std::optional<qint64>(-7260) << QStringLiteral("-2h 1m") << 1.0
                                        << int(State::overdue);
    }
    void countdownAndProgress()
    {
        QFETCH(int, minutes);
        QFETCH(std::optional<qint64>, remaining);
        QFETCH(QString, text);
        QFETCH(double, progress);
        QFETCH(int, state);
        MenuBarLabelBuilder::Inputs in;
        in.task = task(QStringLiteral("Write"), minutes);
        in.remainingSeconds = remaining;
        const auto p = MenuBarLabelBuilder::build(in);
        QCOMPARE(p.countdown, std::optional<QString>(text));
        QVERIFY(p.progress);
        QVERIFY(qAbs(*p.progress - progress) < 1e-6);
        QCOMPARE(int(p.state), state);
        QVERIFY(!p.isTimerRunning);
    }

    void statesWithoutAPlanOrATask()
    {
        MenuBarLabelBuilder::Inputs in;
        Task *t = task(QStringLiteral("Zero plan"), 0);
        t->setActiveStartedAt(QDateTime::currentDateTimeUtc());
        in.task = t;
        in.remainingSeconds = 0;
        auto p = MenuBarLabelBuilder::build(in);
        QCOMPARE(p.state, State::noDuration);
        QVERIFY(p.isTimerRunning);
        QVERIFY(!p.countdown);

        in = {};
        p = MenuBarLabelBuilder::build(in);
        QCOMPARE(p.state, State::idle);
        QCOMPARE(p.title, QStringLiteral("What's next?")); // no string table loaded: English
        in.showingDayDone = true;
        p = MenuBarLabelBuilder::build(in);
        QCOMPARE(p.state, State::idle);
        QCOMPARE(p.title, QStringLiteral("Done for today. That's plenty."));
        in.minimalIdleMode = true;
        QCOMPARE(MenuBarLabelBuilder::build(in).title, QString());
    }
};

QTEST_GUILESS_MAIN(MenuBarLabelTest)
#include "tst_menubar_label.moc"
