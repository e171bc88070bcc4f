#include "GzipInflater.h"

#include <zlib.h>

namespace tarnwell::sync {

struct GzipInflater::Stream
{
    z_stream z{};
    bool live = false;
};

GzipInflater::GzipInflater()
    : m_stream(std::make_unique<Stream>())
{
    // 16 + window bits: a gzip wrapper, not zlib's own.
    if (inflateInit2(&m_stream->z, 16 + MAX_WBITS) == Z_OK)
        m_stream->live = true;
    else
        m_error = QStringLiteral("the inflater could not start");
}

GzipInflater::~GzipInflater()
{
    if (m_stream->live)
        inflateEnd(&m_stream->z);
}

void GzipInflater::add(const QByteArray &compressed)
{
    if (compressed.isEmpty())
        return;
    if (m_offset == m_input.size()) {
        m_input = compressed;
        m_offset = 0;
    } else {
        m_input.append(compressed);
    }
}

QByteArray GzipInflater::take(qsizetype most)
{
    QByteArray out;
    if (!m_stream->live || m_finished || !m_error.isEmpty() || most <= 0)
        return out;
    out.resize(most);
    z_stream &z = m_stream->z;
    z.next_out = reinterpret_cast<Bytef *>(out.data());
    z.avail_out = uInt(most);
    while (z.avail_out > 0 && m_offset < m_input.size()) {
        const qsizetype given = std::min<qsizetype>(m_input.size() - m_offset, 1 << 20);
        z.next_in = reinterpret_cast<Bytef *>(m_input.data() + m_offset);
        z.avail_in = uInt(given);
        const int rc = inflate(&z, Z_NO_FLUSH);
        m_offset += given - qsizetype(z.avail_in);
        if (rc == Z_STREAM_END) {
            m_finished = true;
            break;
        }
        if (rc == Z_BUF_ERROR)
            break; // nothing could be done with what is there
        if (rc != Z_OK) {
            m_error = QStringLiteral("the compressed answer is damaged (%1)")
                          .arg(QString::fromLatin1(z.msg ? z.msg : "inflate failed"));
            break;
        }
    }
    out.resize(most - qsizetype(z.avail_out));
    if (m_offset == m_input.size()) {
        m_input.clear();
        m_offset = 0;
    }
    return out;
}

} // namespace tarnwell::sync
