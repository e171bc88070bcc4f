#pragma once

#include <QString>
#include <QStringList>

#include <map>
#include <memory>
#include <optional>

namespace tarnwell {

class AppSettingsStore;

// One loaded chime. The real one wraps a sound effect (platform library);
// tests use a fake.
class ChimePlayer
{
public:
    virtual ~ChimePlayer() = default;
    virtual bool isPlaying() const = 0;
    virtual void stop() = 0;
    // Linear volume, 0.0 to 1.0.
    virtual void setVolume(double volume) = 0;
    virtual void play() = 0;
};

// Loads the chime of a name; none when the name has no sound.
class ChimeLibrary
{
public:
    virtual ~ChimeLibrary() = default;
    virtual std::unique_ptr<ChimePlayer> load(const QString &name) = 0;
};

// Plays the timer chimes. Each name is loaded once and kept for the process;
// a chime that is still playing restarts rather than overlapping itself.
class SoundService
{
public:
    // The planned time is up; it is about to be; a task was completed.
    enum class Cue { end, warning, completion };

    struct Constants
    {
        static constexpr const char *defaultSoundName = "Glass";
        static constexpr double warningVolume = 0.4;
        static constexpr double endVolume = 1.0;
    };

    SoundService(AppSettingsStore &settingsStore, ChimeLibrary &library);
    ~SoundService();

    // The chimes offered in the settings, in their order.
    static const QStringList &soundNames();
    // A known name as it is; none or anything else gives the default.
    static QString resolve(const std::optional<QString> &name);

    // The chime chosen for the event (the time-up chime where the event has
    // none of its own) at the chosen volume, unless sounds are switched off.
    void play(Cue cue);
    // Plays a chime for the settings picker at the chosen volume, whatever
    // the sound setting says.
    void preview(const std::optional<QString> &name, Cue cue = Cue::end);
    // The chime name and linear volume the event plays with now.
    QString chimeFor(Cue cue) const;
    double volumeFor(Cue cue) const;

private:
    void playSound(const QString &name, double volume);

    AppSettingsStore &m_settingsStore;
    ChimeLibrary &m_library;
    std::map<QString, std::unique_ptr<ChimePlayer>> m_cache;
};

} // namespace tarnwell
