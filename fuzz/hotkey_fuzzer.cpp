// libFuzzer target for the hot-key grammar: the input is the typed text as
// UTF-8. Besides the sanitizers' findings, it stops on any broken promise of
// the parser, the display form and the conflict check.
#include "hotkeys/HotkeyConflict.h"
#include "hotkeys/HotkeyParser.h"

#include <array>
#include <cstdint>
#include <cstdlib>

using namespace tarnwell;

namespace {

void check(bool condition)
{
    if (!condition)
        std::abort();
}

const std::array<const char *, 47> keyTokens{
    "a", "b", "c", "d", "e",      "f",      "g",   "h",     "i",      "j",  "k",    "l",    "m",     "n",     "o",  "p",
    "q", "r", "s", "t", "u",      "v",      "w",   "x",     "y",      "z",  "0",    "1",    "2",     "3",     "4",  "5",
    "6", "7", "8", "9", "return", "escape", "tab", "space", "delete", "up", "down", "left", "right", "enter", "esc"};

// The combination written out again in the plainest words.
QString canonical(const HotkeyCombo &combo)
{
    QString text;
    if (combo.modifiers & HotkeyModifier::command)
        text += QStringLiteral("cmd+");
    if (combo.modifiers & HotkeyModifier::shift)
        text += QStringLiteral("shift+");
    if (combo.modifiers & HotkeyModifier::option)
        text += QStringLiteral("alt+");
    if (combo.modifiers & HotkeyModifier::control)
        text += QStringLiteral("ctrl+");
    return text + QLatin1String(keyTokens[std::size_t(combo.key)]);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));

    for (const QString &piece : HotkeyParser::pieces(text)) {
        check(!piece.contains(u'+'));
        check(!piece.startsWith(u' ') && !piece.startsWith(u'\t') && !piece.endsWith(u' ') && !piece.endsWith(u'\t'));
    }

    const auto combo = HotkeyParser::parse(text);
    // Blanks and tabs around the text do not count.
    check(HotkeyParser::parse(QStringLiteral(" \t") + text + QStringLiteral("\t ")) == combo);
    const auto conflict = HotkeyConflict::check(text, text);
    check(conflict.has_value());
    const QString shown = HotkeyChordFormatter::display(text);
    if (!combo) {
        check(conflict->reason == HotkeyConflict::Reason::unparseable);
        check(conflict->firstAction == HotkeyAction::togglePopover && conflict->rawValue == text);
        return 0;
    }
    check(int(combo->key) >= 0 && std::size_t(combo->key) < keyTokens.size() - 2);
    check((combo->modifiers.toInt() & ~0xf) == 0);
    check(conflict->reason == HotkeyConflict::Reason::duplicate);
    check(!shown.isEmpty());
    // The plainest spelling parses to the same combination, and one more
    // modifier word adds exactly its flag.
    check(HotkeyParser::parse(canonical(*combo)) == combo);
    const auto withShift = HotkeyParser::parse(QStringLiteral("shift+") + text);
    check(withShift && withShift->key == combo->key &&
          withShift->modifiers == (combo->modifiers | HotkeyModifier::shift));
    const auto second = HotkeyConflict::check(canonical(*combo), QStringLiteral("cmd+f5"));
    check(second && second->reason == HotkeyConflict::Reason::unparseable &&
          second->firstAction == HotkeyAction::quickAdd);
    return 0;
}
