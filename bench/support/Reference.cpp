// SPDX-License-Identifier: Apache-2.0
#include "Reference.h"

#include <QCoreApplication>
#include <QFile>
#include <QFutureInterface>
#include <QHash>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace Corvane::Bench
{

namespace
{

/// Gives equal texts one shared QString.
class SharedTexts
{
public:
    QString operator()(const QString& text)
    {
        const auto found = m_texts.constFind(text);
        return found != m_texts.constEnd() ? *found : *m_texts.insert(text, text);
    }

private:
    QHash<QString, QString> m_texts;
};

} // namespace

int ReadBare(const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        return -1;
    }
    QXmlStreamReader reader(&file);
    reader.setNamespaceProcessing(false);
    int elements = 0;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement) {
            ++elements;
        }
    }
    return reader.hasError() ? -1 : elements;
}

bool BareWriter::Record(const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    m_operations.clear();
    m_nElements = 0;
    SharedTexts shared;
    QXmlStreamReader reader(&file);
    reader.setNamespaceProcessing(false);
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()) {
            ++m_nElements;
            m_operations.append({Token::Start, shared(reader.qualifiedName().toString()), {}});
            const QXmlStreamAttributes attributes = reader.attributes();
            for (const QXmlStreamAttribute& attribute : attributes) {
                m_operations.append({Token::Attribute, shared(attribute.qualifiedName().toString()),
                                     shared(attribute.value().toString())});
            }
        } else if (reader.isEndElement()) {
            m_operations.append({Token::End, {}, {}});
        } else if (reader.isCharacters() && !reader.isWhitespace()) {
            m_operations.append({Token::Text, {}, shared(reader.text().toString())});
        }
    }
    return !reader.hasError();
}

bool BareWriter::Write(const QString& fileName) const
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    QXmlStreamWriter writer(&file);
    writer.setAutoFormatting(true);
    writer.setAutoFormattingIndent(2);
    writer.writeStartDocument();
    for (const Operation& operation : m_operations) {
        switch (operation.token) {
        case Token::Start:
            writer.writeStartElement(operation.name);
            break;
        case Token::Attribute:
            writer.writeAttribute(operation.name, operation.value);
            break;
        case Token::Text:
            writer.writeCharacters(operation.value);
            break;
        case Token::End:
            writer.writeEndElement();
        }
    }
    writer.writeEndDocument();
    file.close();
    return !writer.hasError() && file.error() == QFileDevice::NoError;
}

void RunProgressSteps(int steps)
{
    QFutureInterface<QString> progress;
    progress.setProgressRange(0, steps);
    progress.reportStarted();
    for (int step = 1; step <= steps; ++step) {
        progress.setProgressValue(step);
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
    progress.reportFinished();
}

} // namespace Corvane::Bench
