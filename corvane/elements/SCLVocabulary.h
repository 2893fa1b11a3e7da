// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// The words of the SCL language (IEC 61850-6) and of this library that its code and its hosts
/// share. All texts are Latin-1: compare them through `QLatin1String`, or turn them into a
/// `QString` with `QString::fromLatin1`. Attribute names have no constants.

namespace Corvane
{

/// Tool identity that a new SCLDocControl starts with; saving writes it to `Header.toolID`.
static const char* const g_szDefaultToolId = "TALVEN-CFG";
/// Value that saving writes to `Header.nameStructure`.
static const char* const g_szNameStructureIEDName = "IEDName";
/// Data attribute names, comma-separated, in the order in which a short address of functional
/// constraint "ST" is looked for.
static const char* const g_szStatusDANames =
    "stVal,setVal,t,general,phsA,phsB,phsC,neut,dirGeneral,dirPhsA,dirPhsB,dirPhsC,dirNeut";
/// The same for functional constraint "MX".
static const char* const g_szMeasureDANames = "instMag.i,mag.f";
/// `type` of the `Private` element that holds the CRC of an IED.
static const char* const g_szIEDCrcPrivateType = "IED virtual terminal conection CRC";
/// `type` of the `Private` element that holds the CRC of the whole file.
static const char* const g_szSubstationCrcPrivateType = "Substation virtual terminal conection CRC";

// Tags of SCL elements.
static const char* const g_szTagSCL = "SCL";
static const char* const g_szTagPrivate = "Private";
static const char* const g_szTagHeader = "Header";
static const char* const g_szTagHistory = "History";
static const char* const g_szTagSubstation = "Substation";
static const char* const g_szTagCommunication = "Communication";
static const char* const g_szTagSubNetwork = "SubNetwork";
static const char* const g_szTagConnectedAP = "ConnectedAP";
static const char* const g_szTagAddress = "Address";
static const char* const g_szTagGSE = "GSE";
static const char* const g_szTagSMV = "SMV";
static const char* const g_szTagPhysConn = "PhysConn";
static const char* const g_szTagP = "P";
static const char* const g_szTagIED = "IED";
static const char* const g_szTagServices = "Services";
static const char* const g_szTagAccessPoint = "AccessPoint";
static const char* const g_szTagServer = "Server";
static const char* const g_szTagLDevice = "LDevice";
static const char* const g_szTagLN0 = "LN0";
static const char* const g_szTagLN = "LN";
static const char* const g_szTagDataSet = "DataSet";
static const char* const g_szTagFCDA = "FCDA";
static const char* const g_szTagReportControl = "ReportControl";
static const char* const g_szTagLogControl = "LogControl";
static const char* const g_szTagGSEControl = "GSEControl";
static const char* const g_szTagSettingControl = "SettingControl";
static const char* const g_szTagSampledValueControl = "SampledValueControl";
static const char* const g_szTagInputs = "Inputs";
static const char* const g_szTagExtRef = "ExtRef";
static const char* const g_szTagDOI = "DOI";
static const char* const g_szTagSDI = "SDI";
static const char* const g_szTagDAI = "DAI";
static const char* const g_szTagVal = "Val";
static const char* const g_szTagDataTypeTemplates = "DataTypeTemplates";
static const char* const g_szTagLNodeType = "LNodeType";
static const char* const g_szTagDOType = "DOType";
static const char* const g_szTagDAType = "DAType";
static const char* const g_szTagEnumType = "EnumType";
static const char* const g_szTagDO = "DO";
static const char* const g_szTagSDO = "SDO";
static const char* const g_szTagDA = "DA";
static const char* const g_szTagBDA = "BDA";
static const char* const g_szTagEnumVal = "EnumVal";

} // namespace Corvane
