// SPDX-License-Identifier: Apache-2.0
#include "XmlOutput.h"

#include <QIODevice>

namespace Corvane::Bench
{

namespace
{
constexpr int g_nBufferSize = 65536;
constexpr int g_nBufferRoom = 2 * g_nBufferSize;
} // namespace

XmlOutput::XmlOutput(QIODevice& device) : m_device(device)
{
    m_buffer.reserve(g_nBufferRoom);
}

void XmlOutput::Declaration()
{
    m_buffer += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
}

void XmlOutput::Open(const char* tag, std::initializer_list<XmlAttribute> attributes)
{
    StartTag(tag, attributes);
    m_bStartTagOpen = true;
    m_openTags.append(tag);
}

void XmlOutput::Close()
{
    const char* tag = m_openTags.takeLast();
    if (m_bStartTagOpen) {
        m_buffer += "/>";
        m_bStartTagOpen = false;
    } else {
        BreakLine();
        m_buffer += "</";
        m_buffer += tag;
        m_buffer += '>';
    }
    FlushIfLarge();
}

void XmlOutput::Empty(const char* tag, std::initializer_list<XmlAttribute> attributes)
{
    StartTag(tag, attributes);
    m_buffer += "/>";
    FlushIfLarge();
}

void XmlOutput::Text(const char* tag, std::initializer_list<XmlAttribute> attributes,
                     const QByteArray& text)
{
    StartTag(tag, attributes);
    m_buffer += '>';
    Escaped(text);
    m_buffer += "</";
    m_buffer += tag;
    m_buffer += '>';
    FlushIfLarge();
}

qint64 XmlOutput::Written() const
{
    return m_flushed + m_buffer.size();
}

bool XmlOutput::Flush()
{
    if (m_device.write(m_buffer) != m_buffer.size()) {
        m_bFailed = true;
    }
    m_flushed += m_buffer.size();
    m_buffer.resize(0);
    return !m_bFailed;
}

void XmlOutput::StartTag(const char* tag, std::initializer_list<XmlAttribute> attributes)
{
    if (m_bStartTagOpen) {
        m_buffer += '>';
        m_bStartTagOpen = false;
    }
    BreakLine();
    m_buffer += '<';
    m_buffer += tag;
    for (const XmlAttribute& attribute : attributes) {
        if (attribute.value.isNull()) {
            continue;
        }
        m_buffer += ' ';
        m_buffer += attribute.name;
        m_buffer += "=\"";
        Escaped(attribute.value);
        m_buffer += '"';
    }
}

void XmlOutput::BreakLine()
{
    m_buffer += '\n';
    const int indent = 2 * static_cast<int>(m_openTags.size());
    m_buffer.append(indent, ' ');
}

void XmlOutput::Escaped(const QByteArray& text)
{
    for (const char c : text) {
        switch (c) {
        case '<':
            m_buffer += "&lt;";
            break;
        case '>':
            m_buffer += "&gt;";
            break;
        case '&':
            m_buffer += "&amp;";
            break;
        case '"':
            m_buffer += "&quot;";
            break;
        default:
            m_buffer += c;
        }
    }
}

void XmlOutput::FlushIfLarge()
{
    if (m_buffer.size() >= g_nBufferSize) {
        Flush();
    }
}

} // namespace Corvane::Bench
