#pragma once

#include <QLoggingCategory>

// The program's log categories; a message handler (platform library) sends
// them to the journal when stderr is the journal.
Q_DECLARE_LOGGING_CATEGORY(lcPersistence)
Q_DECLARE_LOGGING_CATEGORY(lcMenuBar)
Q_DECLARE_LOGGING_CATEGORY(lcServices)
Q_DECLARE_LOGGING_CATEGORY(lcHotkeys)
Q_DECLARE_LOGGING_CATEGORY(lcWidget)
