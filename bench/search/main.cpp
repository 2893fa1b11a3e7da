// SPDX-License-Identifier: Apache-2.0
// corvane-bench-search: what it costs to walk a whole tree.
//
// Workloads, for each station file, on the root of an open document:
//   R         a bare QXmlStreamReader loop over the file, namespace processing off
//   common    FindChildByType("DAI", true): nearly every other element is one
//   rare      FindChildByType("GSEControl", true): a handful
//   resolving GetSortedChildList on every element of a document just opened, which resolves the
//             schema type of each
//   sorted    the same once more
// Figures: each divided by R, and the time per byte of the largest file against the smallest.
#include "support/Reference.h"
#include "support/Session.h"

#include <corvane/documents/SCLDocument.h>

#include <QCoreApplication>

using namespace Corvane;
using namespace Corvane::Bench;

namespace
{

constexpr Target g_searchTarget{0.06, 0.03};
constexpr Target g_sortedTarget{0.15, 0.08};

/// The times of one station file.
struct Times {
    Series read;
    Series common;
    Series rare;
    Series resolving;
    Series sorted;
};

void Search(SCLElement* root, const char* tag)
{
    if (root->FindChildByType(QString::fromLatin1(tag), true).isEmpty()) {
        Fatal(QString("no element %1 found").arg(QLatin1String(tag)));
    }
}

void SortAll(const QVector<SCLElement*>& elements)
{
    int children = 0;
    for (SCLElement* element : elements) {
        children += static_cast<int>(element->GetSortedChildList().size());
    }
    if (children != elements.size() - 1) {
        Fatal("the sorted lists do not hold every element");
    }
}

void Round(Library& library, const StationFile& file, Times& times)
{
    times.read.Time([&] { ReadBare(file.path); });
    SCLDocument* document = library.Open(file);
    const QVector<SCLElement*> elements = AllElements(document->Root());
    times.common.Time([&] { Search(document->Root(), "DAI"); });
    times.rare.Time([&] { Search(document->Root(), "GSEControl"); });
    times.resolving.Time([&] { SortAll(elements); });
    times.sorted.Time([&] { SortAll(elements); });
    library.Close(document);
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const Session session = Session::FromArguments("Measures searching and sorting whole trees.");
    Library library(session);
    QVector<Times> times(static_cast<int>(session.files.size()));
    for (int round = 0; round < session.rounds; ++round) {
        for (int file = 0; file < times.size(); ++file) {
            Round(library, session.files[file], times[file]);
        }
    }
    Figures figures("Search");
    QVector<Series> searches;
    QVector<Series> sorts;
    for (int file = 0; file < times.size(); ++file) {
        const QString label = session.files[file].Label();
        const Times& t = times[file];
        figures.Add("R", label, t.read.Median() * 1e3, "ms");
        figures.Add("FindChildByType / R, common tag", label, MedianRatio(t.common, t.read),
                    g_searchTarget);
        figures.Add("FindChildByType / R, rare tag", label, MedianRatio(t.rare, t.read),
                    g_searchTarget);
        figures.Add("GetSortedChildList / R, first run", label, MedianRatio(t.resolving, t.read),
                    g_sortedTarget);
        figures.Add("GetSortedChildList / R, second run", label, MedianRatio(t.sorted, t.read),
                    g_sortedTarget);
        searches.append(t.common);
        sorts.append(t.sorted);
    }
    AddGrowth(figures, "FindChildByType", session, searches);
    AddGrowth(figures, "GetSortedChildList", session, sorts);
    figures.Print();
    return 0;
}
