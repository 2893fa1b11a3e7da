// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/TestControl.h"

#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/SCLElement.h>

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <random>

namespace Corvane::Test
{

/// A file whose `DataTypeTemplates` holds \a types, with \a ieds before it.
inline QByteArray TemplateFile(const QByteArray& types, const QByteArray& ieds = QByteArray())
{
    return "<SCL>" + ieds + "<DataTypeTemplates>" + types + "</DataTypeTemplates></SCL>";
}

/// "tag id", one text per element; "null" for a null one. Other elements go by their `name`.
inline QString IdText(SCLElement* element)
{
    if (element == nullptr)
        return QStringLiteral("null");
    const QString id = element->GetAttribute(QStringLiteral("id"));
    return element->GetTag() + QLatin1Char(' ') +
           (id.isEmpty() ? element->GetAttribute(QStringLiteral("name")) : id);
}

inline QStringList IdTexts(const QList<SCLElement*>& elements)
{
    QStringList texts;
    for (SCLElement* element : elements)
        texts.append(IdText(element));
    return texts;
}

/// Adds a child with attributes given as name, value, name, value and so on.
inline SCLElement* AddChild(SCLElement* parent, const QString& tag,
                            const QStringList& attributes = QStringList())
{
    SCLElement* child = parent->CreateChild(tag, -1, false);
    for (int i = 0; i + 1 < attributes.size(); i += 2)
        child->SetAttribute(attributes.at(i), attributes.at(i + 1), false);
    return child;
}

/// The new document's root, with an empty `DataTypeTemplates`.
inline SCLElement* AddTemplates(SCLDocument* document)
{
    return AddChild(document->CreateRoot(QStringLiteral("SCL")),
                    QStringLiteral("DataTypeTemplates"));
}

/// What the navigation stands on, once more as plain loops.
namespace Plain
{

inline QList<SCLElement*> ChildrenOf(SCLElement* element, const QString& tag)
{
    QList<SCLElement*> matches;
    const QList<SCLElement*> children = element->GetChildList();
    for (SCLElement* child : children) {
        if (child->GetTag() == tag)
            matches.append(child);
    }
    return matches;
}

inline SCLElement* FirstNamed(const QList<SCLElement*>& elements, const QString& attribute,
                              const QString& value)
{
    for (SCLElement* element : elements) {
        if (element->GetAttribute(attribute) == value)
            return element;
    }
    return nullptr;
}

inline SCLElement* TypeOf(SCLElement* element, const QString& reference, const QString& tag)
{
    if (element == nullptr || element->GetDocument() == nullptr)
        return nullptr;
    SCLElement* root = element->GetDocument()->Root();
    const QList<SCLElement*> templates = root != nullptr
                                             ? ChildrenOf(root, QStringLiteral("DataTypeTemplates"))
                                             : QList<SCLElement*>();
    if (templates.isEmpty())
        return nullptr;
    return FirstNamed(ChildrenOf(templates.first(), tag), QStringLiteral("id"),
                      element->GetAttribute(reference));
}

} // namespace Plain

/// Small documents with IEDs and templates at random: references that lead nowhere or in circles,
/// equal ids, attributes that are empty or missing, tags in places where none of them belongs.
class RandomTemplates
{
public:
    explicit RandomTemplates(unsigned seed) : m_engine(seed) {}

    int UpTo(int end) { return static_cast<int>(m_engine() % static_cast<unsigned>(end)); }
    QString Name() { return Pick({"", "a", "b", "c", "A"}); }
    QString BType() { return Pick({"", "Struct", "Struct", "Enum", "BOOLEAN", "INT16", "struct"}); }
    QString Path()
    {
        QString path = Name();
        for (int rest = UpTo(4); rest > 0; --rest)
            path += QLatin1Char('.') + Name();
        return path;
    }
    QList<SCLElement*> Some(const QList<SCLElement*>& elements)
    {
        QList<SCLElement*> some;
        for (int i = elements.isEmpty() ? 0 : UpTo(4); i > 0; --i)
            some.append(elements.at(UpTo(static_cast<int>(elements.size()))));
        return some;
    }

