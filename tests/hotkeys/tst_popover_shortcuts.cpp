// The windows' side of hot keys on a real display: "Tarnwell.hotkey.fired"
// opens and closes the popover and shows quick add ready to type; the
// popover's fixed shortcuts act while it has the focus, leave the add
// field's typing alone, and stop when the monitor is removed.
#include "hotkeys/HotkeyManager.h"
#include "kit/NamedNotifications.h"
#include "views/PopoverKeyMonitor.h"
#include "views/PopoverManager.h"
#include "views/QuickAddWindowController.h"
#include "views/ThemeController.h"
#include "views/UiEngine.h"
#include "views/ViewsFixture.h"

#include <QGuiApplication>
#include <QKeySequence>
#include <QtQml/QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(Tarnwell_ViewsPlugin)

using namespace tarnwell;

namespace {

struct Windows
{
    ViewsFixture f;
    ThemeController theme;
    UiEngine ui{theme};
    PopoverManager popover{f.model, ui};
    QuickAddDraft draft{f.tasks, f.days, f.calendar, f.time.clock()};
    QuickAddWindowController quickAdd{draft, ui};
    NamedNotifications center;
    PopoverKeyMonitor monitor{popover, center};
    Windows()
    {
        popover.observeHotkeys(center);
        quickAdd.observeHotkeys(center);
    }
    void fire(HotkeyAction action)
    {
        center.post(QString::fromLatin1(HotkeyManager::Constants::firedNotification),
                    {{QStringLiteral("action"), rawValue(action)}});
    }
};

} // namespace

class PopoverShortcutsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fixedKeysLeaveTextEditingAlone()
    {
        Translations english;
        QVERIFY(english.install(QStringLiteral("en")));
        const QList<QKeySequence::StandardKey> editing{QKeySequence::Copy,
                                                       QKeySequence::Cut,
                                                       QKeySequence::Paste,
                                                       QKeySequence::Undo,
                                                       QKeySequence::Redo,
                                                       QKeySequence::SelectAll,
                                                       QKeySequence::Delete,
                                                       QKeySequence::Backspace,
                                                       QKeySequence::DeleteStartOfWord,
                                                       QKeySequence::DeleteEndOfWord,
                                                       QKeySequence::DeleteEndOfLine,
                                                       QKeySequence::MoveToNextWord,
                                                       QKeySequence::MoveToPreviousWord,
                                                       QKeySequence::MoveToStartOfLine,
                                                       QKeySequence::MoveToEndOfLine,
                                                       QKeySequence::MoveToStartOfDocument,
                                                       QKeySequence::MoveToEndOfDocument,
                                                       QKeySequence::SelectNextWord,
                                                       QKeySequence::SelectPreviousWord,
                                                       QKeySequence::SelectStartOfLine,
                                                       QKeySequence::SelectEndOfLine,
                                                       QKeySequence::InsertParagraphSeparator,
                                                       QKeySequence::InsertLineSeparator,
                                                       QKeySequence::Cancel};
        QList<QKeySequence> seen;
        for (const BuiltInShortcut &shortcut : builtInShortcuts()) {
            const QKeySequence keys(QString::fromLatin1(shortcut.keys), QKeySequence::PortableText);
            QCOMPARE(keys.count(), 1);
            QVERIFY2(!seen.contains(keys), shortcut.keys);
            seen << keys;
            for (const QKeySequence::StandardKey standard : editing)
                QVERIFY2(!QKeySequence::keyBindings(standard).contains(keys), shortcut.keys);
            // Every label has an English text.
            QVERIFY(qtTrId(shortcut.labelId) != QLatin1String(shortcut.labelId));
        }
    }

    void hotkeysOpenAndCloseTheWindows()
    {
        Windows w;
        w.fire(HotkeyAction::togglePopover);
        QVERIFY(w.popover.isVisible());
        w.fire(HotkeyAction::togglePopover);
        QVERIFY(!w.popover.isVisible());
        // A fixed shortcut's action does nothing to a hidden popover.
        w.fire(HotkeyAction::dayNext);
        QCOMPARE(w.f.model.dayOffset(), 0);

        w.fire(HotkeyAction::quickAdd);
        QVERIFY(w.quickAdd.isVisible());
        QQuickWindow *window = w.quickAdd.window();
        QTRY_VERIFY(window->isActive());
        QTRY_VERIFY(window->activeFocusItem() && window->activeFocusItem()->inherits("QQuickTextInput"));
    }

    void fixedShortcutsServeTheFocusedPopover()
    {
        Windows w;
        w.f.add(QStringLiteral("Stretch"));
        w.monitor.install();
        w.popover.show();
        QQuickWindow *window = w.popover.window();
        QTRY_VERIFY(window->isActive());
        QTRY_COMPARE(focusName(window), QStringLiteral("addField"));
        QTest::keyClick(window, Qt::Key_X);

        QTest::keyClick(window, Qt::Key_Right, Qt::AltModifier);
        QCOMPARE(w.f.model.dayOffset(), 1);
        QTest::keyClick(window, Qt::Key_Left, Qt::AltModifier);
        QTest::keyClick(window, Qt::Key_Left, Qt::AltModifier);
        QCOMPARE(w.f.model.dayOffset(), -1);
        QTest::keyClick(window, Qt::Key_Home, Qt::AltModifier);
        QCOMPARE(w.f.model.dayOffset(), 0);
        // Typing went on undisturbed.
        QCOMPARE(window->activeFocusItem()->property("text").toString(), QStringLiteral("x"));

        QTest::keyClick(window, Qt::Key_Return, Qt::ControlModifier);
        QTRY_COMPARE(w.f.titles(0), QStringList());

        w.monitor.remove();
        QTest::keyClick(window, Qt::Key_Right, Qt::AltModifier);
        QCOMPARE(w.f.model.dayOffset(), 0);
        // Installed again after a reload, it serves the popover again.
        w.popover.hide();
        w.monitor.install();
        w.popover.show();
        QTRY_VERIFY(w.popover.window()->isActive());
        QTest::keyClick(w.popover.window(), Qt::Key_Right, Qt::AltModifier);
        QCOMPARE(w.f.model.dayOffset(), 1);
    }
};

QTEST_MAIN(PopoverShortcutsTest)
#include "tst_popover_shortcuts.moc"
