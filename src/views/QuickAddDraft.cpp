#include "QuickAddDraft.h"

#include "ViewTexts.h"
#include "persistence/DayRepository.h"
#include "persistence/TaskRepository.h"
#include "services/DayPlanFooterText.h"
#include "services/PlanningTexts.h"

namespace tarnwell {

QuickAddDraft::QuickAddDraft(TaskRepository &tasks, DayRepository &days, Calendar calendar, Clock clock,
                             QObject *parent)
    : QObject(parent)
    , m_tasks(tasks)
    , m_days(days)
    , m_calendar(std::move(calendar))
    , m_clock(std::move(clock))
{
}

void QuickAddDraft::setText(const QString &text)
{
    if (text == m_text)
        return;
    m_text = text;
    Q_EMIT textChanged();
    reparse();
}

void QuickAddDraft::reparse()
{
    m_parsed = QuickAddSyntaxParser::parse(m_text, m_clock(), m_calendar);
    QString error;
    if (!m_parsed) {
        if (!m_text.trimmed().isEmpty())
            error = PlanningTexts::quickAddTitleRequired();
    } else if (TaskRepository::characterCount(m_parsed->title) > TaskRepository::Limits::titleCharacters) {
        error = RepositoryError::titleTooLong(TaskRepository::Limits::titleCharacters).localizedDescription();
    }
    Q_EMIT parsedChanged();
    setError(error);
}

void QuickAddDraft::setError(const QString &error)
{
    if (error == m_error)
        return;
    m_error = error;
    Q_EMIT errorChanged();
}

QString QuickAddDraft::title() const
{
    return m_parsed ? m_parsed->title : QString();
}

QString QuickAddDraft::durationText() const
{
    if (!m_parsed || !m_parsed->durationMinutes)
        return {};
    return DayPlanFooterText::formatDuration(qint64(*m_parsed->durationMinutes) * 60);
}

int QuickAddDraft::dayOffset() const
{
    if (m_pickedDay)
        return *m_pickedDay;
    return m_parsed && m_parsed->dayOffset ? *m_parsed->dayOffset : -1;
}

QString QuickAddDraft::dayLabel() const
{
    const int offset = dayOffset();
    return offset < 0 ? QString() : dayLabelFor(offset);
}

QString QuickAddDraft::dayLabelFor(int offset) const
{
    return ViewTexts::dayChip(offset, m_calendar.date(m_clock()));
}

bool QuickAddDraft::urgent() const
{
    return m_parsed && m_parsed->urgent;
}

void QuickAddDraft::setDefaultDayOffset(int offset)
{
    if (offset == m_defaultDayOffset)
        return;
    m_defaultDayOffset = offset;
    Q_EMIT parsedChanged();
}

void QuickAddDraft::overrideDayOffset(int offset)
{
    std::optional<int> picked;
    if (offset >= 0)
        picked = std::min(offset, int(Limits::lastDayOffset));
    if (picked == m_pickedDay)
        return;
    m_pickedDay = picked;
    Q_EMIT parsedChanged();
}

bool QuickAddDraft::commit()
{
    reparse();
    if (!canCommit())
        return false;
    const int chosen = dayOffset();
    const int offset = chosen >= 0 ? chosen : m_defaultDayOffset;
    QUuid id;
    try {
        Day *day = m_days.fetchOrCreateDay(m_calendar.startOfDayAdding(m_clock(), offset));
        const std::optional<qint64> minutes =
            m_parsed->durationMinutes ? std::optional<qint64>(*m_parsed->durationMinutes) : std::nullopt;
        id = m_tasks.createTask(m_parsed->title, minutes, m_parsed->urgent, day)->id();
    } catch (const RepositoryError &error) {
        setError(error.localizedDescription());
        return false;
    } catch (const StoreError &error) {
        setError(error.description());
        return false;
    }
    m_pickedDay.reset();
    m_text.clear();
    Q_EMIT textChanged();
    reparse();
    Q_EMIT committed(id, offset);
    return true;
}

} // namespace tarnwell
