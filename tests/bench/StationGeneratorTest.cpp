// SPDX-License-Identifier: Apache-2.0
#include "bench/station/StationGenerator.h"

#include "bench/station/StationPlan.h"
#include "tests/support/TestControl.h"

#include <QBuffer>
#include <QHash>
#include <QIODevice>
#include <QSet>
#include <QXmlStreamReader>
#include <QtTest>

#include <memory>

using namespace Corvane;
using namespace Corvane::Bench;

namespace
{

constexpr qint64 g_nStationBytes = 3000000;

/// Takes nothing.
class FullDevice : public QIODevice
{
protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char*, qint64) override { return -1; }
};

QByteArray Generated(const StationRequest& request)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return GenerateStation(request, buffer) ? buffer.data() : QByteArray();
}

QString Joined(const QStringList& parts)
{
    return parts.join('|');
}

/// The values of some attributes of an element as one text.
QString Key(SCLElement* element, const QStringList& attributes)
{
    QStringList values;
    for (const QString& attribute : attributes)
        values.append(element->GetAttribute(attribute));
    return Joined(values);
}

QString NameOf(SCLElement* element)
{
    return element->GetAttribute("name");
}

QString ParameterOf(SCLElement* entry, const QString& type)
{
    SCLElement* parameter = entry->FindChild("P", "type", type, true);
    return parameter ? parameter->GetValue() : QString();
}

} // namespace

class StationGeneratorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void theSameSeedGivesTheSameBytes();
    void anotherSeedGivesOtherBytes();
    void theFileHasTheSizeAskedFor_data();
    void theFileHasTheSizeAskedFor();
    void aStationHasTheNumberOfIedsAskedFor();
    void aDeviceThatTakesNothingIsReported();

    void theFileIsWellFormedAndThirteenLevelsDeep();
    void theFileIsValid();

    void everyLogicalNodeHasItsType();
    void everyTypeIsFound();
    void everyFcdaNamesDataOfItsIed();
    void everyControlBlockHasItsDataSet();
    void everyExtRefNamesAPublishedItemOfAnotherIed();
    void everyInternalAddressNamesAPlaceOfItsIed();
    void everyClientNamesALogicalNode();
    void everyConnectionNamesAnAccessPoint();
    void everyStreamAddressNamesAControlBlock();
    void noTwoStreamsShareAnAddress();
    void everyLinkOfTheSubstationNamesALogicalNode();
    void descriptionsAreChineseToo();

private:
    QList<SCLElement*> All(const QString& tag) const;
    SCLElement* Ied(const QString& name) const;
    SCLElement* LogicalNode(SCLElement* reference, SCLElement* ied) const;
    SCLElement* MemberType(SCLElement* type, const QString& memberName) const;
    bool HasData(SCLElement* node, const QString& path) const;

    QByteArray m_bytes;
    std::unique_ptr<Corvane::Test::TestControl> m_pControl;
    SCLElement* m_pRoot = nullptr;
    QHash<QString, SCLElement*> m_ieds;
    QHash<QString, SCLElement*> m_types;
};

QList<SCLElement*> StationGeneratorTest::All(const QString& tag) const
{
    return m_pRoot->FindChildByType(tag, true);
}

SCLElement* StationGeneratorTest::Ied(const QString& name) const
{
    return m_ieds.value(name);
}

/// The logical node that the ldInst, prefix, lnClass and lnInst of a reference mean, or null.
SCLElement* StationGeneratorTest::LogicalNode(SCLElement* reference, SCLElement* ied) const
{
    if (!ied)
        return nullptr;
    SCLElement* device = ied->FindChild("LDevice", "inst", reference->GetAttribute("ldInst"), true);
    return device ? device->FindChild(reference->GetAttribute("prefix") +
                                      reference->GetAttribute("lnClass") +
                                      reference->GetAttribute("lnInst"))
                  : nullptr;
}

/// The type of a member of a template, of whatever tag, or null.
SCLElement* StationGeneratorTest::MemberType(SCLElement* type, const QString& memberName) const
{
    SCLElement* member = type ? type->FindChild("name", memberName) : nullptr;
    return member ? m_types.value(member->GetAttribute("type")) : nullptr;
}

