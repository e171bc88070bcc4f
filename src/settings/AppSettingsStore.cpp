#include "AppSettingsStore.h"

#include "kit/Checked.h"
#include "persistence/PersistenceController.h"

#include <algorithm>

namespace tarnwell {

namespace {
constexpr int lastMinuteOfDay = 1439;
}

QString storedText(TarnwellAppearance appearance)
{
    switch (appearance) {
    case TarnwellAppearance::system:
        return QStringLiteral("auto");
    case TarnwellAppearance::light:
        return QStringLiteral("light");
    case TarnwellAppearance::dark:
        return QStringLiteral("dark");
    }
    return QStringLiteral("auto");
}

TarnwellAppearance appearanceFromStored(const std::optional<QString> &text)
{
    if (text == QLatin1String("light"))
        return TarnwellAppearance::light;
    if (text == QLatin1String("dark"))
        return TarnwellAppearance::dark;
    return TarnwellAppearance::system; // "auto", a missing value and anything unknown
}

QString storedText(TarnwellLanguageOption language)
{
    switch (language) {
    case TarnwellLanguageOption::system:
        return QStringLiteral("system");
    case TarnwellLanguageOption::english:
        return QStringLiteral("en");
    case TarnwellLanguageOption::turkish:
        return QStringLiteral("tr");
    case TarnwellLanguageOption::german:
        return QStringLiteral("de");
    case TarnwellLanguageOption::spanish:
        return QStringLiteral("es");
    case TarnwellLanguageOption::french:
        return QStringLiteral("fr");
    }
    return QStringLiteral("system");
}

TarnwellLanguageOption languageFromStored(const QString &text)
{
    for (auto option :
         {TarnwellLanguageOption::english, TarnwellLanguageOption::turkish, TarnwellLanguageOption::german,
          TarnwellLanguageOption::spanish, TarnwellLanguageOption::french}) {
        if (storedText(option) == text)
            return option;
    }
    return TarnwellLanguageOption::system;
}

AppSettingsStore::AppSettingsStore(PersistenceController &controller, QObject *parent)
    : QObject(parent)
    , m_controller(controller)
{
    StoreContext &context = controller.viewContext();
    FetchRequest first;
    first.limit = 1;
    first.orderBy = QStringLiteral("rowid");
    const auto rows = context.fetch<AppSettings>(first);
    if (!rows.isEmpty()) {
        m_row = rows.first();
        return;
    }
    m_row = context.insertNew<AppSettings>();
    m_row->setWorkdayEndMinutes(Defaults::workdayEndMinutes);
    m_row->setIdleThresholdMinutes(Defaults::idleThresholdMinutes);
    m_row->setMinimalIdleMode(Defaults::minimalIdleMode);
    m_row->setPreEndWarningMinutes(Defaults::preEndWarningMinutes);
    m_row->setOvertimePresetMinutes(Defaults::overtimePresetMinutes);
    m_row->setSkipBreakPresetMinutes(Defaults::skipBreakPresetMinutes);
    m_row->setNotificationsEnabled(Defaults::notificationsEnabled);
    m_row->setSoundEnabled(Defaults::soundEnabled);
    m_row->setChimeSoundName(QString::fromLatin1(Defaults::chimeSoundName));
    m_row->setHotkeyTogglePopover(QString::fromLatin1(Defaults::hotkeyTogglePopover));
    m_row->setHotkeyQuickAdd(QString::fromLatin1(Defaults::hotkeyQuickAdd));
    m_row->setMenuBarMaxChars(Defaults::menuBarMaxChars);
    m_row->setSortMode(QString::fromLatin1(Defaults::sortMode));
    m_row->setTheme(QString::fromLatin1(Defaults::theme));
    m_row->setLanguage(QString::fromLatin1(Defaults::language));
    m_row->setLoginItemEnabled(Defaults::loginItemEnabled);
    m_row->setOnboardingCompleted(Defaults::onboardingCompleted);
    m_row->setEditHistoryEnabled(Defaults::editHistoryEnabled);
    m_controller.save();
}

template<typename Apply>
void AppSettingsStore::change(const char *setting, Apply &&apply)
{
    const QString name = QString::fromLatin1(setting);
    Q_EMIT settingWillChange(name);
    apply();
    m_controller.save();
    Q_EMIT settingChanged(name);
}

std::optional<int> AppSettingsStore::workdayEndMinutes() const
{
    const int stored = m_row->workdayEndMinutes();
    if (stored < 0 || stored > lastMinuteOfDay)
        return std::nullopt;
    return stored;
}

void AppSettingsStore::setWorkdayEndMinutes(std::optional<qint64> minutes)
{
    const qint32 stored = minutes ? checkedInt32(std::clamp<qint64>(*minutes, 0, lastMinuteOfDay), "workdayEndMinutes")
                                  : Defaults::workdayEndMinutes;
    change("workdayEndMinutes", [&] { m_row->setWorkdayEndMinutes(stored); });
}

void AppSettingsStore::setIdleThresholdMinutes(qint64 minutes)
{
    const qint32 v = checkedInt32(minutes, "idleThresholdMinutes");
    change("idleThresholdMinutes", [&] { m_row->setIdleThresholdMinutes(v); });
}

void AppSettingsStore::setMinimalIdleMode(bool on)
{
    change("minimalIdleMode", [&] { m_row->setMinimalIdleMode(on); });
}

void AppSettingsStore::setPreEndWarningMinutes(qint64 minutes)
{
    const qint32 v = checkedInt32(minutes, "preEndWarningMinutes");
    change("preEndWarningMinutes", [&] { m_row->setPreEndWarningMinutes(v); });
}

void AppSettingsStore::setOvertimePresetMinutes(qint64 minutes)
{
    const qint32 v = checkedInt32(minutes, "overtimePresetMinutes");
    change("overtimePresetMinutes", [&] { m_row->setOvertimePresetMinutes(v); });
}

void AppSettingsStore::setSkipBreakPresetMinutes(qint64 minutes)
{
    const qint32 v = checkedInt32(minutes, "skipBreakPresetMinutes");
    change("skipBreakPresetMinutes", [&] { m_row->setSkipBreakPresetMinutes(v); });
}

void AppSettingsStore::setNotificationsEnabled(bool on)
{
    change("notificationsEnabled", [&] { m_row->setNotificationsEnabled(on); });
}

void AppSettingsStore::setSoundEnabled(bool on)
{
    change("soundEnabled", [&] { m_row->setSoundEnabled(on); });
}

void AppSettingsStore::setChimeSoundName(const QString &name)
{
    change("chimeSoundName", [&] { m_row->setChimeSoundName(name); });
}

void AppSettingsStore::setHotkeyTogglePopover(const QString &text)
{
    change("hotkeyTogglePopover", [&] { m_row->setHotkeyTogglePopover(text); });
}

void AppSettingsStore::setHotkeyQuickAdd(const QString &text)
{
    change("hotkeyQuickAdd", [&] { m_row->setHotkeyQuickAdd(text); });
}

void AppSettingsStore::setMenuBarMaxChars(qint64 characters)
{
    const qint32 v = checkedInt32(characters, "menuBarMaxChars");
    change("menuBarMaxChars", [&] { m_row->setMenuBarMaxChars(v); });
}

void AppSettingsStore::setSortMode(const QString &mode)
{
    change("sortMode", [&] { m_row->setSortMode(mode); });
}

void AppSettingsStore::setTheme(TarnwellAppearance appearance)
{
    change("theme", [&] { m_row->setTheme(storedText(appearance)); });
}

void AppSettingsStore::setLanguage(TarnwellLanguageOption language)
{
    change("language", [&] { m_row->setLanguage(storedText(language)); });
}

void AppSettingsStore::setLoginItemEnabled(bool on)
{
    change("loginItemEnabled", [&] { m_row->setLoginItemEnabled(on); });
}

void AppSettingsStore::setOnboardingCompleted(bool done)
{
    change("onboardingCompleted", [&] { m_row->setOnboardingCompleted(done); });
}

void AppSettingsStore::setEditHistoryEnabled(bool on)
{
    change("editHistoryEnabled", [&] { m_row->setEditHistoryEnabled(on); });
}

void AppSettingsStore::setWarningChimeName(const std::optional<QString> &name)
{
    change("warningChimeName", [&] { m_row->setWarningChimeName(name); });
}

void AppSettingsStore::setCompletionChimeName(const std::optional<QString> &name)
{
    change("completionChimeName", [&] { m_row->setCompletionChimeName(name); });
}

int AppSettingsStore::chimeVolumePercent() const
{
    return std::clamp(m_row->chimeVolumePercent().value_or(Defaults::chimeVolumePercent), 0, 100);
}

void AppSettingsStore::setChimeVolumePercent(qint64 percent)
{
    change("chimeVolumePercent", [&] { m_row->setChimeVolumePercent(qint32(std::clamp<qint64>(percent, 0, 100))); });
}

} // namespace tarnwell
