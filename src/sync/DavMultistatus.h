#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QXmlStreamReader>

#include <chrono>
#include <functional>
#include <optional>

namespace tarnwell::sync {

// One property of a WebDAV answer, in the few shapes CalDAV uses.
struct DavValue
{
    QString text; // its text, trimmed (display names, tokens, etags, calendar data)
    QStringList hrefs; // the DAV:href elements inside it (principals, homes)
    QStringList children; // the local names of its child elements (resource types)
    QStringList components; // the `name` of each CalDAV comp inside it
};

struct DavResponse
{
    QString href;
    int status = 0; // the response's own status, where it has one (a removed member: 404)
    QHash<QString, DavValue> props; // by local name, from the propstats that succeeded
};

// A 207 Multi-Status body. Only the DAV:, CalDAV and calendar server
// namespaces are read; anything else is passed over.
struct DavMultistatus
{
    QList<DavResponse> responses;
    QString syncToken; // of a sync-collection report
    QString error; // why the body could not be read; empty when it was

    // The whole body at once (DavMultistatusReader without a time limit).
    static DavMultistatus parse(const QByteArray &xml);
};

// Reads a multistatus body piece by piece as it arrives, in steps of bounded
// time, so that a listing of thousands of members never holds up the main
// loop. Each response is handed out as soon as its end tag is read.
class DavMultistatusReader
{
public:
    enum class Progress {
        needData, // everything given so far is read; more must come (or close())
        paused, // the step's time ran out with data left: call read() again
        finished, // the body is read to its end, or is not a multistatus (error())
    };
    using ResponseSink = std::function<void(DavResponse &&)>;

    // Without a sink, responses are kept for takeResponses().
    explicit DavMultistatusReader(ResponseSink sink = {});

    void addData(const QByteArray &data);
    // No more data comes: a body that is not complete by its end is an error.
    void close();
    // Reads on until the data given is used up or `budget` went by (none: no limit).
    Progress read(std::optional<std::chrono::microseconds> budget = std::nullopt);

    QList<DavResponse> takeResponses() { return std::exchange(m_responses, {}); }
    const QString &syncToken() const { return m_syncToken; }
    const QString &error() const { return m_error; } // empty while and when the body reads well

private:
    enum class Text { none, responseHref, responseStatus, propstatStatus, syncToken, valueHref };

    void startElement();
    void endElement();
    void endText();
    void fail(const QString &why);

    QXmlStreamReader m_xml;
    ResponseSink m_sink;
    QList<DavResponse> m_responses;
    QString m_syncToken;
    QString m_error;
    bool m_closed = false;
    bool m_complete = false;

    // Where the reader is: multistatus (1) > response (2) > propstat (3) >
    // prop (4) > property (5) > inside a property (6 and deeper).
    int m_depth = 0;
    int m_skipDepth = 0; // an element passed over whole, with everything in it
    Text m_text = Text::none;
    int m_textDepth = 0;
    QString m_textValue;
    bool m_inMultistatus = false;
    DavResponse m_response;
    QHash<QString, DavValue> m_pending; // the propstat's properties until its status is known
    int m_pendingStatus = 0;
    QString m_property; // the property being read (empty outside one)
    DavValue m_value;
};

// "HTTP/1.1 404 Not Found" → 404; 0 when it is not a status line.
int davStatusCode(const QString &line);

} // namespace tarnwell::sync
