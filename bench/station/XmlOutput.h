// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QVector>

#include <initializer_list>

QT_BEGIN_NAMESPACE
class QIODevice;
QT_END_NAMESPACE

namespace Corvane::Bench
{

/// An attribute to be written: name and UTF-8 value. One with a null value is left out.
struct XmlAttribute {
    const char* name;
    QByteArray value;
};

/// Writes indented XML in UTF-8 through a small buffer.
///
/// It is no QXmlStreamWriter because generated files must have the same bytes with every Qt
/// version, and because it tells at any time how much was written.
class XmlOutput
{
public:
    /// \param device open for writing; the caller keeps ownership.
    explicit XmlOutput(QIODevice& device);

    void Declaration();
    /// Starts an element. \a tag must outlive it.
    void Open(const char* tag, std::initializer_list<XmlAttribute> attributes = {});
    /// Ends the innermost open element.
    void Close();
    /// An element without children.
    void Empty(const char* tag, std::initializer_list<XmlAttribute> attributes = {});
    /// An element with text only.
    void Text(const char* tag, std::initializer_list<XmlAttribute> attributes,
              const QByteArray& text);

    /// Bytes written so far, those still in the buffer included.
    qint64 Written() const;
    /// Writes out the buffer.
    ///
    /// \return false if the device failed to take all bytes, now or earlier.
    bool Flush();

private:
    void StartTag(const char* tag, std::initializer_list<XmlAttribute> attributes);
    void BreakLine();
    void Escaped(const QByteArray& text);
    void FlushIfLarge();

    QIODevice& m_device;
    QByteArray m_buffer;
    QVector<const char*> m_openTags;
    qint64 m_flushed = 0;
    bool m_bStartTagOpen = false;
    bool m_bFailed = false;
};

/// An element that ends where this object's scope ends.
class XmlScope
{
public:
    XmlScope(XmlOutput& out, const char* tag, std::initializer_list<XmlAttribute> attributes = {})
        : m_out(out)
    {
        m_out.Open(tag, attributes);
    }
    ~XmlScope() { m_out.Close(); }

private:
    Q_DISABLE_COPY(XmlScope)

    XmlOutput& m_out;
};

} // namespace Corvane::Bench