    void Fill(SCLElement* root)
    {
        for (int i = UpTo(3); i > 0; --i)
            AddIED(root);
        // Mostly one; the second one of two must never count.
        for (int i = UpTo(8) == 0 ? UpTo(3) : 1; i > 0; --i)
            AddTypes(AddChild(root, "DataTypeTemplates"));
    }

    /// Makes references among types that lead back to a type itself or before it lead nowhere.
    static void RemoveCircles(SCLElement* root)
    {
        SCLElement* templates = root->GetFirstChild("DataTypeTemplates");
        if (templates == nullptr)
            return;
        RemoveCircles(templates->FindChildByType("DOType", false), "SDO");
        RemoveCircles(templates->FindChildByType("DAType", false), "BDA");
    }

private:
    static void RemoveCircles(const QList<SCLElement*>& types, const QString& memberTag)
    {
        for (int i = 0; i < types.size(); ++i) {
            const QList<SCLElement*> members = Plain::ChildrenOf(types.at(i), memberTag);
            for (SCLElement* member : members) {
                SCLElement* target = Plain::FirstNamed(types, "id", member->GetAttribute("type"));
                if (target != nullptr && types.indexOf(target) <= i)
                    member->SetAttribute("type", "nowhere", false);
            }
        }
    }

    QString Pick(const QList<const char*>& texts)
    {
        return QString::fromLatin1(texts.at(UpTo(static_cast<int>(texts.size()))));
    }

    void Set(SCLElement* element, const char* name, const QString& value)
    {
        if (UpTo(10) > 0)
            element->SetAttribute(QString::fromLatin1(name), value, false);
    }

    void AddTypes(SCLElement* templates)
    {
        for (int i = UpTo(14); i > 0; --i) {
            const QString tag = Pick({"LNodeType", "DOType", "DOType", "DAType", "EnumType"});
            SCLElement* type = AddChild(templates, tag);
            Set(type, "id", Name());
            for (int k = UpTo(4); k > 0; --k)
                AddMember(type);
        }
    }

    void AddMember(SCLElement* type)
    {
        const QString tag = type->GetTag();
        QString memberTag = tag == QLatin1String("LNodeType")
                                ? QStringLiteral("DO")
                                : Pick({tag == QLatin1String("DOType") ? "SDO" : "BDA",
                                        tag == QLatin1String("DOType") ? "DA" : "BDA"});
        if (UpTo(12) == 0)
            memberTag = Pick({"DO", "SDO", "DA", "BDA", "Private"});
        SCLElement* member = AddChild(type, memberTag);
        Set(member, "name", Name());
        Set(member, "type", Name());
        Set(member, "bType", BType());
    }

    void AddIED(SCLElement* root)
    {
        SCLElement* ied = AddChild(root, "IED");
        for (int i = UpTo(3); i > 0; --i) {
            SCLElement* accessPoint = AddChild(ied, "AccessPoint");
            for (int k = UpTo(3); k > 0; --k)
                AddServer(accessPoint);
            AddNode(accessPoint, "LN");
        }
    }

    void AddServer(SCLElement* accessPoint)
    {
        SCLElement* server = AddChild(accessPoint, "Server");
        for (int i = UpTo(3); i > 0; --i) {
            SCLElement* lDevice = AddChild(server, "LDevice");
            for (int k = UpTo(5); k > 0; --k)
                AddNode(lDevice, Pick({"LN0", "LN", "LN"}));
        }
    }

    void AddNode(SCLElement* parent, const QString& tag)
    {
        SCLElement* node = AddChild(parent, tag);
        Set(node, "lnType", Name());
        for (int i = UpTo(3); i > 0; --i)
            Set(AddChild(node, "DOI"), "name", Name());
    }

    std::mt19937 m_engine;
};

} // namespace Corvane::Test
