// SPDX-License-Identifier: Apache-2.0
// EditStation SCHEMA FILE OUT: describes the first IED, adds a text to it and saves the station
// under another name. Tells each change as a host would hear of it.
#include <corvane/documents/SCLDocControl.h>
#include <corvane/elements/SCLVocabulary.h>

#include <QCoreApplication>
#include <QTextStream>

using namespace Corvane;

namespace
{

void TellChanges(SCLDocument* station, QTextStream& out)
{
    QObject::connect(station, &SCLDocument::sigEditAttribute, station,
                     [&out](SCLElement* element, SCLAttribute* attribute, const QString& before) {
                         out << "edited:   " << element->GetTag() << ' ' << attribute->GetName()
                             << ", \"" << before << "\" -> \"" << attribute->GetValue() << "\"\n";
                     });
    QObject::connect(station, &SCLDocument::sigAddElement, station, [&out](SCLElement* element) {
        out << "added:    " << element->GetTag() << " to " << element->GetParent("")->GetTag()
            << '\n';
    });
    QObject::connect(station, &SCLDocument::sigEditValue, station, [&out](SCLElement* element) {
        out << "edited:   the text of " << element->GetTag() << '\n';
    });
    QObject::connect(station, &SCLDocument::sigModifiedStateChanged, station, [station, &out] {
        out << "modified: " << (station->GetModified() ? "yes" : "no") << '\n';
    });
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QTextStream out(stdout);
    SCLDocControl control;

    // Without the schema the children of the saved file would stand in no meaningful order.
    if (!control.RegisterSchema(arguments.value(1)) || !control.HasSclSchema()) {
        out << "this is no SCL schema: " << arguments.value(1) << '\n';
        return 1;
    }
    SCLDocument* station = control.OpenDocument(arguments.value(2), true);
    SCLElement* ied = station ? station->Root()->GetFirstChild(g_szTagIED) : nullptr;
    if (ied == nullptr) {
        out << "this is no station with an IED: " << arguments.value(2) << '\n';
        return 1;
    }

    TellChanges(station, out);
    ied->SetAttribute("desc", "line 1, main protection", true);
    SCLElement* text = ied->GetFirstChild("Text");
    if (text == nullptr)
        text = ied->CreateChild("Text", -1, true);
    text->SetValue("described by EditStation", true);

    const QString target = arguments.value(3);
    if (!station->SaveAs(target, true, false)) {
        out << "cannot write " << target << '\n';
        return 1;
    }
    out << "saved:    " << station->Root()->GetChildCount(true) + 1 << " elements\n";
    return 0;
}
