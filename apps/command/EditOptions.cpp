// SPDX-License-Identifier: Apache-2.0
#include "apps/command/EditOptions.h"

#include "apps/command/CommandLine.h"
#include "apps/command/StationFile.h"
#include "apps/command/StationSave.h"

namespace Corvane::Command
{

namespace
{

const QString dryRunOption = QStringLiteral("dry-run");
const QString schemaOption = QStringLiteral("schema");
const QString outputOption = QStringLiteral("output");

} // namespace

EditOptions::EditOptions(CommandLine& line) : m_line(line)
{
    line.AddOption({dryRunOption, QStringLiteral("Show what would change and write nothing.")});
    line.AddOption({schemaOption, QStringLiteral("The SCL schema. Needed unless it is a dry run."),
                    QStringLiteral("XSD")});
    line.AddOption({{QStringLiteral("o"), outputOption},
                    QStringLiteral("The file to write; it may be FILE itself. Needed unless it is "
                                   "a dry run."),
                    QStringLiteral("OUT")});
}

bool EditOptions::IsDryRun() const
{
    return m_line.IsSet(dryRunOption);
}

bool EditOptions::Check() const
{
    if (IsDryRun())
        return true;
    if (!m_line.IsSet(schemaOption))
        m_line.WrongUse(QStringLiteral("the option --schema is missing"));
    else if (!m_line.IsSet(outputOption))
        m_line.WrongUse(QStringLiteral("the option -o is missing"));
    else
        return true;
    return false;
}

SCLDocument* EditOptions::Open(SCLDocControl& control) const
{
    const bool isReady = IsDryRun() || RegisterSclSchema(control, m_line.Schema());
    return isReady ? OpenStation(control, m_line.File()) : nullptr;
}

bool EditOptions::Save(SCLDocControl& control, SCLDocument& document) const
{
    return IsDryRun() || SaveStation(control, document, m_line.Value(outputOption));
}

} // namespace Corvane::Command
