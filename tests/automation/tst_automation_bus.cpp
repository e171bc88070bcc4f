// org.tarnwell.Tarnwell1 on a private session bus: the agent's side in this
// process, a second connection as the caller.
#include "focus/FocusFixture.h"
#include "integration/TaskAutomation.h"
#include "kit/Translations.h"
#include "persistence/Day.h"
#include "persistence/Task.h"
#include "platform/AutomationBus.h"

#include <QDBusConnection>
#include <QElapsedTimer>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTest>

using tarnwell::platform::AutomationBus;

class AutomationBusTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<FocusFixture> m_f;
    std::unique_ptr<TaskAutomation> m_automation;
    std::unique_ptr<AutomationBus> m_bus;
    QDBusConnection m_caller{QStringLiteral("none")};

    // Calls over the caller's own connection while this thread's loop serves the agent side.
    QDBusMessage call(const QString &method, const QVariantList &arguments = {})
    {
        QDBusMessage message = QDBusMessage::createMethodCall(QStringLiteral("org.tarnwell.Tarnwell"),
                                                              QStringLiteral("/org/tarnwell/Tarnwell"),
                                                              QStringLiteral("org.tarnwell.Tarnwell1"), method);
        message.setArguments(arguments);
        QDBusPendingCall pending = m_caller.asyncCall(message, 5000);
        QElapsedTimer timer;
        timer.start();
        while (!pending.isFinished() && timer.elapsed() < 5000)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        return pending.reply();
    }
    int openToday() const
    {
        const Day *today = m_f->service.dayRepository().day(m_f->time.now);
        return today ? int(m_f->service.taskRepository().openTasks(today).size()) : 0;
    }

