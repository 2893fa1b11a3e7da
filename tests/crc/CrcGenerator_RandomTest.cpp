// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CrcRun.h"
#include "tests/support/CrcStation.h"
#include "tests/support/PlainCrc.h"
#include "tests/support/ReferenceFile.h"
#include "tests/support/TestControl.h"

#include <QTest>

#include <random>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

// P takes in its own GOOSE too, so that it has three sections.
QByteArray Station()
{
    return CrcStationText(
        "<SampledValueControl ",
        "<Inputs><ExtRef iedName='P' ldInst='L' prefix='Q' lnClass='XCBR' lnInst='1' doName='Pos' "
        "daName='q' intAddr='L/QXCBR1.Pos.stVal'/><ExtRef iedName='P' ldInst='L' lnClass='TCTR' "
        "lnInst='1' doName='Amp' intAddr='L/TCTR1.Amp.instMag.i'/></Inputs><SampledValueControl ");
}

// Edits a station at random, so that things are there twice, in another place, empty or missing,
// and refer to anything.
class RandomEdits
{
public:
    RandomEdits(unsigned int seed, SCLElement* root) : m_random(seed), m_root(root) {}

    void Edit()
    {
        SCLElement* element = AnyElement();
        switch (UpTo(9)) {
        case 0:
            element->SetAttribute(AnyAttributeOf(element), QString(), true);
            break;
        case 1:
            element->RemoveAttribute(AnyAttributeOf(element), true);
            break;
        case 2:
        case 3:
            TakeValueFromElsewhere(element);
            break;
        case 4:
        case 5:
            Double(element, 1);
            break;
        case 6:
            Double(element, 20); // so many that an index is worth it
            break;
        case 7:
            element->SetAttribute("name", UpTo(2) == 0 ? " a  @wspace@" : "D.b", true);
            break;
        default:
            if (UpTo(3) == 0)
                element->GetParent(QString())->RemoveChild(element, true);
            break;
        }
    }

private:
    int UpTo(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_random); }

    // Of any tag, so that tags of few elements are edited as often as others.
    SCLElement* AnyElement()
    {
        static const QStringList tags = {"SubNetwork",
                                         "ConnectedAP",
                                         "GSE",
                                         "SMV",
                                         "AccessPoint",
                                         "Server",
                                         "LDevice",
                                         "LN0",
                                         "LN",
                                         "DataSet",
                                         "FCDA",
                                         "GSEControl",
                                         "Inputs",
                                         "ExtRef",
                                         "DOI",
                                         "SDI",
                                         "DAI",
                                         "Private",
                                         "LNodeType",
                                         "DOType",
                                         "DAType",
                                         "DO",
                                         "DA",
                                         "BDA",
                                         "IED",
                                         "Address",
                                         "SampledValueControl",
                                         "PhysConn",
                                         "P"};
        for (;;) {
            const QList<SCLElement*> all =
                m_root->FindChildByType(tags.at(UpTo(static_cast<int>(tags.size()))), true);
            if (!all.isEmpty())
                return all.at(UpTo(static_cast<int>(all.size())));
        }
    }

    QString AnyAttributeOf(SCLElement* element)
    {
        const QList<SCLAttribute*> attributes = element->GetAttributeList();
        return attributes.isEmpty()
                   ? QString("name")
                   : attributes.at(UpTo(static_cast<int>(attributes.size())))->GetName();
    }

    void TakeValueFromElsewhere(SCLElement* element)
    {
        const QString name = AnyAttributeOf(element);
        const QList<SCLElement*> others = m_root->FindChildByType(element->GetTag(), true);
        element->SetAttribute(
            name, others.at(UpTo(static_cast<int>(others.size())))->GetAttribute(name), true);
    }

    // A copy may stand before the original and have another name.
    void Double(SCLElement* element, int times)
    {
        if (m_root->GetChildCount(true) > 1500)
            return;
        SCLElement* parent = element->GetParent(QString());
        for (int i = 0; i < times; ++i) {
            SCLElement* copy = element->Clone(true);
            if (times > 1 || UpTo(2) == 0)
                copy->SetAttribute(AnyAttributeOf(copy), QString::number(i), false);
            if (UpTo(3) == 0)
                copy->SetAttribute("sAddr", QString::number(i), false);
            parent->AttachChild(copy, UpTo(2) == 0 ? 0 : -1, true);
        }
    }

    std::mt19937 m_random;
    SCLElement* m_root;
};

