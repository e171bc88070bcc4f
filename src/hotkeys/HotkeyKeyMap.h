#pragma once

#include "HotkeyCombo.h"

#include <QStringView>
#include <optional>

namespace tarnwell {

// Key tokens of the hot-key text and how each key is shown.
class HotkeyKeyMap
{
public:
    // One character: a-z or 0-9. Longer: return, enter, escape, esc, tab,
    // space, delete, up, down, left, right. The token is already lower case.
    static std::optional<HotkeyKey> key(QStringView token);
    // The key as the user's keyboard names it ("J", "Space", "Esc", "↑").
    static QString displayText(HotkeyKey key);
    // The modifier word's flag, or none for a word that means nothing.
    static std::optional<HotkeyModifier> modifier(QStringView word);
    // The modifier as shown, with its trailing "+" ("Super+", "Shift+").
    static QString modifierSymbol(HotkeyModifier modifier);
};

} // namespace tarnwell
