// SPDX-License-Identifier: Apache-2.0
#include <corvane/documents/SCLDocument.h>

#include <corvane/documents/ProgressTask.h>
#include <corvane/documents/SCLDocControl.h>
#include <corvane/documents/WaitCursor.h>
#include <corvane/elements/SCLVocabulary.h>
#include <corvane/elements/TreeBuilder.h>

#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>

namespace Corvane
{

using Internal::ProgressTask;
using Internal::TreeBuilder;
using Internal::WaitCursor;

namespace
{

// Each piece of a tree stands in its file with at least so many characters, entity references and
// attribute defaults aside. So what is built can outgrow what was read only through these.
class Expansion
{
public:
    void AddElement(QStringView tag) { m_nBuilt += tag.size() + 3; }
    void AddAttribute(QStringView name, QStringView value)
    {
        m_nBuilt += name.size() + value.size() + 4;
    }
    void AddText(QStringView text) { m_nBuilt += text.size(); }

    bool IsTooFar(const QXmlStreamReader& reader) const
    {
        constexpr qint64 allowance = qint64{4} * 1024 * 1024;
        return m_nBuilt > reader.characterOffset() + allowance;
    }

private:
    qint64 m_nBuilt = 0;
};

// The reader gathers a whole run of text before it hands it out, entity references replaced. So
// each reference may only be replaced by so much that all of them together stay within bounds.
class EntityBound
{
public:
    explicit EntityBound(QIODevice* device) : m_pDevice(device) {}

    // Before the document type is read: anything may be a reference.
    int Strict() const { return Share(m_pDevice->size() / 3); }
    // Once entities are declared: by the references that the file really has.
    int Counted() const { return m_pDevice->isSequential() ? Strict() : Share(CountReferences()); }

private:
    int Share(qint64 references) const
    {
        constexpr qint64 allowance = qint64{4} * 1024 * 1024;
        constexpr qint64 least = 16;
        constexpr qint64 most = 4096;
        const qint64 share = (m_pDevice->size() + allowance) / qMax<qint64>(references, 1);
        return static_cast<int>(qBound(least, share, most));
    }

    qint64 CountReferences() const
    {
        const qint64 position = m_pDevice->pos();
        qint64 count = 0;
        m_pDevice->seek(0);
        for (QByteArray block = m_pDevice->read(BlockSize); !block.isEmpty();
             block = m_pDevice->read(BlockSize))
            count += block.count('&');
        m_pDevice->seek(position);
        return count;
    }

    static constexpr qint64 BlockSize = qint64{1024} * 1024;

    QIODevice* m_pDevice;
};

int Percent(const QXmlStreamReader& reader, double total)
{
    const double done = static_cast<double>(reader.characterOffset());
    return total > 0 ? static_cast<int>(done / total * 100.0) : 0;
}

} // namespace

SCLDocument* SCLDocControl::OpenDocument(const QString& fileName, bool notify)
{
    if (SCLDocument* open = LookForDocument(fileName))
        return open;
    auto* document = new SCLDocument;
    if (!document->Open(fileName)) {
        delete document;
        return nullptr;
    }
    m_listDocument.append(document);
    if (notify)
        Q_EMIT sigDocumentOpened(document);
    return document;
}

bool SCLDocument::Open(const QString& fileName)
{
    m_strFileName = fileName;
    if (fileName.isEmpty() || !QFileInfo::exists(fileName))
        return false;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    bool loaded = false;
    {
        const WaitCursor cursor;
        loaded = LoadSclFile(&file);
    }
    SetModified(false, false);
    m_bIEDChanged = false;
    return loaded;
}

bool SCLDocument::LoadSclFile(QIODevice* device)
{
    QXmlStreamReader reader(device);
    reader.setNamespaceProcessing(false);
    const EntityBound entityBound(device);
    reader.setEntityExpansionLimit(entityBound.Strict());
    ProgressTask task(this, tr("Parsing"), 100);
    const double total = static_cast<double>(device->size());

    TreeBuilder builder(this);
    Expansion expansion;
    const auto startElement = [&] {
        const QStringView tag = QStringView(reader.qualifiedName()).trimmed();
        const bool isRoot = builder.IsOutside();
        if (isRoot && tag != QLatin1String(g_szTagSCL)) {
            reader.raiseError(tr("The file is not an SCL file."));
            return;
        }
        SCLElement* element = builder.StartElement(tag);
        if (isRoot)
            m_pRoot = element;
        expansion.AddElement(tag);
        const QXmlStreamAttributes attributes = reader.attributes();
        bool pooled = element != nullptr;
        if (pooled)
            builder.ReserveAttributes(static_cast<int>(attributes.size()));
        for (auto it = attributes.constBegin(); pooled && it != attributes.constEnd(); ++it) {
            const QStringView name = QStringView(it->qualifiedName()).trimmed();
            pooled = builder.AddAttribute(name, it->value());
            expansion.AddAttribute(name, it->value());
            if (expansion.IsTooFar(reader))
                break;
        }
        if (!pooled)
            reader.raiseError(tr("The file has too many different tags or attribute names."));
    };

    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement:
            startElement();
            break;
        case QXmlStreamReader::DTD:
            if (!reader.entityDeclarations().isEmpty())
                reader.setEntityExpansionLimit(entityBound.Counted());
            break;
        case QXmlStreamReader::Characters:
            if (!reader.isWhitespace()) {
                builder.AppendText(reader.text());
                expansion.AddText(reader.text());
            }
            break;
        case QXmlStreamReader::EndElement: {
            builder.EndElement();
            const int percent = Percent(reader, total);
            if (percent % 5 == 0)
                task.Step(percent);
            break;
        }
        default:
            break;
        }
        if (expansion.IsTooFar(reader) && !reader.hasError())
            reader.raiseError(tr("The document type expands the file far beyond its size."));
    }

    if (reader.hasError()) {
        task.Cancel();
        if (SCLDocControl* control = SCLDocControl::Instance()) {
            control->SetLastError(tr("Row %1, Col %2: %3")
                                      .arg(reader.lineNumber())
                                      .arg(reader.columnNumber())
                                      .arg(reader.errorString()));
        }
    }
    task.Finish();
    return !reader.hasError();
}

} // namespace Corvane
