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

EditOptions::EditOptions(CommandLine& line, const QString& flag) : m_line(line), m_flag(flag)
{
    const QString with = flag.isEmpty() ? QString() : QStringLiteral("With --%1: ").arg(flag);
    const QString needed = QStringLiteral(" Needed unless it is a dry run.");
    line.AddOption(
        {dryRunOption, with + QStringLiteral("Show what would change and write nothing.")});
    line.AddOption(
        {schemaOption, with + QStringLiteral("The SCL schema.") + needed, QStringLiteral("XSD")});
    line.AddOption({{QStringLiteral("o"), outputOption},
                    with + QStringLiteral("The file to write; it may be FILE itself.") + needed,
                    QStringLiteral("OUT")});
}

bool EditOptions::IsDryRun() const
{
    return m_line.IsSet(dryRunOption);
}

bool EditOptions::Check() const
{
    const QString reason = WhyWrong();
    if (!reason.isEmpty())
        m_line.WrongUse(reason);
    return reason.isEmpty();
}

QString EditOptions::WhyWrong() const
{
    if (!m_flag.isEmpty() && !m_line.IsSet(m_flag)) {
        for (const QString& option : {dryRunOption, schemaOption, outputOption}) {
            if (m_line.IsSet(option))
                return QStringLiteral("the option --%1 needs --%2").arg(option, m_flag);
        }
        return {};
    }
    if (IsDryRun())
        return {};
    if (!m_line.IsSet(schemaOption))
        return QStringLiteral("the option --schema is missing");
    return m_line.IsSet(outputOption) ? QString() : QStringLiteral("the option -o is missing");
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
