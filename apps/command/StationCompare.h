// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace Corvane
{
class SCLElement;
}

namespace Corvane::Command
{

/// Compares a tree with what was loaded from the file that it was saved to.
///
/// Taken for equal is what saving is known to lose, and nothing else: the text of elements with
/// children, text of white space only, the difference between CR, CRLF and LF in text, characters
/// that XML 1.0 cannot hold, and the order among children of different tags.
///
/// \return the path of the first element found to differ, as of ElementPath; empty if none does.
QString FirstDifference(SCLElement* saved, SCLElement* loaded);

} // namespace Corvane::Command
