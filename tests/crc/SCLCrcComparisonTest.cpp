// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ConnectedStation.h"
#include "tests/support/TestControl.h"

#include <corvane/crc/CrcGenerator.h>
#include <corvane/crc/SCLCrcComparison.h>
#include <corvane/elements/SCLElement.h>

#include <QRandomGenerator>
#include <QtTest>

#include <utility>

using namespace Corvane;
using namespace Corvane::Test;

namespace
{

using Change = SCLCrcComparison::Change;
using Difference = SCLCrcComparison::Difference;
using Meaning = SCLCrcComparison::Meaning;
using Section = SCLCrcComparison::Section;

QString Name(Section section)
{
    switch (section) {
    case Section::Ied:
        return QStringLiteral("Ied");
    case Section::GoosePublication:
        return QStringLiteral("GoosePub");
    case Section::GooseSubscription:
        return QStringLiteral("GooseSub");
    case Section::SampledValuePublication:
        return QStringLiteral("SvPub");
    case Section::SampledValueSubscription:
        break;
    }
    return QStringLiteral("SvSub");
}

QString Name(Meaning meaning)
{
    switch (meaning) {
    case Meaning::Ied:
        return QStringLiteral("Ied");
    case Meaning::ControlBlock:
        return QStringLiteral("ControlBlock");
    case Meaning::Communication:
        return QStringLiteral("Communication");
    case Meaning::DataSet:
        return QStringLiteral("DataSet");
    case Meaning::Member:
        return QStringLiteral("Member");
    case Meaning::InstanceData:
        return QStringLiteral("InstanceData");
    case Meaning::Wiring:
        break;
    }
    return QStringLiteral("Wiring");
}

QString Name(Change change)
{
    switch (change) {
    case Change::Value:
        return QStringLiteral("Value");
    case Change::OnlyLeft:
        return QStringLiteral("OnlyLeft");
    case Change::OnlyRight:
        return QStringLiteral("OnlyRight");
    case Change::Order:
        break;
    }
    return QStringLiteral("Order");
}

QString OrNull(const QString& text)
{
    return text.isNull() ? QStringLiteral("null") : QLatin1Char('\'') + text + QLatin1Char('\'');
}

// "GoosePub Communication Value: path @attribute: 'a' | 'b'"
QString FactsOf(const Difference& difference)
{
    return QStringLiteral("%1 %2 %3: %4%5: %6 | %7")
        .arg(Name(difference.section), Name(difference.meaning), Name(difference.change),
             difference.path,
             difference.attribute.isEmpty() ? QString()
                                            : QStringLiteral(" @") + difference.attribute,
             OrNull(difference.left), OrNull(difference.right));
}

QStringList FactsOf(const SCLCrcComparison& comparison)
{
    QStringList facts;
    for (const Difference& difference : comparison.differences)
        facts.append(FactsOf(difference));
    return facts;
}

QStringList TextsOf(const SCLCrcComparison& comparison)
{
    QStringList texts;
    for (const Difference& difference : comparison.differences)
        texts.append(difference.text);
    return texts;
}

QByteArray ContentOf(SCLElement* ied)
{
    unsigned int crc = 0;
    QByteArray content;
    CrcGenerator(ied).Gererate(crc, &content, nullptr);
    return content;
}

// Two stations, with the schema of the sample.
class Stations
{
public:
    Stations(const QByteArray& left, const QByteArray& right)
    {
        if (!m_control->RegisterSchema(QStringLiteral(CORVANE_SAMPLES_DIR "/SCL.xsd")))
            qFatal("the schema does not load");
        Open(left, right);
    }

    void Open(const QByteArray& left, const QByteArray& right)
    {
        m_control->CloseDocument(m_left, false);
        m_control->CloseDocument(m_right, false);
        m_left = m_control.Open(left);
        m_right = m_control.Open(right);
    }

    SCLElement* Left(const QString& ied) { return Ied(m_left, ied); }
    SCLElement* Right(const QString& ied) { return Ied(m_right, ied); }
    SCLCrcComparison Compare(const QString& ied)
    {
        return SCLCrcComparison::Of(Left(ied), Right(ied));
    }
    bool IsModified() const { return m_left->GetModified() || m_right->GetModified(); }

private:
    static SCLElement* Ied(SCLDocument* document, const QString& name)
    {
        return document->Root()->FindChild(QStringLiteral("IED"), QStringLiteral("name"), name,
                                           false);
    }

    TestControl m_control;
    SCLDocument* m_left = nullptr;
    SCLDocument* m_right = nullptr;
};

SCLCrcComparison Compare(const QString& ied, const QByteArray& left, const QByteArray& right)
{
    return Stations(left, right).Compare(ied);
}

// The differences of an IED after one edit of the right station.
SCLCrcComparison AfterEdit(const QString& ied, const QByteArray& from, const QByteArray& to)
{
    return Compare(ied, ConnectedStation(), Edited(ConnectedStation(), from, to));
}

// Changes a station at random: whatever a user may do to any element.
class RandomEdits
{
public:
    explicit RandomEdits(quint32 seed) : m_random(seed) {}

    void Edit(SCLElement* root, int count)
    {
        for (int i = 0; i < count; ++i)
            EditOne(AnyBelow(root));
    }
    int Below(int bound) { return static_cast<int>(m_random.bounded(bound)); }

private:
    // No child has the same chance as any of them, so the walk ends at any depth.
    SCLElement* AnyBelow(SCLElement* element)
    {
        for (;;) {
            const QList<SCLElement*> children = element->GetChildList();
            const int index = Below(static_cast<int>(children.size()) + 1);
            if (index == children.size())
                return element;
            element = children.at(index);
        }
    }

    void EditOne(SCLElement* element)
    {
        switch (Below(7)) {
        case 0:
        case 1:
            element->SetAttribute(AnyName(), AnyText(), false);
            return;
        case 2:
            element->RemoveAttribute(AnyName(), false);
            return;
        case 3:
            element->SetValue(AnyText(), false);
            return;
        case 4:
            Duplicate(element);
            return;
        case 5:
            Move(element);
            return;
        default:
            Remove(element);
        }
    }

