// The shipped chimes: every offered name is compiled in, decodes, and plays
// through the sound-effect back end.
#include "platform/SoundEffectChimeLibrary.h"
#include "services/SoundService.h"

#include <QSoundEffect>
#include <QTest>

using namespace tarnwell;

class ChimesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyOfferedChimeLoads()
    {
        platform::SoundEffectChimeLibrary library;
        QVERIFY(!library.load(QStringLiteral("Basso")));
        for (const QString &name : SoundService::soundNames()) {
            QVERIFY2(library.load(name), qPrintable(name));
            QSoundEffect effect;
            effect.setSource(platform::SoundEffectChimeLibrary::chimeUrl(name));
            QTRY_COMPARE_WITH_TIMEOUT(effect.status(), QSoundEffect::Ready, 5000);
        }
    }

    void aPlayingChimeRestarts()
    {
        platform::SoundEffectChimeLibrary library;
        auto chime = library.load(QStringLiteral("Hero"));
        chime->setVolume(0.4);
        chime->play();
        QTRY_VERIFY_WITH_TIMEOUT(chime->isPlaying(), 5000);
        chime->stop();
        QVERIFY(!chime->isPlaying());
        chime->play();
        QTRY_VERIFY_WITH_TIMEOUT(chime->isPlaying(), 5000);
    }
};

QTEST_MAIN(ChimesTest)
#include "tst_chimes.moc"
