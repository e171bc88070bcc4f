#include "SoundEffectChimeLibrary.h"

#include <QEventLoop>
#include <QFile>
#include <QTimer>
#include <QSoundEffect>

namespace tarnwell::platform {

namespace {

class SoundEffectChimePlayer final : public ChimePlayer
{
public:
    explicit SoundEffectChimePlayer(const QUrl &source) { m_effect.setSource(source); }
    ~SoundEffectChimePlayer() override
    {
        // The chime is read on Qt Multimedia's loader thread; an effect
        // destroyed half-way leaves that request running past the end of the
        // program. Let it finish first (a short file from our resources).
        if (m_effect.status() != QSoundEffect::Loading)
            return;
        QEventLoop loop;
        QObject::connect(&m_effect, &QSoundEffect::statusChanged, &loop, &QEventLoop::quit);
        QTimer::singleShot(2000, &loop, &QEventLoop::quit);
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    }

    bool isPlaying() const override { return m_effect.isPlaying(); }
    void stop() override { m_effect.stop(); }
    void setVolume(double volume) override { m_effect.setVolume(float(volume)); }
    // Loading is asynchronous; a play before it finishes starts once loaded.
    void play() override { m_effect.play(); }

private:
    QSoundEffect m_effect;
};

} // namespace

QUrl SoundEffectChimeLibrary::chimeUrl(const QString &name)
{
    return QUrl(QStringLiteral("qrc:/sounds/%1.wav").arg(name));
}

std::unique_ptr<ChimePlayer> SoundEffectChimeLibrary::load(const QString &name)
{
    if (!QFile::exists(QStringLiteral(":/sounds/%1.wav").arg(name)))
        return nullptr;
    return std::make_unique<SoundEffectChimePlayer>(chimeUrl(name));
}

} // namespace tarnwell::platform

// Entry point for LazyChimeLibrary, which loads this library at the first chime.
extern "C" Q_DECL_EXPORT tarnwell::ChimeLibrary *tarnwell_make_chime_library()
{
    return new tarnwell::platform::SoundEffectChimeLibrary;
}
