// SPDX-License-Identifier: Apache-2.0
#include <corvane/crc/CrcStation.h>

#include "tests/support/CrcRun.h"
#include "tests/support/CrcStation.h"
#include "tests/support/ElementText.h"
#include "tests/support/TestControl.h"

#include <QTest>

using namespace Corvane;
using namespace Corvane::Test;
using Corvane::Internal::CrcStation;

namespace
{

SCLElement* Ied(SCLDocument* document, const QString& name)
{
    return document->Root()->FindChild("IED", "name", name, false);
}

} // namespace

class CrcStationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theCrcsAreThoseOfTheGenerator();
    void ownChangesLeaveItUntouched();
    void aChangeOfOthersTouchesIt();
    void aSlotOnAnOwnChangeTouchesIt_data();
    void aSlotOnAnOwnChangeTouchesIt();
    void anOwnChangeDoesNotHideOneOfOthers();
    void lookUpsAreMadeAnewAfterAChange();
};

void CrcStationTest::theCrcsAreThoseOfTheGenerator()
{
    TestControl control;
    SCLDocument* document = control.Open(CrcStationText());
    CrcStation station;

    for (const char* name : {"P", "S", "N", "P"}) {
        unsigned int crc = g_untouchedCrc;
        const CrcRun run(document, name);
        QCOMPARE(station.Generate(Ied(document, name), crc), run.result);
        QCOMPARE(crc, run.crc);
    }
    unsigned int crc = g_untouchedCrc;
    QCOMPARE(station.Generate(nullptr, crc), CrcGenerator::CrcFailed);
    QCOMPARE(crc, g_untouchedCrc);
}

void CrcStationTest::ownChangesLeaveItUntouched()
{
    TestControl control;
    SCLDocument* document = control.Open(CrcStationText());
    CrcStation station;
    unsigned int crc = 0;
    station.Generate(Ied(document, "P"), crc);

    station.Make([&] {
        SCLElement* child = Ied(document, "P")->CreateChild("Private", -1, true);
        child->SetAttribute("type", "x", true);
        child->SetValue("1", true);
    });

    QVERIFY(station.IsUntouched());
}

void CrcStationTest::aChangeOfOthersTouchesIt()
{
    TestControl control;
    SCLDocument* document = control.Open(CrcStationText());
    CrcStation station;
    unsigned int crc = 0;
    station.Generate(Ied(document, "P"), crc);

    document->Root()->SetValue("x", false);

    QVERIFY(!station.IsUntouched());
    station.Generate(Ied(document, "P"), crc);
    QVERIFY(station.IsUntouched());
}

void CrcStationTest::aSlotOnAnOwnChangeTouchesIt_data()
{
    QTest::addColumn<int>("signal");

    QTest::newRow("sigAddElement") << 0;
    QTest::newRow("sigEditAttribute") << 1;
    QTest::newRow("sigEditValue") << 2;
    QTest::newRow("sigModifiedStateChanged") << 3;
}

void CrcStationTest::aSlotOnAnOwnChangeTouchesIt()
{
    QFETCH(int, signal);
    TestControl control;
    SCLDocument* document = control.Open(CrcStationText());
    CrcStation station;
    unsigned int crc = 0;
    station.Generate(Ied(document, "P"), crc);
    const auto edit = [&](int from) {
        if (from == signal)
            Ied(document, "S")->SetAttribute("desc", "edited", false);
    };
    connect(document, &SCLDocument::sigAddElement, this, [&] { edit(0); });
    connect(document, &SCLDocument::sigEditAttribute, this, [&] { edit(1); });
    connect(document, &SCLDocument::sigEditValue, this, [&] { edit(2); });
    connect(document, &SCLDocument::sigModifiedStateChanged, this, [&] { edit(3); });

    station.Make([&] {
        SCLElement* child = Ied(document, "P")->CreateChild("Private", -1, true);
        child->SetAttribute("type", "x", true);
        child->SetValue("1", true);
    });

    QCOMPARE(Ied(document, "S")->GetAttribute("desc"), QString("edited"));
    QVERIFY(!station.IsUntouched());
}

void CrcStationTest::anOwnChangeDoesNotHideOneOfOthers()
{
    TestControl control;
    SCLDocument* document = control.Open(CrcStationText());
    CrcStation station;
    unsigned int crc = 0;
    station.Generate(Ied(document, "P"), crc);
    document->Root()->SetValue("x", false);

    station.Make([&] { document->Root()->CreateChild("Private", -1, false); });

    QVERIFY(!station.IsUntouched());
}

void CrcStationTest::lookUpsAreMadeAnewAfterAChange()
{
    TestControl control;
    SCLDocument* document = control.Open(CrcStationText());
    CrcStation station;
    unsigned int before = 0;
    unsigned int after = 0;
    station.Generate(Ied(document, "S"), before);

    At(document->Root(), "Communication/SubNetwork/ConnectedAP/GSE")
        ->SetAttribute("cbName", "other", false);

    QCOMPARE(station.Generate(Ied(document, "S"), after), CrcGenerator::CrcFailed);
    QVERIFY(after != before);
    QCOMPARE(after, CrcRun(document, "S").crc);
}

QTEST_MAIN(CrcStationTest)
#include "CrcStationTest.moc"
