// SPDX-License-Identifier: Apache-2.0
#include "SubstationWriter.h"

#include "StationPlan.h"
#include "XmlOutput.h"

#include <algorithm>

namespace Corvane::Bench
{

namespace
{

const char* const g_szSubstation = "AA1";

/// Names of one bay and its devices.
struct BayNames {
    QByteArray level;
    QByteArray bay;
    QByteArray mergingUnit;
    QByteArray protection;
    QByteArray control;

    QByteArray Path(int node) const
    {
        return QByteArray(g_szSubstation) + '/' + level + '/' + bay + "/N" +
               QByteArray::number(node);
    }
};

void WriteTerminal(XmlOutput& out, const BayNames& names, int number, int node)
{
    out.Empty("Terminal", {{"name", "T" + QByteArray::number(number)},
                           {"connectivityNode", names.Path(node)},
                           {"substationName", g_szSubstation},
                           {"voltageLevelName", names.level},
                           {"bayName", names.bay},
                           {"cNodeName", "N" + QByteArray::number(node)}});
}

void WriteLink(XmlOutput& out, const QByteArray& ied, const char* ldInst, const char* lnClass,
               const QByteArray& lnInst)
{
    if (!ied.isEmpty()) {
        out.Empty("LNode",
                  {{"iedName", ied}, {"ldInst", ldInst}, {"lnClass", lnClass}, {"lnInst", lnInst}});
    }
}

/// A breaker (number 0) or a disconnector, joined to the nodes \a number and \a number + 1.
void WriteSwitch(XmlOutput& out, const BayNames& names, int number)
{
    const bool breaker = number == 0;
    const XmlScope scope(out, "ConductingEquipment",
                         {{"name", "QA" + QByteArray::number(number)},
                          {"desc", breaker ? "断路器" : "刀闸"},
                          {"type", breaker ? "CBR" : "DIS"}});
    const QByteArray inst = QByteArray::number(std::max(number, 1));
    WriteLink(out, names.mergingUnit, "RPIT", breaker ? "XCBR" : "XSWI", inst);
    WriteLink(out, names.control, "CTRL", "CSWI", QByteArray::number(number + 1));
    WriteTerminal(out, names, 1, number);
    WriteTerminal(out, names, 2, number + 1);
}

void WriteTransformers(XmlOutput& out, const BayNames& names)
{
    const XmlScope scope(out, "ConductingEquipment",
                         {{"name", "TA1"}, {"desc", "电流互感器"}, {"type", "CTR"}});
    for (int inst = 1; inst <= 4; ++inst) {
        WriteLink(out, names.mergingUnit, "MUSV01", "TCTR", QByteArray::number(inst));
    }
    WriteTerminal(out, names, 1, 5);
}

void WriteBay(XmlOutput& out, const BayNames& names)
{
    const XmlScope scope(out, "Bay", {{"desc", "间隔 " + names.bay}, {"name", names.bay}});
    WriteLink(out, names.protection, "PROT", "PTRC", "1");
    WriteLink(out, names.protection, "MEAS", "MMXU", "1");
    for (int number = 0; number < 5; ++number) {
        WriteSwitch(out, names, number);
    }
    WriteTransformers(out, names);
    for (int node = 0; node <= 5; ++node) {
        out.Empty("ConnectivityNode",
                  {{"name", "N" + QByteArray::number(node)}, {"pathName", names.Path(node)}});
    }
}

BayNames NamesOf(const StationPlan& plan, int bay)
{
    const int first = 1 + bay * StationPlan::g_nIedsPerBay;
    const auto name = [&](int ied) {
        return ied < plan.IedCount() ? plan.IedName(ied) : QByteArray();
    };
    return {StationPlan::LevelName(bay), StationPlan::BayName(bay), name(first), name(first + 1),
            name(first + 2)};
}

void WriteLevel(XmlOutput& out, const StationPlan& plan, int firstBay)
{
    static const char* const voltages[] = {"500", "220", "110", "35"};
    const int level = firstBay / StationPlan::g_nBaysPerLevel;
    const XmlScope scope(out, "VoltageLevel",
                         {{"name", StationPlan::LevelName(firstBay)}, {"nomFreq", "50"}});
    out.Text("Voltage", {{"unit", "V"}, {"multiplier", "k"}}, voltages[level % 4]);
    const int end = std::min(firstBay + StationPlan::g_nBaysPerLevel, plan.BayCount());
    for (int bay = firstBay; bay < end; ++bay) {
        WriteBay(out, NamesOf(plan, bay));
    }
}

} // namespace

void WriteSubstation(XmlOutput& out, const StationPlan& plan)
{
    const XmlScope scope(out, "Substation", {{"desc", "变电站"}, {"name", g_szSubstation}});
    for (int bay = 0; bay < plan.BayCount(); bay += StationPlan::g_nBaysPerLevel) {
        WriteLevel(out, plan, bay);
    }
}

} // namespace Corvane::Bench
