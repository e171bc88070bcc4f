#pragma once

#include <QString>
#include <optional>

namespace tarnwell {

// What the status item shows: built by MenuBarLabelBuilder, drawn by the
// menu-bar controller.
struct MenuBarPresentation
{
    enum class State { idle, dayDone, noDuration, tracking, overdue };

    QString title; // already truncated
    std::optional<QString> countdown;
    std::optional<double> progress; // share of the planned time used, 0...1
    State state = State::idle;
    bool isTimerRunning = false;

    friend bool operator==(const MenuBarPresentation &, const MenuBarPresentation &) = default;
};

} // namespace tarnwell
