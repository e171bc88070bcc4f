#include "kit/Logging.h"
#include "kit/Translations.h"
#include "persistence/PersistenceController.h"
#include "platform/JournalLog.h"

#include <QCoreApplication>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tarnwell"));
    tarnwell::platform::installLogHandler();

    tarnwell::Translations translations;
    translations.install(tarnwell::Translations::resolve(QStringLiteral("system")));

    tarnwell::PersistenceController store;
    qCInfo(lcPersistence).noquote() << QStringLiteral("Opened the store at %1").arg(store.storePath());
    return 0;
}
