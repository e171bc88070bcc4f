// `tarnwell-widget`: the task in hand for status bars (--waybar, --format),
// the buttons for them (--toggle, --done), and without an option the desktop
// window, which is a Qt Quick program of its own: the bar modes load Qt Core
// only and stay small.
#include "BarOutput.h"
#include "WidgetCommands.h"
#include "WidgetFeed.h"
#include "WidgetProgramTexts.h"
#include "kit/Translations.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTextStream>
#include <QTimer>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <unistd.h>
#include <vector>

using namespace tarnwell;
using namespace tarnwell::widgetapp;

namespace {

enum Exit { ok = 0, failed = 1, usage = 2 };

// Prints a line whenever what the bar shows changes: on a new snapshot, and
// while a timer runs at each minute (or second) the countdown moves.
class BarPrinter : public QObject
{
public:
    BarPrinter(std::optional<QString> pattern, bool seconds, Translations &translations)
        : m_pattern(std::move(pattern))
        , m_seconds(seconds)
        , m_translations(translations)
    {
        m_tick.setSingleShot(true);
        m_tick.setTimerType(Qt::PreciseTimer);
        connect(&m_tick, &QTimer::timeout, this, &BarPrinter::update);
        connect(&m_feed, &WidgetFeed::changed, this, &BarPrinter::update);
        update();
    }

private:
    void update()
    {
        const QDateTime now = QDateTime::currentDateTimeUtc();
        const auto &snapshot = m_feed.snapshot();
        const QString language = snapshot ? snapshot->languageCode : Translations::resolve(QString());
        if (language != m_translations.installedLanguage())
            m_translations.install(language);
        const QByteArray line = m_pattern ? BarOutput::format(*m_pattern, snapshot, now, m_seconds).toUtf8()
                                          : BarOutput::waybar(snapshot, now, m_seconds);
        if (line != m_last || !m_printed) {
            print(line);
            m_last = line;
            m_printed = true;
        }
        m_tick.stop();
        if (snapshot) {
            if (const auto next = LiveTiming::nextChange(*snapshot, now, m_seconds ? 1 : 60))
                m_tick.start(int(std::clamp<qint64>(now.msecsTo(*next) + 5, 5, 3600 * 1000)));
        }
    }

    static void print(const QByteArray &line)
    {
        QByteArray out = line + '\n';
        const char *data = out.constData();
        qsizetype left = out.size();
        while (left > 0) {
            const ssize_t n = ::write(STDOUT_FILENO, data, size_t(left));
            if (n < 0 && errno == EINTR)
                continue;
            if (n < 0) {
                // The bar went away (EPIPE): nobody is reading any more.
                std::_Exit(errno == EPIPE ? ok : failed);
            }
            data += n;
            left -= n;
        }
    }

    std::optional<QString> m_pattern;
    bool m_seconds;
    Translations &m_translations;
    WidgetFeed m_feed;
    QTimer m_tick;
    QByteArray m_last;
    bool m_printed = false;
};

QString windowProgram()
{
    const QString dir = QCoreApplication::applicationDirPath();
    const QStringList candidates{QString(dir + QStringLiteral("/tarnwell-widget-window")),
                                 QDir::cleanPath(dir + QStringLiteral("/../lib/tarnwell/tarnwell-widget-window"))};
    for (const QString &candidate : candidates) {
        if (QFileInfo(candidate).isExecutable())
            return candidate;
    }
    return {};
}

} // namespace

int main(int argc, char *argv[])
{
    // A closed pipe shows as EPIPE on the next write, and the program ends there.
    std::signal(SIGPIPE, SIG_IGN);
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tarnwell-widget"));

    Translations translations;
    const WidgetSnapshotFile file;
    const auto current = [&file] {
        auto snapshot = file.read();
        if (snapshot && (!snapshot->appRunning || QDateTime::currentDateTimeUtc() >= snapshot->validUntil))
            snapshot.reset();
        return snapshot;
    };
    {
        const auto snapshot = current();
        translations.install(snapshot ? snapshot->languageCode : Translations::resolve(QString()));
    }

    QCommandLineParser parser;
    parser.setApplicationDescription(WidgetProgramTexts::summary() + u'\n' + u'\n' + WidgetProgramTexts::placement());
    parser.addHelpOption();
    const QCommandLineOption waybar(QStringLiteral("waybar"), WidgetProgramTexts::waybarOption());
    const QCommandLineOption format(QStringLiteral("format"), WidgetProgramTexts::formatOption(),
                                    QStringLiteral("template"));
    const QCommandLineOption seconds(QStringLiteral("seconds"), WidgetProgramTexts::secondsOption());
    const QCommandLineOption toggle(QStringLiteral("toggle"), WidgetProgramTexts::toggleOption());
    const QCommandLineOption done(QStringLiteral("done"), WidgetProgramTexts::doneOption());
    const QCommandLineOption position(QStringLiteral("position"), WidgetProgramTexts::positionOption(),
                                      QStringLiteral("x,y"));
    parser.addOptions({waybar, format, seconds, toggle, done, position});
    QTextStream err(stderr);
    if (!parser.parse(QCoreApplication::arguments())) {
        err << QStringLiteral("tarnwell-widget: ") << parser.errorText() << Qt::endl;
        return usage;
    }
    if (parser.isSet(QStringLiteral("help"))) {
        QTextStream(stdout) << parser.helpText();
        return ok;
    }

    if (parser.isSet(toggle) || parser.isSet(done)) {
        const QString problem =
            sendCommand(parser.isSet(done) ? WidgetCommand::Action::complete : WidgetCommand::Action::toggleTimer,
                        current(), QDateTime::currentDateTimeUtc());
        if (problem.isEmpty())
            return ok;
        err << QStringLiteral("tarnwell-widget: ") << problem << Qt::endl;
        return failed;
    }

    if (parser.isSet(waybar) || parser.isSet(format)) {
        BarPrinter printer(parser.isSet(format) ? std::optional<QString>(parser.value(format)) : std::nullopt,
                           parser.isSet(seconds), translations);
        return app.exec();
    }

    // The desktop window: the Qt Quick program takes over this process.
    const QString window = windowProgram();
    if (window.isEmpty()) {
        err << QStringLiteral("tarnwell-widget: tarnwell-widget-window is missing") << Qt::endl;
        return failed;
    }
    // Named as the user called it: X11 window rules match this name.
    std::vector<QByteArray> arguments;
    arguments.push_back(QByteArrayLiteral("tarnwell-widget"));
    for (int i = 1; i < argc; ++i)
        arguments.emplace_back(argv[i]);
    std::vector<char *> pointers;
    for (auto &argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    ::execv(QFile::encodeName(window).constData(), pointers.data());
    err << QStringLiteral("tarnwell-widget: ") << QString::fromLocal8Bit(std::strerror(errno)) << Qt::endl;
    return failed;
}
