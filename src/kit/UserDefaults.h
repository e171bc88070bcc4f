#pragma once

#include <QSettings>
#include <QString>
#include <memory>

namespace tarnwell {

// The user-defaults store: a few markers that do not belong in the task
// store, kept in $XDG_CONFIG_HOME/tarnwell/tarnwell.conf.
class UserDefaults
{
public:
    struct Constants
    {
        // The settings name the program used before it was called Tarnwell.
        static constexpr const char *legacyName = "tarnwell-planner";
        static constexpr const char *migratedKey = "Tarnwell.defaultsMigrated";
    };

    static QString path();
    static std::unique_ptr<QSettings> open();

    // Carries the defaults written under the former name over once; keys
    // that already exist are kept. Returns how many keys were copied.
    static int migrateLegacyDefaults(QSettings &current);
    static QString legacyPath();
};

} // namespace tarnwell
