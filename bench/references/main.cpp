// SPDX-License-Identifier: Apache-2.0
// corvane-bench-references: what it costs to follow the references of a station.
//
// Workloads, for each station file, once open:
//   fcda    SCLHelp::GetFCDAFromExtRef for the ExtRefs of the file, one after the other, as a tool
//   asks inputs  SCLHelp::GetGSEControlFromIEDInputs and GetSMVControlFromIEDInputs of every IED
//   types   the LNodeType of every LN0 and LN, the DOType of every DOI, and the DA or BDA of every
//           DAI, each through SCLHelp
//   R       a bare QXmlStreamReader loop over the file
// Figures: fcda per FCDA of the sender against R per element, inputs / R, types / R, and the time
// of types per DAI in the largest file against that in the smallest.
#include "support/Reference.h"
#include "support/Session.h"

#include <corvane/documents/SCLDocument.h>
#include <corvane/help/SCLHelp.h>

#include <QCoreApplication>

using namespace Corvane;
using namespace Corvane::Bench;

namespace
{

constexpr Target g_fcdaTarget{0.10, 0.045};
constexpr Target g_inputsTarget{0.40, 0.25};
constexpr Target g_typesTarget{1.0, 0.7};
constexpr Target g_growthTarget{2.0, 1.3};
constexpr int g_mostExtRefs = 20000;

const QString g_name = QStringLiteral("name");

struct Times {
    Series read;
    Series fcda;
    Series inputs;
    Series types;
    Series typesPerDai;
};

// What the workloads of one document work on.
struct Subject {
    explicit Subject(SCLElement* top) : root(top)
    {
        ieds = root->FindChildByType("IED", false);
        const QList<SCLElement*> all = root->FindChildByType("ExtRef", true);
        extRefs = all.mid(0, g_mostExtRefs);
        for (SCLElement* extRef : qAsConst(extRefs)) {
            senderFcdas += FcdasOfSender(extRef);
        }
        nodes = root->FindChildByType("LN0", true) + root->FindChildByType("LN", true);
        dois = root->FindChildByType("DOI", true);
        dais = root->FindChildByType("DAI", true);
        elements = root->GetChildCount(true) + 1;
        if (extRefs.isEmpty() || dais.isEmpty()) {
            Fatal("the station has no references to follow");
        }
    }

    qint64 FcdasOfSender(SCLElement* extRef) const
    {
        SCLElement* ied = root->FindChild("IED", g_name, extRef->GetAttribute("iedName"), false);
        return ied ? ied->FindChildByType("FCDA", true).size() : 0;
    }

    SCLElement* root;
    QList<SCLElement*> ieds;
    QList<SCLElement*> extRefs;
    qint64 senderFcdas = 0;
    QList<SCLElement*> nodes;
    QList<SCLElement*> dois;
    QList<SCLElement*> dais;
    int elements = 0;
};

void FollowExtRefs(const Subject& subject)
{
    for (SCLElement* extRef : subject.extRefs) {
        if (SCLHelp::GetFCDAFromExtRef(extRef).isEmpty()) {
            Fatal("an ExtRef leads to no FCDA");
        }
    }
}

void GatherInputs(const Subject& subject)
{
    qint64 records = 0;
    for (SCLElement* ied : subject.ieds) {
        records += SCLHelp::GetGSEControlFromIEDInputs(ied).size();
        records += SCLHelp::GetSMVControlFromIEDInputs(ied).size();
    }
    if (records == 0) {
        Fatal("no IED subscribes to anything");
    }
}

// The declaration of a DAI: through SDOs to the last DOType, then through the structure.
SCLElement* DeclarationOf(SCLElement* dai)
{
    QString path = dai->GetAttribute(g_name);
    SCLElement* parent = dai->GetParent(QString());
    QStringList names;
    for (; parent->GetTag() == QLatin1String("SDI"); parent = parent->GetParent(QString())) {
        names.prepend(parent->GetAttribute(g_name));
    }
    SCLElement* doType = SCLHelp::GetDOTypeFromDO(SCLHelp::GetDOFromDOI(parent));
    while (doType && !names.isEmpty()) {
        SCLElement* sdo = doType->FindChild("SDO", g_name, names.first(), false);
        if (!sdo) {
            break;
        }
        doType = SCLHelp::GetDOTypeFromDO(sdo);
        names.removeFirst();
    }
    names.append(path);
    return doType ? SCLHelp::GetDAFromDOTypeAndName(doType, names.join(QLatin1Char('.'))) : nullptr;
}

void FollowTypes(const Subject& subject)
{
    bool all = true;
    for (SCLElement* node : subject.nodes) {
        all = all && SCLHelp::GetLNTypeFromLN(node);
    }
    for (SCLElement* doi : subject.dois) {
        all = all && SCLHelp::GetDOTypeFromDO(SCLHelp::GetDOFromDOI(doi));
    }
    for (SCLElement* dai : subject.dais) {
        all = all && DeclarationOf(dai);
    }
    if (!all) {
        Fatal("a type is missing");
    }
}

void Round(Library& library, const StationFile& file, Times& times)
{
    times.read.Time([&] { ReadBare(file.path); });
    SCLDocument* document = library.Open(file);
    const Subject subject(document->Root());
    const double perElement = times.read.Last() / subject.elements;
    times.fcda.Add(Seconds([&] { FollowExtRefs(subject); }) /
                   static_cast<double>(subject.senderFcdas) / perElement);
    times.inputs.Time([&] { GatherInputs(subject); });
    times.types.Time([&] { FollowTypes(subject); });
    times.typesPerDai.Add(times.types.Last() / static_cast<double>(subject.dais.size()));
    library.Close(document);
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const Session session = Session::FromArguments("Measures following references.");
    Library library(session);
    QVector<Times> times(static_cast<int>(session.files.size()));
    for (int round = 0; round < session.rounds; ++round) {
        for (int file = 0; file < times.size(); ++file) {
            Round(library, session.files[file], times[file]);
        }
    }
    Figures figures("References");
    for (int file = 0; file < times.size(); ++file) {
        const QString label = session.files[file].Label();
        const Times& t = times[file];
        figures.Add("R", label, t.read.Median() * 1e3, "ms");
        figures.Add("GetFCDAFromExtRef per FCDA / (R per element)", label, t.fcda.Median(),
                    g_fcdaTarget);
        figures.Add("inputs of all IEDs / R", label, MedianRatio(t.inputs, t.read), g_inputsTarget);
        figures.Add("types of all instances / R", label, MedianRatio(t.types, t.read),
                    g_typesTarget);
    }
    if (times.size() > 1) {
        figures.Add("types per DAI, largest against smallest", QString(),
                    times.last().typesPerDai.Median() / times.first().typesPerDai.Median(),
                    g_growthTarget);
    }
    figures.Print();
    return 0;
}
