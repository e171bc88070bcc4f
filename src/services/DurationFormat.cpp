#include "DurationFormat.h"

namespace tarnwell::DurationFormat {

QString clock(qint64 seconds)
{
    // Unsigned so that the most negative value still has a magnitude.
    const quint64 a = seconds < 0 ? 0 - quint64(seconds) : quint64(seconds);
    const quint64 hours = a / 3600;
    const int minutes = int((a % 3600) / 60);
    const int secs = int(a % 60);
    QString text = hours == 0
        ? QString::asprintf("%02d:%02d", minutes, secs)
        : QString::asprintf("%llu:%02d:%02d", static_cast<unsigned long long>(hours), minutes, secs);
    if (seconds < 0)
        return QLatin1Char('+') + text;
    return text;
}

} // namespace tarnwell::DurationFormat
