// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/corvane_export.h>

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <xercesc/util/XercesDefs.hpp>

#include <vector>

XERCES_CPP_NAMESPACE_BEGIN
class SAX2XMLReader;
class SAX2XMLReaderImpl;
class XMLGrammarPool;
XERCES_CPP_NAMESPACE_END

namespace Corvane::Internal
{

class SCLElementType;

/// The registered schema: the parser that validates files with it, and the tree of element types.
///
/// SCLDocControl::RegisterSchema() creates it at its first call with an existing file, the
/// control's destructor deletes it. There is at most one.
class CORVANE_EXPORT SCLGrammarPool : public QObject
{
    Q_OBJECT

public:
    /// Makes an empty pool and makes it the one that Instance() returns.
    explicit SCLGrammarPool(QObject* parent = nullptr);
    ~SCLGrammarPool() override;

    /// The pool of the process, or null if there is none.
    static SCLGrammarPool* Instance();

    /// Loads an XSD file. See SCLDocControl::RegisterSchema().
    ///
    /// \return false if the load failed; the pool then has no grammar, and a further load may be
    ///         tried. A missing, empty or foreign file can give true with no new element types.
    bool LoadSchema(const QString& fileName);
    /// Whether the loaded schema declares the element `SCL` in the SCL namespace of IEC 61850-6.
    bool HasSclSchema() const;
    /// The first global element type of that \a name, or null. Exact and case-sensitive.
    SCLElementType* FindRootType(const QString& name);
    /// Validates a file. See SCLDocControl::SchemaValidate().
    bool Validate(const QString& fileName, QStringList& messages);

private:
    Q_DISABLE_COPY(SCLGrammarPool)

    struct Grammar {
        xercesc::XMLGrammarPool* pool;
        xercesc::SAX2XMLReader* reader;
    };

    bool Load(const QString& fileName);
    xercesc::SAX2XMLReaderImpl* CreateReader();
    bool BuildRootTypes();
    void PrepareParse();
    void RetireGrammar();
    void DeleteGrammar();

    static SCLGrammarPool* m_pInstance;

    xercesc::XMLGrammarPool* m_pGrammarPool = nullptr;
    xercesc::SAX2XMLReader* m_pReader = nullptr;
    QList<SCLElementType*> m_rootTypes;
    // Replaced grammars: element types go on using their declarations.
    std::vector<Grammar> m_retired;
};

} // namespace Corvane::Internal
