// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Figures.h"
#include "Measure.h"
#include "Session.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

namespace Corvane::Bench
{

/// Times works on open stations, per element, and tells how these times grow with the station.
class GrowthRun
{
public:
    using Work = std::function<void()>;
    /// Times a work under a name, with caches that hold nothing of it yet.
    using Timer = std::function<void(const QString& name, const Work& work)>;
    /// What is done with a station that was just opened: the same works in the same order, each
    /// time.
    using Round = std::function<void(SCLElement* root, const Timer& time)>;

    GrowthRun(const Session& session, const Round& round);

    /// Adds, for each work, the time per element in each file, and that of the largest file against
    /// that of the smallest.
    void Report(Figures& figures, const Target& growth) const;

private:
    struct NamedTimes {
        QString name;
        QVector<Series> perFile;
    };

    Series& TimesOf(const QString& name, int file);
    void RunOnce(Library& library, int file, const Round& round);

    const Session& m_session;
    QVector<NamedTimes> m_works;
};

} // namespace Corvane::Bench
