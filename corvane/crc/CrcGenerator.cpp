// SPDX-License-Identifier: Apache-2.0
#include <corvane/crc/CrcGenerator.h>

#include <corvane/crc/Crc32.h>
#include <corvane/crc/CrcContent.h>
#include <corvane/crc/CrcElement.h>
#include <corvane/crc/CrcGeneratorPrivate.h>
#include <corvane/crc/CrcTree.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/help/SclNames.h>

namespace Corvane
{

namespace Tag = Internal::Tag;
namespace Attribute = Internal::Attribute;
using Internal::CrcCopy;
using Internal::CrcElement;
using Internal::CrcKind;
using Internal::CrcTree;
using Internal::CrcWork;

namespace
{

const QStringList& Description()
{
    static const QStringList names{Attribute::desc};
    return names;
}

} // namespace

CrcGenerator::CrcGenerator(SCLElement* ied) : m_pPrivate(new Private{ied}) {}

CrcGenerator::~CrcGenerator()
{
    delete m_pPrivate;
}

CrcGenerator::CrcResult CrcGenerator::Gererate(unsigned int& crc, QByteArray* canonicalContent,
                                               QByteArray* readableContent)
{
    CrcWork work;
    const CrcTree tree(*this, work);
    if (!tree.Root())
        return tree.Result();
    crc = Internal::CanonicalCrc(tree.Root(), canonicalContent);
    if (readableContent)
        *readableContent = BuildContent(tree.Root(), GeneratorReadable, crc);
    return tree.Result();
}

unsigned int CrcGenerator::Generate(const QStringList& strings)
{
    const QByteArray bytes = strings.join(QString()).toUtf8();
    return Internal::UpdateCrc32(0, bytes.constData(), static_cast<int>(bytes.size()));
}

CrcElement* CrcGenerator::BuildTree(CrcResult& result)
{
    bool isRead = false;
    CrcElement* root = BuildIED(isRead);
    if (!isRead || !root) {
        result = CrcFailed;
        return nullptr;
    }
    result = CrcSuccess;
    bool isComplete = true;
    const auto append = [&](CrcElement* section, bool ok) {
        CrcCopy::Append(root, section);
        isComplete = isComplete && ok;
    };
    bool ok = true;
    for (const bool isGoose : {true, false}) {
        CrcElement* publications = BuildPub(isGoose, ok);
        append(publications, ok);
        CrcElement* subscriptions = BuildSub(isGoose, ok);
        append(subscriptions, ok);
    }
    if (root->children.isEmpty()) {
        delete root;
        result = CrcNoConnection;
        return nullptr;
    }
    result = isComplete ? CrcSuccess : CrcFailed;
    return root;
}

CrcElement* CrcGenerator::BuildIED(bool& ok)
{
    SCLElement* ied = m_pPrivate->ied;
    ok = ied != nullptr;
    if (!ied)
        return nullptr;
    CrcElement* root = CrcCopy::NewNode(ied->GetTag());
    const auto add = [&](GeneratorType type, const QString& name) {
        root->AddAttribute(type, name, ied->GetAttribute(name));
    };
    add(GeneratorReadable, QStringLiteral("configVersion"));
    add(GeneratorReadable, Attribute::desc);
    add(GeneratorReadable, QStringLiteral("manufacturer"));
    add(GeneratorBoth, Attribute::name);
    add(GeneratorReadable, Attribute::type);
    return root;
}

CrcElement* CrcGenerator::CrcElementFromSclElement(SCLElement* element, bool recursive,
                                                   const QStringList& excludedAttributes,
                                                   const ExcludedChildren& excludedChildren)
{
    return m_pPrivate->work->CopyOf(element, recursive, excludedAttributes, excludedChildren);
}

CrcElement* CrcGenerator::Private::AddReference(const CrcKind& kind, SCLElement* control,
                                                CrcElement* section)
{
    CrcElement* reference = CrcCopy::NewNode(kind.reference);
    section->children.append(reference);
    const bool isNamed = work->Copy().AddAttribute(reference, GeneratorBoth, Attribute::name,
                                                   SCLHelp::GetElementRefName(control, true));
    return isNamed ? reference : nullptr;
}

bool CrcGenerator::Private::AddDataOfFcda(SCLElement* doi, const QString& daName, CrcElement* node)
{
    const auto add = [&](GeneratorType type, const QString& name, const QString& value) {
        return value.isEmpty() || work->Copy().AddAttribute(node, type, name, value);
    };
    bool ok = true;
    if (doi) {
        ok = add(GeneratorReadable, Attribute::desc, doi->GetAttribute(Attribute::desc));
        if (!daName.isEmpty())
            ok = add(GeneratorBoth, Attribute::bType, work->Lookups().BTypeOf(doi, daName)) && ok;
    }
    node->SortAttributes();
    return ok;
}

CrcElement* CrcGenerator::Private::CopyWhole(SCLElement* element)
{
    return work->CopyOf(element, true, Description(), {});
}

CrcElement* CrcGenerator::Private::CopyAlone(SCLElement* element)
{
    return work->CopyOf(element, false, Description(), {});
}

CrcElement* CrcGenerator::Private::CopyPublic(SCLElement* control)
{
    static const ExcludedChildren excluded = {{Tag::Private, {}}};
    return work->CopyOf(control, true, Description(), excluded);
}

CrcElement* CrcGenerator::Private::CopyData(SCLElement* source)
{
    static const ExcludedChildren excluded = {
        {Tag::DAI, {{Attribute::name, QStringLiteral("dU")}}}};
    return work->CopyOf(source, true, Description(), excluded);
}

QByteArray CrcGenerator::BuildContent(CrcElement* root, GeneratorType type, unsigned int crc)
{
    if (!root)
        return QByteArray();
    if (type != GeneratorCanonical)
        return Internal::ReadableContent(root, type, crc);
    QByteArray content;
    Internal::CanonicalCrc(root, &content);
    return content;
}

namespace Internal
{

CrcTree::CrcTree(SCLElement* ied)
{
    CrcWork work;
    CrcGenerator generator(ied);
    Build(generator, work);
}

CrcTree::CrcTree(SCLElement* ied, CrcWork& work)
{
    CrcGenerator generator(ied);
    Build(generator, work);
}

CrcTree::CrcTree(CrcGenerator& generator, CrcWork& work)
{
    Build(generator, work);
}

void CrcTree::Build(CrcGenerator& generator, CrcWork& work)
{
    work.Copy().Restart();
    generator.m_pPrivate->work = &work;
    m_pRoot.reset(generator.BuildTree(m_result));
    generator.m_pPrivate->work = nullptr;
}

} // namespace Internal
} // namespace Corvane
