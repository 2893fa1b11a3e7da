// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Corvane::Bench
{

class StationPlan;
class XmlOutput;

/// Writes the section `Substation`: voltage levels, bays and their switchgear, with links to the
/// logical nodes that serve them.
void WriteSubstation(XmlOutput& out, const StationPlan& plan);

} // namespace Corvane::Bench
