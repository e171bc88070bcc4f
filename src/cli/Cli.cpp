#include "Cli.h"

#include "AgentLink.h"
#include "CliTexts.h"
#include "integration/AddTaskIntent.h"
#include "integration/AutomationArguments.h"
#include "integration/TaskAutomation.h"
#include "integration/TaskExchange.h"
#include "integration/TaskSnapshot.h"
#include "kit/Calendar.h"
#include "kit/Clock.h"
#include "kit/Logging.h"
#include "persistence/AgentPresence.h"
#include "persistence/Day.h"
#include "persistence/DayRepository.h"
#include "persistence/PersistenceController.h"
#include "persistence/RepositoryError.h"
#include "persistence/StoreBackup.h"
#include "persistence/StoreError.h"
#include "persistence/Task.h"
#include "persistence/TaskRepository.h"
#include "services/SyncService.h"
#include "settings/SyncAccountStore.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QSaveFile>

namespace tarnwell::cli {

// The store file opened directly, when no agent runs.
struct LocalStore
{
    explicit LocalStore(bool create)
        : controller(create || QFile::exists(PersistenceController::defaultStorePath())
                         ? std::make_unique<PersistenceController>(PersistenceController::defaultStorePath())
                         : std::make_unique<PersistenceController>(true))
        , clock(systemClock())
        , days(controller->viewContext(), calendar, clock)
        , tasks(controller->viewContext(), calendar, clock, days)
    {
    }
    std::unique_ptr<PersistenceController> controller;
    Calendar calendar;
    Clock clock;
    DayRepository days;
    TaskRepository tasks;
};

namespace {

constexpr int callTimeoutMs = 25000;

QString clockText(qint64 seconds)
{
    seconds = qAbs(seconds);
    return QStringLiteral("%1:%2:%3")
        .arg(seconds / 3600)
        .arg((seconds / 60) % 60, 2, 10, QLatin1Char('0'))
        .arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

// The subcommand is the first positional argument, so that the usage line
// reads "tarnwell [options] add ...".
void prepare(QCommandLineParser &parser, const QString &command, const QString &description)
{
    parser.setApplicationDescription(description);
    parser.addHelpOption();
    parser.addPositionalArgument(command, QString(), command);
}

QStringList words(const QCommandLineParser &parser)
{
    return parser.positionalArguments().mid(1);
}

QString compact(const QJsonValue &value)
{
    if (value.isArray())
        return QString::fromUtf8(QJsonDocument(value.toArray()).toJson(QJsonDocument::Compact));
    return QString::fromUtf8(QJsonDocument(value.toObject()).toJson(QJsonDocument::Compact));
}

} // namespace

int Cli::parse(QCommandLineParser &parser, const QStringList &arguments)
{
    const QString command = arguments.value(0);
    if (!parser.parse(QStringList{QCoreApplication::arguments().value(0)} + arguments))
        return fail(usage, CliTexts::usageError(parser.errorText(), command));
    if (parser.isSet(QStringLiteral("help"))) {
        m_out << parser.helpText();
        m_out.flush();
        return ok;
    }
    return -1;
}

Cli::Cli(QTextStream &out, QTextStream &err)
    : m_out(out)
    , m_err(err)
{
}

Cli::~Cli() = default;

const QStringList &Cli::subcommands()
{
    static const QStringList names{QStringLiteral("add"),     QStringLiteral("status"),  QStringLiteral("list"),
                                   QStringLiteral("done"),    QStringLiteral("start"),   QStringLiteral("pause"),
                                   QStringLiteral("toggle"),  QStringLiteral("export"),  QStringLiteral("import"),
                                   QStringLiteral("backups"), QStringLiteral("restore"), QStringLiteral("sync")};
    return names;
}

LocalStore &Cli::store()
{
    if (!m_store)
        m_store = std::make_unique<LocalStore>(true);
    return *m_store;
}

int Cli::fail(int code, const QString &message)
{
    m_err << QStringLiteral("tarnwell: ") << message << Qt::endl;
    return code;
}

int Cli::busFailure(const AgentReply &reply)
{
    const QString &name = reply.errorName;
    const QString prefix = QLatin1String(AgentLink::interfaceName) + QStringLiteral(".Error.");
    if (!name.startsWith(prefix))
        return fail(failure, CliTexts::agentUnreachable(reply.errorMessage));
    const QString kind = name.mid(prefix.size());
    if (kind == QLatin1String("NoTaskInHand"))
        return fail(noTask, TaskAutomation::noTaskInHandText());
    if (kind == QLatin1String("TaskNotFound"))
        return fail(noTask, reply.errorMessage);
    if (kind == QLatin1String("InvalidArgument") || kind == QLatin1String("Validation") ||
        kind == QLatin1String("Import"))
        return fail(invalid, reply.errorMessage);
    if (kind == QLatin1String("Store"))
        return fail(storeFailed, reply.errorMessage);
    return fail(failure, reply.errorMessage);
}

bool Cli::agentRunning(const QStringList &arguments)
{
    const QString command = arguments.value(0);
    // These work on the store file when no agent has it open. Whether one has
    // is known from its lock without loading the bus, which costs more than
    // the whole command.
    static const QStringList storeCommands{QStringLiteral("add"),     QStringLiteral("list"),
                                           QStringLiteral("export"),  QStringLiteral("import"),
                                           QStringLiteral("backups"), QStringLiteral("restore")};
    const bool onTheStore = storeCommands.contains(command) ||
        (command == QLatin1String("status") && !arguments.contains(QStringLiteral("--follow"))) ||
        (command == QLatin1String("sync") && arguments.contains(QStringLiteral("--status")));
    if (onTheStore && AgentPresence::probe(PersistenceController::defaultStorePath()) == AgentPresence::State::none) {
        qCInfo(lcServices).noquote() << QStringLiteral("No agent holds the store; working on it directly");
        return false;
    }
    QString error;
    m_agent = AgentLink::open(&error);
    if (!m_agent) {
        qCWarning(lcServices).noquote() << QStringLiteral("Could not load the bus module: %1").arg(error);
        return false;
    }
    return m_agent->agentRunning();
}

int Cli::run(const QStringList &arguments)
{
    const QString command = arguments.value(0);
    // Every subcommand answers --help without asking the bus.
    if (!arguments.contains(QStringLiteral("--help")) && !arguments.contains(QStringLiteral("-h")))
        m_agentRunning = agentRunning(arguments);
    try {
        if (command == QLatin1String("add"))
            return add(arguments);
        if (command == QLatin1String("status"))
            return status(arguments);
        if (command == QLatin1String("list"))
            return list(arguments);
        if (command == QLatin1String("export"))
            return exportData(arguments);
        if (command == QLatin1String("import"))
            return importFile(arguments);
        if (command == QLatin1String("backups"))
            return backups(arguments);
        if (command == QLatin1String("restore"))
            return restore(arguments);
        if (command == QLatin1String("sync"))
            return syncCommand(arguments);
        return drive(command, arguments);
    } catch (const ArgumentError &error) {
        return fail(invalid, error.message());
    } catch (const RepositoryError &error) {
        return fail(invalid, error.localizedDescription());
    } catch (const ImportError &error) {
        return fail(invalid, error.message());
    } catch (const StoreError &error) {
        return fail(storeFailed, error.description());
    }
}

int Cli::add(const QStringList &arguments)
{
    QCommandLineParser parser;
    prepare(parser, arguments.value(0), CliTexts::addDescription());
    const QCommandLineOption title(QStringLiteral("title"), CliTexts::titleOption(), QStringLiteral("title"));
    const QCommandLineOption minutes(QStringLiteral("minutes"), CliTexts::minutesOption(), QStringLiteral("minutes"));
    const QCommandLineOption urgent(QStringLiteral("urgent"), CliTexts::urgentOption());
    parser.addOptions({title, minutes, urgent});
    parser.addPositionalArgument(QStringLiteral("line"), CliTexts::addLineArgument(), QStringLiteral("[line]"));
    if (const int code = parse(parser, arguments); code >= 0)
        return code;

    const QStringList given = words(parser);
    if (given.isEmpty() == !parser.isSet(title) ||
        (!parser.isSet(title) && (parser.isSet(minutes) || parser.isSet(urgent))))
        return fail(usage, CliTexts::usageError(CliTexts::lineOrTitle(), QStringLiteral("add")));

    QString stored;
    if (parser.isSet(title)) {
        bool number = true;
        const qint64 planned = parser.isSet(minutes) ? parser.value(minutes).toLongLong(&number) : 0;
        if (!number)
            return fail(usage,
                        CliTexts::usageError(CliTexts::notANumber(parser.value(minutes)), QStringLiteral("add")));
        // Checked here as well, so that the refusal is in the user's language.
        AutomationArguments::text(parser.value(title), QStringLiteral("title"));
        AutomationArguments::plannedMinutes(planned);
        TaskRepository::validatedTitle(parser.value(title));
        if (m_agentRunning) {
            const AgentReply reply = m_agent->call(
                QStringLiteral("AddTask"),
                {parser.value(title), int(std::clamp<qint64>(planned, -1, 1 << 20)), parser.isSet(urgent)},
                callTimeoutMs);
            if (!reply.ok)
                return busFailure(reply);
            stored = reply.arguments.value(0).toString();
        } else {
            LocalStore &local = store();
            AddTaskIntentRunner runner(local.days, local.tasks);
            stored = TaskAutomation::addChecked(runner, parser.value(title), planned, parser.isSet(urgent));
        }
    } else {
        const QString line = given.join(QLatin1Char(' '));
        AutomationArguments::text(line, QStringLiteral("line"));
        if (m_agentRunning) {
            const AgentReply reply = m_agent->call(QStringLiteral("AddQuickTask"), {line}, callTimeoutMs);
            if (!reply.ok)
                return busFailure(reply);
            stored = reply.arguments.value(0).toString();
        } else {
            LocalStore &local = store();
            stored = TaskAutomation::addQuickLine(local.days, local.tasks, local.calendar, local.clock(), line);
        }
    }
    m_out << AddTaskIntent::confirmation(stored) << Qt::endl;
    return ok;
}

void Cli::printStatus(const QByteArray &json, bool asJson)
{
    const QJsonObject status = QJsonDocument::fromJson(json).object();
    if (asJson) {
        m_out << compact(status) << Qt::endl;
        return;
    }
    const QJsonValue active = status.value(QStringLiteral("active"));
    if (!active.isObject()) {
        m_out << CliTexts::statusEmpty() << Qt::endl;
        return;
    }
    const QJsonObject task = active.toObject();
    const QString title = task.value(QStringLiteral("title")).toString();
    const qint64 focused = qint64(task.value(QStringLiteral("focusedSeconds")).toDouble());
    if (task.value(QStringLiteral("running")).toBool())
        m_out << CliTexts::statusFocusing(title, clockText(focused)) << Qt::endl;
    else if (focused > 0)
        m_out << CliTexts::statusPaused(title, clockText(focused)) << Qt::endl;
    else
        m_out << CliTexts::statusReady(title) << Qt::endl;
    if (task.contains(QStringLiteral("remainingSeconds"))) {
        const qint64 remaining = qint64(task.value(QStringLiteral("remainingSeconds")).toDouble());
        const QString planned = clockText(qint64(task.value(QStringLiteral("durationMinutes")).toInt()) * 60);
        m_out << (remaining >= 0 ? CliTexts::statusRemaining(clockText(remaining), planned)
                                 : CliTexts::statusOverdue(clockText(remaining), planned))
              << Qt::endl;
    }
    const QJsonArray queue = status.value(QStringLiteral("queue")).toArray();
    if (queue.size() > 1)
        m_out << CliTexts::statusNext(queue.at(1).toObject().value(QStringLiteral("title")).toString()) << Qt::endl;
    m_out << CliTexts::statusQueue(int(queue.size())) << Qt::endl;
}

int Cli::status(const QStringList &arguments)
{
    QCommandLineParser parser;
    prepare(parser, arguments.value(0), CliTexts::statusDescription());
    const QCommandLineOption json(QStringLiteral("json"), CliTexts::jsonOption());
    const QCommandLineOption followOption(QStringLiteral("follow"), CliTexts::followOption());
    parser.addOptions({json, followOption});
    if (const int code = parse(parser, arguments); code >= 0)
        return code;
    if (!words(parser).isEmpty())
        return fail(
            usage,
            CliTexts::usageError(CliTexts::unexpectedArguments(words(parser).join(u' ')), QStringLiteral("status")));
    if (parser.isSet(followOption))
        return m_agentRunning ? follow(parser.isSet(json)) : fail(noAgent, CliTexts::followNeedsAgent());

    QByteArray document;
    if (m_agentRunning) {
        const AgentReply reply = m_agent->call(QStringLiteral("Status"), {}, callTimeoutMs);
        if (!reply.ok)
            return busFailure(reply);
        document = reply.arguments.value(0).toString().toUtf8();
    } else {
        m_store = std::make_unique<LocalStore>(false);
        const QDateTime now = m_store->clock();
        Day *today = m_store->days.day(now);
        const QList<Task *> queue = today ? m_store->tasks.openTasks(today) : QList<Task *>();
        document = QJsonDocument(TaskSnapshot::status(queue, m_store->calendar.date(now), now)).toJson();
    }
    printStatus(document, parser.isSet(json));
    return ok;
}

int Cli::follow(bool json)
{
    QByteArray last;
    int result = ok;
    const auto print = [&] {
        const AgentReply reply = m_agent->call(QStringLiteral("Status"), {}, callTimeoutMs);
        if (!reply.ok) {
            result = busFailure(reply);
            QCoreApplication::exit(result);
            return;
        }
        const QByteArray document = reply.arguments.value(0).toString().toUtf8();
        if (document == last)
            return;
        last = document;
        printStatus(document, json);
    };
    // The agent leaving ends the follow.
    const auto gone = [&result] {
        result = ok;
        QCoreApplication::exit(ok);
    };
    if (!m_agent->follow(print, gone))
        return fail(failure, CliTexts::agentUnreachable(m_agent->lastError()));
    print();
    if (result != ok)
        return result;
    const int code = QCoreApplication::exec();
    return result != ok ? result : code;
}

int Cli::list(const QStringList &arguments)
{
    QCommandLineParser parser;
    prepare(parser, arguments.value(0), CliTexts::listDescription());
    const QCommandLineOption json(QStringLiteral("json"), CliTexts::jsonOption());
    const QCommandLineOption day(QStringLiteral("day"), CliTexts::dayOption(), QStringLiteral("date"));
    parser.addOptions({json, day});
    if (const int code = parse(parser, arguments); code >= 0)
        return code;
    if (!words(parser).isEmpty())
        return fail(
            usage,
            CliTexts::usageError(CliTexts::unexpectedArguments(words(parser).join(u' ')), QStringLiteral("list")));
    const auto date = AutomationArguments::day(parser.value(day));

    QJsonArray tasks;
    if (m_agentRunning) {
        const AgentReply reply = m_agent->call(QStringLiteral("Tasks"), {parser.value(day)}, callTimeoutMs);
        if (!reply.ok)
            return busFailure(reply);
        tasks = QJsonDocument::fromJson(reply.arguments.value(0).toString().toUtf8()).array();
    } else {
        m_store = std::make_unique<LocalStore>(false);
        const QDateTime now = m_store->clock();
        Day *found = m_store->days.day(date ? m_store->calendar.startOfDay(*date) : now);
        tasks = TaskSnapshot::dayTasks(found ? found->tasks() : QList<Task *>(), now);
    }
    if (parser.isSet(json)) {
        m_out << compact(tasks) << Qt::endl;
        return ok;
    }
    if (tasks.isEmpty())
        m_out << CliTexts::listEmpty() << Qt::endl;
    for (const auto &value : tasks) {
        const QJsonObject t = value.toObject();
        const bool done = t.value(QStringLiteral("completed")).toBool() || t.value(QStringLiteral("archived")).toBool();
        QString line =
            (done ? QStringLiteral("[x] ") : QStringLiteral("[ ] ")) + t.value(QStringLiteral("title")).toString();
        if (t.contains(QStringLiteral("durationMinutes")))
            line += QStringLiteral(" · %1m").arg(t.value(QStringLiteral("durationMinutes")).toInt());
        if (t.value(QStringLiteral("urgent")).toBool())
            line += QStringLiteral(" !");
        m_out << line << QStringLiteral("  ") << t.value(QStringLiteral("id")).toString() << Qt::endl;
    }
    return ok;
}

int Cli::drive(const QString &command, const QStringList &arguments)
{
    const bool done = command == QLatin1String("done");
    QCommandLineParser parser;
    prepare(parser, arguments.value(0),
            done                                    ? CliTexts::doneDescription()
                : command == QLatin1String("start") ? CliTexts::startDescription()
                : command == QLatin1String("pause") ? CliTexts::pauseDescription()
                                                    : CliTexts::toggleDescription());
    if (done)
        parser.addPositionalArgument(QStringLiteral("id"), CliTexts::idArgument(), QStringLiteral("[id]"));
    if (const int code = parse(parser, arguments); code >= 0)
        return code;
    const QStringList given = words(parser);
    if (given.size() > (done ? 1 : 0))
        return fail(usage, CliTexts::usageError(CliTexts::unexpectedArguments(given.join(u' ')), command));
    if (done)
        AutomationArguments::taskId(given.value(0));
    if (!m_agentRunning)
        return fail(noAgent, CliTexts::drivingNeedsAgent());

    const QString method = done ? QStringLiteral("Complete") : command.left(1).toUpper() + command.mid(1);
    const AgentReply reply = m_agent->call(method, done ? QVariantList{given.value(0)} : QVariantList{}, callTimeoutMs);
    if (!reply.ok)
        return busFailure(reply);
    const QString title = reply.arguments.value(0).toString();
    if (done) {
        m_out << CliTexts::completed(title) << Qt::endl;
        return ok;
    }
    bool running = command == QLatin1String("start");
    if (command == QLatin1String("toggle")) {
        const AgentReply now = m_agent->call(QStringLiteral("Status"), {}, callTimeoutMs);
        const QJsonObject status = QJsonDocument::fromJson(now.arguments.value(0).toString().toUtf8()).object();
        running = status.value(QStringLiteral("active")).toObject().value(QStringLiteral("running")).toBool();
    }
    m_out << (running ? CliTexts::started(title) : CliTexts::paused(title)) << Qt::endl;
    return ok;
}

int Cli::exportData(const QStringList &arguments)
{
    QCommandLineParser parser;
    prepare(parser, arguments.value(0), CliTexts::exportDescription());
    const QCommandLineOption format(QStringLiteral("format"), CliTexts::formatOption(), QStringLiteral("format"),
                                    QStringLiteral("json"));
    const QCommandLineOption from(QStringLiteral("from"), CliTexts::fromOption(), QStringLiteral("date"));
    const QCommandLineOption to(QStringLiteral("to"), CliTexts::toOption(), QStringLiteral("date"));
    const QCommandLineOption output({QStringLiteral("o"), QStringLiteral("output")}, CliTexts::outputOption(),
                                    QStringLiteral("file"));
    parser.addOptions({format, from, to, output});
    if (const int code = parse(parser, arguments); code >= 0)
        return code;
    if (!words(parser).isEmpty())
        return fail(
            usage,
            CliTexts::usageError(CliTexts::unexpectedArguments(words(parser).join(u' ')), QStringLiteral("export")));
    const auto kind = AutomationArguments::exportFormat(parser.value(format));
    const TaskExchange::Range range{AutomationArguments::day(parser.value(from)),
                                    AutomationArguments::day(parser.value(to))};
    AutomationArguments::dayRange(range.from, range.to);

    QByteArray data;
    if (m_agentRunning) {
        const AgentReply reply = m_agent->call(
            QStringLiteral("Export"), {parser.value(format), parser.value(from), parser.value(to)}, callTimeoutMs);
        if (!reply.ok)
            return busFailure(reply);
        data = reply.arguments.value(0).toByteArray();
    } else {
        m_store = std::make_unique<LocalStore>(false);
        LocalStore &local = *m_store;
        switch (kind) {
        case AutomationArguments::ExportFormat::json:
            data = TaskExchange::exportJson(local.controller->viewContext(), local.days, range, local.clock());
            break;
        case AutomationArguments::ExportFormat::csv:
            data = TaskExchange::exportCsv(local.days, range);
            break;
        case AutomationArguments::ExportFormat::ics: {
            QString error;
            const auto ics = writeIcs(IcsWriter::todos(TaskExchange::daysIn(local.days, range), local.calendar),
                                      local.clock(), &error);
            if (!ics)
                return fail(failure, CliTexts::agentUnreachable(error));
            data = *ics;
            break;
        }
        }
    }
    if (!parser.isSet(output)) {
        m_out.flush();
        QFile stdoutFile;
        if (!stdoutFile.open(stdout, QIODevice::WriteOnly) || stdoutFile.write(data) != data.size())
            return fail(failure, CliTexts::cannotWrite(QStringLiteral("-"), stdoutFile.errorString()));
        return ok;
    }
    QSaveFile file(parser.value(output));
    if (!file.open(QIODevice::WriteOnly) || file.write(data) != data.size() || !file.commit())
        return fail(failure, CliTexts::cannotWrite(parser.value(output), file.errorString()));
    return ok;
}

int Cli::importFile(const QStringList &arguments)
{
    QCommandLineParser parser;
    prepare(parser, arguments.value(0), CliTexts::importDescription());
    parser.addPositionalArgument(QStringLiteral("file"), CliTexts::fileArgument(), QStringLiteral("FILE.json"));
    if (const int code = parse(parser, arguments); code >= 0)
        return code;
    const QStringList given = words(parser);
    if (given.size() != 1)
        return fail(usage,
                    CliTexts::usageError(CliTexts::unexpectedArguments(given.join(u' ')), QStringLiteral("import")));
    QFile file(given.first());
    if (!file.open(QIODevice::ReadOnly))
        return fail(failure, CliTexts::cannotRead(given.first(), file.errorString()));
    const QByteArray document = file.read(AutomationArguments::Limits::documentBytes + 1);
    // Refused here before anything is sent or opened.
    const TaskExchange::Document parsed = TaskExchange::read(document);

    TaskExchange::ImportSummary summary;
    if (m_agentRunning) {
        const AgentReply reply = m_agent->call(QStringLiteral("Import"), {document}, 120000);
        if (!reply.ok)
            return busFailure(reply);
        const QVariantList values = reply.arguments;
        summary = {values.value(0).toInt(), values.value(1).toInt(), values.value(2).toInt(), values.value(3).toInt()};
    } else {
        LocalStore &local = store();
        summary = TaskExchange::apply(parsed, local.controller->viewContext(), local.days);
    }
    m_out << CliTexts::imported(summary.days, summary.tasks, summary.routines, summary.skipped) << Qt::endl;
    return ok;
}

int Cli::backups(const QStringList &arguments)
{
    QCommandLineParser parser;
    prepare(parser, arguments.value(0), CliTexts::backupsDescription());
    if (const int code = parse(parser, arguments); code >= 0)
        return code;
    if (!words(parser).isEmpty())
        return fail(
            usage,
            CliTexts::usageError(CliTexts::unexpectedArguments(words(parser).join(u' ')), QStringLiteral("backups")));
    const auto copies = StoreBackupService::list(PersistenceController::defaultStorePath());
    if (copies.isEmpty()) {
        m_out << CliTexts::noBackups() << Qt::endl;
        return ok;
    }
    for (const auto &copy : copies)
        m_out << copy.day.toString(Qt::ISODate) << QLatin1Char('\t') << QLocale::system().formattedDataSize(copy.bytes)
              << QLatin1Char('\t') << copy.path << Qt::endl;
    return ok;
}

int Cli::restore(const QStringList &arguments)
{
    QCommandLineParser parser;
    prepare(parser, arguments.value(0), CliTexts::restoreDescription());
    parser.addPositionalArgument(QStringLiteral("backup"), CliTexts::restoreArgument(), QStringLiteral("DAY|FILE"));
    if (const int code = parse(parser, arguments); code >= 0)
        return code;
    const QStringList given = words(parser);
    if (given.size() != 1)
        return fail(usage,
                    CliTexts::usageError(CliTexts::unexpectedArguments(given.join(u' ')), QStringLiteral("restore")));
    // The agent keeps the store open and would write over what is restored.
    if (m_agentRunning)
        return fail(failure, CliTexts::restoreWhileRunning());
    const QString storePath = PersistenceController::defaultStorePath();
    QString backup;
    const QDate day = QDate::fromString(given.first(), Qt::ISODate);
    for (const auto &copy : StoreBackupService::list(storePath)) {
        if (copy.day == day && day.isValid())
            backup = copy.path;
    }
    if (backup.isEmpty() && QFileInfo(given.first()).isFile())
        backup = QFileInfo(given.first()).absoluteFilePath();
    if (backup.isEmpty())
        return fail(failure, CliTexts::noSuchBackup(given.first()));
    const QString aside = StoreBackupService::restore(storePath, backup, QDateTime::currentDateTimeUtc());
    // Opened once through the normal path: the restored store is checked and
    // brought to this build's schema before anyone else reads it.
    store();
    m_out << CliTexts::restored(backup, aside) << Qt::endl;
    return ok;
}

void Cli::printSyncStatus(const QJsonObject &status)
{
    const QString state = status.value(QStringLiteral("state")).toString();
    if (status.contains(QStringLiteral("server")))
        m_out << CliTexts::syncAccount(status.value(QStringLiteral("server")).toString(),
                                       status.value(QStringLiteral("user")).toString())
              << Qt::endl;
    if (status.contains(QStringLiteral("collection")))
        m_out << CliTexts::syncCollection(status.value(QStringLiteral("collection")).toString()) << Qt::endl;
    m_out << CliTexts::syncState(state) << Qt::endl;
    const QDateTime last = QDateTime::fromString(status.value(QStringLiteral("lastSync")).toString(), Qt::ISODate);
    m_out << CliTexts::syncLast(last.isValid() ? QLocale().toString(last.toLocalTime(), QLocale::ShortFormat)
                                               : QString())
          << Qt::endl;
    if (status.contains(QStringLiteral("lastErrorText")) && state != QLatin1String("unavailable"))
        m_out << CliTexts::syncLastError(status.value(QStringLiteral("lastErrorText")).toString()) << Qt::endl;
}

int Cli::syncCommand(const QStringList &arguments)
{
    QCommandLineParser parser;
    prepare(parser, arguments.value(0), CliTexts::syncDescription());
    const QCommandLineOption statusOption(QStringLiteral("status"), CliTexts::syncStatusOption());
    const QCommandLineOption json(QStringLiteral("json"), CliTexts::jsonOption());
    parser.addOptions({statusOption, json});
    if (const int code = parse(parser, arguments); code >= 0)
        return code;
    if (!words(parser).isEmpty())
        return fail(
            usage,
            CliTexts::usageError(CliTexts::unexpectedArguments(words(parser).join(u' ')), QStringLiteral("sync")));

    if (parser.isSet(statusOption)) {
        QJsonObject status;
        if (m_agentRunning) {
            const AgentReply reply = m_agent->call(QStringLiteral("SyncStatus"), {}, callTimeoutMs);
            if (!reply.ok)
                return busFailure(reply);
            status = QJsonDocument::fromJson(reply.arguments.value(0).toString().toUtf8()).object();
        } else {
            // The account as the store keeps it; what runs is the agent's to say.
            m_store = std::make_unique<LocalStore>(false);
            const SyncAccountStore accounts(m_store->controller->viewContext());
            status =
                SyncService::statusJson(accounts, QStringLiteral("notRunning"), problemFromKey(accounts.lastError()));
        }
        if (parser.isSet(json))
            m_out << compact(status) << Qt::endl;
        else
            printSyncStatus(status);
        return ok;
    }

    if (!m_agentRunning)
        return fail(noAgent, CliTexts::syncNeedsAgent());
    // The answer comes when the pass has ended.
    constexpr int longestPassMs = 30 * 60 * 1000;
    const AgentReply reply = m_agent->call(QStringLiteral("Sync"), {}, longestPassMs);
    if (!reply.ok)
        return busFailure(reply);
    const QJsonObject report = QJsonDocument::fromJson(reply.arguments.value(0).toString().toUtf8()).object();
    const bool synced = report.value(QStringLiteral("ok")).toBool();
    if (parser.isSet(json))
        m_out << compact(report) << Qt::endl;
    else if (synced)
        m_out << CliTexts::synced(report.value(QStringLiteral("pulled")).toInt(),
                                  report.value(QStringLiteral("pushed")).toInt(),
                                  report.value(QStringLiteral("removed")).toInt())
              << Qt::endl;
    if (synced)
        return ok;
    return fail(syncFailed, report.value(QStringLiteral("message")).toString());
}

} // namespace tarnwell::cli
