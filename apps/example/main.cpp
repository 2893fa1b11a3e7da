// SPDX-License-Identifier: Apache-2.0
// A small host of the library:
//
//   corvane-example [station file [schema]]
#include "apps/example/StationWindow.h"

#include <QApplication>

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    // First to come and last to go, as the library asks for.
    Corvane::SCLDocControl control;
    StationWindow window(control);
    window.show();
    const QStringList arguments = QApplication::arguments();
    window.UseSchema(arguments.value(2));
    window.Open(arguments.value(1));
    return QApplication::exec();
}
