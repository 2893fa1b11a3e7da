// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/MarkedElement.h"
#include "tests/support/SignalLog.h"
#include "tests/support/TestControl.h"

#include <corvane/elements/SCLNamePool.h>
#include <corvane/help/SCLHelp.h>

#include <QTest>

#include <algorithm>
#include <functional>
#include <random>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

// The functions and texts of one kind, so that each rule is shown for both.
struct Kind {
    QByteArray entryTag;
    QByteArray controlTag;
    void (*collect)(QStringList&, QStringList&, SCLElement*);
    SCLElement* (*controlOf)(SCLElement*);
    SCLElement* (*entryOf)(SCLElement*, SCLElement*);
    int firstAppId;
    int appIdEnd;
    QString firstMac;
    QString fallbackMac;
    bool upperFallback;
    bool hasTimes;
};

const Kind& KindOf(bool goose)
{
    static const Kind kinds[] = {{"SMV", "SampledValueControl", SCLHelp::GetAllSvAddress,
                                  SCLHelp::GetSMVControlFromSMV, SCLHelp::GetSMVFromSMVControl,
                                  0x4000, 0x7FFF, "01-0C-CD-01-%1-%2", "01-0C-CD-04-%1-%2", true,
                                  false},
                                 {"GSE", "GSEControl", SCLHelp::GetAllGoAddress,
                                  SCLHelp::GetGSEControlFromGSE, SCLHelp::GetGSEFromGSEControl, 1,
                                  0x3FFF, "01-0C-CD-01-%1-%2", "01-0C-CD-01-%1-%2", false, true}};
    return kinds[goose ? 1 : 0];
}

void AddKinds()
{
    QTest::addColumn<bool>("goose");
    QTest::newRow("GOOSE") << true;
    QTest::newRow("sampled values") << false;
}

// A text that says CB, NET and OTHERNET where the tags of the kind and of the other are meant.
QByteArray For(bool goose, QByteArray text)
{
    text.replace("OTHERNET", KindOf(!goose).entryTag);
    return text.replace("CB", KindOf(goose).controlTag).replace("NET", KindOf(goose).entryTag);
}

QByteArray Devices(const QByteArray& lDevices, const QByteArray& ied = "I")
{
    return "<IED name='" + ied + "'><AccessPoint name='A'><Server>" + lDevices +
           "</Server></AccessPoint></IED>";
}

QByteArray Device(const QByteArray& controls)
{
    return Devices("<LDevice inst='L'><LN0>" + controls + "</LN0></LDevice>");
}

QByteArray Network(const QByteArray& inside, const QByteArray& others = {})
{
    return "<Communication><SubNetwork><ConnectedAP mark='cap' iedName='I' apName='A'>" + inside +
           "</ConnectedAP>" + others + "</SubNetwork></Communication>";
}

QByteArray P(const QByteArray& type, const QByteArray& value)
{
    return "<P type='" + type + "'>" + value + "</P>";
}

// An entry with the two addresses that count.
QByteArray Entry(const QByteArray& attributes, const QByteArray& appId, const QByteArray& mac)
{
    return "<NET " + attributes + "><Address>" + P("APPID", appId) + P("MAC-Address", mac) +
           "</Address></NET>";
}

// An entry of another ConnectedAP, whose addresses are in use.
QByteArray Used(const QByteArray& appId, const QByteArray& mac)
{
    return "<ConnectedAP>" + Entry("", appId, mac) + "</ConnectedAP>";
}

QString ValueOf(SCLElement* entry, const char* type)
{
    SCLElement* parameter = SCLHelp::GetAddressP(entry->GetFirstChild("Address")).value(type);
    return parameter ? parameter->GetValue() : QStringLiteral("none");
}

// "cbName APPID MAC" of each entry.
QStringList Addresses(SCLElement* connectedAP, bool goose)
{
    QStringList texts;
    const QList<SCLElement*> entries = connectedAP->FindChildByType(KindOf(goose).entryTag, false);
    for (SCLElement* entry : entries)
        texts.append(entry->GetAttribute("cbName") + ' ' + ValueOf(entry, "APPID") + ' ' +
                     ValueOf(entry, "MAC-Address"));
    return texts;
}

SCLElement* AddChild(SCLElement* parent, const QString& tag,
                     const QMap<QString, QString>& attributes = {})
{
    return parent->CreateChild(tag, attributes, -1, false);
}

void AddParameter(SCLElement* address, const QString& type, const QString& value)
{
    AddChild(address, "P", {{"type", type}})->SetValue(value, false);
}

void AddEntry(SCLElement* connectedAP, bool goose, const QString& appId, const QString& mac)
{
    SCLElement* address = AddChild(AddChild(connectedAP, KindOf(goose).entryTag), "Address");
    AddParameter(address, "APPID", appId);
    AddParameter(address, "MAC-Address", mac);
}

QString Hex(int number, int width)
{
    return QString("%1").arg(number, width, 16, QLatin1Char('0'));
}

// The update once more as plain loops over lists of texts, for a tree that nobody else changes.
namespace Plain
{

struct Lists {
    QStringList macAddresses;
    QStringList appIds;
};

QString TakeAppId(const Kind& kind, QStringList& appIds)
{
    QString text;
    for (int number = kind.firstAppId; number < kind.appIdEnd; ++number) {
        text = Hex(number, 4).toUpper();
        if (!appIds.contains(text)) {
            appIds.append(text);
            break;
        }
    }
    return text;
}

QString TakeMac(const Kind& kind, const QString& appId, QStringList& macAddresses)
{
    QString text = kind.firstMac.arg(appId.left(2)).arg(appId.right(2)).toUpper();
    if (!macAddresses.contains(text)) {
        macAddresses.append(text);
        return text;
    }
    for (int high = 0; high < 256; ++high) {
        for (int low = 0; low < 256; ++low) {
            text = kind.fallbackMac.arg(Hex(high, 2)).arg(Hex(low, 2));
            if (kind.upperFallback)
                text = text.toUpper();
            if (!macAddresses.contains(text)) {
                macAddresses.append(text);
                return text;
            }
        }
    }
    return {};
}

SCLElement* Create(SCLElement* parent, const QString& tag,
                   const QMap<QString, QString>& attributes = {}, const QString& value = {})
{
    SCLElement* child = attributes.isEmpty() ? parent->CreateChild(tag, -1, true)
                                             : parent->CreateChild(tag, attributes, -1, true);
    if (!value.isNull())
        child->SetValue(value, true);
    return child;
}

void CreateEntry(const Kind& kind, Lists& lists, SCLElement* connectedAP, const QString& cbName,
                 const QString& ldInst)
{
    const QString appId = TakeAppId(kind, lists.appIds);
    const QString mac = TakeMac(kind, appId, lists.macAddresses);
    SCLElement* entry =
        Create(connectedAP, kind.entryTag, {{"cbName", cbName}, {"ldInst", ldInst}});
    SCLElement* address = Create(entry, "Address");
    Create(address, "P", {{"type", "MAC-Address"}}, mac);
    Create(address, "P", {{"type", "VLAN-ID"}}, "000");
    Create(address, "P", {{"type", "VLAN-PRIORITY"}}, "4");
    Create(address, "P", {{"type", "APPID"}}, appId);
    if (!kind.hasTimes)
        return;
    Create(entry, "MinTime", {{"multiplier", "m"}, {"unit", "s"}}, "2");
    Create(entry, "MaxTime", {{"multiplier", "m"}, {"unit", "s"}}, "5000");
}

bool Update(SCLElement* connectedAP, bool withAddress)
{
    SCLElement* accessPoint = SCLHelp::GetAPFromConnectedAP(connectedAP);
    if (!accessPoint)
        return false;
    if (withAddress && !connectedAP->GetFirstChild("Address")) {
        SCLElement* address = Create(connectedAP, "Address");
        Create(address, "P", {{"type", "IP"}}, "0.0.0.0");
        Create(address, "P", {{"type", "IP-SUBNET"}}, "255.255.0.0");
    }
    Lists lists[2];
    SCLElement* communication = connectedAP->GetParent("Communication");
    for (const bool goose : {true, false})
        KindOf(goose).collect(lists[goose].macAddresses, lists[goose].appIds, communication);
    for (const bool goose : {true, false}) {
        const QList<SCLElement*> entries =
            connectedAP->FindChildByType(KindOf(goose).entryTag, false);
        for (SCLElement* entry : entries) {
            if (!KindOf(goose).controlOf(entry))
                connectedAP->RemoveChild(entry, true);
        }
    }
    SCLElement* server = accessPoint->GetFirstChild("Server");
    if (!server)
        return false;
    const QList<SCLElement*> lDevices = server->FindChildByType("LDevice", false);
    for (SCLElement* lDevice : lDevices) {
        const QString inst = lDevice->GetAttribute("inst");
        SCLElement* ln0 = lDevice->GetFirstChild("LN0");
        if (!ln0)
            continue;
        for (const bool goose : {true, false}) {
            const QList<SCLElement*> controls =
                ln0->FindChildByType(KindOf(goose).controlTag, false);
            for (SCLElement* control : controls) {
                if (!KindOf(goose).entryOf(control, connectedAP))
                    CreateEntry(KindOf(goose), lists[goose], connectedAP,
                                control->GetAttribute("name"), inst);
            }
        }
    }
    return true;
}

} // namespace Plain

