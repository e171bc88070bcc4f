#pragma once

#include <QtGlobal>

namespace tarnwell::platform {

// Sends log records to the systemd journal (SYSLOG_IDENTIFIER=tarnwell, with
// the category in TARNWELL_CATEGORY) when stderr is connected to the journal,
// and to stderr otherwise.
void installLogHandler();

// True when stderr is the journal stream systemd handed us (JOURNAL_STREAM).
bool stderrIsJournal();

} // namespace tarnwell::platform
