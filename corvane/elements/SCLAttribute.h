// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/corvane_export.h>

#include <QString>

#include <cstddef>

namespace Corvane
{

class SCLElement;

namespace Internal
{
class CrcCopy;
class TreeBuilder;
class XmlTreeWriter;
} // namespace Internal

/// One attribute of an SCLElement: a name, kept as an id of the name pool, and a value as it stands
/// in the file, not normalised.
///
/// The operations touch the attribute alone. An attribute changed through them, even one that an
/// element holds, sends no signal and does not mark the document modified: the way that reports a
/// change is SCLElement::SetAttribute().
///
/// An SCLNamePool must exist whenever a name is set or read.
class CORVANE_EXPORT SCLAttribute
{
public:
    /// An attribute with an empty value and no name. Call SetName() before GetName().
    SCLAttribute();
    /// An attribute of that \a name, which is pooled, and \a value.
    SCLAttribute(const QString& name, const QString& value);

    SCLAttribute(const SCLAttribute&) = default;
    SCLAttribute& operator=(const SCLAttribute& other);

    /// Pools \a name and takes it.
    void SetName(const QString& name);
    /// The name; a null `QString` if none was set.
    QString GetName() const;
    /// Stores \a value as it is.
    void SetValue(const QString& value);
    /// The value as it was stored.
    QString GetValue() const;

    /// Attributes are many and small: they come from a store of their own, which goes back to the
    /// system when the last attribute is gone.
    static void* operator new(std::size_t size);
    static void operator delete(void* memory, std::size_t size) noexcept;

private:
    friend class SCLElement;
    friend class Internal::CrcCopy;
    friend class Internal::TreeBuilder;
    friend class Internal::XmlTreeWriter;

    SCLAttribute(unsigned short id, const QString& value);

    unsigned short m_uNameId;
    QString m_strValue;
};

} // namespace Corvane