/// Whether a dotted path of data object and attribute is declared by the type of a logical node.
bool StationGeneratorTest::HasData(SCLElement* node, const QString& path) const
{
    SCLElement* type = m_types.value(node->GetAttribute("lnType"));
    QStringList names = path.split('.');
    const QString last = names.takeLast();
    for (const QString& name : names)
        type = MemberType(type, name);
    return type && type->FindChild("name", last);
}

void StationGeneratorTest::initTestCase()
{
    m_bytes = Generated(StationRequest::OfSize(g_nStationBytes, 1));
    m_pControl = std::make_unique<Corvane::Test::TestControl>();
    m_pRoot = m_pControl->OpenRoot(m_bytes);
    for (SCLElement* ied : m_pRoot->FindChildByType("IED", false))
        m_ieds.insert(NameOf(ied), ied);
    for (SCLElement* type : m_pRoot->GetFirstChild("DataTypeTemplates")->GetChildList())
        m_types.insert(type->GetAttribute("id"), type);
    QVERIFY(m_ieds.size() > StationPlan::g_nMinIeds);
    QVERIFY(!m_types.isEmpty());
}

void StationGeneratorTest::cleanupTestCase()
{
    m_pControl.reset();
}

void StationGeneratorTest::theSameSeedGivesTheSameBytes()
{
    QVERIFY(Generated(StationRequest::OfSize(g_nStationBytes, 1)) == m_bytes);
}

void StationGeneratorTest::anotherSeedGivesOtherBytes()
{
    QVERIFY(Generated(StationRequest::OfSize(g_nStationBytes, 2)) != m_bytes);
}

void StationGeneratorTest::theFileHasTheSizeAskedFor_data()
{
    QTest::addColumn<qint64>("bytes");
    QTest::newRow("1.2 MB") << qint64(1200000);
    QTest::newRow("2 MB") << qint64(2000000);
    QTest::newRow("3.3 MB") << qint64(3300000);
    QTest::newRow("12 MB") << qint64(12000000);
}

void StationGeneratorTest::theFileHasTheSizeAskedFor()
{
    QFETCH(qint64, bytes);
    const qint64 size = Generated(StationRequest::OfSize(bytes, 1)).size();
    QVERIFY2(qAbs(size - bytes) * 10 <= bytes, qPrintable(QString::number(size)));
}

void StationGeneratorTest::aStationHasTheNumberOfIedsAskedFor()
{
    const QByteArray station = Generated(StationRequest::OfIeds(7, 1));
    QCOMPARE(station.count("<IED "), 7);
    QVERIFY2(qAbs(station.size() - 7 * 350000) < 245000,
             qPrintable(QString::number(station.size())));
}

void StationGeneratorTest::aDeviceThatTakesNothingIsReported()
{
    FullDevice device;
    device.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    QVERIFY(!GenerateStation(StationRequest::OfIeds(StationPlan::g_nMinIeds, 1), device));
}

void StationGeneratorTest::theFileIsWellFormedAndThirteenLevelsDeep()
{
    QXmlStreamReader reader(m_bytes);
    int depth = 0;
    int deepest = 0;
    while (!reader.atEnd()) {
        const auto token = reader.readNext();
        if (token == QXmlStreamReader::StartElement)
            deepest = qMax(deepest, ++depth);
        else if (token == QXmlStreamReader::EndElement)
            --depth;
    }
    QVERIFY2(!reader.hasError(), qPrintable(reader.errorString()));
    QCOMPARE(deepest, 13);
}

void StationGeneratorTest::theFileIsValid()
{
    Corvane::Test::TestControl& control = *m_pControl;
    QVERIFY(control->RegisterSchema(CORVANE_SAMPLES_DIR "/SCL.xsd"));
    QStringList messages;
    const bool valid =
        control->SchemaValidate(control.Folder().Write("valid.scd", m_bytes), messages);
    QCOMPARE(messages, QStringList());
    QVERIFY(valid);
}

