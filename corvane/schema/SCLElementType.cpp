// SPDX-License-Identifier: Apache-2.0
#include <corvane/schema/SCLElementType.h>

#include <corvane/schema/ChildTypeIndex.h>
#include <corvane/schema/XercesText.h>

#include <xercesc/framework/psvi/XSComplexTypeDefinition.hpp>
#include <xercesc/framework/psvi/XSElementDeclaration.hpp>
#include <xercesc/framework/psvi/XSModelGroup.hpp>
#include <xercesc/framework/psvi/XSParticle.hpp>

#include <vector>

namespace Corvane::Internal
{

namespace
{

QString NameOf(xercesc::XSElementDeclaration* declaration)
{
    return declaration ? FromXerces(declaration->getName()) : QString();
}

// Xerces-C makes up names for anonymous types.
QString TypeNameOf(xercesc::XSElementDeclaration* declaration)
{
    xercesc::XSTypeDefinition* type = declaration ? declaration->getTypeDefinition() : nullptr;
    return type && !type->getAnonymous() ? FromXerces(type->getName()) : QString();
}

xercesc::XSParticle* ContentOf(xercesc::XSElementDeclaration* declaration)
{
    using xercesc::XSComplexTypeDefinition;
    using xercesc::XSTypeDefinition;

    XSTypeDefinition* type = declaration->getTypeDefinition();
    if (!type || type->getTypeCategory() != XSTypeDefinition::COMPLEX_TYPE)
        return nullptr;
    return static_cast<XSComplexTypeDefinition*>(type)->getParticle();
}

void PushReversed(std::vector<xercesc::XSParticle*>& pending, xercesc::XSModelGroup* group)
{
    xercesc::XSParticleList* particles = group ? group->getParticles() : nullptr;
    for (XMLSize_t i = particles ? particles->size() : 0; i > 0; --i)
        pending.push_back(particles->elementAt(i - 1));
}

} // namespace

SCLElementType::SCLElementType(xercesc::XSElementDeclaration* declaration, unsigned int minOccurs)
    : m_pDeclaration(declaration), m_nMinOccurs(minOccurs), m_strName(NameOf(declaration)),
      m_strTypeName(TypeNameOf(declaration)), m_bChildrenLoaded(false)
{
}

SCLElementType::~SCLElementType()
{
    // Types that contain themselves make nodes as deep as documents go.
    QList<SCLElementType*> doomed;
    doomed.swap(m_childTypes);
    while (!doomed.isEmpty()) {
        SCLElementType* type = doomed.takeLast();
        doomed += type->m_childTypes;
        type->m_childTypes.clear();
        delete type;
    }
}

QString SCLElementType::GetName() const
{
    return m_strName;
}

SCLElementType* SCLElementType::FindChildType(const QString& name)
{
    LoadChildren();
    for (SCLElementType* type : std::as_const(m_childTypes)) {
        if (type->m_strName == name)
            return type;
    }
    return nullptr;
}

QList<SCLElementType*> SCLElementType::GetChildTypes()
{
    LoadChildren();
    return m_childTypes;
}

SCLElementType* SCLElementType::FindChildTypeById(unsigned short tagId)
{
    const int rank = GetChildRank(tagId);
    return rank < 0 ? nullptr : m_childTypes.at(rank);
}

int SCLElementType::GetChildRank(unsigned short tagId)
{
    LoadChildren();
    if (m_childTypes.isEmpty())
        return -1;
    if (!m_pIndex)
        m_pIndex = std::make_unique<ChildTypeIndex>(m_childTypes);
    return m_pIndex->Rank(tagId);
}

void SCLElementType::LoadChildren()
{
    if (!m_childTypes.isEmpty() || m_bChildrenLoaded || !m_pDeclaration)
        return;
    AddParticle(ContentOf(m_pDeclaration));
    m_bChildrenLoaded = true;
}

void SCLElementType::AddParticle(xercesc::XSParticle* content)
{
    using xercesc::XSParticle;

    std::vector<XSParticle*> pending{content};
    while (!pending.empty()) {
        XSParticle* particle = pending.back();
        pending.pop_back();
        if (!particle)
            continue;
        if (particle->getTermType() == XSParticle::TERM_MODELGROUP)
            PushReversed(pending, particle->getModelGroupTerm());
        else if (xercesc::XSElementDeclaration* declaration = particle->getElementTerm())
            m_childTypes.append(
                new SCLElementType(declaration, static_cast<unsigned>(particle->getMinOccurs())));
    }
}

} // namespace Corvane::Internal
