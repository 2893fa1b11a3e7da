// SPDX-License-Identifier: Apache-2.0
#include "Memory.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTextStream>

#ifdef __GLIBC__
#include <malloc.h>
#endif

#include <vector>

namespace Corvane::Bench
{

qint64 PeakMemory()
{
    QFile status("/proc/self/status");
    if (!status.open(QIODevice::ReadOnly)) {
        return 0;
    }
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:")) {
            return line.mid(6).simplified().split(' ').first().toLongLong() * 1024;
        }
    }
    return 0;
}

void ReturnFreedMemory()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

void CoolCaches()
{
    static std::vector<quint64> memory(std::size_t(1) << 24);
    for (quint64& word : memory) {
        ++word;
    }
}

qint64 PeakMemoryInChild(const QStringList& arguments)
{
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QCoreApplication::applicationFilePath(), arguments);
    if (!child.waitForFinished(-1) || child.exitCode() != 0) {
        return -1;
    }
    bool ok = false;
    const qint64 bytes = child.readAllStandardOutput().trimmed().toLongLong(&ok);
    return ok ? bytes : -1;
}

void GrowthReport(const std::function<void()>& work)
{
    const qint64 before = PeakMemory();
    work();
    QTextStream(stdout) << PeakMemory() - before << '\n';
}

} // namespace Corvane::Bench
