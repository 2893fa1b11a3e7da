// SPDX-License-Identifier: Apache-2.0
#include "StationPlan.h"

#include "Dice.h"
#include "Lists.h"
#include "TypeCatalog.h"

#include <algorithm>
#include <cstring>

namespace Corvane::Bench
{

namespace
{

using Inputs = DeviceUse::Inputs;

QByteArray Numbered(const char* text, int number)
{
    return text + QByteArray::number(number);
}

/// Each of \a count logical nodes gives the same items, in the order of the nodes.
std::vector<Signal> PerNode(int count, const std::vector<Signal>& items)
{
    std::vector<Signal> signalList;
    for (int inst = 1; inst <= count; ++inst) {
        for (Signal item : items) {
            item.lnInst = QByteArray::number(inst);
            signalList.push_back(item);
        }
    }
    return signalList;
}

std::vector<Signal> Indications(const char* ldInst, const char* prefix, const char* object,
                                int count, const char* description)
{
    std::vector<Signal> signalList;
    for (int number = 1; number <= count; ++number) {
        signalList.push_back(
            {ldInst, prefix, "GGIO", "1", Numbered(object, number), "stVal", "ST", description});
    }
    return signalList;
}

std::vector<Signal> Samples(const char* lnClass, const char* object, const char* description)
{
    return PerNode(4, {{"MUSV01", nullptr, lnClass, {}, object, "instMag.i", "MX", description},
                       {"MUSV01", nullptr, lnClass, {}, object, "q", "MX", description}});
}

Stream SampledValues()
{
    const std::vector<Signal> delay{
        {"MUSV01", nullptr, "LLN0", {}, "DelayTRtg", nullptr, "MX", "额定延时"}};
    return {StreamKind::SampledValues, "smvcb0", "dsSV0",
            Concatenated({delay, Samples("TCTR", "AmpSv", "电流采样"),
                          Samples("TVTR", "VolSv", "电压采样")})};
}

Stream Positions()
{
    return {StreamKind::Goose, "gocb0", "dsGOOSE0",
            Concatenated(
                {PerNode(1, {{"RPIT", nullptr, "XCBR", {}, "Pos", "stVal", "ST", "断路器位置"},
                             {"RPIT", nullptr, "XCBR", {}, "Pos", "q", "ST", "断路器位置品质"}}),
                 PerNode(4, {{"RPIT", nullptr, "XSWI", {}, "Pos", "stVal", "ST", "刀闸位置"}}),
                 Indications("RPIT", "CB", "Ind", 8, "开入")})};
}

Stream Trips()
{
    return {StreamKind::Goose, "gocb0", "dsGOOSE0",
            PerNode(1, {{"PIGO", nullptr, "PTRC", {}, "Tr", "general", "ST", "保护跳闸"},
                        {"PIGO", nullptr, "PTRC", {}, "Tr", "phsA", "ST", "A相跳闸"},
                        {"PIGO", nullptr, "PTRC", {}, "Tr", "phsB", "ST", "B相跳闸"},
                        {"PIGO", nullptr, "PTRC", {}, "Tr", "phsC", "ST", "C相跳闸"},
                        {"PROT", nullptr, "RREC", {}, "Op", "general", "ST", "重合闸动作"},
                        {"PROT", nullptr, "RBRF", {}, "OpEx", "general", "ST", "失灵启动"}})};
}

Stream Commands()
{
    return {
        StreamKind::Goose, "gocb0", "dsGOOSE0",
        Concatenated(
            {PerNode(5, {{"CTGO", nullptr, "CSWI", {}, "OpOpn", "general", "ST", "遥控分闸"},
                         {"CTGO", nullptr, "CSWI", {}, "OpCls", "general", "ST", "遥控合闸"}}),
             PerNode(5, {{"CTGO", nullptr, "CILO", {}, "EnaOpn", "stVal", "ST", "联锁分闸"},
                         {"CTGO", nullptr, "CILO", {}, "EnaCls", "stVal", "ST", "联锁合闸"}})})};
}

Stream Alarms(const char* ldInst)
{
    return {StreamKind::Goose, "gocb1", "dsGOOSE1",
            Indications(ldInst, "AL", "Alm", 12, "Alarm 告警")};
}

DeviceUse CommonDevice()
{
    return {"LD0",  "公用",
            "LLN0", {{"LPHD", nullptr, 1}, {"GGIO_ALM", "AL", 1}, {"GGIO_IND", "IN", 1}},
            {},     Inputs::None,
            true};
}

DeviceUse MeasuringDevice()
{
    return {"MEAS", "测量",
            "LLN0", {{"MMXU", nullptr, 1}, {"MSQI", nullptr, 1}, {"GGIO_AIN", "DC", 1}},
            {},     Inputs::None,
            true};
}

DeviceUse AnnunciationDevice()
{
    return {"ANN",  "Annunciation 信号",
            "LLN0", {{"LPHD", nullptr, 1}, {"GGIO_IND", "SG", 1}, {"GGIO_ALM", "AL", 1}},
            {},     Inputs::None,
            true};
}

RoleEntry GatewayRole()
{
    const DeviceUse station{
        "LD0", "Station level 站控层", "LLN0", {{"LPHD", nullptr, 1}, {"IHMI", nullptr, 1}},
        {},    Inputs::None,           false};
    const DeviceUse inputs{"GWGO", "GOOSE 接入",  "LLN0", {{"LPHD", nullptr, 1}},
                           {},     Inputs::Goose, false};
    return {"GW",
            "GW-100",
            "Gateway 远动网关",
            {{"G1", {"2-A"}, {inputs}}, {"S1", {"1-A", "1-B"}, {station, AnnunciationDevice()}}}};
}

RoleEntry MergingUnitRole()
{
    const DeviceUse samples{"MUSV01",
                            "采样值",
                            "LLN0_SV",
                            {{"LPHD", nullptr, 1}, {"TCTR", nullptr, 4}, {"TVTR", nullptr, 4}},
                            {SampledValues()},
                            Inputs::None,
                            false};
    const DeviceUse process{"RPIT",
                            "智能终端",
                            "LLN0",
                            {{"LPHD", nullptr, 1},
                             {"XCBR", nullptr, 1},
                             {"XSWI", nullptr, 4},
                             {"GGIO_IND", "CB", 1},
                             {"GGIO_ALM", "AL", 1}},
                            {Positions(), Alarms("RPIT")},
                            Inputs::Goose,
                            false};
    return {"MU",
            "MU-200",
            "Merging unit 合并单元智能终端集成装置",
            {{"G1", {"2-A"}, {process}},
             {"M1", {"3-A", "3-B"}, {samples}},
             {"S1", {"1-A"}, {CommonDevice(), AnnunciationDevice()}}}};
}

RoleEntry ProtectionRole()
{
    const DeviceUse goose{"PIGO",
                          "保护 GOOSE",
                          "LLN0",
                          {{"LPHD", nullptr, 1}, {"PTRC", nullptr, 1}, {"GGIO_ALM", "AL", 1}},
                          {Trips(), Alarms("PIGO")},
                          Inputs::Goose,
                          false};
    const DeviceUse samples{
        "PISV", "保护 SV", "LLN0", {{"LPHD", nullptr, 1}}, {}, Inputs::SampledValues, false};
    const DeviceUse protection{"PROT",
                               "保护",
                               "LLN0",
                               {{"LPHD", nullptr, 1},
                                {"PTRC", nullptr, 2},
                                {"PDIF", nullptr, 1},
                                {"PDIS", nullptr, 3},
                                {"PTOC", nullptr, 4},
                                {"RREC", nullptr, 1},
                                {"RBRF", nullptr, 1}},
                               {},
                               Inputs::None,
                               true};
    const DeviceUse recording{
        "RCD", "录波",       "LLN0", {{"RDRE", nullptr, 1}, {"GGIO_ALM", "AL", 1}},
        {},    Inputs::None, true};
    return {"P1",
            "PL-3000",
            "Line protection 线路保护",
            {{"G1", {"2-A", "2-B"}, {goose}},
             {"M1", {"3-A"}, {samples}},
             {"S1",
              {"1-A", "1-B"},
              {CommonDevice(), protection, MeasuringDevice(), recording, AnnunciationDevice()}}}};
}

RoleEntry ControlRole()
{
    const DeviceUse goose{
        "CTGO",
        "测控 GOOSE",
        "LLN0",
        {{"LPHD", nullptr, 1}, {"CSWI", nullptr, 5}, {"CILO", nullptr, 5}, {"GGIO_ALM", "AL", 1}},
        {Commands(), Alarms("CTGO")},
        Inputs::Goose,
        false};
    const DeviceUse samples{
        "CTSV", "测控 SV", "LLN0", {{"LPHD", nullptr, 1}}, {}, Inputs::SampledValues, false};
    const DeviceUse control{"CTRL",
                            "控制",
                            "LLN0",
                            {{"LPHD", nullptr, 1},
                             {"CSWI", nullptr, 5},
                             {"CILO", nullptr, 5},
                             {"GGIO_CTL", nullptr, 1},
                             {"GGIO_POS", "DP", 1}},
                            {},
                            Inputs::None,
                            true};
    return {"C1",
            "BC-1000",
            "Bay control 测控装置",
            {{"G1", {"2-A", "2-B"}, {goose}},
             {"M1", {"3-A"}, {samples}},
             {"S1",
              {"1-A", "1-B"},
              {CommonDevice(), control, MeasuringDevice(), AnnunciationDevice()}}}};
}

const std::vector<RoleEntry>& Roles()
{
    static const std::vector<RoleEntry> entries{GatewayRole(), MergingUnitRole(), ProtectionRole(),
                                                ControlRole()};
    return entries;
}

} // namespace

StationPlan::StationPlan(int iedCount, quint64 seed)
    : m_nIedCount(qBound(g_nMinIeds, iedCount, g_nMaxIeds)), m_uSeed(seed)
{
}

int StationPlan::BayCount() const
{
    return (m_nIedCount - 2) / g_nIedsPerBay + 1;
}

const RoleEntry& StationPlan::Role(int ied) const
{
    return Roles()[RoleOf(ied)];
}

QByteArray StationPlan::IedName(int ied) const
{
    if (ied == 0) {
        return "AA1GW1";
    }
    const int bay = (ied - 1) / g_nIedsPerBay;
    return LevelName(bay) + BayName(bay) + Role(ied).suffix;
}

int StationPlan::Series(int ied) const
{
    return Dice(m_uSeed, static_cast<quint64>(ied)).Below(TypeCatalog::g_nSeriesCount);
}

std::vector<Subscription> StationPlan::Subscriptions(int ied, StreamKind kind) const
{
    if (kind == StreamKind::Goose) {
        return GooseSubscriptions(ied);
    }
    std::vector<Subscription> list;
    Subscribe(list, IedOf((ied - 1) / g_nIedsPerBay, MergingUnit), "smvcb0");
    return list;
}

QByteArray StationPlan::LevelName(int bay)
{
    return Numbered("E", bay / g_nBaysPerLevel + 1);
}

QByteArray StationPlan::BayName(int bay)
{
    return "Q" + QByteArray::number(bay % g_nBaysPerLevel + 1).rightJustified(2, '0');
}

StationPlan::RoleIndex StationPlan::RoleOf(int ied)
{
    return ied == 0 ? Gateway : static_cast<RoleIndex>((ied - 1) % g_nIedsPerBay + 1);
}

int StationPlan::IedOf(int bay, RoleIndex role)
{
    return 1 + bay * g_nIedsPerBay + role - 1;
}

/// A bay, other than that of the IED, that has a device of that role; or the IED's own bay.
int StationPlan::SomeBay(int ied, int number, RoleIndex role) const
{
    const int own = ied == 0 ? -1 : (ied - 1) / g_nIedsPerBay;
    const int bays = IedOf(BayCount() - 1, role) < m_nIedCount ? BayCount() : BayCount() - 1;
    Dice dice(m_uSeed + static_cast<quint64>(number), static_cast<quint64>(ied));
    const int bay = dice.Below(bays);
    return bay == own ? (bay + 1) % bays : bay;
}

void StationPlan::Subscribe(std::vector<Subscription>& list, int publisher,
                            const char* blockName) const
{
    if (publisher >= m_nIedCount) {
        return;
    }
    const auto alreadyThere = [&](const Stream& stream) {
        return std::any_of(list.cbegin(), list.cend(), [&](const Subscription& entry) {
            return entry.publisher == publisher && entry.stream == &stream;
        });
    };
    for (const AccessUse& access : Role(publisher).accessPoints) {
        for (const DeviceUse& device : access.devices) {
            for (const Stream& stream : device.streams) {
                if (std::strcmp(stream.blockName, blockName) == 0 && !alreadyThere(stream)) {
                    list.push_back({publisher, &device, &stream});
                }
            }
        }
    }
}

std::vector<Subscription> StationPlan::GooseSubscriptions(int ied) const
{
    std::vector<Subscription> list;
    const RoleIndex role = RoleOf(ied);
    if (role == Gateway) {
        for (int number = 0; number < 12; ++number) {
            Subscribe(list, IedOf(SomeBay(ied, number, Protection), Protection), "gocb1");
        }
        return list;
    }
    const int bay = (ied - 1) / g_nIedsPerBay;
    for (const RoleIndex other : {MergingUnit, Protection, Control}) {
        if (other != role) {
            Subscribe(list, IedOf(bay, other), "gocb0");
        }
    }
    for (int number = 0; number < 2 && role != MergingUnit; ++number) {
        const int neighbour = IedOf(SomeBay(ied, number, role), role);
        if (neighbour != ied) {
            Subscribe(list, neighbour, role == Control && number > 0 ? "gocb1" : "gocb0");
        }
    }
    return list;
}

} // namespace Corvane::Bench
