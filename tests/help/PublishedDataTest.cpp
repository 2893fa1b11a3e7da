// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
#include "tests/support/MarkedElement.h"
#include "tests/support/TestControl.h"

#include <corvane/help/PublishedData.h>
#include <corvane/help/SCLHelp.h>

#include <QTest>

#include <random>

using namespace Corvane;
using namespace Corvane::Test;
using Corvane::Internal::PublishedData;

namespace
{

using Elements = QList<SCLElement*>;
using Records = QList<SCLHelp::Input_CB>;

// The subscriptions once more, ExtRef by ExtRef and record by record: slow, and simple enough to be
// believed.
namespace Plain
{

Elements Children(SCLElement* parent, const QString& tag)
{
    return parent ? parent->FindChildByType(tag, false) : Elements();
}

void Add(SCLElement* root, bool goose, SCLElement* extRef, Records& result)
{
    const QString daName = extRef->GetAttribute("daName");
    const QString intAddr = extRef->GetAttribute("intAddr");
    if (!goose && daName.endsWith('q') && intAddr.endsWith('q'))
        return;
    QStringList portNames;
    if (intAddr.count(':') == 1)
        portNames = intAddr.left(intAddr.indexOf(':')).split('/');
    SCLElement* sender = root->FindChild("IED", "name", extRef->GetAttribute("iedName"), false);
    if (!sender)
        return;
    if (!SCLHelp::GetLDeviceFromIEDAndInst(sender, extRef->GetAttribute("ldInst")))
        return;
    SCLElement* fcda = nullptr;
    SCLElement* dataSet = nullptr;
    SCLElement* controlBlock = nullptr;
    const Elements candidates = SCLHelp::GetFCDAFromExtRef(extRef);
    for (SCLElement* candidate : candidates) {
        fcda = candidate;
        dataSet = candidate->GetParent("DataSet");
        controlBlock = goose ? SCLHelp::GetGSEControlFromDataSet(dataSet)
                             : SCLHelp::GetSampledValueControlFromDataSet(dataSet);
        if (controlBlock)
            break;
    }
    if (!controlBlock)
        return;
    SCLHelp::Input_CB* record = nullptr;
    for (SCLHelp::Input_CB& known : result) {
        if (!record && known.controlBlock == controlBlock)
            record = &known;
    }
    if (!record) {
        result.append({controlBlock->GetParent("IED"),
                       controlBlock->GetParent("LDevice"),
                       dataSet,
                       controlBlock,
                       {},
                       {},
                       {}});
        record = &result.last();
    }
    record->extRefs.append(extRef);
    record->fcdas.append(fcda);
    for (const QString& port : qAsConst(portNames)) {
        if (!record->ports.contains(port))
            record->ports.append(port);
    }
}

void AddInputs(SCLElement* root, bool goose, SCLElement* inputs, Records& result)
{
    const Elements extRefs = Children(inputs, "ExtRef");
    for (SCLElement* extRef : extRefs)
        Add(root, goose, extRef, result);
}

void AddAccessPoint(SCLElement* root, bool goose, SCLElement* accessPoint, Records& result)
{
    SCLElement* server = accessPoint->GetFirstChild("Server");
    const Elements lDevices = Children(server, "LDevice");
    for (SCLElement* lDevice : lDevices) {
        SCLElement* ln0 = lDevice->GetFirstChild("LN0");
        AddInputs(root, goose, ln0 ? ln0->GetFirstChild("Inputs") : nullptr, result);
    }
}

void AddIed(SCLElement* root, bool goose, SCLElement* ied, Records& result)
{
    const Elements accessPoints = Children(ied, "AccessPoint");
    for (SCLElement* accessPoint : accessPoints)
        AddAccessPoint(root, goose, accessPoint, result);
}

} // namespace Plain

// Grows small documents in which names meet often, and often are missing.
class Grower
{
public:
    explicit Grower(unsigned seed) : m_random(seed) {}

    void Grow(SCLElement* root)
    {
        Times(1, 4, [&] { GrowIed(root->CreateChild("IED", -1, false)); });
    }

private:
    int Number(int low, int high)
    {
        return std::uniform_int_distribution<int>(low, high)(m_random);
    }
    template <typename Work>
    void Times(int low, int high, Work work)
    {
        const int count = Number(low, high);
        for (int i = 0; i < count; ++i)
            work();
    }

    // A value of few, the empty one, or no attribute at all.
    void Set(SCLElement* element, const char* name, const QStringList& values)
    {
        const int choice = Number(0, 19);
        if (choice == 0)
            return;
        element->SetAttribute(
            name, choice == 1 ? QString("") : values.at(Number(0, int(values.size()) - 1)), false);
    }