// Small stations at random, poor in names and rich in addresses that clash, are written oddly or
// are the last of their range.
class RandomStation
{
public:
    explicit RandomStation(unsigned seed) : m_engine(seed) {}

    int UpTo(int end) { return static_cast<int>(m_engine() % static_cast<unsigned>(end)); }
    bool Rarely() { return UpTo(12) == 0; }

    void Fill(SCLElement* root)
    {
        for (int i = 1 + UpTo(3); i > 0; --i)
            AddIed(root);
        SCLElement* communication = AddChild(root, Rarely() ? "Private" : "Communication");
        for (int i = 1 + UpTo(2); i > 0; --i) {
            SCLElement* parent = AddChild(communication, Rarely() ? "Private" : "SubNetwork");
            for (int k = 1 + UpTo(4); k > 0; --k)
                AddConnectedAP(parent);
        }
    }

    // An edit of the kind that people make between two updates.
    void Edit(SCLElement* root)
    {
        const QString tag = Pick({"GSEControl", "SampledValueControl", "GSE", "SMV", "P", "IED"});
        const QList<SCLElement*> elements = root->FindChildByType(tag, true);
        if (elements.isEmpty())
            return;
        SCLElement* element = elements.at(UpTo(static_cast<int>(elements.size())));
        if (tag == "P")
            element->SetValue(Value(element->GetAttribute("type")), true);
        else if (UpTo(2) == 0)
            element->SetAttribute(tag == "IED" ? "name" : "cbName", Name(), true);
        else
            element->GetParent(QString())->RemoveChild(element, true);
    }

    // A change without a signal that takes nothing out.
    void EditSilently(SCLElement* root)
    {
        const QString tag = Pick(
            {"GSEControl", "SampledValueControl", "GSE", "SMV", "LDevice", "P", "P", "P", "IED"});
        const QList<SCLElement*> elements = root->FindChildByType(tag, true);
        if (elements.isEmpty())
            return;
        SCLElement* element = elements.at(UpTo(static_cast<int>(elements.size())));
        if (tag == "P")
            element->SetValue(Value(element->GetAttribute("type")), false);
        else if (tag == "LDevice")
            element->SetAttribute("inst", Name(), false);
        else
            element->SetAttribute(tag.size() == 3 && tag != "IED" ? "cbName" : "name", Name(),
                                  false);
    }

private:
    QString Pick(const QList<const char*>& texts)
    {
        return QString::fromLatin1(texts.at(UpTo(static_cast<int>(texts.size()))));
    }
    QString Name() { return Pick({"a", "b", "c", ""}); }

    void AddIed(SCLElement* root)
    {
        SCLElement* ied = AddChild(root, "IED", {{"name", Pick({"I", "J"})}});
        for (int i = 1 + UpTo(2); i > 0; --i) {
            SCLElement* accessPoint = AddChild(ied, "AccessPoint", {{"name", Pick({"A", "B"})}});
            for (int k = Rarely() ? 0 : 1 + UpTo(2); k > 0; --k)
                AddServer(accessPoint);
        }
    }

    void AddServer(SCLElement* accessPoint)
    {
        SCLElement* server = AddChild(accessPoint, "Server");
        for (int i = UpTo(3); i > 0; --i) {
            SCLElement* lDevice = AddChild(server, "LDevice", {{"inst", Name()}});
            for (int k = UpTo(3); k > 0; --k) {
                SCLElement* node = AddChild(lDevice, Rarely() ? "LN" : "LN0");
                for (int c = UpTo(5); c > 0; --c)
                    AddChild(node, Pick({"GSEControl", "SampledValueControl"}), {{"name", Name()}});
            }
        }
    }

    void AddConnectedAP(SCLElement* parent)
    {
        SCLElement* connectedAP =
            AddChild(parent, Rarely() ? "Private" : "ConnectedAP",
                     {{"iedName", Pick({"I", "J"})}, {"apName", Pick({"A", "B"})}});
        if (UpTo(3) == 0)
            AddChild(connectedAP, "Address");
        for (int i = UpTo(5); i > 0; --i) {
            SCLElement* entry = AddChild(connectedAP, Pick({"GSE", "SMV"}),
                                         {{"ldInst", Name()}, {"cbName", Name()}});
            for (int k = Rarely() ? 2 : 1; k > 0; --k) {
                SCLElement* address = AddChild(entry, "Address");
                for (int p = UpTo(5); p > 0; --p) {
                    const QString type = Pick({"APPID", "MAC-Address", "VLAN-ID"});
                    AddParameter(address, type, Value(type));
                }
            }
        }
    }

    QString Value(const QString& type)
    {
        if (type == "APPID")
            return Pick({"0001", "0002", "3", "0003", " 4000\n", "4001", "000a", "000A", ""});
        if (type == "MAC-Address")
            return Pick({"01-0C-CD-01-00-00", "01-0C-CD-01-00-01", "01-0C-CD-01-00-02",
                         "01-0c-cd-01-00-03", "01-0C-CD-01-40-00", "01-0C-CD-01-40-01",
                         "01-0C-CD-04-00-00", " 01-0C-CD-01-00-04\t", "01:0C:CD:01:00:05",
                         "01-0C-CD-01-00-0A", "01-0C-CD-04-00-0a", "nonsense"});
        return "000";
    }

    std::mt19937 m_engine;
};

QList<SCLElement*> ConnectedAPs(SCLElement* root)
{
    QList<SCLElement*> found;
    for (const char* section : {"Communication", "Private"}) {
        for (const char* parent : {"SubNetwork", "Private"}) {
            if (SCLElement* top = root->GetFirstChild(section)) {
                const QList<SCLElement*> parents = top->FindChildByType(parent, false);
                for (SCLElement* element : parents)
                    found += element->GetChildList();
            }
        }
    }
    return found;
}

} // namespace

