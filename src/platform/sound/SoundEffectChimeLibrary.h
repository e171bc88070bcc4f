#pragma once

#include "services/SoundService.h"

#include <QUrl>

namespace tarnwell::platform {

// The chimes the program ships (resources/sounds, compiled in), played
// through QSoundEffect.
class SoundEffectChimeLibrary final : public ChimeLibrary
{
public:
    // qrc:/sounds/<name>.wav
    static QUrl chimeUrl(const QString &name);
    // None when no chime of that name is compiled in.
    std::unique_ptr<ChimePlayer> load(const QString &name) override;
};

} // namespace tarnwell::platform
