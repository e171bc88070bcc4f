#include "DayChangeObserver.h"

#include "kit/Logging.h"

#include <QFileSystemWatcher>
#include <QSocketNotifier>

#include <cerrno>
#include <ctime>
#include <sys/timerfd.h>
#include <unistd.h>

namespace tarnwell::platform {

DayChangeObserver::DayChangeObserver(Calendar calendar, Clock clock, QObject *parent)
    : QObject(parent)
    , m_calendar(std::move(calendar))
    , m_clock(std::move(clock))
{
}

DayChangeObserver::~DayChangeObserver()
{
    if (m_fd >= 0)
        ::close(m_fd);
}

void DayChangeObserver::start()
{
    if (m_fd >= 0)
        return;
    m_fd = ::timerfd_create(CLOCK_REALTIME, TFD_CLOEXEC | TFD_NONBLOCK);
    if (m_fd < 0) {
        qCWarning(lcServices).noquote()
            << QStringLiteral("Could not create the midnight timer: %1").arg(QString::fromLocal8Bit(strerror(errno)));
        return;
    }
    m_notifier = new QSocketNotifier(m_fd, QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &DayChangeObserver::onTimer);
    // /etc/localtime is replaced, not written, when the zone changes: watch the folder.
    m_zoneWatcher = new QFileSystemWatcher({QStringLiteral("/etc")}, this);
    connect(m_zoneWatcher, &QFileSystemWatcher::directoryChanged, this, &DayChangeObserver::systemTimeZoneChanged);
    m_lastDay = m_calendar.date(m_clock());
    rearm();
}

void DayChangeObserver::rearm()
{
    if (m_fd < 0)
        return;
    m_next = m_calendar.nextStartOfDay(m_clock());
    itimerspec spec{};
    const qint64 msecs = m_next.toMSecsSinceEpoch();
    spec.it_value.tv_sec = time_t(msecs / 1000);
    spec.it_value.tv_nsec = long(msecs % 1000) * 1000000L;
    if (::timerfd_settime(m_fd, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &spec, nullptr) != 0)
        qCWarning(lcServices).noquote()
            << QStringLiteral("Could not arm the midnight timer: %1").arg(QString::fromLocal8Bit(strerror(errno)));
}

void DayChangeObserver::systemTimeZoneChanged()
{
    tzset();
    const QTimeZone zone = QTimeZone::systemTimeZone();
    if (zone != m_calendar.timeZone()) {
        m_calendar.setTimeZone(zone);
        qCInfo(lcServices).noquote() << QStringLiteral("The time zone changed to %1").arg(QString::fromUtf8(zone.id()));
        Q_EMIT timeZoneChanged();
    }
    rearm();
    checkDay();
}

void DayChangeObserver::onTimer()
{
    quint64 expirations = 0;
    // ECANCELED means the clock was set: the day may or may not have changed.
    [[maybe_unused]] const auto r = ::read(m_fd, &expirations, sizeof expirations);
    rearm();
    checkDay();
}

void DayChangeObserver::checkDay()
{
    const QDate today = m_calendar.date(m_clock());
    if (today == m_lastDay)
        return;
    m_lastDay = today;
    qCInfo(lcServices).noquote() << QStringLiteral("The calendar day changed to %1").arg(today.toString(Qt::ISODate));
    Q_EMIT dayChanged();
}

} // namespace tarnwell::platform