class SCLHelp_AddressesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void collectingAppendsInTheOrderOfTheWalk_data() { AddKinds(); }
    void collectingAppendsInTheOrderOfTheWalk();
    void collectedValuesAreTrimmedAndInUpperCase_data() { AddKinds(); }
    void collectedValuesAreTrimmedAndInUpperCase();
    void noCommunicationLeavesTheListsAsTheyAre_data() { AddKinds(); }
    void noCommunicationLeavesTheListsAsTheyAre();

    void parametersAreFoundByType();
    void ofTwoParametersOfATypeTheLaterOneStays();
    void noAddressHasNoParameters();

    void theFirstEntriesGetTheFirstAddresses();
    void aGooseEntryIsMadeAsDescribed();
    void aSampledValuesEntryIsMadeAsDescribed();
    void theSignalsGoOutInTheOrderOfTheSteps();
    void theAddressIsMadeOnlyOnRequest();
    void anAddressThatIsThereStaysAsItIs();
    void anEntryThatIsThereStaysAsItIs_data() { AddKinds(); }
    void anEntryThatIsThereStaysAsItIs();
    void theSecondOfTwoCallsChangesNothing();

    void aGapIsFilledAgain_data() { AddKinds(); }
    void aGapIsFilledAgain();
    void aLowerCaseAppIdBlocksItsNumber_data() { AddKinds(); }
    void aLowerCaseAppIdBlocksItsNumber();
    void anotherNotationBlocksNothing_data() { AddKinds(); }
    void anotherNotationBlocksNothing();
    void theFamiliesDoNotBlockEachOther_data() { AddKinds(); }
    void theFamiliesDoNotBlockEachOther();
    void theAddressesOfRemovedEntriesAreFreeOnlyInALaterCall_data() { AddKinds(); }
    void theAddressesOfRemovedEntriesAreFreeOnlyInALaterCall();
    void withoutCommunicationTheListsAreEmpty_data() { AddKinds(); }
    void withoutCommunicationTheListsAreEmpty();
    void withoutServerOnlyTheFirstStepsAreDone();
    void withoutAccessPointNothingChanges();
    void onlyTheFirstLN0OfTheFirstServerCounts_data() { AddKinds(); }
    void onlyTheFirstLN0OfTheFirstServerCounts();
    void oneEntryServesAllControlBlocksOfItsName_data() { AddKinds(); }
    void oneEntryServesAllControlBlocksOfItsName();
    void anEntryBelongsToTheNearestConnectedAP_data() { AddKinds(); }
    void anEntryBelongsToTheNearestConnectedAP();

    void aTakenMacAddressLeadsToTheFallback_data();
    void aTakenMacAddressLeadsToTheFallback();
    void theGooseFallbackIgnoresUpperCaseLetters();
    void aGooseFallbackDoesNotBlockWhatFollowsFromAnAppId();
    void aUsedUpAppIdRangeGivesItsLastTextAgain_data() { AddKinds(); }
    void aUsedUpAppIdRangeGivesItsLastTextAgain();
    void whenAllFallbacksAreTakenTheMacAddressIsEmpty_data() { AddKinds(); }
    void whenAllFallbacksAreTakenTheMacAddressIsEmpty();

    void randomStationsAreUpdatedAsPlainLoopsDoIt();
    void slotsThatEditAreHonouredAsPlainLoopsDoIt();
    void changesBetweenTwoCallsAreSeen_data();
    void changesBetweenTwoCallsAreSeen();
    void aStationUpdatedPieceByPieceSharesNoAddress();
    void slotsThatChangeTheTreeAreHonoured_data();
    void slotsThatChangeTheTreeAreHonoured();
    void aSlotMayTakeOutWhatIsStillToCome();
    void aSlotMayUpdateAnotherConnectedAP();
    void aFullNamePoolGivesFalse();
    void nullAndDetachedElementsGiveFalse();
    void asManyControlBlocksAsThereAreAddressesAreUpdated();
};

void SCLHelp_AddressesTest::collectingAppendsInTheOrderOfTheWalk()
{
    TestControl control;
    QFETCH(const bool, goose);
    SCLElement* root = control.OpenRoot(
        For(goose, "<SCL><Communication>" + Entry("", "no", "no") + "<SubNetwork>" +
                       Entry("", "no", "no") + "<ConnectedAP>" + Entry("", "A1", "M1") +
                       "<NET/><OTHERNET><Address>" + P("APPID", "no") + "</Address></OTHERNET>" +
                       "<NET><Address>" + P("MAC-Address", "M2") + P("IP", "no") +
                       P("MAC-Address", "M3") + P("appid", "no") + P("MAC-Address", "M1") +
                       "</Address><Address>" + P("APPID", "no") + "</Address></NET>" +
                       "</ConnectedAP></SubNetwork><SubNetwork>" + Used("A2", "M4") +
                       Used("A1", "") + "</SubNetwork></Communication></SCL>"));
    QStringList macAddresses{"m0"};
    QStringList appIds{"a0"};
    KindOf(goose).collect(macAddresses, appIds, At(root, "Communication"));
    QCOMPARE(macAddresses, QStringList({"m0", "M1", "M2", "M3", "M1", "M4", ""}));
    QCOMPARE(appIds, QStringList({"a0", "A1", "A2", "A1"}));
}

void SCLHelp_AddressesTest::collectedValuesAreTrimmedAndInUpperCase()
{
    TestControl control;
    QFETCH(const bool, goose);
    SCLElement* root = control.OpenRoot(
        For(goose, "<SCL>" +
                       Network(Entry("", " \n00af\t", "01-0c-cd 01") + Entry("", "\u00df", "a b")) +
                       "</SCL>"));
    QStringList macAddresses;
    QStringList appIds;
    KindOf(goose).collect(macAddresses, appIds, At(root, "Communication"));
    QCOMPARE(macAddresses, QStringList({"01-0C-CD 01", "A B"}));
    QCOMPARE(appIds, QStringList({"00AF", "SS"}));
}

void SCLHelp_AddressesTest::noCommunicationLeavesTheListsAsTheyAre()
{
    const TestControl control;
    QFETCH(const bool, goose);
    QStringList macAddresses{"m"};
    QStringList appIds{"a"};
    KindOf(goose).collect(macAddresses, appIds, nullptr);
    QCOMPARE(macAddresses, QStringList{"m"});
    QCOMPARE(appIds, QStringList{"a"});
}

void SCLHelp_AddressesTest::parametersAreFoundByType()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL><Address><P type=' IP '/><P>x</P><p type='q'/>"
                                        "<Private><P type='deep'/></Private></Address></SCL>");
    SCLElement* address = At(root, "Address");
    const QMap<QString, SCLElement*> parameters = SCLHelp::GetAddressP(address);
    QCOMPARE(parameters,
             (QMap<QString, SCLElement*>{{" IP ", At(address, "P")}, {"", At(address, "P[1]")}}));
}

void SCLHelp_AddressesTest::ofTwoParametersOfATypeTheLaterOneStays()
{
    TestControl control;
    SCLElement* root =
        control.OpenRoot("<SCL><Address><P type='APPID'>1</P><P type='IP'/><P type='APPID'>2</P>"
                         "</Address></SCL>");
    const QMap<QString, SCLElement*> parameters = SCLHelp::GetAddressP(At(root, "Address"));
    QCOMPARE(parameters.size(), 2);
    QCOMPARE(parameters.value("APPID"), At(root, "Address/P[2]"));
}

void SCLHelp_AddressesTest::noAddressHasNoParameters()
{
    const TestControl control;
    QVERIFY(SCLHelp::GetAddressP(nullptr).isEmpty());
}

void SCLHelp_AddressesTest::theFirstEntriesGetTheFirstAddresses()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        "<SCL>" + Network("") +
        Device("<GSEControl name='a'/><GSEControl name='b'/><SampledValueControl name='c'/>"
               "<SampledValueControl name='d'/>") +
        "</SCL>");
    SCLElement* connectedAP = Marked(root, "cap");
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(connectedAP, false));
    QCOMPARE(Addresses(connectedAP, true),
             QStringList({"a 0001 01-0C-CD-01-00-01", "b 0002 01-0C-CD-01-00-02"}));
    QCOMPARE(Addresses(connectedAP, false),
             QStringList({"c 4000 01-0C-CD-01-40-00", "d 4001 01-0C-CD-01-40-01"}));
    QVERIFY(root->GetDocument()->GetModified());
}

