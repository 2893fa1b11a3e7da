// SPDX-License-Identifier: Apache-2.0
#include "apps/command/JsonList.h"

#include "apps/command/StandardOutput.h"

#include <QJsonDocument>

namespace Corvane::Command
{

JsonList::JsonList(StandardOutput& output, const QString& name) : m_output(output)
{
    m_output.Write(QStringLiteral("{\"%1\":[").arg(name));
}

void JsonList::Add(const QJsonObject& item)
{
    m_output.Write(m_isEmpty ? QStringLiteral("\n") : QStringLiteral(",\n"));
    m_output.WriteJson(item);
    m_isEmpty = false;
}

void JsonList::Finish(const QJsonObject& rest)
{
    const QByteArray members = QJsonDocument(rest).toJson(QJsonDocument::Compact).mid(1);
    m_output.Write(rest.isEmpty() ? QStringLiteral("\n]") : QStringLiteral("\n],"));
    m_output.WriteLine(QString::fromUtf8(members));
}

} // namespace Corvane::Command
