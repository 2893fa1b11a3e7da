// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <xercesc/sax2/DefaultHandler.hpp>

namespace Corvane::Internal
{

/// Ends the validation of a file that is nested beyond any sense with a fatal error.
///
/// Xerces-C does not recurse over the depth of a document, but looks a namespace up through all
/// open elements, so its time grows with the square of the depth: one of 1,000,000 would take
/// hours.
class DepthGuard : public xercesc::DefaultHandler
{
public:
    /// What ends the parse; the error has been reported then.
    struct Stop {
    };

    explicit DepthGuard(xercesc::ErrorHandler& errors) : m_errors(errors) {}

    void setDocumentLocator(const xercesc::Locator* locator) override { m_pLocator = locator; }
    void startElement(const XMLCh* uri, const XMLCh* localName, const XMLCh* name,
                      const xercesc::Attributes& attributes) override;
    void endElement(const XMLCh* uri, const XMLCh* localName, const XMLCh* name) override;

private:
    xercesc::ErrorHandler& m_errors;
    const xercesc::Locator* m_pLocator = nullptr;
    int m_depth = 0;
};

} // namespace Corvane::Internal