void SCLHelp_AddressesTest::aGooseEntryIsMadeAsDescribed()
{
    TestControl control;
    SCLElement* root =
        control.OpenRoot("<SCL>" + Network("") + Device("<GSEControl name='a'/>") + "</SCL>");
    SCLElement* connectedAP = Marked(root, "cap");
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(connectedAP, false));
    QCOMPARE(ElementTexts(connectedAP->GetChildList()),
             QStringList("<GSE cbName=\"a\" ldInst=\"L\"><Address>"
                         "<P type=\"MAC-Address\">01-0C-CD-01-00-01</P><P type=\"VLAN-ID\">000</P>"
                         "<P type=\"VLAN-PRIORITY\">4</P><P type=\"APPID\">0001</P></Address>"
                         "<MinTime multiplier=\"m\" unit=\"s\">2</MinTime>"
                         "<MaxTime multiplier=\"m\" unit=\"s\">5000</MaxTime></GSE>"));
}

void SCLHelp_AddressesTest::aSampledValuesEntryIsMadeAsDescribed()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL>" + Network("") +
                                        Devices("<LDevice><LN0><SampledValueControl/></LN0>"
                                                "</LDevice>") +
                                        "</SCL>");
    SCLElement* connectedAP = Marked(root, "cap");
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(connectedAP, false));
    QCOMPARE(ElementTexts(connectedAP->GetChildList()),
             QStringList("<SMV cbName=\"\" ldInst=\"\"><Address>"
                         "<P type=\"MAC-Address\">01-0C-CD-01-40-00</P><P type=\"VLAN-ID\">000</P>"
                         "<P type=\"VLAN-PRIORITY\">4</P><P type=\"APPID\">4000</P></Address>"
                         "</SMV>"));
}

void SCLHelp_AddressesTest::theSignalsGoOutInTheOrderOfTheSteps()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        "<SCL>" + Network("<SMV cbName='x'/><GSE cbName='y'/>") +
        Device("<SampledValueControl name='s'/><GSEControl name='g'/>") + "</SCL>");
    SignalLog log(root->GetDocument());
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(Marked(root, "cap"), true));
    QCOMPARE(log.Lines(), QStringList({"addElement <Address/>",
                                       "modifiedStateChanged true",
                                       "addElement <P type=\"IP\"/>",
                                       "editValue P \"0.0.0.0\"",
                                       "addElement <P type=\"IP-SUBNET\"/>",
                                       "editValue P \"255.255.0.0\"",
                                       "deleteElement <GSE cbName=\"y\"/>",
                                       "deleteElement <SMV cbName=\"x\"/>",
                                       "addElement <GSE cbName=\"g\" ldInst=\"L\"/>",
                                       "addElement <Address/>",
                                       "addElement <P type=\"MAC-Address\"/>",
                                       "editValue P \"01-0C-CD-01-00-01\"",
                                       "addElement <P type=\"VLAN-ID\"/>",
                                       "editValue P \"000\"",
                                       "addElement <P type=\"VLAN-PRIORITY\"/>",
                                       "editValue P \"4\"",
                                       "addElement <P type=\"APPID\"/>",
                                       "editValue P \"0001\"",
                                       "addElement <MinTime multiplier=\"m\" unit=\"s\"/>",
                                       "editValue MinTime \"2\"",
                                       "addElement <MaxTime multiplier=\"m\" unit=\"s\"/>",
                                       "editValue MaxTime \"5000\"",
                                       "addElement <SMV cbName=\"s\" ldInst=\"L\"/>",
                                       "addElement <Address/>",
                                       "addElement <P type=\"MAC-Address\"/>",
                                       "editValue P \"01-0C-CD-01-40-00\"",
                                       "addElement <P type=\"VLAN-ID\"/>",
                                       "editValue P \"000\"",
                                       "addElement <P type=\"VLAN-PRIORITY\"/>",
                                       "editValue P \"4\"",
                                       "addElement <P type=\"APPID\"/>",
                                       "editValue P \"4000\""}));
}

void SCLHelp_AddressesTest::theAddressIsMadeOnlyOnRequest()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL>" + Network("") + Devices("") + "</SCL>");
    SCLElement* connectedAP = Marked(root, "cap");
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(connectedAP, false));
    QCOMPARE(connectedAP->GetChildCount(true), 0);
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(connectedAP, true));
    QCOMPARE(ElementTexts(connectedAP->GetChildList()),
             QStringList("<Address><P type=\"IP\">0.0.0.0</P>"
                         "<P type=\"IP-SUBNET\">255.255.0.0</P></Address>"));
}

void SCLHelp_AddressesTest::anAddressThatIsThereStaysAsItIs()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL>" + Network("<Address/>") + Devices("") + "</SCL>");
    SignalLog log(root->GetDocument());
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(Marked(root, "cap"), true));
    QCOMPARE(log.Lines(), QStringList());
    QCOMPARE(ElementText(At(Marked(root, "cap"), "Address")), QString("<Address/>"));
}

void SCLHelp_AddressesTest::anEntryThatIsThereStaysAsItIs()
{
    TestControl control;
    QFETCH(const bool, goose);
    const QByteArray text = For(goose, "<SCL>" + Network("<NET cbName='c' ldInst='L'/>") +
                                           Device("<CB name='c'/>") + "</SCL>");
    SCLElement* root = control.OpenRoot(text);
    SignalLog log(root->GetDocument());
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(Marked(root, "cap"), false));
    QCOMPARE(log.Lines(), QStringList());
    QCOMPARE(ElementText(root), ElementText(control.OpenRoot(text)));
}

void SCLHelp_AddressesTest::theSecondOfTwoCallsChangesNothing()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        "<SCL>" + Network("<GSE/>", For(true, Used("0001", "01-0C-CD-01-00-02"))) +
        Device("<GSEControl name='a'/><GSEControl name='b'/><SampledValueControl name='c'/>") +
        "</SCL>");
    SCLElement* connectedAP = Marked(root, "cap");
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(connectedAP, true));
    const QString once = ElementText(root);
    SignalLog log(root->GetDocument());
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(connectedAP, true));
    QCOMPARE(log.Lines(), QStringList());
    QCOMPARE(ElementText(root), once);
}

void SCLHelp_AddressesTest::aGapIsFilledAgain()
{
    TestControl control;
    QFETCH(const bool, goose);
    const int first = KindOf(goose).firstAppId;
    const auto used = [first](int offset) { return Used(Hex(first + offset, 4).toLatin1(), "m"); };
    SCLElement* root = control.OpenRoot(
        For(goose, "<SCL>" + Network("", used(4) + used(0) + used(2)) +
                       Device("<CB name='a'/><CB name='b'/><CB name='c'/>") + "</SCL>"));
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(Marked(root, "cap"), false));
    QStringList appIds;
    for (const QString& text : Addresses(Marked(root, "cap"), goose))
        appIds.append(text.section(' ', 1, 1));
    QCOMPARE(appIds, QStringList({Hex(first + 1, 4), Hex(first + 3, 4), Hex(first + 5, 4)}));
}

void SCLHelp_AddressesTest::aLowerCaseAppIdBlocksItsNumber()
{
    TestControl control;
    QFETCH(const bool, goose);
    QByteArray used;
    for (int i = 0; i < 16; ++i)
        used += Used(Hex(KindOf(goose).firstAppId + i, 4).toLatin1(), "m");
    SCLElement* root = control.OpenRoot(
        For(goose, "<SCL>" + Network("", used) + Device("<CB name='a'/>") + "</SCL>"));
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(Marked(root, "cap"), false));
    QCOMPARE(Addresses(Marked(root, "cap"), goose).value(0).section(' ', 1, 1),
             Hex(KindOf(goose).firstAppId + 16, 4));
}

