// SPDX-License-Identifier: Apache-2.0
#include "NodeWriter.h"

#include "XmlOutput.h"

#include <QList>

#include <algorithm>
#include <array>
#include <cstring>

namespace Corvane::Bench
{

namespace
{

const std::array<const char*, 12> g_signalTexts{"断路器SF6压力低告警",
                                                "控制回路断线",
                                                "Spring not charged",
                                                "远方/就地切换把手",
                                                "PT断线",
                                                "CT断线",
                                                "装置异常",
                                                "Loss of DC supply",
                                                "对时异常",
                                                "保护跳闸出口",
                                                "GOOSE链路中断 <A网>",
                                                "Transformer oil temperature high"};

QByteArray Decimal(int hundredths)
{
    return QByteArray::number(hundredths / 100) + '.' +
           QByteArray::number(hundredths % 100).rightJustified(2, '0');
}

} // namespace

NodeWriter::NodeWriter(XmlOutput& out, Dice& dice, int series)
    : m_out(out), m_dice(dice), m_nSeries(series)
{
}

void NodeWriter::WriteNode(const NodeEntry& node, const char* prefix, int inst)
{
    const XmlScope scope(m_out, "LN",
                         {{"prefix", prefix},
                          {"lnClass", node.lnClass},
                          {"inst", QByteArray::number(inst)},
                          {"lnType", TypeCatalog::NodeTypeId(node, m_nSeries)}});
    WriteObjects(node);
}

void NodeWriter::WriteObjects(const NodeEntry& node)
{
    for (const DataObjectEntry& object : node.objects) {
        if (object.optional && m_nSeries > 0) {
            continue;
        }
        for (int number = 1; number <= std::max(object.count, 1); ++number) {
            WriteObject(object, number);
        }
    }
}

void NodeWriter::WriteObject(const DataObjectEntry& object, int number)
{
    const QByteArray description = Description(object, number);
    const XmlScope scope(
        m_out, "DOI", {{"name", TypeCatalog::ObjectName(object, number)}, {"desc", description}});
    WriteMembers(TypeCatalog::Structure(object.type), description);
}

void NodeWriter::WriteMembers(const StructureEntry& structure, const QByteArray& description)
{
    for (const MemberEntry& member : structure.members) {
        if (member.instance != Instance::None) {
            WriteMember(member, description);
        }
    }
}

void NodeWriter::WriteMember(const MemberEntry& member, const QByteArray& description)
{
    if (member.instance == Instance::Nested) {
        const XmlScope scope(m_out, "SDI", {{"name", member.name}});
        WriteMembers(TypeCatalog::Structure(member.type), description);
        return;
    }
    if (member.instance == Instance::Address) {
        m_out.Empty("DAI", {{"name", member.name}, {"sAddr", ShortAddress()}});
        return;
    }
    const bool configured = member.fc && std::strcmp(member.fc, "CF") == 0;
    const XmlScope scope(m_out, "DAI",
                         {{"name", member.name}, {"valKind", configured ? "RO" : nullptr}});
    m_out.Text("Val", {}, Value(member, description));
}

QByteArray NodeWriter::Description(const DataObjectEntry& object, int number)
{
    if (object.count == 0) {
        return object.description;
    }
    const auto text =
        static_cast<std::size_t>(m_dice.Below(static_cast<int>(g_signalTexts.size())));
    return QByteArray(object.description) + QByteArray::number(number) + ' ' + g_signalTexts[text];
}

QByteArray NodeWriter::Value(const MemberEntry& member, const QByteArray& description)
{
    switch (member.instance) {
    case Instance::Description:
        return description;
    case Instance::Integer:
        return QByteArray::number(m_dice.Below(10000));
    case Instance::Decimal:
        return Decimal(m_dice.Below(200000));
    case Instance::Boolean:
        return m_dice.Below(2) ? "true" : "false";
    case Instance::Word: {
        const auto words = QByteArray(TypeCatalog::Enumeration(member.type).values).split(' ');
        return words.at(m_dice.Below(static_cast<int>(words.size())));
    }
    default:
        return "R" + Decimal(m_dice.Below(900));
    }
}

QByteArray NodeWriter::ShortAddress()
{
    const int module = m_dice.Below(16);
    const int point = m_dice.Below(4096);
    return "CPU1.B" + QByteArray::number(module).rightJustified(2, '0') + ".INPUT." +
           QByteArray::number(point);
}

} // namespace Corvane::Bench
