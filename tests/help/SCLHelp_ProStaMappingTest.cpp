// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ElementText.h"
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

QByteArray Varmap(const QByteArray& text)
{
    return "<Private type='TALVEN_VARMAP'>" + text + "</Private>";
}

// What makes one signal: the publisher P with Pos of XCBR1, and the IED E, which takes it in at In
// of GGIO1 (input 2310) and offers it at Out (output 1205).
struct Station {
    QByteArray privates = Varmap("in:2310;out:1205");
    QByteArray pro = "<DAI name='stVal'/>";
    QByteArray proAttributes = "";
    QByteArray input = "<DAI name='stVal' sAddr='M:2310'/>";
    QByteArray output = "<DAI name='stVal' sAddr='M:1205'/>";
    QByteArray outputAttributes = "";
    QByteArray intAddr = "LD/GGIO1.In.stVal";
    QByteArray fc = "ST";
    QByteArray moreExtRefs = "";

    QByteArray Text() const
    {
        const QByteArray extRef = "<ExtRef iedName='P' ldInst='LD' lnClass='XCBR' lnInst='1' "
                                  "doName='Pos' daName='stVal' intAddr='" +
                                  intAddr + "'/>";
        return "<SCL><IED name='P'><AccessPoint><Server><LDevice inst='LD'><LN0><DataSet name='d'>"
               "<FCDA ldInst='LD' lnClass='XCBR' lnInst='1' doName='Pos' daName='stVal' fc='" +
               fc + "'/></DataSet></LN0><LN lnClass='XCBR' inst='1'><DOI name='Pos'" +
               proAttributes + ">" + pro +
               "</DOI></LN></LDevice></Server></AccessPoint></IED><IED name='E'>" + privates +
               "<AccessPoint/><AccessPoint><Server><LDevice inst='LD'><LN0><Inputs>" + extRef +
               moreExtRefs + "</Inputs></LN0><LN lnClass='GGIO' inst='1'><DOI name='In'>" + input +
               "</DOI><DOI name='Out'" + outputAttributes + ">" + output +
               "</DOI></LN></LDevice></Server></AccessPoint></IED></SCL>";
    }
};

SCLElement* IedOf(SCLElement* root, const QString& name)
{
    return root->FindChild("IED", "name", name, false);
}

SCLElement* DoiOf(SCLElement* root, const QString& name)
{
    const QList<SCLElement*> dois = root->FindChildByType("DOI", true);
    for (SCLElement* doi : dois) {
        if (doi->GetAttribute("name") == name)
            return doi;
    }
    return nullptr;
}

QString Named(const QList<SCLElement*>& dois)
{
    QStringList names;
    for (SCLElement* doi : dois)
        names += doi->GetAttribute("name");
    return names.join(' ');
}

// "Pos>Out" for each pair.
QString Pairs(const Station& station)
{
    TestControl control;
    SCLElement* root = control.OpenRoot(station.Text());
    QList<SCLElement*> pro;
    QList<SCLElement*> sta;
    SCLHelp::GetProAndStaDOIMap(IedOf(root, "E"), pro, sta);
    if (pro.size() != sta.size())
        return "lists of different length";
    QStringList pairs;
    for (int i = 0; i < pro.size(); ++i)
        pairs += pro[i]->GetAttribute("name") + ">" + sta[i]->GetAttribute("name");
    return pairs.join(' ');
}

QByteArray UserDescription(const QByteArray& text)
{
    return "<DAI name='dU'><Val>" + text + "</Val></DAI>";
}

using Sync = void (*)(SCLElement*);

struct Outcome {
    QString pro;
    QString sta;
    QStringList log;
};

Outcome After(const Station& station, Sync sync)
{
    TestControl control;
    SCLDocument* document = control.Open(station.Text());
    SignalLog log(document);
    sync(IedOf(document->Root(), "E"));
    return {ElementText(DoiOf(document->Root(), "Pos")),
            ElementText(DoiOf(document->Root(), "Out")), log.Lines()};
}

} // namespace

