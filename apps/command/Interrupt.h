// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

#include <csignal>

namespace Corvane::Command
{

/// Ends the command at SIGINT, SIGTERM and SIGHUP: what is being saved is removed, the reason is
/// told, and the exit status is that of a failure. A signal that was ignored when the command began
/// stays ignored.
namespace Interrupt
{

void Install();

/// Names the one file that is being saved, and its folder, as what an interrupt removes. The
/// descriptors must stay open until Release().
///
/// \param parent the folder of \a folderName. \param folder the folder of \a fileName.
void Guard(int parent, const QByteArray& folderName, int folder, const QByteArray& fileName);
/// From now on an interrupt removes nothing.
void Release();

/// Puts interrupts off for as long as it lives.
class Delay
{
public:
    Delay();
    ~Delay();

private:
    Delay(const Delay&) = delete;
    Delay& operator=(const Delay&) = delete;

    sigset_t m_before;
};

} // namespace Interrupt

} // namespace Corvane::Command
