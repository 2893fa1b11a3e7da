// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/corvane_export.h>

#include <QList>
#include <QString>

#include <xercesc/util/XercesDefs.hpp>

#include <memory>

XERCES_CPP_NAMESPACE_BEGIN
class XSElementDeclaration;
class XSParticle;
XERCES_CPP_NAMESPACE_END

namespace Corvane::Internal
{

class ChildTypeIndex;

/// An element declaration of the registered schema at one place in a content model: its name, how
/// often it must occur there at least, and the element types of its children in schema order.
///
/// The same global declaration reached from two parents has two nodes. Children are loaded one
/// level at a time, when they are first asked for, so a schema whose types contain themselves costs
/// nodes only as deep as documents go. Groups (sequence, choice, all) are flattened into one list
/// in the order of the schema, so a name may occur twice; wildcards are left out.
///
/// Nodes belong to SCLGrammarPool or to their parent node, and live until the SCLDocControl is
/// destroyed.
class CORVANE_EXPORT SCLElementType
{
public:
    /// \param declaration the declaration, owned by the schema model; may be null, then the node
    ///        has neither name nor children.
    /// \param minOccurs minimum occurrence of the particle; 1 for a global element.
    SCLElementType(xercesc::XSElementDeclaration* declaration, unsigned int minOccurs);
    ~SCLElementType();

    /// The name of the element, without a prefix.
    QString GetName() const;
    /// The first child type of that \a name, or null. Exact and case-sensitive.
    SCLElementType* FindChildType(const QString& name);
    /// The child types in schema order. They stay owned by this node.
    QList<SCLElementType*> GetChildTypes();

    /// As FindChildType(), by the id of the tag in the SCLNamePool.
    SCLElementType* FindChildTypeById(unsigned short tagId);
    /// The index in GetChildTypes() of the first child type whose name is the tag of \a tagId, or
    /// -1.
    int GetChildRank(unsigned short tagId);

private:
    SCLElementType(const SCLElementType&) = delete;
    SCLElementType& operator=(const SCLElementType&) = delete;

    void LoadChildren();
    void AddParticle(xercesc::XSParticle* content);

    xercesc::XSElementDeclaration* m_pDeclaration;

public:
    /// Minimum occurrence of the element at this place in the content model.
    unsigned int m_nMinOccurs;

private:
    QString m_strName;
    QString m_strTypeName;
    QList<SCLElementType*> m_childTypes;
    bool m_bChildrenLoaded;
    std::unique_ptr<ChildTypeIndex> m_pIndex;
};

} // namespace Corvane::Internal
