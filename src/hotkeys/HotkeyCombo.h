#pragma once

#include <QFlags>
#include <QHashFunctions>
#include <QString>

namespace tarnwell {

// The keys a hot key can end in: the letters, the digits and eleven named keys.
enum class HotkeyKey {
    a,
    b,
    c,
    d,
    e,
    f,
    g,
    h,
    i,
    j,
    k,
    l,
    m,
    n,
    o,
    p,
    q,
    r,
    s,
    t,
    u,
    v,
    w,
    x,
    y,
    z,
    digit0,
    digit1,
    digit2,
    digit3,
    digit4,
    digit5,
    digit6,
    digit7,
    digit8,
    digit9,
    returnKey,
    escape,
    tab,
    space,
    deleteKey,
    up,
    down,
    left,
    right,
};

// The modifier words' flags. `command` is the Super (logo) key on Linux,
// `option` is Alt.
enum class HotkeyModifier { command = 0x1, shift = 0x2, option = 0x4, control = 0x8 };
Q_DECLARE_FLAGS(HotkeyModifiers, HotkeyModifier)
Q_DECLARE_OPERATORS_FOR_FLAGS(HotkeyModifiers)

// One key with its modifiers; equal when both are equal.
struct HotkeyCombo
{
    HotkeyKey key = HotkeyKey::a;
    HotkeyModifiers modifiers;

    friend bool operator==(const HotkeyCombo &l, const HotkeyCombo &r)
    {
        return l.key == r.key && l.modifiers == r.modifiers;
    }
    friend bool operator!=(const HotkeyCombo &l, const HotkeyCombo &r) { return !(l == r); }
    friend size_t qHash(const HotkeyCombo &combo, size_t seed = 0) noexcept
    {
        return qHashMulti(seed, int(combo.key), int(combo.modifiers.toInt()));
    }
};

// The stored form of a hot key and the form shown to the user.
struct RecordedHotkey
{
    QString raw;
    QString display;

    static RecordedHotkey fromRaw(const QString &raw);
    friend bool operator==(const RecordedHotkey &, const RecordedHotkey &) = default;
};

} // namespace tarnwell
