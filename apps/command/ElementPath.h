// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QPair>
#include <QString>

namespace Corvane
{
class SCLElement;
}

namespace Corvane::Command
{

/// The way from the root of a station to one of its elements, as people write and read it:
///
///     IED[name=AA1]/AccessPoint[2]/Server/LDevice[inst=LD0]/LN[lnClass=MMXU][inst=1]
///
/// Each step is a tag, and leads to the first child of that tag. `[attribute=value]` takes only
/// children with that value (a missing attribute has the empty one), and of several such conditions
/// all must hold. `[N]` takes the N-th of what is left, counted from 1, and stands last. A value
/// may stand in double quotes; it must if it contains `]`, `"` or `\`, and `\"`, `\\`, `\n`, `\r`,
/// `\t` and `\u` with four hexadecimal digits stand for characters there. The root is `SCL`,
/// which may stand in front of a longer path or be left out.
class ElementPath
{
public:
    /// The path of an element by tags and positions alone, such as `SCL/IED[2]/AccessPoint`.
    static QString Of(SCLElement* element);

    /// Reads a path.
    ///
    /// \return what is wrong with it, or an empty text.
    QString Read(const QString& text);
    /// The element that the path leads to, or null.
    SCLElement* Find(SCLElement* root) const;

private:
    struct Step {
        QString tag;
        QList<QPair<QString, QString>> conditions;
        int position = 1;
    };
    class Reader;

    static SCLElement* Follow(const Step& step, SCLElement* from);

    QList<Step> m_steps;
};

} // namespace Corvane::Command