    static SCLElement* ParentOf(SCLElement* element) { return element->GetParent(QString()); }

    void Duplicate(SCLElement* element)
    {
        if (SCLElement* parent = ParentOf(element))
            parent->AttachChild(element->Clone(true), parent->GetChildPos(element), false);
    }

    void Move(SCLElement* element)
    {
        if (SCLElement* parent = ParentOf(element))
            parent->MoveChild(element->GetTag(), parent->GetChildPos(element), 0, false);
    }

    void Remove(SCLElement* element)
    {
        SCLElement* parent = ParentOf(element);
        if (parent && element->GetTag() != QLatin1String("IED"))
            parent->RemoveChild(element, false);
    }

    QString AnyName()
    {
        static const QStringList names{"name", "desc", "type",   "doName",  "daName",
                                       "fc",   "inst", "ldInst", "intAddr", "sAddr"};
        return names.at(Below(static_cast<int>(names.size())));
    }
    QString AnyText()
    {
        static const QStringList texts{
            "",   "a b", "a@wspace@b",  "@wspace@ ", " @wspace@",  "\x01",        "NULL",
            "ST", "<&>", "K/GGIO1.In2", "Ind1",      "Ind2.stVal", "MAC-Address", "stVal"};
        return texts.at(Below(static_cast<int>(texts.size())));
    }

    QRandomGenerator m_random;
};

// How often each change occurs, with left and right exchanged where that is asked for.
QMap<Change, int> Counts(const SCLCrcComparison& comparison, bool exchanged)
{
    QMap<Change, int> counts;
    for (const Difference& difference : comparison.differences) {
        Change change = difference.change;
        if (exchanged && change == Change::OnlyLeft)
            change = Change::OnlyRight;
        else if (exchanged && change == Change::OnlyRight)
            change = Change::OnlyLeft;
        ++counts[change];
    }
    return counts;
}

QByteArray Repeated(const QByteArray& text, int count)
{
    return text.repeated(count);
}

} // namespace

class SCLCrcComparisonTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatDoesNotCountIsNoDifference_data();
    void whatDoesNotCountIsNoDifference();
    void anEditIsNamed_data();
    void anEditIsNamed();
    void aSentenceTellsWhatDiffers_data();
    void aSentenceTellsWhatDiffers();
    void theDifferencesStandInCanonicalOrder();
    void anOrderAloneIsReportedAsSuch_data();
    void anOrderAloneIsReportedAsSuch();
    void anOrderThatTheContentDoesNotShowIsNone();
    void aSiblingMoreDoesNotMakeTheRestDiffer();
    void duplicatesBelongTogetherInOrder();
    void withoutConnectionThereIsNoContent();
    void aNullIedHasNoContent();
    void theIedsOfOneDocumentMayBeCompared();
    void aMarkOfABlankIsABlank();
    void whatXmlCannotHoldDoesNotCount();
    void attributesThatReadAlikeAreToldApart();
    void markersInNamesStayWhatTheyAre();
    void namesAreCleanedForPeople();
    void theCodesAreThoseOfTheGenerator();
    void nothingIsModified();
    void anyDepthIsCompared();
    void differencesAtAnyDepthCostLinearTime();
    void manySiblingsCostLinearTime();
    void differencesAreFoundExactlyIfTheContentsDiffer();
};

void SCLCrcComparisonTest::whatDoesNotCountIsNoDifference_data()
{
    QTest::addColumn<QString>("ied");
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");

    const auto row = [](const char* name, const char* ied, const char* from, const char* to) {
        QTest::newRow(name) << QString::fromLatin1(ied) << QByteArray(from) << QByteArray(to);
    };
    row("nothing", "P", "Ind1", "Ind1");
    row("description", "P", "desc=\"Trip\"", "desc=\"Alarm\"");
    row("type of the IED", "P", "type=\"T\"", "type=\"U\"");
    row("attribute order", "P", "unit=\"s\" multiplier=\"m\"", "multiplier=\"m\" unit=\"s\"");
    row("address of the access point", "P", "10.0.0.1", "10.0.0.2");
    row("other IED", "S", "sAddr=\"a1\"", "sAddr=\"a2\"");
    row("attributes of a received member", "S", R"(doName="Ind3" fc="ST")",
        R"(doName="Ind3" fc="MX")");
    row("cable of the publisher", "S", "1-A</P>", "1-B</P>");
}

void SCLCrcComparisonTest::whatDoesNotCountIsNoDifference()
{
    QFETCH(const QString, ied);
    QFETCH(const QByteArray, from);
    QFETCH(const QByteArray, to);

    const SCLCrcComparison comparison = AfterEdit(ied, from, to);

    QCOMPARE(FactsOf(comparison), QStringList());
    QVERIFY(comparison.IsEqual());
    QCOMPARE(comparison.leftCode, comparison.rightCode);
}