QString Comparable(const QByteArray& canonical)
{
    return QString::fromUtf8(canonical).replace("<", "\n<");
}

// What differs between the content of an IED and that of the plain walks, in words.
QString DifferenceOf(SCLElement* ied, int (&outcomes)[3])
{
    CrcGenerator::CrcResult result = CrcGenerator::CrcFailed;
    const QByteArray plain = Plain::ContentOf(ied, result);
    const CrcRun run(ied);
    ++outcomes[run.result];
    if (run.result != result)
        return QString("result %1 and not %2").arg(int(run.result)).arg(int(result));
    if (result == CrcGenerator::CrcNoConnection)
        return QString();
    return FirstDifference(Comparable(run.canonical), Comparable(plain));
}

} // namespace

class CrcGenerator_RandomTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void contentsAreThoseOfThePlainWalks_data();
    void contentsAreThoseOfThePlainWalks();
    void anUpdateStoresThoseCrcs();
};

void CrcGenerator_RandomTest::contentsAreThoseOfThePlainWalks_data()
{
    QTest::addColumn<bool>("withSchema");

    QTest::newRow("with a schema") << true;
    QTest::newRow("without one") << false;
}

void CrcGenerator_RandomTest::contentsAreThoseOfThePlainWalks()
{
    QFETCH(bool, withSchema);
    TestControl control;
    if (withSchema)
        control->RegisterSchema(CORVANE_SAMPLES_DIR "/SCL.xsd");
    int outcomes[3] = {0, 0, 0};
    for (unsigned int seed = 0; seed < 400; ++seed) {
        SCLDocument* document = control.Open(Station());
        RandomEdits edits(seed, document->Root());
        for (int edit = 0; edit < 6; ++edit) {
            edits.Edit();
            const QList<SCLElement*> ieds = document->Root()->FindChildByType("IED", false);
            for (SCLElement* ied : ieds.mid(0, 6)) {
                const QString difference = DifferenceOf(ied, outcomes);
                QVERIFY2(difference.isEmpty(),
                         qPrintable(QString("seed %1: %2").arg(seed).arg(difference)));
            }
        }
        control->CloseDocument(document, false);
    }
    for (const int outcome : outcomes)
        QVERIFY(outcome > 500);
}

// With look-ups that IEDs share.
void CrcGenerator_RandomTest::anUpdateStoresThoseCrcs()
{
    TestControl control;
    control->RegisterSchema(CORVANE_SAMPLES_DIR "/SCL.xsd");
    for (unsigned int seed = 1000; seed < 1400; ++seed) {
        SCLDocument* document = control.Open(Station());
        RandomEdits edits(seed, document->Root());
        for (int edit = 0; edit < 4; ++edit)
            edits.Edit();
        document->UpdateCrcCode();
        const QList<SCLElement*> ieds = document->Root()->FindChildByType("IED", false);
        for (SCLElement* ied : ieds) {
            CrcGenerator::CrcResult result = CrcGenerator::CrcFailed;
            const QByteArray plain = Plain::ContentOf(ied, result);
            const QString text = result == CrcGenerator::CrcNoConnection
                                     ? QString("")
                                     : QString("%1")
                                           .arg(CrcGenerator::Generate({QString::fromUtf8(plain)}),
                                                8, 16, QChar('0'))
                                           .toUpper();
            SCLElement* store =
                ied->FindChild("Private", "type", "IED virtual terminal conection CRC", false);
            QCOMPARE(store->GetValue() + QString(""), text);
        }
        control->CloseDocument(document, false);
    }
}

QTEST_MAIN(CrcGenerator_RandomTest)
#include "CrcGenerator_RandomTest.moc"
