#pragma once

#include "LiveTiming.h"

#include <QByteArray>
#include <QString>

namespace tarnwell::widgetapp {

// What the status-bar modes print: the waybar custom-module JSON line and the
// plain template line.
namespace BarOutput {

// The countdown as a bar shows it: whole minutes ("12 min", "+3 min" once
// overdue, the plan before the start) or, with `seconds`, the clock form
// ("11:59", "+02:03"). Empty when there is nothing to count.
QString timeText(const WidgetSnapshot &snapshot, const LiveTiming &timing, bool seconds);

// {"text","alt","tooltip","class","percentage"}; text and tooltip are escaped
// for Pango markup, which waybar applies.
QByteArray waybar(const std::optional<WidgetSnapshot> &snapshot, const QDateTime &now, bool seconds);

// The template with {title} {time} {state} {percentage} {done} {total}
// {next} {summary} {planned} {day} filled in; an unknown field stays as it is.
QString format(const QString &pattern, const std::optional<WidgetSnapshot> &snapshot, const QDateTime &now,
               bool seconds);

} // namespace BarOutput
} // namespace tarnwell::widgetapp
