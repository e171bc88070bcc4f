#pragma once

#include "services/SoundService.h"

#include <QLibrary>
#include <memory>

namespace tarnwell::platform {

// The audio stack (Qt Multimedia, PulseAudio and its codecs) weighs several
// megabytes that a tray program idles with; this library loads it only when
// the first chime plays, from libtarnwell_sound.
class LazyChimeLibrary final : public ChimeLibrary
{
public:
    std::unique_ptr<ChimePlayer> load(const QString &name) override;
    bool isLoaded() const { return bool(m_real); }

private:
    bool m_tried = false;
    QLibrary m_library;
    std::unique_ptr<ChimeLibrary> m_real;
};

} // namespace tarnwell::platform
