// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/SCLHelp.h>

#include <corvane/elements/SCLAttribute.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/help/SclNames.h>
#include <corvane/help/TemplateIndex.h>
#include <corvane/help/TextPattern.h>

#include <QHash>
#include <QSet>

#include <utility>
#include <vector>

namespace Corvane
{

namespace Tag = Internal::Tag;
namespace Attribute = Internal::Attribute;
using Internal::HoldsMarker;
using Internal::PatternText;
using Internal::TemplateIndex;

namespace
{

// Forms the text of a structure. Types nest as deep as a file likes, so open ones stand on a stack
// of their own, and all write to one text; a type inside itself is left out, and one that doubles
// at each level is given up.
class StructureText
{
public:
    bool OpenDOType(SCLElement* doType, const QString& memberName);
    bool OpenDAType(SCLElement* da, const QString& memberName);

    // Forms the text of the first type opened. False if one of its SDOs has no type, and then the
    // text is the unfinished one; false and the text untouched if it is given up.
    bool Form(QString& text);

private:
    using Position = decltype(QString().size());

    // A member of the structure that is open, from its name to the end of the text.
    struct Member {
        QString name;
        Position begin;
        Position typeBegin;
        bool holdsMarker;
    };
    struct Level {
        SCLElement* type;
        Member self;
        QList<SCLElement*> children;
        int sdoCount;
        int next;
    };
    static constexpr qint64 MostWork = 256LL * 1024 * 1024;
    static constexpr qint64 LongestText = 64LL * 1024 * 1024;

    bool Open(SCLElement* type, const QString& memberName, const QList<SCLElement*>& children,
              int sdoCount);
    Member Leave();
    bool OpenSdo(SCLElement* sdo);
    void AddAttribute(SCLElement* da);
    Member BeginMember(const QString& name);
    void EndMember(const Member& member);
    bool IsTooMuch() const { return m_nWork > MostWork || m_strText.size() > LongestText; }

