// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ConnectedStation.h"
#include "tests/support/TestControl.h"

#include <corvane/crc/SCLCrcCodes.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLVocabulary.h>

#include <QtTest>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

// A control with the schema of the sample.
class Control : public TestControl
{
public:
    Control()
    {
        if (!Get()->RegisterSchema(QStringLiteral(CORVANE_SAMPLES_DIR "/SCL.xsd")))
            qFatal("the schema does not load");
    }
};

QString CodeOver(const QStringList& texts)
{
    return QString("%1").arg(CrcGenerator::Generate(texts), 8, 16, QChar('0')).toUpper();
}

QString CodeOf(SCLElement* ied)
{
    unsigned int crc = 0;
    QByteArray content;
    CrcGenerator(ied).Gererate(crc, &content, nullptr);
    return content.isEmpty() ? QString() : CodeOver({QString::fromUtf8(content)});
}

SCLElement* Ied(SCLDocument* document, int index)
{
    return document->Root()->FindChild("IED", index);
}

QByteArray PrivateText(const char* type, const QByteArray& code)
{
    return QByteArray("<Private type=\"") + type + "\">" + code + "</Private>";
}

} // namespace

class SCLCrcCodesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theCodesAreThoseOfTheGenerator();
    void whatIsNotStoredIsNull();
    void theStoredCodeIsThatOfTheFirstPrivateOfItsType();
    void anEmptyStoredCodeHoldsWithoutConnection();
    void afterAnUpdateAllCodesHold();
    void whatUpdateWritesIsWhatIsComputed();
    void ofSeveralIedsOfOneNameTheLastCounts();
    void withoutIedsTheSubstationHasAnEmptyCode();
    void nullGivesNothing();
    void nothingIsModified();
};

void SCLCrcCodesTest::theCodesAreThoseOfTheGenerator()
{
    Control control;
    SCLDocument* document =
        control.Open(Edited(ConnectedStation(), "intAddr=\"1-A:K/GGIO1.In1.stVal\"", ""));

    const SCLCrcCodes codes = SCLCrcCodes::Of(document->Root());

    QCOMPARE(codes.ieds.size(), 3);
    for (int i = 0; i < codes.ieds.size(); ++i) {
        QCOMPARE(codes.ieds.at(i).ied, Ied(document, i));
        QCOMPARE(codes.ieds.at(i).computed, CodeOf(Ied(document, i)));
        const SCLCrcCodes::IedCode alone = SCLCrcCodes::OfIed(Ied(document, i));
        QCOMPARE(alone.ied, Ied(document, i));
        QCOMPARE(alone.computed, codes.ieds.at(i).computed);
        QCOMPARE(alone.result, codes.ieds.at(i).result);
    }
    QCOMPARE(codes.ieds.at(0).result, CrcGenerator::CrcSuccess);
    QCOMPARE(codes.ieds.at(1).result, CrcGenerator::CrcFailed);
    QCOMPARE(codes.ieds.at(2).result, CrcGenerator::CrcNoConnection);
    QCOMPARE(codes.substation.computed,
             CodeOver({codes.ieds.at(0).computed, codes.ieds.at(1).computed}));
}

void SCLCrcCodesTest::whatIsNotStoredIsNull()
{
    Control control;
    const SCLCrcCodes codes = SCLCrcCodes::Of(control.OpenRoot(ConnectedStation()));

    QVERIFY(codes.ieds.at(0).stored.isNull());
    QVERIFY(!codes.ieds.at(0).Holds());
    QVERIFY(codes.ieds.at(2).stored.isNull());
    QVERIFY(!codes.ieds.at(2).Holds());
    QVERIFY(codes.substation.stored.isNull());
    QVERIFY(!codes.Hold());
}

void SCLCrcCodesTest::theStoredCodeIsThatOfTheFirstPrivateOfItsType()
{
    Control control;
    const QByteArray privates =
        PrivateText("x", "1") + PrivateText(g_szSubstationCrcPrivateType, "2") +
        PrivateText(g_szIEDCrcPrivateType, "3") + PrivateText(g_szIEDCrcPrivateType, "4");
    SCLElement* root = control.OpenRoot(
        Edited(ConnectedStation(), "<IED name=\"S\">", privates + "<IED name=\"S\">" + privates));

    const SCLCrcCodes codes = SCLCrcCodes::Of(root);

    QCOMPARE(codes.ieds.at(1).stored, QString("3"));
    QVERIFY(!codes.ieds.at(1).Holds());
    QCOMPARE(codes.substation.stored, QString("2"));
    QVERIFY(!codes.substation.Holds());
}

