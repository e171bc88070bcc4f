// `tarnwell`: subcommands run here; anything else is for the tray agent,
// which gets the links when it runs already and is started otherwise.
#include "AgentLink.h"
#include "Cli.h"
#include "CliTexts.h"
#include "kit/Logging.h"
#include "kit/Translations.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QTextStream>

#include <cstdio>
#include <cstdlib>
#include <unistd.h>
#include <vector>

using namespace tarnwell;
using namespace tarnwell::cli;

namespace {

// A store that cannot be opened stops the process through qFatal; here that
// becomes one line and the store exit code instead of an abort.
void messageHandler(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (type == QtFatalMsg) {
        std::fprintf(stderr, "tarnwell: %s\n", qPrintable(message));
        std::fflush(stderr);
        std::_Exit(Cli::storeFailed);
    }
    std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, message)));
}

QString agentPath()
{
    QString beside = QCoreApplication::applicationDirPath() + QStringLiteral("/tarnwell-agent");
    if (QFileInfo(beside).isExecutable())
        return beside;
    QString installed =
        QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../lib/tarnwell/tarnwell-agent"));
    if (QFileInfo(installed).isExecutable())
        return installed;
    return QStringLiteral(TARNWELL_AGENT_INSTALLED);
}

int launch(int argc, char *argv[], const QStringList &arguments, QTextStream &err)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(CliTexts::summary() + u'\n' + u'\n' + CliTexts::launcherUsage());
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption({QStringLiteral("ui-test"), CliTexts::uiTestOption()});
    parser.addOption({QStringLiteral("action"), CliTexts::actionOption(), QStringLiteral("name")});
    parser.addPositionalArgument(QStringLiteral("link"), CliTexts::linkArgument(), QStringLiteral("[link...]"));
    if (!parser.parse(arguments)) {
        err << QStringLiteral("tarnwell: ") << CliTexts::usageError(parser.errorText(), QString()).section(u'\n', 0, 0)
            << Qt::endl;
        return Cli::usage;
    }
    if (parser.isSet(QStringLiteral("help")) || parser.isSet(QStringLiteral("version"))) {
        QTextStream out(stdout);
        out << (parser.isSet(QStringLiteral("help"))
                    ? parser.helpText()
                    : QStringLiteral("tarnwell %1\n").arg(QCoreApplication::applicationVersion()));
        return Cli::ok;
    }

    // A running agent gets the links before anything here reads or writes a file.
    QString linkError;
    const std::unique_ptr<AgentLink> agent = AgentLink::open(&linkError);
    if (!agent)
        qCWarning(lcServices).noquote() << QStringLiteral("Could not load the bus module: %1").arg(linkError);
    if (agent && agent->agentRunning()) {
        qCInfo(lcServices).noquote() << QStringLiteral("Tarnwell is already running; handing over");
        const bool handed = parser.isSet(QStringLiteral("action"))
            ? agent->activateAction(parser.value(QStringLiteral("action")))
            : agent->handOver(parser.positionalArguments());
        if (handed)
            return Cli::ok;
        err << QStringLiteral("tarnwell: ") << CliTexts::agentUnreachable(agent->lastError()) << Qt::endl;
        return Cli::failure;
    }
    const QString path = agentPath();
    const QByteArray program = QFile::encodeName(path);
    std::vector<char *> args{const_cast<char *>(program.constData())};
    // An action with nobody running to carry it out: starting is the answer.
    if (!parser.isSet(QStringLiteral("action")))
        for (int i = 1; i < argc; ++i)
            args.push_back(argv[i]);
    args.push_back(nullptr);
    ::execv(program.constData(), args.data());
    err << QStringLiteral("tarnwell: ") << CliTexts::agentMissing(path) << Qt::endl;
    return Cli::failure;
}

} // namespace

int main(int argc, char *argv[])
{
    qInstallMessageHandler(messageHandler);
    // Log lines of the store and the services stay quiet unless asked for
    // with QT_LOGGING_RULES.
    QLoggingCategory::setFilterRules(QStringLiteral("tarnwell.*.info=false\ntarnwell.*.debug=false"));
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tarnwell"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TARNWELL_VERSION));

    Translations translations;
    translations.install(Translations::resolve(QString()));
    QTextStream out(stdout);
    QTextStream err(stderr);

    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() > 1 && Cli::subcommands().contains(arguments.at(1))) {
        Cli cli(out, err);
        return cli.run(arguments.mid(1));
    }
    QLoggingCategory::setFilterRules(QString());
    return launch(argc, argv, arguments, err);
}
