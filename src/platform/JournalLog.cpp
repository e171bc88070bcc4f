#include "JournalLog.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <cstdio>
#include <sys/stat.h>
#include <syslog.h>

#define SD_JOURNAL_SUPPRESS_LOCATION
#include <systemd/sd-journal.h>

namespace tarnwell::platform {

namespace {

int priorityOf(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return LOG_DEBUG;
    case QtInfoMsg:
        return LOG_INFO;
    case QtWarningMsg:
        return LOG_WARNING;
    case QtCriticalMsg:
        return LOG_ERR;
    case QtFatalMsg:
        return LOG_CRIT;
    }
    return LOG_NOTICE;
}

void journalHandler(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    const QByteArray text = message.toUtf8();
    const char *category = context.category ? context.category : "default";
    sd_journal_send("MESSAGE=%s", text.constData(), "PRIORITY=%i", priorityOf(type), "SYSLOG_IDENTIFIER=tarnwell",
                    "TARNWELL_CATEGORY=%s", category, nullptr);
}

void stderrHandler(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    const QByteArray line = qFormatLogMessage(type, context, message).toLocal8Bit();
    std::fprintf(stderr, "%s\n", line.constData());
    std::fflush(stderr);
}

} // namespace

bool stderrIsJournal()
{
    const QByteArray stream = qgetenv("JOURNAL_STREAM");
    if (stream.isEmpty())
        return false;
    const auto parts = stream.split(':');
    if (parts.size() != 2)
        return false;
    struct stat st
    {
    };
    if (fstat(fileno(stderr), &st) != 0)
        return false;
    return parts[0].toULongLong() == st.st_dev && parts[1].toULongLong() == st.st_ino;
}

void installLogHandler()
{
    if (qEnvironmentVariableIsEmpty("QT_MESSAGE_PATTERN"))
        qSetMessagePattern(
            QStringLiteral("%{time hh:mm:ss.zzz} %{if-category}%{category} %{endif}%{type}: %{message}"));
    qInstallMessageHandler(stderrIsJournal() ? journalHandler : stderrHandler);
}

} // namespace tarnwell::platform
