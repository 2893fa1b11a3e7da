// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/support/MarkedElement.h"

#include <corvane/help/SCLHelp.h>

#include <QList>
#include <QString>
#include <QStringList>

namespace Corvane::Test
{

/// A record by the marks of its elements: `ied lDevice dataSet controlBlock: extRef=fcda ... |
/// port,port`.
inline QString RecordText(const SCLHelp::Input_CB& record)
{
    QStringList pairs;
    for (int i = 0; i < record.extRefs.size(); ++i)
        pairs.append(MarkOf(record.extRefs.at(i)) + QLatin1Char('=') +
                     (i < record.fcdas.size() ? MarkOf(record.fcdas.at(i)) : QStringLiteral("?")));
    if (record.fcdas.size() > record.extRefs.size())
        pairs.append(QStringLiteral("(too many FCDAs)"));
    return MarksOf({record.ied, record.lDevice, record.dataSet, record.controlBlock}) +
           QStringLiteral(": ") + pairs.join(QLatin1Char(' ')) + QStringLiteral(" | ") +
           record.ports.join(QLatin1Char(','));
}

inline QStringList RecordTexts(const QList<SCLHelp::Input_CB>& records)
{
    QStringList texts;
    for (const SCLHelp::Input_CB& record : records)
        texts.append(RecordText(record));
    return texts;
}

} // namespace Corvane::Test
