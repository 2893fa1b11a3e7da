// SPDX-License-Identifier: Apache-2.0
#include <corvane/crc/CrcElement.h>

#include <corvane/elements/NodeStore.h>

#include <algorithm>
#include <vector>

namespace Corvane::Internal
{

namespace
{

// Never destroyed, as the library may end before the last tree does.
template <typename T>
NodeStore<T>& Store()
{
    static auto* store = new NodeStore<T>;
    return *store;
}

} // namespace

void* CrcAttribute::operator new(std::size_t)
{
    return Store<CrcAttribute>().Take();
}

void CrcAttribute::operator delete(void* memory, std::size_t) noexcept
{
    Store<CrcAttribute>().Give(memory);
}

void* CrcElement::operator new(std::size_t)
{
    return Store<CrcElement>().Take();
}

void CrcElement::operator delete(void* memory, std::size_t) noexcept
{
    Store<CrcElement>().Give(memory);
}

CrcElement::~CrcElement()
{
    // Descendants are unhooked before they are deleted, so that no destructor descends.
    std::vector<CrcElement*> doomed;
    const auto unhook = [&doomed](CrcElement* element) {
        doomed.insert(doomed.end(), element->children.constBegin(), element->children.constEnd());
        element->children.clear();
    };
    unhook(this);
    while (!doomed.empty()) {
        CrcElement* element = doomed.back();
        doomed.pop_back();
        unhook(element);
        delete element;
    }
    qDeleteAll(attributes);
}

void CrcElement::AddAttribute(CrcGenerator::GeneratorType type, const QString& attributeName,
                              const QString& attributeValue)
{
    attributes.append(new CrcAttribute(type, attributeName, attributeValue));
}

void CrcElement::SortAttributes()
{
    std::stable_sort(attributes.begin(), attributes.end(),
                     [](const CrcAttribute* left, const CrcAttribute* right) {
                         return left->name < right->name;
                     });
}

} // namespace Corvane::Internal
