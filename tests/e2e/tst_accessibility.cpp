// The popover and quick add as a screen reader meets them: the real program
// under Xvfb with the accessibility bus, its windows read over AT-SPI. Every
// button, field, check box and list row on screen has a role and a name, in
// the chosen language; the card of the task in hand reads out its countdown.
#include "platform/DBusMenu.h"
#include "platform/StatusNotifierItem.h"
#include "support/AppProcess.h"
#include "support/AtSpiTree.h"
#include "support/Desktop.h"

#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

using namespace tarnwell::platform;

namespace {

constexpr int patience = 30000;
const QString taskTitle = QStringLiteral("Plan the sprint");

// The roles a person acts on, which a screen reader must be able to name.
bool isControl(const AtSpiNode &n)
{
    static const QSet<QString> roles{QStringLiteral("push button"), QStringLiteral("toggle button"),
                                     QStringLiteral("check box"),   QStringLiteral("radio button"),
                                     QStringLiteral("text"),        QStringLiteral("entry"),
                                     QStringLiteral("list item"),   QStringLiteral("combo box"),
                                     QStringLiteral("spin button"), QStringLiteral("menu item")};
    return roles.contains(n.role);
}

} // namespace

class AccessibilityTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_home;
    AtSpiTree m_reader;
    QSet<QString> m_englishNames; // the controls' names in the English run

    QString storePath() const { return m_home.path() + QStringLiteral("/data/tarnwell/Tarnwell.sqlite"); }

    // The name of the program's text field that has the keyboard focus; empty
    // when none has.
    QString focusedField(AppProcess &app)
    {
        const AtSpiNode tree = m_reader.application(app.pid());
        const AtSpiNode *field = tree.shown([](const AtSpiNode &n) { return n.isField() && n.focused; });
        return field ? field->name : QString();
    }

    // Checks that every control on screen has a role and a name. Returns the
    // names that are not in the chosen language: in a language other than
    // English, those the English run read out (the task's own title aside).
    // With `compare` false only the names are checked (windows whose names
    // may rightly read the same in both languages: chime and key names).
    QStringList checkControls(const AtSpiNode &tree, const QString &language, bool compare = true)
    {
        const auto controls = tree.find([](const AtSpiNode &n) { return n.showing && isControl(n); });
        QStringList unnamed;
        QStringList untranslated;
        for (const AtSpiNode *n : controls) {
            if (n->name.trimmed().isEmpty())
                unnamed << n->role + QStringLiteral(" (") + n->text + QLatin1Char(')');
            else if (language == QLatin1String("en"))
                m_englishNames.insert(n->name);
            else if (compare && m_englishNames.contains(n->name) && n->name != taskTitle)
                untranslated << n->name;
        }
        if (controls.isEmpty())
            QTest::qFail("no controls on screen", __FILE__, __LINE__);
        else if (!unnamed.isEmpty())
            QTest::qFail(qPrintable(QStringLiteral("without a name: ") + unnamed.join(QStringLiteral(", "))), __FILE__,
                         __LINE__);
        return untranslated;
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(m_reader.isConnected(), "no accessibility bus (run under isolate.sh --a11y)");
        registerStatusNotifierTypes();
        registerDBusMenuTypes();
        // A day with a task whose timer runs.
        Panel panel;
        AppProcess app(m_home.path());
        QVERIFY2(app.waitFor(QStringLiteral("Interface installed"), patience), qPrintable(app.log()));
        QTRY_VERIFY_WITH_TIMEOUT(panel.registrations() > 0, patience);
        panel.activate(1500, 0);
        const QString missed =
            keyboard::enterLine(m_reader, app.pid(), taskTitle + QStringLiteral(" ~ 30m"), taskTitle, patience);
        if (!missed.isEmpty())
            qWarning().noquote() << missed;
        QVERIFY(missed.isEmpty());
        panel.clickMenu(Panel::menuTimer);
        StoreReader store(storePath());
        QTRY_COMPARE_WITH_TIMEOUT(store.tasks(), QStringList{taskTitle + QStringLiteral("|30|0|0|1")}, patience);
        app.terminate();
        QVERIFY(app.finish(patience));
    }

    void windowsReadAloud_data()
    {
        QTest::addColumn<QString>("language");
        QTest::newRow("English") << QStringLiteral("en");
        QTest::newRow("German") << QStringLiteral("de");
    }
    void windowsReadAloud()
    {
        QFETCH(QString, language);
        QVERIFY(setSettings(storePath(), {{QStringLiteral("language"), language}}));
        Panel panel;
        AppProcess app(m_home.path());
        QVERIFY2(app.waitFor(QStringLiteral("Interface installed"), patience), qPrintable(app.log()));
        QTRY_VERIFY_WITH_TIMEOUT(panel.registrations() > 0, patience);

        panel.activate(1500, 0);
        QString addField;
        QTRY_VERIFY_WITH_TIMEOUT(!(addField = focusedField(app)).isEmpty(), patience);
        AtSpiNode popover = m_reader.application(app.pid());
        const QStringList untranslated = checkControls(popover, language);
        if (QTest::currentTestFailed())
            return;
        QVERIFY2(untranslated.isEmpty(),
                 qPrintable(QStringLiteral("in English: ") + untranslated.join(QStringLiteral(", "))));
        const auto rows =
            popover.find([](const AtSpiNode &n) { return n.showing && n.role == QLatin1String("list item"); });
        QVERIFY2(rows.size() == 1 && rows.first()->name == taskTitle, "the task is not read as a list row");

        // The card names its task and reads out the time left, as it runs.
        const QRegularExpression clock(QStringLiteral("\\d+:\\d\\d"));
        const auto cardOf = [&](const AtSpiNode &tree) {
            return tree.shown([&](const AtSpiNode &n) {
                return n.name == taskTitle && n.role != QLatin1String("list item") && n.role != QLatin1String("label");
            });
        };
        const AtSpiNode *card = cardOf(popover);
        QVERIFY2(card, "the task in hand's card has no accessible name");
        QVERIFY2(card->description.contains(clock), qPrintable(card->description));
        const QString before = card->description;
        QTRY_VERIFY_WITH_TIMEOUT((popover = m_reader.application(app.pid()), cardOf(popover)) &&
                                     cardOf(popover)->description.contains(clock) &&
                                     cardOf(popover)->description != before,
                                 patience);

        // Quick add, opened by a link handed to the running program.
        AppProcess link(m_home.path(), {QStringLiteral("tarnwell://quickadd")});
        QVERIFY(link.finish(patience));
        QVERIFY2(app.waitFor(QStringLiteral("Quick add shown"), patience), qPrintable(app.log()));
        QTRY_VERIFY_WITH_TIMEOUT(!focusedField(app).isEmpty() && focusedField(app) != addField, patience);
        const QStringList quickAddUntranslated = checkControls(m_reader.application(app.pid()), language);
        QVERIFY2(quickAddUntranslated.isEmpty(), qPrintable(quickAddUntranslated.join(QStringLiteral(", "))));

        // Every tab of the settings, the review and the wrap-up, each opened by its link.
        const bool german = language == QLatin1String("de");
        const auto readWindow = [&](const QString &url, const QString &shown, int times, const QString &title) {
            AppProcess opener(m_home.path(), {url});
            QVERIFY(opener.finish(patience));
            QVERIFY2(app.waitFor(shown, patience, times), qPrintable(app.log()));
            // The window's first frame (or the new tab) is on the bus a moment later.
            QTest::qWait(1000);
            const AtSpiNode tree = m_reader.application(app.pid());
            QVERIFY2(tree.shown([&](const AtSpiNode &n) { return n.name == title && !isControl(n); }),
                     qPrintable(title + QStringLiteral(" is not on screen\n") + tree.dump()));
            checkControls(tree, language, false);
            if (QTest::currentTestFailed())
                qWarning().noquote() << url << "\n" << tree.dump();
        };
        int settingsShown = 0;
        for (const char *tab : {"general", "reminders", "hotkeys", "routines", "permissions", "about"}) {
            // An open window changes its tab without being shown again.
            readWindow(QStringLiteral("tarnwell://settings/") + QLatin1String(tab),
                       QStringLiteral("Settings requested"), ++settingsShown,
                       german ? QStringLiteral("Tarnwell-Einstellungen") : QStringLiteral("Tarnwell Settings"));
            if (QTest::currentTestFailed())
                return;
        }
        readWindow(QStringLiteral("tarnwell://review"), QStringLiteral("Review shown"), 1,
                   german ? QStringLiteral("Rückblick auf Ihre Schätzungen")
                          : QStringLiteral("Review of your estimates"));
        if (QTest::currentTestFailed())
            return;
        readWindow(QStringLiteral("tarnwell://wrapup"), QStringLiteral("Wrap-up shown"), 1,
                   german ? QStringLiteral("Tagesabschluss") : QStringLiteral("Wrap up the day"));
        if (QTest::currentTestFailed())
            return;

        app.terminate();
        QVERIFY(app.finish(patience));
    }
};

QTEST_MAIN(AccessibilityTest)
#include "tst_accessibility.moc"
