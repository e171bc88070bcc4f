#include "DavMultistatus.h"

#include <QElapsedTimer>

namespace tarnwell::sync {

namespace {

constexpr QStringView davNs = u"DAV:";
constexpr QStringView calDavNs = u"urn:ietf:params:xml:ns:caldav";
constexpr QStringView serverNs = u"http://calendarserver.org/ns/";

// Elements of the answer by their depth below the document.
constexpr int multistatusDepth = 1;
constexpr int responseDepth = 2;
constexpr int propstatDepth = 3;
constexpr int propDepth = 4;
constexpr int propertyDepth = 5;

// Tokens read between two looks at the clock.
constexpr int tokensPerCheck = 32;

bool known(const QXmlStreamReader &xml)
{
    const QStringView ns = xml.namespaceUri();
    return ns == davNs || ns == calDavNs || ns == serverNs;
}

bool is(const QXmlStreamReader &xml, QStringView ns, QStringView name)
{
    return xml.namespaceUri() == ns && xml.name() == name;
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
    DavMultistatusReader reader;
    reader.addData(body);
    reader.close();
    reader.read();
    DavMultistatus out;
    out.responses = reader.takeResponses();
    out.syncToken = reader.syncToken();
    out.error = reader.error();
    return out;
}

DavMultistatusReader::DavMultistatusReader(ResponseSink sink)
    : m_sink(std::move(sink))
{
}

void DavMultistatusReader::addData(const QByteArray &data)
{
    if (!m_complete && m_error.isEmpty())
        m_xml.addData(data);
}

void DavMultistatusReader::close()
{
    m_closed = true;
}

void DavMultistatusReader::fail(const QString &why)
{
    if (m_error.isEmpty())
        m_error = why;
}

DavMultistatusReader::Progress DavMultistatusReader::read(std::optional<std::chrono::microseconds> budget)
{
    QElapsedTimer clock;
    clock.start();
    const qint64 budgetNs = budget ? qint64(std::chrono::nanoseconds(*budget).count()) : 0;
    int sinceCheck = 0;
    while (!m_complete && m_error.isEmpty()) {
        if (budget && ++sinceCheck == tokensPerCheck) {
            sinceCheck = 0;
            if (clock.nsecsElapsed() >= budgetNs)
                return Progress::paused;
        }
        switch (m_xml.readNext()) {
        case QXmlStreamReader::StartElement:
            ++m_depth;
            startElement();
            break;
        case QXmlStreamReader::EndElement:
            endElement();
            --m_depth;
            break;
        case QXmlStreamReader::Characters:
            if (m_skipDepth > 0)
                break;
            if (m_text != Text::none)
                m_textValue += m_xml.text();
            else if (!m_property.isEmpty() && m_depth == propertyDepth)
                m_value.text += m_xml.text();
            break;
        case QXmlStreamReader::Invalid:
            if (m_xml.error() != QXmlStreamReader::PrematureEndOfDocumentError) {
                fail(m_xml.errorString());
            } else if (!m_closed) {
                return Progress::needData;
            } else if (!m_inMultistatus && m_depth == 0) {
                fail(QStringLiteral("an empty answer"));
            } else {
                fail(QStringLiteral("the answer ended early: %1").arg(m_xml.errorString()));
            }
            break;
        default:
            break;
        }
    }
    return Progress::finished;
}

void DavMultistatusReader::startElement()
{
    if (m_skipDepth > 0)
        return;
    if (m_text != Text::none) {
        // Text is read through any markup inside it.
        return;
    }
    const auto skip = [this] { m_skipDepth = m_depth; };
    const auto readText = [this](Text what) {
        m_text = what;
        m_textDepth = m_depth;
        m_textValue.clear();
    };
    switch (m_depth) {
    case multistatusDepth:
        if (!is(m_xml, davNs, u"multistatus")) {
            fail(QStringLiteral("not a multistatus answer"));
            return;
        }
        m_inMultistatus = true;
        return;
    case responseDepth:
        if (is(m_xml, davNs, u"response"))
            m_response = DavResponse{};
        else if (is(m_xml, davNs, u"sync-token"))
            readText(Text::syncToken);
        else
            skip();
        return;
    case propstatDepth:
        if (is(m_xml, davNs, u"href")) {
            readText(Text::responseHref);
        } else if (is(m_xml, davNs, u"status")) {
            readText(Text::responseStatus);
        } else if (is(m_xml, davNs, u"propstat")) {
            m_pending.clear();
            m_pendingStatus = 0;
        } else {
            skip();
        }
        return;
    case propDepth:
        if (is(m_xml, davNs, u"status"))
            readText(Text::propstatStatus);
        else if (!is(m_xml, davNs, u"prop"))
            skip();
        return;
    case propertyDepth:
        if (known(m_xml)) {
            m_property = m_xml.name().toString();
            m_value = DavValue{};
        } else {
            skip();
        }
        return;
    default:
        break;
    }
    // Inside a property.
    if (m_depth == propertyDepth + 1)
        m_value.children << m_xml.name().toString();
    if (is(m_xml, davNs, u"href")) {
        if (m_depth == propertyDepth + 1)
            m_value.text.clear();
        readText(Text::valueHref);
    } else if (is(m_xml, calDavNs, u"comp")) {
        m_value.components << m_xml.attributes().value(QStringLiteral("name")).toString().toUpper();
    }
}

void DavMultistatusReader::endText()
{
    const Text what = std::exchange(m_text, Text::none);
    const QString text = std::exchange(m_textValue, {}).trimmed();
    switch (what) {
    case Text::responseHref:
        m_response.href = text;
        break;
    case Text::responseStatus:
        m_response.status = davStatusCode(text);
        break;
    case Text::propstatStatus:
        m_pendingStatus = davStatusCode(text);
        break;
    case Text::syncToken:
        m_syncToken = text;
        break;
    case Text::valueHref:
        m_value.hrefs << text;
        break;
    case Text::none:
        break;
    }
}

void DavMultistatusReader::endElement()
{
    if (m_skipDepth > 0) {
        if (m_depth == m_skipDepth)
            m_skipDepth = 0;
        return;
    }
    if (m_text != Text::none) {
        if (m_depth == m_textDepth)
            endText();
        return;
    }
    switch (m_depth) {
    case multistatusDepth:
        m_complete = true;
        break;
    case responseDepth:
        if (m_sink)
            m_sink(std::exchange(m_response, {}));
        else
            m_responses.append(std::exchange(m_response, {}));
        break;
    case propstatDepth:
        if (m_pendingStatus >= 200 && m_pendingStatus < 300)
            m_response.props.insert(m_pending);
        m_pending.clear();
        break;
    case propertyDepth:
        if (!m_property.isEmpty()) {
            m_value.text = m_value.text.trimmed();
            m_pending.insert(std::exchange(m_property, {}), std::exchange(m_value, {}));
        }
        break;
    default:
        break;
    }
}

} // namespace tarnwell::sync
