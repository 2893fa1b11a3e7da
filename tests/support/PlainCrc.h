// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/ElementText.h"

#include <corvane/crc/CrcGenerator.h>
#include <corvane/help/SCLHelp.h>

#include <QMap>
#include <QXmlStreamWriter>

#include <algorithm>
#include <memory>
#include <vector>

/// \file
/// The content of CRCs once more: with SCLHelp for each look-up, with recursion, and written by a
/// `QXmlStreamWriter`. Slow, and simple enough to be believed.

namespace Corvane::Test::Plain
{

using Elements = QList<SCLElement*>;
using Type = CrcGenerator::GeneratorType;

struct Attribute {
    Type type;
    QString name;
    QString value;
};

struct Node {
    QString tag;
    QString text;
    std::vector<Attribute> attributes;
    std::vector<Node> children;

    void Sort()
    {
        std::stable_sort(attributes.begin(), attributes.end(),
                         [](const Attribute& a, const Attribute& b) { return a.name < b.name; });
    }
};

inline bool Shows(Type node, Type rendering)
{
    return node == rendering || node == CrcGenerator::GeneratorBoth;
}

inline QString Marked(QString text, Type rendering)
{
    return rendering == CrcGenerator::GeneratorCanonical ? text.replace(" ", "@wspace@") : text;
}

inline void Write(const Node& node, QXmlStreamWriter& writer, Type rendering)
{
    writer.writeStartElement(node.tag);
    for (const Attribute& attribute : node.attributes) {
        if (Shows(attribute.type, rendering))
            writer.writeAttribute(attribute.name, Marked(attribute.value, rendering));
    }
    for (const Node& child : node.children)
        Write(child, writer, rendering);
    if (node.children.empty() && !node.text.isEmpty())
        writer.writeCharacters(Marked(node.text, rendering));
    writer.writeEndElement();
}

inline QByteArray Canonical(const Node& root)
{
    QByteArray bytes;
    {
        QXmlStreamWriter writer(&bytes);
        writer.setAutoFormatting(false);
        writer.writeStartDocument();
        Write(root, writer, CrcGenerator::GeneratorCanonical);
        writer.writeEndDocument();
    }
    return bytes.trimmed().replace(" ", "").replace("@wspace@", " ");
}

/// The tree of one IED, and whether it is complete.
class Builder
{
public:
    explicit Builder(SCLElement* ied) : m_ied(ied) {}

    bool IsComplete() const { return m_complete; }
    bool HasConnection() const { return m_connection; }

    Node Build()
    {
        Node root{m_ied->GetTag(), QString(), {}, {}};
        const QList<QPair<Type, QString>> attributes = {
            {CrcGenerator::GeneratorReadable, "configVersion"},
            {CrcGenerator::GeneratorReadable, "desc"},
            {CrcGenerator::GeneratorReadable, "manufacturer"},
            {CrcGenerator::GeneratorBoth, "name"},
            {CrcGenerator::GeneratorReadable, "type"}};
        for (const auto& attribute : attributes)
            root.attributes.push_back(
                {attribute.first, attribute.second, m_ied->GetAttribute(attribute.second)});
        for (const bool goose : {true, false}) {
            AddPublications(goose, root);
            AddSubscriptions(goose, root);
        }
        m_connection = !root.children.empty();
        return root;
    }

private:
    using Excluded = QMap<QString, QMap<QString, QString>>;

    static Node Copy(SCLElement* element, bool recursive, const Excluded& excluded = {})
    {
        Node node{element->GetTag(), element->GetValue(), {}, {}};
        const QList<SCLAttribute*> attributes = element->GetAttributeList();
        for (const SCLAttribute* attribute : attributes) {
            if (attribute->GetName() != QLatin1String("desc"))
                node.attributes.push_back(
                    {CrcGenerator::GeneratorBoth, attribute->GetName(), attribute->GetValue()});
        }
        node.Sort();
        const Elements children = recursive ? element->GetSortedChildList() : Elements();
        for (SCLElement* child : children) {
            if (!IsExcluded(child, excluded))
                node.children.push_back(Copy(child, true, excluded));
        }
        return node;
    }

    static bool IsExcluded(SCLElement* child, const Excluded& excluded)
    {
        if (!excluded.contains(child->GetTag()))
            return false;
        const QMap<QString, QString> pairs = excluded.value(child->GetTag());
        for (auto it = pairs.begin(); it != pairs.end(); ++it) {
            if (child->GetAttribute(it.key()) == it.value())
                return true;
        }
        return pairs.isEmpty();
    }

