#include "UserDefaults.h"

#include "Logging.h"

#include <QFileInfo>
#include <QStandardPaths>

namespace tarnwell {

namespace {
QString configDir()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
}
} // namespace

QString UserDefaults::path()
{
    return configDir() + QStringLiteral("/tarnwell/tarnwell.conf");
}

QString UserDefaults::legacyPath()
{
    const QString name = QString::fromLatin1(Constants::legacyName);
    return configDir() + QLatin1Char('/') + name + QLatin1Char('/') + name + QStringLiteral(".conf");
}

std::unique_ptr<QSettings> UserDefaults::open()
{
    return std::make_unique<QSettings>(path(), QSettings::IniFormat);
}

int UserDefaults::migrateLegacyDefaults(QSettings &current)
{
    if (current.value(QString::fromLatin1(Constants::migratedKey)).toBool())
        return 0;
    int copied = 0;
    if (QFileInfo::exists(legacyPath())) {
        QSettings legacy(legacyPath(), QSettings::IniFormat);
        const auto keys = legacy.allKeys();
        for (const QString &key : keys) {
            if (current.contains(key))
                continue;
            current.setValue(key, legacy.value(key));
            ++copied;
        }
        qCInfo(lcServices).noquote()
            << QStringLiteral("Carried %1 user defaults over from %2").arg(copied).arg(legacyPath());
    }
    current.setValue(QString::fromLatin1(Constants::migratedKey), true);
    current.sync();
    return copied;
}

} // namespace tarnwell
