// SPDX-License-Identifier: Apache-2.0
#include "apps/command/Interrupt.h"

#include "apps/command/ExitStatus.h"

#include <array>
#include <cstring>
#include <fcntl.h>
#include <initializer_list>
#include <unistd.h>

namespace Corvane::Command::Interrupt
{

namespace
{

constexpr std::initializer_list<int> signalNumbers = {SIGINT, SIGTERM, SIGHUP};

// Plain memory, because a signal handler may neither allocate nor lock. A file name has 255 bytes
// at most.
struct Guarded {
    std::array<char, 256> folderName;
    std::array<char, 256> fileName;
    int parent;
    int folder;
};
Guarded guarded;
volatile std::sig_atomic_t isGuarding = 0;

sigset_t SignalSet()
{
    sigset_t set;
    sigemptyset(&set);
    for (int number : signalNumbers)
        sigaddset(&set, number);
    return set;
}

void Tell(const char* text)
{
    // What follows is the end of the process: a failed write changes nothing.
    if (write(STDERR_FILENO, text, std::strlen(text)) < 0)
        return;
}

extern "C" void EndCommand(int)
{
    if (isGuarding != 0) {
        unlinkat(guarded.folder, guarded.fileName.data(), 0);
        unlinkat(guarded.parent, guarded.folderName.data(), AT_REMOVEDIR);
    }
    Tell(isatty(STDERR_FILENO) != 0 ? "\ncorvane: interrupted\n" : "corvane: interrupted\n");
    _exit(static_cast<int>(ExitStatus::Failed));
}

void Copy(std::array<char, 256>& to, const QByteArray& name)
{
    qstrncpy(to.data(), name.constData(), to.size());
}

} // namespace

void Install()
{
    struct sigaction action = {};
    action.sa_handler = EndCommand;
    action.sa_mask = SignalSet();
    for (int number : signalNumbers) {
        struct sigaction before = {};
        sigaction(number, nullptr, &before);
        if (before.sa_handler != SIG_IGN)
            sigaction(number, &action, nullptr);
    }
}

void Guard(int parent, const QByteArray& folderName, int folder, const QByteArray& fileName)
{
    const Delay delay;
    Copy(guarded.folderName, folderName);
    Copy(guarded.fileName, fileName);
    guarded.parent = parent;
    guarded.folder = folder;
    isGuarding = 1;
}

void Release()
{
    isGuarding = 0;
}

Delay::Delay()
{
    const sigset_t set = SignalSet();
    pthread_sigmask(SIG_BLOCK, &set, &m_before);
}

Delay::~Delay()
{
    pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
}

} // namespace Corvane::Command::Interrupt