void SCLCrcCodesTest::anEmptyStoredCodeHoldsWithoutConnection()
{
    Control control;
    SCLElement* root = control.OpenRoot(
        Edited(ConnectedStation(), "<IED name=\"N\"/>",
               "<IED name=\"N\">" + PrivateText(g_szIEDCrcPrivateType, "") + "</IED>"));

    const SCLCrcCodes::IedCode code = SCLCrcCodes::Of(root).ieds.at(2);

    QVERIFY(!code.stored.isNull());
    QVERIFY(code.Holds());
}

void SCLCrcCodesTest::afterAnUpdateAllCodesHold()
{
    Control control;
    SCLDocument* document = control.Open(ConnectedStation());

    document->UpdateCrcCode();
    QVERIFY(SCLCrcCodes::Of(document->Root()).Hold());

    document->Root()->FindChild("DAI", "sAddr", "b1", true)->SetAttribute("sAddr", "b2", false);
    const SCLCrcCodes codes = SCLCrcCodes::Of(document->Root());
    QVERIFY(!codes.Hold());
    QVERIFY(codes.ieds.at(0).Holds());
    QVERIFY(!codes.ieds.at(1).Holds());
    QVERIFY(!codes.substation.Holds());
}

void SCLCrcCodesTest::whatUpdateWritesIsWhatIsComputed()
{
    Control control;
    SCLDocument* document =
        control.Open(Edited(ConnectedStation(), "<IED name=\"N\"/>",
                            "<IED name=\"B\"/><IED name=\"A\"/><IED name=\"P\"/>"));
    const SCLCrcCodes before = SCLCrcCodes::Of(document->Root());

    document->UpdateCrcCode();

    const SCLCrcCodes after = SCLCrcCodes::Of(document->Root());
    QVERIFY(after.Hold());
    QCOMPARE(after.ieds.size(), 5);
    for (int i = 0; i < after.ieds.size(); ++i)
        QCOMPARE(after.ieds.at(i).stored, before.ieds.at(i).computed);
    QCOMPARE(after.substation.stored, before.substation.computed);
}

void SCLCrcCodesTest::ofSeveralIedsOfOneNameTheLastCounts()
{
    Control control;
    SCLElement* root =
        control.OpenRoot(Edited(ConnectedStation(), "<IED name=\"N\"/>", "<IED name=\"P\"/>"));

    const SCLCrcCodes codes = SCLCrcCodes::Of(root);

    QCOMPARE(codes.ieds.at(2).computed, QString());
    QCOMPARE(codes.substation.computed, CodeOver({codes.ieds.at(1).computed}));
}

void SCLCrcCodesTest::withoutIedsTheSubstationHasAnEmptyCode()
{
    Control control;
    SCLDocument* document = control.Open("<SCL/>");

    const SCLCrcCodes codes = SCLCrcCodes::Of(document->Root());

    QVERIFY(codes.ieds.isEmpty());
    QCOMPARE(codes.substation.computed, QString());
    QVERIFY(!codes.Hold());
    document->UpdateCrcCode();
    QVERIFY(SCLCrcCodes::Of(document->Root()).Hold());
}

void SCLCrcCodesTest::nullGivesNothing()
{
    Control control;

    QVERIFY(SCLCrcCodes::Of(nullptr).ieds.isEmpty());
    QVERIFY(SCLCrcCodes::Of(nullptr).substation.stored.isNull());
    const SCLCrcCodes::IedCode code = SCLCrcCodes::OfIed(nullptr);
    QCOMPARE(code.ied, nullptr);
    QCOMPARE(code.computed, QString());
    QCOMPARE(code.result, CrcGenerator::CrcFailed);
}

void SCLCrcCodesTest::nothingIsModified()
{
    Control control;
    SCLDocument* document = control.Open(ConnectedStation());

    SCLCrcCodes::Of(document->Root());
    SCLCrcCodes::OfIed(Ied(document, 0));

    QVERIFY(!document->GetModified());
    QCOMPARE(document->Root()->FindChildByType("Private", true).size(), 0);
}

QTEST_GUILESS_MAIN(SCLCrcCodesTest)
#include "SCLCrcCodesTest.moc"
