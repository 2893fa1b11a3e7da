// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

namespace Corvane::Test
{

/// A schema of a few elements, with `SCL` in the namespace of IEC 61850-6.
inline QByteArray SmallSchema()
{
    return R"(<?xml version="1.0"?>
<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema" xmlns="http://www.iec.ch/61850/2003/SCL"
  targetNamespace="http://www.iec.ch/61850/2003/SCL" elementFormDefault="qualified">
  <xs:complexType name="Named">
    <xs:sequence>
      <xs:element name="Text" type="xs:string" minOccurs="0"/>
      <xs:element name="AccessPoint" type="Named" minOccurs="0" maxOccurs="unbounded"/>
    </xs:sequence>
    <xs:attribute name="name" type="xs:string" use="required"/>
    <xs:attribute name="desc" type="xs:string"/>
  </xs:complexType>
  <xs:element name="SCL">
    <xs:complexType>
      <xs:sequence>
        <xs:element name="Header">
          <xs:complexType>
            <xs:attribute name="id" type="xs:string" use="required"/>
            <xs:attribute name="toolID" type="xs:string"/>
            <xs:attribute name="nameStructure" type="xs:string"/>
          </xs:complexType>
        </xs:element>
        <xs:element name="Communication" minOccurs="0"/>
        <xs:element name="IED" type="Named" minOccurs="0" maxOccurs="unbounded"/>
      </xs:sequence>
      <xs:attribute name="version" type="xs:string"/>
    </xs:complexType>
  </xs:element>
</xs:schema>
)";
}

/// The start tag of a station that the schema knows.
inline QByteArray StationBegin()
{
    return R"(<SCL xmlns="http://www.iec.ch/61850/2003/SCL" version="2007">)";
}

/// A station with all its children in another order than that of the schema.
inline QByteArray SmallStation()
{
    return StationBegin() + R"(<IED name="B"><AccessPoint name="S1"/><Text>x</Text></IED>)" +
           R"(<Communication/><IED name="A"/><Header id="any"/></SCL>)";
}

/// What saving makes of SmallStation().
inline QByteArray SmallStationSaved(const QByteArray& id)
{
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<SCL xmlns="http://www.iec.ch/61850/2003/SCL" version="2007">
  <Header id=")" +
           id + R"(" toolID="TALVEN-CFG" nameStructure="IEDName"/>
  <Communication/>
  <IED name="B">
    <Text>x</Text>
    <AccessPoint name="S1"/>
  </IED>
  <IED name="A"/>
</SCL>
)";
}

/// A station of so many IEDs that loading and saving it take their time.
inline QByteArray LargeStation(int ieds = 200000)
{
    QByteArray text = StationBegin() + R"(<Header id="large"/>)";
    for (int i = 0; i < ieds; ++i)
        text += "<IED name=\"IED" + QByteArray::number(i) + "\" desc=\"one of many\"/>\n";
    return text + "</SCL>";
}

} // namespace Corvane::Test