void StationGeneratorTest::everyLogicalNodeHasItsType()
{
    const QList<SCLElement*> nodes = All("LN0") + All("LN");
    QVERIFY(!nodes.isEmpty());
    for (SCLElement* node : nodes) {
        SCLElement* type = m_types.value(node->GetAttribute("lnType"));
        QVERIFY2(type, qPrintable(node->GetAttribute("lnType")));
        QCOMPARE(type->GetTag(), QString("LNodeType"));
        QCOMPARE(type->GetAttribute("lnClass"), node->GetAttribute("lnClass"));
    }
}

void StationGeneratorTest::everyTypeIsFound()
{
    const QHash<QString, QString> structures{{"Struct", "DAType"}, {"Enum", "EnumType"}};
    int checked = 0;
    for (SCLElement* object : All("DO") + All("SDO") + All("DA") + All("BDA")) {
        const QString basicType = object->GetAttribute("bType");
        const QString tag = basicType.isEmpty() ? "DOType" : structures.value(basicType);
        SCLElement* type = m_types.value(object->GetAttribute("type"));
        QCOMPARE(type ? type->GetTag() : QString(), tag);
        ++checked;
    }
    QVERIFY(checked > 0);
}

void StationGeneratorTest::everyFcdaNamesDataOfItsIed()
{
    const QList<SCLElement*> items = All("FCDA");
    QVERIFY(!items.isEmpty());
    for (SCLElement* item : items) {
        SCLElement* node = LogicalNode(item, item->GetParent("IED"));
        QVERIFY2(node, qPrintable(Key(item, {"ldInst", "prefix", "lnClass", "lnInst"})));
        QStringList path{item->GetAttribute("doName")};
        if (item->FindAttribute("daName"))
            path.append(item->GetAttribute("daName"));
        QVERIFY2(HasData(node, path.join('.')), qPrintable(Joined(path)));
    }
}

void StationGeneratorTest::everyControlBlockHasItsDataSet()
{
    const QList<SCLElement*> streams = All("GSEControl") + All("SampledValueControl");
    QVERIFY(!streams.isEmpty());
    for (SCLElement* block : streams + All("ReportControl") + All("LogControl")) {
        QVERIFY(block->GetParent({})->FindChild("DataSet", "name", block->GetAttribute("datSet"),
                                                false));
    }
}

void StationGeneratorTest::everyExtRefNamesAPublishedItemOfAnotherIed()
{
    const QStringList item{"ldInst", "prefix", "lnClass", "lnInst", "doName", "daName"};
    QSet<QString> published;
    for (SCLElement* block : All("GSEControl") + All("SampledValueControl")) {
        SCLElement* zeroNode = block->GetParent({});
        SCLElement* dataSet =
            zeroNode->FindChild("DataSet", "name", block->GetAttribute("datSet"), false);
        const QString source =
            Joined({NameOf(block->GetParent("IED")),
                    block->GetParent("LDevice")->GetAttribute("inst"), NameOf(block)});
        for (SCLElement* fcda : dataSet->FindChildByType("FCDA", false))
            published.insert(Joined({source, Key(fcda, item)}));
    }
    QSet<QString> services;
    for (SCLElement* extRef : All("ExtRef")) {
        const QString wanted =
            Joined({Key(extRef, {"iedName", "srcLDInst", "srcCBName"}), Key(extRef, item)});
        QVERIFY2(published.contains(wanted), qPrintable(wanted));
        QVERIFY(extRef->GetAttribute("iedName") != NameOf(extRef->GetParent("IED")));
        services.insert(extRef->GetAttribute("serviceType"));
    }
    QCOMPARE(services, (QSet<QString>{"GOOSE", "SMV"}));
}

void StationGeneratorTest::everyInternalAddressNamesAPlaceOfItsIed()
{
    QSet<QString> ports;
    for (SCLElement* port : m_pRoot->FindChildByType("P", true)) {
        if (port->GetAttribute("type") == "Port")
            ports.insert(Joined(
                {Key(port->GetParent("ConnectedAP"), {"iedName", "apName"}), port->GetValue()}));
    }
    int severalPorts = 0;
    for (SCLElement* extRef : All("ExtRef")) {
        const QStringList parts = extRef->GetAttribute("intAddr").split(':');
        QCOMPARE(parts.size(), 2);
        const QString access =
            Joined({NameOf(extRef->GetParent("IED")), NameOf(extRef->GetParent("AccessPoint"))});
        for (const QString& port : parts[0].split('/'))
            QVERIFY2(ports.contains(Joined({access, port})), qPrintable(access + port));
        severalPorts += parts[0].contains('/') ? 1 : 0;

        QStringList path = QString(parts[1]).replace('/', '.').split('.');
        QVERIFY(path.size() >= 3);
        SCLElement* device =
            extRef->GetParent("IED")->FindChild("LDevice", "inst", path.takeFirst(), true);
        QVERIFY(device);
        SCLElement* node = device->FindChild(path.takeFirst());
        QVERIFY2(node, qPrintable(parts[1]));
        QVERIFY2(HasData(node, path.join('.')), qPrintable(parts[1]));
        QVERIFY(node->FindChild("DOI", "name", path.first(), false));
    }
    QVERIFY(severalPorts > 0);
}

