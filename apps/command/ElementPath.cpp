// SPDX-License-Identifier: Apache-2.0
#include "apps/command/ElementPath.h"

#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLVocabulary.h>

#include <QMap>
#include <QStringList>

#include <algorithm>

namespace Corvane::Command
{

namespace
{

using Index = decltype(QString().size());

bool IsDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

QString StepOf(SCLElement* element)
{
    const SCLElement* before = nullptr;
    SCLElement* parent = element->GetParent(QString());
    if (parent != nullptr)
        before = parent->GetFirstChild(element->GetTag());
    if (before == element || parent == nullptr)
        return element->GetTag();
    return QStringLiteral("%1[%2]").arg(element->GetTag()).arg(parent->GetChildPos(element) + 1);
}

} // namespace

QString ElementPath::Of(SCLElement* element)
{
    QStringList steps;
    for (SCLElement* at = element; at != nullptr; at = at->GetParent(QString()))
        steps.append(StepOf(at));
    std::reverse(steps.begin(), steps.end());
    return steps.join(QLatin1Char('/'));
}

/// Reads a path from left to right; the first thing that is wrong ends it.
class ElementPath::Reader
{
public:
    explicit Reader(const QString& text) : m_text(text) {}

    QString Read(QList<Step>& steps)
    {
        do {
            Step step;
            ReadStep(step);
            steps.append(step);
        } while (m_error.isEmpty() && Take('/'));
        if (m_error.isEmpty() && m_at < m_text.size())
            Fail("'/' or '[' is missing");
        return m_error;
    }

private:
    void ReadStep(Step& step)
    {
        step.tag = ReadName("/[]=\"");
        if (step.tag.isEmpty())
            Fail("a tag is missing");
        bool positioned = false;
        while (m_error.isEmpty() && Take('[')) {
            if (positioned)
                Fail("a position must stand last");
            positioned = m_at < m_text.size() && IsDigit(m_text[m_at]);
            if (positioned)
                ReadPosition(step);
            else
                ReadCondition(step);
            if (m_error.isEmpty() && !Take(']'))
                Fail("']' is missing");
        }
    }

    void ReadPosition(Step& step)
    {
        const Index begin = m_at;
        while (m_at < m_text.size() && IsDigit(m_text[m_at]))
            ++m_at;
        bool fits = false;
        step.position = m_text.mid(begin, m_at - begin).toInt(&fits);
        if (!fits || step.position < 1)
            Fail("a position is out of range");
    }

    void ReadCondition(Step& step)
    {
        const QString name = ReadName("/[]=\"");
        if (name.isEmpty())
            Fail("an attribute or a position is missing");
        else if (!Take('='))
            Fail("'=' is missing");
        else
            step.conditions.append({name, Take('"') ? ReadQuoted() : ReadName("]\"\\")});
    }

    QString ReadName(const char* ends)
    {
        const QString endings = QString::fromLatin1(ends);
        const Index begin = m_at;
        while (m_at < m_text.size() && !endings.contains(m_text[m_at]))
            ++m_at;
        return m_text.mid(begin, m_at - begin);
    }

    QString ReadQuoted()
    {
        QString value;
        while (m_at < m_text.size()) {
            if (Take('"'))
                return value;
            const bool escape = Take('\\');
            value += escape ? ReadEscape() : m_text[m_at++];
        }
        Fail("a closing '\"' is missing");
        return {};
    }

    QChar ReadEscape()
    {
        static const QMap<QChar, QChar> escapes = {
            {QLatin1Char('n'), QLatin1Char('\n')},  {QLatin1Char('r'), QLatin1Char('\r')},
            {QLatin1Char('t'), QLatin1Char('\t')},  {QLatin1Char('"'), QLatin1Char('"')},
            {QLatin1Char('\\'), QLatin1Char('\\')},
        };
        if (Take('u'))
            return ReadCode();
        const QChar c = m_at < m_text.size() ? escapes.value(m_text[m_at++]) : QChar();
        if (c.isNull())
            Fail("a '\\' stands before nothing that can be escaped");
        return c;
    }

    QChar ReadCode()
    {
        const QString digits = m_text.mid(m_at, 4);
        bool isCode = false;
        const ushort code = digits.toUShort(&isCode, 16);
        if (!isCode || digits.size() != 4)
            Fail("'\\u' needs four hexadecimal digits");
        m_at = std::min(m_at + 4, m_text.size());
        return QChar(code);
    }

    bool Take(char c)
    {
        const bool there = m_at < m_text.size() && m_text[m_at] == QLatin1Char(c);
        m_at += there ? 1 : 0;
        return there;
    }

    void Fail(const char* reason)
    {
        if (m_error.isEmpty())
            m_error = QStringLiteral("%1 at character %2").arg(QLatin1String(reason)).arg(m_at + 1);
    }

    const QString m_text;
    Index m_at = 0;
    QString m_error;
};

QString ElementPath::Read(const QString& text)
{
    m_steps.clear();
    return Reader(text).Read(m_steps);
}

SCLElement* ElementPath::Find(SCLElement* root) const
{
    SCLElement* element = root;
    for (auto i = m_steps.cbegin(); i != m_steps.cend() && element != nullptr; ++i) {
        const bool isRootStep = i == m_steps.cbegin() && i->conditions.isEmpty() &&
                                i->position == 1 && i->tag == QLatin1String(g_szTagSCL);
        if (!isRootStep)
            element = Follow(*i, element);
    }
    return element;
}

SCLElement* ElementPath::Follow(const Step& step, SCLElement* from)
{
    const auto fits = [&step](SCLElement* element) {
        return std::all_of(
            step.conditions.cbegin(), step.conditions.cend(),
            [element](const auto& c) { return element->GetAttribute(c.first) == c.second; });
    };
    int left = step.position;
    const QList<SCLElement*> group = from->FindChildByType(step.tag, false);
    for (SCLElement* element : group) {
        if (fits(element) && --left == 0)
            return element;
    }
    return nullptr;
}

} // namespace Corvane::Command
