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

QString SoundService::chimeFor(Cue cue) const
{
    std::optional<QString> own;
    if (cue == Cue::warning)
        own = m_settingsStore.warningChimeName();
    else if (cue == Cue::completion)
        own = m_settingsStore.completionChimeName();
    return resolve(own && soundNames().contains(*own) ? own : m_settingsStore.chimeSoundName());
}

double SoundService::volumeFor(Cue cue) const
{
    // The warning stays softer than the others at every volume.
    const double base = cue == Cue::warning ? Constants::warningVolume : Constants::endVolume;
    return base * m_settingsStore.chimeVolumePercent() / 100.0;
}

void SoundService::play(Cue cue)
{
    if (!m_settingsStore.soundEnabled())
        return;
    playSound(chimeFor(cue), volumeFor(cue));
}

void SoundService::preview(const std::optional<QString> &name, Cue cue)
{
    playSound(resolve(name), volumeFor(cue));
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
