#pragma once

#include <QString>
#include <array>
#include <optional>

namespace tarnwell {

// What a hot key does. The first two are the user's global hot keys; the
// rest are the fixed shortcuts that work while the popover has the focus.
enum class HotkeyAction {
    togglePopover,
    quickAdd,
    completeActive,
    addTask,
    dayPrev,
    dayNext,
    jumpToToday,
    openReview,
};

// The action's name as posted and logged: "togglePopover", "quickAdd", ...
QString rawValue(HotkeyAction action);
std::optional<HotkeyAction> hotkeyActionFromRaw(const QString &raw);
// The action as the user reads it.
QString actionTitle(HotkeyAction action);

// A fixed shortcut of the popover: its keys in QKeySequence's portable text
// and the id of its label. The settings list them from here.
struct BuiltInShortcut
{
    HotkeyAction action;
    const char *keys;
    const char *labelId;
};
const std::array<BuiltInShortcut, 6> &builtInShortcuts();

} // namespace tarnwell
