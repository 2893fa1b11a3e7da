// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QIODevice;
QT_END_NAMESPACE

namespace Corvane::Bench
{

/// What station is wanted. The same request gives the same bytes everywhere.
struct StationRequest {
    /// Size of the file. Reached to a few per cent, except that the smallest station has about
    /// 1,100,000 bytes.
    qint64 bytes;
    /// IEDs, gateway included; see StationPlan for the limits.
    int ieds;
    quint64 seed;

    /// A station of that size, with an IED for each 350,000 bytes.
    static StationRequest OfSize(qint64 bytes, quint64 seed);
    /// A station of that many IEDs of 350,000 bytes each.
    static StationRequest OfIeds(int ieds, quint64 seed);
};

/// Writes a station: a valid SCL file of Edition 2.1 whose references all resolve.
///
/// It has a gateway and bays of three IEDs (merging unit, protection, bay control) that exchange
/// GOOSE messages and sampled values, a substation section, sub-networks with unique addresses,
/// reports to the gateway, instance data with Chinese and English descriptions, and data type
/// templates that the IEDs share. The file is streamed: memory use does not depend on its size.
///
/// \param device open for writing; the caller keeps ownership.
/// \return false if the device did not take all bytes.
bool GenerateStation(const StationRequest& request, QIODevice& device);

} // namespace Corvane::Bench
