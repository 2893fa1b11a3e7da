// SPDX-License-Identifier: Apache-2.0
#include <corvane/schema/SCLErrorHandler.h>

#include <corvane/documents/SCLDocControl.h>
#include <corvane/schema/XercesText.h>

#include <xercesc/sax/SAXParseException.hpp>

namespace Corvane::Internal
{

SCLErrorHandler::SCLErrorHandler(bool bForward) : m_bHasError(false), m_bForward(bForward)
{
    if (SCLDocControl* control = SCLDocControl::Instance())
        connect(this, &SCLErrorHandler::sigOutMessage, control, &SCLDocControl::sigOutMessage);
}

SCLErrorHandler::~SCLErrorHandler() = default;

void SCLErrorHandler::warning(const xercesc::SAXParseException& exception)
{
    Report("WARN", exception);
}

void SCLErrorHandler::error(const xercesc::SAXParseException& exception)
{
    Report("ERROR", exception);
    m_bHasError = true;
}

void SCLErrorHandler::fatalError(const xercesc::SAXParseException& exception)
{
    Report("FATAL", exception);
    m_bHasError = true;
}

void SCLErrorHandler::resetErrors()
{
    m_bHasError = false;
    m_messages.clear();
}

QStringList SCLErrorHandler::GetMessages() const
{
    return m_messages;
}

bool SCLErrorHandler::HasError() const
{
    return m_bHasError;
}

void SCLErrorHandler::Report(const char* level, const xercesc::SAXParseException& exception)
{
    const QString message = QStringLiteral("Ln %1, Col %2: %3")
                                .arg(exception.getLineNumber())
                                .arg(exception.getColumnNumber())
                                .arg(FromXerces(exception.getMessage()));
    m_messages.append(message);
    if (m_bForward)
        Q_EMIT sigOutMessage(QLatin1String(level), message);
}

} // namespace Corvane::Internal
