#include "SoundService.h"

#include "settings/AppSettingsStore.h"

namespace tarnwell {

SoundService::SoundService(AppSettingsStore &settingsStore, ChimeLibrary &library)
    : m_settingsStore(settingsStore)
    , m_library(library)
{
}

SoundService::~SoundService() = default;

const QStringList &SoundService::soundNames()
{
    static const QStringList names{QStringLiteral("Glass"),    QStringLiteral("Tink"), QStringLiteral("Ping"),
                                   QStringLiteral("Purr"),     QStringLiteral("Pop"),  QStringLiteral("Hero"),
                                   QStringLiteral("Submarine")};
    return names;
}

QString SoundService::resolve(const std::optional<QString> &name)
{
    if (name && soundNames().contains(*name))
        return *name;
    return QLatin1String(Constants::defaultSoundName);
}

void SoundService::play(Cue cue)
{
    if (!m_settingsStore.soundEnabled())
        return;
    playSound(resolve(m_settingsStore.chimeSoundName()),
              cue == Cue::warning ? Constants::warningVolume : Constants::endVolume);
}

void SoundService::preview(const std::optional<QString> &name)
{
    playSound(resolve(name), Constants::endVolume);
}

void SoundService::playSound(const QString &name, double volume)
{
    auto it = m_cache.find(name);
    if (it == m_cache.end()) {
        std::unique_ptr<ChimePlayer> loaded = m_library.load(name);
        if (!loaded)
            return; // nothing to play under this name
        it = m_cache.emplace(name, std::move(loaded)).first;
    }
    ChimePlayer &player = *it->second;
    if (player.isPlaying())
        player.stop();
    player.setVolume(volume);
    player.play();
}

} // namespace tarnwell
