// SPDX-License-Identifier: Apache-2.0
#include "tests/support/AwkwardStation.h"
#include "tests/support/ElementText.h"
#include "tests/support/PlainWalks.h"
#include "tests/support/SignalLog.h"
#include "tests/support/TestControl.h"

#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/help/SCLHelp.h>

#include <QDir>
#include <QHash>
#include <QTest>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

QByteArray Ied(const QByteArray& name, const QByteArray& lDevices)
{
    return "<IED name='" + name + "'><AccessPoint><Server>" + lDevices +
           "</Server></AccessPoint></IED>";
}

QByteArray LDevice(const QByteArray& content)
{
    return "<LDevice inst='LD0'>" + content + "</LDevice>";
}

QByteArray Inputs(const QByteArray& iedName)
{
    return "<Inputs><ExtRef iedName='" + iedName + "'/></Inputs>";
}

QByteArray Clients(const QByteArray& iedName)
{
    return "<RptEnabled><ClientLN iedName='" + iedName + "'/></RptEnabled>";
}

// What a root with that content is after its IED of the name New was renamed from Old.
QString Renamed(const QByteArray& content, const QString& oldName = "Old")
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL>" + content + "</SCL>");
    SCLHelp::HandleUpdateForIEDName(oldName, root->FindChild("IED", "name", "New", false));
    return ElementText(root);
}

QString Text(const QByteArray& content)
{
    TestControl control;
    return ElementText(control.OpenRoot("<SCL>" + content + "</SCL>"));
}

QList<SCLElement*> AllReferences(SCLElement* root)
{
    QList<SCLElement*> references;
    for (const char* tag : {"ConnectedAP", "ExtRef", "ClientLN"})
        references += root->FindChildByType(tag, true);
    return references;
}

// Identifiers are made anew by each pass, so a comparison has to leave them out.
QString TextWithoutIdentifiers(SCLElement* root)
{
    for (const char* tag : {"GSEControl", "SampledValueControl"}) {
        const QList<SCLElement*> controls = root->FindChildByType(tag, true);
        for (SCLElement* control : controls) {
            control->RemoveAttribute("appID", false);
            control->RemoveAttribute("smvID", false);
        }
    }
    return ElementText(root);
}

void Rename(SCLElement* ied, const QString& name)
{
    const QString oldName = ied->GetAttribute("name");
    ied->SetAttribute("name", name, true);
    SCLHelp::HandleUpdateForIEDName(oldName, ied);
}

// What the rule changes, by plain loops that change nothing.
class PlainRename
{
public:
    PlainRename(SCLElement* root, const QString& oldName, const QString& newName)
        : m_strOldName(oldName), m_strNewName(newName),
          followers(PlainNaming(oldName, PlainConnectedAPs(root)))
    {
        const QList<SCLElement*> ieds = PlainChildren(root, "IED");
        for (SCLElement* ied : ieds) {
            const QList<SCLElement*> lDevices = PlainLDevices(ied);
            for (SCLElement* lDevice : lDevices)
                TakeFromLDevice(ied, lDevice);
        }
    }

private:
    void TakeFromLDevice(SCLElement* ied, SCLElement* lDevice)
    {
        SCLElement* ln0 = lDevice->GetFirstChild("LN0");
        if (!ln0)
            return;
        if (ied->GetAttribute("name") == m_strNewName) {
            const QList<SCLElement*> controls =
                PlainChildren(ln0, "GSEControl") + PlainChildren(ln0, "SampledValueControl");
            for (SCLElement* control : controls)
                identifiers[control] = m_strNewName + lDevice->GetAttribute("inst") + "/LLN0." +
                                       control->GetAttribute("name");
        }
        const QList<SCLElement*> nodes = PlainNodes(lDevice);
        for (SCLElement* node : nodes)
            followers += PlainNaming(m_strOldName, PlainReferences(node));
    }

    const QString m_strOldName;
    const QString m_strNewName;

public:
    QList<SCLElement*> followers;
    QHash<SCLElement*, QString> identifiers;
};

