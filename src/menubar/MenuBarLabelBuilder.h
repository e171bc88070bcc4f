#pragma once

#include "MenuBarPresentation.h"

#include <QString>
#include <optional>

namespace tarnwell {

class Task;

// The rules of the status item's label: title limit and truncation, the
// countdown text, progress, and the texts shown when nothing is in hand.
class MenuBarLabelBuilder
{
public:
    struct Limits
    {
        static constexpr int minimumTitleCharacters = 8;
        static constexpr int maximumTitleCharacters = 32;
    };

    struct Inputs
    {
        const Task *task = nullptr; // the task in hand
        std::optional<qint64> remainingSeconds; // the countdown's value for it
        int maxChars = 16; // the menuBarMaxChars setting
        bool minimalIdleMode = false;
        bool showingDayDone = false;
    };

    static MenuBarPresentation build(const Inputs &inputs);

    static int clampedLimit(int maxChars);
    // At most `limit` user-perceived characters, the last one U+2026 when cut.
    static QString truncated(const QString &title, int limit);
    // "7m", "1h 5m", "2h", "-3m".
    static QString countdownText(qint64 seconds);
    // "menubar.empty" / "menubar.dayDone", in English when the table lacks them.
    static QString idleText(bool dayDone);
};

} // namespace tarnwell
