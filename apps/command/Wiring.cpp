// SPDX-License-Identifier: Apache-2.0
#include "apps/command/Wiring.h"

#include "apps/command/Report.h"

#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLVocabulary.h>

#include <QPair>
#include <QSet>

namespace Corvane::Command
{

namespace
{

using Elements = QList<SCLElement*>;
using AccessPoints = QSet<QPair<QString, QString>>;

QString Get(SCLElement* element, const char* attribute)
{
    return element->GetAttribute(QLatin1String(attribute));
}

Elements Children(SCLElement* parent, const char* tag)
{
    return parent->FindChildByType(QLatin1String(tag), false);
}

AccessPoints AccessPointsOf(SCLElement* root)
{
    AccessPoints known;
    const Elements ieds = Children(root, g_szTagIED);
    for (SCLElement* ied : ieds) {
        const Elements accessPoints = Children(ied, g_szTagAccessPoint);
        for (SCLElement* accessPoint : accessPoints)
            known.insert({Get(ied, "name"), Get(accessPoint, "name")});
    }
    return known;
}

QStringList ValuesOf(SCLElement* physConn, const char* type)
{
    QStringList values;
    const Elements settings = Children(physConn, g_szTagP);
    for (SCLElement* setting : settings) {
        if (Get(setting, "type") == QLatin1String(type))
            values.append(setting->GetValue());
    }
    return values;
}

} // namespace

Wiring::Wiring(SCLElement* root)
{
    SCLElement* communication = root->GetFirstChild(QLatin1String(g_szTagCommunication));
    if (communication == nullptr)
        return;
    const AccessPoints known = AccessPointsOf(root);
    const Elements subNetworks = Children(communication, g_szTagSubNetwork);
    for (SCLElement* subNetwork : subNetworks) {
        const Elements connectedAPs = Children(subNetwork, g_szTagConnectedAP);
        for (SCLElement* connectedAP : connectedAPs)
            Add(connectedAP,
                known.contains({Get(connectedAP, "iedName"), Get(connectedAP, "apName")}));
    }
}

void Wiring::Add(SCLElement* connectedAP, bool isKnown)
{
    const QString ied = Get(connectedAP, "iedName");
    const Elements physConns = Children(connectedAP, g_szTagPhysConn);
    for (SCLElement* physConn : physConns) {
        const Plug plug = {ied, Get(connectedAP, "apName"), isKnown, ValuesOf(physConn, "Port"),
                           ValuesOf(physConn, "Cable")};
        if (plug.ports.isEmpty() && plug.cables.isEmpty())
            continue;
        const int position = static_cast<int>(m_plugs.size());
        m_plugs.append(plug);
        m_plugsOfIed[ied].append(position);
        for (const QString& cable : plug.cables) {
            QList<int>& ends = m_ends[cable];
            if (ends.isEmpty())
                m_cables.append(cable);
            if (ends.isEmpty() || ends.constLast() != position)
                ends.append(position);
        }
    }
}

QList<int> Wiring::FarEndsOf(int plug) const
{
    const QStringList& cables = m_plugs[plug].cables;
    QList<int> ends = cables.isEmpty() ? QList<int>() : EndsOf(cables.constFirst());
    ends.removeOne(plug);
    return ends;
}

QString TextOf(const Wiring::Plug& plug)
{
    const QString ports =
        plug.ports.isEmpty() ? QStringLiteral("(no port)") : plug.ports.join(QLatin1Char('/'));
    return Escaped(plug.ied + QLatin1Char(' ') + plug.accessPoint + QLatin1Char(' ') + ports);
}

} // namespace Corvane::Command