void SCLCrcComparisonTest::anEditIsNamed_data()
{
    QTest::addColumn<QString>("ied");
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::addColumn<QStringList>("facts");

    const auto row = [](const char* name, const char* ied, const char* from, const char* to,
                        const QStringList& facts) {
        QTest::newRow(name) << QString::fromLatin1(ied) << QByteArray(from) << QByteArray(to)
                            << facts;
    };
    row("address of own GOOSE", "P", "01-01", "01-02",
        {"GoosePub Communication Value: GOOSE publication PL/LLN0.g > address > MAC-Address: "
         "'01-01' | '01-02'",
         "SvPub Communication Value: SV publication PL/LLN0.v > access point > GSE L/g > Address > "
         "P MAC-Address: '01-01' | '01-02'"});
    row("address of received GOOSE", "S", "01-01", "01-02",
        {"GooseSub Communication Value: GOOSE subscription PL/LLN0.g > address > MAC-Address: "
         "'01-01' | '01-02'"});
    row("address of received SV", "S", "04-01", "04-02",
        {"SvSub Communication Value: SV subscription PL/LLN0.v > address > MAC-Address: '04-01' | "
         "'04-02'"});
    row("entry of an address", "S", "<P type=\"VLAN-ID\">005</P>", "<P type=\"x\"/>",
        {"GooseSub Communication OnlyLeft: GOOSE subscription PL/LLN0.g > address > VLAN-ID: "
         "'VLAN-ID' | null",
         "GooseSub Communication OnlyRight: GOOSE subscription PL/LLN0.g > address > x: null | "
         "'x'"});
    row("empty attribute", "S", "<P type=\"APPID\">", "<P type=\"APPID\" a=\"\">",
        {"GooseSub Communication Value: GOOSE subscription PL/LLN0.g > address > APPID @a: null | "
         "''"});
    row("time", "S", ">10<", ">4<",
        {"GooseSub Communication Value: GOOSE subscription PL/LLN0.g > MinTime: '10' | '4'"});
    row("cable", "P", "1-A</P>", "1-B</P>",
        {"GoosePub Communication Value: GOOSE publication PL/LLN0.g > access point > PhysConn "
         "Connection > P Port: '1-A' | '1-B'",
         "SvPub Communication Value: SV publication PL/LLN0.v > access point > PhysConn Connection "
         "> P Port: '1-A' | '1-B'"});
    row("access point", "S", "apName=\"A\">", "apName=\"A\" redProt=\"hsr\">",
        {"GooseSub Communication Value: GOOSE subscription PL/LLN0.g > access point @redProt: null "
         "| 'hsr'",
         "SvSub Communication Value: SV subscription PL/LLN0.v > access point @redProt: null | "
         "'hsr'"});
    row("no address", "S", "cbName=\"g\"", "cbName=\"h\"",
        {"GooseSub Communication OnlyLeft: GOOSE subscription PL/LLN0.g > access point: 'access "
         "point' | null",
         "GooseSub DataSet OnlyLeft: GOOSE subscription PL/LLN0.g > data set ds: 'data set ds' | "
         "null"});
    row("control block", "P", "confRev=\"1\"", "confRev=\"2\"",
        {"GoosePub ControlBlock Value: GOOSE publication PL/LLN0.g > control block @confRev: '1' | "
         "'2'"});
    row("part of a control block", "P", ">S</IEDName>", ">T</IEDName>",
        {"GoosePub ControlBlock Value: GOOSE publication PL/LLN0.g > control block > IEDName: 'S' "
         "| 'T'"});
    row("data set", "P", "\"ds\"", "\"dt\"",
        {"GoosePub ControlBlock Value: GOOSE publication PL/LLN0.g > control block @datSet: 'ds' | "
         "'dt'",
         "GoosePub DataSet Value: GOOSE publication PL/LLN0.g > data set ds @name: 'ds' | 'dt'"});
    row("no data set", "P", "<DataSet name=\"ds\"", "<DataSet name=\"dt\"",
        {"GoosePub DataSet OnlyLeft: GOOSE publication PL/LLN0.g > data set ds: 'data set ds' | "
         "null"});
    row("member", "P",
        R"(<FCDA ldInst="L" lnClass="GGIO" lnInst="1" doName="Ind2" daName="stVal" fc="ST"/>)",
        R"(<FCDA ldInst="L" lnClass="GGIO" lnInst="1" doName="Ind2" daName="q" fc="ST"/>)",
        {"GoosePub Member OnlyLeft: GOOSE publication PL/LLN0.g > data set ds > "
         "L/GGIO1.Ind2.stVal: 'L/GGIO1.Ind2.stVal' | null",
         "GoosePub Member OnlyRight: GOOSE publication PL/LLN0.g > data set ds > L/GGIO1.Ind2.q: "
         "null | 'L/GGIO1.Ind2.q'"});
    row("attribute of a member", "P", R"(doName="Ind3" fc="ST")", R"(doName="Ind3" fc="MX")",
        {"GoosePub Member Value: GOOSE publication PL/LLN0.g > data set ds > L/GGIO1.Ind3 @fc: "
         "'ST' | 'MX'"});
    row("type of a received member", "S", "BOOLEAN", "INT32",
        {"GooseSub Member Value: GOOSE subscription PL/LLN0.g > data set ds > L/GGIO1.Ind1.stVal "
         "@bType: 'BOOLEAN' | 'INT32'"});
    row("instance data", "P", "a1", "a2",
        {"GoosePub InstanceData Value: GOOSE publication PL/LLN0.g > data set ds > "
         "L/GGIO1.Ind1.stVal > stVal @sAddr: 'a1' | 'a2'"});
    row("value", "P", "<Val>5</Val>", "<Val>6</Val>",
        {"GoosePub InstanceData Value: GOOSE publication PL/LLN0.g > data set ds > L/GGIO1.Ind3 > "
         "Ind3 > s > x > Val: '5' | '6'"});
    row("no instance data", "P", "<DOI name=\"Ind3\">", "<DOI name=\"Ind4\">",
        {"GoosePub InstanceData OnlyLeft: GOOSE publication PL/LLN0.g > data set ds > L/GGIO1.Ind3 "
         "> Ind3: 'Ind3' | null"});
    row("wired to another place", "S", "In1.stVal\"", "In2.stVal\"",
        {"GooseSub Wiring Value: GOOSE subscription PL/LLN0.g > data set ds > L/GGIO1.Ind1.stVal: "
         "'1-A:K/GGIO1.In1.stVal' | '1-A:K/GGIO1.In2.stVal'"});
    row("wired without address", "S", "intAddr=\"1-A:K/GGIO1.In1.stVal\"", "",
        {"GooseSub Wiring Value: GOOSE subscription PL/LLN0.g > data set ds > L/GGIO1.Ind1.stVal: "
         "'1-A:K/GGIO1.In1.stVal' | ''"});
    row("other data wired", "S", "doName=\"Ind1\" daName=\"stVal\" intAddr",
        "doName=\"Ind2\" daName=\"stVal\" intAddr",
        {"GooseSub Wiring Value: GOOSE subscription PL/LLN0.g > data set ds > L/GGIO1.Ind1.stVal: "
         "'1-A:K/GGIO1.In1.stVal' | null",
         "GooseSub Wiring Value: GOOSE subscription PL/LLN0.g > data set ds > L/GGIO1.Ind2.stVal: "
         "null | '1-A:K/GGIO1.In1.stVal'"});
    row("wired to one place more", "S", "</Inputs>",
        "<ExtRef iedName=\"P\" ldInst=\"L\" lnClass=\"GGIO\" lnInst=\"1\" doName=\"Ind1\" "
        "daName=\"stVal\" intAddr=\"K/GGIO1.In2\"/></Inputs>",
        {"GooseSub Wiring OnlyRight: GOOSE subscription PL/LLN0.g > data set ds > "
         "L/GGIO1.Ind1.stVal > input K/GGIO1.In2: null | 'K/GGIO1.In2'"});
    row("data at the input", "S", "b1", "b2",
        {"GooseSub InstanceData Value: GOOSE subscription PL/LLN0.g > data set ds > "
         "L/GGIO1.Ind1.stVal > input 1-A:K/GGIO1.In1.stVal > stVal @sAddr: 'b1' | 'b2'"});
    row("input leads nowhere", "S", "<DAI name=\"stVal\" sAddr=\"b1\"/>", "",
        {"GooseSub InstanceData OnlyLeft: GOOSE subscription PL/LLN0.g > data set ds > "
         "L/GGIO1.Ind1.stVal > input 1-A:K/GGIO1.In1.stVal > stVal: 'stVal' | null"});
    row("not received", "S", "doName=\"Amp\" intAddr", "doName=\"Vol\" intAddr",
        {"SvSub ControlBlock OnlyLeft: SV subscription PL/LLN0.v: 'PL/LLN0.v' | null"});
    row("other name of a control block", "P", "SampledValueControl name=\"v\"",
        "SampledValueControl name=\"w\"",
        {"SvPub ControlBlock OnlyLeft: SV publication PL/LLN0.v: 'PL/LLN0.v' | null",
         "SvPub ControlBlock OnlyRight: SV publication PL/LLN0.w: null | 'PL/LLN0.w'"});
}

