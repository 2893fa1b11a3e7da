// SPDX-License-Identifier: Apache-2.0
#include "tests/support/CrcRun.h"
#include "tests/support/CrcStation.h"
#include "tests/support/PlainCrc.h"
#include "tests/support/ReferenceFile.h"
#include "tests/support/TestControl.h"

#include <QTest>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

// A canonical content in lines, so that a difference is found: a break before each start tag.
QString InLines(const QByteArray& canonical)
{
    QString text = QString::fromUtf8(canonical);
    for (int at = 1; (at = static_cast<int>(text.indexOf('<', at))) >= 0; ++at) {
        if (text.mid(at, 2) != QLatin1String("</"))
            text.insert(at++, '\n');
    }
    return text + '\n';
}

QString ResultText(CrcGenerator::CrcResult result)
{
    switch (result) {
    case CrcGenerator::CrcSuccess:
        return "complete";
    case CrcGenerator::CrcFailed:
        return "incomplete";
    case CrcGenerator::CrcNoConnection:
        break;
    }
    return "no connection";
}

// All that the CRCs of a station stand on.
QString ContentsOf(SCLDocument* document)
{
    QString text;
    const QList<SCLElement*> ieds = document->Root()->FindChildByType("IED", false);
    for (SCLElement* ied : ieds) {
        const CrcRun run(ied);
        text += "# " + ied->GetAttribute("name") + ": " + ResultText(run.result) + '\n';
        if (run.result != CrcGenerator::CrcNoConnection)
            text += InLines(run.canonical) + WithoutTime(run.readable);
    }
    return text;
}

// Each one replaces a piece of the usual station.
QByteArray AwkwardStation(const QString& name)
{
    static const QMap<QString, QPair<QByteArray, QByteArray>> pieces = {
        {"dangling", {"<ConnectedAP iedName='P'", "<ConnectedAP iedName='X'"}},
        {"no-data-set", {"datSet='dsG'", "datSet=''"}},
        {"doubled",
         {"<IED name='N'>", "<IED name='P'><AccessPoint name='A'/></IED><IED name='N'>"}},
        {"signs",
         {"sAddr='1.2'",
          "sAddr=' a &lt;b&gt; &quot;c&quot; &amp; \xE7\xBA\xBF @wspace@&#9;&#10;&#13;'"}},
        {"text",
         {"<Private type='own'>p</Private>", "<Private type='own'> two words\n\tand  "
                                             "lines &lt;&amp;&gt; </Private>"}},
        {"unknown-path", {"R/INGGIO1.AnIn1", "R/INGGIO1.AnIn1.none.x"}},
        {"empty-names", {"<IED name='S'>", "<IED>"}},
    };
    const QPair<QByteArray, QByteArray> piece = pieces.value(name);
    return CrcStationText(piece.first, piece.second);
}

} // namespace

class CrcGenerator_SampleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theContentsOfTheSampleAreThoseOfTheReference();
    void theContentsOfAwkwardStationsAreThoseOfTheReference_data();
    void theContentsOfAwkwardStationsAreThoseOfTheReference();
    void earlierDocumentsAreOfNoEffect();
    void theContentsAreThoseOfThePlainWalks();
    void theReadableFormHoldsTheCanonicalOne();
};

void CrcGenerator_SampleTest::theContentsOfTheSampleAreThoseOfTheReference()
{
    TestControl control;
    control->RegisterSchema(CORVANE_SAMPLES_DIR "/SCL.xsd");
    SCLDocument* document = control->OpenDocument(CORVANE_SAMPLES_DIR "/station.scd", false);

    QCOMPARE(DifferenceFromReference(ContentsOf(document), "crc/station.txt"), QString());
}

void CrcGenerator_SampleTest::theContentsOfAwkwardStationsAreThoseOfTheReference_data()
{
    QTest::addColumn<QString>("name");

    for (const char* name :
         {"dangling", "no-data-set", "doubled", "signs", "text", "unknown-path", "empty-names"})
        QTest::newRow(name) << QString(name);
}

void CrcGenerator_SampleTest::theContentsOfAwkwardStationsAreThoseOfTheReference()
{
    QFETCH(QString, name);
    TestControl control;
    control->RegisterSchema(CORVANE_SAMPLES_DIR "/SCL.xsd");
    SCLDocument* document = control.Open(AwkwardStation(name));

    QCOMPARE(DifferenceFromReference(ContentsOf(document), "crc/" + name + ".txt"), QString());
}

// Tags and attribute names get their ids in the order in which documents bring them.
void CrcGenerator_SampleTest::earlierDocumentsAreOfNoEffect()
{
    TestControl control;
    control->RegisterSchema(CORVANE_SAMPLES_DIR "/SCL.xsd");
    QByteArray earlier = ReadFile(CORVANE_SAMPLES_DIR "/station.scd");
    QList<QByteArray> tags;
    for (const QByteArray& piece : earlier.split('<')) {
        const QByteArray tag = piece.left(piece.indexOf(' ')).trimmed();
        if (!tag.isEmpty() && !tags.contains(tag) && tag.at(0) >= 'A' && tag.at(0) <= 'Z' &&
            !tag.contains('>'))
            tags.prepend(tag);
    }
    control.Open("<SCL><" + tags.join("/><") + "/></SCL>");
    SCLDocument* document = control->OpenDocument(CORVANE_SAMPLES_DIR "/station.scd", false);

    QVERIFY(tags.size() > 20);
    QCOMPARE(FirstDifference(ContentsOf(document),
                             QString::fromUtf8(ReadFile(ReferencePath("crc/station.txt")))),
             QString());
}

void CrcGenerator_SampleTest::theContentsAreThoseOfThePlainWalks()
{
    TestControl control;
    control->RegisterSchema(CORVANE_SAMPLES_DIR "/SCL.xsd");
    SCLDocument* document = control->OpenDocument(CORVANE_SAMPLES_DIR "/station.scd", false);

    const QList<SCLElement*> ieds = document->Root()->FindChildByType("IED", false);
    QCOMPARE(ieds.size(), decltype(ieds.size())(5));
    for (SCLElement* ied : ieds) {
        CrcGenerator::CrcResult result = CrcGenerator::CrcFailed;
        const QByteArray plain = Plain::ContentOf(ied, result);
        const CrcRun run(ied);
        QCOMPARE(run.result, result);
        QCOMPARE(FirstDifference(InLines(run.canonical), InLines(plain)), QString());
    }
}

void CrcGenerator_SampleTest::theReadableFormHoldsTheCanonicalOne()
{
    TestControl control;
    control->RegisterSchema(CORVANE_SAMPLES_DIR "/SCL.xsd");
    SCLDocument* document = control->OpenDocument(CORVANE_SAMPLES_DIR "/station.scd", false);
    const CrcRun run(document->Root()->GetFirstChild("IED"));

    // Each element of the canonical form stands in the readable one, which has the CRC besides.
    QCOMPARE(run.readable.count("</") + run.readable.count("/>"),
             run.canonical.count("</") + run.canonical.count("/>") + 1);
}

QTEST_MAIN(CrcGenerator_SampleTest)
#include "CrcGenerator_SampleTest.moc"
