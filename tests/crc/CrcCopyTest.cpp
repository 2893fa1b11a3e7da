// SPDX-License-Identifier: Apache-2.0
#include <corvane/crc/CrcCopy.h>

#include "tests/support/ElementText.h"
#include "tests/support/TestControl.h"
#include "tests/support/TestSchema.h"

#include <corvane/crc/CrcContent.h>
#include <corvane/crc/CrcElement.h>

#include <QTest>

#include <memory>

using namespace Corvane;
using namespace Corvane::Test;
using Corvane::Internal::CrcCopy;
using Corvane::Internal::CrcElement;
using Corvane::Internal::CrcExclusions;

namespace
{

using Excluded = CrcExclusions::Children;

// The copy of an element, in its canonical form.
QString CopyText(SCLElement* element, bool recursive, const Excluded& children = {},
                 const QStringList& attributes = {"desc"})
{
    CrcCopy copy;
    const std::unique_ptr<CrcElement> node(
        copy.Copy(element, recursive, CrcExclusions(attributes, children)));
    QByteArray content;
    Internal::CanonicalCrc(node.get(), &content);
    return QString::fromUtf8(content.mid(content.indexOf("?>") + 2));
}

QString CopyText(const QByteArray& xml, bool recursive, const Excluded& children = {})
{
    TestControl control;
    return CopyText(control.OpenRoot("<SCL>" + xml + "</SCL>")->GetChildList().first(), recursive,
                    children);
}

} // namespace

class CrcCopyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nullGivesNull();
    void tagValueAndAttributesAreCopied();
    void allIsOfBothForms();
    void theOrderOfAttributesIsOfNoEffect();
    void emptyAttributesAreKept();
    void excludedAttributesAreLeftOutAtEveryLevel();
    void attributeNamesAreComparedExactly();
    void aCopyAloneHasNoChildren();
    void theOrderOfTagsIsThatOfTheSchema();
    void theOrderInsideATagStays();
    void anEmptyPairExcludesAllOfATag();
    void onePairThatMatchesExcludes();
    void anExcludedNameThatWasNeverMetExcludesNothing();
    void anAttributeWithoutANameIsKept();
    void aDeepTreeIsCopied();
    void aCopyOutlivesItsElement();
    void copiesBeyondTheBoundsAreNull();
};

void CrcCopyTest::nullGivesNull()
{
    const TestControl control;

    QVERIFY(CrcCopy().Copy(nullptr, true, CrcExclusions({}, {})) == nullptr);
}

void CrcCopyTest::tagValueAndAttributesAreCopied()
{
    QCOMPARE(CopyText("<Val b='2' a=' 1 '>a  b</Val>", true),
             QString(R"(<Vala=" 1 "b="2">a  b</Val>)"));
}

void CrcCopyTest::allIsOfBothForms()
{
    TestControl control;
    SCLElement* element = control.OpenRoot("<SCL a='1'/>");
    CrcCopy copy;

    const std::unique_ptr<CrcElement> node(copy.Copy(element, true, CrcExclusions({}, {})));
    const std::unique_ptr<CrcElement> readable(
        copy.CopyWithAttributes(element, CrcGenerator::GeneratorReadable));

    QCOMPARE(node->generatorType, CrcGenerator::GeneratorBoth);
    QCOMPARE(node->attributes.first()->generatorType, CrcGenerator::GeneratorBoth);
    QCOMPARE(readable->generatorType, CrcGenerator::GeneratorBoth);
    QCOMPARE(readable->attributes.first()->generatorType, CrcGenerator::GeneratorReadable);
}

void CrcCopyTest::theOrderOfAttributesIsOfNoEffect()
{
    QCOMPARE(CopyText("<P c='3' a='1' b='2'/>", true), CopyText("<P b='2' c='3' a='1'/>", true));
}

void CrcCopyTest::emptyAttributesAreKept()
{
    QCOMPARE(CopyText("<P a=''/>", true), QString(R"(<Pa=""/>)"));
}

void CrcCopyTest::excludedAttributesAreLeftOutAtEveryLevel()
{
    QCOMPARE(CopyText("<DOI desc='1' a='2'><SDI desc='3'><DAI b='4' desc='5'/></SDI></DOI>", true),
             QString(R"(<DOIa="2"><SDI><DAIb="4"/></SDI></DOI>)"));
}

void CrcCopyTest::attributeNamesAreComparedExactly()
{
    QCOMPARE(CopyText("<P Desc='1' descr='2' desc='3'/>", true),
             QString(R"(<PDesc="1"descr="2"/>)"));
}

void CrcCopyTest::aCopyAloneHasNoChildren()
{
    QCOMPARE(CopyText("<ConnectedAP a='1'><Address/></ConnectedAP>", false),
             QString(R"(<ConnectedAPa="1"/>)"));
}