    static Node CopyData(SCLElement* source)
    {
        return Copy(source, true, {{"DAI", {{"name", "dU"}}}});
    }

    static SCLElement* EntryOf(bool goose, SCLElement* control)
    {
        return goose ? SCLHelp::GetGSEFromGSEControl(control)
                     : SCLHelp::GetSMVFromSMVControl(control);
    }

    static Node ReferenceOf(bool goose, SCLElement* control)
    {
        return {goose ? "GOCBref" : "SMVCBref",
                QString(),
                {{CrcGenerator::GeneratorBoth, "name", SCLHelp::GetElementRefName(control, true)}},
                {}};
    }

    Elements Controls(bool goose) const
    {
        Elements controls;
        const Elements accessPoints = m_ied->FindChildByType("AccessPoint", false);
        for (SCLElement* accessPoint : accessPoints) {
            SCLElement* server = accessPoint->GetFirstChild("Server");
            const Elements lDevices =
                server ? server->FindChildByType("LDevice", false) : Elements();
            for (SCLElement* lDevice : lDevices) {
                if (SCLElement* ln0 = lDevice->GetFirstChild("LN0"))
                    controls +=
                        ln0->FindChildByType(goose ? "GSEControl" : "SampledValueControl", false);
            }
        }
        return controls;
    }

    void AddPublications(bool goose, Node& root)
    {
        const Elements controls = Controls(goose);
        if (controls.isEmpty())
            return;
        Node section{goose ? "GOOSEPUB" : "SVPUB", QString(), {}, {}};
        for (SCLElement* control : controls) {
            Node reference = ReferenceOf(goose, control);
            m_complete = AddPublication(goose, control, reference) && m_complete;
            section.children.push_back(reference);
        }
        root.children.push_back(section);
    }

    bool AddPublication(bool goose, SCLElement* control, Node& reference)
    {
        reference.children.push_back(Copy(control, true));
        SCLElement* entry = EntryOf(goose, control);
        SCLElement* connectedAP = entry ? entry->GetParent(QString()) : nullptr;
        if (!connectedAP)
            return false;
        Node connection = Copy(connectedAP, false);
        const Elements children = connectedAP->GetSortedChildList();
        for (SCLElement* child : children) {
            const QString tag = child->GetTag();
            const bool isOther = tag == QLatin1String(goose ? "GSE" : "SMV") && child != entry;
            if (tag != QLatin1String("Address") && !isOther)
                connection.children.push_back(Copy(child, true));
        }
        reference.children.push_back(connection);
        SCLElement* dataSet = control->GetParent(QString())->FindChild(
            "DataSet", "name", control->GetAttribute("datSet"), false);
        if (!dataSet)
            return false;
        Node members = Copy(dataSet, false);
        const Elements fcdas = dataSet->GetSortedChildList();
        for (SCLElement* fcda : fcdas)
            members.children.push_back(fcda->GetTag() == QLatin1String("FCDA") ? PublishedFcda(fcda)
                                                                               : Copy(fcda, true));
        reference.children.push_back(members);
        return true;
    }

    // The node of an FCDA, and the data object that it names.
    static Node FcdaOf(SCLElement* fcda, Type type, SCLElement*& doi)
    {
        Node node{fcda->GetTag(), fcda->GetValue(), {}, {}};
        const QList<SCLAttribute*> attributes = fcda->GetAttributeList();
        for (const SCLAttribute* attribute : attributes)
            node.attributes.push_back({type, attribute->GetName(), attribute->GetValue()});
        doi = SCLHelp::GetDOIFromFCDA(fcda);
        const QString desc = doi ? doi->GetAttribute("desc") : QString();
        if (!desc.isEmpty())
            node.attributes.push_back({CrcGenerator::GeneratorReadable, "desc", desc});
        const QString bType = BTypeOf(doi, fcda->GetAttribute("daName"));
        if (!bType.isEmpty())
            node.attributes.push_back({CrcGenerator::GeneratorBoth, "bType", bType});
        node.Sort();
        return node;
    }

    static QString BTypeOf(SCLElement* doi, const QString& daName)
    {
        if (!doi || daName.isEmpty())
            return QString();
        SCLElement* dataObject = SCLHelp::GetDOFromDOI(doi);
        SCLElement* doType = dataObject ? SCLHelp::GetDOTypeFromDO(dataObject) : nullptr;
        SCLElement* da = doType ? SCLHelp::GetDAFromDOTypeAndName(doType, daName) : nullptr;
        return da ? da->GetAttribute("bType") : QString();
    }

