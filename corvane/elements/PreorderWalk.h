// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/elements/SCLElement.h>

#include <QVarLengthArray>

namespace Corvane::Internal
{

/// Visits all descendants of an element, each before its own children, groups in ascending tag id.
/// Keeps its own stack, so that any depth is walked. The tree may not change meanwhile, except that
/// elements already visited may change what is not their children.
class PreorderWalk
{
public:
    explicit PreorderWalk(const SCLElement* top) { Enter(top); }

    /// The next descendant, or null at the end.
    SCLElement* Next()
    {
        while (!m_stack.isEmpty()) {
            Level& level = m_stack.last();
            if (level.child != level.childEnd) {
                SCLElement* element = *level.child++;
                Enter(element);
                return element;
            }
            LeaveGroup(level);
        }
        return nullptr;
    }

    /// The next descendant that has children, or null at the end. For searches among children, to
    /// which all others are of no interest.
    SCLElement* NextParent()
    {
        while (!m_stack.isEmpty()) {
            Level& level = m_stack.last();
            while (level.child != level.childEnd) {
                SCLElement* element = *level.child++;
                if (!element->m_mapChild.isEmpty()) {
                    Enter(element);
                    return element;
                }
            }
            LeaveGroup(level);
        }
        return nullptr;
    }

private:
    using Groups = SCLElement::ChildGroups;

    struct Level {
        Groups::const_iterator group;
        Groups::const_iterator groupEnd;
        QList<SCLElement*>::const_iterator child;
        QList<SCLElement*>::const_iterator childEnd;

        void EnterGroup()
        {
            child = group.value().constBegin();
            childEnd = group.value().constEnd();
        }
    };

    void LeaveGroup(Level& level)
    {
        if (++level.group == level.groupEnd)
            m_stack.removeLast();
        else
            level.EnterGroup();
    }

    void Enter(const SCLElement* element)
    {
        const Groups& groups = element->m_mapChild;
        if (groups.isEmpty())
            return;
        Level level{groups.constBegin(), groups.constEnd(), {}, {}};
        level.EnterGroup();
        m_stack.append(level);
    }

    QVarLengthArray<Level, 32> m_stack;
};

} // namespace Corvane::Internal
