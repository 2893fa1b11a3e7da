// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Corvane::Bench
{

class StationPlan;
class XmlOutput;

/// Writes the section `Communication`: the station bus with the addresses of all IEDs, and the
/// process bus with the address, unique in the file, of each published stream.
void WriteCommunication(XmlOutput& out, const StationPlan& plan);

} // namespace Corvane::Bench
