// The hot-key grammar, its display form, the conflict rules and the manager's
// reload over a recording back end.
#include "hotkeys/HotkeyParser.h"
#include "kit/Translations.h"
#include "support/HotkeyHarness.h"

#include <QSignalSpy>
#include <QTest>

using namespace tarnwell;
using Mod = HotkeyModifier;

namespace {

class RecordingBackend : public GlobalHotkeyBackend
{
public:
    QString name() const override { return QStringLiteral("recording"); }
    void setBindings(const QList<HotkeyBinding> &bindings) override { calls.append(bindings); }
    QList<QList<HotkeyBinding>> calls;
};

class CountingMonitor : public LocalKeyMonitor
{
public:
    void install() override { ++installs; }
    void remove() override { ++removals; }
    int installs = 0;
    int removals = 0;
};

// The back end and the local monitor go first, so that the manager outlives neither.
struct Doubles
{
    RecordingBackend backend;
    CountingMonitor monitor;
};
struct Fixture : Doubles, HotkeyHarness
{
    Fixture()
        : HotkeyHarness(&backend, &monitor)
    {
    }
};

HotkeyCombo combo(HotkeyKey key, HotkeyModifiers modifiers = {})
{
    return {key, modifiers};
}

} // namespace

Q_DECLARE_METATYPE(std::optional<tarnwell::HotkeyCombo>)

class HotkeysTest : public QObject
{
    Q_OBJECT

    Translations m_translations;

private Q_SLOTS:
    void initTestCase() { QVERIFY(m_translations.install(QStringLiteral("en"))); }