void SCLHelp_AddressesTest::anotherNotationBlocksNothing()
{
    TestControl control;
    QFETCH(const bool, goose);
    const QString first = Hex(KindOf(goose).firstAppId, 4);
    const QByteArray used = Used("0x" + first.toLatin1(), "01:0C:CD:01:00:01") +
                            Used("0" + first.toLatin1(), "010CCD014000") + Used("1", "01-0C-CD-01");
    SCLElement* root = control.OpenRoot(
        For(goose, "<SCL>" + Network("", used) + Device("<CB name='a'/>") + "</SCL>"));
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(Marked(root, "cap"), false));
    QCOMPARE(Addresses(Marked(root, "cap"), goose),
             QStringList(goose ? "a 0001 01-0C-CD-01-00-01" : "a 4000 01-0C-CD-01-40-00"));
}

void SCLHelp_AddressesTest::theFamiliesDoNotBlockEachOther()
{
    TestControl control;
    QFETCH(const bool, goose);
    const QString first = Hex(KindOf(goose).firstAppId, 4);
    const QString mac = "01-0C-CD-01-" + first.left(2) + '-' + first.right(2);
    const QByteArray used = For(!goose, Used(first.toLatin1(), mac.toLatin1()));
    SCLElement* root = control.OpenRoot(
        For(goose, "<SCL>" + Network("", used) + Device("<CB name='a'/>") + "</SCL>"));
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(Marked(root, "cap"), false));
    QCOMPARE(Addresses(Marked(root, "cap"), goose), QStringList("a " + first + ' ' + mac));
}

void SCLHelp_AddressesTest::theAddressesOfRemovedEntriesAreFreeOnlyInALaterCall()
{
    TestControl control;
    QFETCH(const bool, goose);
    const QString first = Hex(KindOf(goose).firstAppId, 4);
    const QString second = Hex(KindOf(goose).firstAppId + 1, 4);
    const QString macPrefix = "01-0C-CD-01-" + first.left(2) + '-';
    const QByteArray stale =
        Entry("cbName='gone'", first.toLatin1(), (macPrefix + first.right(2)).toLatin1());
    SCLElement* root = control.OpenRoot(
        For(goose, "<SCL>" + Network(stale) + Device("<CB name='a'/>") + "</SCL>"));
    SCLElement* connectedAP = Marked(root, "cap");
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(connectedAP, false));
    QCOMPARE(Addresses(connectedAP, goose),
             QStringList("a " + second + ' ' + macPrefix + second.right(2)));

    SCLElement* ln0 = At(root, "IED/AccessPoint/Server/LDevice/LN0");
    ln0->CreateChild(KindOf(goose).controlTag, {{"name", "b"}}, -1, false);
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(connectedAP, false));
    QCOMPARE(Addresses(connectedAP, goose).value(1),
             "b " + first + ' ' + macPrefix + first.right(2));
}

void SCLHelp_AddressesTest::withoutCommunicationTheListsAreEmpty()
{
    TestControl control;
    QFETCH(const bool, goose);
    SCLElement* root = control.OpenRoot(For(
        goose, "<SCL><Net><SubNetwork><ConnectedAP mark='cap' iedName='I' apName='A'>" +
                   Entry("cbName='a' ldInst='L'", "0001", "01-0C-CD-01-00-01") +
                   Entry("cbName='b' ldInst='L'", "4000", "01-0C-CD-01-40-00") +
                   "</ConnectedAP></SubNetwork></Net>" +
                   Device("<CB name='a'/><CB name='b'/><CB name='c'/><CB name='d'/>") + "</SCL>"));
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(Marked(root, "cap"), false));
    const QStringList expected =
        goose ? QStringList{"c 0001 01-0C-CD-01-00-01", "d 0002 01-0C-CD-01-00-02"}
              : QStringList{"c 4000 01-0C-CD-01-40-00", "d 4001 01-0C-CD-01-40-01"};
    QCOMPARE(Addresses(Marked(root, "cap"), goose).mid(2), expected);
}

void SCLHelp_AddressesTest::withoutServerOnlyTheFirstStepsAreDone()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL>" + Network("<GSE mark='x'/><SMV/>") +
                                        "<IED name='I'><AccessPoint name='A'/></IED></SCL>");
    SignalLog log(root->GetDocument());
    QVERIFY(!SCLHelp::UpdateChildForConnectedAP(Marked(root, "cap"), true));
    QCOMPARE(log.Lines(),
             QStringList({"addElement <Address/>", "modifiedStateChanged true",
                          "addElement <P type=\"IP\"/>", "editValue P \"0.0.0.0\"",
                          "addElement <P type=\"IP-SUBNET\"/>", "editValue P \"255.255.0.0\"",
                          "deleteElement <GSE mark=\"x\"/>", "deleteElement <SMV/>"}));
}

void SCLHelp_AddressesTest::withoutAccessPointNothingChanges()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL>" + Network("<GSE/>") +
                                        "<IED name='I'><AccessPoint name='B'/></IED></SCL>");
    SignalLog log(root->GetDocument());
    QVERIFY(!SCLHelp::UpdateChildForConnectedAP(Marked(root, "cap"), true));
    QCOMPARE(log.Lines(), QStringList());
}

void SCLHelp_AddressesTest::onlyTheFirstLN0OfTheFirstServerCounts()
{
    TestControl control;
    QFETCH(const bool, goose);
    SCLElement* root = control.OpenRoot(
        For(goose, "<SCL>" + Network("") +
                       Devices("<LDevice inst='K'><LN><CB name='no'/></LN></LDevice>"
                               "<LDevice inst='L'><LN0><CB name='a'/></LN0>"
                               "<LN0><CB name='no'/></LN0></LDevice></Server>"
                               "<Server><LDevice inst='M'><LN0><CB name='no'/></LN0></LDevice>") +
                       "</SCL>"));
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(Marked(root, "cap"), false));
    QCOMPARE(Addresses(Marked(root, "cap"), goose).size(), 1);
    QVERIFY(Addresses(Marked(root, "cap"), goose).first().startsWith("a "));
}

void SCLHelp_AddressesTest::oneEntryServesAllControlBlocksOfItsName()
{
    TestControl control;
    QFETCH(const bool, goose);
    const QByteArray device = "<LDevice inst='L'><LN0><CB name='a'/><CB name='a'/></LN0></LDevice>";
    SCLElement* root =
        control.OpenRoot(For(goose, "<SCL>" + Network("") + Devices(device + device) + "</SCL>"));
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(Marked(root, "cap"), false));
    QCOMPARE(Addresses(Marked(root, "cap"), goose).size(), 1);
}

void SCLHelp_AddressesTest::anEntryBelongsToTheNearestConnectedAP()
{
    TestControl control;
    QFETCH(const bool, goose);
    SCLElement* root = control.OpenRoot(
        For(goose, "<SCL><Communication><SubNetwork><ConnectedAP iedName='J' apName='A'>"
                   "<Private mark='cap' iedName='I' apName='A'><NET cbName='a' ldInst='L'/>"
                   "<NET cbName='b' ldInst='L'/></Private></ConnectedAP></SubNetwork>"
                   "</Communication>" +
                       Device("<CB name='a'/>") +
                       Devices("<LDevice inst='L'><LN0><CB name='b'/></LN0></LDevice>", "J") +
                       "</SCL>"));
    SCLElement* entries = Marked(root, "cap");
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(entries, false));
    QStringList names;
    for (const QString& text : Addresses(entries, goose))
        names.append(text.section(' ', 0, 0));
    QCOMPARE(names, QStringList({"b", "a"}));
}

