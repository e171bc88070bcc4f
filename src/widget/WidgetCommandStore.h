#pragma once

#include "TarnwellAppGroup.h"
#include "WidgetCommand.h"

#include <QList>
#include <QStringList>

#include <optional>

namespace tarnwell {

// The folder of command files: the application lists, reads and deletes
// them; the widget program writes them. The folder belongs to the user alone
// (mode 0700), and what another program may have put there is treated as
// hostile: links are not followed, only regular files of this user up to a
// small size are read, and nothing else is touched.
class WidgetCommandStore
{
public:
    struct Limits
    {
        // A command is about 150 bytes.
        static constexpr qint64 fileBytes = 4096;
    };

    // Why a file of the folder is not a command.
    enum class Refusal { none, symlink, notRegularFile, otherOwner, tooLarge, unreadable, undecodable };

    struct Entry
    {
        std::optional<WidgetCommand> command;
        Refusal refusal = Refusal::none;
    };

    // The container's commands folder.
    WidgetCommandStore();
    explicit WidgetCommandStore(std::optional<QString> directory);

    const std::optional<QString> &directory() const { return m_directory; }

    // Creates the folder (and the container) when missing, with mode 0700,
    // and checks that it is a real folder of this user. Returns what is
    // wrong, or an empty text.
    QString prepareDirectory() const;

    // The names in the folder that end in ".json"; empty when it cannot be
    // listed. Reads no file.
    QStringList jsonFileNames() const;
    Entry read(const QString &fileName) const;
    // The readable commands, oldest press first.
    QList<WidgetCommand> readAll() const;

    // Deletes "<id>.json"; errors are ignored.
    void remove(const QUuid &id) const;
    // Deletes the whole folder; errors are ignored. A link in its place is
    // removed, never followed.
    void removeAll() const;

    // Writes the file under a temporary name in the folder, then renames it,
    // so the application never reads half a command.
    bool write(const WidgetCommand &command, QString *error = nullptr) const;

    static QString describe(Refusal refusal);

private:
    std::optional<QString> m_directory;
};

} // namespace tarnwell
