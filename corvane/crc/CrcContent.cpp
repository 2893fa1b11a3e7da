// SPDX-License-Identifier: Apache-2.0
#include <corvane/crc/CrcContent.h>

#include <corvane/crc/Crc32.h>
#include <corvane/crc/CrcElement.h>
#include <corvane/elements/XmlText.h>

#include <QDateTime>
#include <QXmlStreamWriter>

#include <array>
#include <cstring>
#include <vector>

namespace Corvane::Internal
{

namespace
{

// Walks what a rendering shows of a tree, with a stack of its own.
template <typename Writer>
void Render(const CrcElement* root, CrcGenerator::GeneratorType type, Writer& writer)
{
    struct Level {
        const CrcElement* element;
        int next;
    };
    std::vector<Level> levels;
    const auto open = [&](const CrcElement* element) {
        writer.Start(element->name);
        for (const CrcAttribute* attribute : element->attributes) {
            if (IsShown(attribute->generatorType, type))
                writer.Attribute(attribute->name, attribute->value);
        }
        if (element->children.isEmpty())
            writer.Text(element->text);
        levels.push_back({element, 0});
    };
    open(root);
    while (!levels.empty()) {
        Level& level = levels.back();
        if (level.next < level.element->children.size()) {
            const CrcElement* child = level.element->children.at(level.next++);
            if (IsShown(child->generatorType, type))
                open(child);
            continue;
        }
        writer.End(level.element->name, levels.size() == 1);
        levels.pop_back();
    }
}

bool IsNameByte(ushort c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

bool IsLetter(ushort c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// Hands out the canonical form in blocks: bytes in UTF-8, without layout.
class CanonicalWriter
{
public:
    explicit CanonicalWriter(QByteArray* content) : m_pContent(content)
    {
        Literal("<?xmlversion=\"1.0\"encoding=\"UTF-8\"?>");
    }

    void Start(const QString& name)
    {
        CloseStart();
        Byte('<');
        Name(name);
        m_bStartOpen = true;
    }

    void Attribute(const QString& name, const QString& value)
    {
        Name(name);
        Literal("=\"");
        Value(value, true);
        Byte('"');
    }

    void Text(const QString& text)
    {
        const QString legal = IsPlainXmlText(text) ? text : XmlText(text);
        if (legal.isEmpty())
            return;
        CloseStart();
        Value(legal, false);
    }

    void End(const QString& name, bool)
    {
        if (m_bStartOpen) {
            Literal("/>");
            m_bStartOpen = false;
            return;
        }
        Literal("</");
        Name(name);
        Byte('>');
    }

    unsigned int Finish()
    {
        Flush();
        return m_uCrc;
    }

private:
    void CloseStart()
    {
        if (m_bStartOpen)
            Byte('>');
        m_bStartOpen = false;
    }

    void Name(const QString& name)
    {
        if (IsPlainName(name))
            Narrow(name);
        else
            Bytes(XmlName(name).toUtf8());
    }

    static bool IsPlainName(const QString& name)
    {
        if (name.isEmpty() || !IsLetter(name.at(0).unicode()))
            return false;
        bool isPlain = true;
        for (const QChar c : name)
            isPlain = isPlain && IsNameByte(c.unicode());
        return isPlain;
    }

    void Value(const QString& value, bool isAttribute)
    {
        if (IsPlainValue(value))
            Narrow(value);
        else
            Bytes(Escaped(CanonicalValue(value), isAttribute).toUtf8());
    }

    // What needs neither escaping nor encoding. A mark in the text needs a closer look.
    static bool IsPlainValue(const QString& value)
    {
        bool isPlain = true;
        for (const QChar at : value) {
            const ushort c = at.unicode();
            isPlain = isPlain && c >= 0x20 && c < 0x7F && c != '<' && c != '>' && c != '&' &&
                      c != '"' && c != '@';
        }
        return isPlain;
    }

    static QString Escaped(const QString& value, bool isAttribute)
    {
        QString escaped;
        escaped.reserve(value.size() + value.size() / 8);
        for (const QChar c : value) {
            if (const char* reference = ReferenceFor(c.unicode(), isAttribute))
                escaped += QLatin1String(reference);
            else
                escaped += c;
        }
        return escaped;
    }

    static const char* ReferenceFor(ushort c, bool isAttribute)
    {
        switch (c) {
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '&':
            return "&amp;";
        case '"':
            return "&quot;";
        case '\t':
            return isAttribute ? "&#9;" : nullptr;
        case '\n':
            return isAttribute ? "&#10;" : nullptr;
        case '\r':
            return isAttribute ? "&#13;" : nullptr;
        default:
            return nullptr;
        }
    }

    template <std::size_t N>
    void Literal(const char (&text)[N])
    {
        Bytes(text, static_cast<int>(N) - 1);
    }
    void Bytes(const QByteArray& bytes)
    {
        for (int at = 0; at < bytes.size(); at += BlockSize)
            Bytes(bytes.constData() + at, qMin(BlockSize, static_cast<int>(bytes.size()) - at));
    }
    void Bytes(const char* bytes, int size)
    {
        Reserve(size);
        std::memcpy(m_block.data() + m_nFilled, bytes, static_cast<std::size_t>(size));
        m_nFilled += size;
    }
    void Byte(char byte) { Bytes(&byte, 1); }

    // Text of ASCII characters only.
    void Narrow(const QString& text)
    {
        const int size = static_cast<int>(text.size());
        for (int at = 0; at < size; at += BlockSize)
            Narrow(text.constData() + at, qMin(BlockSize, size - at));
    }
    void Narrow(const QChar* text, int size)
    {
        Reserve(size);
        char* out = m_block.data() + m_nFilled;
        for (int i = 0; i < size; ++i)
            out[i] = static_cast<char>(text[i].unicode());
        m_nFilled += size;
    }

    void Reserve(int size)
    {
        if (m_nFilled + size > BlockSize)
            Flush();
    }
    void Flush()
    {
        m_uCrc = UpdateCrc32(m_uCrc, m_block.data(), m_nFilled);
        if (m_pContent)
            m_pContent->append(m_block.data(), m_nFilled);
        m_nFilled = 0;
    }

    static constexpr int BlockSize = 16 * 1024;

    QByteArray* m_pContent;
    bool m_bStartOpen = false;
    unsigned int m_uCrc = 0;
    int m_nFilled = 0;
    std::array<char, BlockSize> m_block;
};

/// Writes the readable form.
class ReadableWriter
{
public:
    ReadableWriter(QByteArray& content, unsigned int crc) : m_writer(&content), m_uCrc(crc)
    {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
        m_writer.setCodec("UTF-8"); // Qt 6 writes nothing else
#endif
        m_writer.setAutoFormatting(true);
        m_writer.setAutoFormattingIndent(2);
        m_writer.writeStartDocument();
    }

    void Start(const QString& name)
    {
        m_writer.writeStartElement(XmlName(name));
        if (++m_nDepth == DeepestIndent)
            m_writer.setAutoFormatting(false);
    }

    void Attribute(const QString& name, const QString& value)
    {
        m_writer.writeAttribute(XmlName(name), XmlText(value));
    }

    void Text(const QString& text)
    {
        const QString legal = XmlText(text);
        if (!legal.isEmpty())
            m_writer.writeCharacters(legal);
    }

    void End(const QString&, bool isRoot)
    {
        if (isRoot)
            WriteCrc();
        m_writer.writeEndElement();
        if (m_nDepth-- == DeepestIndent)
            m_writer.setAutoFormatting(true);
    }

    void Finish()
    {
        m_writer.writeEndDocument();
    }

private:
    // Deeper ones would make the layout outgrow the content without bounds.
    static constexpr int DeepestIndent = 64;

    void WriteCrc()
    {
        m_writer.writeStartElement(QStringLiteral("CRC"));
        m_writer.writeAttribute(QStringLiteral("id"), PrintedCrc(m_uCrc));
        m_writer.writeAttribute(
            QStringLiteral("timestamp"),
            QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")));
        m_writer.writeEndElement();
    }

    QXmlStreamWriter m_writer;
    unsigned int m_uCrc;
    int m_nDepth = 0;
};

} // namespace

QString PrintedCrc(unsigned int crc)
{
    return QStringLiteral("%1").arg(crc, 8, 16, QLatin1Char('0')).toUpper();
}

// Blanks survive as marks, and marks become blanks: whatever looks like one.
QString CanonicalValue(const QString& value)
{
    QString canonical = IsPlainXmlText(value) ? value : XmlText(value);
    if (canonical.contains(QLatin1Char('@'))) {
        const QString mark = QStringLiteral("@wspace@");
        canonical.replace(QLatin1Char(' '), mark);
        canonical.replace(mark, QStringLiteral(" "));
    }
    return canonical;
}

unsigned int CanonicalCrc(const CrcElement* root, QByteArray* content)
{
    if (content)
        content->clear();
    CanonicalWriter writer(content);
    Render(root, CrcGenerator::GeneratorCanonical, writer);
    return writer.Finish();
}

QByteArray ReadableContent(const CrcElement* root, CrcGenerator::GeneratorType type,
                           unsigned int crc)
{
    QByteArray content;
    ReadableWriter writer(content, crc);
    Render(root, type, writer);
    writer.Finish();
    return content;
}

} // namespace Corvane::Internal