void SCLHelp_AddressesTest::aTakenMacAddressLeadsToTheFallback_data()
{
    QTest::addColumn<bool>("goose");
    QTest::addColumn<QByteArray>("used");
    QTest::addColumn<QStringList>("macAddresses");
    const QByteArray first = Used("", "01-0C-CD-01-00-01");
    const QByteArray sv = Used("", "01-0C-CD-01-40-00") + Used("", "01-0C-CD-01-40-01");
    QTest::newRow("GOOSE, from 00-00 on")
        << true << first << QStringList{"01-0C-CD-01-00-00", "01-0C-CD-01-00-02"};
    QTest::newRow("GOOSE, the low byte runs first")
        << true << first + Used("", "01-0c-cd-01-00-00") + Used("", "01-0C-CD-01-00-02")
        << QStringList{"01-0C-CD-01-00-03", "01-0C-CD-01-00-04"};
    QTest::newRow("sampled values, in their own group")
        << false << sv << QStringList{"01-0C-CD-04-00-00", "01-0C-CD-04-00-01"};
    QTest::newRow("sampled values, behind those in use")
        << false << sv + Used("", "01-0C-CD-04-00-00") + Used("", "01-0C-CD-04-00-02")
        << QStringList{"01-0C-CD-04-00-01", "01-0C-CD-04-00-03"};
}

void SCLHelp_AddressesTest::aTakenMacAddressLeadsToTheFallback()
{
    TestControl control;
    QFETCH(const bool, goose);
    QFETCH(const QByteArray, used);
    SCLElement* root = control.OpenRoot(For(
        goose, "<SCL>" + Network("", used) + Device("<CB name='a'/><CB name='b'/>") + "</SCL>"));
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(Marked(root, "cap"), false));
    QStringList macAddresses;
    for (const QString& text : Addresses(Marked(root, "cap"), goose))
        macAddresses.append(text.section(' ', 2));
    QTEST(macAddresses, "macAddresses");
}

void SCLHelp_AddressesTest::theGooseFallbackIgnoresUpperCaseLetters()
{
    TestControl control;
    QByteArray used;
    for (int i = 0; i < 16; ++i)
        used += Used("", "01-0C-CD-01-00-" + Hex(i, 2).toLatin1());
    SCLElement* root = control.OpenRoot(
        For(true, "<SCL>" + Network("", used) + Device("<CB name='a'/><CB name='b'/>") + "</SCL>"));
    SCLElement* connectedAP = Marked(root, "cap");
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(connectedAP, false));
    QCOMPARE(Addresses(connectedAP, true),
             QStringList({"a 0001 01-0C-CD-01-00-0a", "b 0002 01-0C-CD-01-00-0b"}));
    // A later call begins anew.
    AddChild(At(root, "IED/AccessPoint/Server/LDevice/LN0"), "GSEControl", {{"name", "c"}});
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(connectedAP, false));
    QCOMPARE(Addresses(connectedAP, true).value(2), QString("c 0003 01-0C-CD-01-00-0a"));
}

void SCLHelp_AddressesTest::aGooseFallbackDoesNotBlockWhatFollowsFromAnAppId()
{
    TestControl control;
    QByteArray used;
    for (int i = 0; i < 10; ++i)
        used += Used(Hex(i, 4).toLatin1(), "01-0C-CD-01-00-" + Hex(i, 2).toLatin1());
    used.replace("0009<", "none<");
    SCLElement* root = control.OpenRoot(
        For(true, "<SCL>" + Network("", used) + Device("<CB name='a'/><CB name='b'/>") + "</SCL>"));
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(Marked(root, "cap"), false));
    QCOMPARE(Addresses(Marked(root, "cap"), true),
             QStringList({"a 0009 01-0C-CD-01-00-0a", "b 000A 01-0C-CD-01-00-0A"}));
}

void SCLHelp_AddressesTest::aUsedUpAppIdRangeGivesItsLastTextAgain()
{
    TestControl control;
    QFETCH(const bool, goose);
    const Kind& kind = KindOf(goose);
    SCLElement* root = control.OpenRoot(
        For(goose, "<SCL>" + Network("") + Device("<CB name='a'/><CB name='b'/><CB name='c'/>") +
                       "</SCL>"));
    SCLElement* other = AddChild(At(root, "Communication/SubNetwork"), "ConnectedAP");
    for (int appId = kind.firstAppId; appId < kind.appIdEnd - 1; ++appId)
        AddEntry(other, goose, Hex(appId, 4), QString());
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(Marked(root, "cap"), false));
    const QStringList expected =
        goose ? QStringList{"a 3FFE 01-0C-CD-01-3F-FE", "b 3FFE 01-0C-CD-01-00-00",
                            "c 3FFE 01-0C-CD-01-00-01"}
              : QStringList{"a 7FFE 01-0C-CD-01-7F-FE", "b 7FFE 01-0C-CD-04-00-00",
                            "c 7FFE 01-0C-CD-04-00-01"};
    QCOMPARE(Addresses(Marked(root, "cap"), goose), expected);
}

void SCLHelp_AddressesTest::whenAllFallbacksAreTakenTheMacAddressIsEmpty()
{
    TestControl control;
    QFETCH(const bool, goose);
    const Kind& kind = KindOf(goose);
    SCLElement* root = control.OpenRoot(
        For(goose, "<SCL>" + Network("") + Device("<CB name='a'/><CB name='b'/>") + "</SCL>"));
    SCLElement* other = AddChild(At(root, "Communication/SubNetwork"), "ConnectedAP");
    AddEntry(other, goose, QString(), goose ? "01-0C-CD-01-00-01" : "01-0C-CD-01-40-00");
    // For GOOSE those with letters cannot be taken by a document, only by the call itself.
    QStringList free;
    for (int number = 0; number < 0x10000; ++number) {
        const QString mac = kind.fallbackMac.arg(Hex(number >> 8, 2), Hex(number & 0xFF, 2));
        if (number == 0x1234)
            free.append(mac);
        else
            AddEntry(other, goose, QString(), mac);
    }
    SCLElement* connectedAP = Marked(root, "cap");
    if (goose) {
        SCLElement* ln0 = At(root, "IED/AccessPoint/Server/LDevice/LN0");
        // 10,000 texts have no letter, and all but one of them are in use.
        for (int i = 2; i < 0x10000 - 10000 + 4; ++i)
            AddChild(ln0, "GSEControl", {{"name", QString::number(i)}});
    }
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(connectedAP, false));
    const QStringList addresses = Addresses(connectedAP, goose);
    if (goose) {
        QStringList macAddresses;
        for (const QString& text : addresses)
            macAddresses.append(text.section(' ', 2));
        QCOMPARE(macAddresses.removeAll(QString()), 3);
        QCOMPARE(macAddresses.removeDuplicates(), 0);
        QVERIFY(macAddresses.contains("01-0C-CD-01-12-34"));
        QVERIFY(macAddresses.contains("01-0C-CD-01-ff-ff"));
        QCOMPARE(addresses.last().section(' ', 1), QString("3FFE "));
    } else {
        QCOMPARE(addresses, QStringList({"a 4000 01-0C-CD-04-12-34", "b 4001 01-0C-CD-01-40-01"}));
        AddEntry(other, false, QString(), "01-0C-CD-01-40-02");
        AddChild(At(root, "IED/AccessPoint/Server/LDevice/LN0"), "SampledValueControl",
                 {{"name", "c"}});
        QVERIFY(SCLHelp::UpdateChildForConnectedAP(connectedAP, false));
        QCOMPARE(Addresses(connectedAP, false).value(2), QString("c 4002 "));
    }
}

