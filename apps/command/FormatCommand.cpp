// SPDX-License-Identifier: Apache-2.0
#include "apps/command/CommandLine.h"
#include "apps/command/StationFile.h"
#include "apps/command/StationSave.h"

namespace Corvane::Command
{

ExitStatus RunFormat(SCLDocControl& control, const QStringList& arguments)
{
    CommandLine line(
        QStringLiteral("format"),
        QStringLiteral("Writes a station file anew: UTF-8, indented, children in schema order."));
    line.AddSchema();
    line.AddRequiredOption({{QStringLiteral("o"), QStringLiteral("output")},
                            QStringLiteral("The file to write; it may be FILE itself."),
                            QStringLiteral("OUT")});
    line.AddFile(QStringLiteral("The station file to read."));
    if (!line.Parse(arguments))
        return line.Status();

    if (!RegisterSclSchema(control, line.Schema()))
        return ExitStatus::Failed;
    SCLDocument* document = OpenStation(control, line.File());
    if (document == nullptr)
        return ExitStatus::Failed;
    const bool saved = SaveStation(control, *document, line.Value(QStringLiteral("output")));
    return saved ? ExitStatus::Good : ExitStatus::Failed;
}

} // namespace Corvane::Command
