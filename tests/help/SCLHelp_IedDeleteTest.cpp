// SPDX-License-Identifier: Apache-2.0
#include "tests/support/AwkwardStation.h"
#include "tests/support/ElementText.h"
#include "tests/support/PlainWalks.h"
#include "tests/support/SignalLog.h"
#include "tests/support/TestControl.h"

#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/help/SCLHelp.h>

#include <QTest>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

QByteArray Ied(const QByteArray& name, const QByteArray& nodes)
{
    return "<IED name='" + name + "'><AccessPoint><Server><LDevice>" + nodes +
           "</LDevice></Server></AccessPoint></IED>";
}

// The root with that content after the deletion of its IED of the name Gone was prepared.
QString Cleared(const QByteArray& content, const QString& name = "Gone")
{
    TestControl control;
    SCLElement* root = control.OpenRoot("<SCL>" + content + "</SCL>");
    SCLHelp::HandleDeleteForIED(root->FindChild("IED", "name", name, false));
    return ElementText(root);
}

QString Text(const QByteArray& content)
{
    TestControl control;
    return ElementText(control.OpenRoot("<SCL>" + content + "</SCL>"));
}

const QByteArray goneRef = "<ExtRef iedName='Gone'/>";
const QByteArray keptRef = "<ExtRef iedName='Kept'/>";
const QByteArray goneClient = "<ClientLN iedName='Gone'/>";

// What the rule removes, by plain loops that change nothing.
QList<SCLElement*> PlainDelete(SCLElement* root, const QString& name)
{
    QList<SCLElement*> removed = PlainNaming(name, PlainConnectedAPs(root));
    const QList<SCLElement*> ieds = PlainChildren(root, "IED");
    for (SCLElement* ied : ieds) {
        if (ied->GetAttribute("name") == name)
            continue;
        const QList<SCLElement*> lDevices = PlainLDevices(ied);
        for (SCLElement* lDevice : lDevices) {
            const QList<SCLElement*> nodes = PlainNodes(lDevice);
            for (SCLElement* node : nodes)
                removed += PlainNaming(name, PlainReferences(node));
        }
    }
    return removed;
}

} // namespace

