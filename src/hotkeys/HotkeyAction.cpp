#include "HotkeyAction.h"

#include <QtGlobal>

#include <array>

namespace tarnwell {

namespace {
constexpr std::array<const char *, 8> actionNames{"togglePopover", "quickAdd", "completeActive", "addTask",
                                                  "dayPrev",       "dayNext",  "jumpToToday",    "openReview"};
} // namespace

QString rawValue(HotkeyAction action)
{
    return QString::fromLatin1(actionNames[std::size_t(action)]);
}

std::optional<HotkeyAction> hotkeyActionFromRaw(const QString &raw)
{
    for (std::size_t i = 0; i < actionNames.size(); ++i)
        if (raw == QLatin1String(actionNames[i]))
            return HotkeyAction(int(i));
    return std::nullopt;
}

QString actionTitle(HotkeyAction action)
{
    switch (action) {
    case HotkeyAction::togglePopover:
        //: Name of a global shortcut, shown in the desktop's shortcut settings and in ours
        //% "Open or close Tarnwell"
        return qtTrId("settings.hotkeys.togglePopover");
    case HotkeyAction::quickAdd:
        //: Name of a global shortcut, shown in the desktop's shortcut settings and in ours
        //% "Quick add a task"
        return qtTrId("settings.hotkeys.quickAdd");
    default:
        for (const BuiltInShortcut &shortcut : builtInShortcuts())
            if (shortcut.action == action)
                return qtTrId(shortcut.labelId);
        return rawValue(action);
    }
}

const std::array<BuiltInShortcut, 6> &builtInShortcuts()
{
    // Keys that a text field does not use, so they work while typing in the
    // add field (on X11 Ctrl+D, Ctrl+E and Ctrl+K edit text): Ctrl with Return
    // or a letter it has no meaning for, Alt with arrows and Home as in a
    // browser's history.
    static const std::array<BuiltInShortcut, 6> table{{
        //: Label of the fixed popover shortcut that completes the task in hand
        //% "Complete active task"
        {HotkeyAction::completeActive, "Ctrl+Return", QT_TRID_NOOP("settings.hotkeys.builtIn.complete")},
        //: Label of the fixed popover shortcut that puts the cursor in the add field
        //% "Add new task"
        {HotkeyAction::addTask, "Ctrl+N", QT_TRID_NOOP("settings.hotkeys.builtIn.addTask")},
        //: Label of the fixed popover shortcut that shows the day before
        //% "Previous day"
        {HotkeyAction::dayPrev, "Alt+Left", QT_TRID_NOOP("settings.hotkeys.builtIn.dayPrev")},
        //: Label of the fixed popover shortcut that shows the day after
        //% "Next day"
        {HotkeyAction::dayNext, "Alt+Right", QT_TRID_NOOP("settings.hotkeys.builtIn.dayNext")},
        //: Label of the fixed popover shortcut that goes back to today
        //% "Go to today"
        {HotkeyAction::jumpToToday, "Alt+Home", QT_TRID_NOOP("settings.hotkeys.builtIn.today")},
        //: Label of the fixed popover shortcut that opens the review window
        //% "Open the Review window"
        {HotkeyAction::openReview, "Ctrl+R", QT_TRID_NOOP("settings.hotkeys.builtIn.review")},
    }};
    return table;
}

} // namespace tarnwell
