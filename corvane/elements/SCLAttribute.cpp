// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/SCLAttribute.h>

#include <corvane/elements/ChangeStamp.h>
#include <corvane/elements/NodeStore.h>
#include <corvane/elements/SCLNamePool.h>

namespace Corvane
{

using Internal::ChangeStamp;
using Internal::NodeStore;
using Internal::SCLNamePool;

namespace
{

// Never destroyed, since a host may hold attributes in objects that end after this library's.
NodeStore<SCLAttribute>& Store()
{
    static auto* store = new NodeStore<SCLAttribute>;
    return *store;
}

} // namespace

SCLAttribute::SCLAttribute() : m_uNameId(SCLNamePool::m_uInvalidId) {}

SCLAttribute::SCLAttribute(const QString& name, const QString& value)
    : m_uNameId(SCLNamePool::Instance()->AddAttToNamePool(name)), m_strValue(value)
{
}

SCLAttribute::SCLAttribute(unsigned short id, const QString& value)
    : m_uNameId(id), m_strValue(value)
{
}

SCLAttribute& SCLAttribute::operator=(const SCLAttribute& other)
{
    m_uNameId = other.m_uNameId;
    m_strValue = other.m_strValue;
    ChangeStamp::Move();
    return *this;
}

void SCLAttribute::SetName(const QString& name)
{
    m_uNameId = SCLNamePool::Instance()->AddAttToNamePool(name);
    ChangeStamp::Move();
}

QString SCLAttribute::GetName() const
{
    return SCLNamePool::Instance()->GetAttFromId(m_uNameId);
}

void SCLAttribute::SetValue(const QString& value)
{
    m_strValue = value;
    ChangeStamp::Move();
}

QString SCLAttribute::GetValue() const
{
    return m_strValue;
}

void* SCLAttribute::operator new(std::size_t size)
{
    return size == sizeof(SCLAttribute) ? Store().Take() : ::operator new(size);
}

void SCLAttribute::operator delete(void* memory, std::size_t size) noexcept
{
    if (size == sizeof(SCLAttribute))
        Store().Give(memory);
    else
        ::operator delete(memory);
}

} // namespace Corvane