// The identifier of each control block, whichever of the two attributes holds it.
QHash<SCLElement*, QString> IdentifiersIn(SCLElement* root)
{
    QHash<SCLElement*, QString> identifiers;
    const QList<SCLElement*> gooses = root->FindChildByType("GSEControl", true);
    for (SCLElement* control : gooses)
        identifiers[control] = control->GetAttribute("appID");
    const QList<SCLElement*> sampled = root->FindChildByType("SampledValueControl", true);
    for (SCLElement* control : sampled)
        identifiers[control] = control->GetAttribute("smvID");
    return identifiers;
}

} // namespace

class SCLHelp_IedRenameTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachPlaceFollowsInTheOrderOfTheWalk()
    {
        TestControl control;
        SCLDocument* document =
            control.Open("<SCL><Communication><SubNetwork><ConnectedAP iedName='Old' apName='1'/>"
                         "<ConnectedAP iedName='Else'/></SubNetwork><SubNetwork>"
                         "<ConnectedAP iedName='Old' apName='2'/></SubNetwork></Communication>" +
                         Ied("Else", LDevice("<LN0>" + Inputs("Old") +
                                             "<GSEControl name='g' appID='user'/>"
                                             "<ReportControl>" +
                                             Clients("Old") + "</ReportControl></LN0><LN>" +
                                             Inputs("Old") + "<ReportControl>" + Clients("Else") +
                                             "</ReportControl><ReportControl>" + Clients("Old") +
                                             "</ReportControl></LN>")) +
                         Ied("New", LDevice("<LN0>" + Inputs("Old") +
                                            "<GSEControl name='g' appID='user'/><ReportControl>" +
                                            Clients("Old") + "</ReportControl></LN0>")) +
                         "</SCL>");
        SignalLog log(document);
        SCLHelp::HandleUpdateForIEDName("Old", document->Root()->FindChild("IED", 1));
        QCOMPARE(log.Lines(), QStringList({
                                  "editAttribute ConnectedAP iedName \"Old\" -> \"New\"",
                                  "modifiedStateChanged true",
                                  "editAttribute ConnectedAP iedName \"Old\" -> \"New\"",
                                  "editAttribute ExtRef iedName \"Old\" -> \"New\"",
                                  "editAttribute ClientLN iedName \"Old\" -> \"New\"",
                                  "editAttribute ExtRef iedName \"Old\" -> \"New\"",
                                  "editAttribute ClientLN iedName \"Old\" -> \"New\"",
                                  "editAttribute ExtRef iedName \"Old\" -> \"New\"",
                                  "editAttribute ClientLN iedName \"Old\" -> \"New\"",
                              }));
        QCOMPARE(At(document->Root(), "IED[0]/AccessPoint/Server/LDevice/LN0/GSEControl")
                     ->GetAttribute("appID"),
                 QString("user"));
    }

    void identifiersAreSetBetweenInputsAndClientsOfTheLN0()
    {
        TestControl control;
        SCLDocument* document = control.Open(
            "<SCL>" +
            Ied("New", LDevice("<LN0>" + Inputs("Old") + "<GSEControl name='g'/>" +
                               "<ReportControl>" + Clients("Old") + "</ReportControl></LN0>")) +
            "</SCL>");
        SCLElement* goose = At(document->Root(), "IED/AccessPoint/Server/LDevice/LN0/GSEControl");
        QStringList seen;
        QObject::connect(document, &SCLDocument::sigEditAttribute, document,
                         [&seen, goose](SCLElement* element) {
                             seen += element->GetTag() + " " + goose->GetAttribute("appID");
                         });
        SCLHelp::HandleUpdateForIEDName("Old", document->Root()->GetFirstChild("IED"));
        QCOMPARE(seen, QStringList({"ExtRef ", "ClientLN NewLD0/LLN0.g"}));
    }

    void identifiersAreRenewedInSilenceButMarkModified()
    {
        TestControl control;
        SCLDocument* document =
            control.Open("<SCL>" +
                         Ied("New", LDevice("<LN0><GSEControl name='gocb0' appID='by hand'/>"
                                            "<SampledValueControl name='m'/></LN0>")) +
                         "</SCL>");
        SignalLog log(document);
        SCLHelp::HandleUpdateForIEDName("Old", document->Root()->GetFirstChild("IED"));
        QCOMPARE(log.Lines(), QStringList("modifiedStateChanged true"));
        SCLElement* ln0 = At(document->Root(), "IED/AccessPoint/Server/LDevice/LN0");
        QCOMPARE(ElementTexts(ln0->GetChildList()),
                 QStringList({"<GSEControl name=\"gocb0\" appID=\"NewLD0/LLN0.gocb0\"/>",
                              "<SampledValueControl name=\"m\" smvID=\"NewLD0/LLN0.m\"/>"}));
    }

    void whatHasItsValueAlreadyDoesNotMarkModified()
    {
        TestControl control;
        SCLDocument* document =
            control.Open("<SCL>" +
                         Ied("New", LDevice("<LN0>" + Inputs("New") +
                                            "<GSEControl name='g' appID='NewLD0/LLN0.g'/></LN0>")) +
                         "</SCL>");
        SignalLog log(document);
        SCLHelp::HandleUpdateForIEDName("New", document->Root()->GetFirstChild("IED"));
        QCOMPARE(log.Lines(), QStringList());
        QVERIFY(!document->GetModified());
    }

    void withoutCommunicationTheIedsAreWalked()
    {
        QCOMPARE(Renamed(Ied("New", LDevice("<LN0>" + Inputs("Old") + "</LN0>"))),
                 Text(Ied("New", LDevice("<LN0>" + Inputs("New") + "</LN0>"))));
    }

    void forTheSameNameOnlyIdentifiersChange()
    {
        const QByteArray station =
            "<Communication><SubNetwork><ConnectedAP iedName='New'/></SubNetwork></Communication>" +
            Ied("New", LDevice("<LN0>" + Inputs("New") + "<GSEControl name='g' ID/></LN0>"));
        QCOMPARE(Renamed(QByteArray(station).replace(" ID", ""), "New"),
                 Text(QByteArray(station).replace("ID", "appID='NewLD0/LLN0.g'")));
    }

    void anEmptyOldNameMatchesWhatHasNone()
    {
        QCOMPARE(Renamed("<Communication><SubNetwork><ConnectedAP apName='1'/></SubNetwork>"
                         "</Communication>" +
                             Ied("New", LDevice("<LN0><Inputs><ExtRef desc='d'/></Inputs>"
                                                "<ReportControl>" +
                                                Clients("") + "</ReportControl></LN0>")),
                         ""),
                 Text("<Communication><SubNetwork><ConnectedAP apName='1' iedName='New'/>"
                      "</SubNetwork></Communication>" +
                      Ied("New", LDevice("<LN0><Inputs><ExtRef desc='d' iedName='New'/></Inputs>"
                                         "<ReportControl>" +
                                         Clients("New") + "</ReportControl></LN0>"))));
    }

    void anLDeviceWithoutLN0KeepsTheOldName()
    {
        const QByteArray node =
            "<LN>" + Inputs("Old") + "<ReportControl>" + Clients("Old") + "</ReportControl></LN>";
        QCOMPARE(Renamed(Ied("New", LDevice(node))), Text(Ied("New", LDevice(node))));
    }

    void onlyTheFirstSectionsCount()
    {
        const auto station = [](const QByteArray& name) {
            const QByteArray reports =
                "<ReportControl>" + Clients(name) + Clients("Old") + "</ReportControl>";
            const QByteArray nodes = "<LN0>" + Inputs(name) + Inputs("Old") + reports +
                                     "</LN0><LN0>" + Inputs("Old") + "</LN0><LN>" + Inputs(name) +
                                     Inputs("Old") + reports + "</LN>";
            return "<Communication><SubNetwork><ConnectedAP iedName='" + name +
                   "'/></SubNetwork></Communication><Communication><SubNetwork>"
                   "<ConnectedAP iedName='Old'/></SubNetwork></Communication>"
                   "<IED name='New'><AccessPoint/><AccessPoint><Server>" +
                   LDevice(nodes) + "</Server><Server>" +
                   LDevice("<LN0>" + Inputs("Old") + "</LN0>") + "</Server></AccessPoint></IED>";
        };
        QCOMPARE(Renamed(station("Old")), Text(station("New")));
    }

    void aReportWithoutRptEnabledIsPassedOver()
    {
        QCOMPARE(Renamed(Ied("New", LDevice("<LN0/><LN><ReportControl/><ReportControl>" +
                                            Clients("Old") + "</ReportControl></LN>"))),
                 Text(Ied("New", LDevice("<LN0/><LN><ReportControl/><ReportControl>" +
                                         Clients("New") + "</ReportControl></LN>"))));
    }

    void allIedsOfTheNewNameGetIdentifiers()
    {
        const auto ied = [](const QByteArray& id) {
            return Ied("New", LDevice("<LN0><GSEControl name='g'" + id + "/></LN0>"));
        };
        const QByteArray id = " appID='NewLD0/LLN0.g'";
        QCOMPARE(Renamed(ied("") + ied("")), Text(ied(id) + ied(id)));
    }

    void controlBlocksOutsideTheLN0KeepTheirIdentifiers()
    {
        const QByteArray station =
            Ied("New", LDevice("<LN0/><LN><GSEControl name='g' appID='x'/></LN>"));
        QCOMPARE(Renamed(station), Text(station));
    }

    void markersInNamesTakePartInTheIdentifier()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(
            "<SCL><IED name='E%3'><AccessPoint><Server><LDevice inst='%3'><LN0>"
            "<GSEControl name='g'/></LN0></LDevice></Server></AccessPoint></IED></SCL>");
        SCLHelp::HandleUpdateForIEDName("Old", root->GetFirstChild("IED"));
        const QString expected = QString("%1%2/LLN0.%3").arg("E%3").arg("%3").arg("g");
        QCOMPARE(root->FindChildByType("GSEControl", true).value(0)->GetAttribute("appID"),
                 expected);
    }

    void otherPlacesKeepTheOldName()
    {
        const QByteArray station =
            "<Substation><LNode iedName='Old'/></Substation><Private iedName='Old'>Old</Private>" +
            Ied("New", LDevice("<LN0><GSEControl name='g' appID='NewLD0/LLN0.g'><IEDName>Old"
                               "</IEDName></GSEControl><LogControl iedName='Old'/><DataSet>"
                               "<FCDA iedName='Old'/></DataSet><Inputs><Private iedName='Old'/>"
                               "</Inputs></LN0>")) +
            "<Communication><SubNetwork><ConnectedAP iedName='Else'><GSE iedName='Old'/>"
            "</ConnectedAP></SubNetwork></Communication>";
        QCOMPARE(Renamed(station), Text(station));
    }

    void namesAreComparedExactly()
    {
        const QByteArray station =
            Ied("New", LDevice("<LN0>" + Inputs("old") + "</LN0><LN>" + Inputs("Old ") + "</LN>"));
        QCOMPARE(Renamed(station), Text(station));
    }

    void whatASlotChangesMeanwhileIsSeen()
    {
        TestControl control;
        SCLDocument* document =
            control.Open("<SCL>" +
                         Ied("New", LDevice("<LN0><Inputs><ExtRef iedName='Old'/><ExtRef/></Inputs>"
                                            "</LN0>")) +
                         "</SCL>");
        SCLElement* inputs = document->Root()->FindChildByType("Inputs", true).value(0);
        QObject::connect(document, &SCLDocument::sigEditAttribute, document, [inputs] {
            if (inputs->GetChildCount(false) > 2)
                return;
            inputs->FindChild("ExtRef", 1)->SetAttribute("iedName", "Old", false);
            inputs->CreateChild("ExtRef", {{"iedName", "Old"}}, -1, false);
        });
        SCLHelp::HandleUpdateForIEDName("Old", document->Root()->GetFirstChild("IED"));
        QStringList names;
        const QList<SCLElement*> extRefs = inputs->GetChildList();
        for (SCLElement* extRef : extRefs)
            names += extRef->GetAttribute("iedName");
        // The list is that of the moment when the walk came to it.
        QCOMPARE(names, QStringList({"New", "New", "Old"}));
    }

    void nothingHappensOutsideADocument()
    {
        TestControl control;
        SCLElement ied("IED", nullptr, nullptr);
        ied.SetAttribute("name", "New", false);
        const QString text = ElementText(&ied);
        SCLHelp::HandleUpdateForIEDName("Old", &ied);
        SCLHelp::HandleUpdateForIEDName("Old", nullptr);
        QCOMPARE(ElementText(&ied), text);
    }

    void randomStationsChangeWhereTheRuleSaysAndNowhereElse()
    {
        int changed = 0;
        for (unsigned seed = 0; seed < 400; ++seed) {
            TestControl control;
            SCLElement* root = control.OpenRoot(AwkwardStation(seed).Text());
            SCLElement* ied = root->GetFirstChild("IED");
            if (!ied)
                continue;
            ied->SetAttribute("name", "Z", false);
            QHash<SCLElement*, QString> expected;
            const QList<SCLElement*> references = AllReferences(root);
            for (SCLElement* reference : references) {
                const QString name = reference->GetAttribute("iedName");
                const bool isFollowed = name == "A" && IsFollowedReference(reference, false);
                expected[reference] = isFollowed ? QString("Z") : name;
                changed += isFollowed ? 1 : 0;
            }
            SCLHelp::HandleUpdateForIEDName("A", ied);
            for (SCLElement* reference : references)
                QCOMPARE(reference->GetAttribute("iedName"), expected[reference]);
        }
        QVERIFY(changed > 200);
    }

    void randomStationsSignalInTheOrderOfPlainLoopsAndGetTheirIdentifiers()
    {
        int followed = 0;
        int renewed = 0;
        for (unsigned seed = 0; seed < 400; ++seed) {
            TestControl control;
            SCLDocument* document = control.Open(AwkwardStation(seed).Text());
            SCLElement* root = document->Root();
            SCLElement* ied = root->GetFirstChild("IED");
            if (!ied)
                continue;
            ied->SetAttribute("name", "Z", false);
            const PlainRename plain(root, "A", "Z");
            QHash<SCLElement*, QString> identifiers = IdentifiersIn(root);
            for (auto it = plain.identifiers.constBegin(); it != plain.identifiers.constEnd(); ++it)
                identifiers[it.key()] = it.value();
            QList<SCLElement*> announced;
            QObject::connect(document, &SCLDocument::sigEditAttribute, document,
                             [&announced](SCLElement* element) { announced += element; });
            SCLHelp::HandleUpdateForIEDName("A", ied);
            QCOMPARE(announced, plain.followers);
            QCOMPARE(IdentifiersIn(root), identifiers);
            followed += static_cast<int>(plain.followers.size());
            renewed += static_cast<int>(plain.identifiers.size());
        }
        QVERIFY(followed > 200);
        QVERIFY(renewed > 200);
    }

    void thereAndBackGivesTheSameStation_data()
    {
        QTest::addColumn<QByteArray>("text");
        for (unsigned seed = 0; seed < 100; ++seed)
            QTest::addRow("random %u", seed) << AwkwardStation(seed).Text();
        QFile sample(QDir(CORVANE_SAMPLES_DIR).filePath("station.scd"));
        QVERIFY(sample.open(QIODevice::ReadOnly));
        QTest::newRow("sample") << sample.readAll();
    }
    void thereAndBackGivesTheSameStation()
    {
        QFETCH(QByteArray, text);
        TestControl control;
        SCLElement* root = control.OpenRoot(text);
        const QList<SCLElement*> ieds = root->FindChildByType("IED", false);
        for (SCLElement* ied : ieds) {
            const QString name = ied->GetAttribute("name");
            // Without a name, what refers to nothing would be drawn in.
            if (name.isEmpty())
                continue;
            const QString before = TextWithoutIdentifiers(root);
            Rename(ied, "Fresh");
            QVERIFY(TextWithoutIdentifiers(root) != before);
            Rename(ied, name);
            QCOMPARE(TextWithoutIdentifiers(root), before);
        }
    }
};

QTEST_MAIN(SCLHelp_IedRenameTest)
#include "SCLHelp_IedRenameTest.moc"
