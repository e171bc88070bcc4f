#pragma once

#include "TarnwellAppGroup.h"
#include "WidgetSnapshot.h"

#include <optional>

namespace tarnwell {

// widget-snapshot.json in the shared container: written whole under a
// temporary name and renamed, so a reader never sees half a file.
class WidgetSnapshotFile
{
public:
    struct Limits
    {
        // Six titles of 200 characters and the texts fit many times over.
        static constexpr qint64 fileBytes = 256 * 1024;
    };

    // The container's snapshot file.
    WidgetSnapshotFile();
    explicit WidgetSnapshotFile(std::optional<QString> path);

    const std::optional<QString> &path() const { return m_path; }

    // False with `error` set when the file could not be written; false with
    // an empty error when there is no container to write to.
    bool write(const WidgetSnapshot &snapshot, QString *error = nullptr) const;
    // None when the file is missing, too large or not a snapshot.
    std::optional<WidgetSnapshot> read() const;
    // Errors are ignored.
    void remove() const;

private:
    std::optional<QString> m_path;
};

} // namespace tarnwell
