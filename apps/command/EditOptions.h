// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace Corvane
{
class SCLDocControl;
class SCLDocument;
} // namespace Corvane

namespace Corvane::Command
{

class CommandLine;

/// The options of a sub-command that edits a station: `--schema XSD`, `-o OUT`, and `--dry-run`,
/// with which neither of them is needed and nothing is written.
class EditOptions
{
public:
    /// Declares them.
    ///
    /// \param flag the option without which the sub-command only reads, if it has one: the others
    ///             go with it alone.
    explicit EditOptions(CommandLine& line, const QString& flag = QString());

    bool IsDryRun() const;
    /// Whether they are used as they may be; the complaint is made if not.
    bool Check() const;
    /// Registers the schema and opens the file. Null if that fails; the reason is told then.
    SCLDocument* Open(SCLDocControl& control) const;
    /// Saves the document, unless it is a dry run. False if that fails; the reason is told then.
    bool Save(SCLDocControl& control, SCLDocument& document) const;

private:
    QString WhyWrong() const;

    const CommandLine& m_line;
    QString m_flag;
};

} // namespace Corvane::Command