void SCLCrcComparisonTest::anEditIsNamed()
{
    QFETCH(const QString, ied);
    QFETCH(const QByteArray, from);
    QFETCH(const QByteArray, to);
    QFETCH(const QStringList, facts);

    const SCLCrcComparison comparison = AfterEdit(ied, from, to);

    QCOMPARE(FactsOf(comparison), facts);
    QVERIFY(!comparison.IsEqual());
    QVERIFY(comparison.leftCode != comparison.rightCode);
    QVERIFY(comparison.differences.constFirst().controlBlock.startsWith("PL/LLN0."));
}

void SCLCrcComparisonTest::aSentenceTellsWhatDiffers_data()
{
    QTest::addColumn<QString>("ied");
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::addColumn<QString>("first");

    const auto row = [](const char* name, const char* ied, const char* from, const char* to,
                        const char* first) {
        QTest::newRow(name) << QString::fromLatin1(ied) << QByteArray(from) << QByteArray(to)
                            << QString::fromLatin1(first);
    };
    row("MAC address", "P", "01-01", "01-02",
        "MAC address of sent GOOSE PL/LLN0.g is 01-01 in the first, 01-02 in the second.");
    row("VLAN ID", "S", "<P type=\"VLAN-ID\">005</P>", "",
        "VLAN ID of received GOOSE PL/LLN0.g is only in the first.");
    row("other entry", "S", "<P type=\"APPID\">", "<P type=\"x\"/><P type=\"APPID\">",
        "Address entry x of received GOOSE PL/LLN0.g is only in the second.");
    row("address", "S", "<Address><P type=\"MAC-Address\">04-01</P></Address>", "",
        "The address of received SV PL/LLN0.v is only in the first.");
    row("other text", "S", ">10<", "> <",
        "The value of MinTime of received GOOSE PL/LLN0.g is 10 in the first, empty in the "
        "second.");
    row("other attribute", "S", "unit=\"s\"", "unit=\"a b\"",
        "Attribute unit of MinTime of received GOOSE PL/LLN0.g is s in the first, \"a b\" in the "
        "second.");
    row("address of the other kind", "P", "04-01", "04-02",
        "The value of SMV L/v > Address > P MAC-Address at the access point of sent GOOSE "
        "PL/LLN0.g is 04-01 in the first, 04-02 in the second.");
    row("cable", "P", "<P type=\"Port\">1-A</P>", "",
        "The element PhysConn Connection > P Port at the access point of sent GOOSE PL/LLN0.g is "
        "only in the first.");
    row("access point", "S", "apName=\"A\">", "apName=\"A\" redProt=\"hsr\">",
        "Attribute redProt of the access point of received GOOSE PL/LLN0.g is not given in the "
        "first, hsr in the second.");
    row("communication entry", "S", "<GSE ", "<GSE x=\"1\" ",
        "Attribute x of the communication entry of received GOOSE PL/LLN0.g is not given in the "
        "first, 1 in the second.");
    row("no address", "P", "cbName=\"g\"", "cbName=\"h\"",
        "Sent GOOSE PL/LLN0.g has an address only in the first.");
    row("configuration revision", "P", "confRev=\"1\"", "confRev=\"2\"",
        "Configuration revision (confRev) of sent GOOSE PL/LLN0.g is 1 in the first, 2 in the "
        "second.");
    row("part of a control block", "P", ">S</IEDName>", ">T</IEDName>",
        "The value of IEDName in the control block of sent GOOSE PL/LLN0.g is S in the first, T in "
        "the second.");
    row("attribute of a part", "S", "<SmvOpts/>", "<SmvOpts security=\"true\"/>",
        "Attribute security of SmvOpts in the control block of received SV PL/LLN0.v is not given "
        "in the first, true in the second.");
    row("no data set", "P", "<DataSet name=\"ds\"", "<DataSet name=\"dt\"",
        "The data set of sent GOOSE PL/LLN0.g counts only in the first: in the other one the "
        "control block lacks it, or an address to send it to.");
    row("part of a data set", "P", "<DataSet name=\"ds\" desc=\"signals\">",
        "<DataSet name=\"ds\"><Text>t</Text>",
        "The element Text in the data set of sent GOOSE PL/LLN0.g is only in the second.");
    row("member", "S",
        R"(<FCDA ldInst="L" lnClass="GGIO" lnInst="1" doName="Ind2" daName="stVal" fc="ST"/>)", "",
        "Data set member L/GGIO1.Ind2.stVal of received GOOSE PL/LLN0.g is only in the first.");
    row("type of a member", "P", "BOOLEAN", "INT32",
        "Basic type (bType) of data set member L/GGIO1.Ind1.stVal of sent GOOSE PL/LLN0.g is "
        "BOOLEAN in the first, INT32 in the second.");
    row("short address", "P", "sAddr=\"a1\"", "",
        "Short address (sAddr) of stVal of data set member L/GGIO1.Ind1.stVal of sent GOOSE "
        "PL/LLN0.g is a1 in the first, not given in the second.");
    row("value", "P", "<Val>5</Val>", "<Val>6</Val>",
        "The value of Ind3 > s > x > Val of data set member L/GGIO1.Ind3 of sent GOOSE PL/LLN0.g "
        "is 5 in the first, 6 in the second.");
    row("wired to another place", "S", "In1.stVal\"", "In2.stVal\"",
        "Data set member L/GGIO1.Ind1.stVal of received GOOSE PL/LLN0.g is wired to "
        "1-A:K/GGIO1.In1.stVal in the first, wired to 1-A:K/GGIO1.In2.stVal in the second.");
    row("wired without address", "S", "intAddr=\"1-A:K/GGIO1.In1.stVal\"", "",
        "Data set member L/GGIO1.Ind1.stVal of received GOOSE PL/LLN0.g is wired to "
        "1-A:K/GGIO1.In1.stVal in the first, wired to an input without intAddr in the second.");
    row("not wired", "S", "doName=\"Ind1\" daName=\"stVal\" intAddr",
        "doName=\"Ind2\" daName=\"stVal\" intAddr",
        "Data set member L/GGIO1.Ind1.stVal of received GOOSE PL/LLN0.g is wired to "
        "1-A:K/GGIO1.In1.stVal in the first, not wired in the second.");
    row("wired to one place more", "S", "</Inputs>",
        "<ExtRef iedName=\"P\" ldInst=\"L\" lnClass=\"GGIO\" lnInst=\"1\" doName=\"Ind1\" "
        "daName=\"stVal\" intAddr=\"K/GGIO1.In2\"/></Inputs>",
        "Data set member L/GGIO1.Ind1.stVal of received GOOSE PL/LLN0.g is wired to K/GGIO1.In2 "
        "only in the second.");
    row("data at the input", "S", "b1", "b2",
        "Short address (sAddr) of stVal at input 1-A:K/GGIO1.In1.stVal, which takes data set "
        "member L/GGIO1.Ind1.stVal of received GOOSE PL/LLN0.g, is b1 in the first, b2 in the "
        "second.");
    row("input leads nowhere", "S", "<DAI name=\"stVal\" sAddr=\"b1\"/>", "",
        "Instance data stVal at input 1-A:K/GGIO1.In1.stVal, which takes data set member "
        "L/GGIO1.Ind1.stVal of received GOOSE PL/LLN0.g, is only in the first.");
    row("not received", "S", "doName=\"Amp\" intAddr", "doName=\"Vol\" intAddr",
        "Received SV PL/LLN0.v is only in the first.");
}

