// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/SmallStation.h"

#include <QByteArray>
#include <QtGlobal>

namespace Corvane::Test
{

/// A station in which P sends GOOSE g and sampled values v, S takes both in, and N does neither.
inline QByteArray ConnectedStation()
{
    return StationBegin() + R"(<Header id="h"/>
<Communication><SubNetwork name="W"><ConnectedAP iedName="P" apName="A">
  <Address><P type="IP">10.0.0.1</P></Address>
  <GSE ldInst="L" cbName="g">
    <Address><P type="MAC-Address">01-01</P><P type="VLAN-ID">005</P><P type="APPID">0001</P></Address>
    <MinTime unit="s" multiplier="m">10</MinTime>
  </GSE>
  <SMV ldInst="L" cbName="v"><Address><P type="MAC-Address">04-01</P></Address></SMV>
  <PhysConn type="Connection"><P type="Port">1-A</P></PhysConn>
</ConnectedAP></SubNetwork></Communication>
<IED name="P" type="T"><AccessPoint name="A"><Server><LDevice inst="L">
  <LN0 lnClass="LLN0" inst="" lnType="N">
    <DataSet name="ds" desc="signals">
      <FCDA ldInst="L" lnClass="GGIO" lnInst="1" doName="Ind1" daName="stVal" fc="ST"/>
      <FCDA ldInst="L" lnClass="GGIO" lnInst="1" doName="Ind2" daName="stVal" fc="ST"/>
      <FCDA ldInst="L" lnClass="GGIO" lnInst="1" doName="Ind3" fc="ST"/>
    </DataSet>
    <DataSet name="dv"><FCDA ldInst="L" lnClass="TCTR" lnInst="1" doName="Amp" fc="MX"/></DataSet>
    <GSEControl name="g" datSet="ds" confRev="1" appID="id" type="GOOSE"><IEDName apRef="A">S</IEDName></GSEControl>
    <SampledValueControl name="v" datSet="dv" smvID="sv" smpRate="80" nofASDU="1"><SmvOpts/></SampledValueControl>
  </LN0>
  <LN lnClass="GGIO" inst="1" lnType="G">
    <DOI name="Ind1" desc="Trip"><DAI name="stVal" sAddr="a1"/></DOI>
    <DOI name="Ind3"><SDI name="s"><DAI name="x"><Val>5</Val></DAI></SDI></DOI>
  </LN>
</LDevice></Server></AccessPoint></IED>
<IED name="S"><AccessPoint name="A"><Server><LDevice inst="K"><LN0 lnClass="LLN0" inst="" lnType="N"><Inputs>
    <ExtRef iedName="P" ldInst="L" lnClass="GGIO" lnInst="1" doName="Ind1" daName="stVal" intAddr="1-A:K/GGIO1.In1.stVal"/>
    <ExtRef iedName="P" ldInst="L" lnClass="TCTR" lnInst="1" doName="Amp" intAddr="K/GGIO1.In2"/>
  </Inputs></LN0>
  <LN lnClass="GGIO" inst="1" lnType="G">
    <DOI name="In1"><DAI name="stVal" sAddr="b1"/></DOI><DOI name="In2"/>
  </LN>
</LDevice></Server></AccessPoint></IED>
<IED name="N"/>
<DataTypeTemplates>
  <LNodeType id="G" lnClass="GGIO"><DO name="Ind1" type="SPS"/></LNodeType>
  <DOType id="SPS" cdc="SPS"><DA name="stVal" bType="BOOLEAN" fc="ST"/></DOType>
</DataTypeTemplates>
</SCL>)";
}

/// The text with every occurrence of a piece replaced. Ends the test program if there is none.
inline QByteArray Edited(QByteArray text, const QByteArray& from, const QByteArray& to)
{
    if (!text.contains(from))
        qFatal("the text has no %s", from.constData());
    return text.replace(from, to);
}

} // namespace Corvane::Test
