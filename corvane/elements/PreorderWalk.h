// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/elements/SCLElement.h>
#include <corvane/elements/TagNesting.h>

#include <QVarLengthArray>

#include <cstring>

namespace Corvane::Internal
{

/// Visits all descendants of an element, each before its own children, groups in ascending tag id.
/// Keeps its own stack, so that any depth is walked. The tree may not change meanwhile, except that
/// elements already visited may change what is not their children.
class PreorderWalk
{
public:
    explicit PreorderWalk(const SCLElement* top) { Enter(top); }
    /// Leaves out the elements of all other tags than \a entered, with all below them.
    PreorderWalk(const SCLElement* top, const TagSet& entered) : m_pEntered(&entered)
    {
        Enter(top);
    }

    /// The next descendant, or null at the end.
    SCLElement* Next()
    {
        while (!m_stack.isEmpty()) {
            Level& level = m_stack.last();
            if (level.child != level.childEnd) {
                SCLElement* element = *level.child++;
                FetchAhead(level);
                Enter(element);
                return element;
            }
            ++level.group;
            if (!EnterGroup(level))
                m_stack.removeLast();
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
    };

    // Siblings follow one another, and where their children are hangs from two pointers each: so one
    // is followed for the next sibling and one for that behind it, while this one is looked at.
    static void FetchAhead(const Level& level)
    {
#ifdef __GNUC__
        if (level.childEnd - level.child < 2)
            return;
        static_assert(sizeof(Groups) == sizeof(const void*));
        const void* next = &level.child[0]->m_mapChild;
        const void* groups = nullptr;
        std::memcpy(&groups, next, sizeof(groups));
        __builtin_prefetch(groups);
        __builtin_prefetch(&level.child[1]->m_mapChild);
#else
        Q_UNUSED(level);
#endif
    }

    // That group, or the next one to be entered.
    bool EnterGroup(Level& level) const
    {
        while (level.group != level.groupEnd && m_pEntered && !m_pEntered->Has(level.group.key()))
            ++level.group;
        if (level.group == level.groupEnd)
            return false;
        level.child = level.group.value().constBegin();
        level.childEnd = level.group.value().constEnd();
        return true;
    }

    void Enter(const SCLElement* element)
    {
        const Groups& groups = element->m_mapChild;
        if (groups.isEmpty())
            return;
        Level level{groups.constBegin(), groups.constEnd(), {}, {}};
        if (EnterGroup(level))
            m_stack.append(level);
    }

    QVarLengthArray<Level, 32> m_stack;
    const TagSet* m_pEntered = nullptr;
};

} // namespace Corvane::Internal
