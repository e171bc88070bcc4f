#include "AgentPresence.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace tarnwell {

AgentPresence::~AgentPresence()
{
    if (m_fd >= 0)
        ::close(m_fd);
}

QString AgentPresence::lockPath(const QString &storePath)
{
    return QFileInfo(storePath).absolutePath() + QStringLiteral("/agent.lock");
}

AgentPresence::State AgentPresence::probe(const QString &storePath)
{
    const QByteArray path = QFile::encodeName(lockPath(storePath));
    const int fd = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        // Every agent creates the file as it opens the store.
        return errno == ENOENT ? State::none : State::unknown;
    State state = State::none;
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0)
        state = errno == EWOULDBLOCK ? State::held : State::unknown;
    ::close(fd); // releases the lock if it was taken
    return state;
}

bool AgentPresence::hold(const QString &storePath)
{
    const QString path = lockPath(storePath);
    QDir().mkpath(QFileInfo(path).absolutePath());
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (fd < 0)
        return false;
    if (::flock(fd, LOCK_SH) != 0) {
        ::close(fd);
        return false;
    }
    if (m_fd >= 0)
        ::close(m_fd);
    m_fd = fd;
    return true;
}

} // namespace tarnwell