    TemplateIndex m_templates;
    std::vector<Level> m_levels;
    QSet<SCLElement*> m_openTypes;
    QString m_strText;
    qint64 m_nWork = 0;
};

// What it takes to read an element. A file can have one without end that adds nothing to a text.
qint64 CostOf(SCLElement* element)
{
    qint64 cost = 32;
    const QList<SCLAttribute*> attributes = element->GetAttributeList();
    for (const SCLAttribute* attribute : attributes)
        cost += attribute->GetValue().size() + 1;
    return cost;
}

bool StructureText::Open(SCLElement* type, const QString& memberName,
                         const QList<SCLElement*>& children, int sdoCount)
{
    if (children.isEmpty() || m_openTypes.contains(type))
        return false;
    m_openTypes.insert(type);
    const Member self = m_levels.empty() ? Member{QString(), 0, 0, false} : BeginMember(memberName);
    m_levels.push_back({type, self, children, sdoCount, 0});
    m_strText += QLatin1Char('{');
    return true;
}

StructureText::Member StructureText::Leave()
{
    const Level level = std::move(m_levels.back());
    m_levels.pop_back();
    m_openTypes.remove(level.type);
    return level.self;
}

bool StructureText::OpenDOType(SCLElement* doType, const QString& memberName)
{
    const QList<SCLElement*> sdos = doType->FindChildByType(Tag::SDO, false);
    const QList<SCLElement*> das = doType->FindChildByType(Tag::DA, false);
    return Open(doType, memberName, sdos + das, static_cast<int>(sdos.size()));
}

bool StructureText::OpenDAType(SCLElement* da, const QString& memberName)
{
    SCLElement* daType = m_templates.Follow(da, Attribute::type, Tag::DAType);
    return daType && Open(daType, memberName, daType->FindChildByType(Tag::BDA, false), 0);
}

bool StructureText::OpenSdo(SCLElement* sdo)
{
    SCLElement* doType = m_templates.Follow(sdo, Attribute::type, Tag::DOType);
    if (doType)
        OpenDOType(doType, sdo->GetAttribute(Attribute::name));
    return doType;
}

void StructureText::AddAttribute(SCLElement* da)
{
    const QString bType = da->GetAttribute(Attribute::bType);
    const QString name = da->GetAttribute(Attribute::name);
    if (bType == QLatin1String("Struct")) {
        OpenDAType(da, name);
        return;
    }
    const QString word = SCLHelp::GetTDLTypeFromBType(bType);
    if (word.isEmpty())
        return;
    const Member member = BeginMember(name);
    m_strText += word;
    EndMember(member);
}

StructureText::Member StructureText::BeginMember(const QString& name)
{
    const Position begin = m_strText.size();
    m_strText += QLatin1Char('(') + name + QLatin1Char(')');
    return {name, begin, m_strText.size(), HoldsMarker(name)};
}

void StructureText::EndMember(const Member& member)
{
    Member& outer = m_levels.back().self;
    if (!member.holdsMarker && !outer.holdsMarker) {
        m_strText += QLatin1Char(',');
        return;
    }
    outer.holdsMarker = true;
    m_nWork += 4 * static_cast<qint64>(m_strText.size() - outer.typeBegin);
    PatternText text(m_strText.mid(outer.typeBegin, member.begin - outer.typeBegin));
    text.Append("(%2)%3,", {member.name, m_strText.mid(member.typeBegin)});
    m_strText.truncate(outer.typeBegin);
    m_strText += text.Text();
}

bool StructureText::Form(QString& text)
{
    while (!IsTooMuch()) {
        Level& level = m_levels.back();
        if (level.next < level.children.size()) {
            const bool isSdo = level.next < level.sdoCount;
            SCLElement* child = level.children.at(level.next++);
            m_nWork += CostOf(child);
            if (!isSdo) {
                AddAttribute(child);
            } else if (!OpenSdo(child)) {
                const Member failed = Leave();
                if (m_levels.empty()) {
                    text = m_strText;
                    return false;
                }
                m_strText.truncate(failed.begin);
            }
            continue;
        }
        const Member done = Leave();
        if (m_strText.endsWith(QLatin1Char(',')))
            m_strText.chop(1);
        m_strText += QLatin1Char('}');
        if (m_levels.empty()) {
            text = m_strText;
            return true;
        }
        EndMember(done);
    }
    return false;
}

// The child of a DOType, and the DOType that it leads to.
SCLElement* DOTypeOfChild(SCLElement* doType, const QString& name, TemplateIndex& templates,
                          SCLElement*& child)
{
    child = doType->FindChild(Attribute::name, name);
    return templates.Follow(child, Attribute::type, Tag::DOType);
}

// The data object at a name that may go on with dotted names of SDOs, beginning at a DOI.
SCLElement* DataObjectOfDottedName(SCLElement* ln, const QString& doName)
{
    const auto dot = doName.indexOf(QLatin1Char('.'));
    SCLElement* doi = ln->FindChild(Tag::DOI, Attribute::name, doName.left(dot), false);
    SCLElement* current = SCLHelp::GetDOFromDOI(doi);
    if (dot < 0)
        return current;
    TemplateIndex templates;
    SCLElement* type = templates.Follow(current, Attribute::type, Tag::DOType);
    // Names between the first and the last are taken as one character each, dot or not behind them.
    const auto lastDot = doName.lastIndexOf(QLatin1Char('.'));
    auto at = dot + 1;
    for (; type && at <= lastDot; at += 2)
        type = DOTypeOfChild(type, doName.mid(at, 1), templates, current);
    if (!type)
        return nullptr;
    const QString last = doName.mid(at);
    return last.isEmpty() ? current : type->FindChild(Attribute::name, last);
}

} // namespace

QString SCLHelp::GetTDLTypeFromBType(const QString& bType)
{
    static const QHash<QString, QString> words = {
        {QStringLiteral("BOOLEAN"), QStringLiteral("Bool")},
        {QStringLiteral("BOOL"), QStringLiteral("Bool")},
        {QStringLiteral("bool"), QStringLiteral("Bool")},
        {QStringLiteral("INT8"), QStringLiteral("Byte")},
        {QStringLiteral("INI16"), QStringLiteral("Short")},
        {QStringLiteral("INT24"), QStringLiteral("Long")},
        {QStringLiteral("INT32"), QStringLiteral("Long")},
        {QStringLiteral("INT128"), QStringLiteral("Ostring16")},
        {QStringLiteral("INT8U"), QStringLiteral("Ubyte")},
        {QStringLiteral("INT16U"), QStringLiteral("Ushort")},
        {QStringLiteral("INT24U"), QStringLiteral("Ulong")},
        {QStringLiteral("INT32U"), QStringLiteral("Ulong")},
        {QStringLiteral("FLOAT32"), QStringLiteral("Float")},
        {QStringLiteral("FLOAT64"), QStringLiteral("Double")},
        {QStringLiteral("Enum"), QStringLiteral("Byte")},
        {QStringLiteral("Dbpos"), QStringLiteral("Bstring2")},
        {QStringLiteral("Tcmd"), QStringLiteral("BVstring2")},
        {QStringLiteral("Quality"), QStringLiteral("BVstring13")},
        {QStringLiteral("Timestamp"), QStringLiteral("Utctime")},
        {QStringLiteral("VisString32"), QStringLiteral("VString32")},
        {QStringLiteral("VisString64"), QStringLiteral("Vstring64")},
        {QStringLiteral("VisString255"), QStringLiteral("Vstring255")},
        {QStringLiteral("Octet64"), QStringLiteral("Ostring64")},
        {QStringLiteral("EntryTime"), QStringLiteral("Btime6")},
        {QStringLiteral("Unicode255"), QStringLiteral("UTF8Vstring255")},
        {QStringLiteral("Check"), QStringLiteral("BVstring2")},
        {QStringLiteral("CODED ENUM"), QStringLiteral("BVstring2")},
    };
    return words.value(bType, QString::fromLatin1(""));
}

bool SCLHelp::GetTDLTypeFromDA(SCLElement* da, QString& tdlType)
{
    const QString bType = da->GetAttribute(Attribute::bType);
    if (bType.isEmpty())
        return false;
    if (bType == QLatin1String("Struct")) {
        StructureText structure;
        return structure.OpenDAType(da, QString()) && structure.Form(tdlType);
    }
    tdlType = GetTDLTypeFromBType(bType);
    return !tdlType.isEmpty();
}

bool SCLHelp::GetTDLTypeFromDOType(SCLElement* doType, QString& tdlType)
{
    StructureText structure;
    return structure.OpenDOType(doType, QString()) && structure.Form(tdlType);
}

bool SCLHelp::GetTDLTypeAndACT(SCLElement* ln, const QString& doName, const QString& daName,
                               QString& tdlType, QString& act)
{
    if (!ln || doName.isEmpty() || daName.isEmpty())
        return false;
    SCLElement* type = GetDOTypeFromDO(DataObjectOfDottedName(ln, doName));
    if (!type)
        return false;
    act = type->GetAttribute(Attribute::cdc) == QLatin1String("ACT") ? QStringLiteral("1")
                                                                     : QStringLiteral("0");
    SCLElement* da = GetDAFromDOTypeAndName(type, daName);
    const QString bType = da ? da->GetAttribute(Attribute::bType) : QString();
    if (bType.isEmpty())
        return false;
    tdlType = GetTDLTypeFromBType(bType);
    return !tdlType.isEmpty();
}

} // namespace Corvane
