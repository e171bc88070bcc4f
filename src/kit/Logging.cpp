#include "Logging.h"

Q_LOGGING_CATEGORY(lcPersistence, "tarnwell.persistence", QtInfoMsg)
Q_LOGGING_CATEGORY(lcMenuBar, "tarnwell.menuBar", QtInfoMsg)
Q_LOGGING_CATEGORY(lcServices, "tarnwell.services", QtInfoMsg)
Q_LOGGING_CATEGORY(lcHotkeys, "tarnwell.hotkeys", QtInfoMsg)
Q_LOGGING_CATEGORY(lcWidget, "tarnwell.widget", QtInfoMsg)
