// SPDX-License-Identifier: Apache-2.0
#include "apps/command/Report.h"

#include <QByteArray>

#include <cstdio>
#include <system_error>

namespace Corvane::Command
{

namespace
{

bool Misleads(QChar c)
{
    const char16_t code = c.unicode();
    return code < 0x20 || (code >= 0x7F && code <= 0x9F) || code == 0x61C || code == 0x200E ||
           code == 0x200F || (code >= 0x2028 && code <= 0x202E) ||
           (code >= 0x2066 && code <= 0x2069) || code == 0xFEFF;
}

QString EscapeOf(QChar c)
{
    switch (c.unicode()) {
    case '\n':
        return QStringLiteral("\\n");
    case '\r':
        return QStringLiteral("\\r");
    case '\t':
        return QStringLiteral("\\t");
    default:
        return QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
    }
}

bool IsPair(const QString& text, decltype(text.size()) at)
{
    return text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
}

} // namespace

QString Escaped(const QString& text)
{
    QString escaped;
    escaped.reserve(text.size());
    for (decltype(text.size()) at = 0; at < text.size(); ++at) {
        const QChar c = text[at];
        if (IsPair(text, at))
            escaped += c, escaped += text[++at];
        else if (c == QLatin1Char('\\'))
            escaped += QStringLiteral("\\\\");
        else if (c.isSurrogate() || Misleads(c))
            escaped += EscapeOf(c);
        else
            escaped += c;
    }
    return escaped;
}

QString Quoted(const QString& text)
{
    QString escaped = Escaped(text);
    escaped.replace(QLatin1Char('"'), QStringLiteral("\\\""));
    return QLatin1Char('"') + escaped + QLatin1Char('"');
}

void Complain(const QString& text)
{
    const QByteArray line = "corvane: " + Escaped(text).toUtf8() + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
}

void Complain(const QString& file, const QString& text)
{
    Complain(file + QStringLiteral(": ") + text);
}

QString SystemText(int error)
{
    return QString::fromStdString(std::generic_category().message(error));
}

} // namespace Corvane::Command
