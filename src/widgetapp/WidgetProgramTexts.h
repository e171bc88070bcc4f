#pragma once

#include <QString>

namespace tarnwell::widgetapp {

// The widget program's own texts (the snapshot brings the rest ready made).
namespace WidgetProgramTexts {

QString notRunning();
QString nothingQueued();
QString upNext();
QString done();
QString rolledOver();

QString summary();
QString placement();
QString waybarOption();
QString formatOption();
QString secondsOption();
QString toggleOption();
QString doneOption();
QString positionOption();
QString noTaskInHand();
QString commandFailed(const QString &reason);

} // namespace WidgetProgramTexts
} // namespace tarnwell::widgetapp
