// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/crc/CrcGenerator.h>
#include <corvane/documents/SCLDocument.h>

#include <QByteArray>
#include <QRegularExpression>
#include <QString>
#include <QtGlobal>

namespace Corvane::Test
{

/// What the outputs of a generation hold before it.
constexpr unsigned int g_untouchedCrc = 0xDEADBEEF;

inline QByteArray UntouchedContent()
{
    return "untouched";
}

/// The outcome of CrcGenerator::Gererate().
struct CrcRun {
    CrcGenerator::CrcResult result = CrcGenerator::CrcFailed;
    unsigned int crc = g_untouchedCrc;
    QByteArray canonical = UntouchedContent();
    QByteArray readable = UntouchedContent();

    explicit CrcRun(SCLElement* ied)
    {
        result = CrcGenerator(ied).Gererate(crc, &canonical, &readable);
    }
    /// Of the first IED of that name.
    CrcRun(SCLDocument* document, const QString& iedName)
        : CrcRun(document->Root()->FindChild(QStringLiteral("IED"), QStringLiteral("name"), iedName,
                                             false))
    {
    }

    bool IsUntouched() const
    {
        return crc == g_untouchedCrc && canonical == UntouchedContent() &&
               readable == UntouchedContent();
    }
};

/// All of a content from the first \a begin to the next \a end, both of them included; null if there
/// is no such piece.
inline QString PieceOf(const QByteArray& content, const QString& begin, const QString& end)
{
    const QString text = QString::fromUtf8(content);
    const auto from = text.indexOf(begin);
    const auto to = text.indexOf(end, from + begin.size());
    return from < 0 || to < 0 ? QString() : text.mid(from, to + end.size() - from);
}

/// The section of that tag; null if there is none.
inline QString SectionOf(const QByteArray& content, const QString& tag)
{
    return PieceOf(content, QStringLiteral("<%1>").arg(tag), QStringLiteral("</%1>").arg(tag));
}

/// A readable content with a mark in place of the time of its rendering.
inline QString WithoutTime(const QByteArray& readable)
{
    static const QRegularExpression time(
        QStringLiteral("timestamp=\"\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\""));
    return QString::fromUtf8(readable).replace(time, QStringLiteral("timestamp=\"*\""));
}

} // namespace Corvane::Test
