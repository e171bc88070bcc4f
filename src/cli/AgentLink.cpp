#include "AgentLink.h"

#include "extras/Extras.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>

namespace tarnwell::cli {

namespace {

// Beside the program in the build tree, in lib/tarnwell/ once installed.
QString modulePath()
{
    const QString name = QStringLiteral("libtarnwell-cli-extras.so");
    const QString dir = QCoreApplication::applicationDirPath();
    QString beside = dir + u'/' + name;
    if (QFileInfo::exists(beside))
        return beside;
    QString installed = QDir::cleanPath(dir + QStringLiteral("/../lib/tarnwell/") + name);
    if (QFileInfo::exists(installed))
        return installed;
    return QStringLiteral(TARNWELL_EXTRAS_INSTALLED);
}

// Loaded once and kept for the life of the process.
QFunctionPointer resolve(const char *symbol, QString *error)
{
    static auto *library = new QLibrary(modulePath());
    if (!library->isLoaded() && !library->load()) {
        *error = library->errorString();
        return nullptr;
    }
    const QFunctionPointer function = library->resolve(symbol);
    if (!function)
        *error = library->errorString();
    return function;
}

} // namespace

std::unique_ptr<AgentLink> AgentLink::open(QString *error)
{
    const auto make = reinterpret_cast<AgentLink *(*)()>(resolve(TARNWELL_EXTRAS_LINK, error));
    return make ? std::unique_ptr<AgentLink>(make()) : nullptr;
}

std::optional<QByteArray> writeIcs(const QList<IcsWriter::Todo> &todos, const QDateTime &now, QString *error)
{
    using Write = void (*)(const QList<IcsWriter::Todo> *, const QDateTime *, QByteArray *);
    const auto write = reinterpret_cast<Write>(resolve(TARNWELL_EXTRAS_ICS, error));
    if (!write)
        return std::nullopt;
    QByteArray out;
    write(&todos, &now, &out);
    return out;
}

} // namespace tarnwell::cli
