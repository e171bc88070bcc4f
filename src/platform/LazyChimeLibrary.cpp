#include "LazyChimeLibrary.h"

#include "kit/Logging.h"

#include <QCoreApplication>
#include <QDir>

namespace tarnwell::platform {

std::unique_ptr<ChimePlayer> LazyChimeLibrary::load(const QString &name)
{
    if (!m_tried) {
        m_tried = true;
        const QString appDir = QCoreApplication::applicationDirPath();
        const QStringList candidates{appDir + QStringLiteral("/libtarnwell_sound"),
                                     appDir + QStringLiteral("/../lib/tarnwell/libtarnwell_sound"),
                                     QStringLiteral(TARNWELL_SOUND_BUILD_DIR "/libtarnwell_sound")};
        for (const QString &candidate : candidates) {
            m_library.setFileName(QDir::cleanPath(candidate));
            if (m_library.load())
                break;
        }
        using Factory = ChimeLibrary *(*)();
        if (auto make = reinterpret_cast<Factory>(m_library.resolve("tarnwell_make_chime_library")))
            m_real.reset(make());
        else
            qCWarning(lcServices).noquote() << QStringLiteral("Chimes are off: %1").arg(m_library.errorString());
    }
    return m_real ? m_real->load(name) : nullptr;
}

} // namespace tarnwell::platform
