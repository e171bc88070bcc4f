#pragma once

#include "HotkeyCombo.h"

#include <QStringList>
#include <optional>

namespace tarnwell {

// Reads hot-key text such as "cmd+shift+j": blanks and tabs around the text
// and around each piece do not count, case does not count, empty pieces are
// dropped, unknown modifier words are skipped, and the last piece is the key.
class HotkeyParser
{
public:
    static std::optional<HotkeyCombo> parse(const QString &text);
    // The lower-cased, trimmed pieces of `text`; empty when there are none.
    static QStringList pieces(const QString &text);
};

// The display form: one symbol per modifier word, then the key
// ("cmd+shift+j" shows as "Super+Shift+J").
class HotkeyChordFormatter
{
public:
    static QString display(const QString &raw);
};

} // namespace tarnwell
