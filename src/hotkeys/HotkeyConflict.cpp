#include "HotkeyConflict.h"

#include "HotkeyParser.h"

#include <array>
#include <utility>

namespace tarnwell {

QString HotkeyConflict::description() const
{
    if (reason == Reason::duplicate)
        return QStringLiteral("duplicate: %1 and %2 both use \"%3\"")
            .arg(tarnwell::rawValue(firstAction), tarnwell::rawValue(secondAction), rawValue);
    return QStringLiteral("unparseable: \"%1\" for %2").arg(rawValue, tarnwell::rawValue(firstAction));
}

QString HotkeyConflict::message() const
{
    if (reason == Reason::duplicate)
        //: Shown when two settings are bound to the same hotkey combination
        //% "Both hot keys are set to %1. Choose a different combination for one of them."
        return qtTrId("error.hotkey.conflict").arg(HotkeyChordFormatter::display(rawValue));
    //: Shown when a hotkey string can't be parsed into a combination
    //% "\"%1\" is not a key combination. Use modifiers and one letter, digit or named key, such as cmd+shift+j."
    return qtTrId("error.hotkey.unparseable").arg(rawValue);
}

std::optional<HotkeyConflict> HotkeyConflict::check(const QString &togglePopover, const QString &quickAdd)
{
    const std::array<std::pair<HotkeyAction, const QString *>, 2> bindings{
        {{HotkeyAction::togglePopover, &togglePopover}, {HotkeyAction::quickAdd, &quickAdd}}};
    std::array<HotkeyCombo, 2> combos;
    for (std::size_t i = 0; i < bindings.size(); ++i) {
        const auto combo = HotkeyParser::parse(*bindings[i].second);
        if (!combo)
            return HotkeyConflict{*bindings[i].second, bindings[i].first, bindings[i].first, Reason::unparseable};
        combos[i] = *combo;
    }
    if (combos[0] == combos[1])
        return HotkeyConflict{quickAdd, HotkeyAction::togglePopover, HotkeyAction::quickAdd, Reason::duplicate};
    return std::nullopt;
}

} // namespace tarnwell
