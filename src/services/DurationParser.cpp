#include "DurationParser.h"

#include <cmath>

namespace tarnwell {

namespace {

bool isAsciiDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// A decimal number with a point: digits, at most one '.', at least one digit.
// No sign, no exponent, no comma.
std::optional<double> readDecimal(QStringView text)
{
    bool digit = false;
    bool point = false;
    for (QChar c : text) {
        if (isAsciiDigit(c))
            digit = true;
        else if (c == u'.' && !point)
            point = true;
        else
            return std::nullopt;
    }
    if (!digit)
        return std::nullopt;
    bool ok = false;
    const double value = text.toDouble(&ok);
    if (!ok || !std::isfinite(value))
        return std::nullopt;
    return value;
}

// Digits only; a value too large for the range is reported as such rather
// than wrapped.
std::optional<double> readWhole(QStringView text)
{
    if (text.isEmpty())
        return std::nullopt;
    double value = 0;
    for (QChar c : text) {
        if (!isAsciiDigit(c))
            return std::nullopt;
        value = value * 10 + (c.unicode() - u'0');
    }
    return value;
}

QStringView withoutMinuteSuffix(QStringView text)
{
    for (const QString &suffix : DurationParser::minuteSuffixes()) {
        if (text.endsWith(suffix))
            return text.chopped(suffix.size());
    }
    return text;
}

std::optional<double> hourForm(QStringView text)
{
    for (const QString &suffix : DurationParser::hourSuffixes()) {
        const qsizetype at = text.indexOf(suffix);
        if (at < 0)
            continue;
        // The first suffix in list order decides, whether or not the rest reads.
        const auto hours = readDecimal(text.left(at));
        if (!hours)
            return std::nullopt;
        const QStringView rest = withoutMinuteSuffix(text.mid(at + suffix.size()));
        double minutes = 0;
        if (!rest.isEmpty()) {
            const auto whole = readWhole(rest);
            if (!whole)
                return std::nullopt;
            minutes = *whole;
        }
        return *hours * 60 + minutes;
    }
    return std::nullopt;
}

} // namespace

const QStringList &DurationParser::minuteSuffixes()
{
    static const QStringList suffixes{QStringLiteral("min"), QStringLiteral("dak"), QStringLiteral("dk"),
                                      QStringLiteral("m")};
    return suffixes;
}

const QStringList &DurationParser::hourSuffixes()
{
    static const QStringList suffixes{QStringLiteral("saat"), QStringLiteral("std"), QStringLiteral("hrs"),
                                      QStringLiteral("hr"),   QStringLiteral("sa"),  QStringLiteral("h")};
    return suffixes;
}

std::optional<int> DurationParser::parse(const QString &input)
{
    QString text = input.trimmed().toLower();
    qsizetype tildes = 0;
    while (tildes < text.size() && text.at(tildes) == u'~')
        ++tildes;
    text.remove(0, tildes);
    text.remove(u' ');
    if (text.isEmpty())
        return std::nullopt;

    std::optional<double> minutes = hourForm(text);
    if (!minutes)
        minutes = readDecimal(withoutMinuteSuffix(text));
    if (!minutes)
        return std::nullopt;

    // std::round rounds halves away from zero. Check the range before the
    // conversion so that huge values cannot overflow.
    const double rounded = std::round(*minutes);
    if (!(rounded >= Limits::minMinutes && rounded <= Limits::maxMinutes))
        return std::nullopt;
    return int(rounded);
}

} // namespace tarnwell
