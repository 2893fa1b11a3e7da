// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/elements/SCLVocabulary.h>

#include <QString>

/// \file
/// Tags and attribute names as texts that searches take without making one at each call.

namespace Corvane::Internal::Tag
{

inline const QString Communication = QLatin1String(g_szTagCommunication);
inline const QString SubNetwork = QLatin1String(g_szTagSubNetwork);
inline const QString ConnectedAP = QLatin1String(g_szTagConnectedAP);
inline const QString GSE = QLatin1String(g_szTagGSE);
inline const QString SMV = QLatin1String(g_szTagSMV);
inline const QString IED = QLatin1String(g_szTagIED);
inline const QString AccessPoint = QLatin1String(g_szTagAccessPoint);
inline const QString Server = QLatin1String(g_szTagServer);
inline const QString LDevice = QLatin1String(g_szTagLDevice);
inline const QString LN0 = QLatin1String(g_szTagLN0);
inline const QString LN = QLatin1String(g_szTagLN);
inline const QString DataSet = QLatin1String(g_szTagDataSet);
inline const QString FCDA = QLatin1String(g_szTagFCDA);
inline const QString GSEControl = QLatin1String(g_szTagGSEControl);
inline const QString SampledValueControl = QLatin1String(g_szTagSampledValueControl);
inline const QString ReportControl = QLatin1String(g_szTagReportControl);
inline const QString LogControl = QLatin1String(g_szTagLogControl);
inline const QString SettingControl = QLatin1String(g_szTagSettingControl);
inline const QString Inputs = QLatin1String(g_szTagInputs);
inline const QString ExtRef = QLatin1String(g_szTagExtRef);
inline const QString DOI = QLatin1String(g_szTagDOI);
inline const QString SDI = QLatin1String(g_szTagSDI);
inline const QString DAI = QLatin1String(g_szTagDAI);
inline const QString DataTypeTemplates = QLatin1String(g_szTagDataTypeTemplates);
inline const QString LNodeType = QLatin1String(g_szTagLNodeType);
inline const QString DOType = QLatin1String(g_szTagDOType);
inline const QString DAType = QLatin1String(g_szTagDAType);
inline const QString EnumType = QLatin1String(g_szTagEnumType);
inline const QString DO = QLatin1String(g_szTagDO);
inline const QString SDO = QLatin1String(g_szTagSDO);
inline const QString DA = QLatin1String(g_szTagDA);
inline const QString BDA = QLatin1String(g_szTagBDA);
inline const QString Address = QLatin1String(g_szTagAddress);
inline const QString P = QLatin1String(g_szTagP);
inline const QString PhysConn = QLatin1String(g_szTagPhysConn);
inline const QString MinTime = QStringLiteral("MinTime");
inline const QString MaxTime = QStringLiteral("MaxTime");
inline const QString Substation = QLatin1String(g_szTagSubstation);
inline const QString Hitem = QStringLiteral("Hitem");
inline const QString VoltageLevel = QStringLiteral("VoltageLevel");
inline const QString Bay = QStringLiteral("Bay");
inline const QString PowerTransformer = QStringLiteral("PowerTransformer");
inline const QString TransformerWinding = QStringLiteral("TransformerWinding");
inline const QString ConductingEquipment = QStringLiteral("ConductingEquipment");
inline const QString ConnectivityNode = QStringLiteral("ConnectivityNode");
inline const QString Terminal = QStringLiteral("Terminal");
inline const QString Association = QStringLiteral("Association");
inline const QString ClientLN = QStringLiteral("ClientLN");
inline const QString IEDName = QStringLiteral("IEDName");
inline const QString KDC = QStringLiteral("KDC");
inline const QString RptEnabled = QStringLiteral("RptEnabled");
inline const QString LNode = QStringLiteral("LNode");
inline const QString Private = QLatin1String(g_szTagPrivate);
inline const QString Val = QLatin1String(g_szTagVal);

} // namespace Corvane::Internal::Tag

namespace Corvane::Internal::Attribute
{

inline const QString apName = QStringLiteral("apName");
inline const QString appID = QStringLiteral("appID");
inline const QString bType = QStringLiteral("bType");
inline const QString cbName = QStringLiteral("cbName");
inline const QString cdc = QStringLiteral("cdc");
inline const QString daName = QStringLiteral("daName");
inline const QString datSet = QStringLiteral("datSet");
inline const QString desc = QStringLiteral("desc");
inline const QString doName = QStringLiteral("doName");
inline const QString iedName = QStringLiteral("iedName");
inline const QString fc = QStringLiteral("fc");
inline const QString id = QStringLiteral("id");
inline const QString inst = QStringLiteral("inst");
inline const QString intAddr = QStringLiteral("intAddr");
inline const QString ldInst = QStringLiteral("ldInst");
inline const QString ldName = QStringLiteral("ldName");
inline const QString lnClass = QStringLiteral("lnClass");
inline const QString lnInst = QStringLiteral("lnInst");
inline const QString lnType = QStringLiteral("lnType");
inline const QString multicast = QStringLiteral("multicast");
inline const QString name = QStringLiteral("name");
inline const QString prefix = QStringLiteral("prefix");
inline const QString revision = QStringLiteral("revision");
inline const QString rptID = QStringLiteral("rptID");
inline const QString sAddr = QStringLiteral("sAddr");
inline const QString smvID = QStringLiteral("smvID");
inline const QString type = QStringLiteral("type");
inline const QString version = QStringLiteral("version");

} // namespace Corvane::Internal::Attribute
