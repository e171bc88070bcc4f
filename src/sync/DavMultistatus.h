#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

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

    static DavMultistatus parse(const QByteArray &xml);
};

// "HTTP/1.1 404 Not Found" → 404; 0 when it is not a status line.
int davStatusCode(const QString &line);

} // namespace tarnwell::sync
