#include "WidgetWindowModel.h"

#include "../BarOutput.h"
#include "../WidgetCommands.h"
#include "../WidgetProgramTexts.h"
#include "kit/Translations.h"
#include "platform/AppearancePortal.h"
#include "services/DurationFormat.h"
#include "services/FocusTexts.h"
#include "services/PlanningTexts.h"
#include "views/ThemeController.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusServiceWatcher>
#include <QTextStream>

#include <algorithm>

namespace tarnwell::widgetapp {

namespace {
// The application's name on the session bus: a snapshot left behind by a
// crash is not shown as if the application were running.
const QString applicationBusName = QStringLiteral("org.tarnwell.Tarnwell");
} // namespace

WidgetWindowModel::WidgetWindowModel(ThemeController &theme, Translations &translations, QObject *parent)
    : QObject(parent)
    , m_theme(theme)
    , m_translations(translations)
    , m_portal(new platform::AppearancePortal(this))
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected()) {
        m_appOnBus = bus.interface()->isServiceRegistered(applicationBusName);
        m_appWatcher = new QDBusServiceWatcher(
            applicationBusName, bus,
            QDBusServiceWatcher::WatchForRegistration | QDBusServiceWatcher::WatchForUnregistration, this);
        connect(m_appWatcher, &QDBusServiceWatcher::serviceRegistered, this, [this] {
            m_appOnBus = true;
            m_feed.reload();
            update();
        });
        connect(m_appWatcher, &QDBusServiceWatcher::serviceUnregistered, this, [this] {
            m_appOnBus = false;
            update();
        });
    }
    connect(&m_feed, &WidgetFeed::changed, this, &WidgetWindowModel::update);
    connect(m_portal, &platform::AppearancePortal::schemeChanged, this, &WidgetWindowModel::applyAppearance);
    m_tick.setInterval(1000);
    m_tick.setTimerType(Qt::PreciseTimer);
    connect(&m_tick, &QTimer::timeout, this, &WidgetWindowModel::update);
    update();
}

WidgetWindowModel::~WidgetWindowModel() = default;

void WidgetWindowModel::update()
{
    m_now = QDateTime::currentDateTimeUtc();
    m_snapshot = m_appOnBus ? m_feed.snapshot() : std::nullopt;
    const QString language = m_snapshot ? m_snapshot->languageCode : Translations::resolve(QString());
    if (language != m_translations.installedLanguage())
        m_translations.install(language);
    applyAppearance();
    if (m_snapshot && m_snapshot->isRunning) {
        // Ticks land just after the second turns over.
        if (const auto next = LiveTiming::nextChange(*m_snapshot, m_now, 1))
            m_tick.start(int(std::clamp<qint64>(m_now.msecsTo(*next) + 5, 5, 1000)));
    } else {
        m_tick.stop();
    }
    Q_EMIT changed();
}

void WidgetWindowModel::applyAppearance()
{
    const QString appearance = m_snapshot ? m_snapshot->appearance : QStringLiteral("auto");
    m_theme.setForced(appearance == QLatin1String("dark")        ? ThemeController::Forced::dark
                          : appearance == QLatin1String("light") ? ThemeController::Forced::light
                                                                 : ThemeController::Forced::none);
    m_theme.setDesktopPrefersDark(m_portal->prefersDark());
}

QString WidgetWindowModel::emptyText() const
{
    if (!m_snapshot)
        return WidgetProgramTexts::notRunning();
    return hasTask() ? QString() : WidgetProgramTexts::nothingQueued();
}

QString WidgetWindowModel::dayLabel() const
{
    return m_snapshot ? m_snapshot->dayLabel : QString();
}

QString WidgetWindowModel::title() const
{
    return hasTask() ? m_snapshot->anchor->title : QString();
}

QString WidgetWindowModel::timeText() const
{
    if (!hasTask())
        return {};
    return BarOutput::timeText(*m_snapshot, LiveTiming::at(*m_snapshot, m_now), true);
}

QString WidgetWindowModel::timeCaption() const
{
    if (!hasPlan() || timeText().isEmpty())
        return {};
    return overdue() ? FocusTexts::countdownOver() : FocusTexts::countdownLeft();
}

bool WidgetWindowModel::running() const
{
    return hasTask() && m_snapshot->isRunning;
}

bool WidgetWindowModel::overdue() const
{
    return hasTask() && LiveTiming::at(*m_snapshot, m_now).overdue;
}

double WidgetWindowModel::progress() const
{
    return hasTask() ? LiveTiming::at(*m_snapshot, m_now).percentage / 100.0 : 0.0;
}

QVariantList WidgetWindowModel::upNext() const
{
    QVariantList items;
    if (!m_snapshot)
        return items;
    for (const auto &item : m_snapshot->upNext) {
        items << QVariantMap{
            {QStringLiteral("title"), item.title},
            {QStringLiteral("duration"),
             item.durationMinutes ? QStringLiteral("%1 %2").arg(*item.durationMinutes).arg(m_snapshot->minutesUnit)
                                  : QString()},
            {QStringLiteral("rolledOver"), item.rolledOver},
        };
    }
    return items;
}

QString WidgetWindowModel::summaryLine() const
{
    return m_snapshot ? m_snapshot->summaryLine : QString();
}

QString WidgetWindowModel::plannedText() const
{
    return m_snapshot && m_snapshot->plannedLabel ? PlanningTexts::dayPlanPlanned(*m_snapshot->plannedLabel)
                                                  : QString();
}

QString WidgetWindowModel::doneText() const
{
    return WidgetProgramTexts::done();
}

QString WidgetWindowModel::toggleText() const
{
    if (running())
        return FocusTexts::timerAction(FocusTime::TimerState::focusing);
    const bool paused = hasTask() && m_snapshot->elapsedSeconds > 0;
    return FocusTexts::timerAction(paused ? FocusTime::TimerState::paused : FocusTime::TimerState::ready);
}

QString WidgetWindowModel::upNextText() const
{
    return WidgetProgramTexts::upNext();
}

void WidgetWindowModel::complete()
{
    send(int(WidgetCommand::Action::complete));
}

void WidgetWindowModel::toggleTimer()
{
    send(int(WidgetCommand::Action::toggleTimer));
}

void WidgetWindowModel::send(int action)
{
    const QString problem =
        sendCommand(static_cast<WidgetCommand::Action>(action), m_snapshot, QDateTime::currentDateTimeUtc());
    if (!problem.isEmpty())
        QTextStream(stderr) << QStringLiteral("tarnwell-widget: ") << problem << Qt::endl;
}

} // namespace tarnwell::widgetapp