class SCLHelp_ProStaMappingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anInputIsJoinedToItsOutput() { QCOMPARE(Pairs(Station()), QString("Pos>Out")); }

    void entriesOfTheVariableMapHaveTwoFields_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("isValid");
        QTest::newRow("input first") << QByteArray("in:2310;out:1205") << true;
        QTest::newRow("output first") << QByteArray("out:1205;in:2310") << true;
        QTest::newRow("trailing separator") << QByteArray("in:2310;out:1205;") << false;
        QTest::newRow("twice in") << QByteArray("in:2310;in:1205") << false;
        QTest::newRow("twice out") << QByteArray("out:2310;out:1205") << false;
        QTest::newRow("colon in a key") << QByteArray("in:23:10;out:1205") << false;
        QTest::newRow("no output") << QByteArray("in:2310;out:") << false;
        QTest::newRow("no input") << QByteArray("out:1205;in:") << false;
        QTest::newRow("one field") << QByteArray("in:2310") << false;
        QTest::newRow("no text") << QByteArray("") << false;
        QTest::newRow("no keywords") << QByteArray("2310;1205") << false;
        QTest::newRow("upper case") << QByteArray("IN:2310;OUT:1205") << false;
        QTest::newRow("blank before the keyword") << QByteArray(" in:2310;out:1205") << false;
        QTest::newRow("blank behind the key") << QByteArray("in:2310;out:1205 ") << false;
    }
    void entriesOfTheVariableMapHaveTwoFields()
    {
        QFETCH(QByteArray, text);
        QFETCH(bool, isValid);
        Station station;
        station.privates = Varmap(text);
        QCOMPARE(Pairs(station), QString(isValid ? "Pos>Out" : ""));
    }

    void aVoidEntryLeavesTheOthersAlone()
    {
        Station station;
        station.privates = Varmap("in:2310;out:1205") + Varmap("out:;in:2310") + Varmap("x");
        QCOMPARE(Pairs(station), QString("Pos>Out"));
    }

    void ofTwoEntriesWithOneInputTheLaterCounts()
    {
        Station station;
        station.privates = Varmap("in:2310;out:9") + Varmap("in:2310;out:1205");
        QCOMPARE(Pairs(station), QString("Pos>Out"));
        station.privates = Varmap("in:2310;out:1205") + Varmap("in:2310;out:9");
        QCOMPARE(Pairs(station), QString());
    }

    void otherPrivatesAreNoVariableMap()
    {
        Station station;
        station.privates = "<Private type='OTHER'>in:2310;out:1205</Private>"
                           "<Private>in:2310;out:1205</Private>";
        QCOMPARE(Pairs(station), QString());
    }

    void theListsAreClearedEvenIfThereIsNoSignal()
    {
        TestControl control;
        Station station;
        station.privates = "";
        SCLElement* root = control.OpenRoot(station.Text());
        QList<SCLElement*> pro = {root};
        QList<SCLElement*> sta = {root, root};
        SCLHelp::GetProAndStaDOIMap(IedOf(root, "E"), pro, sta);
        QVERIFY(pro.isEmpty());
        QVERIFY(sta.isEmpty());
    }

    void whatIsNoIedLeavesTheListsAsTheyAre()
    {
        TestControl control;
        SCLElement* root = control.OpenRoot(Station().Text());
        QList<SCLElement*> pro = {root};
        QList<SCLElement*> sta = {root, root};
        SCLHelp::GetProAndStaDOIMap(nullptr, pro, sta);
        SCLHelp::GetProAndStaDOIMap(root, pro, sta);
        QCOMPARE(pro.size(), 1);
        QCOMPARE(sta.size(), 2);
    }

    void theShortKeyIsWhatStandsBehindTheFirstColon_data()
    {
        QTest::addColumn<QByteArray>("sAddr");
        QTest::addColumn<bool>("isFound");
        QTest::newRow("no colon") << QByteArray("1205") << true;
        QTest::newRow("one colon") << QByteArray("a:1205") << true;
        QTest::newRow("empty head") << QByteArray(":1205") << true;
        QTest::newRow("two colons") << QByteArray("a:b:1205") << false;
        QTest::newRow("colon last") << QByteArray("1205:") << false;
    }
    void theShortKeyIsWhatStandsBehindTheFirstColon()
    {
        QFETCH(QByteArray, sAddr);
        QFETCH(bool, isFound);
        Station station;
        station.output = "<DAI name='stVal' sAddr='" + sAddr + "'/>";
        QCOMPARE(Pairs(station), QString(isFound ? "Pos>Out" : ""));
        station.output = "<DAI name='stVal' sAddr='1205'/>";
        station.input = "<DAI name='stVal' sAddr='" + sAddr + "'/>";
        station.privates = Varmap("in:1205;out:1205");
        QCOMPARE(Pairs(station), QString(isFound ? "Pos>Out" : ""));
    }

    void anOutputAddressIsTrimmedAnInputAddressIsNot()
    {
        Station station;
        station.output = "<DAI name='stVal' sAddr=' M:1205  '/>";
        QCOMPARE(Pairs(station), QString("Pos>Out"));
        station.input = "<DAI name='stVal' sAddr='M:2310 '/>";
        QCOMPARE(Pairs(station), QString());
        station.privates = Varmap("in:2310 ;out:1205");
        QCOMPARE(Pairs(station), QString("Pos>Out"));
    }

    void onlyDirectAttributesAreOutputs()
    {
        Station station;
        station.output = "<SDI name='s'><DAI name='stVal' sAddr='M:1205'/></SDI>";
        QCOMPARE(Pairs(station), QString());
    }

    void ofTwoAttributesWithOneAddressTheLaterCounts()
    {
        Station station;
        station.output += "</DOI><DOI name='Later'><DAI name='t' sAddr='1205'/>";
        QCOMPARE(Pairs(station), QString("Pos>Later"));
    }

    void withoutAttributeTheUsualOneWithAnAddressIsTaken()
    {
        Station station;
        station.intAddr = "LD/GGIO1.In";
        station.input = "<DAI name='stVal'/><DAI name='phsA' sAddr='2310'/>"
                        "<DAI name='phsB' sAddr='no'/>";
        QCOMPARE(Pairs(station), QString("Pos>Out"));
        station.fc = "CF";
        QCOMPARE(Pairs(station), QString());
    }

    void aStepThatFindsNothingLeavesTheExtRefOut_data()
    {
        QTest::addColumn<QByteArray>("from");
        QTest::addColumn<QByteArray>("to");
        QTest::newRow("publisher") << QByteArray("iedName='P'") << QByteArray("iedName='?'");
        QTest::newRow("instance") << QByteArray("DOI name='Pos'") << QByteArray("DOI name='?'");
        QTest::newRow("address") << QByteArray("LD/GGIO1.In.stVal") << QByteArray("GGIO1");
        QTest::newRow("device") << QByteArray("LD/GGIO1.In.stVal")
                                << QByteArray("X/GGIO1.In.stVal");
        QTest::newRow("node") << QByteArray("LD/GGIO1.In.stVal") << QByteArray("LD/GGIO2.In.stVal");
        QTest::newRow("input") << QByteArray("LD/GGIO1.In.stVal")
                               << QByteArray("LD/GGIO1.No.stVal");
        QTest::newRow("attribute")
            << QByteArray("LD/GGIO1.In.stVal") << QByteArray("LD/GGIO1.In.t");
        QTest::newRow("input key") << QByteArray("M:2310") << QByteArray("M:1");
        QTest::newRow("output key") << QByteArray("M:1205") << QByteArray("M:1");
    }
    void aStepThatFindsNothingLeavesTheExtRefOut()
    {
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        TestControl control;
        const QByteArray text = Station().Text();
        QVERIFY(text.contains(from));
        SCLElement* root = control.OpenRoot(QByteArray(text).replace(from, to));
        QList<SCLElement*> pro;
        QList<SCLElement*> sta;
        SCLHelp::GetProAndStaDOIMap(IedOf(root, "E"), pro, sta);
        QCOMPARE(Named(pro) + Named(sta), QString());
    }

    void twoExtRefsOfOneInputGiveThePairTwice()
    {
        Station station;
        station.moreExtRefs = "<ExtRef/><ExtRef iedName='P' ldInst='LD' lnClass='XCBR' lnInst='1' "
                              "doName='Pos' daName='stVal' intAddr='LD/GGIO1.In.stVal'/>";
        station.proAttributes = " desc='new'";
        QCOMPARE(Pairs(station), QString("Pos>Out Pos>Out"));
        station.pro = UserDescription("new");
        station.output += UserDescription("old");
        // The second write finds what it wants and stays silent.
        QCOMPARE(After(station, SCLHelp::SyncUDescFromProToSta).log,
                 QStringList({"editValue Val \"new\"", "modifiedStateChanged true"}));
        // An empty text is carried over twice and never silent.
        station.pro = UserDescription("");
        QCOMPARE(After(station, SCLHelp::SyncUDescFromProToSta).log,
                 QStringList({"editAttribute Val  null -> \"\"", "modifiedStateChanged true",
                              "editAttribute Val  null -> \"\""}));
    }

    void aDescriptionIsCarriedOver_data()
    {
        QTest::addColumn<bool>("toSta");
        QTest::addColumn<QByteArray>("pro");
        QTest::addColumn<QByteArray>("sta");
        QTest::addColumn<QStringList>("log");
        const QString modified = "modifiedStateChanged true";
        QTest::newRow("Pro to Sta")
            << true << QByteArray(" desc='p'") << QByteArray(" desc='s'")
            << QStringList({"editAttribute DOI desc \"s\" -> \"p\"", modified});
        QTest::newRow("Sta to Pro")
            << false << QByteArray(" desc='p'") << QByteArray(" desc='s'")
            << QStringList({"editAttribute DOI desc \"p\" -> \"s\"", modified});
        QTest::newRow("blanks the target")
            << true << QByteArray() << QByteArray(" desc='s'")
            << QStringList({"editAttribute DOI desc \"s\" -> \"\"", modified});
        QTest::newRow("creates an empty one")
            << true << QByteArray() << QByteArray()
            << QStringList({"editAttribute DOI desc null -> \"\"", modified});
        QTest::newRow("same already")
            << true << QByteArray(" desc='s'") << QByteArray(" desc='s'") << QStringList();
    }
    void aDescriptionIsCarriedOver()
    {
        QFETCH(bool, toSta);
        QFETCH(QByteArray, pro);
        QFETCH(QByteArray, sta);
        QFETCH(QStringList, log);
        Station station;
        station.proAttributes = pro;
        station.outputAttributes = sta;
        const Outcome outcome =
            After(station, toSta ? SCLHelp::SyncDescFromProToSta : SCLHelp::SyncDescFromStaToPro);
        QCOMPARE(outcome.log, log);
    }

    void aUserDescriptionIsCarriedOver_data()
    {
        QTest::addColumn<QByteArray>("pro");
        QTest::addColumn<QByteArray>("sta");
        QTest::addColumn<QString>("staAfter");
        QTest::addColumn<QStringList>("log");
        const QString modified = "modifiedStateChanged true";
        const QByteArray full = UserDescription("s");
        const QString copied = "<DAI name=\"dU\"><Val>p</Val></DAI>";
        const QByteArray p = UserDescription("p");
        QTest::newRow("replaced") << p << full << copied
                                  << QStringList({"editValue Val \"p\"", modified});
        QTest::newRow("no Val") << p << QByteArray("<DAI name='dU'/>") << copied
                                << QStringList(
                                       {"addElement <Val/>", modified, "editValue Val \"p\""});
        QTest::newRow("no DAI") << p << QByteArray() << copied
                                << QStringList({modified, "addElement <DAI name=\"dU\"/>",
                                                "addElement <Val/>", "editValue Val \"p\""});
        QTest::newRow("same already") << p << p << copied << QStringList();
        QTest::newRow("the first Val")
            << QByteArray("<DAI name='dU'><Val>p</Val><Val>x</Val></DAI>")
            << QByteArray("<DAI name='dU'><Val>s</Val><Val>t</Val></DAI>")
            << QString("<DAI name=\"dU\"><Val>p</Val><Val>t</Val></DAI>")
            << QStringList({"editValue Val \"p\"", modified});
        const QString marked = "<DAI name=\"dU\"><Val =\"\">s</Val></DAI>";
        const QStringList mark = {"editAttribute Val  null -> \"\"", modified};
        QTest::newRow("empty source") << UserDescription("") << full << marked << mark;
        QTest::newRow("source without Val")
            << QByteArray("<DAI name='dU'/>") << full << marked << mark;
        QTest::newRow("no source") << QByteArray() << full << marked << mark;
        QTest::newRow("nothing at either side") << QByteArray() << QByteArray("<DAI name='dU'/>")
                                                << QString("<DAI name=\"dU\"/>") << QStringList();
    }
    void aUserDescriptionIsCarriedOver()
    {
        QFETCH(QByteArray, pro);
        QFETCH(QByteArray, sta);
        QFETCH(QString, staAfter);
        QFETCH(QStringList, log);
        const QByteArray key = "<DAI name='stVal' sAddr='1205'/>";
        Station station;
        station.pro = pro;
        station.output = key + sta;
        const QString keyText = "<DAI name=\"stVal\" sAddr=\"1205\"/>";
        Outcome outcome = After(station, SCLHelp::SyncUDescFromProToSta);
        QCOMPARE(outcome.sta, "<DOI name=\"Out\">" + keyText + staAfter + "</DOI>");
        QCOMPARE(outcome.log, log);

        station.pro = sta;
        station.output = key + pro;
        outcome = After(station, SCLHelp::SyncUDescFromStaToPro);
        QCOMPARE(outcome.pro, "<DOI name=\"Pos\">" + staAfter + "</DOI>");
        QCOMPARE(outcome.log, log);
    }

    void nothingIsCarriedForWhatIsNoIed()
    {
        TestControl control;
        Station station;
        station.proAttributes = " desc='p'";
        station.pro = UserDescription("p");
        SCLDocument* document = control.Open(station.Text());
        SignalLog log(document);
        for (Sync sync : {SCLHelp::SyncDescFromProToSta, SCLHelp::SyncDescFromStaToPro,
                          SCLHelp::SyncUDescFromProToSta, SCLHelp::SyncUDescFromStaToPro}) {
            sync(nullptr);
            sync(document->Root());
            sync(IedOf(document->Root(), "P"));
        }
        QCOMPARE(log.Lines(), QStringList());
    }

    void aNameThatIsGivenIsTheOnlyCandidate()
    {
        TestControl control;
        SCLElement* doi = control.OpenRoot("<SCL><DAI name='setVal' sAddr='x'/></SCL>");
        QString daName = "stVal";
        QCOMPARE(SCLHelp::GetDAIShortAddress(doi, "ST", daName), QString());
        QCOMPARE(daName, QString("stVal"));
        daName = "setVal";
        QCOMPARE(SCLHelp::GetDAIShortAddress(doi, "", daName), QString("x"));
    }

    void theFirstUsualAttributeWithAnAddressIsChosen_data()
    {
        QTest::addColumn<QString>("fc");
        QTest::addColumn<QStringList>("candidates");
        const QStringList settings = {"setVal", "setMag.f"};
        QTest::newRow("SG") << "SG" << settings;
        QTest::newRow("SP") << "SP" << settings;
        QTest::newRow("ST") << "ST"
                            << QStringList({"stVal", "setVal", "t", "general", "phsA", "phsB",
                                            "phsC", "neut", "dirGeneral", "dirPhsA", "dirPhsB",
                                            "dirPhsC", "dirNeut"});
        QTest::newRow("MX") << "MX" << QStringList({"instMag.i", "mag.f"});
        QTest::newRow("CF") << "CF" << QStringList();
        QTest::newRow("st") << "st" << QStringList();
        QTest::newRow("none") << "" << QStringList();
    }
    void theFirstUsualAttributeWithAnAddressIsChosen()
    {
        QFETCH(QString, fc);
        QFETCH(QStringList, candidates);
        static const QStringList all = {"stVal",    "setVal",  "t",       "general",    "phsA",
                                        "phsB",     "phsC",    "neut",    "dirGeneral", "dirPhsA",
                                        "dirPhsB",  "dirPhsC", "dirNeut", "instMag.i",  "mag.f",
                                        "setMag.f", "q"};
        TestControl control;
        SCLElement* doi = control.OpenRoot("<SCL/>");
        const auto add = [doi](const QString& path) {
            const QStringList steps = path.split('.');
            SCLElement* parent = doi;
            if (steps.size() == 2) {
                parent = doi->FindChild("SDI", "name", steps[0], false);
                if (!parent)
                    parent = doi->CreateChild("SDI", {{"name", steps[0]}}, -1, false);
            }
            parent->CreateChild("DAI", {{"name", steps.last()}, {"sAddr", path}}, -1, false);
        };
        for (const QString& name : all) {
            if (!candidates.contains(name))
                add(name);
        }
        QString daName;
        QCOMPARE(SCLHelp::GetDAIShortAddress(doi, fc, daName), QString());
        QCOMPARE(daName, QString());
        // From the last candidate to the first: each one takes over from those behind it.
        for (auto name = candidates.rbegin(); name != candidates.rend(); ++name) {
            add(*name);
            daName.clear();
            QCOMPARE(SCLHelp::GetDAIShortAddress(doi, fc, daName), *name);
            QCOMPARE(daName, *name);
        }
        daName.clear();
        QCOMPARE(SCLHelp::GetDAIShortAddress(nullptr, fc, daName), QString());
    }

    void anEmptyAddressCountsAsNotFound()
    {
        TestControl control;
        SCLElement* doi = control.OpenRoot(
            "<SCL><DAI name='stVal' sAddr=''/><DAI name='setVal' sAddr='x'/></SCL>");
        QString daName;
        QCOMPARE(SCLHelp::GetDAIShortAddress(doi, "ST", daName), QString("x"));
        QCOMPARE(daName, QString("setVal"));
    }

    void theSamplePassesSignalsOn()
    {
        TestControl control;
        SCLDocument* document = control->OpenDocument(CORVANE_SAMPLES_DIR "/station.scd", false);
        QVERIFY(document);
        int pairs = 0;
        const QList<SCLElement*> ieds = document->Root()->FindChildByType("IED", false);
        for (SCLElement* ied : ieds) {
            QList<SCLElement*> pro;
            QList<SCLElement*> sta;
            SCLHelp::GetProAndStaDOIMap(ied, pro, sta);
            QCOMPARE(pro.size(), sta.size());
            SCLHelp::SyncDescFromProToSta(ied);
            for (int i = 0; i < pro.size(); ++i) {
                QVERIFY(pro[i]->GetParent("IED") != ied);
                QCOMPARE(sta[i]->GetParent("IED"), ied);
                QCOMPARE(sta[i]->GetAttribute("desc"), pro[i]->GetAttribute("desc"));
            }
            pairs += static_cast<int>(pro.size());
        }
        QCOMPARE(pairs, 10);
    }
};

QTEST_MAIN(SCLHelp_ProStaMappingTest)
#include "SCLHelp_ProStaMappingTest.moc"
