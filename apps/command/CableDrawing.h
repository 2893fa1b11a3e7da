// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

namespace Corvane
{
class SCLElement;
}

namespace Corvane::Command
{

class Wiring;

/// A drawing of the wiring, as SVG that needs nothing but itself: the IEDs one below the other with
/// their ports, to the right of them a lane for each cable, the short ones inside. Lanes are shared
/// by cables that do not meet. A port without cable has an empty plug, a cable with one end an open
/// one.
QByteArray DrawingOf(SCLElement* root, const Wiring& wiring);

} // namespace Corvane::Command
