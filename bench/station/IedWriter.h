// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Dice.h"
#include "NodeWriter.h"
#include "StationPlan.h"

#include <QByteArray>

#include <vector>

namespace Corvane::Bench
{

class XmlOutput;

/// Writes one `IED`.
class IedWriter
{
public:
    IedWriter(XmlOutput& out, const StationPlan& plan, int ied);

    /// Writes the whole element. Its annunciation device gets logical nodes until the output has
    /// reached \a end.
    void Write(qint64 end);

private:
    /// An `ExtRef` and the place inside this IED that takes its data.
    struct Input {
        Subscription subscription;
        const Signal* item;
        QByteArray node;
        QByteArray object;
        const char* attribute;
    };
    /// The inputs of one logical device and how many logical nodes they need.
    struct InputSection {
        std::vector<Input> inputs;
        int nodeCount;
    };

    InputSection Inputs(const DeviceUse& device) const;
    void WriteServices();
    void WriteAccess(const AccessUse& access, qint64 end);
    void WriteDevice(const AccessUse& access, const DeviceUse& device, qint64 end);
    void WriteZeroNode(const AccessUse& access, const DeviceUse& device,
                       const InputSection& section);
    void WriteDataSets(const DeviceUse& device);
    void WriteReportSet(const DeviceUse& device, const char* name, const char* fc);
    void WriteReports(const DeviceUse& device);
    void WriteReport(const DeviceUse& device, const char* name, const char* dataSet, bool buffered);
    void WriteLog(const DeviceUse& device);
    void WriteInputs(const AccessUse& access, const DeviceUse& device, const InputSection& section);
    void WriteInput(const AccessUse& access, const DeviceUse& device, const Input& input);
    void WriteControlBlocks(const DeviceUse& device);
    void WriteInputNodes(const DeviceUse& device, const InputSection& section);
    void WriteFiller(qint64 end);
    QByteArray MessageId(const DeviceUse& device, const Stream& stream) const;

    XmlOutput& m_out;
    const StationPlan& m_plan;
    int m_nIed;
    int m_nSeries;
    Dice m_dice;
    NodeWriter m_nodes;
};

} // namespace Corvane::Bench