class SCLHelp_IedDeleteTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachReferenceIsAnnouncedInTheOrderOfTheWalk()
    {
        TestControl control;
        SCLDocument* document = control.Open(
            "<SCL>" +
            Ied("Kept", "<LN0><Inputs><ExtRef iedName='Gone' mark='1'/>" + keptRef +
                            "<ExtRef iedName='Gone' mark='2'/></Inputs><ReportControl><RptEnabled>"
                            "<ClientLN iedName='Gone' mark='3'/></RptEnabled></ReportControl></LN0>"
                            "<LN><Inputs><ExtRef iedName='Gone' mark='4'/></Inputs><ReportControl>"
                            "<RptEnabled><ClientLN iedName='Gone' mark='5'/></RptEnabled>"
                            "</ReportControl></LN>") +
            Ied("Gone", "") +
            Ied("Last", "<LN><Inputs><ExtRef iedName='Gone' mark='6'/></Inputs></LN>") +
            "<Communication><SubNetwork><ConnectedAP iedName='Gone'><Address/></ConnectedAP>"
            "</SubNetwork></Communication></SCL>");
        SCLElement* gone = document->Root()->FindChild("IED", 1);
        const QString text = ElementText(gone);
        SignalLog log(document);
        QStringList parents;
        QObject::connect(document, &SCLDocument::sigDeleteElement, document,
                         [&parents](SCLElement* element) {
                             SCLElement* parent = element->GetParent(QString());
                             const bool isThere = parent->GetChildList().contains(element);
                             parents += parent->GetTag() + (isThere ? " has it" : " lost it");
                         });
        SCLHelp::HandleDeleteForIED(gone);
        QCOMPARE(
            log.Lines(),
            QStringList({"deleteElement <ConnectedAP iedName=\"Gone\"><Address/></ConnectedAP>",
                         "modifiedStateChanged true",
                         "deleteElement <ExtRef iedName=\"Gone\" mark=\"1\"/>",
                         "deleteElement <ExtRef iedName=\"Gone\" mark=\"2\"/>",
                         "deleteElement <ClientLN iedName=\"Gone\" mark=\"3\"/>",
                         "deleteElement <ExtRef iedName=\"Gone\" mark=\"4\"/>",
                         "deleteElement <ClientLN iedName=\"Gone\" mark=\"5\"/>",
                         "deleteElement <ExtRef iedName=\"Gone\" mark=\"6\"/>"}));
        QCOMPARE(parents, QStringList({"SubNetwork has it", "Inputs has it", "Inputs has it",
                                       "RptEnabled has it", "Inputs has it", "RptEnabled has it",
                                       "Inputs has it"}));
        QCOMPARE(document->Root()->FindChild("IED", 1), gone);
        QCOMPARE(ElementText(gone), text);
    }

    void emptiedSectionsStay()
    {
        const QByteArray network = "<Communication><SubNetwork>%</SubNetwork></Communication>";
        const QByteArray nodes = "<LN0><Inputs>#</Inputs><ReportControl><RptEnabled>~</RptEnabled>"
                                 "</ReportControl></LN0>";
        const QByteArray station = network + Ied("Gone", "") + Ied("Kept", nodes);
        QByteArray before = station;
        before.replace("%", "<ConnectedAP iedName='Gone'/>")
            .replace("#", goneRef)
            .replace("~", goneClient);
        QByteArray after = station;
        after.replace("%", "").replace("#", "").replace("~", "");
        QCOMPARE(Cleared(before), Text(after));
    }

    void withoutCommunicationTheIedsAreWalked()
    {
        QCOMPARE(
            Cleared(Ied("Gone", "") + Ied("Kept", "<LN0><Inputs>" + goneRef + "</Inputs></LN0>")),
            Text(Ied("Gone", "") + Ied("Kept", "<LN0><Inputs/></LN0>")));
    }

    void anLDeviceWithoutLN0IsWalked()
    {
        QCOMPARE(Cleared(Ied("Gone", "") +
                         Ied("Kept", "<LN><Inputs>" + goneRef + keptRef + "</Inputs></LN>")),
                 Text(Ied("Gone", "") + Ied("Kept", "<LN><Inputs>" + keptRef + "</Inputs></LN>")));
    }

    void withoutANameWhatNamesNoIedIsRemoved()
    {
        QCOMPARE(Cleared("<Communication><SubNetwork><ConnectedAP apName='1'/></SubNetwork>"
                         "</Communication>" +
                             Ied("", "") +
                             Ied("Kept", "<LN0><Inputs><ExtRef intAddr='unbound'/>" + keptRef +
                                             "</Inputs><ReportControl><RptEnabled><ClientLN/>"
                                             "</RptEnabled></ReportControl></LN0>"),
                         ""),
                 Text("<Communication><SubNetwork/></Communication>" + Ied("", "") +
                      Ied("Kept", "<LN0><Inputs>" + keptRef +
                                      "</Inputs><ReportControl><RptEnabled/>"
                                      "</ReportControl></LN0>")));
    }

    void theIedItselfAndItsNamesakesKeepTheirInputs()
    {
        const QByteArray own = Ied("Gone", "<LN0><Inputs>" + goneRef + "</Inputs></LN0>");
        QCOMPARE(Cleared(own + own), Text(own + own));
    }

    void onlyTheFirstSectionsAreCleared()
    {
        const auto station = [](const QByteArray& reference, const QByteArray& client) {
            const QByteArray inputs =
                "<Inputs>" + reference + "</Inputs><Inputs>" + goneRef + "</Inputs>";
            const QByteArray reports = "<ReportControl><RptEnabled>" + client +
                                       "</RptEnabled><RptEnabled>" + goneClient +
                                       "</RptEnabled></ReportControl>";
            return Ied("Gone", "") +
                   Ied("Kept", "<LN0>" + inputs + reports + "</LN0><LN0><Inputs>" + goneRef +
                                   "</Inputs></LN0><LN>" + inputs + reports + "</LN>") +
                   "<Communication/><Communication><SubNetwork><ConnectedAP iedName='Gone'/>"
                   "</SubNetwork></Communication><IED name='Other'><AccessPoint/><AccessPoint>"
                   "<Server/><Server><LDevice><LN0><Inputs>" +
                   goneRef + "</Inputs></LN0></LDevice></Server></AccessPoint></IED>";
        };
        QCOMPARE(Cleared(station(goneRef, goneClient)), Text(station("", "")));
    }

    void otherPlacesThatNameTheIedStay()
    {
        const QByteArray station =
            Ied("Gone", "") + "<Substation><LNode iedName='Gone'/></Substation>" +
            Ied("Kept", "<LN0><GSEControl name='g' appID='x'><IEDName>Gone</IEDName></GSEControl>"
                        "<DataSet><FCDA iedName='Gone'/></DataSet><Private iedName='Gone'/>"
                        "<LogControl iedName='Gone'/></LN0>");
        QCOMPARE(Cleared(station), Text(station));
    }

    void nothingHappensOutsideADocument()
    {
        TestControl control;
        SCLElement ied("IED", nullptr, nullptr);
        ied.CreateChild("AccessPoint", -1, false);
        SCLHelp::HandleDeleteForIED(&ied);
        SCLHelp::HandleDeleteForIED(nullptr);
        QCOMPARE(ElementText(&ied), QString("<IED><AccessPoint/></IED>"));
    }

    void randomStationsLoseWhatTheRuleSaysAndNothingElse()
    {
        int removed = 0;
        for (unsigned seed = 0; seed < 400; ++seed) {
            TestControl control;
            SCLElement* root = control.OpenRoot(AwkwardStation(seed).Text());
            SCLElement* ied = root->FindChild("IED", "name", "A", false);
            if (!ied)
                continue;
            SCLElement* expected = control.OpenRoot(AwkwardStation(seed).Text());
            QList<SCLElement*> references;
            for (const char* tag : {"ConnectedAP", "ExtRef", "ClientLN"})
                references += expected->FindChildByType(tag, true);
            QList<SCLElement*> dangling;
            for (SCLElement* reference : references) {
                SCLElement* owner = reference->GetParent("IED");
                const bool isOwn = owner && owner->GetAttribute("name") == "A";
                if (!isOwn && reference->GetAttribute("iedName") == "A" &&
                    IsFollowedReference(reference, true))
                    dangling += reference;
            }
            for (SCLElement* reference : dangling)
                reference->GetParent(QString())->RemoveChild(reference, false);
            removed += static_cast<int>(dangling.size());
            SCLHelp::HandleDeleteForIED(ied);
            QCOMPARE(ElementText(root), ElementText(expected));
        }
        QVERIFY(removed > 100);
    }

    void whatASlotChangesMeanwhileIsSeen()
    {
        TestControl control;
        SCLDocument* document = control.Open(
            "<SCL>" + Ied("Gone", "") +
            Ied("Kept", "<LN0><Inputs><ExtRef iedName='Gone'/><ExtRef iedName='Gone' mark='saved'/>"
                        "<ExtRef iedName='Kept' mark='drawn in'/></Inputs></LN0>") +
            "</SCL>");
        SCLElement* inputs = document->Root()->FindChildByType("Inputs", true).value(0);
        bool isFirst = true;
        QObject::connect(document, &SCLDocument::sigDeleteElement, document, [&isFirst, inputs] {
            if (!isFirst)
                return;
            isFirst = false;
            inputs->FindChild("ExtRef", 1)->SetAttribute("iedName", "Kept", false);
            inputs->FindChild("ExtRef", 2)->SetAttribute("iedName", "Gone", false);
            inputs->CreateChild("ExtRef", {{"iedName", "Gone"}, {"mark", "new"}}, -1, false);
        });
        SCLHelp::HandleDeleteForIED(document->Root()->GetFirstChild("IED"));
        // The list is that of the moment when the walk came to it.
        QCOMPARE(ElementText(inputs), QString("<Inputs><ExtRef iedName=\"Kept\" mark=\"saved\"/>"
                                              "<ExtRef iedName=\"Gone\" mark=\"new\"/></Inputs>"));
    }

    void whatASlotTakesOutIsLeftAlone()
    {
        TestControl control;
        SCLDocument* document = control.Open(
            "<SCL>" + Ied("Gone", "") +
            Ied("Kept", "<LN0><Inputs>" + goneRef + goneRef + goneRef + "</Inputs></LN0>") +
            "</SCL>");
        SCLElement* inputs = document->Root()->FindChildByType("Inputs", true).value(0);
        const QList<SCLElement*> extRefs = inputs->GetChildList();
        SCLElement* detached = extRefs.value(1);
        QList<SCLElement*> announced;
        QObject::connect(document, &SCLDocument::sigDeleteElement, document,
                         [&announced, inputs, detached](SCLElement* element) {
                             announced += element;
                             inputs->DetachChild(detached, false);
                         });
        SCLHelp::HandleDeleteForIED(document->Root()->GetFirstChild("IED"));
        QCOMPARE(announced, QList<SCLElement*>({extRefs.value(0), extRefs.value(2)}));
        QCOMPARE(inputs->GetChildCount(false), 0);
        QCOMPARE(ElementText(detached), QString("<ExtRef iedName=\"Gone\"/>"));
        delete detached;
    }

    void randomStationsSignalInTheOrderOfPlainLoops()
    {
        int removed = 0;
        for (unsigned seed = 0; seed < 400; ++seed) {
            TestControl control;
            SCLDocument* document = control.Open(AwkwardStation(seed).Text());
            SCLElement* ied = document->Root()->FindChild("IED", "name", "A", false);
            if (!ied)
                continue;
            const QList<SCLElement*> expected = PlainDelete(document->Root(), "A");
            QList<SCLElement*> announced;
            QObject::connect(document, &SCLDocument::sigDeleteElement, document,
                             [&announced](SCLElement* element) { announced += element; });
            SCLHelp::HandleDeleteForIED(ied);
            QCOMPARE(announced, expected);
            removed += static_cast<int>(expected.size());
        }
        QVERIFY(removed > 100);
    }

    void noIedOfTheSampleLeavesADanglingSubscription()
    {
        TestControl control;
        SCLDocument* document = control->OpenDocument(CORVANE_SAMPLES_DIR "/station.scd", false);
        QVERIFY(document);
        SCLElement* root = document->Root();
        const int before = static_cast<int>(root->FindChildByType("ExtRef", true).size());
        while (SCLElement* ied = root->GetFirstChild("IED")) {
            const QString name = ied->GetAttribute("name");
            SCLHelp::HandleDeleteForIED(ied);
            root->RemoveChild(ied, true);
            for (const char* tag : {"ConnectedAP", "ExtRef", "ClientLN"}) {
                const QList<SCLElement*> references = root->FindChildByType(tag, true);
                for (SCLElement* reference : references)
                    QVERIFY(reference->GetAttribute("iedName") != name);
            }
        }
        QVERIFY(before > 0);
        QVERIFY(root->FindChildByType("ConnectedAP", true).isEmpty());
    }
};

QTEST_MAIN(SCLHelp_IedDeleteTest)
#include "SCLHelp_IedDeleteTest.moc"
