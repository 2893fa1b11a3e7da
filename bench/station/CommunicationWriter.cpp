// SPDX-License-Identifier: Apache-2.0
#include "CommunicationWriter.h"

#include "StationPlan.h"
#include "XmlOutput.h"

#include <cstring>

namespace Corvane::Bench
{

namespace
{

constexpr int g_nFirstGooseId = 0x0001;
constexpr int g_nFirstSampledValuesId = 0x4000;

/// The numbers that the streams of a station get, one after the other.
struct StreamNumbers {
    int nextGoose = g_nFirstGooseId;
    int nextSampledValues = g_nFirstSampledValuesId;
};

void WriteParameter(XmlOutput& out, const char* type, const QByteArray& value)
{
    out.Text("P", {{"type", type}}, value);
}

void WriteStationAddress(XmlOutput& out, int ied)
{
    const XmlScope scope(out, "Address");
    WriteParameter(out, "IP",
                   "172.20." + QByteArray::number(ied / 250) + '.' +
                       QByteArray::number(ied % 250 + 1));
    WriteParameter(out, "IP-SUBNET", "255.255.0.0");
    WriteParameter(out, "IP-GATEWAY", "172.20.0.254");
    WriteParameter(out, "OSI-TSEL", "0001");
    WriteParameter(out, "OSI-SSEL", "0001");
    WriteParameter(out, "OSI-PSEL", "00000001");
}

void WriteStreamAddress(XmlOutput& out, const char* macPrefix, int number)
{
    const QByteArray digits = QByteArray::number(number, 16).rightJustified(4, '0').toUpper();
    const XmlScope scope(out, "Address");
    WriteParameter(out, "MAC-Address", macPrefix + digits.left(2) + '-' + digits.right(2));
    WriteParameter(out, "VLAN-ID", "000");
    WriteParameter(out, "VLAN-PRIORITY", "4");
    WriteParameter(out, "APPID", digits);
}

void WriteGoose(XmlOutput& out, const DeviceUse& device, const Stream& stream, int number)
{
    const XmlScope scope(out, "GSE", {{"ldInst", device.inst}, {"cbName", stream.blockName}});
    WriteStreamAddress(out, "01-0C-CD-01-", number);
    out.Text("MinTime", {{"unit", "s"}, {"multiplier", "m"}}, "2");
    out.Text("MaxTime", {{"unit", "s"}, {"multiplier", "m"}}, "5000");
}

void WriteSampledValues(XmlOutput& out, const DeviceUse& device, const Stream& stream, int number)
{
    const XmlScope scope(out, "SMV", {{"ldInst", device.inst}, {"cbName", stream.blockName}});
    WriteStreamAddress(out, "01-0C-CD-04-", number);
}

void WriteStreams(XmlOutput& out, const AccessUse& access, StreamNumbers& numbers)
{
    for (const DeviceUse& device : access.devices) {
        for (const Stream& stream : device.streams) {
            if (stream.kind == StreamKind::Goose) {
                WriteGoose(out, device, stream, numbers.nextGoose++);
            } else {
                WriteSampledValues(out, device, stream, numbers.nextSampledValues++);
            }
        }
    }
}

/// The first sampled-value port of a merging unit and that of the protection of its bay share one
/// cable; every other port has a cable of its own to a switch.
QByteArray CableName(const StationPlan& plan, int ied, const char* port)
{
    const bool direct = ied % StationPlan::g_nIedsPerBay != 0 && std::strcmp(port, "3-A") == 0;
    return "W-" + plan.IedName(direct ? (ied - 1) / 3 * 3 + 1 : ied) + '-' + port;
}

void WritePorts(XmlOutput& out, const StationPlan& plan, int ied, const AccessUse& access)
{
    for (const char* port : access.ports) {
        const XmlScope scope(out, "PhysConn",
                             {{"type", std::strchr(port, 'A') ? "Connection" : "RedConn"}});
        WriteParameter(out, "Type", "FOC");
        WriteParameter(out, "Plug", "LC");
        WriteParameter(out, "Port", port);
        WriteParameter(out, "Cable", CableName(plan, ied, port));
    }
}

bool OnStationBus(const AccessUse& access)
{
    return std::strcmp(access.name, "S1") == 0;
}

void WriteConnections(XmlOutput& out, const StationPlan& plan, bool stationBus)
{
    StreamNumbers numbers;
    for (int ied = 0; ied < plan.IedCount(); ++ied) {
        for (const AccessUse& access : plan.Role(ied).accessPoints) {
            if (OnStationBus(access) != stationBus) {
                continue;
            }
            const XmlScope scope(out, "ConnectedAP",
                                 {{"iedName", plan.IedName(ied)}, {"apName", access.name}});
            if (stationBus) {
                WriteStationAddress(out, ied);
            }
            WriteStreams(out, access, numbers);
            WritePorts(out, plan, ied, access);
        }
    }
}

void WriteSubNetwork(XmlOutput& out, const StationPlan& plan, bool stationBus)
{
    const XmlScope scope(out, "SubNetwork",
                         {{"desc", stationBus ? "站控层网络" : "过程层网络"},
                          {"name", stationBus ? "StationBus" : "ProcessBus"},
                          {"type", "8-MMS"}});
    out.Text("BitRate", {{"unit", "b/s"}, {"multiplier", "M"}}, stationBus ? "100" : "1000");
    WriteConnections(out, plan, stationBus);
}

} // namespace

void WriteCommunication(XmlOutput& out, const StationPlan& plan)
{
    const XmlScope scope(out, "Communication");
    WriteSubNetwork(out, plan, true);
    WriteSubNetwork(out, plan, false);
}

} // namespace Corvane::Bench
