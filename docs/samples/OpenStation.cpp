// SPDX-License-Identifier: Apache-2.0
// OpenStation FILE: names the IEDs of a station and the logical nodes of each logical device.
#include <corvane/documents/SCLDocControl.h>
#include <corvane/elements/SCLVocabulary.h>

#include <QCoreApplication>
#include <QTextStream>

using namespace Corvane;

namespace
{

QString Name(SCLElement* logicalNode)
{
    return logicalNode->GetAttribute("prefix") + logicalNode->GetAttribute("lnClass") +
           logicalNode->GetAttribute("inst");
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout);

    // The control comes before all other objects of the library and goes after them.
    SCLDocControl control;
    SCLDocument* station = control.OpenDocument(QCoreApplication::arguments().value(1), true);
    if (station == nullptr) {
        out << "cannot open the station. " << control.GetLastError() << '\n';
        return 1;
    }

    // Lists hold pointers into the document. They are copies: the tree may change meanwhile.
    const QList<SCLElement*> ieds = station->Root()->FindChildByType(g_szTagIED, false);
    for (SCLElement* ied : ieds) {
        out << ied->GetAttribute("name") << '\n';
        const QList<SCLElement*> devices = ied->FindChildByType(g_szTagLDevice, true);
        for (SCLElement* device : devices) {
            out << "  " << device->GetAttribute("inst") << ':';
            const QList<SCLElement*> nodes = device->FindChildByType(g_szTagLN0, false) +
                                             device->FindChildByType(g_szTagLN, false);
            for (SCLElement* node : nodes)
                out << ' ' << Name(node);
            out << '\n';
        }
    }
    return 0;
}