void SCLCrcComparisonTest::aSentenceTellsWhatDiffers()
{
    QFETCH(const QString, ied);
    QFETCH(const QByteArray, from);
    QFETCH(const QByteArray, to);
    QFETCH(const QString, first);

    const SCLCrcComparison comparison = AfterEdit(ied, from, to);

    QCOMPARE(TextsOf(comparison).value(0), first);
}

void SCLCrcComparisonTest::theDifferencesStandInCanonicalOrder()
{
    QByteArray right = Edited(ConnectedStation(), "smpRate=\"80\"", "smpRate=\"96\"");
    right = Edited(right, "a1", "a2");
    right = Edited(right, "04-01", "04-02");
    right = Edited(right, "confRev=\"1\"", "confRev=\"2\"");
    right = Edited(right, "fc=\"ST\"", "fc=\"SP\"");

    QStringList places;
    const QList<Difference> differences = Compare("P", ConnectedStation(), right).differences;
    for (const Difference& difference : differences)
        places.append(difference.path.section(" > ", -1) + ' ' + difference.attribute);

    QCOMPARE(places, (QStringList{"control block confRev", "P MAC-Address ",
                                  "L/GGIO1.Ind1.stVal fc", "stVal sAddr", "L/GGIO1.Ind2.stVal fc",
                                  "L/GGIO1.Ind3 fc", "control block smpRate", "MAC-Address "}));
}

// The station with two pieces of it exchanged, which stand side by side.
QByteArray Exchanged(const QByteArray& text, const QByteArray& first, const QByteArray& second)
{
    return Edited(text, first + second, second + first);
}

QByteArray MemberText(const QByteArray& name)
{
    return "<FCDA ldInst=\"L\" lnClass=\"GGIO\" lnInst=\"1\" doName=\"" + name + "\" fc=\"ST\"/>";
}

