// SPDX-License-Identifier: Apache-2.0
#include <corvane/schema/SCLGrammarPool.h>

#include <corvane/documents/SclNamespace.h>
#include <corvane/schema/DepthGuard.h>
#include <corvane/schema/LocalFileSource.h>
#include <corvane/schema/SCLElementType.h>
#include <corvane/schema/SCLErrorHandler.h>
#include <corvane/schema/SchemaFiles.h>
#include <corvane/schema/XercesText.h>

#include <QFileInfo>
#include <QtAlgorithms>

#include <xercesc/framework/XMLGrammarPoolImpl.hpp>
#include <xercesc/framework/psvi/XSElementDeclaration.hpp>
#include <xercesc/framework/psvi/XSModel.hpp>
#include <xercesc/framework/psvi/XSNamedMap.hpp>
#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <memory>

namespace Corvane::Internal
{

using xercesc::SAX2XMLReaderImpl;
using xercesc::XMLUni;

namespace
{

using TypeList = std::vector<std::unique_ptr<SCLElementType>>;

void UseFreshScanner(xercesc::SAX2XMLReader* reader)
{
    reader->setProperty(XMLUni::fgXercesScannerName, const_cast<XMLCh*>(XMLUni::fgSGXMLScanner));
}

void AppendTypes(TypeList& types, xercesc::XSNamedMap<xercesc::XSObject>* declarations)
{
    for (XMLSize_t i = 0; declarations && i < declarations->getLength(); ++i) {
        if (xercesc::XSObject* object = declarations->item(i))
            types.push_back(std::make_unique<SCLElementType>(
                static_cast<xercesc::XSElementDeclaration*>(object), 1U));
    }
}

/// Sets the handlers of a parser for as long as the object lives.
class HandlerScope
{
public:
    HandlerScope(xercesc::SAX2XMLReader* reader, SCLErrorHandler* errors, DepthGuard* guard)
        : m_pReader(reader)
    {
        m_pReader->setErrorHandler(errors);
        m_pReader->setContentHandler(guard);
    }
    ~HandlerScope()
    {
        m_pReader->setContentHandler(nullptr);
        m_pReader->setErrorHandler(nullptr);
    }

private:
    Q_DISABLE_COPY(HandlerScope)

