#pragma once

#include "widget/WidgetCommand.h"
#include "widget/WidgetSnapshot.h"

#include <QString>

namespace tarnwell::widgetapp {

// A button press: one command file for the task in hand of `snapshot`.
// Returns an empty text, or what went wrong in the user's words.
QString sendCommand(WidgetCommand::Action action, const std::optional<WidgetSnapshot> &snapshot, const QDateTime &now);

} // namespace tarnwell::widgetapp