void SCLHelp_AddressesTest::randomStationsAreUpdatedAsPlainLoopsDoIt()
{
    int changes = 0;
    for (unsigned seed = 0; seed < 120; ++seed) {
        TestControl control;
        SCLElement* roots[2];
        for (SCLElement*& root : roots) {
            root = control.Create()->CreateRoot("SCL");
            RandomStation(seed).Fill(root);
            root->GetDocument()->SetModified(false, false);
        }
        SignalLog logs[2];
        logs[0].Watch(roots[0]->GetDocument());
        logs[1].Watch(roots[1]->GetDocument());
        RandomStation edits[2] = {RandomStation(seed + 1), RandomStation(seed + 1)};
        RandomStation choice(seed + 2);
        for (int round = 0; round < 3; ++round) {
            const QList<SCLElement*> some = ConnectedAPs(roots[0]);
            const QList<SCLElement*> same = ConnectedAPs(roots[1]);
            for (int i = 0; i < some.size(); ++i) {
                const bool withAddress = choice.UpTo(2) == 0;
                QCOMPARE(SCLHelp::UpdateChildForConnectedAP(some.at(i), withAddress),
                         Plain::Update(same.at(i), withAddress));
                if (choice.UpTo(3) == 0) {
                    edits[0].Edit(roots[0]);
                    edits[1].Edit(roots[1]);
                    if (ConnectedAPs(roots[0]) != some)
                        break;
                }
            }
            QCOMPARE(ElementText(roots[0]), ElementText(roots[1]));
            QCOMPARE(logs[0].Lines(), logs[1].Lines());
        }
        changes += static_cast<int>(logs[0].Lines().size());
    }
    QVERIFY2(changes > 1200, qPrintable(QString::number(changes)));
}

void SCLHelp_AddressesTest::slotsThatEditAreHonouredAsPlainLoopsDoIt()
{
    int changes = 0;
    for (unsigned seed = 0; seed < 120; ++seed) {
        TestControl control;
        const auto updated = [&](bool (*update)(SCLElement*, bool)) {
            SCLElement* root = control.Create()->CreateRoot("SCL");
            RandomStation(seed).Fill(root);
            SignalLog log(root->GetDocument());
            RandomStation edits(seed + 1);
            const auto slot = [&] {
                if (edits.UpTo(6) == 0)
                    edits.EditSilently(root);
            };
            QObject::connect(root->GetDocument(), &SCLDocument::sigAddElement, slot);
            QObject::connect(root->GetDocument(), &SCLDocument::sigEditValue, slot);
            QObject::connect(root->GetDocument(), &SCLDocument::sigDeleteElement, slot);
            const QList<SCLElement*> connectedAPs = ConnectedAPs(root);
            for (SCLElement* connectedAP : connectedAPs)
                log.Mark(QString::number(update(connectedAP, seed % 2 == 0)));
            const QString text = ElementText(root);
            const QStringList lines = log.Take();
            root->GetDocument()->disconnect();
            return lines + QStringList(text);
        };
        const QStringList lines = updated(SCLHelp::UpdateChildForConnectedAP);
        QCOMPARE(lines, updated(Plain::Update));
        changes += static_cast<int>(lines.size());
    }
    QVERIFY2(changes > 1200, qPrintable(QString::number(changes)));
}

using Edit = std::function<void(SCLElement* root)>;
Q_DECLARE_METATYPE(Edit)

void SCLHelp_AddressesTest::changesBetweenTwoCallsAreSeen_data()
{
    QTest::addColumn<Edit>("edit");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const QString& expected, const Edit& edit) {
        QTest::newRow(name) << edit << expected;
    };
    const QString unchanged = "b 0003 01-0C-CD-01-00-03";
    row("none", unchanged, [](SCLElement*) {});
    row("a value, silently", "b 0002 01-0C-CD-01-00-02", [](SCLElement* root) {
        At(root, "Communication/SubNetwork/ConnectedAP[2]/GSE/Address/P")->SetValue("0FFF", false);
        At(root, "Communication/SubNetwork/ConnectedAP[2]/GSE/Address/P[1]")->SetValue("", false);
    });
    row("the type of a P, through the bare attribute", "b 0002 01-0C-CD-01-00-00",
        [](SCLElement* root) {
            At(root, "Communication/SubNetwork/ConnectedAP[2]/GSE/Address/P")
                ->FindAttribute("type")
                ->SetValue("OTHER");
        });
    row("a removed sub-network", "b 0002 01-0C-CD-01-00-02", [](SCLElement* root) {
        SCLElement* subNetwork = At(root, "Communication/SubNetwork");
        subNetwork->RemoveChild(At(subNetwork, "ConnectedAP[2]"), false);
    });
    row("an added entry", "b 0004 01-0C-CD-01-00-04", [](SCLElement* root) {
        AddEntry(At(root, "Communication/SubNetwork/ConnectedAP[2]"), true, "0003",
                 "01-0C-CD-01-00-03");
    });
    row("children cleared", "b 0002 01-0C-CD-01-00-02", [](SCLElement* root) {
        At(root, "Communication/SubNetwork/ConnectedAP[2]")->ClearChild();
    });
    row("an IED renamed", "",
        [](SCLElement* root) { At(root, "IED[1]")->SetAttribute("name", "K", false); });
}

void SCLHelp_AddressesTest::changesBetweenTwoCallsAreSeen()
{
    TestControl control;
    QFETCH(const Edit, edit);
    SCLElement* root = control.OpenRoot(
        For(true, "<SCL>" +
                      Network("", "<ConnectedAP iedName='J' apName='A'/>" +
                                      Used("0002", "01-0C-CD-01-00-02")) +
                      Device("<CB name='a'/>") +
                      Devices("<LDevice inst='L'><LN0><CB name='b'/></LN0></LDevice>", "J") +
                      "</SCL>"));
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(Marked(root, "cap"), false));
    edit(root);
    SCLElement* second = At(root, "Communication/SubNetwork/ConnectedAP[1]");
    QFETCH(const QString, expected);
    QCOMPARE(SCLHelp::UpdateChildForConnectedAP(second, false), !expected.isEmpty());
    QCOMPARE(Addresses(second, true).value(0), expected);
}

void SCLHelp_AddressesTest::aStationUpdatedPieceByPieceSharesNoAddress()
{
    TestControl control;
    SCLElement* root = control.Create()->CreateRoot("SCL");
    SCLElement* subNetwork = AddChild(AddChild(root, "Communication"), "SubNetwork");
    std::mt19937 engine(7);
    for (int i = 0; i < 300; ++i) {
        const QString name = QString::number(i);
        SCLElement* ied = AddChild(root, "IED", {{"name", name}});
        SCLElement* server = AddChild(AddChild(ied, "AccessPoint", {{"name", "A"}}), "Server");
        SCLElement* ln0 = AddChild(AddChild(server, "LDevice", {{"inst", "L"}}), "LN0");
        for (unsigned k = engine() % 8; k > 0; --k)
            AddChild(ln0, engine() % 2 == 0 ? "GSEControl" : "SampledValueControl",
                     {{"name", QString::number(k)}});
        AddChild(subNetwork, "ConnectedAP", {{"iedName", name}, {"apName", "A"}});
    }
    QList<SCLElement*> connectedAPs = subNetwork->FindChildByType("ConnectedAP", false);
    std::shuffle(connectedAPs.begin(), connectedAPs.end(), engine);
    for (SCLElement* connectedAP : qAsConst(connectedAPs))
        QVERIFY(SCLHelp::UpdateChildForConnectedAP(connectedAP, true));

    QStringList macAddresses;
    QStringList appIds;
    for (const bool goose : {true, false})
        KindOf(goose).collect(macAddresses, appIds, root->GetFirstChild("Communication"));
    QCOMPARE(appIds.size(), root->FindChildByType("GSEControl", true).size() +
                                root->FindChildByType("SampledValueControl", true).size());
    QCOMPARE(appIds.removeDuplicates(), 0);
    QCOMPARE(macAddresses.removeDuplicates(), 0);
}

void SCLHelp_AddressesTest::slotsThatChangeTheTreeAreHonoured_data()
{
    QTest::addColumn<QString>("signal");
    for (const char* signal : {"addElement", "editValue", "deleteElement", "modified"})
        QTest::newRow(signal) << QString(signal);
}

