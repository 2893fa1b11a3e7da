// SPDX-License-Identifier: Apache-2.0
#include "apps/command/Commands.h"
#include "apps/command/Interrupt.h"
#include "apps/command/Report.h"

#include <corvane/documents/SCLDocControl.h>

#include <QCoreApplication>
#include <QFile>

#include <clocale>
#include <csignal>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <langinfo.h>

using namespace Corvane::Command;

namespace
{

// Without this, the next file that is opened could take the number of a closed standard output, and
// a message would be written into it.
void OccupyStandardDescriptors()
{
    for (int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) == -1) {
            // One that is only for reading, so that writing to it still fails.
            const int taken = open("/dev/null", O_RDONLY);
            if (taken >= 0 && taken != descriptor)
                close(taken);
        }
    }
}

// A write that fails is to be told, not to end the process unheard.
void TurnSignalsIntoErrors()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

// File names are bytes, and only in UTF-8 do all of them that matter survive the way through Qt.
void UseUtf8()
{
    std::setlocale(LC_CTYPE, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0)
        qputenv("LC_ALL", "C.UTF-8");
}

bool AreUtf8(int count, char** arguments)
{
    for (int i = 1; i < count; ++i) {
        if (QFile::encodeName(QString::fromUtf8(arguments[i])) != arguments[i])
            return false;
    }
    return true;
}

ExitStatus RunGuarded(const QStringList& arguments)
{
    try {
        Corvane::SCLDocControl control;
        return Run(control, arguments);
    } catch (const std::exception& error) {
        Complain(QString::fromLocal8Bit(error.what()));
        return ExitStatus::Failed;
    }
}

} // namespace

int main(int argc, char** argv)
{
    OccupyStandardDescriptors();
    TurnSignalsIntoErrors();
    Interrupt::Install();
    UseUtf8();
    const QCoreApplication application(argc, argv);
    if (!AreUtf8(argc, argv)) {
        Complain(QStringLiteral("an argument is not UTF-8"));
        return static_cast<int>(ExitStatus::Failed);
    }
    return static_cast<int>(RunGuarded(QCoreApplication::arguments().mid(1)));
}
