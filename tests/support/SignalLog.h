// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/ElementText.h"

#include <corvane/documents/SCLDocControl.h>
#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/SCLAttribute.h>
#include <corvane/elements/SCLElement.h>

#include <QFileInfo>
#include <QFuture>
#include <QObject>
#include <QString>
#include <QStringList>

namespace Corvane::Test
{

/// All signals of the watched controls and documents in the order in which they went out, one line
/// each:
///
///     addElement <IED name="A"/>
///     deleteElement <IED name="A"/>
///     moveElement LN 0 -> 2
///     editAttribute IED name "A" -> "B"      (null -> "B" for a new attribute)
///     removeAttribute IED name "A"
///     editValue Val "x"
///     modifiedStateChanged true
///     taskPrepared "Parsing"
///     control taskPrepared "Parsing"
///     documentOpened "a.scd"
///     documentAboutToBeClosed "a.scd"
///     outMessage WARN "..."
///
/// Documents are named by their file without its folder. The state that a line shows is the one at
/// the time of the signal.
class SignalLog
{
public:
    SignalLog() = default;
    /// Watches at once; \a source is a control or a document.
    template <typename Source>
    explicit SignalLog(Source* source)
    {
        Watch(source);
    }

    void Watch(SCLDocControl* control)
    {
        On(control, &SCLDocControl::sigFutaskTaskPrepared,
           [this](const QFuture<QString>&, const QString& title) {
               Mark(QStringLiteral("control taskPrepared ") + Quoted(title));
           });
        On(control, &SCLDocControl::sigDocumentOpened, [this](SCLDocument* document) {
            Mark(QStringLiteral("documentOpened ") + FileName(document));
        });
        On(control, &SCLDocControl::sigDocumentAboutToBeClosed, [this](SCLDocument* document) {
            Mark(QStringLiteral("documentAboutToBeClosed ") + FileName(document));
        });
        On(control, &SCLDocControl::sigOutMessage,
           [this](const QString& type, const QString& text) {
               Mark(QStringLiteral("outMessage ") + type + QLatin1Char(' ') + Quoted(text));
           });
    }

    /// \param label stands before each line of this document, to tell several documents apart.
    void Watch(SCLDocument* document, const QString& label = QString())
    {
        const QString head = label.isEmpty() ? label : label + QStringLiteral(": ");
        const auto log = [this, head](const QString& line) { Mark(head + line); };

        On(document, &SCLDocument::sigFutaskTaskPrepared,
           [log](const QFuture<QString>&, const QString& title) {
               log(QStringLiteral("taskPrepared ") + Quoted(title));
           });
        On(document, &SCLDocument::sigModifiedStateChanged, [log, document] {
            log(QStringLiteral("modifiedStateChanged ") +
                (document->GetModified() ? QStringLiteral("true") : QStringLiteral("false")));
        });
        On(document, &SCLDocument::sigAddElement, [log](SCLElement* element) {
            log(QStringLiteral("addElement ") + ElementText(element));
        });
        On(document, &SCLDocument::sigDeleteElement, [log](SCLElement* element) {
            log(QStringLiteral("deleteElement ") + ElementText(element));
        });
        On(document, &SCLDocument::sigMoveElement, [log](SCLElement* element, int from, int to) {
            log(QStringLiteral("moveElement %1 %2 -> %3").arg(element->GetTag()).arg(from).arg(to));
        });
        On(document, &SCLDocument::sigEditAttribute,
           [log](SCLElement* element, SCLAttribute* attribute, const QString& oldValue) {
               log(QStringLiteral("editAttribute ") + Named(element, attribute) + Quoted(oldValue) +
                   QStringLiteral(" -> ") + Quoted(attribute->GetValue()));
           });
        On(document, &SCLDocument::sigRemoveAttribute,
           [log](SCLElement* element, SCLAttribute* attribute) {
               log(QStringLiteral("removeAttribute ") + Named(element, attribute) +
                   Quoted(attribute->GetValue()));
           });
        On(document, &SCLDocument::sigEditValue, [log](SCLElement* element) {
            log(QStringLiteral("editValue ") + element->GetTag() + QLatin1Char(' ') +
                Quoted(element->GetValue()));
        });
    }

    /// Adds a line of the test's own, which shows its place among the signals.
    void Mark(const QString& line) { m_lines.append(line); }

    QStringList Lines() const { return m_lines; }
    /// The lines since the last call.
    QStringList Take()
    {
        QStringList lines = m_lines;
        m_lines.clear();
        return lines;
    }

private:
    Q_DISABLE_COPY(SignalLog)

    template <typename Source, typename Signal, typename Slot>
    void On(Source* source, Signal signal, Slot slot)
    {
        QObject::connect(source, signal, &m_context, slot);
    }

    static QString FileName(const SCLDocument* document)
    {
        return QLatin1Char('"') + QFileInfo(document->GetFileName()).fileName() + QLatin1Char('"');
    }

    static QString Named(SCLElement* element, const SCLAttribute* attribute)
    {
        return element->GetTag() + QLatin1Char(' ') + attribute->GetName() + QLatin1Char(' ');
    }

    QStringList m_lines;
    QObject m_context;
};

} // namespace Corvane::Test
