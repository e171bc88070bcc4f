// The shipped chimes: every offered name is compiled in, decodes, and plays
// through the sound-effect back end (which reports playing even where no
// audio device exists).
#include "platform/LazyChimeLibrary.h"
#include "platform/sound/SoundEffectChimeLibrary.h"

#include <QSoundEffect>
#include <QTest>

using namespace tarnwell;

class ChimesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyOfferedChimeLoadsAndPlays()
    {
        platform::SoundEffectChimeLibrary library;
        QVERIFY(!library.load(QStringLiteral("Basso")));
        for (const QString &name : SoundService::soundNames()) {
            QSoundEffect effect;
            effect.setSource(platform::SoundEffectChimeLibrary::chimeUrl(name));
            QTRY_COMPARE_WITH_TIMEOUT(effect.status(), QSoundEffect::Ready, 5000);
            auto chime = library.load(name);
            QVERIFY2(chime, qPrintable(name));
            chime->play();
            QTRY_VERIFY_WITH_TIMEOUT(chime->isPlaying(), 5000);
        }
    }

    void theAudioStackLoadsAtTheFirstChimeOnly()
    {
        platform::LazyChimeLibrary library;
        QVERIFY(!library.isLoaded());
        QVERIFY(library.load(QStringLiteral("Glass")));
        QVERIFY(library.isLoaded());
        QVERIFY(!library.load(QStringLiteral("Trombone")));
    }
};

QTEST_MAIN(ChimesTest)
#include "tst_chimes.moc"