QByteArray InputText(const QByteArray& intAddr)
{
    return "<ExtRef iedName=\"P\" ldInst=\"L\" lnClass=\"GGIO\" lnInst=\"1\" doName=\"Ind3\" "
           "intAddr=\"" +
           intAddr + "\"/>";
}

void SCLCrcComparisonTest::anOrderAloneIsReportedAsSuch_data()
{
    QTest::addColumn<QString>("ied");
    QTest::addColumn<QByteArray>("left");
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("second");
    QTest::addColumn<QString>("fact");
    QTest::addColumn<QString>("text");

    const auto row = [](const char* name, const char* ied, const QByteArray& left,
                        const QByteArray& first, const QByteArray& second, const char* fact,
                        const char* text) {
        QTest::newRow(name) << QString::fromLatin1(ied) << left << first << second
                            << QString::fromLatin1(fact) << QString::fromLatin1(text);
    };
    const QByteArray members = MemberText("X") + MemberText("Y");
    row("members", "P", Edited(ConnectedStation(), MemberText("Ind3"), members), MemberText("X"),
        MemberText("Y"),
        "GoosePub Member Order: GOOSE publication PL/LLN0.g > data set ds: 'L/GGIO1.X' | "
        "'L/GGIO1.Y'",
        "The members of the data set of sent GOOSE PL/LLN0.g stand in another order: where the "
        "first has L/GGIO1.X, the second has L/GGIO1.Y.");
    row("entries", "S", ConnectedStation(), "<P type=\"MAC-Address\">01-01</P>",
        "<P type=\"VLAN-ID\">005</P>",
        "GooseSub Communication Order: GOOSE subscription PL/LLN0.g > address: 'MAC-Address' | "
        "'VLAN-ID'",
        "The entries of the address of received GOOSE PL/LLN0.g stand in another order: where the "
        "first has MAC-Address, the second has VLAN-ID.");
    row("inputs", "S",
        Edited(ConnectedStation(), "</Inputs>", InputText("1") + InputText("2") + "</Inputs>"),
        InputText("1"), InputText("2"),
        "GooseSub Wiring Order: GOOSE subscription PL/LLN0.g > data set ds > L/GGIO1.Ind3: '1' | "
        "'2'",
        "The inputs that take data set member L/GGIO1.Ind3 of received GOOSE PL/LLN0.g stand in "
        "another order: where the first has 1, the second has 2.");
    const QByteArray gooses = "<GSEControl name=\"g1\"/><GSEControl name=\"g2\"/>";
    row("control blocks", "P", Edited(ConnectedStation(), "<SampledV", gooses + "<SampledV"),
        "<GSEControl name=\"g1\"/>", "<GSEControl name=\"g2\"/>",
        "GoosePub ControlBlock Order: GOOSE publication: 'PL/LLN0.g1' | 'PL/LLN0.g2'",
        "The control blocks of the GOOSE publication stand in another order: where the first has "
        "PL/LLN0.g1, the second has PL/LLN0.g2.");
    const QByteArray values = "<Val sGroup=\"1\">5</Val><Val sGroup=\"2\">6</Val>";
    row("other elements", "P", Edited(ConnectedStation(), "<Val>5</Val>", values),
        "<Val sGroup=\"1\">5</Val>", "<Val sGroup=\"2\">6</Val>",
        "GoosePub InstanceData Order: GOOSE publication PL/LLN0.g > data set ds > L/GGIO1.Ind3 > "
        "Ind3 > s > x: 'Val' | 'Val'",
        "The children of instance data Ind3 > s > x of data set member L/GGIO1.Ind3 of sent GOOSE "
        "PL/LLN0.g stand in another order: where the first has Val, the second has Val.");
}

void SCLCrcComparisonTest::anOrderAloneIsReportedAsSuch()
{
    QFETCH(const QString, ied);
    QFETCH(const QByteArray, left);
    QFETCH(const QByteArray, first);
    QFETCH(const QByteArray, second);
    QFETCH(const QString, fact);
    QFETCH(const QString, text);

    const SCLCrcComparison comparison = Compare(ied, left, Exchanged(left, first, second));

    QCOMPARE(FactsOf(comparison), QStringList{fact});
    QCOMPARE(TextsOf(comparison), QStringList{text});
}

// Members of a subscription show neither name nor place, so only what is wired to them counts.
void SCLCrcComparisonTest::anOrderThatTheContentDoesNotShowIsNone()
{
    const QByteArray left = Edited(ConnectedStation(), MemberText("Ind3"),
                                   MemberText("X") + MemberText("Y") + MemberText("Z"));
    const QByteArray right = Edited(Exchanged(left, MemberText("X"), MemberText("Y")), "</Inputs>",
                                    Edited(InputText("1"), "Ind3", "Z") + "</Inputs>");

    QCOMPARE(FactsOf(Compare("S", left, right)),
             QStringList{"GooseSub Wiring Value: GOOSE subscription PL/LLN0.g > data set ds > "
                         "L/GGIO1.Z: null | '1'"});
}

void SCLCrcComparisonTest::aSiblingMoreDoesNotMakeTheRestDiffer()
{
    const QByteArray names = "<IEDName>A</IEDName><IEDName>B</IEDName><IEDName>C</IEDName>";
    const QByteArray left = Edited(ConnectedStation(), "<SmvOpts/>", names + "<SmvOpts/>");

    QCOMPARE(FactsOf(Compare("P", left, Edited(left, "<IEDName>A</IEDName>", ""))),
             QStringList{"SvPub ControlBlock OnlyLeft: SV publication PL/LLN0.v > control block > "
                         "IEDName: 'IEDName' | null"});
    QCOMPARE(FactsOf(Compare("P", left, Edited(left, ">B<", ">X<"))),
             QStringList{"SvPub ControlBlock Value: SV publication PL/LLN0.v > control block > "
                         "IEDName: 'B' | 'X'"});
}

