// SPDX-License-Identifier: Apache-2.0
// ValidateStation SCHEMA FILE: checks a file on disk against the schema.
#include <corvane/documents/SCLDocControl.h>

#include <QCoreApplication>
#include <QTextStream>

using namespace Corvane;

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QTextStream out(stdout);
    SCLDocControl control;
    if (!control.RegisterSchema(arguments.value(1)) || !control.HasSclSchema()) {
        out << "this is no SCL schema: " << arguments.value(1) << '\n';
        return 2;
    }

    // Messages come one by one while the parser runs, and all together at its end.
    QObject::connect(&control, &SCLDocControl::sigOutMessage, &control,
                     [&out](const QString& type, const QString& message) {
                         out << type << ' ' << message << '\n';
                     });
    QStringList messages;
    const bool valid = control.SchemaValidate(arguments.value(2), messages);
    out << (valid ? "valid" : "not valid") << ", messages: " << messages.size() << '\n';
    return valid ? 0 : 1;
}
