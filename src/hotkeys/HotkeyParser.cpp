#include "HotkeyParser.h"

#include "HotkeyKeyMap.h"

#include <array>

namespace tarnwell {

namespace {

bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t';
}

// Blanks and tabs only: a line break is part of the text and makes it fail.
QStringView trimBlanks(QStringView text)
{
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && isBlank(text[begin]))
        ++begin;
    while (end > begin && isBlank(text[end - 1]))
        --end;
    return text.mid(begin, end - begin);
}

struct KeyToken
{
    const char16_t *token;
    HotkeyKey key;
};

constexpr std::array<KeyToken, 11> namedKeys{{
    {u"return", HotkeyKey::returnKey},
    {u"enter", HotkeyKey::returnKey},
    {u"escape", HotkeyKey::escape},
    {u"esc", HotkeyKey::escape},
    {u"tab", HotkeyKey::tab},
    {u"space", HotkeyKey::space},
    {u"delete", HotkeyKey::deleteKey},
    {u"up", HotkeyKey::up},
    {u"down", HotkeyKey::down},
    {u"left", HotkeyKey::left},
    {u"right", HotkeyKey::right},
}};

} // namespace

RecordedHotkey RecordedHotkey::fromRaw(const QString &raw)
{
    return {raw, HotkeyChordFormatter::display(raw)};
}

std::optional<HotkeyKey> HotkeyKeyMap::key(QStringView token)
{
    if (token.size() == 1) {
        const char16_t c = token[0].unicode();
        if (c >= u'a' && c <= u'z')
            return HotkeyKey(int(HotkeyKey::a) + (c - u'a'));
        if (c >= u'0' && c <= u'9')
            return HotkeyKey(int(HotkeyKey::digit0) + (c - u'0'));
        return std::nullopt;
    }
    for (const KeyToken &named : namedKeys)
        if (token == QStringView(named.token))
            return named.key;
    return std::nullopt;
}

std::optional<HotkeyModifier> HotkeyKeyMap::modifier(QStringView word)
{
    if (word == u"cmd" || word == u"command")
        return HotkeyModifier::command;
    if (word == u"shift")
        return HotkeyModifier::shift;
    if (word == u"opt" || word == u"option" || word == u"alt")
        return HotkeyModifier::option;
    if (word == u"ctrl" || word == u"control")
        return HotkeyModifier::control;
    return std::nullopt;
}

QString HotkeyKeyMap::modifierSymbol(HotkeyModifier modifier)
{
    switch (modifier) {
    case HotkeyModifier::command:
        //: The Super (logo, "Windows") key in a shown key combination, with its joining "+"
        //% "Super+"
        return qtTrId("hotkey.modifier.super");
    case HotkeyModifier::shift:
        //: The Shift key in a shown key combination, with its joining "+", as keyboards of the language label it
        //% "Shift+"
        return qtTrId("hotkey.modifier.shift");
    case HotkeyModifier::option:
        //: The Alt key in a shown key combination, with its joining "+"
        //% "Alt+"
        return qtTrId("hotkey.modifier.alt");
    case HotkeyModifier::control:
        //: The Control key in a shown key combination, with its joining "+", as keyboards of the language label it
        //% "Ctrl+"
        return qtTrId("hotkey.modifier.ctrl");
    }
    return {};
}

QString HotkeyKeyMap::displayText(HotkeyKey key)
{
    if (key >= HotkeyKey::a && key <= HotkeyKey::z)
        return QString(QChar(u'A' + (int(key) - int(HotkeyKey::a))));
    if (key >= HotkeyKey::digit0 && key <= HotkeyKey::digit9)
        return QString(QChar(u'0' + (int(key) - int(HotkeyKey::digit0))));
    switch (key) {
    case HotkeyKey::returnKey:
        //: The Return/Enter key in a shown key combination, as keyboards of the language label it
        //% "Enter"
        return qtTrId("hotkey.key.return");
    case HotkeyKey::escape:
        //: The Escape key in a shown key combination, as keyboards of the language label it
        //% "Esc"
        return qtTrId("hotkey.key.escape");
    case HotkeyKey::tab:
        //: The Tab key in a shown key combination
        //% "Tab"
        return qtTrId("hotkey.key.tab");
    case HotkeyKey::space:
        //: The space bar in a shown key combination
        //% "Space"
        return qtTrId("hotkey.key.space");
    case HotkeyKey::deleteKey:
        //: The Delete key in a shown key combination, as keyboards of the language label it
        //% "Delete"
        return qtTrId("hotkey.key.delete");
    case HotkeyKey::up:
        return QStringLiteral("\u2191");
    case HotkeyKey::down:
        return QStringLiteral("\u2193");
    case HotkeyKey::left:
        return QStringLiteral("\u2190");
    case HotkeyKey::right:
        return QStringLiteral("\u2192");
    default:
        return {};
    }
}

QStringList HotkeyParser::pieces(const QString &text)
{
    const QString lowered = trimBlanks(text).toString().toLower();
    QStringList result;
    for (const QStringView piece : QStringView(lowered).split(u'+', Qt::SkipEmptyParts))
        result.append(trimBlanks(piece).toString());
    return result;
}

std::optional<HotkeyCombo> HotkeyParser::parse(const QString &text)
{
    const QStringList parts = pieces(text);
    if (parts.isEmpty())
        return std::nullopt;
    HotkeyCombo combo;
    for (qsizetype i = 0; i + 1 < parts.size(); ++i)
        if (const auto flag = HotkeyKeyMap::modifier(parts[i]))
            combo.modifiers |= *flag;
    const auto key = HotkeyKeyMap::key(parts.last());
    if (!key)
        return std::nullopt;
    combo.key = *key;
    return combo;
}

QString HotkeyChordFormatter::display(const QString &raw)
{
    const QStringList parts = HotkeyParser::pieces(raw);
    if (parts.isEmpty())
        return {};
    QString shown;
    for (qsizetype i = 0; i + 1 < parts.size(); ++i)
        if (const auto flag = HotkeyKeyMap::modifier(parts[i]))
            shown += HotkeyKeyMap::modifierSymbol(*flag);
    // A key the map does not know is shown as typed, so the user sees what is wrong.
    const auto key = HotkeyKeyMap::key(parts.last());
    shown += key ? HotkeyKeyMap::displayText(*key) : parts.last();
    return shown;
}

} // namespace tarnwell
