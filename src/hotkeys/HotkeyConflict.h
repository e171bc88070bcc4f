#pragma once

#include "HotkeyAction.h"

#include <QString>
#include <optional>

namespace tarnwell {

// Why the two bindable hot keys cannot be registered as they are.
struct HotkeyConflict
{
    enum class Reason { duplicate, unparseable };

    QString rawValue; // the offending text
    HotkeyAction firstAction = HotkeyAction::togglePopover;
    HotkeyAction secondAction = HotkeyAction::togglePopover; // the same action when unparseable
    Reason reason = Reason::unparseable;

    // For the log: "duplicate: togglePopover and quickAdd both use cmd+shift+j".
    QString description() const;
    // For the user, in their language.
    QString message() const;

    // Both texts in the order togglePopover, quickAdd: the first that does
    // not parse, else two that parse to the same combination, else none.
    static std::optional<HotkeyConflict> check(const QString &togglePopover, const QString &quickAdd);

    friend bool operator==(const HotkeyConflict &, const HotkeyConflict &) = default;
};

} // namespace tarnwell
