// libFuzzer target for the quick-add line grammar and the duration grammar.
// The first input byte picks the day of "now" (so weekday words meet every
// weekday); the rest is the typed text as UTF-8. Besides the sanitizers'
// findings, it stops on any broken promise of the parsers' results.
#include "services/DurationParser.h"
#include "services/QuickAddSyntaxParser.h"

#include <QTimeZone>

#include <cstdint>
#include <cstdlib>

using namespace tarnwell;

namespace {

void check(bool condition)
{
    if (!condition)
        std::abort();
}

const Calendar &calendar()
{
    static const Calendar berlin(QTimeZone("Europe/Berlin"));
    return berlin;
}

void checkDuration(const QString &text)
{
    const auto minutes = DurationParser::parse(text);
    if (minutes)
        check(*minutes >= 1 && *minutes <= 9999);
    // Leading tildes are ignored.
    const QString trimmed = text.trimmed();
    check(DurationParser::parse(QStringLiteral("~") + trimmed) == DurationParser::parse(trimmed));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    const QDateTime now = QDateTime(QDate(2026, 3, 1), QTime(12, 0), QTimeZone("Europe/Berlin")).addDays(data[0] % 14);
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data + 1), qsizetype(size - 1));

    checkDuration(text);

    const auto result = QuickAddSyntaxParser::parse(text, now, calendar());
    if (!result)
        return 0;
    check(!result->title.isEmpty());
    check(result->title == result->title.trimmed());
    if (result->durationMinutes)
        check(*result->durationMinutes >= 1 && *result->durationMinutes <= 9999);
    if (result->dayOffset)
        check(*result->dayOffset >= 0 && *result->dayOffset <= 6);

    // Without a tail the whole line (less one leading "!") is the title.
    if (!result->durationMinutes && !result->dayOffset) {
        QString whole = text.trimmed();
        if (whole.startsWith(u'!'))
            whole = whole.mid(1).trimmed();
        check(result->title == whole);
    }

    // A title followed by a fresh tail gets exactly that tail.
    if (!result->title.startsWith(u'!')) {
        const auto again = QuickAddSyntaxParser::parse(result->title + QStringLiteral(" \u00B7 25m"), now, calendar());
        check(again.has_value());
        check(again->title == result->title && again->durationMinutes == 25 && !again->dayOffset && !again->urgent);
    }
    return 0;
}
