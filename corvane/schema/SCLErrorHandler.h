// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/corvane_export.h>

#include <QObject>
#include <QString>
#include <QStringList>

#include <xercesc/sax2/DefaultHandler.hpp>

namespace Corvane::Internal
{

/// Gathers what the validating parser reports during one validation, as texts for the caller and as
/// signals for the host.
///
/// A handler never throws, so the parser goes on after an error and stops by itself after a fatal
/// one. An SCLDocControl must exist when it is constructed for signals to leave the library;
/// without one it only gathers.
class CORVANE_EXPORT SCLErrorHandler : public QObject, public xercesc::DefaultHandler
{
    Q_OBJECT

public:
    /// \param bForward true sends sigOutMessage() for each message; the list is filled in any case.
    explicit SCLErrorHandler(bool bForward);
    ~SCLErrorHandler() override;

    /// Level "WARN": does not count against validity.
    void warning(const xercesc::SAXParseException& exception) override;
    /// Level "ERROR": the file is not valid.
    void error(const xercesc::SAXParseException& exception) override;
    /// Level "FATAL": the file is not well-formed.
    void fatalError(const xercesc::SAXParseException& exception) override;
    /// Forgets all messages and errors. The parser calls it at the start of a parse.
    void resetErrors() override;

    /// All messages of this run, "Ln %1, Col %2: %3", in the order of their arrival.
    QStringList GetMessages() const;
    /// Whether an error or a fatal error was reported.
    bool HasError() const;

Q_SIGNALS:
    /// A message. Connected to the signal of the same name of SCLDocControl.
    ///
    /// \param strType "WARN", "ERROR" or "FATAL".
    /// \param strMessage the text as in GetMessages().
    void sigOutMessage(const QString& strType, const QString& strMessage);

private:
    Q_DISABLE_COPY(SCLErrorHandler)

    void Report(const char* level, const xercesc::SAXParseException& exception);

    bool m_bHasError;
    bool m_bForward;
    QStringList m_messages;
};

} // namespace Corvane::Internal
