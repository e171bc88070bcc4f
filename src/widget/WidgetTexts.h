#pragma once

#include <QString>

namespace tarnwell {

// The texts the application writes into the widget's snapshot, in the
// installed language.
namespace WidgetTexts {

QString today();
QString summaryZero();
QString summaryDone(qint64 count);
QString minutesUnit();

} // namespace WidgetTexts
} // namespace tarnwell
