// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/SCLNamePool.h>

#include <corvane/elements/NameIndex.h>

#include <limits>

namespace Corvane::Internal
{

namespace
{

// One body for both sides of the pool.
unsigned short Intern(QStringView name, unsigned short& lastId,
                      QMap<unsigned short, QString>& names, NameIndex& index)
{
    if (const unsigned short id = index.Find(name))
        return id;
    if (lastId == std::numeric_limits<unsigned short>::max())
        return SCLNamePool::m_uInvalidId;
    ++lastId;
    index.Add(&names.insert(lastId, name.toString()).value());
    return lastId;
}

QString NameOf(unsigned short id, const NameIndex& index)
{
    const QString* name = index.Name(id);
    return name ? *name : QString();
}

} // namespace

SCLNamePool* SCLNamePool::m_pInstance = nullptr;

SCLNamePool::SCLNamePool(QObject* parent)
    : QObject(parent), m_pTagIndex(new NameIndex), m_pAttIndex(new NameIndex)
{
    m_pInstance = this;
}

SCLNamePool::~SCLNamePool()
{
    if (m_pInstance == this)
        m_pInstance = nullptr;
}

SCLNamePool* SCLNamePool::Instance()
{
    return m_pInstance;
}

unsigned short SCLNamePool::AddTagToNamePool(const QString& name)
{
    return InternTag(name);
}

unsigned short SCLNamePool::AddAttToNamePool(const QString& name)
{
    return InternAtt(name);
}

unsigned short SCLNamePool::InternTag(QStringView name)
{
    return Intern(name, m_uLastTagId, m_mapTag, *m_pTagIndex);
}

unsigned short SCLNamePool::InternAtt(QStringView name)
{
    return Intern(name, m_uLastAttId, m_mapAtt, *m_pAttIndex);
}

unsigned short SCLNamePool::GetIdFromTag(const QString& name) const
{
    return m_pTagIndex->Find(name);
}

unsigned short SCLNamePool::GetIdFromAtt(const QString& name) const
{
    return m_pAttIndex->Find(name);
}

QString SCLNamePool::GetTagFromId(unsigned short id) const
{
    return NameOf(id, *m_pTagIndex);
}

QString SCLNamePool::GetAttFromId(unsigned short id) const
{
    return NameOf(id, *m_pAttIndex);
}

} // namespace Corvane::Internal
