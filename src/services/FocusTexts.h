#pragma once

#include "FocusTime.h"

#include <QString>

namespace tarnwell {

// The user-facing texts of the task card and the next-up screen, in the
// installed language.
namespace FocusTexts {

// "Ready", "Focusing" or "Paused".
QString status(FocusTime::TimerState state);
// The play/pause button: start when ready, resume when paused, pause when focusing.
QString timerAction(FocusTime::TimerState state);

// Shown beside the remaining time.
QString countdownLeft();
// `time` is the planned end as a wall-clock time.
QString countdownEndsAt(const QString &time);
// Shown beside the time beyond the plan.
QString countdownOver();

QString completionTitle();
// `duration` is the focused time in the card's clock format.
QString completionFocused(const QString &duration);
QString completionNextUp();
QString completionQueueEmpty();
QString completionStart();
// The skip action, labelled with the break it skips.
QString completionSkip(int breakMinutes);

} // namespace FocusTexts
} // namespace tarnwell