void CrcCopyTest::theOrderOfTagsIsThatOfTheSchema()
{
    TestControl control;
    const TempFile schema(SmallSclSchema());
    control->RegisterSchema(schema.Path());
    SCLElement* root = control.OpenRoot(
        SclFile("<IED name='A'><LDevice><Text/><LN/><Private/><LN0/></LDevice></IED><Header/>"));
    SCLElement* turned = control.OpenRoot(
        SclFile("<Header/><IED name='A'><LDevice><LN0/><Private/><Text/><LN/></LDevice></IED>"));
    const QString expected =
        R"(<IEDname="A"><LDevice><Private/><LN0/><LN/><Text/></LDevice></IED>)";

    QCOMPARE(CopyText(root->GetFirstChild("IED"), true), expected);
    QCOMPARE(CopyText(turned->GetFirstChild("IED"), true), expected);
    QVERIFY(CopyText(root, true).contains("<Header/><IED"));
}

void CrcCopyTest::theOrderInsideATagStays()
{
    QCOMPARE(CopyText("<DOI><DAI name='b'/><SDI/><DAI name='a'/></DOI>", true),
             QString(R"(<DOI><DAIname="b"/><DAIname="a"/><SDI/></DOI>)"));
}

void CrcCopyTest::anEmptyPairExcludesAllOfATag()
{
    QCOMPARE(CopyText("<GSEControl><Private a='1'><P/></Private><IEDName><Private/><P/></IEDName>"
                      "</GSEControl>",
                      true, {{"Private", {}}}),
             QString("<GSEControl><IEDName><P/></IEDName></GSEControl>"));
}

void CrcCopyTest::onePairThatMatchesExcludes()
{
    const QByteArray text = "<DOI><DAI name='dU'><Val/></DAI><DAI name='q'/><SDI><DAI a='1'/>"
                            "<DAI name='dU'/></SDI><SDI name='dU'/></DOI>";

    QCOMPARE(CopyText(text, true, {{"DAI", {{"name", "dU"}}}}),
             QString(R"(<DOI><DAIname="q"/><SDI><DAIa="1"/></SDI><SDIname="dU"/></DOI>)"));
    QCOMPARE(CopyText(text, true, {{"DAI", {{"a", "1"}, {"name", "dU"}}}}),
             QString(R"(<DOI><DAIname="q"/><SDI/><SDIname="dU"/></DOI>)"));
}

void CrcCopyTest::anExcludedNameThatWasNeverMetExcludesNothing()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL a='1'><P/></SCL>");

    QCOMPARE(CopyText(root, true, {{"Never", {}}}, {"never"}), QString(R"(<SCLa="1"><P/></SCL>)"));
}

void CrcCopyTest::anAttributeWithoutANameIsKept()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL/>");
    root->SetAttribute(QString(), "1", false);

    QCOMPARE(CopyText(root, true), QString(R"(<SCL_="1"/>)"));
}

void CrcCopyTest::aDeepTreeIsCopied()
{
    constexpr int depth = 100000;
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL>" + QByteArray("<Private>").repeated(depth) + "x" +
                                        QByteArray("</Private>").repeated(depth) + "</SCL>");

    const QString text = CopyText(root, true);

    QCOMPARE(text, "<SCL>" + QString("<Private>").repeated(depth) + "x" +
                       QString("</Private>").repeated(depth) + "</SCL>");
}

void CrcCopyTest::aCopyOutlivesItsElement()
{
    CrcCopy copy;
    std::unique_ptr<CrcElement> node;
    {
        TestControl control;
        SCLElement* root = control.OpenRoot("<SCL a='1'><P>x</P></SCL>");
        node.reset(copy.Copy(root, true, CrcExclusions({}, {})));
    }
    QByteArray content;

    Internal::CanonicalCrc(node.get(), &content);

    QVERIFY(content.endsWith(R"(<SCLa="1"><P>x</P></SCL>)"));
}

void CrcCopyTest::copiesBeyondTheBoundsAreNull()
{
    constexpr int length = 1024 * 1024;
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL a='" + QByteArray(length, 'x') + "'/>");
    const CrcExclusions nothing({}, {});
    CrcCopy copy;
    CrcElement all(CrcGenerator::GeneratorBoth, "all", QString());
    while (CrcCopy::Append(&all, copy.Copy(root, true, nothing)))
        QVERIFY(all.children.size() < 200);

    QVERIFY(all.children.size() > 100);
    QVERIFY(copy.IsExhausted());
    QVERIFY(!copy.AddAttribute(&all, CrcGenerator::GeneratorBoth, "a", "1"));
    QVERIFY(all.attributes.isEmpty());

    copy.Restart();
    QVERIFY(CrcCopy::Append(&all, copy.Copy(root, true, nothing)));
}

QTEST_MAIN(CrcCopyTest)
#include "CrcCopyTest.moc"
