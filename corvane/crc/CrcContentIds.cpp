// SPDX-License-Identifier: Apache-2.0
#include <corvane/crc/CrcContentIds.h>

#include <corvane/crc/CrcContent.h>
#include <corvane/crc/CrcElement.h>
#include <corvane/elements/XmlText.h>

#include <utility>
#include <vector>

namespace Corvane::Internal
{

namespace
{

// With its length in front, so that no text can pass for two.
void AppendSized(QString& signature, const QString& text)
{
    signature += QString::number(text.size()) + QLatin1Char(':') + text;
}

template <typename Node>
QList<const Node*> Shown(const QList<Node*>& nodes)
{
    QList<const Node*> shown;
    shown.reserve(nodes.size());
    for (const Node* node : nodes) {
        if (IsShown(node->generatorType, CrcGenerator::GeneratorCanonical))
            shown.append(node);
    }
    return shown;
}

} // namespace

QString CanonicalTextOf(const CrcElement* element)
{
    return element->children.isEmpty() ? CanonicalValue(element->text) : QString();
}

QList<const CrcAttribute*> CanonicalAttributesOf(const CrcElement* element)
{
    return Shown(element->attributes);
}

QList<const CrcElement*> CanonicalChildrenOf(const CrcElement* element)
{
    return Shown(element->children);
}

void CrcContentIds::Add(const CrcElement* root)
{
    // Each element stands before those below it, so backwards all children come first.
    std::vector<const CrcElement*> elements{root};
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const QList<const CrcElement*> children = CanonicalChildrenOf(elements[i]);
        elements.insert(elements.end(), children.cbegin(), children.cend());
    }
    for (auto element = elements.crbegin(); element != elements.crend(); ++element)
        m_ids.insert(*element, IdOf(*element));
}

int CrcContentIds::IdOf(const CrcElement* element)
{
    QString signature;
    AppendSized(signature, XmlName(element->name));
    const QList<const CrcAttribute*> attributes = CanonicalAttributesOf(element);
    for (const CrcAttribute* attribute : attributes) {
        AppendSized(signature, XmlName(attribute->name));
        AppendSized(signature, CanonicalValue(attribute->value));
    }
    signature += QLatin1Char('/');
    AppendSized(signature, CanonicalTextOf(element));
    const QList<const CrcElement*> children = CanonicalChildrenOf(element);
    for (const CrcElement* child : children)
        signature += QString::number(Of(child)) + QLatin1Char(',');
    return m_known.emplace(std::move(signature), static_cast<int>(m_known.size())).first->second;
}

} // namespace Corvane::Internal
