#include "WidgetSnapshotFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace tarnwell {

WidgetSnapshotFile::WidgetSnapshotFile()
    : m_path(TarnwellAppGroup::snapshotPath())
{
}

WidgetSnapshotFile::WidgetSnapshotFile(std::optional<QString> path)
    : m_path(std::move(path))
{
}

bool WidgetSnapshotFile::write(const WidgetSnapshot &snapshot, QString *error) const
{
    if (!m_path) {
        if (error)
            error->clear();
        return false;
    }
    const QString container = QFileInfo(*m_path).path();
    if (!QFileInfo::exists(container) && !QDir().mkpath(container)) {
        if (error)
            *error = QStringLiteral("Cannot create the folder %1").arg(container);
        return false;
    }
    QSaveFile file(*m_path);
    if (!file.open(QIODevice::WriteOnly) || file.write(snapshot.encode()) < 0 || !file.commit()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    return true;
}

std::optional<WidgetSnapshot> WidgetSnapshotFile::read() const
{
    if (!m_path)
        return std::nullopt;
    QFile file(*m_path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray bytes = file.read(Limits::fileBytes + 1);
    if (bytes.size() > Limits::fileBytes)
        return std::nullopt;
    return WidgetSnapshot::decode(bytes);
}

void WidgetSnapshotFile::remove() const
{
    if (m_path)
        QFile::remove(*m_path);
}

} // namespace tarnwell
