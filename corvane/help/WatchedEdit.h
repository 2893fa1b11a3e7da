// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMap>
#include <QString>

namespace Corvane
{

class SCLElement;

namespace Internal
{

/// Changes a tree with signals, and knows whether their slots have changed anything as well. As
/// long as they have not, what was looked up before holds.
class WatchedEdit
{
public:
    /// Whether no slot has changed anything so far.
    bool IsAlone() const { return m_bAlone; }
    /// Whether a creation was refused.
    bool HasFailed() const { return m_bFailed; }
    /// Whether there was any change.
    bool HasChanged() const { return m_bChanged; }

    /// Appends a child. Null if that was refused, or if a slot has taken the child out again.
    SCLElement* Create(SCLElement* parent, const QString& tag,
                       const QMap<QString, QString>& attributes = {});
    void SetValue(SCLElement* element, const QString& value);
    void Remove(SCLElement* parent, SCLElement* child);

private:
    template <typename Change>
    void Make(Change change);

    bool m_bAlone = true;
    bool m_bFailed = false;
    bool m_bChanged = false;
};

} // namespace Internal
} // namespace Corvane
