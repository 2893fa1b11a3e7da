// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

namespace Corvane::Test
{

/// The head of a schema of any namespace; `t:` is its own prefix. Ends with "</xs:schema>".
inline QByteArray SchemaOf(const QByteArray& targetNamespace, const QByteArray& body)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\" xmlns:t=\"" +
           targetNamespace + "\" targetNamespace=\"" + targetNamespace +
           "\" elementFormDefault=\"qualified\">" + body + "</xs:schema>";
}

/// A schema of the SCL namespace.
inline QByteArray SclSchema(const QByteArray& body)
{
    return SchemaOf("http://www.iec.ch/61850/2003/SCL", body);
}

/// A global element of an anonymous complex type of that content.
inline QByteArray GlobalElement(const QByteArray& name, const QByteArray& content)
{
    return "<xs:element name=\"" + name + "\"><xs:complexType>" + content +
           "</xs:complexType></xs:element>";
}

/// A schema of a few SCL elements: Header, any number of IED and an optional Private under SCL;
/// Private then takes any foreign element. An SDI contains itself.
inline QByteArray SmallSclSchema()
{
    return SclSchema(R"(
<xs:element name="SCL">
  <xs:complexType>
    <xs:sequence>
      <xs:element name="Private" type="t:tPrivate" minOccurs="0"/>
      <xs:element name="Header" type="t:tHeader"/>
      <xs:element name="IED" type="t:tIED" minOccurs="0" maxOccurs="unbounded"/>
    </xs:sequence>
  </xs:complexType>
</xs:element>
<xs:complexType name="tPrivate" mixed="true">
  <xs:sequence>
    <xs:any namespace="##other" processContents="lax" minOccurs="0" maxOccurs="unbounded"/>
  </xs:sequence>
  <xs:attribute name="type" type="xs:string"/>
</xs:complexType>
<xs:complexType name="tHeader">
  <xs:attribute name="id" type="xs:string" use="required"/>
</xs:complexType>
<xs:complexType name="tIED">
  <xs:sequence>
    <xs:element name="LDevice" type="t:tLDevice" minOccurs="0" maxOccurs="unbounded"/>
  </xs:sequence>
  <xs:attribute name="name" type="xs:string" use="required"/>
</xs:complexType>
<xs:complexType name="tLDevice">
  <xs:sequence>
    <xs:element name="Private" type="t:tPrivate"/>
    <xs:element name="LN0" type="t:tLN"/>
    <xs:element name="LN" type="t:tLN" minOccurs="0" maxOccurs="unbounded"/>
    <xs:element name="Text" type="xs:string" minOccurs="0"/>
  </xs:sequence>
</xs:complexType>
<xs:complexType name="tLN">
  <xs:sequence>
    <xs:element name="SDI" type="t:tSDI" minOccurs="0" maxOccurs="unbounded"/>
  </xs:sequence>
</xs:complexType>
<xs:complexType name="tSDI">
  <xs:sequence>
    <xs:element name="SDI" type="t:tSDI" minOccurs="0" maxOccurs="unbounded"/>
  </xs:sequence>
</xs:complexType>
)");
}

/// An SCL file of that content between its root tags; \a rootAttributes begin with a blank.
inline QByteArray SclFile(const QByteArray& content, const QByteArray& rootAttributes = {})
{
    return "<SCL xmlns=\"http://www.iec.ch/61850/2003/SCL\"" + rootAttributes + ">" + content +
           "</SCL>";
}

/// A file that SmallSclSchema() finds valid.
inline QByteArray ValidSclFile()
{
    return SclFile("<Header id=\"h\"/><IED name=\"A\"/>");
}

} // namespace Corvane::Test
