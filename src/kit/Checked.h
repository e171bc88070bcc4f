#pragma once

#include <QtGlobal>
#include <cmath>
#include <limits>

namespace tarnwell {

// Values stored in 32- or 16-bit attributes. A value that does not fit is a
// programming error, never a user error, so it stops the process.
inline qint32 checkedInt32(qint64 value, const char *what)
{
    if (value < std::numeric_limits<qint32>::min() || value > std::numeric_limits<qint32>::max())
        qFatal("%s: %lld does not fit a 32-bit attribute", what, static_cast<long long>(value));
    return static_cast<qint32>(value);
}

inline qint16 checkedInt16(qint64 value, const char *what)
{
    if (value < std::numeric_limits<qint16>::min() || value > std::numeric_limits<qint16>::max())
        qFatal("%s: %lld does not fit a 16-bit attribute", what, static_cast<long long>(value));
    return static_cast<qint16>(value);
}

} // namespace tarnwell
