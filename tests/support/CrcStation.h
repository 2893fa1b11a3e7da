// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QtGlobal>

namespace Corvane::Test
{

/// A text with \a from, which must stand in it, replaced by \a to.
inline QByteArray Replaced(QByteArray text, const QByteArray& from, const QByteArray& to)
{
    if (!text.contains(from))
        qFatal("there is no %s", from.constData());
    return text.replace(from, to);
}

/// A station that CRCs are generated of: P publishes by GOOSE and sampled values, S subscribes to
/// both, N does neither. The tests of one topic replace a piece of it.
inline QByteArray CrcStationText()
{
    return R"(<SCL>
<Header id='h'/>
<Communication><SubNetwork name='W'>
  <ConnectedAP iedName='P' apName='A' desc='switch 1'>
    <Address><P type='IP'>10.0.0.1</P></Address>
    <GSE ldInst='L' cbName='g'><Address><P type='APPID'>0001</P></Address></GSE>
    <SMV ldInst='L' cbName='v'><Address><P type='APPID'>4001</P></Address></SMV>
    <PhysConn type='Connection'><P type='Port'>1-A</P></PhysConn>
  </ConnectedAP>
</SubNetwork></Communication>
<IED name='P' desc='the publisher' type='T1' manufacturer='M1' configVersion='V1'>
<AccessPoint name='A'><Server><LDevice inst='L'>
  <LN0 lnClass='LLN0' inst='' lnType='zero'>
    <DataSet name='dsG' desc='positions'>
      <FCDA ldInst='L' prefix='Q' lnClass='XCBR' lnInst='1' doName='Pos' daName='stVal' fc='ST'/>
      <FCDA ldInst='L' prefix='Q' lnClass='XCBR' lnInst='1' doName='Pos' daName='q' fc='ST'/>
    </DataSet>
    <DataSet name='dsV'>
      <FCDA ldInst='L' lnClass='TCTR' lnInst='1' doName='Amp' fc='MX'/>
    </DataSet>
    <GSEControl name='g' datSet='dsG' confRev='1' appID='P g'>
      <Private type='own'>p</Private>
    </GSEControl>
    <SampledValueControl name='v' datSet='dsV' confRev='1' smvID='P v'/>
  </LN0>
  <LN prefix='Q' lnClass='XCBR' inst='1' lnType='breaker'>
    <DOI name='Pos' desc='breaker position'>
      <DAI name='stVal' sAddr='1.2' desc='hidden'><Val>off</Val></DAI>
    </DOI>
  </LN>
  <LN lnClass='TCTR' inst='1' lnType='transformer'>
    <DOI name='Amp' desc='current'>
      <SDI name='instMag' desc='hidden'>
        <DAI name='i'/>
      </SDI>
      <DAI name='q'/>
      <DAI name='dU'><Val>A</Val></DAI>
    </DOI>
  </LN>
</LDevice></Server></AccessPoint></IED>
<IED name='S'><AccessPoint name='A'><Server><LDevice inst='R'>
  <LN0 lnClass='LLN0' inst='' lnType='zero'>
    <Inputs>
      <ExtRef iedName='P' ldInst='L' prefix='Q' lnClass='XCBR' lnInst='1' doName='Pos'
              daName='stVal' intAddr='1-A:R/INGGIO1.Ind1.stVal'/>
      <ExtRef iedName='P' ldInst='L' lnClass='TCTR' lnInst='1' doName='Amp'
              intAddr='2-A:R/INGGIO1.AnIn1'/>
    </Inputs>
  </LN0>
  <LN prefix='IN' lnClass='GGIO' inst='1' lnType='inputs'>
    <DOI name='Ind1' desc='input 1'><DAI name='stVal' sAddr='9.1'/></DOI>
    <DOI name='AnIn1' desc='input 2'><DAI name='mag' sAddr='9.2'/><DAI name='dU'/></DOI>
  </LN>
</LDevice></Server></AccessPoint></IED>
<IED name='N'><AccessPoint name='A'><Server><LDevice inst='R'>
  <LN0 lnClass='LLN0' inst='' lnType='zero'/>
</LDevice></Server></AccessPoint></IED>
<DataTypeTemplates>
  <LNodeType id='zero' lnClass='LLN0'/>
  <LNodeType id='breaker' lnClass='XCBR'><DO name='Pos' type='dpc'/></LNodeType>
  <LNodeType id='transformer' lnClass='TCTR'><DO name='Amp' type='sav'/></LNodeType>
  <LNodeType id='inputs' lnClass='GGIO'><DO name='Ind1' type='sps'/></LNodeType>
  <DOType id='dpc' cdc='DPC'>
    <DA name='stVal' bType='Dbpos' fc='ST'/><DA name='q' bType='Quality' fc='ST'/>
  </DOType>
  <DOType id='sav' cdc='SAV'>
    <DA name='instMag' bType='Struct' type='value' fc='MX'/>
  </DOType>
  <DOType id='sps' cdc='SPS'><DA name='stVal' bType='BOOLEAN' fc='ST'/></DOType>
  <DAType id='value'><BDA name='i' bType='INT32'/></DAType>
</DataTypeTemplates>
</SCL>)";
}

/// The same with a piece of it replaced.
inline QByteArray CrcStationText(const QByteArray& from, const QByteArray& to)
{
    return Replaced(CrcStationText(), from, to);
}

} // namespace Corvane::Test
