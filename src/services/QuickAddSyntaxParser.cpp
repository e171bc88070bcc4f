#include "QuickAddSyntaxParser.h"

#include "DurationParser.h"
#include "QuickAddDayVocabulary.h"

#include <QVarLengthArray>

namespace tarnwell {

namespace {

bool isSeparator(QChar c)
{
    return c == QuickAddSyntaxParser::Constants::middleDot || c == QuickAddSyntaxParser::Constants::tilde;
}

bool startsWithDigit(QStringView word)
{
    return !word.isEmpty() && word.front().isDigit();
}

bool endsWithDigit(QStringView word)
{
    return !word.isEmpty() && word.back().isDigit();
}

} // namespace

qsizetype QuickAddSyntaxParser::separatorPosition(QStringView text)
{
    // The first and the last position lack a neighbour and never qualify.
    for (qsizetype i = text.size() - 2; i >= 1; --i) {
        if (isSeparator(text[i]) && text[i - 1].isSpace() && text[i + 1].isSpace())
            return i;
    }
    return -1;
}

std::optional<QuickAddSyntaxParser::Tail> QuickAddSyntaxParser::parseTail(QStringView tail, const QDateTime &now,
                                                                          const Calendar &calendar)
{
    Tail result;
    QVarLengthArray<QStringView, 8> durationWords;
    bool durationBeforeDay = false;

    qsizetype i = 0;
    const qsizetype size = tail.size();
    while (i < size) {
        while (i < size && tail[i].isSpace())
            ++i;
        if (i == size)
            break;
        const qsizetype start = i;
        while (i < size && !tail[i].isSpace())
            ++i;
        QStringView word = tail.mid(start, i - start);

        while (!word.isEmpty() && word.back() == Constants::urgentMarker) {
            result.urgent = true;
            word.chop(1);
        }
        if (word.isEmpty())
            continue;

        if (const auto offset = QuickAddDayVocabulary::dayOffset(word.toString(), now, calendar)) {
            if (result.dayOffset && *result.dayOffset != *offset)
                return std::nullopt; // two different days
            result.dayOffset = offset;
            durationBeforeDay = !durationWords.isEmpty();
            continue;
        }
        // Duration words may come before or after the day, not on both sides.
        if (durationBeforeDay)
            return std::nullopt;
        // "1 30" must never read as 130.
        if (!durationWords.isEmpty() && endsWithDigit(durationWords.back()) && startsWithDigit(word))
            return std::nullopt;
        durationWords.append(word);
    }

    if (!durationWords.isEmpty()) {
        QString joined;
        for (QStringView word : durationWords) {
            if (!joined.isEmpty())
                joined += u' ';
            joined += word;
        }
        const auto minutes = DurationParser::parse(joined);
        if (!minutes)
            return std::nullopt;
        result.duration = minutes;
    }
    // An urgent mark alone does not make a tail.
    if (!result.duration && !result.dayOffset)
        return std::nullopt;
    return result;
}

std::optional<QuickAddResult> QuickAddSyntaxParser::parse(const QString &input, const QDateTime &now,
                                                          const Calendar &calendar)
{
    QString text = input.trimmed();
    if (text.isEmpty())
        return std::nullopt;

    bool leadingUrgent = false;
    if (text.front() == Constants::urgentMarker) {
        leadingUrgent = true;
        text = text.mid(1).trimmed();
    }

    const qsizetype separator = separatorPosition(text);
    if (separator >= 0) {
        if (const auto tail = parseTail(QStringView(text).mid(separator + 1), now, calendar)) {
            const QString title = QStringView(text).left(separator).trimmed().toString();
            if (title.isEmpty())
                return std::nullopt;
            return QuickAddResult{title, tail->duration, leadingUrgent || tail->urgent, tail->dayOffset};
        }
    }

    if (text.isEmpty())
        return std::nullopt;
    return QuickAddResult{text, std::nullopt, leadingUrgent, std::nullopt};
}

} // namespace tarnwell
