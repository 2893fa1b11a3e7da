// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

#include <vector>

namespace Corvane::Bench
{

/// The kind of a published stream.
enum class StreamKind { Goose, SampledValues };

/// One published item, as an `FCDA` names it.
struct Signal {
    const char* ldInst;
    const char* prefix;
    const char* lnClass;
    QByteArray lnInst;
    QByteArray doName;
    const char* daName;
    const char* fc;
    const char* description;
};

/// A data set with its control block, in the `LN0` of a logical device.
struct Stream {
    StreamKind kind;
    const char* blockName;
    const char* dataSetName;
    std::vector<Signal> items;
};

/// Logical nodes of one type, with `inst` from 1 to \a count.
struct NodeUse {
    const char* node;
    const char* prefix;
    int count;
};

/// A logical device. The one that takes \a inputs holds the `ExtRef`s of the streams of that kind.
struct DeviceUse {
    enum class Inputs { None, Goose, SampledValues };

    const char* inst;
    const char* description;
    const char* zeroNode;
    std::vector<NodeUse> nodes;
    std::vector<Stream> streams;
    Inputs inputs;
    bool reports;
};

/// An access point with its server and its ports.
struct AccessUse {
    const char* name;
    std::vector<const char*> ports;
    std::vector<DeviceUse> devices;
};

/// What all IEDs of a role have in common.
struct RoleEntry {
    const char* suffix;
    const char* type;
    const char* description;
    std::vector<AccessUse> accessPoints;
};

/// A subscription: a stream of another IED.
struct Subscription {
    int publisher;
    const DeviceUse* device;
    const Stream* stream;
};

/// Who is who in a station: one gateway, then bays of a merging unit, a protection and a control
/// device each. Everything follows from the number of IEDs and the seed.
class StationPlan
{
public:
    /// The least number of IEDs: a gateway and one whole bay.
    static constexpr int g_nMinIeds = 4;
    /// More IEDs would run out of APPIDs, of which each stream has its own.
    static constexpr int g_nMaxIeds = 8000;
    static constexpr int g_nBaysPerLevel = 24;
    static constexpr int g_nIedsPerBay = 3;

    StationPlan(int iedCount, quint64 seed);

    int IedCount() const { return m_nIedCount; }
    /// Bays, the last of which may lack devices.
    int BayCount() const;
    quint64 Seed() const { return m_uSeed; }

    const RoleEntry& Role(int ied) const;
    QByteArray IedName(int ied) const;
    /// The series of its logical node types.
    int Series(int ied) const;
    /// What the IED subscribes to. Publisher and subscriber are never the same.
    std::vector<Subscription> Subscriptions(int ied, StreamKind kind) const;

    static QByteArray LevelName(int bay);
    static QByteArray BayName(int bay);

private:
    enum RoleIndex { Gateway, MergingUnit, Protection, Control };

    static RoleIndex RoleOf(int ied);
    static int IedOf(int bay, RoleIndex role);
    int SomeBay(int ied, int number, RoleIndex role) const;
    void Subscribe(std::vector<Subscription>& list, int publisher, const char* blockName) const;
    std::vector<Subscription> GooseSubscriptions(int ied) const;

    int m_nIedCount;
    quint64 m_uSeed;
};

} // namespace Corvane::Bench
