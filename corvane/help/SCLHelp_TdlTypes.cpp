// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/SCLHelp.h>

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
using Internal::PatternText;
using Internal::TemplateIndex;

namespace
{

// Forms the text of a structure. Types nest as deep as a file likes, so open ones stand on a stack
// of their own; a type inside itself is left out, and a text that doubles at each level is given
// up.
class StructureText
{
public:
    bool OpenDOType(SCLElement* doType, const QString& memberName);
    bool OpenDAType(SCLElement* da, const QString& memberName);

    // Forms the text of the first type opened. False if one of its SDOs has no type, and then the
    // text is the unfinished one; false and the text untouched if it is given up.
    bool Form(QString& text);

private:
    struct Level {
        SCLElement* type;
        QString memberName;
        QList<SCLElement*> members;
        int sdoCount;
        int next;
        PatternText text;
    };
    static constexpr qint64 MostCopied = 256 * 1024 * 1024;

    bool Open(SCLElement* type, const QString& memberName, const QList<SCLElement*>& members,
              int sdoCount);
    Level Leave();
    bool OpenSdo(SCLElement* sdo);
    void AddAttribute(SCLElement* da);
    void AddMember(const QString& name, const QString& type);

    TemplateIndex m_templates;
    std::vector<Level> m_levels;
    QSet<SCLElement*> m_openTypes;
    qint64 m_nCopied = 0;
};

bool StructureText::Open(SCLElement* type, const QString& memberName,
                         const QList<SCLElement*>& members, int sdoCount)
{
    if (members.isEmpty() || m_openTypes.contains(type))
        return false;
    m_openTypes.insert(type);
    m_levels.push_back({type, memberName, members, sdoCount, 0, PatternText(QStringLiteral("{"))});
    return true;
}

StructureText::Level StructureText::Leave()
{
    Level level = std::move(m_levels.back());
    m_levels.pop_back();
    m_openTypes.remove(level.type);
    return level;
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
    if (!word.isEmpty())
        AddMember(name, word);
}

void StructureText::AddMember(const QString& name, const QString& type)
{
    PatternText& text = m_levels.back().text;
    const auto before = text.Text().size();
    text.Append("(%2)%3,", {name, type});
    m_nCopied += text.Text().size() - before;
}

bool StructureText::Form(QString& text)
{
    while (m_nCopied < MostCopied) {
        Level& level = m_levels.back();
        if (level.next < level.members.size()) {
            const bool isSdo = level.next < level.sdoCount;
            SCLElement* member = level.members.at(level.next++);
            if (!isSdo) {
                AddAttribute(member);
            } else if (!OpenSdo(member)) {
                const Level failed = Leave();
                if (m_levels.empty()) {
                    text = failed.text.Text();
                    return false;
                }
            }
            continue;
        }
        const Level done = Leave();
        QString closed = done.text.Text();
        if (closed.endsWith(QLatin1Char(',')))
            closed.chop(1);
        closed += QLatin1Char('}');
        if (m_levels.empty()) {
            text = closed;
            return true;
        }
        AddMember(done.memberName, closed);
    }
    return false;
}

// The child of a DOType, and the DOType that it leads to.
SCLElement* DOTypeOfChild(SCLElement* doType, const QString& name, SCLElement*& child)
{
    child = doType->FindChild(Attribute::name, name);
    return SCLHelp::GetDOTypeFromDO(child);
}

// The data object that a name with dots means, starting at a DOI.
SCLElement* DataObjectOfDottedName(SCLElement* ln, const QString& doName)
{
    const auto dot = doName.indexOf(QLatin1Char('.'));
    SCLElement* doi = ln->FindChild(Tag::DOI, Attribute::name, doName.left(dot), false);
    SCLElement* current = SCLHelp::GetDOFromDOI(doi);
    if (dot < 0)
        return current;
    SCLElement* type = SCLHelp::GetDOTypeFromDO(current);
    QString rest = doName.mid(dot + 1);
    // Names between the first and the last are taken as one character each, dot or not behind them.
    while (type && rest.contains(QLatin1Char('.'))) {
        type = DOTypeOfChild(type, rest.left(1), current);
        rest.remove(0, 2);
    }
    if (!type)
        return nullptr;
    return rest.isEmpty() ? current : type->FindChild(Attribute::name, rest);
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
