// SPDX-License-Identifier: Apache-2.0
#include "support/GrowthRun.h"

#include "support/Memory.h"

#include <corvane/documents/SCLDocument.h>

#include <algorithm>

namespace Corvane::Bench
{

GrowthRun::GrowthRun(const Session& session, const Round& round) : m_session(session)
{
    Library library(session);
    for (int i = 0; i < session.rounds; ++i) {
        for (int file = 0; file < session.files.size(); ++file) {
            RunOnce(library, file, round);
        }
    }
}

void GrowthRun::RunOnce(Library& library, int file, const Round& round)
{
    SCLDocument* document = library.Open(m_session.files[file]);
    const double elements = document->Root()->GetChildCount(true);
    round(document->Root(), [&](const QString& name, const Work& work) {
        CoolCaches();
        TimesOf(name, file).Add(Seconds(work) / elements * 1e9);
    });
    library.Close(document);
}

Series& GrowthRun::TimesOf(const QString& name, int file)
{
    auto known = std::find_if(m_works.begin(), m_works.end(),
                              [&](const NamedTimes& work) { return work.name == name; });
    if (known == m_works.end()) {
        m_works.append({name, QVector<Series>(m_session.files.size())});
        known = m_works.end() - 1;
    }
    return known->perFile[file];
}

void GrowthRun::Report(Figures& figures, const Target& growth) const
{
    for (const NamedTimes& work : m_works) {
        for (int file = 0; file < work.perFile.size(); ++file) {
            figures.Add(work.name + ", per element", m_session.files[file].Label(),
                        work.perFile[file].Median(), "ns");
        }
        if (work.perFile.size() > 1) {
            figures.Add(work.name + " per element, largest against smallest", QString(),
                        MedianRatio(work.perFile.last(), work.perFile.first()), growth);
        }
    }
}

} // namespace Corvane::Bench
