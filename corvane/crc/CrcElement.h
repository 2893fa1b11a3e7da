// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/crc/CrcGenerator.h>

#include <QList>
#include <QString>

#include <cstddef>

namespace Corvane::Internal
{

/// An attribute of a CrcElement, its value as found in the SCL tree.
class CrcAttribute
{
public:
    CrcAttribute(CrcGenerator::GeneratorType type, const QString& attributeName,
                 const QString& attributeValue)
        : generatorType(type), name(attributeName), value(attributeValue)
    {
    }

    static void* operator new(std::size_t size);
    static void operator delete(void* memory, std::size_t size) noexcept;

    CrcGenerator::GeneratorType generatorType;
    QString name;
    QString value;
};

/// A node of the description of an IED that its CRC covers. It owns what is below it and refers to
/// nothing in the SCL tree.
class CrcElement
{
public:
    CrcElement(CrcGenerator::GeneratorType type, const QString& tag, const QString& content)
        : generatorType(type), name(tag), text(content)
    {
    }
    /// Destroys the whole subtree, of any depth: children first, attributes second.
    ~CrcElement();
    CrcElement(const CrcElement&) = delete;
    CrcElement& operator=(const CrcElement&) = delete;

    void AddAttribute(CrcGenerator::GeneratorType type, const QString& attributeName,
                      const QString& attributeValue);
    /// By name, in the order of UTF-16; equal names keep their order.
    void SortAttributes();

    static void* operator new(std::size_t size);
    static void operator delete(void* memory, std::size_t size) noexcept;

    CrcGenerator::GeneratorType generatorType;
    QString name;
    /// Rendered only if there are no children.
    QString text;
    QList<CrcElement*> children;
    QList<CrcAttribute*> attributes;
};

} // namespace Corvane::Internal
