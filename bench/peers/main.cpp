// SPDX-License-Identifier: Apache-2.0
// corvane-bench-peers: this library beside other ways of holding an XML file in memory.
//
// Workloads, for each station file and for this library, QDomDocument, pugixml and libxml2:
//   load    read the file into memory (freeing it again is not timed)
//   search  walk the whole tree and gather all elements of one tag
//   memory  what a load adds to the peak of a fresh process
// Figures: load and search divided by R, a bare QXmlStreamReader loop over the file, and memory
// divided by the file size. Each load starts with a heap that was given back to the system, so that
// no peer pays for what another left; load / R is therefore higher than where files are opened one
// after the other. A peer that was not found at build time is reported as absent.
#include "Peer.h"

#include "support/Memory.h"
#include "support/Reference.h"
#include "support/Session.h"

#include <QCoreApplication>

#include <memory>
#include <vector>

using namespace Corvane::Bench;

namespace
{

struct Contestant {
    const char* name;
    std::unique_ptr<Peer> (*make)();
};

const QVector<Contestant>& Contestants()
{
    static const QVector<Contestant> contestants{{"corvane", MakeLibraryPeer},
                                                 {"QDomDocument", MakeQDomPeer},
                                                 {"pugixml", MakePugixmlPeer},
                                                 {"libxml2", MakeLibxml2Peer}};
    return contestants;
}

void Load(Peer& peer, const StationFile& file)
{
    if (!peer.Load(file.path)) {
        Fatal("cannot load " + file.path);
    }
}

int ReportMemory(const Session& session)
{
    for (const Contestant& contestant : Contestants()) {
        if (session.child == QLatin1String(contestant.name)) {
            const std::unique_ptr<Peer> peer = contestant.make();
            GrowthReport([&] { Load(*peer, session.files.first()); });
            return 0;
        }
    }
    Fatal("no peer is called " + session.child);
}

/// The times of one peer with one station file.
struct Times {
    Series load;
    Series search;
};

/// \return the number of elements found.
int Round(Peer& peer, const StationFile& file, Times& times)
{
    int found = 0;
    times.load.Time([&] { Load(peer, file); });
    times.search.Time([&] { found = peer.Search("DAI"); });
    peer.Unload();
    ReturnFreedMemory();
    return found;
}

QStringList Row(const Contestant& contestant, const StationFile& file, const Times& times,
                const Series& read, int found)
{
    const double peak =
        static_cast<double>(PeakMemoryInChild({"--child", contestant.name, file.path}));
    const auto number = [](double value) { return QString::number(value, 'f', 3); };
    return {contestant.name,
            file.Label(),
            number(read.Median() * 1e3),
            number(MedianRatio(times.load, read)),
            number(peak / static_cast<double>(file.bytes)),
            number(MedianRatio(times.search, read)),
            QString::number(found)};
}

void Measure(const Session& session, const StationFile& file, QVector<QStringList>& rows)
{
    const auto& contestants = Contestants();
    std::vector<std::unique_ptr<Peer>> peers;
    for (const Contestant& contestant : contestants) {
        peers.push_back(contestant.make());
    }
    Series read;
    std::vector<Times> times(peers.size());
    std::vector<int> found(peers.size());
    for (int round = 0; round < session.rounds; ++round) {
        read.Time([&] { ReadBare(file.path); });
        for (std::size_t i = 0; i < peers.size(); ++i) {
            if (peers[i]) {
                found[i] = Round(*peers[i], file, times[i]);
            }
        }
    }
    for (std::size_t i = 0; i < peers.size(); ++i) {
        const Contestant& contestant = contestants[static_cast<int>(i)];
        rows.append(peers[i]
                        ? Row(contestant, file, times[i], read, found[i])
                        : QStringList{contestant.name, file.Label(), "absent", "", "", "", ""});
    }
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const Session session = Session::FromArguments("Compares with other XML trees.");
    if (!session.child.isEmpty()) {
        return ReportMemory(session);
    }
    QVector<QStringList> rows{{"", "station", "R in ms", "load / R", "memory / file size",
                               "search / R", "elements found"}};
    for (const StationFile& file : session.files) {
        Measure(session, file, rows);
    }
    PrintTable("Peers", rows);
    return 0;
}
