// SPDX-License-Identifier: Apache-2.0
#include "apps/command/Commands.h"

#include "apps/command/Report.h"
#include "apps/command/StandardOutput.h"

#include <algorithm>
#include <iterator>

// The sub-commands, in the order of the help. Each has a file of its own, <Name>Command.cpp, that
// defines Run<Name>(); a new one needs that file and a line here.
#define CORVANE_SUB_COMMANDS(ADD)                                                                  \
    ADD("info", Info, "Show the edition of a station file and count what it holds.")               \
    ADD("tree", Tree, "Show the elements of a station file.")                                      \
    ADD("names", Names, "Show the names that elements of a station go by.")                        \
    ADD("types", Types, "Show which data type templates are used and which are not.")              \
    ADD("tdl", Tdl, "Show the TDL type of a data type or an attribute.")                           \
    ADD("subscriptions", Subscriptions, "Show what IEDs receive, by control block.")               \
    ADD("resolve", Resolve, "Check that each input is fed and leads somewhere.")                   \
    ADD("addresses", Addresses, "Check the multicast addresses, or give missing ones.")            \
    ADD("ports", Ports, "Show the ports of IEDs and what they are wired to.")                      \
    ADD("cables", Cables, "Show which cable joins which ports; draw it.")                          \
    ADD("sync-desc", SyncDesc, "Carry descriptions along signals that are passed on.")             \
    ADD("crc", Crc, "Show or store the virtual-terminal CRCs of a station.")                       \
    ADD("crc-diff", CrcDiff, "Tell why CRCs differ between two station files.")                    \
    ADD("validate", Validate, "Check station files against the SCL schema.")                       \
    ADD("format", Format, "Write a station file anew, in schema order.")                           \
    ADD("rename-ied", RenameIed, "Rename an IED, also where others name it.")                      \
    ADD("delete-ied", DeleteIed, "Delete an IED with what others have of it.")                     \
    ADD("pack", Pack, "Write the binary image of a station.")                                      \
    ADD("unpack", Unpack, "Write the station of a binary image.")

namespace Corvane::Command
{

#define CORVANE_DECLARE(name, Function, summary)                                                   \
    ExitStatus Run##Function(SCLDocControl& control, const QStringList& arguments);
CORVANE_SUB_COMMANDS(CORVANE_DECLARE)
#undef CORVANE_DECLARE

namespace
{

struct SubCommand {
    const char* name;
    ExitStatus (*run)(SCLDocControl& control, const QStringList& arguments);
    const char* summary;
};

#define CORVANE_ENTER(name, Function, summary) {name, Run##Function, summary},
constexpr SubCommand subCommands[] = {CORVANE_SUB_COMMANDS(CORVANE_ENTER)};
#undef CORVANE_ENTER

QString HelpText()
{
    QString text = QStringLiteral("Usage: corvane SUB-COMMAND [options] FILE...\n"
                                  "Reads, checks and writes IEC 61850 SCL station files.\n\n"
                                  "Options:\n"
                                  "  -h, --help     Show this help.\n"
                                  "  -v, --version  Show the version.\n\n"
                                  "Sub-commands ('corvane SUB-COMMAND --help' tells more):\n");
    for (const SubCommand& command : subCommands)
        text += QStringLiteral("  %1 %2\n")
                    .arg(QLatin1String(command.name), -14)
                    .arg(QLatin1String(command.summary));
    return text;
}

ExitStatus Print(const QString& text)
{
    StandardOutput output;
    output.Write(text);
    return output.Finish(ExitStatus::Good);
}

ExitStatus WrongUse(const QString& text)
{
    Complain(text);
    Complain(QStringLiteral("try 'corvane --help'"));
    return ExitStatus::Failed;
}

} // namespace

ExitStatus Run(SCLDocControl& control, const QStringList& arguments)
{
    if (arguments.isEmpty())
        return WrongUse(QStringLiteral("no sub-command is given"));
    const QString& first = arguments.constFirst();
    if (first == QLatin1String("--help") || first == QLatin1String("-h"))
        return Print(HelpText());
    if (first == QLatin1String("--version") || first == QLatin1String("-v"))
        return Print(QStringLiteral("corvane " CORVANE_VERSION "\n"));

    const auto* const command =
        std::find_if(std::begin(subCommands), std::end(subCommands),
                     [&first](const SubCommand& c) { return first == QLatin1String(c.name); });
    if (command == std::end(subCommands))
        return WrongUse(QStringLiteral("there is no sub-command '%1'").arg(first));
    return command->run(control, arguments.mid(1));
}

} // namespace Corvane::Command