void SCLCrcComparisonTest::duplicatesBelongTogetherInOrder()
{
    const QByteArray port = "<PhysConn type=\"Connection\"><P type=\"Port\">1-A</P></PhysConn>";
    const QByteArray second = Edited(port, "1-A", "1-B");
    const QByteArray left =
        Edited(ConnectedStation(), port, port + second + Edited(port, "1-A", "1-C"));
    const QByteArray right = Edited(Edited(left, "1-A</P>", "2-A</P>"), "1-C</P>", "2-C</P>");

    const QString place =
        "GoosePub Communication Value: GOOSE publication PL/LLN0.g > access point > PhysConn "
        "Connection > P Port: ";
    QCOMPARE(FactsOf(Compare("P", left, right)).mid(0, 2),
             (QStringList{place + "'1-A' | '2-A'", place + "'1-C' | '2-C'"}));
}

void SCLCrcComparisonTest::withoutConnectionThereIsNoContent()
{
    Stations stations(ConnectedStation(), ConnectedStation());

    QVERIFY(stations.Compare("N").IsEqual());
    QCOMPARE(stations.Compare("N").leftCode, QString());

    const SCLCrcComparison comparison =
        SCLCrcComparison::Of(stations.Left("N"), stations.Right("S"));
    QCOMPARE(FactsOf(comparison),
             (QStringList{
                 "GooseSub ControlBlock OnlyRight: GOOSE subscription PL/LLN0.g: null | "
                 "'PL/LLN0.g'",
                 "SvSub ControlBlock OnlyRight: SV subscription PL/LLN0.v: null | 'PL/LLN0.v'"}));
    QCOMPARE(comparison.leftCode, QString());
    QCOMPARE(comparison.rightCode, stations.Compare("S").rightCode);
}

void SCLCrcComparisonTest::aNullIedHasNoContent()
{
    Stations stations(ConnectedStation(), ConnectedStation());

    QVERIFY(SCLCrcComparison::Of(nullptr, nullptr).IsEqual());
    QVERIFY(SCLCrcComparison::Of(nullptr, stations.Right("N")).IsEqual());
    QCOMPARE(FactsOf(SCLCrcComparison::Of(stations.Left("S"), nullptr)),
             (QStringList{
                 "GooseSub ControlBlock OnlyLeft: GOOSE subscription PL/LLN0.g: 'PL/LLN0.g' | null",
                 "SvSub ControlBlock OnlyLeft: SV subscription PL/LLN0.v: 'PL/LLN0.v' | null"}));
}

void SCLCrcComparisonTest::theIedsOfOneDocumentMayBeCompared()
{
    Stations stations(ConnectedStation(), ConnectedStation());
    SCLElement* original = stations.Left("S");
    SCLElement* renamed = original->Clone(true);
    QVERIFY(original->GetParent("SCL")->AttachChild(renamed, -1, false));
    renamed->SetAttribute("name", "S2", false);

    const SCLCrcComparison comparison = SCLCrcComparison::Of(original, renamed);

    QCOMPARE(FactsOf(comparison), QStringList{"Ied Ied Value: IED S @name: 'S' | 'S2'"});
    QCOMPARE(TextsOf(comparison),
             QStringList{"The name of the IED is S in the first, S2 in the second."});
    QVERIFY(SCLCrcComparison::Of(original, original).IsEqual());
}

void SCLCrcComparisonTest::aMarkOfABlankIsABlank()
{
    QVERIFY(Compare("P", Edited(ConnectedStation(), ">5<", ">a b<"),
                    Edited(ConnectedStation(), ">5<", ">a@wspace@b<"))
                .IsEqual());
    QVERIFY(Compare("P", Edited(ConnectedStation(), "\"a1\"", "\"@wspace \""),
                    Edited(ConnectedStation(), "\"a1\"", "\" wspace@\""))
                .IsEqual());
}

void SCLCrcComparisonTest::whatXmlCannotHoldDoesNotCount()
{
    Stations stations(ConnectedStation(), ConnectedStation());
    SCLElement* dai = stations.Right("P")->FindChild("DAI", "sAddr", "a1", true);
    dai->SetAttribute("sAddr", QString("a\x01") + "1" + QChar(0xD800), false);

    QVERIFY(stations.Compare("P").IsEqual());

    dai->SetAttribute("sAddr", QString("a\x01") + "2", false);
    QCOMPARE(stations.Compare("P").differences.size(), 1);
}

void SCLCrcComparisonTest::attributesThatReadAlikeAreToldApart()
{
    const QString place =
        "GoosePub InstanceData Value: GOOSE publication PL/LLN0.g > data set ds > "
        "L/GGIO1.Ind3 > Ind3 > s > x > Val";
    const QByteArray left = Edited(ConnectedStation(), "<Val>5</Val>", "<Val a=\"bc\">5</Val>");

    QCOMPARE(FactsOf(Compare("P", left, Edited(left, "a=\"bc\"", "ab=\"c\""))),
             (QStringList{place + " @a: 'bc' | null", place + " @ab: null | 'c'"}));
    QCOMPARE(FactsOf(Compare("P", left, Edited(left, " a=\"bc\">5<", " a=\"b\" c=\"\">5<"))),
             (QStringList{place + " @a: 'bc' | 'b'", place + " @c: null | ''"}));
}

void SCLCrcComparisonTest::markersInNamesStayWhatTheyAre()
{
    const QByteArray left =
        Edited(ConnectedStation(), "lnClass=\"GGIO\" lnInst=\"1\" doName=\"Ind1\"",
               "lnClass=\"GGIO\" lnInst=\"1\" doName=\"%1%2\"");

    QCOMPARE(TextsOf(Compare("P", left,
                             Edited(left, "doName=\"%1%2\" daName=\"stVal\" fc=\"ST\"",
                                    "doName=\"%1%2\" daName=\"stVal\" fc=\"%3\""))),
             QStringList{"Attribute fc of data set member L/GGIO1.%1%2.stVal of sent GOOSE "
                         "PL/LLN0.g is ST in the first, %3 in the second."});
}

