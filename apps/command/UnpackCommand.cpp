// SPDX-License-Identifier: Apache-2.0
#include "apps/command/CommandLine.h"
#include "apps/command/FileCheck.h"
#include "apps/command/ProgressBar.h"
#include "apps/command/Report.h"
#include "apps/command/StationFile.h"
#include "apps/command/StationSave.h"

#include <corvane/documents/SCLBinaryCheck.h>
#include <corvane/documents/SCLDocControl.h>
#include <corvane/documents/SCLDocument.h>
#include <corvane/elements/SCLVocabulary.h>

#include <QFile>

namespace Corvane::Command
{

namespace
{

// Why the file gives no bytes, or an empty text.
QString ReadBytes(const QString& name, QByteArray& bytes)
{
    QString reason = WhyUnreadable(name);
    if (!reason.isEmpty())
        return reason;
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return file.errorString();
    bytes = file.readAll();
    return file.error() == QFileDevice::NoError && file.atEnd()
               ? QString()
               : QStringLiteral("cannot be read as a whole");
}

QString WhyDamaged(const QByteArray& image)
{
    const SCLBinaryCheck check = SCLBinaryCheck::Of(image);
    if (check.IsWhole())
        return {};
    return QStringLiteral("is no image or a damaged one, at offset %1: %2")
        .arg(check.offset)
        .arg(check.text);
}

void Load(SCLDocControl& control, SCLDocument& document, const QByteArray& image)
{
    const ProgressBar bar(control);
    document.ReadBinary(image);
}

QString Unpack(SCLDocControl& control, const QString& file, SCLDocument& document)
{
    QByteArray image;
    QString unread = ReadBytes(file, image);
    if (!unread.isEmpty())
        return unread;
    QString damage = WhyDamaged(image);
    if (!damage.isEmpty())
        return damage;
    Load(control, document, image);
    return document.Root()->GetTag() == QLatin1String(g_szTagSCL)
               ? QString()
               : QStringLiteral("is the image of no station: its root is not SCL");
}

} // namespace

ExitStatus RunUnpack(SCLDocControl& control, const QStringList& arguments)
{
    CommandLine line(QStringLiteral("unpack"),
                     QStringLiteral("Writes the station of a binary image, in schema order."));
    line.AddSchema();
    line.AddRequiredOption({{QStringLiteral("o"), QStringLiteral("output")},
                            QStringLiteral("The station file to write."),
                            QStringLiteral("FILE")});
    line.AddFile(QStringLiteral("The image to read."));
    if (!line.Parse(arguments))
        return line.Status();

    if (!RegisterSclSchema(control, line.Schema()))
        return ExitStatus::Failed;
    SCLDocument document;
    const QString reason = Unpack(control, line.File(), document);
    if (!reason.isEmpty()) {
        Complain(line.File(), reason);
        return ExitStatus::Failed;
    }
    const bool saved = SaveStation(control, document, line.Value(QStringLiteral("output")));
    return saved ? ExitStatus::Good : ExitStatus::Failed;
}

} // namespace Corvane::Command
