#include "WidgetCommandStore.h"

#include <QDir>
#include <QFileInfo>
#include <QFile>
#include <QSaveFile>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarnwell {

WidgetCommandStore::WidgetCommandStore()
    : m_directory(TarnwellAppGroup::commandsDirectoryPath())
{
}

WidgetCommandStore::WidgetCommandStore(std::optional<QString> directory)
    : m_directory(std::move(directory))
{
}

QString WidgetCommandStore::prepareDirectory() const
{
    if (!m_directory)
        return QStringLiteral("no data folder");
    const QByteArray path = QFile::encodeName(*m_directory);
    struct stat info;
    if (::lstat(path.constData(), &info) != 0) {
        const QString container = QFileInfo(*m_directory).path();
        if (!QDir().mkpath(container))
            return QStringLiteral("cannot create %1").arg(container);
        if (::mkdir(path.constData(), 0700) != 0 && errno != EEXIST)
            return QString::fromLocal8Bit(std::strerror(errno));
        if (::lstat(path.constData(), &info) != 0)
            return QString::fromLocal8Bit(std::strerror(errno));
    }
    if (S_ISLNK(info.st_mode))
        return QStringLiteral("it is a symbolic link");
    if (!S_ISDIR(info.st_mode))
        return QStringLiteral("it is not a folder");
    if (info.st_uid != ::geteuid())
        return QStringLiteral("it belongs to another user");
    if ((info.st_mode & 07777) != 0700 && ::chmod(path.constData(), 0700) != 0)
        return QString::fromLocal8Bit(std::strerror(errno));
    return {};
}

QStringList WidgetCommandStore::jsonFileNames() const
{
    QStringList names;
    if (!m_directory)
        return names;
    DIR *dir = ::opendir(QFile::encodeName(*m_directory).constData());
    if (!dir)
        return names;
    while (const dirent *entry = ::readdir(dir)) {
        const QString name = QFile::decodeName(entry->d_name);
        // The path extension is exactly "json": "x.json", not ".json" alone.
        if (name.size() > 5 && name.endsWith(QLatin1String(".json")))
            names << name;
    }
    ::closedir(dir);
    return names;
}

WidgetCommandStore::Entry WidgetCommandStore::read(const QString &fileName) const
{
    if (!m_directory)
        return {std::nullopt, Refusal::unreadable};
    const QByteArray path = QFile::encodeName(*m_directory + QLatin1Char('/') + fileName);
    struct stat before;
    if (::lstat(path.constData(), &before) != 0)
        return {std::nullopt, Refusal::unreadable};
    if (S_ISLNK(before.st_mode))
        return {std::nullopt, Refusal::symlink};
    if (!S_ISREG(before.st_mode))
        return {std::nullopt, Refusal::notRegularFile};
    if (before.st_uid != ::geteuid())
        return {std::nullopt, Refusal::otherOwner};
    if (before.st_size > Limits::fileBytes)
        return {std::nullopt, Refusal::tooLarge};
    // Opened without following a link and without waiting on a pipe that was
    // swapped in after the check; then checked again on the open file.
    const int fd = ::open(path.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return {std::nullopt, errno == ELOOP ? Refusal::symlink : Refusal::unreadable};
    struct stat opened;
    if (::fstat(fd, &opened) != 0 || !S_ISREG(opened.st_mode) || opened.st_ino != before.st_ino ||
        opened.st_uid != ::geteuid()) {
        ::close(fd);
        return {std::nullopt, Refusal::notRegularFile};
    }
    QByteArray bytes(Limits::fileBytes + 1, Qt::Uninitialized);
    qint64 total = 0;
    while (total < bytes.size()) {
        const ssize_t n = ::read(fd, bytes.data() + total, size_t(bytes.size() - total));
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0) {
            ::close(fd);
            return {std::nullopt, Refusal::unreadable};
        }
        if (n == 0)
            break;
        total += n;
    }
    ::close(fd);
    if (total > Limits::fileBytes)
        return {std::nullopt, Refusal::tooLarge};
    bytes.truncate(total);
    auto command = WidgetCommand::decode(bytes);
    if (!command)
        return {std::nullopt, Refusal::undecodable};
    return {std::move(command), Refusal::none};
}

QList<WidgetCommand> WidgetCommandStore::readAll() const
{
    QList<WidgetCommand> commands;
    for (const QString &name : jsonFileNames()) {
        if (auto entry = read(name); entry.command)
            commands << *entry.command;
    }
    std::stable_sort(commands.begin(), commands.end(),
                     [](const WidgetCommand &a, const WidgetCommand &b) { return a.requestedAt < b.requestedAt; });
    return commands;
}

void WidgetCommandStore::remove(const QUuid &id) const
{
    if (m_directory)
        ::unlink(QFile::encodeName(*m_directory + QLatin1Char('/') + WidgetCommand::fileName(id)).constData());
}

void WidgetCommandStore::removeAll() const
{
    if (!m_directory)
        return;
    const QByteArray path = QFile::encodeName(*m_directory);
    struct stat info;
    if (::lstat(path.constData(), &info) != 0)
        return;
    if (!S_ISDIR(info.st_mode)) {
        ::unlink(path.constData());
        return;
    }
    // Entries that are links are deleted as links (QDir does not follow them).
    QDir(*m_directory).removeRecursively();
}

bool WidgetCommandStore::write(const WidgetCommand &command, QString *error) const
{
    const QString problem = prepareDirectory();
    if (!problem.isEmpty()) {
        if (error)
            *error = problem;
        return false;
    }
    // QSaveFile writes a temporary file beside the target and renames it.
    QSaveFile file(*m_directory + QLatin1Char('/') + command.fileName());
    if (!file.open(QIODevice::WriteOnly) || file.write(command.encode()) < 0 || !file.commit()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    return true;
}

QString WidgetCommandStore::describe(Refusal refusal)
{
    switch (refusal) {
    case Refusal::none:
        return QStringLiteral("a command");
    case Refusal::symlink:
        return QStringLiteral("a symbolic link, not followed");
    case Refusal::notRegularFile:
        return QStringLiteral("not a regular file");
    case Refusal::otherOwner:
        return QStringLiteral("owned by another user");
    case Refusal::tooLarge:
        return QStringLiteral("larger than %1 bytes").arg(Limits::fileBytes);
    case Refusal::unreadable:
        return QStringLiteral("unreadable");
    case Refusal::undecodable:
        return QStringLiteral("not a widget command");
    }
    return {};
}

} // namespace tarnwell
