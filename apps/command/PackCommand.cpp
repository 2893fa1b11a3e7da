// SPDX-License-Identifier: Apache-2.0
#include "apps/command/CommandLine.h"
#include "apps/command/FileSave.h"
#include "apps/command/ProgressBar.h"
#include "apps/command/Report.h"
#include "apps/command/StationFile.h"

#include <corvane/documents/SCLDocument.h>

namespace Corvane::Command
{

namespace
{

QString Pack(SCLDocControl& control, SCLDocument& document, const QString& output)
{
    const ProgressBar bar(control);
    return SaveBytes(output, document.WriteBinary());
}

} // namespace

ExitStatus RunPack(SCLDocControl& control, const QStringList& arguments)
{
    CommandLine line(QStringLiteral("pack"),
                     QStringLiteral("Writes the binary image of a station, which loads faster."));
    line.AddRequiredOption({{QStringLiteral("o"), QStringLiteral("output")},
                            QStringLiteral("The image to write."),
                            QStringLiteral("IMAGE")});
    line.AddFile(QStringLiteral("The station file to read."));
    if (!line.Parse(arguments))
        return line.Status();

    SCLDocument* document = OpenStation(control, line.File());
    if (document == nullptr)
        return ExitStatus::Failed;
    const QString output = line.Value(QStringLiteral("output"));
    const QString reason = Pack(control, *document, output);
    if (reason.isEmpty())
        return ExitStatus::Good;
    Complain(output, reason);
    return ExitStatus::Failed;
}

} // namespace Corvane::Command
