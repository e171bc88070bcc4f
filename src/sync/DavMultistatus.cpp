#include "DavMultistatus.h"

#include <QXmlStreamReader>

namespace tarnwell::sync {

namespace {

constexpr QStringView davNs = u"DAV:";
constexpr QStringView calDavNs = u"urn:ietf:params:xml:ns:caldav";
constexpr QStringView serverNs = u"http://calendarserver.org/ns/";

bool known(const QXmlStreamReader &xml)
{
    const QStringView ns = xml.namespaceUri();
    return ns == davNs || ns == calDavNs || ns == serverNs;
}

bool is(const QXmlStreamReader &xml, QStringView ns, QStringView name)
{
    return xml.namespaceUri() == ns && xml.name() == name;
}

// Reads the property the reader stands on, up to its end element.
DavValue readValue(QXmlStreamReader &xml)
{
    DavValue value;
    int depth = 1;
    while (depth > 0 && !xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::StartElement:
            if (depth == 1)
                value.children << xml.name().toString();
            if (is(xml, davNs, u"href")) {
                value.hrefs << xml.readElementText(QXmlStreamReader::IncludeChildElements).trimmed();
                if (depth == 1)
                    value.text.clear();
                continue; // readElementText left the reader on the end element
            }
            if (is(xml, calDavNs, u"comp"))
                value.components << xml.attributes().value(QStringLiteral("name")).toString().toUpper();
            ++depth;
            break;
        case QXmlStreamReader::EndElement:
            --depth;
            break;
        case QXmlStreamReader::Characters:
            if (depth == 1)
                value.text += xml.text();
            break;
        default:
            break;
        }
    }
    value.text = value.text.trimmed();
    return value;
}

} // namespace

int davStatusCode(const QString &line)
{
    const QStringList parts = line.simplified().split(u' ');
    if (parts.size() < 2 || !parts.first().startsWith(QLatin1String("HTTP/")))
        return 0;
    bool ok = false;
    const int code = parts.at(1).toInt(&ok);
    return ok && code >= 100 && code <= 599 ? code : 0;
}

DavMultistatus DavMultistatus::parse(const QByteArray &body)
{
    DavMultistatus out;
    QXmlStreamReader xml(body);
    // Where the reader is: multistatus > response > propstat > prop > (property).
    bool inMultistatus = false;
    DavResponse *response = nullptr;
    bool inPropstat = false;
    bool inProp = false;
    QHash<QString, DavValue> pending;
    int pendingStatus = 0;

    while (!xml.atEnd()) {
        const auto token = xml.readNext();
        if (token == QXmlStreamReader::StartElement) {
            if (!inMultistatus) {
                if (!is(xml, davNs, u"multistatus")) {
                    out.error = QStringLiteral("not a multistatus answer");
                    return out;
                }
                inMultistatus = true;
            } else if (!response) {
                if (is(xml, davNs, u"response")) {
                    out.responses.append(DavResponse{});
                    response = &out.responses.last();
                } else if (is(xml, davNs, u"sync-token")) {
                    out.syncToken = xml.readElementText().trimmed();
                } else {
                    xml.skipCurrentElement();
                }
            } else if (inProp) {
                if (known(xml))
                    pending.insert(xml.name().toString(), readValue(xml));
                else
                    xml.skipCurrentElement();
            } else if (inPropstat) {
                if (is(xml, davNs, u"prop"))
                    inProp = true;
                else if (is(xml, davNs, u"status"))
                    pendingStatus = davStatusCode(xml.readElementText());
                else
                    xml.skipCurrentElement();
            } else if (is(xml, davNs, u"href")) {
                response->href = xml.readElementText().trimmed();
            } else if (is(xml, davNs, u"status")) {
                response->status = davStatusCode(xml.readElementText());
            } else if (is(xml, davNs, u"propstat")) {
                inPropstat = true;
                pending.clear();
                pendingStatus = 0;
            } else {
                xml.skipCurrentElement();
            }
        } else if (token == QXmlStreamReader::EndElement) {
            if (inProp && is(xml, davNs, u"prop")) {
                inProp = false;
            } else if (inPropstat && is(xml, davNs, u"propstat")) {
                inPropstat = false;
                if (pendingStatus >= 200 && pendingStatus < 300)
                    response->props.insert(pending);
            } else if (response && is(xml, davNs, u"response")) {
                response = nullptr;
            }
        }
    }
    if (xml.hasError())
        out.error = xml.errorString();
    else if (!inMultistatus)
        out.error = QStringLiteral("an empty answer");
    return out;
}

} // namespace tarnwell::sync
