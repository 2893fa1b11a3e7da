// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Corvane::Internal
{

/// Shows the wait cursor while it lives. Does nothing in a host without a GUI application, where Qt
/// has no cursor to override.
class WaitCursor
{
public:
    WaitCursor();
    ~WaitCursor();
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

private:
    bool m_bShown;
};

} // namespace Corvane::Internal