// A slot gives an address away when the first ConnectedAP is updated; the update of the second must
// see it.
void SCLHelp_AddressesTest::slotsThatChangeTheTreeAreHonoured()
{
    TestControl control;
    QFETCH(const QString, signal);
    SCLElement* root = control.OpenRoot(
        For(true, "<SCL>" +
                      Network("<NET cbName='stale'/>",
                              "<ConnectedAP iedName='J' apName='A'/>" + Used("0007", "m")) +
                      Device("<CB name='a'/>") +
                      Devices("<LDevice inst='L'><LN0><CB name='b'/></LN0></LDevice>", "J") +
                      "</SCL>"));
    SCLElement* appId = At(root, "Communication/SubNetwork/ConnectedAP[2]/GSE/Address/P");
    SCLDocument* document = root->GetDocument();
    const QObject context;
    const auto slot = [appId] { appId->SetValue("0002", false); };
    if (signal == "addElement")
        QObject::connect(document, &SCLDocument::sigAddElement, &context, slot);
    else if (signal == "editValue")
        QObject::connect(document, &SCLDocument::sigEditValue, &context, slot);
    else if (signal == "deleteElement")
        QObject::connect(document, &SCLDocument::sigDeleteElement, &context, slot);
    else
        QObject::connect(document, &SCLDocument::sigModifiedStateChanged, &context, slot);
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(Marked(root, "cap"), false));
    QCOMPARE(Addresses(Marked(root, "cap"), true), QStringList("a 0001 01-0C-CD-01-00-01"));
    QCOMPARE(appId->GetValue(), QString("0002"));
    SCLElement* second = At(root, "Communication/SubNetwork/ConnectedAP[1]");
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(second, false));
    QCOMPARE(Addresses(second, true), QStringList("b 0003 01-0C-CD-01-00-03"));
}

void SCLHelp_AddressesTest::aSlotMayTakeOutWhatIsStillToCome()
{
    const QByteArray text =
        For(true, "<SCL>" + Network("<NET cbName='x'/><NET cbName='y'/>") +
                      Devices("<LDevice inst='L'><LN0><CB name='a'/><CB name='b'/></LN0></LDevice>"
                              "<LDevice inst='M'><LN0><CB name='c'/></LN0></LDevice>") +
                      "</SCL>");
    const char* const victims[] = {"IED",
                                   "IED/AccessPoint",
                                   "IED/AccessPoint/Server",
                                   "IED/AccessPoint/Server/LDevice",
                                   "IED/AccessPoint/Server/LDevice[1]",
                                   "IED/AccessPoint/Server/LDevice/LN0",
                                   "IED/AccessPoint/Server/LDevice/LN0/GSEControl",
                                   "IED/AccessPoint/Server/LDevice/LN0/GSEControl[1]",
                                   "Communication/SubNetwork/ConnectedAP/GSE[1]"};
    // Counts down the signals of adding and deleting; then the victim goes.
    for (const char* victim : victims) {
        for (int moment = 0; moment < 12; ++moment) {
            TestControl control;
            SCLElement* root = control.OpenRoot(text);
            int left = moment;
            const auto slot = [&](SCLElement* changing) {
                SCLElement* doomed = At(root, victim);
                const bool may = doomed && doomed != changing && doomed->GetTag() != "GSE";
                if (left-- == 0 && (may || (moment == 0 && doomed)))
                    doomed->GetParent(QString())->RemoveChild(doomed, false);
            };
            QObject::connect(root->GetDocument(), &SCLDocument::sigAddElement, slot);
            QObject::connect(root->GetDocument(), &SCLDocument::sigDeleteElement, slot);
            SCLHelp::UpdateChildForConnectedAP(Marked(root, "cap"), false);
            const QString once = ElementText(Marked(root, "cap"));
            QVERIFY2(!once.contains("cbName=\"x\""), victim);
        }
    }
}

void SCLHelp_AddressesTest::aSlotMayUpdateAnotherConnectedAP()
{
    TestControl control;
    SCLElement* root = control.OpenRoot(
        For(true, "<SCL>" + Network("", "<ConnectedAP iedName='J' apName='A'/>") +
                      Device("<CB name='a'/><CB name='c'/>") +
                      Devices("<LDevice inst='L'><LN0><CB name='b'/></LN0></LDevice>", "J") +
                      "</SCL>"));
    SCLElement* second = At(root, "Communication/SubNetwork/ConnectedAP[1]");
    int depth = 0;
    const QObject context;
    QObject::connect(root->GetDocument(), &SCLDocument::sigEditValue, &context, [&] {
        if (depth++ == 0)
            QVERIFY(SCLHelp::UpdateChildForConnectedAP(second, false));
    });
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(Marked(root, "cap"), false));
    // The working set of the outer call is older than what the inner one gave out.
    QCOMPARE(Addresses(second, true), QStringList("b 0001 01-0C-CD-01-00-00"));
    QCOMPARE(Addresses(Marked(root, "cap"), true),
             QStringList({"a 0001 01-0C-CD-01-00-01", "c 0002 01-0C-CD-01-00-02"}));
    AddChild(At(root, "IED[1]/AccessPoint/Server/LDevice/LN0"), "GSEControl", {{"name", "d"}});
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(second, false));
    QCOMPARE(Addresses(second, true).value(1), QString("d 0003 01-0C-CD-01-00-03"));
}

void SCLHelp_AddressesTest::aFullNamePoolGivesFalse()
{
    TestControl control;
    SCLElement* root =
        control.OpenRoot("<SCL>" + Network("") + Device("<GSEControl name='a'/>") + "</SCL>");
    Internal::SCLNamePool* pool = Internal::SCLNamePool::Instance();
    for (int i = 0; pool->GetLastTagId() < 0xFFFF; ++i)
        pool->AddTagToNamePool("full" + QString::number(i));
    QVERIFY(!SCLHelp::UpdateChildForConnectedAP(Marked(root, "cap"), true));
    QCOMPARE(Marked(root, "cap")->GetChildCount(true), 0);
}

void SCLHelp_AddressesTest::nullAndDetachedElementsGiveFalse()
{
    const TestControl control;
    SCLDocument rootless;
    SCLElement detached("ConnectedAP", nullptr, nullptr);
    SCLElement withoutRoot("ConnectedAP", &rootless, nullptr);
    for (SCLElement* element : {static_cast<SCLElement*>(nullptr), &detached, &withoutRoot}) {
        QVERIFY(!SCLHelp::UpdateChildForConnectedAP(element, true));
        QVERIFY(!SCLHelp::UpdateChildForConnectedAP(element, false));
    }
    QCOMPARE(detached.GetChildCount(true), 0);
}

void SCLHelp_AddressesTest::asManyControlBlocksAsThereAreAddressesAreUpdated()
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL>" + Network("") + Device("") + "</SCL>");
    SCLElement* ln0 = At(root, "IED/AccessPoint/Server/LDevice/LN0");
    SCLElement* connectedAP = Marked(root, "cap");
    for (int i = 0; i < 0x3FFE; ++i) {
        AddChild(ln0, "GSEControl", {{"name", QString::number(i)}});
        AddChild(ln0, "SampledValueControl", {{"name", QString::number(i)}});
    }
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(connectedAP, false));
    QCOMPARE(Addresses(connectedAP, true).last(), QString("16381 3FFE 01-0C-CD-01-3F-FE"));
    QCOMPARE(Addresses(connectedAP, false).last(), QString("16381 7FFD 01-0C-CD-01-7F-FD"));
    QVERIFY(SCLHelp::UpdateChildForConnectedAP(connectedAP, false));
    QCOMPARE(connectedAP->FindChildByType("GSE", false).size(), 0x3FFE);
}

QTEST_MAIN(SCLHelp_AddressesTest)
#include "SCLHelp_AddressesTest.moc"
