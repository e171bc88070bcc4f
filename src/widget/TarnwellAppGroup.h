#pragma once

#include <QString>

#include <optional>

namespace tarnwell {

// The folder the application shares with the widget program:
// $XDG_DATA_HOME/<app-group id>/, holding the snapshot file and the folder of
// command files. The id is a build setting (TARNWELL_APP_GROUP) so that a
// packager can give a renamed build a container of its own.
namespace TarnwellAppGroup {

struct Constants
{
    static constexpr const char *snapshotFileName = "widget-snapshot.json";
    static constexpr const char *commandsDirectoryName = "widget-commands";
};

// Read once and kept for the life of the process.
QString identifier();
// None when the system names no data folder.
std::optional<QString> containerPath();
std::optional<QString> snapshotPath();
std::optional<QString> commandsDirectoryPath();

} // namespace TarnwellAppGroup
} // namespace tarnwell