    void grammar_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<std::optional<HotkeyCombo>>("expected");
        const auto row = [](const char *name, const QString &text, std::optional<HotkeyCombo> expected) {
            QTest::newRow(name) << text << expected;
        };
        row("defaults", QStringLiteral("cmd+shift+j"), combo(HotkeyKey::j, Mod::command | Mod::shift));
        row("upper case", QStringLiteral("CMD+SHIFT+J"), combo(HotkeyKey::j, Mod::command | Mod::shift));
        row("blanks everywhere", QStringLiteral("  Ctrl + Alt + Space \t"),
            combo(HotkeyKey::space, Mod::control | Mod::option));
        row("long words", QStringLiteral("command+option+control+shift+tab"),
            combo(HotkeyKey::tab, Mod::command | Mod::option | Mod::control | Mod::shift));
        row("empty pieces dropped", QStringLiteral("cmd++j+"), combo(HotkeyKey::j, Mod::command));
        row("blank modifier adds nothing", QStringLiteral("cmd+ \t +j"), combo(HotkeyKey::j, Mod::command));
        row("unknown word skipped", QStringLiteral("hyper+k"), combo(HotkeyKey::k));
        row("no modifier", QStringLiteral("j"), combo(HotkeyKey::j));
        row("enter is return", QStringLiteral("ctrl+enter"), combo(HotkeyKey::returnKey, Mod::control));
        row("esc is escape", QStringLiteral("esc"), combo(HotkeyKey::escape));
        row("arrows", QStringLiteral("alt+up"), combo(HotkeyKey::up, Mod::option));
        row("cmd+ has cmd as key", QStringLiteral("cmd+"), std::nullopt);
        row("f5", QStringLiteral("cmd+shift+f5"), std::nullopt);
        row("blank key", QStringLiteral("cmd+ "), std::nullopt);
        row("empty", QString(), std::nullopt);
        row("only blanks", QStringLiteral(" \t "), std::nullopt);
        row("only plus", QStringLiteral("+++"), std::nullopt);
        row("line break is not trimmed", QStringLiteral("cmd+j\n"), std::nullopt);
        row("punctuation", QStringLiteral("cmd+,"), std::nullopt);
        row("letter outside a-z", QStringLiteral("ctrl+\u00e9"), std::nullopt);
    }
    void grammar()
    {
        QFETCH(QString, text);
        QFETCH(std::optional<HotkeyCombo>, expected);
        const auto parsed = HotkeyParser::parse(text);
        QCOMPARE(parsed.has_value(), expected.has_value());
        if (expected) {
            QCOMPARE(int(parsed->key), int(expected->key));
            QCOMPARE(parsed->modifiers.toInt(), expected->modifiers.toInt());
        }
    }

    void displayForm()
    {
        QCOMPARE(HotkeyChordFormatter::display(QStringLiteral("cmd+shift+j")), QStringLiteral("Super+Shift+J"));
        QCOMPARE(HotkeyChordFormatter::display(QStringLiteral(" Ctrl + Alt + Space ")),
                 QStringLiteral("Ctrl+Alt+Space"));
        // One symbol per word, in the order written; unknown words drop out.
        QCOMPARE(HotkeyChordFormatter::display(QStringLiteral("shift+hyper+cmd+cmd+up")),
                 QStringLiteral("Shift+Super+Super+\u2191"));
        QCOMPARE(HotkeyChordFormatter::display(QStringLiteral("opt+enter")), QStringLiteral("Alt+Enter"));
        QCOMPARE(HotkeyChordFormatter::display(QStringLiteral("control+7")), QStringLiteral("Ctrl+7"));
        // A key the map does not know is shown as typed.
        QCOMPARE(HotkeyChordFormatter::display(QStringLiteral("cmd+F5")), QStringLiteral("Super+f5"));
        QCOMPARE(RecordedHotkey::fromRaw(QStringLiteral("cmd+shift+a")),
                 (RecordedHotkey{QStringLiteral("cmd+shift+a"), QStringLiteral("Super+Shift+A")}));
    }

    void conflicts()
    {
        using Reason = HotkeyConflict::Reason;
        QCOMPARE(HotkeyConflict::check(QStringLiteral("cmd+shift+j"), QStringLiteral("cmd+shift+a")), std::nullopt);
        // Equal combinations, however written.
        const auto duplicate = HotkeyConflict::check(QStringLiteral("cmd+shift+j"), QStringLiteral(" SHIFT+command+J"));
        QVERIFY(duplicate);
        QCOMPARE(duplicate->reason, Reason::duplicate);
        QCOMPARE(duplicate->firstAction, HotkeyAction::togglePopover);
        QCOMPARE(duplicate->secondAction, HotkeyAction::quickAdd);
        QVERIFY(duplicate->description().contains(QStringLiteral("togglePopover and quickAdd")));
        // The popover's text is checked first.
        const auto bothBad = HotkeyConflict::check(QStringLiteral("cmd+"), QStringLiteral("cmd+shift+f5"));
        QCOMPARE(bothBad,
                 (HotkeyConflict{QStringLiteral("cmd+"), HotkeyAction::togglePopover, HotkeyAction::togglePopover,
                                 Reason::unparseable}));
        const auto second = HotkeyConflict::check(QStringLiteral("cmd+j"), QStringLiteral("cmd+shift+f5"));
        QCOMPARE(second->firstAction, HotkeyAction::quickAdd);
        QCOMPARE(second->rawValue, QStringLiteral("cmd+shift+f5"));
        // Unparseable wins over a duplicate of two broken texts.
        QCOMPARE(HotkeyConflict::check(QStringLiteral("f5"), QStringLiteral("f5"))->reason, Reason::unparseable);
        QVERIFY(second->message().contains(QStringLiteral("cmd+shift+f5")));
    }

    void reloadRegistersBothAndAnnouncesPresses()
    {
        Fixture f;
        QCOMPARE(f.manager.reload(), std::nullopt);
        QCOMPARE(f.backend.calls.size(), 1);
        const QList<HotkeyBinding> bound = f.backend.calls.last();
        QCOMPARE(bound.size(), 2);
        QCOMPARE(bound[0].action, HotkeyAction::togglePopover);
        QCOMPARE(bound[0].combo, combo(HotkeyKey::j, Mod::command | Mod::shift));
        QCOMPARE(bound[1].action, HotkeyAction::quickAdd);
        QCOMPARE(bound[1].combo, combo(HotkeyKey::a, Mod::command | Mod::shift));
        QCOMPARE(f.monitor.installs, 1);
        QVERIFY(f.manager.localMonitorInstalled());

        Q_EMIT f.backend.pressed(HotkeyAction::quickAdd);
        Q_EMIT f.backend.pressed(HotkeyAction::togglePopover);
        // Only what is registered fires.
        Q_EMIT f.backend.pressed(HotkeyAction::openReview);
        QCOMPARE(f.fired, (QStringList{QStringLiteral("quickAdd"), QStringLiteral("togglePopover")}));

        // A changed setting moves the registration: all go, then both anew.
        f.settings.setHotkeyQuickAdd(QStringLiteral("ctrl+alt+space"));
        QCOMPARE(f.manager.reload(), std::nullopt);
        QCOMPARE(f.backend.calls.size(), 3);
        QVERIFY(f.backend.calls[1].isEmpty());
        QCOMPARE(f.backend.calls[2][1].combo, combo(HotkeyKey::space, Mod::control | Mod::option));
        QCOMPARE(f.monitor.removals, 1);
        QCOMPARE(f.monitor.installs, 2);

        f.manager.unregisterAll();
        QVERIFY(f.backend.calls.last().isEmpty());
        QVERIFY(f.manager.globalHotkeys().isEmpty());
        QCOMPARE(f.monitor.removals, 2);
        f.fired.clear();
        Q_EMIT f.backend.pressed(HotkeyAction::quickAdd);
        QVERIFY(f.fired.isEmpty());
    }

    void failedReloadKeepsThePreviousRegistrations()
    {
        Fixture f;
        f.manager.reload();
        const auto before = f.manager.globalHotkeys();
        f.settings.setHotkeyQuickAdd(QStringLiteral("CMD+SHIFT+J"));
        QTest::ignoreMessage(
            QtWarningMsg, "Hotkey conflict detected: duplicate: togglePopover and quickAdd both use \"CMD+SHIFT+J\"");
        const auto conflict = f.manager.reload();
        QVERIFY(conflict);
        QCOMPARE(conflict->reason, HotkeyConflict::Reason::duplicate);
        QCOMPARE(f.backend.calls.size(), 1);
        QCOMPARE(f.manager.globalHotkeys(), before);
        QCOMPARE(f.monitor.removals, 0);

        f.settings.setHotkeyQuickAdd(QStringLiteral("cmd+"));
        QTest::ignoreMessage(QtWarningMsg, "Hotkey conflict detected: unparseable: \"cmd+\" for quickAdd");
        QCOMPARE(f.manager.reload()->reason, HotkeyConflict::Reason::unparseable);
        QCOMPARE(f.backend.calls.size(), 1);
        Q_EMIT f.backend.pressed(HotkeyAction::quickAdd);
        QCOMPARE(f.fired, QStringList{QStringLiteral("quickAdd")});
    }

    void aCombinationTakenElsewhereIsReported()
    {
        Fixture f;
        f.manager.reload();
        QSignalSpy taken(&f.manager, &HotkeyManager::takenBySystem);
        Q_EMIT f.backend.refused(HotkeyAction::togglePopover);
        QCOMPARE(taken.size(), 1);
        QCOMPARE(taken[0][0].value<HotkeyAction>(), HotkeyAction::togglePopover);
        QCOMPARE(taken[0][1].value<RecordedHotkey>().display, QStringLiteral("Super+Shift+J"));
        QVERIFY(!f.manager.globalHotkeys().contains(HotkeyAction::togglePopover));
        QVERIFY(f.manager.globalHotkeys().contains(HotkeyAction::quickAdd));
    }

    // The session bus came back: the registrations move to the new back end
    // and the old one is no longer heard.
    void aNewBackEndTakesTheRegistrations()
    {
        Fixture f;
        f.manager.reload();
        RecordingBackend next;
        f.manager.setBackend(&next);
        QVERIFY(f.backend.calls.last().isEmpty());
        QCOMPARE(f.manager.reload(), std::nullopt);
        QCOMPARE(next.calls.last().size(), 2);
        Q_EMIT f.backend.pressed(HotkeyAction::quickAdd);
        Q_EMIT next.pressed(HotkeyAction::togglePopover);
        QCOMPARE(f.fired, QStringList{QStringLiteral("togglePopover")});
    }

    void withoutABackEndNothingIsRegistered()
    {
        CountingMonitor monitor;
        HotkeyHarness h(nullptr, &monitor);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("tarnwell tarnwell://quickadd")));
        QCOMPARE(h.manager.reload(), std::nullopt);
        QVERIFY(h.manager.globalHotkeys().isEmpty());
        QCOMPARE(monitor.installs, 1);
        // Validation still runs.
        h.settings.setHotkeyTogglePopover(QStringLiteral("cmd+shift+a"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^Hotkey conflict detected")));
        QVERIFY(h.manager.reload());
    }
};

QTEST_GUILESS_MAIN(HotkeysTest)
#include "tst_hotkeys.moc"