private Q_SLOTS:
    void initTestCase()
    {
        static Translations translations;
        translations.install(QStringLiteral("en"));
        m_caller = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("caller"));
        QVERIFY(m_caller.isConnected());
    }
    void init()
    {
        m_f = std::make_unique<FocusFixture>();
        m_automation = std::make_unique<TaskAutomation>(m_f->service, m_f->sound, m_f->rec, Calendar());
        m_bus = std::make_unique<AutomationBus>(QDBusConnection::sessionBus());
        QCOMPARE(m_bus->claim(), tarnwell::platform::ApplicationBus::Role::primary);
    }
    void cleanup()
    {
        m_bus.reset();
        m_automation.reset();
        m_f.reset();
    }

    void answersNotReadyUntilTheServicesExist()
    {
        const QDBusMessage reply = call(QStringLiteral("Status"));
        QCOMPARE(reply.errorName(), QStringLiteral("org.tarnwell.Tarnwell1.Error.NotReady"));
    }

    void urgentAddTaskGoesFirst()
    {
        m_bus->setAutomation(m_automation.get());
        for (const char *t : {"a", "b", "c"})
            m_f->add(QString::fromLatin1(t));
        QSignalSpy changed(m_bus.get(), &AutomationBus::Changed);
        const QDBusMessage reply = call(QStringLiteral("AddTask"), {QStringLiteral(" Call Bob "), 15, true});
        QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
        QCOMPARE(reply.arguments().value(0).toString(), QStringLiteral("Call Bob"));
        QTRY_VERIFY(changed.count() > 0);

        const QJsonObject status =
            QJsonDocument::fromJson(call(QStringLiteral("Status")).arguments().value(0).toString().toUtf8()).object();
        QStringList order;
        for (const auto &t : status.value(QStringLiteral("queue")).toArray())
            order << t.toObject().value(QStringLiteral("title")).toString();
        QCOMPARE(
            order,
            (QStringList{QStringLiteral("Call Bob"), QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
        QCOMPARE(status.value(QStringLiteral("active")).toObject().value(QStringLiteral("remainingSeconds")).toInt(),
                 900);
    }

    void refusalsAreBusErrorsAndChangeNothing_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<QVariantList>("arguments");
        QTest::addColumn<QString>("error");
        QTest::addColumn<QString>("text");
        QTest::newRow("blank title") << "AddTask" << QVariantList{QStringLiteral("   "), 0, false} << "Validation"
                                     << "";
        QTest::newRow("201 characters") << "AddTask" << QVariantList{QString(201, u'x'), 0, false} << "Validation"
                                        << "200";
        QTest::newRow("too many minutes")
            << "AddTask" << QVariantList{QStringLiteral("x"), 10000, false} << "InvalidArgument"
            << "9999";
        QTest::newRow("huge text") << "AddQuickTask" << QVariantList{QString(100000, u'x')} << "InvalidArgument"
                                   << "";
        QTest::newRow("lone mark") << "AddQuickTask" << QVariantList{QStringLiteral("!")} << "InvalidArgument"
                                   << "";
        QTest::newRow("bad id") << "Complete" << QVariantList{QStringLiteral("1234")} << "InvalidArgument"
                                << "1234";
        QTest::newRow("unknown id") << "Complete" << QVariantList{QUuid::createUuid().toString()} << "TaskNotFound"
                                    << "";
        QTest::newRow("bad day") << "Tasks" << QVariantList{QStringLiteral("yesterday")} << "InvalidArgument"
                                 << "";
        QTest::newRow("bad import") << "Import" << QVariantList{QByteArray("[]")} << "Import"
                                    << "";
        QTest::newRow("nothing in hand") << "Start" << QVariantList{} << "NoTaskInHand"
                                         << "";
    }
    void refusalsAreBusErrorsAndChangeNothing()
    {
        QFETCH(QString, method);
        QFETCH(QVariantList, arguments);
        QFETCH(QString, error);
        QFETCH(QString, text);
        m_bus->setAutomation(m_automation.get());
        const QDBusMessage reply = call(method, arguments);
        QCOMPARE(reply.errorName(), QStringLiteral("org.tarnwell.Tarnwell1.Error.") + error);
        QVERIFY(!reply.errorMessage().isEmpty() && !reply.errorMessage().contains(QLatin1String("error.")));
        QVERIFY2(reply.errorMessage().contains(text), qPrintable(reply.errorMessage()));
        QCOMPARE(openToday(), 0);
        QVERIFY(!m_f->store->viewContext().hasChanges());
    }

    void drivesTheTaskInHand()
    {
        m_bus->setAutomation(m_automation.get());
        QCOMPARE(call(QStringLiteral("AddQuickTask"), {QStringLiteral("Write · 30m")}).arguments().value(0).toString(),
                 QStringLiteral("Write"));
        m_f->add(QStringLiteral("Next"));
        QCOMPARE(call(QStringLiteral("Start")).arguments().value(0).toString(), QStringLiteral("Write"));
        QVERIFY(m_f->service.activeTask()->activeStartedAt());
        m_f->time.advance(90'000);
        QCOMPARE(call(QStringLiteral("Toggle")).type(), QDBusMessage::ReplyMessage);
        QCOMPARE(m_f->service.activeTask()->actualSecondsFocused(), std::optional<qint32>(90));
        QCOMPARE(call(QStringLiteral("Complete"), {QString()}).arguments().value(0).toString(),
                 QStringLiteral("Write"));
        QCOMPARE(m_f->service.activeTask()->title(), QStringLiteral("Next"));
        QVERIFY(m_f->rec.nextUp.isEmpty()); // no next-up screen for a script
        const QJsonArray tasks =
            QJsonDocument::fromJson(call(QStringLiteral("Tasks"), {QString()}).arguments().value(0).toString().toUtf8())
                .array();
        QCOMPARE(tasks.size(), 2);
        QCOMPARE(tasks.at(1).toObject().value(QStringLiteral("focusedSeconds")).toInt(), 90);
    }
};

QTEST_GUILESS_MAIN(AutomationBusTest)
#include "tst_automation_bus.moc"
