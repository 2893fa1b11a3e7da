// SPDX-License-Identifier: Apache-2.0
#include <corvane/schema/SchemaBounds.h>

#include <corvane/schema/XercesText.h>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>
#include <xercesc/sax/SAXException.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>
#include <xercesc/validators/schema/SchemaSymbols.hpp>

#include <algorithm>
#include <limits>
#include <vector>

namespace Corvane::Internal
{

namespace
{

using xercesc::SchemaSymbols;
using xercesc::XMLString;

constexpr std::size_t g_maxDepth = 256;
constexpr int g_maxChildren = 2000;
constexpr qint64 g_maxRepetition = 1000;
constexpr XMLSize_t g_maxValueLength = 8192;

struct OutOfBounds {
};

void Require(bool condition)
{
    if (!condition)
        throw OutOfBounds();
}

/// How often a model group repeats at least: 1 if it says nothing of it, or "unbounded".
qint64 Occurrence(const xercesc::Attributes& attributes, const XMLCh* name)
{
    const QString text = FromXerces(attributes.getValue(name));
    bool fits = false;
    const qint64 count = text.toLongLong(&fits);
    if (fits)
        return std::max<qint64>(count, 1);
    return text.size() > std::numeric_limits<qint64>::digits10 ? g_maxRepetition + 1 : 1;
}

class BoundsHandler : public xercesc::DefaultHandler
{
public:
    void startElement(const XMLCh*, const XMLCh* name, const XMLCh*,
                      const xercesc::Attributes& attributes) override
    {
        if (m_open.size() > 1)
            Require(++m_open.back().children <= g_maxChildren);
        for (XMLSize_t i = 0; i < attributes.getLength(); ++i)
            Require(XMLString::stringLen(attributes.getValue(i)) <= g_maxValueLength);
        m_open.push_back({0, Repetition(name, attributes)});
        Require(m_open.size() <= g_maxDepth);
    }
    void endElement(const XMLCh*, const XMLCh*, const XMLCh*) override { m_open.pop_back(); }

    // Xerces-C keeps or loses the entity of an external document type, depending on its build.
    void startDTD(const XMLCh*, const XMLCh*, const XMLCh* systemId) override
    {
        Require(systemId == nullptr);
    }
    // Declarations come before anything that they blow up.
    void internalEntityDecl(const XMLCh*, const XMLCh*) override { throw OutOfBounds(); }
    void externalEntityDecl(const XMLCh*, const XMLCh*, const XMLCh*) override
    {
        throw OutOfBounds();
    }
    void attributeDecl(const XMLCh*, const XMLCh*, const XMLCh*, const XMLCh*,
                       const XMLCh* value) override
    {
        Require(value == nullptr);
    }

private:
    struct Level {
        int children;
        qint64 repetition;
    };

    // Xerces-C writes out a group as often as it occurs, but not a single element.
    qint64 Repetition(const XMLCh* name, const xercesc::Attributes& attributes) const
    {
        const qint64 outer = m_open.empty() ? 1 : m_open.back().repetition;
        if (XMLString::equals(name, SchemaSymbols::fgELT_ELEMENT))
            return 1;
        const qint64 own = std::max(Occurrence(attributes, SchemaSymbols::fgATT_MINOCCURS),
                                    Occurrence(attributes, SchemaSymbols::fgATT_MAXOCCURS));
        Require(own <= g_maxRepetition / outer);
        return own * outer;
    }

    std::vector<Level> m_open;
};

void Scan(const QByteArray& xsd, BoundsHandler& handler)
{
    const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(xsd.constData()),
                                            static_cast<XMLSize_t>(xsd.size()), "xsd");
    xercesc::SAX2XMLReaderImpl reader;
    reader.setFeature(xercesc::XMLUni::fgSAX2CoreValidation, false);
    reader.setFeature(xercesc::XMLUni::fgXercesLoadExternalDTD, false);
    reader.setFeature(xercesc::XMLUni::fgXercesDisableDefaultEntityResolution, true);
    reader.setContentHandler(&handler);
    reader.setLexicalHandler(&handler);
    reader.setDeclarationHandler(&handler);
    reader.setErrorHandler(&handler);
    reader.parse(source);
}

} // namespace

bool IsWithinSchemaBounds(const QByteArray& xsd)
{
    BoundsHandler handler;
    try {
        Scan(xsd, handler);
    } catch (const OutOfBounds&) {
        return false;
    } catch (const xercesc::SAXException&) { // not well-formed
        return true;
    }
    return true;
}

} // namespace Corvane::Internal
