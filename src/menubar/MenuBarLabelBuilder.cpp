#include "MenuBarLabelBuilder.h"

#include "persistence/Task.h"

#include <QCoreApplication>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace tarnwell {

int MenuBarLabelBuilder::clampedLimit(int maxChars)
{
    return std::clamp(maxChars, Limits::minimumTitleCharacters, Limits::maximumTitleCharacters);
}

QString MenuBarLabelBuilder::truncated(const QString &title, int limit)
{
    const int kept = std::max(0, limit);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, title);
    QList<qsizetype> boundaries; // end of each character
    while (finder.toNextBoundary() != -1)
        boundaries.append(finder.position());
    if (boundaries.size() <= kept)
        return title;
    if (kept == 0)
        return {};
    const QString ellipsis(QChar(0x2026));
    if (kept == 1)
        return ellipsis;
    return title.left(boundaries[kept - 2]) + ellipsis;
}

QString MenuBarLabelBuilder::countdownText(qint64 seconds)
{
    const qint64 minutes = (seconds < 0 ? -seconds : seconds) / 60;
    const qint64 hours = minutes / 60;
    const qint64 rest = minutes % 60;
    QString text;
    if (hours == 0)
        text = QStringLiteral("%1m").arg(minutes);
    else if (rest > 0)
        text = QStringLiteral("%1h %2m").arg(hours).arg(rest);
    else
        text = QStringLiteral("%1h").arg(hours);
    return seconds < 0 ? QStringLiteral("-") + text : text;
}

QString MenuBarLabelBuilder::idleText(bool dayDone)
{
    if (dayDone) {
        //: Menu bar label
        //% "Done for today. That's plenty."
        const QString text = qtTrId("menubar.dayDone");
        return text == QLatin1String("menubar.dayDone") ? QStringLiteral("Done for today. That's plenty.") : text;
    }
    //: Menu bar label
    //% "What's next?"
    const QString text = qtTrId("menubar.empty");
    return text == QLatin1String("menubar.empty") ? QStringLiteral("What's next?") : text;
}

MenuBarPresentation MenuBarLabelBuilder::build(const Inputs &inputs)
{
    MenuBarPresentation p;
    const Task *task = inputs.task;
    if (!task) {
        p.state = MenuBarPresentation::State::idle;
        if (!inputs.minimalIdleMode)
            p.title = idleText(inputs.showingDayDone);
        return p;
    }
    p.title = truncated(task->title(), clampedLimit(inputs.maxChars));
    p.isTimerRunning = task->activeStartedAt().has_value();
    const auto minutes = task->durationMinutes();
    if (!minutes || *minutes <= 0) {
        p.state = MenuBarPresentation::State::noDuration;
        return p;
    }
    const qint64 planned = qint64(*minutes) * 60;
    const qint64 remaining = inputs.remainingSeconds.value_or(planned);
    p.progress = std::clamp(double(planned - remaining) / double(planned), 0.0, 1.0);
    p.countdown = countdownText(remaining);
    p.state = remaining <= 0 ? MenuBarPresentation::State::overdue : MenuBarPresentation::State::tracking;
    return p;
}

} // namespace tarnwell
