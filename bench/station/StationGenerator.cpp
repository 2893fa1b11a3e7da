// SPDX-License-Identifier: Apache-2.0
#include "StationGenerator.h"

#include "CommunicationWriter.h"
#include "IedWriter.h"
#include "StationPlan.h"
#include "SubstationWriter.h"
#include "TypeCatalog.h"
#include "XmlOutput.h"

#include <QBuffer>

namespace Corvane::Bench
{

namespace
{

constexpr qint64 g_nBytesPerIed = 350000;

qint64 TemplateBytes()
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    XmlOutput out(buffer);
    TypeCatalog::Write(out);
    return out.Written();
}

void WriteHeader(XmlOutput& out, const StationPlan& plan)
{
    const XmlScope header(out, "Header",
                          {{"id", "Station" + QByteArray::number(plan.Seed())},
                           {"version", "1.0"},
                           {"revision", "1.0"},
                           {"toolID", "corvane-generate"},
                           {"nameStructure", "IEDName"}});
    const XmlScope history(out, "History");
    out.Empty("Hitem", {{"version", "1.0"},
                        {"revision", "1.0"},
                        {"when", "2024-03-01 08:00:00"},
                        {"who", "corvane-generate"},
                        {"what", "Generated 生成"},
                        {"why", "Benchmark"}});
}

void WriteIeds(XmlOutput& out, const StationPlan& plan, qint64 end)
{
    for (int ied = 0; ied < plan.IedCount(); ++ied) {
        const qint64 share = (end - out.Written()) / (plan.IedCount() - ied);
        IedWriter(out, plan, ied).Write(out.Written() + share);
    }
}

} // namespace

StationRequest StationRequest::OfSize(qint64 bytes, quint64 seed)
{
    const qint64 ieds = (bytes + g_nBytesPerIed / 2) / g_nBytesPerIed;
    return {bytes, static_cast<int>(qMin<qint64>(ieds, StationPlan::g_nMaxIeds)), seed};
}

StationRequest StationRequest::OfIeds(int ieds, quint64 seed)
{
    return {ieds * g_nBytesPerIed, ieds, seed};
}

bool GenerateStation(const StationRequest& request, QIODevice& device)
{
    const StationPlan plan(request.ieds, request.seed);
    XmlOutput out(device);
    out.Declaration();
    out.Open("SCL", {{"xmlns", "http://www.iec.ch/61850/2003/SCL"},
                     {"xmlns:xsi", "http://www.w3.org/2001/XMLSchema-instance"},
                     {"xsi:schemaLocation", "http://www.iec.ch/61850/2003/SCL SCL.xsd"},
                     {"version", "2007"},
                     {"revision", "B"},
                     {"release", "4"}});
    WriteHeader(out, plan);
    WriteSubstation(out, plan);
    WriteCommunication(out, plan);
    WriteIeds(out, plan, request.bytes - TemplateBytes());
    TypeCatalog::Write(out);
    out.Close();
    return out.Flush();
}

} // namespace Corvane::Bench
