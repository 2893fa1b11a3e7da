// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ReferenceFile.h"
#include "tests/support/TestControl.h"

#include <corvane/help/SCLHelp.h>

#include <QTest>

#include <memory>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

using Records = QList<SCLHelp::Input_CB>;

QString Name(SCLElement* element)
{
    return element->GetAttribute("name");
}

// The data of an FCDA or ExtRef, as in "CTRL/CSWI1.Pos.stVal".
QString Data(SCLElement* element)
{
    const QString daName = element->GetAttribute("daName");
    return element->GetAttribute("ldInst") + "/" + element->GetAttribute("prefix") +
           element->GetAttribute("lnClass") + element->GetAttribute("lnInst") + "." +
           element->GetAttribute("doName") + (daName.isEmpty() ? QString() : "." + daName);
}

QString NodeName(SCLElement* node)
{
    return node->GetAttribute("prefix") + node->GetAttribute("lnClass") +
           node->GetAttribute("inst");
}

void AppendRecords(QString& text, const QString& head, const Records& records)
{
    for (const SCLHelp::Input_CB& record : records) {
        text += head + " <- " + Name(record.ied) + " " + record.lDevice->GetAttribute("inst") +
                " " + record.controlBlock->GetTag() + " " + Name(record.controlBlock) +
                ", data set " + Name(record.dataSet) +
                ", ports: " + (record.ports.isEmpty() ? QString("none") : record.ports.join(" ")) +
                "\n";
        for (int i = 0; i < record.extRefs.size(); ++i)
            text += "    " + record.extRefs.at(i)->GetAttribute("intAddr") + " <- " +
                    Data(record.fcdas.at(i)) + "\n";
    }
}

// The inputs of a whole IED, then those of its LNs, which no wider scope looks at.
void AppendIed(QString& text, SCLElement* ied)
{
    AppendRecords(text, Name(ied), SCLHelp::GetGSEControlFromIEDInputs(ied));
    AppendRecords(text, Name(ied), SCLHelp::GetSMVControlFromIEDInputs(ied));
    const QList<SCLElement*> nodes = ied->FindChildByType("LN", true);
    for (SCLElement* node : nodes) {
        SCLElement* inputs = node->GetFirstChild("Inputs");
        const QString head = Name(ied) + " " + NodeName(node);
        AppendRecords(text, head, SCLHelp::GetGSEControlFromInputs(inputs));
        AppendRecords(text, head, SCLHelp::GetSMVControlFromInputs(inputs));
    }
}

} // namespace

class SCLHelp_SampleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void theSubscriptionsAreThoseOfTheReference();
    void aScopeHoldsTheExtRefsOfItsAccessPoints();
    void eachEntryAndItsControlBlockFindEachOther();
    void eachMemberHasADeclaration();
    void aDifferenceIsToldInWords_data();
    void aDifferenceIsToldInWords();

private:
    SCLElement* Station()
    {
        return m_control->Open(ReadFile(CORVANE_SAMPLES_DIR "/station.scd"))->Root();
    }

    std::unique_ptr<TestControl> m_control;
};

void SCLHelp_SampleTest::init()
{
    m_control.reset();
    m_control = std::make_unique<TestControl>();
}

void SCLHelp_SampleTest::theSubscriptionsAreThoseOfTheReference()
{
    QString text;
    const QList<SCLElement*> ieds = Station()->FindChildByType("IED", false);
    for (SCLElement* ied : ieds)
        AppendIed(text, ied);
    const QString difference = DifferenceFromReference(text, "station.subscriptions.txt");
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void SCLHelp_SampleTest::aScopeHoldsTheExtRefsOfItsAccessPoints()
{
    const auto count = [](const Records& records) {
        qsizetype extRefs = 0;
        for (const SCLHelp::Input_CB& record : records)
            extRefs += record.extRefs.size();
        return extRefs;
    };
    const QList<SCLElement*> ieds = Station()->FindChildByType("IED", false);
    QCOMPARE(ieds.size(), 5);
    qsizetype all = 0;
    for (SCLElement* ied : ieds) {
        qsizetype goose = 0;
        qsizetype sampledValues = 0;
        const QList<SCLElement*> accessPoints = ied->FindChildByType("AccessPoint", false);
        for (SCLElement* accessPoint : accessPoints) {
            goose += count(SCLHelp::GetGSEControlFromAPInputs(accessPoint));
            sampledValues += count(SCLHelp::GetSMVControlFromAPInputs(accessPoint));
        }
        QCOMPARE(count(SCLHelp::GetGSEControlFromIEDInputs(ied)), goose);
        QCOMPARE(count(SCLHelp::GetSMVControlFromIEDInputs(ied)), sampledValues);
        all += goose + sampledValues;
    }
    QVERIFY(all > 0);
}

void SCLHelp_SampleTest::eachEntryAndItsControlBlockFindEachOther()
{
    SCLElement* root = Station();
    const QList<SCLElement*> goose = root->FindChildByType("GSE", true);
    QCOMPARE(goose.size(), 9);
    for (SCLElement* entry : goose) {
        SCLElement* control = SCLHelp::GetGSEControlFromGSE(entry);
        QVERIFY2(control, qPrintable(entry->GetAttribute("cbName")));
        QVERIFY(SCLHelp::GetGSEFromGSEControl(control) == entry);
        QVERIFY(SCLHelp::GetGSEFromGSEControl(control, entry->GetParent("ConnectedAP")) == entry);
    }
    const QList<SCLElement*> sampledValues = root->FindChildByType("SMV", true);
    QCOMPARE(sampledValues.size(), 2);
    for (SCLElement* entry : sampledValues) {
        SCLElement* control = SCLHelp::GetSMVControlFromSMV(entry);
        QVERIFY2(control, qPrintable(entry->GetAttribute("cbName")));
        QVERIFY(SCLHelp::GetSMVFromSMVControl(control) == entry);
        QVERIFY(SCLHelp::GetSMVFromSMVControl(control, entry->GetParent("ConnectedAP")) == entry);
    }
}

void SCLHelp_SampleTest::eachMemberHasADeclaration()
{
    const QList<SCLElement*> fcdas = Station()->FindChildByType("FCDA", true);
    QVERIFY(fcdas.size() > 100);
    for (SCLElement* fcda : fcdas)
        QVERIFY2(SCLHelp::GetDOFromFCDA(fcda), qPrintable(Data(fcda)));
}

void SCLHelp_SampleTest::aDifferenceIsToldInWords_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("difference");
    QTest::newRow("equal") << "a\nb\n"
                           << "";
    QTest::newRow("other line") << "a\nc\n"
                                << "line 2: expected \"b\", but it is \"c\"";
    QTest::newRow("line more") << "a\nb\nc\n"
                               << "line 3: expected \"\", but it is \"c\"";
    QTest::newRow("line less") << "a"
                               << "line 2: expected \"b\", but it is the end";
    QTest::newRow("end more") << "a\nb\n\n"
                              << "line 4: expected the end, but it is \"\"";
}

void SCLHelp_SampleTest::aDifferenceIsToldInWords()
{
    QFETCH(const QString, text);
    QTEST(FirstDifference(text, "a\nb\n"), "difference");
}

QTEST_GUILESS_MAIN(SCLHelp_SampleTest)
#include "SCLHelp_SampleTest.moc"