void StationGeneratorTest::everyClientNamesALogicalNode()
{
    const QList<SCLElement*> clients = All("ClientLN");
    QVERIFY(!clients.isEmpty());
    for (SCLElement* client : clients) {
        SCLElement* node = LogicalNode(client, Ied(client->GetAttribute("iedName")));
        QVERIFY2(node, qPrintable(Key(client, {"iedName", "ldInst", "lnClass", "lnInst"})));
        QCOMPARE(NameOf(node->GetParent("AccessPoint")), client->GetAttribute("apRef"));
    }
}

void StationGeneratorTest::everyConnectionNamesAnAccessPoint()
{
    const QList<SCLElement*> connections = All("ConnectedAP");
    QCOMPARE(connections.size(), All("AccessPoint").size());
    for (SCLElement* connection : connections) {
        SCLElement* ied = Ied(connection->GetAttribute("iedName"));
        QVERIFY2(ied, qPrintable(connection->GetAttribute("iedName")));
        QVERIFY(ied->FindChild("AccessPoint", "name", connection->GetAttribute("apName"), false));
    }
}

void StationGeneratorTest::everyStreamAddressNamesAControlBlock()
{
    QSet<QString> blocks;
    for (SCLElement* block : All("GSEControl") + All("SampledValueControl"))
        blocks.insert(
            Joined({NameOf(block->GetParent("IED")), NameOf(block->GetParent("AccessPoint")),
                    block->GetParent("LDevice")->GetAttribute("inst"), NameOf(block)}));
    const QList<SCLElement*> entries = All("GSE") + All("SMV");
    QCOMPARE(entries.size(), blocks.size());
    for (SCLElement* entry : entries) {
        const QString wanted = Joined({Key(entry->GetParent("ConnectedAP"), {"iedName", "apName"}),
                                       Key(entry, {"ldInst", "cbName"})});
        QVERIFY2(blocks.contains(wanted), qPrintable(wanted));
    }
}

void StationGeneratorTest::noTwoStreamsShareAnAddress()
{
    QSet<QString> macs;
    QSet<QString> ids;
    const QList<SCLElement*> entries = All("GSE") + All("SMV");
    for (SCLElement* entry : entries) {
        macs.insert(ParameterOf(entry, "MAC-Address"));
        ids.insert(ParameterOf(entry, "APPID"));
    }
    QCOMPARE(macs.size(), entries.size());
    QCOMPARE(ids.size(), entries.size());
}

void StationGeneratorTest::everyLinkOfTheSubstationNamesALogicalNode()
{
    const QList<SCLElement*> links = All("LNode");
    QVERIFY(!links.isEmpty());
    for (SCLElement* link : links)
        QVERIFY2(LogicalNode(link, Ied(link->GetAttribute("iedName"))),
                 qPrintable(Key(link, {"iedName", "ldInst", "lnClass", "lnInst"})));
}

void StationGeneratorTest::descriptionsAreChineseToo()
{
    int chinese = 0;
    int plain = 0;
    for (SCLElement* object : All("DOI")) {
        const QString text = object->GetAttribute("desc");
        QVERIFY(!text.isEmpty());
        const bool ascii = text.toLatin1() == text.toUtf8();
        ++(ascii ? plain : chinese);
    }
    QVERIFY(chinese > 0);
    QVERIFY(plain > 0);
}

QTEST_GUILESS_MAIN(StationGeneratorTest)

#include "StationGeneratorTest.moc"
