// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/MarkedElement.h"
#include "tests/support/SignalLog.h"
#include "tests/support/TestControl.h"

#include <corvane/help/SCLHelp.h>
#include <corvane/help/SCLIedReferences.h>

#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <random>

using namespace Corvane;
using namespace Corvane::Test;

using Action = SCLIedReferences::Action;
using Change = SCLIedReferences::Change;
using Refusal = SCLIedReferences::Refusal;
using Result = SCLIedReferences::Result;

Q_DECLARE_METATYPE(Corvane::SCLIedReferences::Refusal)

namespace
{

SCLElement* IedOf(SCLElement* root, const QString& name)
{
    return root->FindChild(QStringLiteral("IED"), QStringLiteral("name"), name, false);
}

// A change without its element: `iedName "A" -> "B"`, `- ldInst "L"`, `text "A" -> ""`,
// `remove "A"`.
QString ValuesText(const Change& change)
{
    const QString values =
        Quoted(change.oldValue) + QStringLiteral(" -> ") + Quoted(change.newValue);
    switch (change.action) {
    case Action::SetAttribute:
        return change.attribute + QLatin1Char(' ') + values;
    case Action::RemoveAttribute:
        return QStringLiteral("- ") + change.attribute + QLatin1Char(' ') + Quoted(change.oldValue);
    case Action::SetText:
        return QStringLiteral("text ") + values;
    case Action::RemoveElement:
        return QStringLiteral("remove ") + Quoted(change.oldValue);
    }
    return QString();
}

// The same with the mark of the element, or its tag if it has none, in front.
QString ChangeText(const Change& change)
{
    const QString mark = MarkOf(change.element);
    return (mark.isEmpty() ? change.element->GetTag() : mark) + QStringLiteral(": ") +
           ValuesText(change);
}

QStringList ChangeTexts(const Result& result)
{
    QStringList texts;
    for (const Change& change : result.changes)
        texts.append(ChangeText(change));
    return texts;
}

QStringList ValuesTexts(const Result& result)
{
    QStringList texts;
    for (const Change& change : result.changes)
        texts.append(ValuesText(change));
    return texts;
}

// The signal that a change sends, as SignalLog writes it.
QString SignalText(const Change& change)
{
    const QString tag = change.element->GetTag();
    switch (change.action) {
    case Action::SetAttribute:
        return QStringLiteral("editAttribute %1 ").arg(tag) + ValuesText(change);
    case Action::RemoveAttribute:
        return QStringLiteral("removeAttribute %1 %2 ").arg(tag, change.attribute) +
               Quoted(change.oldValue);
    case Action::SetText:
        return QStringLiteral("editValue %1 ").arg(tag) + Quoted(change.newValue);
    case Action::RemoveElement:
        return QStringLiteral("deleteElement ") + ElementText(change.element);
    }
    return QString();
}

// An IED of one access point with that content in its server.
QByteArray Ied(const QByteArray& name, const QByteArray& server, const QByteArray& more = {})
{
    return "<IED name=\"" + name + "\"><AccessPoint><Server>" + server + "</Server></AccessPoint>" +
           more + "</IED>";
}

// An IED of one logical device LD0 that only its name is needed of.
QByteArray PlainIed(const QByteArray& name)
{
    return Ied(name, "<LDevice inst=\"LD0\"/>");
}

QByteArray Scl(const QByteArray& content)
{
    return "<SCL>" + content + "</SCL>";
}

QByteArray Supervision(const QByteArray& reference, const QByteArray& mark = "val")
{
    return "<LN lnClass=\"LGOS\"><DOI name=\"GoCBRef\"><DAI name=\"setSrcRef\"><Val mark=\"" +
           mark + "\">" + reference + "</Val></DAI></DOI></LN>";
}

// E1 at every place that may name it, and E2 beside it. Tags come in the order of the walk.
QByteArray EveryPlace()
{
    return Scl(R"(
      <Substation><LNode mark="plant" iedName="E1" ldInst="LD0" lnClass="CSWI" lnInst="1"/>
        <LNode iedName="E2" ldInst="LD0" lnClass="CSWI"/></Substation>
      <Communication><SubNetwork>
        <ConnectedAP mark="network" iedName="E1" apName="P"/><ConnectedAP iedName="E2" apName="P"/>
      </SubNetwork></Communication>
      <IED name="E1" mark="E1"><AccessPoint name="P"><Server><LDevice inst="LD0"><LN0/></LDevice>
      </Server></AccessPoint></IED>
      <IED name="E2"><AccessPoint><Server>
        <Association mark="association" iedName="E1"/><Association iedName="E2"/>
        <LDevice inst="LD0"><LN0>
          <ReportControl><RptEnabled><ClientLN mark="client" iedName="E1"/><ClientLN iedName="E2"/>
          </RptEnabled></ReportControl>
          <GSEControl name="g" appID="E2LD0/LLN0.g">
            <IEDName mark="receiver">E1</IEDName><IEDName>E2</IEDName></GSEControl>
          <SampledValueControl name="s" smvID="E2LD0/LLN0.s">
            <IEDName mark="listener">E1</IEDName></SampledValueControl>
          <Inputs><ExtRef mark="input" iedName="E1"/><ExtRef iedName="E2"/></Inputs></LN0>
          <LN lnClass="LGOS"><DOI name="GoCBRef"><DAI name="setSrcRef">
            <Val mark="goose">E1LD0/LLN0.g</Val></DAI></DOI></LN>
          <LN lnClass="LSVS"><DOI name="SvCBRef"><DAI name="setSrcRef">
            <Val mark="sv">E1LD0/LLN0.s</Val></DAI></DOI></LN>
        </LDevice></Server></AccessPoint>
        <KDC mark="kdc" iedName="E1" apName="P"/></IED>)");
}

// Places that the lists of the first inputs, clients and servers leave out.
QByteArray EveryRepetition()
{
    const QByteArray input = "<ExtRef iedName=\"E1\" mark=\"";
    const QByteArray client = "<ClientLN iedName=\"E1\" mark=\"";
    return Scl("<Communication/><Communication><SubNetwork><ConnectedAP iedName=\"E1\" mark=\"1\"/>"
               "</SubNetwork></Communication>" +
               PlainIed("E1") + "<IED name=\"E2\"><AccessPoint><LN><Inputs>" + input +
               "2\"/></Inputs></LN><Server/><Server><LDevice><LN><Inputs/><Inputs>" + input +
               "3\"/></Inputs><ReportControl><RptEnabled/><RptEnabled>" + client +
               "4\"/></RptEnabled></ReportControl></LN></LDevice><LDevice><LN0/><LN0><Inputs>" +
               input +
               "5\"/></Inputs><GSEControl><IEDName mark=\"6\">E1</IEDName></GSEControl>"
               "</LN0></LDevice></Server></AccessPoint></IED>");
}

Result PlanRename(SCLElement* root, const QString& newName = QStringLiteral("N"),
                  const QString& name = QStringLiteral("E1"))
{
    return SCLIedReferences::PlanRename(IedOf(root, name), newName);
}

Result PlanDelete(SCLElement* root, const QString& name = QStringLiteral("E1"))
{
    return SCLIedReferences::PlanDelete(IedOf(root, name));
}

// All texts and attribute values outside Private elements that hold \a part, one by one.
QStringList Mentions(SCLElement* root, const QString& part)
{
    QStringList mentions;
    QList<SCLElement*> open = {root};
    while (!open.isEmpty()) {
        SCLElement* element = open.takeLast();
        if (element->GetTag() == QLatin1String("Private"))
            continue;
        if (element->GetValue().contains(part))
            mentions.append(element->GetTag() + QStringLiteral(": ") + element->GetValue());
        const QList<SCLAttribute*> attributes = element->GetAttributeList();
        for (const SCLAttribute* attribute : attributes) {
            if (attribute->GetValue().contains(part))
                mentions.append(element->GetTag() + QLatin1Char(' ') + attribute->GetName() +
                                QStringLiteral(": ") + attribute->GetValue());
        }
        open += element->GetChildList();
    }
    return mentions;
}

// Names that look like those of logical devices of `Zed`, but that none of them goes by.
QStringList DevicesNotOf(SCLElement* zed)
{
    QStringList names = {QStringLiteral("ZedLX"), QStringLiteral("ZedLY")};
    for (const QString& inst : {QStringLiteral("L0"), QStringLiteral("L1")}) {
        const QMap<QString, QString> derived = {{QStringLiteral("inst"), inst},
                                                {QStringLiteral("ldName"), QString()}};
        if (!zed->FindChild(QStringLiteral("LDevice"), derived, true))
            names.append(QStringLiteral("Zed") + inst);
    }
    return names;
}

// Stations at random. The IED `Zed` is the one that is edited; its name, and the names `Fun0` and
// so on that its logical devices may go by, stand for nothing else. Up to two IEDs have names that
// begin like it.
class RandomStation
{
public:
    explicit RandomStation(unsigned seed) : m_engine(seed) {}

