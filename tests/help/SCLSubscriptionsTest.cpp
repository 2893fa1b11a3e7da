// SPDX-License-Identifier: Apache-2.0
#include "tests/support/SubscriptionText.h"
#include "tests/support/TestControl.h"

#include <corvane/help/SCLSubscriptions.h>

#include <QTest>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

using Kind = SCLSubscriptions::Kind;

// P sends the data 1, 2 and 3 by GOOSE g and 4 by sampled values s.
const char* const publisher = R"(
  <IED name="P" mark="P"><AccessPoint><Server><LDevice inst="L" mark="L"><LN0>
    <DataSet name="dg" mark="dg">
      <FCDA mark="f1" ldInst="L" doName="1"/>
      <FCDA mark="f2" ldInst="L" doName="2"/>
      <FCDA mark="f3" ldInst="L" doName="3"/>
    </DataSet>
    <DataSet name="ds" mark="ds"><FCDA mark="f4" ldInst="L" doName="4" daName="q"/></DataSet>
    <GSEControl name="g" mark="g" datSet="dg"/>
    <SampledValueControl name="s" mark="s" datSet="ds"/>
  </LN0></LDevice></Server></AccessPoint></IED>)";

QByteArray Station(const QByteArray& subscribers)
{
    return QByteArray("<SCL>") + publisher + subscribers + "</SCL>";
}

QStringList Of(SCLElement* root, Kind kind, const QString& iedName)
{
    SCLElement* ied =
        root->FindChild(QStringLiteral("IED"), QStringLiteral("name"), iedName, false);
    return RecordTexts(SCLSubscriptions(root, kind).Of(ied));
}

} // namespace

class SCLSubscriptionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyInputsOfEveryNodeCounts()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(Station(R"(
          <IED name="S"><AccessPoint>
            <LN><Inputs><ExtRef mark="a" iedName="P" ldInst="L" doName="1" intAddr="x:"/></Inputs></LN>
            <Server><LDevice>
              <LN><Inputs><ExtRef mark="d" iedName="P" ldInst="L" doName="1"/></Inputs></LN>
              <LN0><Inputs/><Inputs><ExtRef mark="b" iedName="P" ldInst="L" doName="2"/></Inputs></LN0>
              <LN0><Inputs><ExtRef mark="c" iedName="P" ldInst="L" doName="3" intAddr="y/x:"/></Inputs></LN0>
            </LDevice></Server>
          </AccessPoint></IED>)"));

        QCOMPARE(Of(root, Kind::Goose, QStringLiteral("S")),
                 QStringList{"P L dg g: a=f1 b=f2 c=f3 d=f1 | x,y"});
    }

    void eachKindShowsItsOwn()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(Station(R"(
          <IED name="S"><AccessPoint><Server><LDevice><LN><Inputs>
            <ExtRef mark="a" iedName="P" ldInst="L" doName="4" daName="q" intAddr="A.v"/>
            <ExtRef mark="b" iedName="P" ldInst="L" doName="4" daName="q" intAddr="A.q"/>
            <ExtRef mark="c" iedName="P" ldInst="L" doName="1"/>
          </Inputs></LN></LDevice></Server></AccessPoint></IED>)"));

        QCOMPARE(Of(root, Kind::SampledValues, QStringLiteral("S")),
                 QStringList{"P L ds s: a=f4 | "});
        QCOMPARE(Of(root, Kind::Goose, QStringLiteral("S")), QStringList{"P L dg g: c=f1 | "});
    }

    void whatLeadsNowhereIsLeftOut()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(Station(R"(
          <IED name="S"><AccessPoint><Server><LDevice><LN><Inputs>
            <ExtRef mark="a" iedName="None" ldInst="L" doName="1"/>
            <ExtRef mark="b" iedName="P" ldInst="None" doName="1"/>
            <ExtRef mark="c" iedName="P" ldInst="L" doName="None"/>
          </Inputs></LN></LDevice></Server></AccessPoint></IED>)"));

        QCOMPARE(Of(root, Kind::Goose, QStringLiteral("S")), QStringList());
    }

    void oneObjectServesAllIeds()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(Station(R"(
          <IED name="S"><AccessPoint><Server><LDevice><LN0><Inputs>
            <ExtRef mark="a" iedName="P" ldInst="L" doName="1"/>
          </Inputs></LN0></LDevice></Server></AccessPoint></IED>
          <IED name="T"><AccessPoint><Server><LDevice><LN0><Inputs>
            <ExtRef mark="b" iedName="P" ldInst="L" doName="2"/>
          </Inputs></LN0></LDevice></Server></AccessPoint></IED>)"));
        const QList<SCLElement*> ieds = root->FindChildByType(QStringLiteral("IED"), false);
        SCLSubscriptions subscriptions(root, Kind::Goose);

        QCOMPARE(RecordTexts(subscriptions.Of(ieds.at(1))), QStringList{"P L dg g: a=f1 | "});
        QCOMPARE(RecordTexts(subscriptions.Of(ieds.at(2))), QStringList{"P L dg g: b=f2 | "});
        QCOMPARE(RecordTexts(subscriptions.Of(ieds.at(1))), QStringList{"P L dg g: a=f1 | "});
    }

    void whereOnlyFirstLN0sTakeInItAgreesWithTheIedWideMembers()
    {
        TestControl control;
        SCLElement* root =
            control->OpenDocument(QStringLiteral(CORVANE_SAMPLES_DIR "/station.scd"), false)
                ->Root();
        SCLSubscriptions goose(root, Kind::Goose);
        SCLSubscriptions sampledValues(root, Kind::SampledValues);
        int compared = 0;
        const QList<SCLElement*> ieds = root->FindChildByType(QStringLiteral("IED"), false);
        for (SCLElement* ied : ieds) {
            if (ied->GetAttribute(QStringLiteral("name")) == QLatin1String("AA1G1"))
                continue; // takes in by an LN too
            QCOMPARE(RecordTexts(goose.Of(ied)),
                     RecordTexts(SCLHelp::GetGSEControlFromIEDInputs(ied)));
            QCOMPARE(RecordTexts(sampledValues.Of(ied)),
                     RecordTexts(SCLHelp::GetSMVControlFromIEDInputs(ied)));
            compared += static_cast<int>(goose.Of(ied).size());
        }
        QVERIFY(compared > 10);
    }

    void nullFindsNothing()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(Station(""));
        QVERIFY(SCLSubscriptions(root, Kind::Goose).Of(nullptr).isEmpty());
        QVERIFY(SCLSubscriptions(nullptr, Kind::Goose)
                    .Of(root->GetFirstChild(QStringLiteral("IED")))
                    .isEmpty());
    }
};

QTEST_APPLESS_MAIN(SCLSubscriptionsTest)
#include "SCLSubscriptionsTest.moc"
