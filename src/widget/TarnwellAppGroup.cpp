#include "TarnwellAppGroup.h"

#include <QStandardPaths>

#ifndef TARNWELL_APP_GROUP
#define TARNWELL_APP_GROUP "org.tarnwell.Tarnwell"
#endif

namespace tarnwell::TarnwellAppGroup {

QString identifier()
{
    static const QString id = [] {
        const QString configured = QStringLiteral(TARNWELL_APP_GROUP).trimmed();
        // A build setting that names no folder falls back to the application id.
        if (configured.isEmpty() || configured.contains(QLatin1Char('/')) || configured.startsWith(QLatin1Char('.')))
            return QStringLiteral("org.tarnwell.Tarnwell");
        return configured;
    }();
    return id;
}

std::optional<QString> containerPath()
{
    // Read each time: tests point XDG_DATA_HOME elsewhere between cases.
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (data.isEmpty())
        return std::nullopt;
    return data + QLatin1Char('/') + identifier();
}

std::optional<QString> snapshotPath()
{
    const auto container = containerPath();
    if (!container)
        return std::nullopt;
    return *container + QLatin1Char('/') + QLatin1String(Constants::snapshotFileName);
}

std::optional<QString> commandsDirectoryPath()
{
    const auto container = containerPath();
    if (!container)
        return std::nullopt;
    return *container + QLatin1Char('/') + QLatin1String(Constants::commandsDirectoryName);
}

} // namespace tarnwell::TarnwellAppGroup