    QByteArray Text()
    {
        QByteArray text;
        for (int i = UpTo(3); i > 0; --i)
            text += Plant(UpTo(4));
        for (int i = UpTo(3); i > 0; --i)
            text += "<Communication>" +
                    Repeat("SubNetwork", [this] { return Reference("ConnectedAP"); }) +
                    "</Communication>";
        for (const char* name : {"Zed", "Ze", "Zoo"})
            text += RandomIed(name);
        return Scl(text);
    }

private:
    int UpTo(int end) { return static_cast<int>(m_engine() % static_cast<unsigned>(end)); }
    QByteArray Pick(const QList<const char*>& texts)
    {
        return texts.at(UpTo(static_cast<int>(texts.size())));
    }
    QByteArray Name() { return Pick({"Zed", "Zed", "Ze", "Zoo", "None", "@", "Nobody", ""}); }

    // Up to three elements of that tag, each around what \a content makes up to three times.
    template <typename Content>
    QByteArray Repeat(const QByteArray& tag, const Content& content)
    {
        QByteArray text;
        for (int i = UpTo(4); i > 0; --i) {
            text += "<" + tag + " name=\"n" + QByteArray::number(i) + "\">";
            for (int k = UpTo(4); k > 0; --k)
                text += content();
            text += "</" + tag + ">";
        }
        return text;
    }

    QByteArray Reference(const QByteArray& tag)
    {
        const QByteArray name = UpTo(6) > 0 ? " iedName=\"" + Name() + "\"" : QByteArray();
        return "<" + tag + name + " ldInst=\"" + Pick({"L0", "L1", ""}) + "\"/>";
    }

    QByteArray PlantNode()
    {
        QByteArray node = Reference("LNode");
        return node.replace("/>", " lnClass=\"" + Pick({"CSWI", "PTOC"}) + "\"/>");
    }

    QByteArray Plant(int depth)
    {
        const QByteArray tag = Pick({"Substation", "Bay", "Line", "Process"});
        QByteArray text = "<" + tag + ">";
        for (int i = UpTo(4); i > 0; --i)
            text += PlantNode();
        if (depth > 0)
            text += Plant(depth - 1);
        return text + "</" + tag + ">";
    }

    QByteArray ObjectReference()
    {
        return Pick({"ZedL0/LLN0.g", "ZedL1/LLN0$GO$g", "ZedLX/LLN0.g", "ZeL0/LLN0.g",
                     "Fun0/LLN0.g", "ZooL1/MMXU1.A", "ZedL0/LLN0.g", ""});
    }

    QByteArray Data()
    {
        return "<DOI><DAI name=\"" + Pick({"setSrcRef", "setSrcCB", "setTstRef", "setTstCB"}) +
               "\"><Val>" + ObjectReference() + "</Val></DAI></DOI>";
    }

