#include "LoginItemService.h"

#include "Logging.h"
#include "settings/AppSettingsStore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace tarnwell {

namespace {

QString quotedExec(const QString &command)
{
    // Desktop-entry quoting: wrap in double quotes and escape the specials.
    QString escaped = command;
    for (const char *special : {"\\", "\"", "`", "$"})
        escaped.replace(QLatin1String(special), QLatin1String("\\") + QLatin1String(special));
    return QLatin1Char('"') + escaped + QLatin1Char('"');
}

} // namespace

LoginItemService::LoginItemService(AppSettingsStore &settings, QString command, QObject *parent)
    : QObject(parent)
    , m_settings(settings)
    , m_command(std::move(command))
{
}

QString LoginItemService::autostartPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
        QStringLiteral("/autostart/org.tarnwell.Tarnwell.desktop");
}

bool LoginItemService::isRegistered() const
{
    return QFileInfo::exists(autostartPath());
}

void LoginItemService::start()
{
    if (m_started)
        return;
    m_started = true;
    connect(&m_settings, &AppSettingsStore::settingChanged, this, [this](const QString &setting) {
        if (setting == QLatin1String("loginItemEnabled"))
            apply();
    });
    apply();
}

void LoginItemService::apply()
{
    const QString path = autostartPath();
    if (!m_settings.loginItemEnabled()) {
        if (QFile::exists(path) && !QFile::remove(path))
            qCWarning(lcServices).noquote() << QStringLiteral("Could not remove the autostart entry %1").arg(path);
        return;
    }
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        qCWarning(lcServices).noquote()
            << QStringLiteral("Could not write the autostart entry %1: %2").arg(path, file.errorString());
        return;
    }
    const QString entry = QStringLiteral("[Desktop Entry]\n"
                                         "Type=Application\n"
                                         "Name=Tarnwell\n"
                                         "Exec=%1\n"
                                         "Icon=org.tarnwell.Tarnwell\n"
                                         "NoDisplay=true\n"
                                         "X-GNOME-Autostart-enabled=true\n")
                              .arg(quotedExec(m_command));
    file.write(entry.toUtf8());
    if (!file.commit())
        qCWarning(lcServices).noquote()
            << QStringLiteral("Could not write the autostart entry %1: %2").arg(path, file.errorString());
}

} // namespace tarnwell
