#pragma once

#include <QString>

namespace tarnwell::cli {

// The command line's user-facing texts, in the installed language.
namespace CliTexts {

QString summary();
QString launcherUsage();
QString linkArgument();
QString uiTestOption();
QString actionOption();
QString jsonOption();

QString addDescription();
QString addLineArgument();
QString titleOption();
QString minutesOption();
QString urgentOption();
QString statusDescription();
QString followOption();
QString listDescription();
QString dayOption();
QString doneDescription();
QString idArgument();
QString startDescription();
QString pauseDescription();
QString toggleDescription();
QString exportDescription();
QString formatOption();
QString fromOption();
QString toOption();
QString outputOption();
QString importDescription();
QString fileArgument();
QString backupsDescription();
QString restoreDescription();
QString restoreArgument();
QString syncDescription();
QString syncStatusOption();
QString syncNeedsAgent();
QString synced(int pulled, int pushed, int removed);
QString syncAccount(const QString &server, const QString &user);
QString syncCollection(const QString &collection);
// `state` as the bus names it: idle, syncing, error, off, unavailable, notRunning.
QString syncState(const QString &state);
// `when` is empty for never.
QString syncLast(const QString &when);
QString syncLastError(const QString &text);
QString noBackups();
QString restoreWhileRunning();
QString noSuchBackup(const QString &given);
QString restored(const QString &backup, const QString &aside);

QString usageError(const QString &problem, const QString &subcommand);
QString lineOrTitle();
QString unexpectedArguments(const QString &arguments);
QString notANumber(const QString &value);
QString followNeedsAgent();
QString drivingNeedsAgent();
QString agentMissing(const QString &path);
QString agentUnreachable(const QString &detail);
QString cannotRead(const QString &path, const QString &detail);
QString cannotWrite(const QString &path, const QString &detail);

QString completed(const QString &title);
QString started(const QString &title);
QString paused(const QString &title);
QString imported(int days, int tasks, int routines, int skipped);

QString statusEmpty();
QString statusFocusing(const QString &title, const QString &focused);
QString statusPaused(const QString &title, const QString &focused);
QString statusReady(const QString &title);
QString statusRemaining(const QString &remaining, const QString &planned);
QString statusOverdue(const QString &over, const QString &planned);
QString statusNext(const QString &title);
QString statusQueue(int count);
QString listEmpty();

} // namespace CliTexts
} // namespace tarnwell::cli
