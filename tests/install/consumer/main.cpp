// SPDX-License-Identifier: Apache-2.0
// Opens the station that it is given, names its IEDs and changes one of them.
#include <corvane/documents/SCLDocControl.h>
#include <corvane/elements/SCLVocabulary.h>

#include <QCoreApplication>
#include <QTextStream>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    Corvane::SCLDocControl control;
    Corvane::SCLDocument* station = control.OpenDocument(application.arguments().value(1), false);
    if (!station) {
        QTextStream(stderr) << "cannot open the station: " << control.GetLastError() << '\n';
        return 1;
    }

    const QList<Corvane::SCLElement*> ieds =
        station->Root()->FindChildByType(QString::fromLatin1(Corvane::g_szTagIED), false);
    QStringList names;
    for (Corvane::SCLElement* ied : ieds)
        names.append(ied->GetAttribute(QStringLiteral("name")));
    if (ieds.isEmpty() || station->GetModified())
        return 1;
    ieds.first()->SetAttribute(QStringLiteral("desc"), QStringLiteral("feeder 1"), true);

    QTextStream(stdout) << "IEDs: " << names.join(QLatin1Char(' '))
                        << "; marked modified after an edit: "
                        << (station->GetModified() ? "yes" : "no") << '\n';
    return 0;
}
