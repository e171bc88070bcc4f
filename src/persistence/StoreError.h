#pragma once

#include <QByteArray>
#include <QString>
#include <exception>

namespace tarnwell {

// A failure of the store itself (open, read, save), with the driver's domain,
// code and description.
class StoreError : public std::exception
{
public:
    StoreError(QString domain, qint64 code, QString description)
        : m_domain(std::move(domain))
        , m_code(code)
        , m_description(std::move(description))
        , m_what(m_description.toUtf8())
    {
    }

    const QString &domain() const { return m_domain; }
    qint64 code() const { return m_code; }
    const QString &description() const { return m_description; }
    const char *what() const noexcept override { return m_what.constData(); }

private:
    QString m_domain;
    qint64 m_code;
    QString m_description;
    QByteArray m_what;
};

} // namespace tarnwell