    void SetData(SCLElement* element)
    {
        Set(element, "ldInst", {"L", "L", "M"});
        if (Number(0, 9) == 0)
            Set(element, "prefix", {"p"});
        if (Number(0, 9) == 0)
            Set(element, "lnClass", {"C"});
        if (Number(0, 9) == 0)
            Set(element, "lnInst", {"1"});
        Set(element, "doName", {"D", "E"});
        if (Number(0, 2) == 0)
            Set(element, "daName", {"q", "stVal", "freq"});
    }

    void GrowIed(SCLElement* ied)
    {
        Set(ied, "name", {"I", "J"});
        Times(1, 2, [&] {
            SCLElement* accessPoint = ied->CreateChild("AccessPoint", -1, false);
            Times(0, 2, [&] { GrowServer(accessPoint->CreateChild("Server", -1, false)); });
        });
    }

    void GrowServer(SCLElement* server)
    {
        Times(1, 2, [&] {
            SCLElement* lDevice = server->CreateChild("LDevice", -1, false);
            Set(lDevice, "inst", {"L", "M"});
            Times(0, 1, [&] { GrowNode(lDevice->CreateChild("LN", -1, false)); });
            Times(0, 2, [&] { GrowNode(lDevice->CreateChild("LN0", -1, false)); });
        });
    }

    void GrowNode(SCLElement* node)
    {
        const QStringList names = {"s", "t", "u"};
        Times(0, 3, [&] {
            SCLElement* dataSet = node->CreateChild("DataSet", -1, false);
            Set(dataSet, "name", names);
            Times(1, 6, [&] { SetData(dataSet->CreateChild("FCDA", -1, false)); });
        });
        Times(0, 2, [&] { Set(node->CreateChild("GSEControl", -1, false), "datSet", names); });
        Times(0, 2,
              [&] { Set(node->CreateChild("SampledValueControl", -1, false), "datSet", names); });
        Times(0, 2, [&] {
            SCLElement* inputs = node->CreateChild("Inputs", -1, false);
            Times(0, 5, [&] { GrowExtRef(inputs->CreateChild("ExtRef", -1, false)); });
        });
    }

    void GrowExtRef(SCLElement* extRef)
    {
        Set(extRef, "iedName", {"I", "I", "J", "K"});
        SetData(extRef);
        Set(extRef, "intAddr",
            {"L/N.D", "A:L/N.D.q", "A/B:L/N.D.stVal", "B/C/B:x", ":q", "A:", "/:/", "//A:q",
             "A:B:C", "::", "a:freq", "A/b", "%1/A:q"});
    }

    std::mt19937 m_random;
};

bool Same(const Records& left, const Records& right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const SCLHelp::Input_CB& a, const SCLHelp::Input_CB& b) {
                          return a.ied == b.ied && a.lDevice == b.lDevice &&
                                 a.dataSet == b.dataSet && a.controlBlock == b.controlBlock &&
                                 a.extRefs == b.extRefs && a.fcdas == b.fcdas && a.ports == b.ports;
                      });
}

// One data set of each kind of control block, the report's first, and one without, all with the
// same member.
QByteArray Publisher()
{
    const auto set = [](const QByteArray& name) {
        return "<DataSet name='" + name + "' mark='" + name +
               "'><FCDA ldInst='L' doName='D'/></DataSet>";
    };
    return "<IED name='P'><AccessPoint><Server><LDevice inst='L'><LN0>" + set("none") +
           set("report") + set("sv") + set("goose") +
           "<ReportControl datSet='report' mark='R'/><SampledValueControl datSet='sv' mark='S'/>"
           "<GSEControl datSet='goose' mark='G'/></LN0></LDevice></Server></AccessPoint></IED>";
}

} // namespace

class PublishedDataTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void allMembersAgreeWithThePlainWalks_data();
    void allMembersAgreeWithThePlainWalks();
    void ofAllKindsGooseComesFirst_data();
    void ofAllKindsGooseComesFirst();
    void itTellsHowFarAnExtRefLeads_data();
    void itTellsHowFarAnExtRefLeads();
};

void PublishedDataTest::allMembersAgreeWithThePlainWalks_data()
{
    QTest::addColumn<unsigned>("seed");
    for (unsigned seed = 1; seed <= 10; ++seed)
        QTest::newRow(qPrintable(QString("seed %1").arg(seed))) << seed;
}