    xercesc::SAX2XMLReader* m_pReader;
};

void Parse(xercesc::SAX2XMLReader* reader, const QString& fileName, SCLErrorHandler& errors)
{
    DepthGuard guard(errors);
    const HandlerScope scope(reader, &errors, &guard);
    try {
        reader->parse(LocalFileSource(QFileInfo(fileName).absoluteFilePath()));
    } catch (const DepthGuard::Stop&) {
        return;
    }
}

} // namespace

SCLGrammarPool* SCLGrammarPool::m_pInstance = nullptr;

SCLGrammarPool::SCLGrammarPool(QObject* parent) : QObject(parent)
{
    m_pInstance = this;
}

SCLGrammarPool::~SCLGrammarPool()
{
    if (m_pInstance == this)
        m_pInstance = nullptr;
    DeleteGrammar();
    for (const Grammar& grammar : m_retired) {
        delete grammar.pool;
        delete grammar.reader;
    }
    qDeleteAll(m_rootTypes);
}

SCLGrammarPool* SCLGrammarPool::Instance()
{
    return m_pInstance;
}

bool SCLGrammarPool::LoadSchema(const QString& fileName)
{
    RetireGrammar();
    bool loaded = false;
    try {
        loaded = Load(fileName);
    } catch (...) { // whatever the parser throws, the result is the same
        loaded = false;
    }
    if (!loaded)
        DeleteGrammar();
    return loaded;
}

bool SCLGrammarPool::HasSclSchema() const
{
    if (!m_pGrammarPool)
        return false;
    bool changed = false;
    xercesc::XSModel* model = m_pGrammarPool->getXSModel(changed);
    return model && model->getElementDeclaration(
                        ToXerces(QStringLiteral("SCL")).data(),
                        ToXerces(QLatin1String(g_szSclNamespace)).data()) != nullptr;
}

SCLElementType* SCLGrammarPool::FindRootType(const QString& name)
{
    for (SCLElementType* type : std::as_const(m_rootTypes)) {
        if (type->GetName() == name)
            return type;
    }
    return nullptr;
}

bool SCLGrammarPool::Validate(const QString& fileName, QStringList& messages)
{
    if (!m_pGrammarPool || !m_pReader)
        return false;
    try {
        PrepareParse();
        SCLErrorHandler errors(true);
        Parse(m_pReader, fileName, errors);
        messages = errors.GetMessages();
        return !errors.HasError();
    } catch (const xercesc::OutOfMemoryException&) {
        return false;
    } catch (const xercesc::XMLException&) {
        return false;
    }
}

bool SCLGrammarPool::Load(const QString& fileName)
{
    // Null if Xerces-C could not be started.
    if (!xercesc::XMLPlatformUtils::fgMemoryManager)
        return false;
    SAX2XMLReaderImpl* reader = CreateReader();

    SchemaFiles files;
    reader->setFeature(XMLUni::fgXercesDisableDefaultEntityResolution, true);
    reader->setXMLEntityResolver(&files);
    const std::unique_ptr<xercesc::InputSource> source(files.Open(fileName));
    reader->loadGrammar(*source, xercesc::Grammar::SchemaGrammarType, true);
    reader->setXMLEntityResolver(nullptr);

    reader->setFeature(XMLUni::fgXercesUseCachedGrammarInParse, true);
    // From here on the grammar is closed: what a file names is neither looked for nor kept.
    reader->setFeature(XMLUni::fgXercesCacheGrammarFromParse, false);
    reader->setFeature(XMLUni::fgXercesLoadSchema, false);
    return !files.HasRefused() && BuildRootTypes();
}

SAX2XMLReaderImpl* SCLGrammarPool::CreateReader()
{
    xercesc::MemoryManager* const memory = xercesc::XMLPlatformUtils::fgMemoryManager;
    m_pGrammarPool = new (memory) xercesc::XMLGrammarPoolImpl(memory);
    auto* reader = new (memory) SAX2XMLReaderImpl(memory, m_pGrammarPool);
    m_pReader = reader;

    reader->setFeature(XMLUni::fgSAX2CoreNameSpaces, true);
    reader->setFeature(XMLUni::fgSAX2CoreNameSpacePrefixes, true);
    reader->setFeature(XMLUni::fgXercesSchema, true);
    reader->setFeature(XMLUni::fgXercesSchemaFullChecking, true);
    reader->setFeature(XMLUni::fgSAX2CoreValidation, true);
    reader->setFeature(XMLUni::fgXercesDynamic, true);
    reader->setFeature(XMLUni::fgXercesCacheGrammarFromParse, true);
    UseFreshScanner(reader);
    const QString location = QLatin1String(g_szSclNamespace) + QStringLiteral(" SCL.xsd");
    reader->setProperty(XMLUni::fgXercesSchemaExternalSchemaLocation, ToXerces(location).data());
    return reader;
}

bool SCLGrammarPool::BuildRootTypes()
{
    bool changed = false;
    xercesc::XSModel* model = m_pGrammarPool->getXSModel(changed);
    const xercesc::StringList* namespaces = model ? model->getNamespaces() : nullptr;
    if (!namespaces)
        return false;

    TypeList types;
    for (XMLSize_t i = 0; i < namespaces->size(); ++i)
        AppendTypes(types,
                    model->getComponentsByNamespace(xercesc::XSConstants::ELEMENT_DECLARATION,
                                                    namespaces->elementAt(i)));
    m_rootTypes.reserve(m_rootTypes.size() + static_cast<int>(types.size()));
    for (std::unique_ptr<SCLElementType>& type : types)
        m_rootTypes.append(type.release());
    return true;
}

void SCLGrammarPool::PrepareParse()
{
    // A scanner remembers the undeclared elements of earlier files, which would colour its reports
    // on this one. A new one takes over all settings but the one repeated here.
    UseFreshScanner(m_pReader);
    m_pReader->setFeature(XMLUni::fgXercesDisableDefaultEntityResolution, true);
}

void SCLGrammarPool::RetireGrammar()
{
    if (!m_pGrammarPool)
        return;
    m_retired.push_back({m_pGrammarPool, m_pReader});
    m_pGrammarPool = nullptr;
    m_pReader = nullptr;
}

void SCLGrammarPool::DeleteGrammar()
{
    delete m_pGrammarPool;
    m_pGrammarPool = nullptr;
    delete m_pReader;
    m_pReader = nullptr;
}

} // namespace Corvane::Internal
