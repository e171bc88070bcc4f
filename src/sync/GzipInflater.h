#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

namespace tarnwell::sync {

// Inflates a gzip body a bounded piece at a time. Qt inflates a compressed
// answer itself, but all of what arrived at once on the main thread; a
// listing of thousands of to-dos comes in megabytes. Streamed answers ask
// for gzip themselves (Qt then leaves the body alone) and inflate it here in
// steps no larger than the XML reader is given.
class GzipInflater
{
public:
    GzipInflater();
    ~GzipInflater();
    GzipInflater(const GzipInflater &) = delete;
    GzipInflater &operator=(const GzipInflater &) = delete;

    void add(const QByteArray &compressed);
    // Up to `most` inflated bytes; empty when everything given so far is
    // used up (more input may follow) or on an error.
    QByteArray take(qsizetype most);
    bool hasInput() const { return m_offset < m_input.size(); }
    // The gzip trailer was read: the body is whole.
    bool finished() const { return m_finished; }
    QString error() const { return m_error; }

private:
    struct Stream;
    std::unique_ptr<Stream> m_stream;
    QByteArray m_input; // given, not yet inflated from m_offset on
    qsizetype m_offset = 0;
    bool m_finished = false;
    QString m_error;
};

} // namespace tarnwell::sync