void PublishedDataTest::allMembersAgreeWithThePlainWalks()
{
    QFETCH(const unsigned, seed);
    Grower grower(seed);
    TestControl control;
    int records = 0;
    int shared = 0;
    for (int round = 0; round < 400; ++round) {
        SCLDocument* document = control.Create();
        SCLElement* root = document->Root();
        grower.Grow(root);
        const auto compare = [&](const Records& result, const Records& plain) {
            for (const SCLHelp::Input_CB& record : plain) {
                ++records;
                shared += record.extRefs.size() > 1 ? 1 : 0;
            }
            return Same(result, plain);
        };
        for (const bool goose : {true, false}) {
            const Elements allInputs = root->FindChildByType("Inputs", true);
            for (SCLElement* inputs : allInputs) {
                Records plain;
                Plain::AddInputs(root, goose, inputs, plain);
                if (!compare(goose ? SCLHelp::GetGSEControlFromInputs(inputs)
                                   : SCLHelp::GetSMVControlFromInputs(inputs),
                             plain))
                    QFAIL(qPrintable(ElementText(root)));
            }
            const Elements accessPoints = root->FindChildByType("AccessPoint", true);
            for (SCLElement* accessPoint : accessPoints) {
                Records plain;
                Plain::AddAccessPoint(root, goose, accessPoint, plain);
                if (!compare(goose ? SCLHelp::GetGSEControlFromAPInputs(accessPoint)
                                   : SCLHelp::GetSMVControlFromAPInputs(accessPoint),
                             plain))
                    QFAIL(qPrintable(ElementText(root)));
            }
            const Elements ieds = root->FindChildByType("IED", false);
            for (SCLElement* ied : ieds) {
                Records plain;
                Plain::AddIed(root, goose, ied, plain);
                if (!compare(goose ? SCLHelp::GetGSEControlFromIEDInputs(ied)
                                   : SCLHelp::GetSMVControlFromIEDInputs(ied),
                             plain))
                    QFAIL(qPrintable(ElementText(root)));
            }
        }
        control->CloseDocument(document, false);
    }
    // The documents were worth comparing.
    QVERIFY2(records > 500, qPrintable(QString::number(records)));
    QVERIFY2(shared > 50, qPrintable(QString::number(shared)));
}

void PublishedDataTest::ofAllKindsGooseComesFirst_data()
{
    QTest::addColumn<QByteArray>("without");
    QTest::addColumn<QString>("found");
    QTest::newRow("all") << QByteArray("nothing") << "goose G";
    QTest::newRow("no GOOSE") << QByteArray("GSEControl") << "sv S";
    QTest::newRow("reports alone") << QByteArray("GSEControl SampledValueControl") << "report R";
    QTest::newRow("no control block")
        << QByteArray("GSEControl SampledValueControl ReportControl") << "none null";
}

void PublishedDataTest::ofAllKindsGooseComesFirst()
{
    TestControl control;
    QFETCH(const QByteArray, without);
    QByteArray publisher = Publisher();
    const QList<QByteArray> tags = without.split(' ');
    for (const QByteArray& tag : tags)
        publisher.replace("<" + tag, "<Private");
    SCLElement* root =
        control.OpenRoot("<SCL><ExtRef iedName='P' ldInst='L' doName='D'/>" + publisher + "</SCL>");
    PublishedData published(root);
    const PublishedData::Publication publication = published.Of(root->GetFirstChild("ExtRef"));
    QTEST(MarksOf({publication.dataSet, publication.controlBlock}), "found");
    QVERIFY(publication.fcda == publication.dataSet->GetFirstChild("FCDA"));
}

void PublishedDataTest::itTellsHowFarAnExtRefLeads_data()
{
    QTest::addColumn<QByteArray>("extRef");
    QTest::addColumn<int>("found");
    QTest::newRow("no IED") << QByteArray("iedName='Q' ldInst='L' doName='D'") << 0;
    QTest::newRow("no LDevice") << QByteArray("iedName='P' ldInst='M' doName='D'") << 1;
    QTest::newRow("no member") << QByteArray("iedName='P' ldInst='L' doName='E'") << 2;
    QTest::newRow("all") << QByteArray("iedName='P' ldInst='L' doName='D'") << 5;
}

void PublishedDataTest::itTellsHowFarAnExtRefLeads()
{
    TestControl control;
    QFETCH(const QByteArray, extRef);
    SCLElement* root = control.OpenRoot("<SCL><ExtRef " + extRef + "/>" + Publisher() + "</SCL>");
    PublishedData published(root);
    const PublishedData::Publication publication = published.Of(root->GetFirstChild("ExtRef"));
    int count = 0;
    for (const SCLElement* element : {publication.ied, publication.lDevice, publication.fcda,
                                      publication.dataSet, publication.controlBlock})
        count += element ? 1 : 0;
    QTEST(count, "found");
}

QTEST_MAIN(PublishedDataTest)
#include "PublishedDataTest.moc"
