// SPDX-License-Identifier: Apache-2.0
#include <corvane/schema/DepthGuard.h>

#include <corvane/schema/XercesText.h>

#include <xercesc/sax/SAXParseException.hpp>

namespace Corvane::Internal
{

namespace
{

constexpr int g_maxDepth = 20000;

} // namespace

void DepthGuard::startElement(const XMLCh*, const XMLCh*, const XMLCh*, const xercesc::Attributes&)
{
    if (++m_depth <= g_maxDepth)
        return;
    const QString text = QStringLiteral("elements are nested deeper than %1").arg(g_maxDepth);
    m_errors.fatalError(xercesc::SAXParseException(ToXerces(text).data(), *m_pLocator));
    throw Stop();
}

void DepthGuard::endElement(const XMLCh*, const XMLCh*, const XMLCh*)
{
    --m_depth;
}

} // namespace Corvane::Internal