    QByteArray Subscriber()
    {
        const QByteArray name = Name();
        return "<IEDName>" + name + "</IEDName>";
    }

    QByteArray NodeContent(const QByteArray& iedName)
    {
        QByteArray text;
        text += Repeat("Inputs", [this] { return Reference("ExtRef"); });
        text += "<ReportControl name=\"r\" rptID=\"" + iedName + Pick({"L0", "L1", "LY"}) +
                "/LLN0.r\">" + Repeat("RptEnabled", [this] { return Reference("ClientLN"); }) +
                "</ReportControl>";
        text += Repeat("GSEControl", [this] { return Subscriber(); });
        text += Repeat("SampledValueControl", [this] { return Subscriber(); });
        text += Data();
        return text;
    }

    QByteArray RandomIed(const QByteArray& name)
    {
        QByteArray server;
        for (int i = UpTo(4); i > 0; --i) {
            const QByteArray number = QByteArray::number(i - 1);
            server += "<LDevice inst=\"L" + number + "\"";
            if (name == "Zed" && UpTo(3) == 0)
                server += " ldName=\"Fun" + number + "\"";
            server += ">";
            for (int k = UpTo(4); k > 0; --k) {
                const QByteArray tag = Pick({"LN0", "LN"});
                server += "<" + tag + ">" + NodeContent(name) + "</" + tag + ">";
            }
            server += "</LDevice>";
        }
        server += Reference("Association");
        return Ied(name, server, Reference("KDC"));
    }

    std::mt19937 m_engine;
};

} // namespace

class SCLIedReferencesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void renamingFollowsEachPlace()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(EveryPlace());

        QCOMPARE(
            ChangeTexts(PlanRename(root)),
            (QStringList{"E1: name \"E1\" -> \"N\"", "plant: iedName \"E1\" -> \"N\"",
                         "network: iedName \"E1\" -> \"N\"", "client: iedName \"E1\" -> \"N\"",
                         "receiver: text \"E1\" -> \"N\"", "listener: text \"E1\" -> \"N\"",
                         "input: iedName \"E1\" -> \"N\"",
                         "goose: text \"E1LD0/LLN0.g\" -> \"NLD0/LLN0.g\"",
                         "sv: text \"E1LD0/LLN0.s\" -> \"NLD0/LLN0.s\"",
                         "association: iedName \"E1\" -> \"N\"", "kdc: iedName \"E1\" -> \"N\""}));
    }

    void deletingClearsEachPlaceAndEndsWithTheIed()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(EveryPlace());

        QCOMPARE(ChangeTexts(PlanDelete(root)),
                 (QStringList{"plant: iedName \"E1\" -> \"None\"", "plant: - ldInst \"LD0\"",
                              "network: remove \"E1\"", "client: remove \"E1\"",
                              "receiver: remove \"E1\"", "listener: remove \"E1\"",
                              "input: remove \"E1\"", "goose: text \"E1LD0/LLN0.g\" -> \"\"",
                              "sv: text \"E1LD0/LLN0.s\" -> \"\"", "association: remove \"E1\"",
                              "kdc: remove \"E1\"", "E1: remove \"E1\""}));
    }

    void repeatedSectionsAreAllFollowed()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(EveryRepetition());
        const auto marks = [](const Result& result) {
            QStringList all;
            for (const Change& change : result.changes)
                all += MarkOf(change.element);
            all.removeAll(QString());
            all.sort();
            return all.join(QLatin1Char(' '));
        };

        QCOMPARE(marks(PlanRename(root)), QStringLiteral("1 2 3 4 5 6"));
        QCOMPARE(marks(PlanDelete(root)), QStringLiteral("1 2 3 4 5 6"));
    }

    void nodesOfThePlantAreFollowedAtAnyDepth()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(Scl(R"(
          <Substation><VoltageLevel><Bay><ConductingEquipment><SubEquipment>
            <LNode mark="a" iedName="E1"/><LNode iedName="None"/><LNode/><LNode iedName="E10"/>
          </SubEquipment><EqFunction><EqSubFunction><LNode mark="b" iedName="E1"/></EqSubFunction>
          </EqFunction></ConductingEquipment></Bay></VoltageLevel></Substation>
          <Line><Function><LNode mark="c" iedName="E1"/></Function></Line>
          <Process><Substation><LNode mark="d" iedName="E1"/></Substation></Process>)" +
                                                PlainIed("E1")));

        QCOMPARE(ChangeTexts(PlanRename(root)),
                 (QStringList{"IED: name \"E1\" -> \"N\"", "a: iedName \"E1\" -> \"N\"",
                              "b: iedName \"E1\" -> \"N\"", "c: iedName \"E1\" -> \"N\"",
                              "d: iedName \"E1\" -> \"N\""}));
    }

    void objectReferencesFollowByTheirLogicalDevice_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("renamed");

        const auto follows = [](const char* name, const char* text, const char* renamed) {
            QTest::newRow(name) << QString(text) << QString(renamed);
        };
        const auto stays = [](const char* name, const char* text) {
            QTest::newRow(name) << QString(text) << QString(text);
        };
        follows("control block", "E1LD0/LLN0.g", "NLD0/LLN0.g");
        follows("form of MMS", "E1LD0/LLN0$GO$g", "NLD0/LLN0$GO$g");
        follows("data", "E1LD0/GGIO1.Ind1.stVal", "NLD0/GGIO1.Ind1.stVal");
        follows("without inst", "E1/LLN0.g", "N/LLN0.g");
        follows("name once more", "E1LD0/E1.E1LD0", "NLD0/E1.E1LD0");
        follows("white space around", "\n  E1LD0/LLN0.g \n", "\n  NLD0/LLN0.g \n");
        stays("longer name of an IED", "E10LD0/LLN0.g");
        stays("unknown logical device", "E1LD9/LLN0.g");
        stays("logical device that begins like one", "E1LD00/LLN0.g");
        stays("no slash", "E1LD0");
        stays("name alone", "E1");
        stays("within the text", "xE1LD0/LLN0.g");
        stays("other case", "e1LD0/LLN0.g");
        stays("functional name", "E1FUN/LLN0.g");
        stays("of a device with a functional name", "E1LD1/LLN0.g");
        stays("empty", "");
    }

    void objectReferencesFollowByTheirLogicalDevice()
    {
        QFETCH(const QString, text);
        QFETCH(const QString, renamed);
        TestControl control;
        SCLElement* root = control.OpenRoot(Scl(
            Ied("E1", R"(<LDevice inst="LD0"/><LDevice inst="LD1" ldName="E1FUN"/>
                             <LDevice inst=""/>)") +
            PlainIed("E10") + Ied("S", "<LDevice>" + Supervision(text.toUtf8()) + "</LDevice>")));
        SCLElement* value = Marked(root, QStringLiteral("val"));

        SCLIedReferences::Rename(IedOf(root, QStringLiteral("E1")), QStringLiteral("N"));

        QCOMPARE(value->GetValue(), renamed);
    }

    void deletingAlsoEmptiesReferencesByFunctionalNames()
    {
        TestControl control;
        SCLElement* root =
            control.OpenRoot(Scl(Ied("E1", R"(<LDevice inst="LD1" ldName="FUN"/>)") +
                                 Ied("S", "<LDevice>" + Supervision("FUN/LLN0.g", "a") +
                                              Supervision("E1LD1/LLN0.g", "b") + "</LDevice>")));

        QCOMPARE(ChangeTexts(PlanDelete(root)),
                 (QStringList{"a: text \"FUN/LLN0.g\" -> \"\"", "IED: remove \"E1\""}));
    }

    void objectReferencesAreThoseOfClassOrg_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<bool>("isFollowed");

        const QByteArray value = "<Val mark=\"val\">E1LD0/LLN0.g</Val>";
        const auto dai = [&value](const QByteArray& name) {
            return "<DAI name=\"" + name + "\">" + value + "</DAI>";
        };
        QTest::newRow("source") << dai("setSrcRef") << true;
        QTest::newRow("control block of the source") << dai("setSrcCB") << true;
        QTest::newRow("test source") << dai("setTstRef") << true;
        QTest::newRow("control block of the test source") << dai("setTstCB") << true;
        QTest::newRow("second value")
            << "<DAI name=\"setSrcRef\"><Val/>" + value + "</DAI>" << true;
        QTest::newRow("default of a type") << "<DA name=\"setSrcRef\">" + value + "</DA>" << true;
        QTest::newRow("description") << dai("d") << false;
        QTest::newRow("no name") << dai("") << false;
        QTest::newRow("purpose") << dai("purpose") << false;
    }

    void objectReferencesAreThoseOfClassOrg()
    {
        QFETCH(const QByteArray, data);
        QFETCH(const bool, isFollowed);
        TestControl control;
        SCLElement* root = control.OpenRoot(
            Scl(PlainIed("E1") + Ied("S", "<LDevice><LN lnClass=\"GGIO\"><DOI name=\"InRef1\">" +
                                              data + "</DOI></LN></LDevice>")));
        SCLElement* value = Marked(root, QStringLiteral("val"));

        SCLIedReferences::Rename(IedOf(root, QStringLiteral("E1")), QStringLiteral("N"));

        QCOMPARE(value->GetValue(), QString(isFollowed ? "NLD0/LLN0.g" : "E1LD0/LLN0.g"));
    }

    void aNameThatADeviceOfAnotherIedHasIsLeftAlone()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(
            Scl(Ied("E1", R"(<LDevice inst="0LD"/><LDevice inst="A"/>)") +
                Ied("E10", R"(<LDevice inst="LD"/><LDevice inst="x" ldName="E1A"/>)") +
                Ied("S", "<LDevice>" + Supervision("E10LD/LLN0.g") + Supervision("E1A/LLN0.g") +
                             "</LDevice>")));

        QCOMPARE(ChangeTexts(PlanRename(root)), QStringList{"IED: name \"E1\" -> \"N\""});
        QCOMPARE(ChangeTexts(PlanDelete(root)), QStringList{"IED: remove \"E1\""});
    }

    void renamingBringsTheIdentifiersOfControlBlocksToTheirForm()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(
            Scl(Ied("E1", R"(<LDevice inst="LD0"><LN0/><LN0>
                               <GSEControl mark="g" name="g" appID="by hand"/>
                               <GSEControl mark="new" name="h"/>
                               <SampledValueControl mark="s" name="s" smvID="NLD0/LLN0.s"/>
                               <SampledValueControl mark="t" name="t" smvID="E1LD0/LLN0.t"/>
                             </LN0><LN><GSEControl name="x"/></LN></LDevice><GSEControl name="y"/>)") +
                Ied("E2", R"(<LDevice inst="LD0"><LN0><GSEControl name="z" appID="E1LD0/LLN0.z"/>
                             </LN0></LDevice>)")));

        QCOMPARE(
            ChangeTexts(PlanRename(root)),
            (QStringList{"IED: name \"E1\" -> \"N\"", "g: appID \"by hand\" -> \"NLD0/LLN0.g\"",
                         "new: appID null -> \"NLD0/LLN0.h\"",
                         "t: smvID \"E1LD0/LLN0.t\" -> \"NLD0/LLN0.t\""}));
    }

    void reportIdentifiersFollowIfTheyBeginWithAnOwnDevice()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(
            Scl(Ied("E1", R"(<LDevice inst="LD0"><LN0><ReportControl mark="r" rptID="E1LD0/LLN0.r"/>
                               <ReportControl rptID="by hand"/><ReportControl rptID="E10LD0/LLN0.r"/>
                               <ReportControl/></LN0>
                             <LN><ReportControl mark="n" rptID="E1LD0/GGIO1$BR$n"/></LN></LDevice>)") +
                Ied("E2", R"(<LDevice inst="LD0"><LN0><ReportControl rptID="E1LD0/LLN0.r"/></LN0>
                             </LDevice>)")));

        QCOMPARE(ChangeTexts(PlanRename(root)),
                 (QStringList{"IED: name \"E1\" -> \"N\"",
                              "r: rptID \"E1LD0/LLN0.r\" -> \"NLD0/LLN0.r\"",
                              "n: rptID \"E1LD0/GGIO1$BR$n\" -> \"NLD0/GGIO1$BR$n\""}));
    }

    void textsOfSubscribersKeepTheWhiteSpaceAroundThem()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(
            Scl(PlainIed("E1") + "<X><IEDName>\n E1 </IEDName><IEDName>E1 E1</IEDName></X>"));

        QCOMPARE(ValuesTexts(PlanRename(root)).value(1),
                 QStringLiteral("text \"\n E1 \" -> \"\n N \""));
        QCOMPARE(PlanRename(root).changes.size(), 2);
        QCOMPARE(PlanDelete(root).changes.size(), 2);
    }

    void privateElementsAndTheRestAreLeftAlone()
    {
        TestControl control;
        const QByteArray untouched = R"(
          <Header id="E1"/><Private source="E1">E1<ExtRef iedName="E1"/><Private>
          <IEDName>E1</IEDName></Private></Private><Private><LNode iedName="E1"/></Private>
          <Text>E1</Text><X iedName="E1"/><Y name="E1">E1</Y>
          <IED name="E2" desc="E1" owner="E1"><AccessPoint name="E1"><Server><LDevice inst="E1">
          <LN0><LogControl logName="E1LD0"/><Inputs><ExtRef srcCBName="E1" iedName="@"/>
          <ExtRef iedName="e1"/><ExtRef iedName=" E1"/><ExtRef/></Inputs></LN0></LDevice></Server>
          </AccessPoint></IED>)";
        SCLElement* root = control.OpenRoot(Scl(PlainIed("E1") + untouched));

        QCOMPARE(ChangeTexts(PlanRename(root)), QStringList{"IED: name \"E1\" -> \"N\""});
        QCOMPARE(ChangeTexts(PlanDelete(root)), QStringList{"IED: remove \"E1\""});
    }

    void renamingFollowsReferencesInsideTheIed()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(
            Scl(Ied("E1",
                    "<LDevice inst=\"LD0\"><LN0><Inputs><ExtRef iedName=\"E1\"/></Inputs></LN0>" +
                        Supervision("E1LD0/LLN0.g") + "</LDevice>",
                    "<KDC iedName=\"E1\"/>")));

        QCOMPARE(ChangeTexts(PlanRename(root)),
                 (QStringList{"IED: name \"E1\" -> \"N\"", "ExtRef: iedName \"E1\" -> \"N\"",
                              "val: text \"E1LD0/LLN0.g\" -> \"NLD0/LLN0.g\"",
                              "KDC: iedName \"E1\" -> \"N\""}));
    }

    void deletingDoesNotLookInsideTheIed()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(
            Scl(Ied("E1",
                    "<LDevice inst=\"LD0\"><LN0><Inputs><ExtRef iedName=\"E1\"/></Inputs></LN0>"
                    "</LDevice>",
                    "<KDC iedName=\"E1\"/>") +
                "<Communication><ConnectedAP iedName=\"E1\"/></Communication>"));

        QCOMPARE(ChangeTexts(PlanDelete(root)),
                 (QStringList{"ConnectedAP: remove \"E1\"", "IED: remove \"E1\""}));
    }

    void whatGoesWithARemovedElementIsNotListed()
    {
        TestControl control;
        SCLElement* root =
            control.OpenRoot(Scl(PlainIed("E1") + R"(<ConnectedAP mark="outer" iedName="E1">
                                    <ConnectedAP mark="inner" iedName="E1"/></ConnectedAP>)"));

        QCOMPARE(ChangeTexts(PlanDelete(root)),
                 (QStringList{"outer: remove \"E1\"", "IED: remove \"E1\""}));
    }

    void forThePresentNameOnlyIdentifiersChange()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(
            Scl(Ied("E1", R"(<LDevice inst="LD0"><LN0><GSEControl name="g" appID="a"/><Inputs>
                             <ExtRef iedName="E1"/></Inputs></LN0></LDevice>)")));

        QCOMPARE(ChangeTexts(PlanRename(root, QStringLiteral("E1"))),
                 QStringList{"GSEControl: appID \"a\" -> \"E1LD0/LLN0.g\""});
    }

    void aNodeOfThePlantBecomesUnassignedUnlessItStandsThereTwice()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(Scl(R"(<Bay>
            <LNode mark="a" iedName="E1" ldInst="L0" prefix="P" lnClass="PTOC" lnInst="1" lnType="T"/>
            <LNode mark="b" iedName="E1" ldInst="L1" prefix="P" lnClass="PTOC" lnInst="1"/>
            <LNode mark="c" iedName="E1" ldInst="L0" lnClass="PTOC" lnInst="1"/>
            <LNode mark="d" iedName="E1" lnClass="PDIS"/>
            <LNode iedName="None" lnClass="PDIS"/>
            <LNode mark="e" iedName="E1" lnClass="PDIF"/>
            <LNode lnClass="PDIF"/>
            <LNode mark="f" iedName="E1" lnClass="XCBR"/>
            <LNode iedName="E2" lnClass="XCBR"/>
            <LNode mark="g" iedName="E1" lnClass="XSWI"/>
            <LNode iedName="None" ldInst="L0" lnClass="XSWI"/>
          </Bay><Bay><LNode mark="h" iedName="E1" lnClass="PDIS"/></Bay>)" +
                                                PlainIed("E1")));

        QCOMPARE(ChangeTexts(PlanDelete(root)),
                 (QStringList{"a: iedName \"E1\" -> \"None\"", "a: - ldInst \"L0\"",
                              "b: remove \"E1\"", "c: iedName \"E1\" -> \"None\"",
                              "c: - ldInst \"L0\"", "d: remove \"E1\"", "e: remove \"E1\"",
                              "f: iedName \"E1\" -> \"None\"", "g: iedName \"E1\" -> \"None\"",
                              "h: iedName \"E1\" -> \"None\"", "IED: remove \"E1\""}));
    }

    void emptiedSectionsStayButInputs()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(Scl(R"(
            <SubNetwork><ConnectedAP iedName="E1"/></SubNetwork>
            <RptEnabled><ClientLN iedName="E1"/></RptEnabled>
            <Inputs mark="a"><ExtRef iedName="E1"/><ExtRef iedName="E1"/></Inputs>
            <Inputs mark="b"><ExtRef iedName="E1"/><ExtRef/></Inputs>
            <Inputs mark="c"><ExtRef iedName="E1"/><Text>t</Text></Inputs>
            <Inputs mark="d"/>)" + PlainIed("E1")));

        SCLIedReferences::Delete(IedOf(root, QStringLiteral("E1")));

        QCOMPARE(ElementText(root), QStringLiteral("<SCL><SubNetwork/><RptEnabled/>"
                                                   "<Inputs mark=\"b\"><ExtRef/></Inputs>"
                                                   "<Inputs mark=\"c\"><Text>t</Text></Inputs>"
                                                   "<Inputs mark=\"d\"/></SCL>"));
    }

    void namesThatStandForNoIedAreNotFollowed_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::newRow("empty") << QByteArray("");
        QTest::newRow("unassigned") << QByteArray("None");
        QTest::newRow("own") << QByteArray("@");
    }

    void namesThatStandForNoIedAreNotFollowed()
    {
        QFETCH(const QByteArray, name);
        TestControl control;
        SCLElement* root = control.OpenRoot(
            Scl(PlainIed(name) + "<X><ExtRef iedName=\"" + name + "\"/><ExtRef/><LNode iedName=\"" +
                name + "\"/><IEDName>" + name + "</IEDName>" + Supervision(name + "LD0/LLN0.g") +
                "</X>" + PlainIed(name)));
        SCLElement* ied = root->FindChild(QStringLiteral("IED"), 0);

        QCOMPARE(ValuesTexts(SCLIedReferences::PlanRename(ied, QStringLiteral("N"))),
                 QStringList{"name \"" + name + "\" -> \"N\""});
        QCOMPARE(ValuesTexts(SCLIedReferences::PlanDelete(ied)),
                 QStringList{"remove \"" + name + "\""});
    }

    void aRenameIsRefused_data()
    {
        QTest::addColumn<QByteArray>("station");
        QTest::addColumn<QString>("newName");
        QTest::addColumn<Refusal>("refusal");

        const QByteArray station = PlainIed("E1") + PlainIed("E2");
        QTest::newRow("not allowed") << station << "1E" << Refusal::NameNotAllowed;
        QTest::newRow("unassigned") << station << "None" << Refusal::NameNotAllowed;
        QTest::newRow("taken") << station << "E2" << Refusal::NameTaken;
        QTest::newRow("two of the old name")
            << PlainIed("E1") + PlainIed("E1") << "N" << Refusal::NameAmbiguous;
        QTest::newRow("logical devices of other names")
            << PlainIed("E1") + Ied("N1", "<LDevice inst=\"LD0\"/>") +
                   Ied("N", "<LDevice inst=\"1LD0\"/>")
            << "N1L" << Refusal::NotRefused;
        QTest::newRow("logical device of a longer name")
            << Ied("E1", "<LDevice inst=\"2LD0\"/>") + Ied("N2", "<LDevice inst=\"LD0\"/>") << "N"
            << Refusal::LDeviceNameTaken;
        QTest::newRow("functional name")
            << PlainIed("E1") + Ied("E2", "<LDevice inst=\"x\" ldName=\"NLD0\"/>") << "N"
            << Refusal::LDeviceNameTaken;
        QTest::newRow("own functional name")
            << Ied("E1", "<LDevice inst=\"LD0\" ldName=\"F\"/>") + PlainIed("E2") << "N"
            << Refusal::NotRefused;
        QTest::newRow("free") << station << "E3" << Refusal::NotRefused;
    }

    void aRenameIsRefused()
    {
        QFETCH(const QByteArray, station);
        QFETCH(const QString, newName);
        QFETCH(const Refusal, refusal);
        TestControl control;
        SCLElement* root = control.OpenRoot(Scl(station));
        const QString before = ElementText(root);

        const Result result = SCLIedReferences::Rename(IedOf(root, QStringLiteral("E1")), newName);

        QVERIFY(result.refusal == refusal);
        QCOMPARE(result.IsRefused(), refusal != Refusal::NotRefused);
        QCOMPARE(result.changes.isEmpty(), result.IsRefused());
        QCOMPARE(ElementText(root) == before, result.IsRefused());
    }

    void aDeletionIsRefusedIfAnotherIedHasTheName()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(Scl(PlainIed("E1") + PlainIed("E1")));

        const Result result = SCLIedReferences::Delete(IedOf(root, QStringLiteral("E1")));

        QVERIFY(result.refusal == Refusal::NameAmbiguous);
        QCOMPARE(root->GetChildCount(false), 2);
    }

    void whatIsNoIedOfADocumentIsRefused()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(Scl("<X/><Y><IED name=\"E1\"/></Y>"));
        SCLElement outside(QStringLiteral("IED"), nullptr, nullptr);

        for (SCLElement* element :
             {static_cast<SCLElement*>(nullptr), &outside, root, At(root, QStringLiteral("X")),
              At(root, QStringLiteral("Y/IED"))}) {
            QVERIFY(SCLIedReferences::Rename(element, QStringLiteral("N")).refusal ==
                    Refusal::NotInDocument);
            QVERIFY(SCLIedReferences::Delete(element).refusal == Refusal::NotInDocument);
        }
        QCOMPARE(ElementText(root), QStringLiteral("<SCL><X/><Y><IED name=\"E1\"/></Y></SCL>"));
    }

    void namesOfIedsAreThoseOfTheStandard_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("isAllowed");

        const QString longest(64, QLatin1Char('a'));
        QTest::newRow("letter") << "a" << true;
        QTest::newRow("all kinds") << "Zz_09" << true;
        QTest::newRow("longest") << longest << true;
        QTest::newRow("begins like none") << "None1" << true;
        QTest::newRow("other case") << "NONE" << true;
        QTest::newRow("empty") << "" << false;
        QTest::newRow("too long") << longest + QLatin1Char('a') << false;
        QTest::newRow("none") << "None" << false;
        QTest::newRow("digit first") << "1a" << false;
        QTest::newRow("underscore first") << "_a" << false;
        QTest::newRow("blank") << "a b" << false;
        QTest::newRow("hyphen") << "a-b" << false;
        QTest::newRow("dot") << "a.b" << false;
        QTest::newRow("umlaut") << QString::fromUtf8("aä") << false;
        QTest::newRow("digit of another script") << QString("a") + QChar(0x0663) << false;
        QTest::newRow("own") << "@" << false;
    }

    void namesOfIedsAreThoseOfTheStandard()
    {
        QFETCH(const QString, name);
        QFETCH(const bool, isAllowed);
        QCOMPARE(SCLIedReferences::IsIEDName(name), isAllowed);
    }

    void eachChangeSendsItsSignalInTheOrderOfThePlan_data()
    {
        QTest::addColumn<bool>("isRename");
        QTest::newRow("rename") << true;
        QTest::newRow("delete") << false;
    }

    void eachChangeSendsItsSignalInTheOrderOfThePlan()
    {
        QFETCH(const bool, isRename);
        TestControl control;
        SCLDocument* document = control.Open(EveryPlace());
        SCLElement* ied = IedOf(document->Root(), QStringLiteral("E1"));
        const QString newName = QStringLiteral("N");
        const Result plan = isRename ? SCLIedReferences::PlanRename(ied, newName)
                                     : SCLIedReferences::PlanDelete(ied);
        QVERIFY(!document->GetModified());
        QStringList expected;
        for (const Change& change : plan.changes)
            expected.append(SignalText(change));
        expected.insert(1, QStringLiteral("modifiedStateChanged true"));
        SignalLog log(document);

        if (isRename)
            SCLIedReferences::Rename(ied, newName);
        else
            SCLIedReferences::Delete(ied);

        QCOMPARE(log.Lines(), expected);
    }

    void removedElementsAreNullInTheResult()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(EveryPlace());

        const Result result = SCLIedReferences::Delete(IedOf(root, QStringLiteral("E1")));

        QVERIFY(!IedOf(root, QStringLiteral("E1")));
        for (const Change& change : result.changes)
            QCOMPARE(change.element == nullptr, change.action == Action::RemoveElement);
    }

    void planningChangesNothing()
    {
        TestControl control;
        SCLDocument* document = control.Open(EveryPlace());
        const QString before = ElementText(document->Root());
        const SignalLog log(document);

        PlanRename(document->Root());
        PlanDelete(document->Root());

        QCOMPARE(ElementText(document->Root()), before);
        QCOMPARE(log.Lines(), QStringList());
        QVERIFY(!document->GetModified());
    }

    void anEditPlansAnew()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(EveryPlace());
        PlanRename(root);
        SCLElement* input = Marked(root, QStringLiteral("input"));
        SCLElement* inputs = input->GetParent(QString());
        inputs->RemoveChild(input, true);
        SCLElement* added = inputs->CreateChild(QStringLiteral("ExtRef"), -1, true);
        added->SetAttribute(QStringLiteral("iedName"), QStringLiteral("E1"), true);

        SCLIedReferences::Rename(IedOf(root, QStringLiteral("E1")), QStringLiteral("N"));

        QCOMPARE(added->GetAttribute(QStringLiteral("iedName")), QStringLiteral("N"));
    }

    void theEditsEqualTheirPlans()
    {
        int changes = 0;
        for (unsigned seed = 0; seed < 200; ++seed) {
            TestControl control;
            SCLElement* root = control.OpenRoot(RandomStation(seed).Text());
            SCLElement* ied = IedOf(root, QStringLiteral("Zed"));

            const Result renaming = SCLIedReferences::PlanRename(ied, QStringLiteral("Fresh"));
            const QStringList renamed = ChangeTexts(renaming);
            QCOMPARE(ChangeTexts(SCLIedReferences::Rename(ied, QStringLiteral("Fresh"))), renamed);
            for (const Change& change : renaming.changes)
                QCOMPARE(change.action == Action::SetText
                             ? change.element->GetValue()
                             : change.element->GetAttribute(change.attribute),
                         change.newValue);

            const QStringList deleted = ValuesTexts(SCLIedReferences::PlanDelete(ied));
            QCOMPARE(ValuesTexts(SCLIedReferences::Delete(ied)), deleted);
            changes += static_cast<int>(renamed.size() + deleted.size());
        }
        QVERIFY(changes > 2000);
    }

    void renamingThereAndBackGivesTheSameStation()
    {
        for (unsigned seed = 0; seed < 200; ++seed) {
            TestControl control;
            SCLElement* root = control.OpenRoot(RandomStation(seed).Text());
            SCLElement* ied = IedOf(root, QStringLiteral("Zed"));
            // Brings the identifiers to their form.
            QVERIFY(!SCLIedReferences::Rename(ied, QStringLiteral("Zed")).IsRefused());
            const QString before = ElementText(root);

            QVERIFY(!SCLIedReferences::Rename(ied, QStringLiteral("Fresh")).IsRefused());
            QVERIFY(ElementText(root) != before);
            QVERIFY(!SCLIedReferences::Rename(ied, QStringLiteral("Zed")).IsRefused());

            QCOMPARE(ElementText(root), before);
        }
    }

    void noReferenceIsLeft_data()
    {
        QTest::addColumn<bool>("isRename");
        QTest::newRow("after renaming") << true;
        QTest::newRow("after deleting") << false;
    }

    void noReferenceIsLeft()
    {
        QFETCH(const bool, isRename);
        int before = 0;
        for (unsigned seed = 0; seed < 300; ++seed) {
            TestControl control;
            SCLElement* root = control.OpenRoot(RandomStation(seed).Text());
            SCLElement* ied = IedOf(root, QStringLiteral("Zed"));
            const QRegularExpression isNoReference(
                QStringLiteral("(%1)/").arg(DevicesNotOf(ied).join(QLatin1Char('|'))));
            const auto references = [root, &isNoReference](const QString& name) {
                const QStringList mentions = Mentions(root, name);
                QStringList left;
                for (const QString& mention : mentions) {
                    if (!mention.contains(isNoReference))
                        left.append(mention);
                }
                return left;
            };
            const bool hasFunctionalName =
                ied->FindChild(QStringLiteral("LDevice"), QStringLiteral("ldName"),
                               QStringLiteral("Fun0"), true) != nullptr;
            before += static_cast<int>(references(QStringLiteral("Zed")).size());

            if (isRename)
                SCLIedReferences::Rename(ied, QStringLiteral("Fresh"));
            else
                SCLIedReferences::Delete(ied);

            QCOMPARE(references(QStringLiteral("Zed")), QStringList());
            if (!isRename && hasFunctionalName)
                QCOMPARE(references(QStringLiteral("Fun0")), QStringList());
        }
        QVERIFY(before > 1000);
    }

    void otherIedsAreNotTouched()
    {
        for (unsigned seed = 0; seed < 100; ++seed) {
            TestControl control;
            SCLElement* root = control.OpenRoot(RandomStation(seed).Text());
            const QString zoo = QStringLiteral("Zoo");
            const QStringList all = Mentions(root, zoo);

            SCLIedReferences::Rename(IedOf(root, QStringLiteral("Zed")), QStringLiteral("Fresh"));
            QCOMPARE(Mentions(root, zoo), all);

            SCLElement* ied = IedOf(root, QStringLiteral("Fresh"));
            const auto elsewhere = all.size() - Mentions(ied, zoo).size();
            SCLIedReferences::Delete(ied);
            QCOMPARE(Mentions(root, zoo).size(), elsewhere);
        }
    }

    void whatTheNarrowFunctionsFollowIsFollowed()
    {
        int compared = 0;
        for (unsigned seed = 0; seed < 200; ++seed) {
            TestControl control;
            SCLElement* root = control.OpenRoot(RandomStation(seed).Text());
            SCLElement* ied = IedOf(root, QStringLiteral("Zed"));

            SCLIedReferences::Rename(ied, QStringLiteral("Fresh"));
            const QString renamed = ElementText(root);
            SCLHelp::HandleUpdateForIEDName(QStringLiteral("Zed"), ied);
            QCOMPARE(ElementText(root), renamed);

            const QList<Change> changes = SCLIedReferences::PlanDelete(ied).changes;
            QSet<SCLElement*> removed;
            for (const Change& change : changes) {
                if (change.action == Action::RemoveElement)
                    removed.insert(change.element);
            }
            const auto isPlanned = [&removed, &compared](SCLElement* element) {
                ++compared;
                QVERIFY(removed.contains(element));
            };
            QObject::connect(root->GetDocument(), &SCLDocument::sigDeleteElement, isPlanned);
            SCLHelp::HandleDeleteForIED(ied);
        }
        QVERIFY(compared > 300);
    }

    void theSampleFollowsButForFreeText_data()
    {
        QTest::addColumn<QString>("name");
        for (const char* name : {"E01F1", "E02F1", "E01U1", "E02U1", "AA1G1"})
            QTest::newRow(name) << QString(name);
    }

    void theSampleFollowsButForFreeText()
    {
        QFETCH(const QString, name);
        const QString path = QStringLiteral(CORVANE_SAMPLES_DIR "/station.scd");
        const QRegularExpression isFreeText(QStringLiteral("^(\\S+ desc:|Val: Empfang )"));
        TestControl control;
        SCLElement* root = control->OpenDocument(path, false)->Root();
        const auto isLeft = [&](const QString& mention) { return !mention.contains(isFreeText); };
        const auto count = [&](const QString& part) {
            const QStringList mentions = Mentions(root, part);
            return std::count_if(mentions.begin(), mentions.end(), isLeft);
        };
        QVERIFY(count(name) > 10);

        QVERIFY(
            !SCLIedReferences::Rename(IedOf(root, name), QStringLiteral("Renamed1")).IsRefused());
        QCOMPARE(count(name), 0);
        SCLIedReferences::Delete(IedOf(root, QStringLiteral("Renamed1")));
        QCOMPARE(count(QStringLiteral("Renamed1")), 0);
    }

    void depthIsNoObstacle()
    {
        constexpr int depth = 200000;
        QByteArray text = "<SCL>" + PlainIed("E1") + "<Private>";
        for (int i = 0; i < depth; ++i)
            text += "<a>";
        text += "<ExtRef iedName=\"E1\"/>";
        for (int i = 0; i < depth; ++i)
            text += "</a>";
        text += "</Private><Substation>";
        for (int i = 0; i < depth; ++i)
            text += "<LNode iedName=\"E1\">";
        for (int i = 0; i < depth; ++i)
            text += "</LNode>";
        TestControl control;
        SCLElement* root = control.OpenRoot(text + "</Substation></SCL>");

        QCOMPARE(PlanRename(root).changes.size(), depth + 1);
        QCOMPARE(SCLIedReferences::Delete(IedOf(root, QStringLiteral("E1"))).changes.size(),
                 depth + 1);
    }
};

QTEST_APPLESS_MAIN(SCLIedReferencesTest)
#include "SCLIedReferencesTest.moc"