void SCLCrcComparisonTest::namesAreCleanedForPeople()
{
    const QByteArray longName = Repeated("x", 200);
    const QByteArray left = Edited(ConnectedStation(), "Ind2", "I&#x202E;&#10;2");
    const QByteArray right =
        Edited(left, "doName=\"I&#x202E;&#10;2\"", "doName=\"" + longName + "\"");

    QCOMPARE(TextsOf(Compare("P", left, right)),
             (QStringList{QString::fromUtf8("Data set member L/GGIO1.I\xEF\xBF\xBD\xEF\xBF\xBD"
                                            "2.stVal of sent GOOSE PL/LLN0.g is only in the "
                                            "first."),
                          QString::fromUtf8("Data set member L/GGIO1.") + QString(72, 'x') +
                              QString::fromUtf8("\xE2\x80\xA6 of sent GOOSE PL/LLN0.g is only in "
                                                "the second.")}));
}

void SCLCrcComparisonTest::theCodesAreThoseOfTheGenerator()
{
    Stations stations(ConnectedStation(), Edited(ConnectedStation(), "a1", "a2"));
    unsigned int left = 0;
    unsigned int right = 0;
    QCOMPARE(CrcGenerator(stations.Left("P")).Gererate(left, nullptr, nullptr),
             CrcGenerator::CrcSuccess);
    QCOMPARE(CrcGenerator(stations.Right("P")).Gererate(right, nullptr, nullptr),
             CrcGenerator::CrcSuccess);

    const SCLCrcComparison comparison = stations.Compare("P");

    QCOMPARE(comparison.leftCode.size(), 8);
    QCOMPARE(comparison.leftCode.toUInt(nullptr, 16), left);
    QCOMPARE(comparison.leftCode, comparison.leftCode.toUpper());
    QCOMPARE(comparison.rightCode.toUInt(nullptr, 16), right);
}

void SCLCrcComparisonTest::nothingIsModified()
{
    Stations stations(ConnectedStation(), Edited(ConnectedStation(), "a1", "a2"));

    QVERIFY(!stations.Compare("P").IsEqual());

    QVERIFY(!stations.IsModified());
}

void SCLCrcComparisonTest::anyDepthIsCompared()
{
    constexpr int depth = 100000;
    const QByteArray nest =
        Repeated("<Private>", depth) + "<a x=\"1\"/>" + Repeated("</Private>", depth);
    const QByteArray left = Edited(ConnectedStation(), "<PhysConn", nest + "<PhysConn");

    const SCLCrcComparison comparison = Compare("P", left, Edited(left, "x=\"1\"", "x=\"2\""));

    QCOMPARE(comparison.differences.size(), 2);
    const Difference& difference = comparison.differences.constFirst();
    QCOMPARE(FactsOf(difference),
             "GoosePub Communication Value: GOOSE publication PL/LLN0.g > access point > " +
                 QString("Private > ").repeated(7) + QChar(0x2026) + " > Private > Private > " +
                 "Private > a @x: '1' | '2'");
}

void SCLCrcComparisonTest::differencesAtAnyDepthCostLinearTime()
{
    constexpr int depth = 50000;
    const QByteArray left =
        Edited(ConnectedStation(), "<PhysConn",
               Repeated("<Private x=\"1\">", depth) + Repeated("</Private>", depth) + "<PhysConn");

    const SCLCrcComparison comparison = Compare("P", left, Edited(left, "x=\"1\"", "x=\"2\""));

    QCOMPARE(comparison.differences.size(), 2 * depth);
    QCOMPARE(comparison.differences.constLast().left, QString("1"));
}

void SCLCrcComparisonTest::manySiblingsCostLinearTime()
{
    constexpr int count = 50000;
    QByteArray siblings;
    for (int i = 0; i < count; ++i)
        siblings += "<Private>" + QByteArray::number(i) + "</Private>";
    const QByteArray left = Edited(ConnectedStation(), "<PhysConn", siblings + "<PhysConn");
    const QByteArray right = Edited(ConnectedStation(), "<PhysConn",
                                    "<Private/>" + Edited(siblings, ">0<", ">x<") + "<PhysConn");

    const SCLCrcComparison comparison = Compare("S", left, right);
    QVERIFY(comparison.IsEqual());
    QCOMPARE(Compare("P", left, right).differences.size(), 4);
}

void SCLCrcComparisonTest::differencesAreFoundExactlyIfTheContentsDiffer()
{
    constexpr int rounds = 400;
    constexpr quint32 seed = 6105;
    RandomEdits edits(seed);
    int equal = 0;
    int different = 0;
    Stations stations(ConnectedStation(), ConnectedStation());
    for (int round = 0; round < rounds; ++round) {
        stations.Open(ConnectedStation(), ConnectedStation());
        edits.Edit(stations.Left("P")->GetParent(QString()), edits.Below(3));
        edits.Edit(stations.Right("P")->GetParent(QString()), edits.Below(6));
        for (const char* name : {"P", "S", "N"}) {
            SCLElement* left = stations.Left(name);
            SCLElement* right = stations.Right(name);
            const SCLCrcComparison comparison = SCLCrcComparison::Of(left, right);
            const bool isEqual = ContentOf(left) == ContentOf(right);
            QVERIFY2(comparison.IsEqual() == isEqual,
                     qPrintable(QStringLiteral("round %1, %2: %3")
                                    .arg(round)
                                    .arg(name, FactsOf(comparison).join('\n'))));
            QCOMPARE(Counts(SCLCrcComparison::Of(right, left), true), Counts(comparison, false));
            ++(isEqual ? equal : different);
        }
    }
    QVERIFY(equal > rounds / 4);
    QVERIFY(different > rounds / 4);
}

QTEST_GUILESS_MAIN(SCLCrcComparisonTest)
#include "SCLCrcComparisonTest.moc"
