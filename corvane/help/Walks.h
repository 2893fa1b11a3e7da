// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// \file
/// The walks that navigation, editing and CRC share, each with its rule in its name. They keep no
/// state; lists are in child order and null arguments give null or nothing. Where functions differ
/// in what they walk, they keep walks of their own.

namespace Corvane
{

class SCLElement;

namespace Internal
{

/// The root of an element's document, or null without one.
SCLElement* RootOf(const SCLElement* element);
/// The first `Communication` of that root, or null.
SCLElement* FirstCommunicationOf(const SCLElement* element);
/// The first `DataTypeTemplates` of a root, or null.
SCLElement* FirstTemplatesOf(SCLElement* root);
/// The `ConnectedAP`s of a `Communication`, sub-network by sub-network.
QList<SCLElement*> ConnectedAPsBySubNetwork(SCLElement* communication);

/// The `LDevice`s of the first `Server`.
QList<SCLElement*> LDevicesOfFirstServer(SCLElement* accessPoint);
/// Those of all access points, each by its first `Server`.
QList<SCLElement*> LDevicesOfIED(SCLElement* ied);
/// The first `LN0`, if there is one, then all `LN`s.
QList<SCLElement*> NodesFirstLN0InFront(SCLElement* lDevice);

/// The control blocks of one tag in the first `LN0`.
QList<SCLElement*> ControlBlocksOfFirstLN0(SCLElement* lDevice, const QString& controlTag);
/// The `ExtRef`s in the first `Inputs` of a logical node.
QList<SCLElement*> ExtRefsOfFirstInputs(SCLElement* node);
/// The `ClientLN`s of a `ReportControl`'s first `RptEnabled`.
QList<SCLElement*> ClientLNsOfFirstRptEnabled(SCLElement* reportControl);
/// The port names of an `intAddr`: what stands before its one colon, cut at "/", empty parts kept.
/// None if there is not exactly one colon.
QStringList PortNamesOfIntAddr(const QString& intAddr);

/// The data sets of an IED: all access points, each by its first `Server`, and all nodes, the first
/// `LN0` of each `LDevice` in front.
QList<SCLElement*> DataSetsOfIED(SCLElement* ied);

} // namespace Internal
} // namespace Corvane
