// SPDX-License-Identifier: Apache-2.0
#include "IedWriter.h"

#include "TypeCatalog.h"
#include "XmlOutput.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace Corvane::Bench
{

namespace
{

constexpr int g_nObjectsPerInputNode = 16;
constexpr int g_nMaxReportItems = 60;
const char* const g_szFillerDevice = "ANN";

bool Same(const char* a, const char* b)
{
    return std::strcmp(a, b) == 0;
}

/// The functional constraint under which a data object is reported, or null.
const char* ReportConstraint(const DataObjectEntry& object)
{
    const StructureEntry& type = TypeCatalog::Structure(object.type);
    for (const MemberEntry& member : type.members) {
        if (member.fc && (Same(member.fc, "ST") || Same(member.fc, "MX"))) {
            return member.fc;
        }
    }
    return type.members.front().fc ? nullptr : "MX";
}

/// The item of a report's data set: a measured value by its magnitude, a group of them by its first
/// part, anything else as a whole.
Signal ReportItem(const DataObjectEntry& object, int number)
{
    Signal item{};
    item.doName = TypeCatalog::ObjectName(object, number);
    const StructureEntry& type = TypeCatalog::Structure(object.type);
    const MemberEntry& first = type.members.front();
    if (!first.fc && Same(first.type, "CMV")) {
        item.doName += '.';
        item.doName += first.name;
        item.daName = "cVal.mag.f";
    } else if (Same(type.cdc, "MV")) {
        item.daName = "mag.f";
    }
    return item;
}

/// The items of a logical node for a data set of the functional constraint \a fc.
std::vector<Signal> ReportItems(const NodeEntry& node, const char* fc)
{
    std::vector<Signal> items;
    for (const DataObjectEntry& object : node.objects) {
        const char* constraint = object.optional ? nullptr : ReportConstraint(object);
        if (!constraint || !Same(constraint, fc)) {
            continue;
        }
        for (int number = 1; number <= std::max(object.count, 1); ++number) {
            items.push_back(ReportItem(object, number));
        }
    }
    return items;
}

bool HasReportItems(const DeviceUse& device, const char* fc)
{
    return std::any_of(device.nodes.cbegin(), device.nodes.cend(), [fc](const NodeUse& use) {
        return !ReportItems(TypeCatalog::Node(use.node), fc).empty();
    });
}

void WriteItem(XmlOutput& out, const Signal& item)
{
    out.Empty("FCDA", {{"ldInst", item.ldInst},
                       {"prefix", item.prefix},
                       {"lnClass", item.lnClass},
                       {"lnInst", item.lnInst},
                       {"doName", item.doName},
                       {"daName", item.daName},
                       {"fc", item.fc}});
}

} // namespace

IedWriter::IedWriter(XmlOutput& out, const StationPlan& plan, int ied)
    : m_out(out), m_plan(plan), m_nIed(ied), m_nSeries(plan.Series(ied)),
      m_dice(plan.Seed() + 1, static_cast<quint64>(ied)), m_nodes(out, m_dice, m_nSeries)
{
}

void IedWriter::Write(qint64 end)
{
    const RoleEntry& role = m_plan.Role(m_nIed);
    const XmlScope scope(m_out, "IED",
                         {{"name", m_plan.IedName(m_nIed)},
                          {"desc", role.description},
                          {"type", role.type},
                          {"manufacturer", m_nSeries > 0 ? "Maker B" : "Maker A"},
                          {"configVersion", "V" + QByteArray::number(m_dice.Below(9) + 1) + ".0"},
                          {"originalSclVersion", "2007"},
                          {"originalSclRevision", "B"},
                          {"originalSclRelease", "4"}});
    m_out.Text("Private", {{"type", "Device order code"}},
               QByteArray(role.type) + "-" + QByteArray::number(m_dice.Below(100000)));
    WriteServices();
    for (const AccessUse& access : role.accessPoints) {
        WriteAccess(access, end);
    }
}

IedWriter::InputSection IedWriter::Inputs(const DeviceUse& device) const
{
    if (device.inputs == DeviceUse::Inputs::None) {
        return {{}, 0};
    }
    const bool goose = device.inputs == DeviceUse::Inputs::Goose;
    const auto subscriptions =
        m_plan.Subscriptions(m_nIed, goose ? StreamKind::Goose : StreamKind::SampledValues);
    InputSection section{{}, 0};
    int indications = 0;
    int positions = 0;
    QByteArray node;
    QByteArray object;
    for (const Subscription& subscription : subscriptions) {
        for (const Signal& item : subscription.stream->items) {
            const bool quality = item.daName && Same(item.daName, "q");
            const bool position = item.doName == "Pos";
            if (!item.daName) {
                node = "SVINGGIO1";
                object = item.doName;
            } else if (!quality) {
                int& used = position ? positions : indications;
                node = (goose ? "GOINGGIO" : "SVINGGIO") +
                       QByteArray::number(used / g_nObjectsPerInputNode + 1);
                object = (position ? "DPCSO" : (goose ? "Ind" : "AnIn")) +
                         QByteArray::number(used % g_nObjectsPerInputNode + 1);
                ++used;
            }
            section.inputs.push_back(
                {subscription, &item, node, object, goose && !quality ? "stVal" : item.daName});
        }
    }
    section.nodeCount =
        (std::max(indications, positions) + g_nObjectsPerInputNode - 1) / g_nObjectsPerInputNode;
    return section;
}

void IedWriter::WriteServices()
{
    const XmlScope scope(m_out, "Services", {{"nameLength", "64"}});
    m_out.Empty("DynAssociation", {{"max", "16"}});
    m_out.Empty("GetDirectory");
    m_out.Empty("GetDataObjectDefinition");
    m_out.Empty("GetDataSetValue");
    m_out.Empty("DataSetDirectory");
    m_out.Empty("ConfDataSet", {{"max", "64"}, {"maxAttributes", "256"}});
    m_out.Empty("ReadWrite");
    m_out.Empty("ConfReportControl", {{"max", "64"}});
    m_out.Empty("GetCBValues");
    m_out.Empty("GOOSE", {{"max", "16"}});
    m_out.Empty("FileHandling");
}

void IedWriter::WriteAccess(const AccessUse& access, qint64 end)
{
    const XmlScope scope(m_out, "AccessPoint", {{"name", access.name}});
    const XmlScope server(m_out, "Server", {{"timeout", "30"}});
    m_out.Empty("Authentication", {{"none", "true"}});
    for (const DeviceUse& device : access.devices) {
        WriteDevice(access, device, end);
    }
}

void IedWriter::WriteDevice(const AccessUse& access, const DeviceUse& device, qint64 end)
{
    const XmlScope scope(m_out, "LDevice", {{"inst", device.inst}, {"desc", device.description}});
    const InputSection section = Inputs(device);
    WriteZeroNode(access, device, section);
    for (const NodeUse& use : device.nodes) {
        for (int inst = 1; inst <= use.count; ++inst) {
            m_nodes.WriteNode(TypeCatalog::Node(use.node), use.prefix, inst);
        }
    }
    WriteInputNodes(device, section);
    if (Same(device.inst, g_szFillerDevice)) {
        WriteFiller(end);
    }
}

void IedWriter::WriteZeroNode(const AccessUse& access, const DeviceUse& device,
                              const InputSection& section)
{
    const NodeEntry& node = TypeCatalog::Node(device.zeroNode);
    const XmlScope scope(
        m_out, "LN0",
        {{"lnClass", "LLN0"}, {"inst", ""}, {"lnType", TypeCatalog::NodeTypeId(node, m_nSeries)}});
    WriteDataSets(device);
    WriteReports(device);
    WriteLog(device);
    m_nodes.WriteObjects(node);
    WriteInputs(access, device, section);
    if (device.reports) {
        m_out.Empty("Log", {{"name", device.inst}});
    }
    WriteControlBlocks(device);
    if (Same(device.inst, "PROT")) {
        m_out.Empty("SettingControl", {{"numOfSGs", "8"}, {"actSG", "1"}});
    }
}

void IedWriter::WriteDataSets(const DeviceUse& device)
{
    for (const Stream& stream : device.streams) {
        const XmlScope scope(m_out, "DataSet", {{"name", stream.dataSetName}});
        for (const Signal& item : stream.items) {
            WriteItem(m_out, item);
        }
    }
    if (device.reports) {
        WriteReportSet(device, "dsStatus", "ST");
        WriteReportSet(device, "dsMeasure", "MX");
    }
}

void IedWriter::WriteReportSet(const DeviceUse& device, const char* name, const char* fc)
{
    if (!HasReportItems(device, fc)) {
        return;
    }
    const XmlScope scope(m_out, "DataSet", {{"name", name}, {"desc", "报告数据集"}});
    int written = 0;
    for (const NodeUse& use : device.nodes) {
        const NodeEntry& node = TypeCatalog::Node(use.node);
        for (Signal item : ReportItems(node, fc)) {
            if (written++ >= g_nMaxReportItems) {
                return;
            }
            item.ldInst = device.inst;
            item.prefix = use.prefix;
            item.lnClass = node.lnClass;
            item.lnInst = "1";
            item.fc = fc;
            WriteItem(m_out, item);
        }
    }
}

void IedWriter::WriteReports(const DeviceUse& device)
{
    if (!device.reports) {
        return;
    }
    if (HasReportItems(device, "ST")) {
        WriteReport(device, "brcbStatus", "dsStatus", true);
    }
    if (HasReportItems(device, "MX")) {
        WriteReport(device, "urcbMeasure", "dsMeasure", false);
    }
}

void IedWriter::WriteReport(const DeviceUse& device, const char* name, const char* dataSet,
                            bool buffered)
{
    const QByteArray id = m_plan.IedName(m_nIed) + device.inst + "/LLN0." + name;
    const XmlScope scope(m_out, "ReportControl",
                         {{"name", name},
                          {"datSet", dataSet},
                          {"intgPd", buffered ? "0" : "60000"},
                          {"rptID", id},
                          {"confRev", "1"},
                          {"buffered", buffered ? "true" : "false"},
                          {"bufTime", "100"}});
    m_out.Empty("TrgOps",
                {{"dchg", "true"}, {"qchg", "true"}, {"period", buffered ? "false" : "true"}});
    m_out.Empty("OptFields", {{"seqNum", "true"},
                              {"timeStamp", "true"},
                              {"dataSet", "true"},
                              {"reasonCode", "true"},
                              {"configRef", "true"}});
    const XmlScope enabled(m_out, "RptEnabled", {{"max", "8"}});
    m_out.Empty("ClientLN", {{"iedName", m_plan.IedName(0)},
                             {"apRef", "S1"},
                             {"ldInst", "LD0"},
                             {"lnClass", "IHMI"},
                             {"lnInst", "1"}});
}

void IedWriter::WriteLog(const DeviceUse& device)
{
    if (!device.reports || !HasReportItems(device, "ST")) {
        return;
    }
    const XmlScope scope(m_out, "LogControl",
                         {{"name", "lcbStatus"},
                          {"datSet", "dsStatus"},
                          {"ldInst", device.inst},
                          {"logName", device.inst}});
    m_out.Empty("TrgOps", {{"dchg", "true"}});
}

void IedWriter::WriteInputs(const AccessUse& access, const DeviceUse& device,
                            const InputSection& section)
{
    if (section.inputs.empty()) {
        return;
    }
    const XmlScope scope(m_out, "Inputs");
    for (const Input& input : section.inputs) {
        WriteInput(access, device, input);
    }
}

void IedWriter::WriteInput(const AccessUse& access, const DeviceUse& device, const Input& input)
{
    const Signal& item = *input.item;
    const bool goose = input.subscription.stream->kind == StreamKind::Goose;
    const bool redundant = access.ports.size() > 1 && input.subscription.publisher % 4 == 1;
    QByteArray address = access.ports.front();
    if (redundant) {
        address += '/';
        address += access.ports.back();
    }
    address += QByteArray(":") + device.inst + '/' + input.node + '.' + input.object;
    if (input.attribute) {
        address += '.';
        address += input.attribute;
    }
    m_out.Empty("ExtRef", {{"desc", item.description},
                           {"iedName", m_plan.IedName(input.subscription.publisher)},
                           {"ldInst", item.ldInst},
                           {"prefix", item.prefix},
                           {"lnClass", item.lnClass},
                           {"lnInst", item.lnInst},
                           {"doName", item.doName},
                           {"daName", item.daName},
                           {"intAddr", address},
                           {"serviceType", goose ? "GOOSE" : "SMV"},
                           {"srcLDInst", input.subscription.device->inst},
                           {"srcLNClass", "LLN0"},
                           {"srcCBName", input.subscription.stream->blockName}});
}

void IedWriter::WriteControlBlocks(const DeviceUse& device)
{
    for (const Stream& stream : device.streams) {
        const QByteArray id = MessageId(device, stream);
        if (stream.kind == StreamKind::Goose) {
            m_out.Empty("GSEControl", {{"name", stream.blockName},
                                       {"datSet", stream.dataSetName},
                                       {"confRev", "1"},
                                       {"type", "GOOSE"},
                                       {"appID", id}});
            continue;
        }
        const XmlScope scope(m_out, "SampledValueControl",
                             {{"name", stream.blockName},
                              {"datSet", stream.dataSetName},
                              {"confRev", "1"},
                              {"smvID", id},
                              {"smpRate", "80"},
                              {"nofASDU", "1"}});
        m_out.Empty("SmvOpts", {{"sampleSynchronized", "true"}, {"sampleRate", "true"}});
    }
}

void IedWriter::WriteInputNodes(const DeviceUse& device, const InputSection& section)
{
    const bool goose = device.inputs == DeviceUse::Inputs::Goose;
    const NodeEntry& node = TypeCatalog::Node(goose ? "GGIO_GOIN" : "GGIO_SVIN");
    for (int inst = 1; inst <= section.nodeCount; ++inst) {
        m_nodes.WriteNode(node, goose ? "GOIN" : "SVIN", inst);
    }
}

void IedWriter::WriteFiller(qint64 end)
{
    static const std::array<const char*, 8> kinds{"GGIO_IND", "PTOC",     "GGIO_ALM", "MMXU",
                                                  "MMTR",     "GGIO_CTL", "XSWI",     "MSQI"};
    for (std::size_t number = 0; m_out.Written() < end; ++number) {
        m_nodes.WriteNode(TypeCatalog::Node(kinds[number % kinds.size()]), "EXT",
                          static_cast<int>(number) + 1);
    }
}

QByteArray IedWriter::MessageId(const DeviceUse& device, const Stream& stream) const
{
    return m_plan.IedName(m_nIed) + device.inst + "/LLN0." + stream.blockName;
}

} // namespace Corvane::Bench
