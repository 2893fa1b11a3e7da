// SPDX-License-Identifier: Apache-2.0
#include "apps/command/StationSave.h"

#include "apps/command/FileSave.h"
#include "apps/command/ProgressBar.h"
#include "apps/command/Report.h"
#include "apps/command/StationCompare.h"

#include <corvane/documents/SCLDocControl.h>
#include <corvane/documents/SCLDocument.h>

namespace Corvane::Command
{

namespace
{

QString WriteAndReadBack(SCLDocument& document, const QString& path)
{
    if (!document.SaveAs(path, false, false))
        return QStringLiteral("cannot write a temporary file");
    SCLDocument loaded;
    if (!loaded.Open(path))
        return QStringLiteral("what was written cannot be read back");
    const QString difference = FirstDifference(document.Root(), loaded.Root());
    return difference.isEmpty()
               ? QString()
               : QStringLiteral("what was written differs from the station at ") + difference;
}

} // namespace

bool SaveStation(SCLDocControl& control, SCLDocument& document, const QString& file)
{
    QString reason;
    {
        const ProgressBar bar(control);
        reason = SaveFile(
            file, [&document](const QString& path) { return WriteAndReadBack(document, path); });
    }
    if (!reason.isEmpty())
        Complain(file, reason);
    return reason.isEmpty();
}

} // namespace Corvane::Command