    static Node PublishedFcda(SCLElement* fcda)
    {
        SCLElement* doi = nullptr;
        Node node = FcdaOf(fcda, CrcGenerator::GeneratorBoth, doi);
        const QString daName = fcda->GetAttribute("daName");
        SCLElement* source = daName.isEmpty() ? doi : SCLHelp::GetDAIFromDOIAndName(doi, daName);
        if (source)
            node.children.push_back(CopyData(source));
        return node;
    }

    void AddSubscriptions(bool goose, Node& root)
    {
        const QList<SCLHelp::Input_CB> inputs = goose ? SCLHelp::GetGSEControlFromIEDInputs(m_ied)
                                                      : SCLHelp::GetSMVControlFromIEDInputs(m_ied);
        if (inputs.isEmpty())
            return;
        Node section{goose ? "GOOSESUB" : "SVSUB", QString(), {}, {}};
        for (const SCLHelp::Input_CB& input : inputs) {
            Node reference = ReferenceOf(goose, input.controlBlock);
            m_complete = AddSubscription(goose, input, reference) && m_complete;
            section.children.push_back(reference);
        }
        root.children.push_back(section);
    }

    static bool AddSubscription(bool goose, const SCLHelp::Input_CB& input, Node& reference)
    {
        reference.children.push_back(Copy(input.controlBlock, true, {{"Private", {}}}));
        SCLElement* entry = EntryOf(goose, input.controlBlock);
        SCLElement* connectedAP = entry ? entry->GetParent(QString()) : nullptr;
        if (!connectedAP)
            return false;
        Node connection = Copy(connectedAP, false);
        connection.children.push_back(Copy(entry, true));
        reference.children.push_back(connection);
        Node members = Copy(input.dataSet, false);
        bool ok = true;
        const Elements fcdas = input.dataSet->FindChildByType("FCDA", false);
        for (SCLElement* fcda : fcdas) {
            Elements extRefs;
            for (int i = 0; i < input.fcdas.size(); ++i) {
                if (input.fcdas.at(i) == fcda)
                    extRefs.append(input.extRefs.at(i));
            }
            members.children.push_back(SubscribedFcda(fcda, extRefs, ok));
        }
        reference.children.push_back(members);
        return ok;
    }

    static Node Terminal(const QString& desc, const QString& name)
    {
        return {"intAddr",
                QString(),
                {{CrcGenerator::GeneratorReadable, "desc", desc},
                 {CrcGenerator::GeneratorBoth, "name", name}},
                {}};
    }

    static Node SubscribedFcda(SCLElement* fcda, const Elements& extRefs, bool& ok)
    {
        SCLElement* sent = nullptr;
        Node node = FcdaOf(fcda, CrcGenerator::GeneratorReadable, sent);
        if (extRefs.isEmpty())
            node.children.push_back(Terminal(QString(), "NULL"));
        for (SCLElement* extRef : extRefs) {
            const QString intAddr = extRef->GetAttribute("intAddr");
            SCLElement* doi = nullptr;
            SCLElement* source = SourceOf(extRef, intAddr, doi);
            Node terminal = Terminal(doi ? doi->GetAttribute("desc") : QString(), intAddr);
            if (source)
                terminal.children.push_back(CopyData(source));
            ok = ok && source;
            node.children.push_back(terminal);
        }
        return node;
    }

    static SCLElement* SourceOf(SCLElement* extRef, const QString& intAddr, SCLElement*& doi)
    {
        QString port;
        QString ldInst;
        QString lnName;
        QString doName;
        QString daName;
        if (!SCLHelp::ParseExtRefIntAddr(intAddr, port, ldInst, lnName, doName, daName))
            return nullptr;
        SCLElement* server = extRef->GetParent("Server");
        SCLElement* lDevice =
            server ? server->FindChild("LDevice", "inst", ldInst, false) : nullptr;
        SCLElement* ln = lDevice ? lDevice->FindChild(lnName) : nullptr;
        doi = SCLHelp::GetDOIFromLNAndName(ln, doName);
        return daName.isEmpty() ? doi : SCLHelp::GetDAIFromDOIAndName(doi, daName);
    }

    SCLElement* m_ied;
    bool m_complete = true;
    bool m_connection = false;
};

/// Of an IED: the result and the canonical content, or null for no connection.
inline QByteArray ContentOf(SCLElement* ied, CrcGenerator::CrcResult& result)
{
    Builder builder(ied);
    const Node root = builder.Build();
    result = builder.IsComplete() ? CrcGenerator::CrcSuccess : CrcGenerator::CrcFailed;
    if (builder.HasConnection())
        return Canonical(root);
    result = CrcGenerator::CrcNoConnection;
    return QByteArray();
}

} // namespace Corvane::Test::Plain
