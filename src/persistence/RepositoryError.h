#pragma once

#include <QString>
#include <exception>

namespace tarnwell {

// The error of the day and task repositories' operations.
class RepositoryError : public std::exception
{
public:
    enum class Kind { titleEmpty, titleTooLong, reorderMismatch, dayNotFound };

    static RepositoryError titleEmpty() { return RepositoryError(Kind::titleEmpty); }
    static RepositoryError titleTooLong(int limit) { return RepositoryError(Kind::titleTooLong, limit); }
    static RepositoryError reorderMismatch() { return RepositoryError(Kind::reorderMismatch); }
    static RepositoryError dayNotFound() { return RepositoryError(Kind::dayNotFound); }

    Kind kind() const { return m_kind; }
    // The limit of titleTooLong (always 200); 0 for the other kinds.
    int limit() const { return m_limit; }

    // The localisation key of this error.
    const char *key() const;
    // The text shown to the user, in the installed language.
    QString localizedDescription() const;
    const char *what() const noexcept override { return key(); }

    friend bool operator==(const RepositoryError &a, const RepositoryError &b)
    {
        return a.m_kind == b.m_kind && a.m_limit == b.m_limit;
    }

private:
    explicit RepositoryError(Kind kind, int limit = 0)
        : m_kind(kind)
        , m_limit(limit)
    {
    }
    Kind m_kind;
    int m_limit;
};

} // namespace tarnwell
