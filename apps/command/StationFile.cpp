// SPDX-License-Identifier: Apache-2.0
#include "apps/command/StationFile.h"

#include "apps/command/FileCheck.h"
#include "apps/command/ProgressBar.h"
#include "apps/command/Report.h"

#include <corvane/documents/SCLDocControl.h>

namespace Corvane::Command
{

namespace
{

SCLDocument* Load(SCLDocControl& control, const QString& file)
{
    const ProgressBar bar(control);
    return control.OpenDocument(file, false);
}

} // namespace

SCLDocument* OpenStation(SCLDocControl& control, const QString& file)
{
    const QString reason = WhyUnreadable(file);
    if (!reason.isEmpty()) {
        Complain(file, reason);
        return nullptr;
    }
    // The library sets the text only when it parses, so an older one has to go.
    control.SetLastError(QString());
    SCLDocument* document = Load(control, file);
    if (document == nullptr) {
        const QString error = control.GetLastError();
        Complain(file, error.isEmpty() ? QStringLiteral("cannot be read") : error);
    }
    return document;
}

bool RegisterSclSchema(SCLDocControl& control, const QString& file)
{
    const QString reason = WhyUnreadable(file);
    if (!reason.isEmpty()) {
        Complain(file, reason);
        return false;
    }
    if (control.RegisterSchema(file) && control.HasSclSchema())
        return true;
    Complain(file, QStringLiteral("is no schema of IEC 61850-6 that can be used"));
    return false;
}

} // namespace Corvane::Command
