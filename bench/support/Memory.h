// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace Corvane::Bench
{

/// The most memory, in bytes, that this process has held so far; 0 where the system does not tell.
///
/// It is read from `/proc` and not through `getrusage`, whose figure a child inherits from its
/// parent.
qint64 PeakMemory();

/// Gives freed memory back to the system, where that is possible. Call it, untimed, after freeing
/// something large: otherwise the workload that follows pays for putting the free pieces together.
void ReturnFreedMemory();

/// Puts other things into the processor's caches. Call it, untimed, before a workload that is
/// measured per element: what was done just before would help a small station, whose elements fit,
/// and not a large one; and a user's click finds no cache warmed either.
void CoolCaches();

/// Runs this program again with \a arguments and returns what GrowthReport() printed there, or -1.
/// Memory is measured in a fresh process: in one that has run before, a load would reuse what
/// earlier ones left.
qint64 PeakMemoryInChild(const QStringList& arguments);

/// In the child: runs \a work and prints by how much the peak rose.
void GrowthReport(const std::function<void()>& work);

} // namespace Corvane::Bench
